#include "forms/fields/MoneyField.h"

#include "database/values/GlobalCode.h"
#include "forms/fields/FieldFocus.h"

#include <QKeyEvent>

#include <algorithm>

MoneyField::MoneyField(KeyRule rule, QWidget *parent)
    : QLineEdit(parent)
    , m_rule(rule)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (m_rule.pointLimit > 0)
        m_leave = [this] { Normalise(); };
    connect(this, &QLineEdit::textEdited, this, &MoneyField::CleanEdit);
    connect(this, &QLineEdit::textEdited, this, [this] { m_typed = true; });
    connect(this, &QLineEdit::textChanged, this, [this] { m_before = text(); });
}

void MoneyField::SetLeaveHandler(std::function<void()> handler)
{
    m_leave = std::move(handler);
}

void MoneyField::Leave()
{
    if (m_leave && !isReadOnly())
        m_leave();
    m_typed = false;
}

double MoneyField::Value() const
{
    return TextValue(text());
}

void MoneyField::SetValue(double value)
{
    setText(FormatNumber(value, 2));
}

void MoneyField::Normalise(int places)
{
    setText(FormatNumber(CurrencyValue(text(), places), places));
}

QSize MoneyField::minimumSizeHint() const
{
    const QString widest =
        m_rule.pointLimit > 0 ? QStringLiteral("9,999,999.99") : QString(m_rule.digitLimit, u'9');
    const QSize size = QLineEdit::minimumSizeHint();
    return {fontMetrics().horizontalAdvance(widest) + size.width() / 2, size.height()};
}

QSize MoneyField::sizeHint() const
{
    return minimumSizeHint();
}

bool MoneyField::Takes(QChar key, const QString &text) const
{
    if (key >= u'0' && key <= u'9')
        return text.size() - (m_rule.digitsAlone ? text.count(u'.') : 0) < m_rule.digitLimit;
    return key == u'.' && text.size() < m_rule.pointLimit && !text.contains(u'.');
}

QString MoneyField::TextWithoutSelection() const
{
    QString rest = text();
    if (hasSelectedText())
        rest.remove(selectionStart(), selectionLength());
    return rest;
}

void MoneyField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // The form's default button follows.
        Leave();
        event->ignore();
        return;
    }
    const bool shortcut = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const QString typed = event->text();
    const bool character = !shortcut && !typed.isEmpty() && typed.at(0).isPrint();
    if (character && !Takes(typed.at(0), TextWithoutSelection())) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

// A finished amount is replaced by what is typed: after "0.00", typing "50" would give half a hundredth.
void MoneyField::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (m_typed || event->reason() == Qt::PopupFocusReason)
        return;
    selectAll();
    m_selectOnPress = event->reason() == Qt::MouseFocusReason;
}

void MoneyField::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    if (m_selectOnPress)
        selectAll();
    m_selectOnPress = false;
}

void MoneyField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (IsLeft(*event))
        Leave();
}

// Every kind of edit ends here. The inserted part is what lies between the common start of the old and the
// new text and the cursor; it is entered again key by key. textChanged runs after textEdited, so m_before
// still has the text before the edit; it reads text(), since the setText here runs inside that edit.
void MoneyField::CleanEdit(const QString &edited)
{
    const qsizetype end = edited.size() - cursorPosition();
    const qsizetype most = std::min(m_before.size(), edited.size() - end);
    qsizetype start = 0;
    while (start < most && m_before.at(start) == edited.at(start))
        ++start;

    const QString rest = edited.left(start) % edited.right(end);
    QString taken;
    for (const QChar key : edited.mid(start, edited.size() - start - end)) {
        if (Takes(key, QString(rest % taken)))
            taken.append(key);
    }
    const QString clean = edited.left(start) % taken % edited.right(end);
    if (clean == edited)
        return;
    setText(clean);
    setCursorPosition(static_cast<int>(start + taken.size()));
}

void LeaveMoneyField(const QWidget *form)
{
    if (auto *field = qobject_cast<MoneyField *>(form->focusWidget()))
        field->Leave();
}
