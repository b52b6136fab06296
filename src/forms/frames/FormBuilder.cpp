#include "forms/frames/FormBuilder.h"

#include "forms/fields/FormKeys.h"
#include "forms/frames/ButtonKeys.h"
#include "forms/frames/ButtonRow.h"
#include "forms/lists/ListPrint.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QShortcut>

#include <algorithm>

namespace
{
/// Turns to the next page that can be opened.
void TurnPage(QTabWidget &tabs, int step)
{
    int page = tabs.currentIndex();
    do
        page = (page + step + tabs.count()) % tabs.count();
    while (!tabs.isTabEnabled(page));
    tabs.setCurrentIndex(page);
}

/// Leaves as much height as the item next to it takes.
class SameHeight final : public QSpacerItem
{
public:
    explicit SameHeight(const QLayoutItem *of)
        : QSpacerItem(0, 0)
        , m_of(of)
    {
    }

    bool isEmpty() const override { return m_of->isEmpty(); }
    QSize sizeHint() const override { return {0, m_of->sizeHint().height()}; }
    QSize minimumSize() const override { return {0, m_of->minimumSize().height()}; }

private:
    const QLayoutItem *m_of;
};

/// The row of a column that takes the spare height, -1 if none of its lists and texts does.
int ListRow(const QGridLayout &column)
{
    int row = column.rowCount() - 1;
    while (row >= 0 && !(column.rowStretch(row) > 0 && column.itemAtPosition(row, 1)))
        --row;
    return row;
}

/// Lists side by side end on one line if each has as many rows below it as the others.
void AlignFeet(const QHBoxLayout &columns)
{
    QList<QGridLayout *> lists;
    for (int i = 0; i < columns.count(); ++i) {
        auto *column = qobject_cast<QGridLayout *>(columns.itemAt(i)->layout());
        if (column && ListRow(*column) >= 0)
            lists.append(column);
    }
    const auto rowsBelow = [](const QGridLayout *column) { return column->rowCount() - ListRow(*column); };
    const auto longest = std::max_element(lists.begin(), lists.end(), [&](auto *one, auto *other) {
        return rowsBelow(one) < rowsBelow(other);
    });
    for (QGridLayout *column : lists) {
        const int list = ListRow(*column);
        for (int i = 1; i < rowsBelow(*longest); ++i) {
            const QLayoutItem *other = (*longest)->itemAtPosition(ListRow(**longest) + i, 0);
            if (other && !column->itemAtPosition(list + i, 0))
                column->addItem(new SameHeight(other), list + i, 0);
        }
    }
}
} // namespace

FormBuilder::FormBuilder(QWidget *page)
    : m_page(page)
{
    ButtonKeys::Serve();
    auto *grid = new QGridLayout(page);
    Push(page, grid);
}

FormBuilder::~FormBuilder()
{
    WidenFields();
    AlignBeside();
    // On a page without lists the fields stay at the top, and the last buttons at the bottom.
    if (!Top().stretches && Top().row == Top().buttonRow)
        Top().grid->setRowStretch(Top().row - 1, 1);
    else if (!Top().stretches)
        Stretch();
    for (size_t i = 1; i < m_order.size(); ++i)
        QWidget::setTabOrder(m_order[i - 1], m_order[i]);
    if (m_page->objectName().startsWith(u"frm"))
        BindKeys();
}

/// The standard keys of a form: the first button of each kind has its key, and Ctrl+P prints.
void FormBuilder::BindKeys()
{
    QList<QKeySequence> bound;
    for (QWidget *field : m_order) {
        auto *button = qobject_cast<QPushButton *>(field);
        const QKeySequence key = button ? FormKeys::StandardKey(button->text().remove(u'&')) : QKeySequence();
        if (key.isEmpty() || bound.contains(key))
            continue;
        FormKeys::Bind(m_page, key, button);
        bound.append(key);
    }
    if (!m_page->findChildren<ListView *>().isEmpty())
        ListPrint::BindKey(m_page);
}

void FormBuilder::Push(QWidget *parent, QGridLayout *grid)
{
    m_sections.push_back({parent, grid});
    grid->setColumnStretch(1, 1);
}

void FormBuilder::Pop()
{
    WidenFields();
    const bool stretches = Top().stretches;
    Top().grid->setRowStretch(Top().row + 1, stretches ? 0 : 1);
    m_sections.pop_back();
    Top().stretches = Top().stretches || stretches;
}

/// Captions to the right of a field start at one edge; those of a single row need not.
void FormBuilder::AlignBeside()
{
    const auto &captions = Top().captionsBeside;
    if (captions.isEmpty() || captions.front().row == captions.back().row)
        return;
    int width = 0;
    for (const auto &[row, caption] : captions)
        width = qMax(width, caption->sizeHint().width());
    for (const auto &[row, caption] : captions)
        caption->setMinimumWidth(width);
}

/// If no field has a caption, the fields also take the column of captions.
void FormBuilder::WidenFields()
{
    QGridLayout *grid = Top().grid;
    std::vector<int> rows; // those with a field only in the second column
    for (int row = 0; row <= Top().row; ++row) {
        QLayoutItem *field = grid->itemAtPosition(row, 1);
        QLayoutItem *caption = grid->itemAtPosition(row, 0);
        if (caption && caption != field)
            return;
        if (field && !caption)
            rows.push_back(row);
    }
    for (const int row : rows) {
        QLayoutItem *field = grid->itemAtPosition(row, 1);
        const Qt::Alignment alignment = field->alignment();
        if (QWidget *widget = field->widget()) {
            grid->removeWidget(widget);
            grid->addWidget(widget, row, 0, 1, 2, alignment);
        } else if (QLayout *layout = field->layout()) {
            grid->removeItem(layout);
            grid->addLayout(layout, row, 0, 1, 2, alignment);
        }
    }
}

