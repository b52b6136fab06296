#include "forms/fields/TypedCombo.h"

#include "controls/ComboModel.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/FieldFocus.h"

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

void TypedCombo::SetNewTextHandler(std::function<void(const QString &)> handler)
{
    m_newText = std::move(handler);
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
    // A popup and no inline completion: "York" must stay "York" even if "Yorkshire" is in the list.
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setCaseSensitivity(Qt::CaseInsensitive);
    // Rows of equal height: measuring 50,000 of them one by one would delay every key.
    if (auto *list = qobject_cast<QListView *>(completer()->popup()))
        list->setUniformItemSizes(true);
    // A long text shows its beginning. If the list has been locked since, its line edit exists for a little
    // longer.
    QLineEdit *edit = lineEdit();
    connect(this, &QComboBox::currentIndexChanged, edit, [edit] { edit->setCursorPosition(0); });
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

void TypedCombo::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Leave();
        if (m_enter)
            m_enter();
        event->accept();
        return;
    }
    ComboBox::keyPressEvent(event);
}

void TypedCombo::focusOutEvent(QFocusEvent *event)
{
    ComboBox::focusOutEvent(event);
    if (IsLeft(*event))
        Leave();
}
