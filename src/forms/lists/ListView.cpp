#include "forms/lists/ListView.h"

#include "controls/ListModel.h"
#include "forms/lists/ItemDelegate.h"
#include "forms/lists/ListPrint.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMetaMethod>
#include <QTimer>

#include <numeric>

ListView::ListView(ListModel &model, Choice choice, QWidget *parent)
    : QTreeView(parent)
    , m_list(model)
    , m_emptyText(this)
{
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(choice == Choice::Multi ? ExtendedSelection : SingleSelection);
    setItemDelegate(new ItemDelegate(this));
    setModel(&m_list);
    QItemSelectionModel *unused = selectionModel();
    setSelectionModel(m_list.Selection());
    delete unused;

    // The rows stay in the order in which they were filled in until the user asks for another.
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    header()->setSectionsMovable(false);
    ShowTitles();
    connect(header(), &QHeaderView::sectionResized, this, [this](int column) {
        if (!m_sharing && column < header()->count() - 1)
            m_shares.clear();
    });
    connect(&m_list, &ListModel::modelReset, this, &ListView::KeepOrder);
    connect(&m_list, &ListModel::Changed, viewport(), qOverload<>(&QWidget::update));
}

void ListView::SetColumnChars(const QList<int> &chars, Narrow narrow)
{
    m_shares = chars;
    const int whole = std::accumulate(chars.begin(), chars.end(), 0);
    m_leastWidth =
        narrow == Narrow::Scroll && chars.size() > 1 ? whole * fontMetrics().averageCharWidth() : 0;
    ShareWidth();
}

void ListView::ShareWidth()
{
    const int whole = std::accumulate(m_shares.begin(), m_shares.end(), 0);
    const int width = qMax(viewport()->width(), m_leastWidth);
    m_sharing = true;
    for (int column = 0; column < m_shares.size(); ++column)
        header()->resizeSection(column, width * m_shares.at(column) / whole);
    m_sharing = false;
}

void ListView::CountOn(QLabel *label)
{
    m_count = label;
    connect(label, &QObject::destroyed, this, [this] { m_count = nullptr; });
    connect(&m_list, &ListModel::Changed, this, &ListView::TellCount);
    connect(m_list.Selection(), &QItemSelectionModel::selectionChanged, this, &ListView::TellCount);
    TellCount();
}

void ListView::SetLocked(bool locked)
{
    m_locked = locked;
}

void ListView::TakeDropsFrom(ListView &source, std::function<void()> dropped)
{
    m_dragSource = &source.Model();
    m_dropped = std::move(dropped);
    source.m_canBeDragged = true;
    setAcceptDrops(true);
}

void ListView::ShowRow(int row)
{
    scrollTo(m_list.index(row, 0));
}

void ListView::ShowTitles()
{
    setHeaderHidden(m_list.columnCount() < 2 &&
                    m_list.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString().isEmpty());
}

void ListView::KeepOrder()
{
    ShowTitles();
    if (header()->sortIndicatorSection() >= 0)
        m_list.sort(header()->sortIndicatorSection(), header()->sortIndicatorOrder());
}

void ListView::CopySelected() const
{
    QStringList lines;
    for (const int row : m_list.SelectedRows()) {
        QStringList cells{m_list.At(row).text};
        for (int column = 1; column < m_list.columnCount(); ++column)
            cells.append(m_list.At(row).subItems.value(column - 1));
        lines.append(cells.join(u'\t'));
    }
    if (!lines.isEmpty())
        QApplication::clipboard()->setText(lines.join(u'\n'));
}

void ListView::Print()
{
    ListPrint::Ask(m_list, this);
}

void ListView::TellCount()
{
    if (!m_count)
        return;
    const QLocale locale;
    const int rows = m_list.Count();
    QString text = rows == 0   ? QString()
                   : rows == 1 ? QStringLiteral("1 row")
                               : QString(locale.toString(rows) % u" rows");
    if (selectionMode() == ExtendedSelection) {
        int selected = 0;
        for (const QItemSelectionRange &range : m_list.Selection()->selection())
            selected += range.height();
        if (selected > 1)
            text += u", " % locale.toString(selected) % u" selected";
    }
    m_count->setText(text);
}

void ListView::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("ListMenu"));
    menu.addAction(QStringLiteral("&Copy\tCtrl+C"), this, &ListView::CopySelected)
        ->setEnabled(m_list.Selection()->hasSelection());
    if (selectionMode() == ExtendedSelection)
        menu.addAction(QStringLiteral("Select &All\tCtrl+A"), this, [this] { m_list.SelectAll(); })
            ->setEnabled(!m_list.IsEmpty());
    menu.addAction(QStringLiteral("&Print…\tCtrl+P"), this, &ListView::Print)->setEnabled(!m_list.IsEmpty());
    menu.exec(event->globalPos());
}

void ListView::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Copy)) {
        CopySelected();
    } else if (event->matches(QKeySequence::Print)) {
        Print();
    } else if (enter && currentIndex().isValid() && m_enter) {
        m_enter();
    } else if (enter && currentIndex().isValid() &&
               isSignalConnected(QMetaMethod::fromSignal(&ListView::Opened))) {
        emit Opened(currentIndex().row());
    } else if (event->key() == Qt::Key_Delete) {
        emit DeletePressed();
    } else {
        QTreeView::keyPressEvent(event);
        // Tab makes the first row the current one without selecting it; the keys that lead to it would then
        // change nothing.
        const bool leadsThere = event->key() == Qt::Key_Home || event->key() == Qt::Key_Up;
        if (leadsThere && event->modifiers() == Qt::NoModifier && currentIndex().isValid())
            m_list.SelectOnly(currentIndex().row());
        return;
    }
    event->accept();
}

void ListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex at = indexAt(event->pos());
    QTreeView::mouseDoubleClickEvent(event);
    if (at.isValid() && event->button() == Qt::LeftButton)
        emit Opened(at.row());
}

/// Only from a selected row: from any other, the pointer draws a selection.
void ListView::mousePressEvent(QMouseEvent *event)
{
    setDragEnabled(m_canBeDragged && event->modifiers() == Qt::NoModifier &&
                   selectionModel()->isSelected(indexAt(event->pos())));
    QTreeView::mousePressEvent(event);
}

void ListView::AcceptDrag(QDropEvent *event) const
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(m_dragSource && m_dragSource->IsDragged(*event->mimeData()));
}

void ListView::dragEnterEvent(QDragEnterEvent *event)
{
    AcceptDrag(event);
}

void ListView::dragMoveEvent(QDragMoveEvent *event)
{
    AcceptDrag(event);
}

void ListView::dropEvent(QDropEvent *event)
{
    AcceptDrag(event);
    // What is done with the rows may ask and show its progress, which a drag would hold up.
    if (event->isAccepted())
        QTimer::singleShot(0, this, m_dropped);
}

void ListView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    m_emptyText.Paint();
}

bool ListView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    // A click on a check box reaches the delegate through here.
    return !m_locked && QTreeView::edit(index, trigger, event);
}

void ListView::resizeEvent(QResizeEvent *event)
{
    QTreeView::resizeEvent(event);
    ShareWidth();
}

QSize ListView::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.averageCharWidth() * 36, metrics.height() * 9};
}
