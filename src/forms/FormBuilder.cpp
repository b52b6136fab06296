#include "forms/FormBuilder.h"

#include "core/Icons.h"
#include "forms/SearchBox.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QStyle>
#include <QVBoxLayout>

namespace
{
/// A wrapped text that is never cut off: the narrower it becomes, the more height it asks for. A layout by
/// itself lets a window become too small for it.
class WrappedLabel final : public QLabel
{
public:
    WrappedLabel(const QString &text, QWidget *parent)
        : QLabel(text, parent)
    {
        setTextFormat(Qt::PlainText);
        setWordWrap(true);
        setMinimumWidth(fontMetrics().averageCharWidth() * 30);
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QLabel::resizeEvent(event);
        setMinimumHeight(qMax(0, heightForWidth(width())));
    }
};
} // namespace

FormBuilder::FormBuilder(QWidget *page)
    : m_page(page)
{
    auto *grid = new QGridLayout(page);
    Push(page, grid);
}

FormBuilder::~FormBuilder()
{
    // A page without lists keeps its fields at the top, and its last buttons at the bottom.
    if (!Top().stretches && Top().row == m_buttonRow)
        Top().grid->setRowStretch(m_buttonRow - 1, 1);
    else if (!Top().stretches)
        Stretch();
    for (size_t i = 1; i < m_order.size(); ++i)
        QWidget::setTabOrder(m_order[i - 1], m_order[i]);
}

void FormBuilder::Push(QWidget *parent, QGridLayout *grid)
{
    m_sections.push_back({parent, grid});
    grid->setColumnStretch(1, 1);
}

