#include "forms/fields/TypedCombo.h"

#include "controls/ComboModel.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/FieldFocus.h"
#include "forms/fields/FieldNote.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>

TypedCombo::TypedCombo(ComboModel &model, QWidget *parent)
    : ComboBox(model, parent)
{
    AllowTyping(true);
}

void TypedCombo::SetNewTextHandler(std::function<void(const QString &)> handler, const QString &what)
{
    m_newText = std::move(handler);
    m_what = what;
}

void TypedCombo::SetEnterHandler(std::function<void()> handler)
{
    m_enter = std::move(handler);
}

void TypedCombo::AllowTyping(bool allowed)
{
    if (isEditable() == allowed)
        return;
    setEditable(allowed);
    if (!allowed)
        return;
    setInsertPolicy(NoInsert);
    // The popup lists what begins so; the completion in the field is Complete.
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setCaseSensitivity(Qt::CaseInsensitive);
    // Rows of equal height: measuring 50,000 of them one by one would delay every key.
    if (auto *list = qobject_cast<QListView *>(completer()->popup()))
        list->setUniformItemSizes(true);
    // A long text shows its beginning. If the list has been locked since, its line edit exists for a little
    // longer.
    QLineEdit *edit = lineEdit();
    connect(this, &QComboBox::currentIndexChanged, edit, [edit] { edit->setCursorPosition(0); });
    m_note = new FieldNote(edit);
    connect(edit, &QLineEdit::textChanged, this, &TypedCombo::Announce);
    ShowChoice();
}

void TypedCombo::Leave()
{
    if (!isEditable() || m_leaving)
        return;
    const QScopedValueRollback<bool> once(m_leaving, true);
    ComboModel &list = Model();
    const QString typed = currentText();
    if (typed == list.CurrentText())
        return;
    const int known = list.FindText(typed);
    if (known >= 0)
        list.SetCurrent(known);
    else if (typed.trimmed().isEmpty())
        list.SetCurrent(list.FindText(SelectOrTypeNewText()));
    else if (m_newText && !SplitRefLabel(typed).name.trimmed().isEmpty())
        m_newText(typed);
    ShowChoice();
}

void TypedCombo::ShowChoice()
{
    if (!isEditable())
        return;
    if (currentIndex() != Model().Current())
        setCurrentIndex(Model().Current());
    setEditText(Model().CurrentText());
    lineEdit()->setCursorPosition(0);
}

/// What is in front of the tail.
QString TypedCombo::Typed() const
{
    const QLineEdit *edit = lineEdit();
    return edit->hasSelectedText() ? edit->text().left(edit->selectionStart()) : edit->text();
}

/// The item that is just the text, or else the first that begins with it, regardless of case; -1 = none.
int TypedCombo::FirstThatBegins(const QString &typed) const
{
    const ComboModel &list = Model();
    int first = -1;
    for (int row = 0; row < list.Count(); ++row) {
        const QString &text = list.At(row).text;
        if (!text.startsWith(typed, Qt::CaseInsensitive))
            continue;
        if (text.size() == typed.size())
            return row;
        if (first < 0)
            first = row;
    }
    return first;
}

/// `before` is what was in front of the tail before the last key. A text that became shorter, or was changed
/// in its middle, is left as it is.
void TypedCombo::Complete(const QString &before)
{
    QLineEdit *edit = lineEdit();
    const QString typed = edit->text();
    if (typed.trimmed().isEmpty() || typed.size() <= before.size() || edit->cursorPosition() < typed.size())
        return;
    const int row = FirstThatBegins(typed);
    const QString tail = row < 0 ? QString() : Model().At(row).text.mid(typed.size());
    if (tail.isEmpty())
        return;
    edit->setText(typed % tail);
    edit->setSelection(static_cast<int>(edit->text().size()), -static_cast<int>(tail.size()));
}

void TypedCombo::Announce()
{
    if (!m_note || !isEditable())
        return;
    const QString typed = currentText();
    const bool isNew = m_newText && typed != Model().CurrentText() && Model().FindText(typed) < 0 &&
                       !SplitRefLabel(typed).name.trimmed().isEmpty();
    m_note->Show(!isNew ? QString() : m_what.isEmpty() ? QStringLiteral("new") : QString(u"new " % m_what));
}

void TypedCombo::inputMethodEvent(QInputMethodEvent *event)
{
    const QString before = isEditable() ? Typed() : QString();
    ComboBox::inputMethodEvent(event);
    if (isEditable() && !event->commitString().isEmpty())
        Complete(before);
}

void TypedCombo::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Enter(event);
        return;
    }
    const QString before = isEditable() ? Typed() : QString();
    ComboBox::keyPressEvent(event);
    if (isEditable() && !event->text().isEmpty() && event->text().front().isPrint())
        Complete(before);
}

/// The form's default button follows, unless Enter has a task of its own or what was typed was not taken.
void TypedCombo::Enter(QKeyEvent *event)
{
    const QString typed = currentText().trimmed();
    Leave();
    if (m_enter)
        m_enter();
    const bool isTaken =
        !m_enter && (typed.isEmpty() || typed.compare(currentText().trimmed(), Qt::CaseInsensitive) == 0);
    event->setAccepted(!isTaken);
}

/// Leaves first, since what is chosen may enable the button that Tab goes to.
bool TypedCombo::focusNextPrevChild(bool next)
{
    Leave();
    return ComboBox::focusNextPrevChild(next);
}

void TypedCombo::focusOutEvent(QFocusEvent *event)
{
    ComboBox::focusOutEvent(event);
    if (IsLeft(*event))
        Leave();
}
