#include "forms/frames/frmConflict.h"

#include "forms/fields/FieldChanges.h"
#include "forms/frames/AskingWindow.h"
#include "forms/frames/FormBuilder.h"
#include "forms/frames/OkCancel.h"
#include "forms/lists/ItemDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTreeView>

namespace
{
QPlainTextEdit *WholeText(FormBuilder &form, const QString &name, const QString &caption)
{
    QPlainTextEdit *text = form.Notes(name, caption);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    return text;
}
} // namespace

frmConflict::frmConflict(const QString &what, const QList<Dialogs::FieldChange> &changes, QWidget *parent)
    : FormDialog(QStringLiteral("frmConflict"), QStringLiteral("Changed Meanwhile"), parent)
    , m_changes(new FieldChanges(changes, this))
{
    FormBuilder form(this);
    form.Line(
        QStringLiteral("Notice"),
        u"Another user has changed this " % what %
            u" meanwhile. Changed values are bold, and the ones to keep are ticked: the left and right keys "
            u"and the space bar change the side.");
    m_list = BuildList();
    form.Place(m_list, QStringLiteral("ChangeList"), QString(), true);
    form.BeginColumns();
    m_yours = WholeText(form, QStringLiteral("YoursText"), QStringLiteral("&Yours:"));
    form.NextColumn();
    m_theirs = WholeText(form, QStringLiteral("TheirsText"), QStringLiteral("&Theirs:"));
    form.EndColumns();
    form.BeginButtons(FormBuilder::Align::Start);
    QPushButton *allMine = form.Button(QStringLiteral("AllMineBtn"), QStringLiteral("All &mine"));
    QPushButton *allTheirs = form.Button(QStringLiteral("AllTheirsBtn"), QStringLiteral("&All theirs"));
    form.EndButtons();
    const OkCancel buttons = OkCancel::Add(form, this);

    connect(buttons.ok, &QPushButton::clicked, this, &frmConflict::accept);
    connect(allMine, &QPushButton::clicked, this, [this] { m_changes->TakeAll(false); });
    connect(allTheirs, &QPushButton::clicked, this, [this] { m_changes->TakeAll(true); });
    connect(m_list, &QTreeView::clicked, this, [this](const QModelIndex &at) {
        if (at.column() != FieldChanges::Field)
            m_changes->Take(at.row(), at.column() == FieldChanges::Theirs);
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &frmConflict::ShowCurrent);
    m_list->setCurrentIndex(m_changes->index(0, 0));
    setMinimumWidth(fontMetrics().averageCharWidth() * 90);
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 32);
}

bool frmConflict::Settle(const QString &what, QList<Dialogs::FieldChange> &changes)
{
    frmConflict form(what, changes, AskingWindow());
    if (form.exec() != QDialog::Accepted)
        return false;
    changes = form.m_changes->Changes();
    return true;
}

QTreeView *frmConflict::BuildList()
{
    auto *list = new QTreeView(this);
    list->setModel(m_changes);
    list->setItemDelegate(new ItemDelegate(list));
    list->setAccessibleName(QStringLiteral("Changed fields"));
    list->setRootIsDecorated(false);
    list->setItemsExpandable(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setAlternatingRowColors(true);
    list->header()->setSectionsMovable(false);
    list->header()->setSectionResizeMode(QHeaderView::Stretch);
    list->header()->setSectionResizeMode(FieldChanges::Field, QHeaderView::ResizeToContents);
    list->installEventFilter(this);
    return list;
}

void frmConflict::ShowCurrent()
{
    const int row = m_list->currentIndex().row();
    if (row < 0)
        return;
    const Dialogs::FieldChange &change = m_changes->Changes().at(row);
    m_yours->setPlainText(change.yours);
    m_theirs->setPlainText(change.theirs);
}

bool frmConflict::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_list || event->type() != QEvent::KeyPress)
        return FormDialog::eventFilter(watched, event);
    const int row = m_list->currentIndex().row();
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (row < 0 || (key != Qt::Key_Left && key != Qt::Key_Right && key != Qt::Key_Space))
        return FormDialog::eventFilter(watched, event);
    const bool takesTheirs = m_changes->Changes().at(row).takesTheirs;
    m_changes->Take(row, key == Qt::Key_Space ? !takesTheirs : key == Qt::Key_Right);
    return true;
}