QHBoxLayout *FormBuilder::NextRow()
{
    Section &section = Top();
    if (!section.beside) {
        ++section.row;
        return nullptr;
    }
    section.beside = false;
    QLayoutItem *last = section.grid->itemAtPosition(section.row, 1);
    if (auto *row = qobject_cast<QHBoxLayout *>(last->layout()))
        return row;
    QWidget *field = last->widget();
    section.grid->removeWidget(field);
    auto *row = new QHBoxLayout;
    row->addWidget(field, 1);
    section.grid->addLayout(row, section.row, 1);
    return row;
}

void FormBuilder::Span(QWidget *widget, bool stretches)
{
    if (QHBoxLayout *row = NextRow()) {
        row->addWidget(widget);
        return;
    }
    Section &section = Top();
    section.grid->addWidget(widget, section.row, 0, 1, -1);
    if (!stretches)
        return;
    section.grid->setRowStretch(section.row, 1);
    section.stretches = true;
}

void FormBuilder::Beside()
{
    Top().beside = true;
}

void FormBuilder::BeginButtons(Align align)
{
    const bool below = Top().buttons && Top().align == align && Top().buttonRow == Top().row;
    m_buttons = new ButtonRow(below ? Top().buttons : nullptr);
    // The empty row before it can take the remaining space, and separates the buttons from the fields.
    Top().row += 1;
    if (m_sections.size() == 1)
        Top().grid->setRowMinimumHeight(Top().row, m_page->fontMetrics().height() / 2);
    NextRow();
    Top().grid->addLayout(m_buttons, Top().row, 0, 1, -1);
    Top().buttons = m_buttons;
    Top().buttonRow = Top().row;
    Top().align = align;
    if (align == Align::End)
        m_buttons->addStretch();
}

void FormBuilder::EndButtons()
{
    bool isSpread = false; // by the alignment or a gap
    for (int i = 0; i < m_buttons->count(); ++i)
        isSpread = isSpread || m_buttons->itemAt(i)->spacerItem();
    if (!isSpread)
        m_buttons->addStretch();
    m_buttons = nullptr;
}

void FormBuilder::Gap(QWidget *between)
{
    if (between) {
        between->setParent(Parent());
        m_buttons->addWidget(between, 1);
    }
    m_buttons->addStretch();
}

QPushButton *FormBuilder::NewButton(const QString &name, const QString &caption)
{
    auto *button = new QPushButton(caption, Parent());
    button->setObjectName(name);
    // Outside the buttons, Enter presses the default button or nothing, never the one that happens to come
    // first.
    button->setAutoDefault(false);
    m_order.push_back(button);
    return button;
}

QPushButton *FormBuilder::Button(const QString &name, const QString &caption)
{
    QPushButton *button = NewButton(name, caption);
    if (m_buttons) {
        m_buttons->addWidget(button);
        return button;
    }
    if (QHBoxLayout *row = NextRow())
        row->addWidget(button);
    else
        Top().grid->addWidget(button, Top().row, 1, Qt::AlignLeft);
    return button;
}

QPushButton *FormBuilder::DefaultButton(const QString &name, const QString &caption)
{
    QPushButton *button = Button(name, caption);
    button->setDefault(true);
    return button;
}

QGroupBox *FormBuilder::BeginGroup(const QString &caption, const QString &name)
{
    auto *group = new QGroupBox(caption, Parent());
    group->setObjectName(name);
    Span(group);
    Push(group, new QGridLayout(group));
    return group;
}

void FormBuilder::EndGroup()
{
    const bool stretches = Top().stretches;
    const auto captionsBeside = Top().captionsBeside;
    Pop();
    Top().captionsBeside += captionsBeside;
    if (stretches)
        Top().grid->setRowStretch(Top().row, 1);
}

void FormBuilder::BeginColumns(int weight)
{
    NextRow();
    auto *columns = new QHBoxLayout;
    Section &section = Top();
    section.grid->addLayout(columns, section.row, 0, 1, -1);
    section.columns = columns;
    auto *grid = new QGridLayout;
    columns->addLayout(grid, weight);
    Push(section.parent, grid);
}

void FormBuilder::NextColumn(int weight)
{
    AlignBeside();
    Pop();
    auto *grid = new QGridLayout;
    Top().columns->addLayout(grid, weight);
    Push(Top().parent, grid);
}

void FormBuilder::EndColumns()
{
    AlignBeside();
    Pop();
    AlignFeet(*Top().columns);
    if (Top().stretches)
        Top().grid->setRowStretch(Top().row, 1);
}

QTabWidget *FormBuilder::Tabs(const QString &name)
{
    auto *tabs = new QTabWidget(Parent());
    Place(tabs, name, {}, true);
    tabs->setUsesScrollButtons(false); // a form is wide enough for all its tabs
    // Otherwise notes and drop-downs would swallow the keys that turn the pages.
    const auto turn = [tabs](const QKeySequence &keys, int step) {
        QObject::connect(new QShortcut(keys, tabs), &QShortcut::activated, tabs,
                         [tabs, step] { TurnPage(*tabs, step); });
    };
    turn(Qt::CTRL | Qt::Key_Tab, 1);
    turn(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
    turn(Qt::CTRL | Qt::Key_PageDown, 1);
    turn(Qt::CTRL | Qt::Key_PageUp, -1);
    return tabs;
}

QWidget *FormBuilder::AddTab(QTabWidget *tabs, const QString &name, const QString &caption)
{
    return AddTab(tabs, new QWidget, name, caption);
}

void FormBuilder::Stretch()
{
    NextRow();
    Top().grid->setRowStretch(Top().row, 1);
    Top().stretches = true;
}
