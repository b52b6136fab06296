// A part of FormBuilder.h.
#include "forms/frames/FormBuilder.h"

#include <QGridLayout>
#include <QHBoxLayout>

namespace
{
/// A wrapped text that is never cut off: the narrower it becomes, the more height it asks for. A layout alone
/// would let a window become too small for it.
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
        if (m_label) {
            row->addWidget(m_label);
            Top().captionsBeside.append({row, m_label});
        }
        row->addWidget(field, 1);
        return field;
    }
    const Section &section = Top();
    if (m_label)
        section.grid->addWidget(m_label, section.row, 0);
    section.grid->addWidget(field, section.row, 1);
    return field;
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

DateField *FormBuilder::Date(const QString &name, const QString &caption)
{
    return Put(new DateField(Parent()), name, caption);
}

TimeField *FormBuilder::Time(const QString &name, const QString &caption)
{
    return Put(new TimeField(Parent()), name, caption);
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
    // The rest of the form must not move when the first row is added: an empty label is a line with its
    // leading, one with a text is without it.
    count->setMinimumHeight(count->fontMetrics().lineSpacing());
    list->CountOn(count);
    Span(count);
    return list;
}

TreeView *FormBuilder::Tree(const QString &name, const QString &caption, TreeModel &model)
{
    auto *tree = new TreeView(model, Parent());
    Place(tree, name, caption, true);
    // Where a list has its count, so that what is below a tree lines up with what is below a list beside it.
    NextRow();
    return tree;
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
