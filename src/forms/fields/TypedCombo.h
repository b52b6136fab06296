#pragma once

#include "forms/fields/ComboBox.h"

#include <QPointer>

#include <functional>

class FieldNote;

/// A drop-down list that also accepts new text. What is typed completes to the first item that begins so,
/// with its tail selected: Tab and Enter take what is shown, Delete drops the tail, so that half a word makes
/// no new item unnoticed. A text that will be a new item is announced in the field. On leaving it, and on
/// Enter, what was typed is compared with the items regardless of case: a match is chosen; a new text goes to
/// the handler, which adds and chooses it. If the handler does neither, the field shows its previous choice
/// again.
class TypedCombo final : public ComboBox
{
    Q_OBJECT

public:
    explicit TypedCombo(ComboModel &model, QWidget *parent = nullptr);

    /// Called with a text that is not among the items; its name part ("[ref] name") is never empty.
    /// `what` is what such a text is ("town").
    void SetNewTextHandler(std::function<void(const QString &text)> handler, const QString &what = {});
    /// Called on every Enter, after the text has been handled, in place of the form's default button.
    void SetEnterHandler(std::function<void()> handler);
    /// If not allowed, the user can only choose from the list.
    void AllowTyping(bool allowed);
    void Leave();

protected:
    bool focusNextPrevChild(bool next) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void Enter(QKeyEvent *event);
    void ShowChoice();
    QString Typed() const;
    int FirstThatBegins(const QString &typed) const;
    void Complete(const QString &before);
    void Announce();

    std::function<void(const QString &)> m_newText;
    QString m_what;
    std::function<void()> m_enter;
    QPointer<FieldNote> m_note;
    bool m_leaving = false;
};
