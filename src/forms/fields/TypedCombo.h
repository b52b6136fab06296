#pragma once

#include "forms/fields/ComboBox.h"

#include <functional>

/// A drop-down list that also accepts new text. On leaving it, and on Enter, what was typed is compared with
/// the items regardless of case: a match is chosen; a new text goes to the handler, which adds and chooses
/// it. If the handler does neither, the field shows its previous choice again.
class TypedCombo final : public ComboBox
{
    Q_OBJECT

public:
    explicit TypedCombo(ComboModel &model, QWidget *parent = nullptr);

    /// Called with a text that is not among the items; its name part ("[ref] name") is never empty.
    void SetNewTextHandler(std::function<void(const QString &text)> handler);
    /// Called on every Enter, after the text has been handled.
    void SetEnterHandler(std::function<void()> handler);
    /// If not allowed, the user can only choose from the list.
    void AllowTyping(bool allowed);
    void Leave();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void ShowChoice();

    std::function<void(const QString &)> m_newText;
    std::function<void()> m_enter;
    bool m_leaving = false;
};