void FormBuilder::Pop()
{
    const bool stretches = Top().stretches;
    Top().grid->setRowStretch(Top().row + 1, stretches ? 0 : 1);
    m_sections.pop_back();
    Top().stretches = Top().stretches || stretches;
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

void FormBuilder::Caption(QWidget *field, const QString &name, const QString &caption)
{
    field->setObjectName(name);
    m_order.push_back(field);
    m_label = nullptr;
    if (caption.isEmpty())
        return;
    m_label = new CaptionLabel(caption, Parent());
    m_label->setObjectName(name % u"_Label");
    m_label->setBuddy(field);
}

template <typename Field>
Field *FormBuilder::Put(Field *field, const QString &name, const QString &caption)
{
    Caption(field, name, caption);
    if (QHBoxLayout *row = NextRow()) {
        if (m_label)
            row->addWidget(m_label);
        row->addWidget(field, 1);
        return field;
    }
    const Section &section = Top();
    if (m_label)
        section.grid->addWidget(m_label, section.row, 0);
    section.grid->addWidget(field, section.row, 1);
    return field;
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

QLineEdit *FormBuilder::Text(const QString &name, const QString &caption, int maxLength)
{
    auto *field = Put(new QLineEdit(Parent()), name, caption);
    if (maxLength > 0)
        field->setMaxLength(maxLength);
    return field;
}

QLineEdit *FormBuilder::Password(const QString &name, const QString &caption, int maxLength)
{
    QLineEdit *field = Text(name, caption, maxLength);
    field->setEchoMode(QLineEdit::Password);
    return field;
}

QLineEdit *FormBuilder::ReadOnly(const QString &name, const QString &caption)
{
    QLineEdit *field = Text(name, caption);
    field->setReadOnly(true);
    field->setFocusPolicy(Qt::ClickFocus);
    QPalette palette;
    palette.setColor(QPalette::Base, field->palette().color(QPalette::Window));
    field->setPalette(palette);
    return field;
}

QPlainTextEdit *FormBuilder::Notes(const QString &name, const QString &caption)
{
    auto *field = Put(new QPlainTextEdit(Parent()), name, caption);
    field->setTabChangesFocus(true);
    if (m_label)
        m_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Top().grid->setRowStretch(Top().row, 1);
    Top().stretches = true;
    return field;
}

MoneyField *FormBuilder::Money(const QString &name, const QString &caption, MoneyField::KeyRule rule)
{
    return Put(new MoneyField(rule, Parent()), name, caption);
}

MoneyField *FormBuilder::Digits(const QString &name, const QString &caption, int maxDigits)
{
    return Money(name, caption, {maxDigits, 0});
}

QDateEdit *FormBuilder::Date(const QString &name, const QString &caption)
{
    auto *field = Put(new QDateEdit(Parent()), name, caption);
    field->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    field->setCalendarPopup(true);
    return field;
}

ComboBox *FormBuilder::Combo(const QString &name, const QString &caption, ComboModel &model)
{
    return Put(new ComboBox(model, Parent()), name, caption);
}

TypedCombo *FormBuilder::Typed(const QString &name, const QString &caption, ComboModel &model)
{
    return Put(new TypedCombo(model, Parent()), name, caption);
}

QCheckBox *FormBuilder::Check(const QString &name, const QString &caption)
{
    return Put(new QCheckBox(caption, Parent()), name, {});
}

QRadioButton *FormBuilder::Option(const QString &name, const QString &caption)
{
    auto *option = new QRadioButton(caption, Parent());
    option->setObjectName(name);
    m_order.push_back(option);
    Span(option);
    return option;
}

void FormBuilder::Place(QWidget *field, const QString &name, const QString &caption, bool stretches)
{
    field->setParent(Parent());
    if (!stretches) {
        Put(field, name, caption);
        return;
    }
    Caption(field, name, caption);
    if (m_label)
        Span(m_label);
    Span(field, true);
}

ListView *FormBuilder::List(const QString &name, const QString &caption, ListModel &model,
                            ListView::Choice choice)
{
    auto *list = new ListView(model, choice, Parent());
    Place(list, name, caption, true);
    auto *count = new QLabel(Parent());
    count->setObjectName(name % u"_Count");
    count->setAlignment(Qt::AlignRight);
    count->setForegroundRole(QPalette::PlaceholderText);
    list->CountOn(count);
    Span(count);
    return list;
}

TreeView *FormBuilder::Tree(const QString &name, const QString &caption, TreeModel &model)
{
    auto *tree = new TreeView(model, Parent());
    Place(tree, name, caption, true);
    return tree;
}

QLineEdit *FormBuilder::Search(const QString &name, const QString &caption, ListView *list)
{
    QLineEdit *box = Text(name, caption);
    box->setClearButtonEnabled(true);
    BindSearchBox(box, list);
    return box;
}

QLabel *FormBuilder::Line(const QString &name, const QString &text)
{
    auto *line = new WrappedLabel(text, Parent());
    line->setObjectName(name);
    Span(line);
    return line;
}

CaptionLabel *FormBuilder::Label(const QString &name)
{
    if (m_label && !name.isEmpty())
        m_label->setObjectName(name);
    return m_label;
}

void FormBuilder::Beside()
{
    Top().beside = true;
}

void FormBuilder::BeginButtons(Align align)
{
    m_buttons = new QHBoxLayout;
    // The empty row before it can take the space that is left.
    Top().row += 1;
    NextRow();
    if (m_sections.size() == 1)
        m_buttonRow = Top().row;
    Top().grid->addLayout(m_buttons, Top().row, 0, 1, -1);
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

void FormBuilder::Gap()
{
    m_buttons->addStretch();
}

QPushButton *FormBuilder::NewButton(const QString &name, const QString &caption)
{
    auto *button = new QPushButton(caption, Parent());
    button->setObjectName(name);
    // Enter presses the form's default button or nothing, never the button that happens to come first.
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
    Pop();
    if (stretches)
        Top().grid->setRowStretch(Top().row, 1);
}

void FormBuilder::BeginColumns()
{
    NextRow();
    auto *columns = new QHBoxLayout;
    Section &section = Top();
    section.grid->addLayout(columns, section.row, 0, 1, -1);
    section.columns = columns;
    auto *grid = new QGridLayout;
    columns->addLayout(grid, 1);
    Push(section.parent, grid);
}

void FormBuilder::NextColumn()
{
    Pop();
    auto *grid = new QGridLayout;
    Top().columns->addLayout(grid, 1);
    Push(Top().parent, grid);
}

void FormBuilder::EndColumns()
{
    Pop();
    if (Top().stretches)
        Top().grid->setRowStretch(Top().row, 1);
}

QTabWidget *FormBuilder::Tabs(const QString &name)
{
    auto *tabs = new QTabWidget(Parent());
    Place(tabs, name, {}, true);
    return tabs;
}

QWidget *FormBuilder::AddTab(QTabWidget *tabs, const QString &name, const QString &caption)
{
    auto *page = new QWidget;
    page->setObjectName(name);
    tabs->addTab(page, caption);
    return page;
}

FormBuilder::Pair FormBuilder::UsedAvailablePair(const PairNames &names, ListModel &available,
                                                 ListModel &used)
{
    Pair pair{};
    BeginColumns();
    pair.available = List(names.available, names.availableCaption, available, ListView::Choice::Multi);
    Pop();

    auto *buttons = new QVBoxLayout;
    Top().columns->addLayout(buttons);
    buttons->addStretch();
    const auto button = [&](const QString &name, const QString &icon, const QString &caption) {
        QPushButton *made = NewButton(name, caption);
        made->setIcon(Icons::Of(icon));
        buttons->addWidget(made);
        return made;
    };
    pair.add = button(names.add, QStringLiteral("go-next"), QStringLiteral("Add"));
    pair.remove = button(names.remove, QStringLiteral("go-previous"), QStringLiteral("Remove"));
    pair.clear = button(names.clear, QStringLiteral("edit-clear-all"), QStringLiteral("Clear"));
    buttons->addStretch();

    auto *grid = new QGridLayout;
    Top().columns->addLayout(grid, 1);
    Push(Top().parent, grid);
    pair.used = List(names.used, names.usedCaption, used, ListView::Choice::Multi);
    EndColumns();
    pair.moves = new UsedAvailable(pair.available, pair.used, pair.add, pair.remove, pair.clear, m_page);
    return pair;
}

void FormBuilder::Stretch()
{
    NextRow();
    Top().grid->setRowStretch(Top().row, 1);
    Top().stretches = true;
}
