#pragma once

#include "forms/fields/ComboBox.h"

#include <functional>

/// A drop-down list that also takes new text. On leaving it, and on Enter, what was typed is compared with
/// the items, case aside: a match is chosen; a new text goes to the handler, which adds it and chooses it.
/// If nothing comes of it, the field shows its choice again.
class TypedCombo final : public ComboBox
{
    Q_OBJECT

public:
    explicit TypedCombo(ComboModel &model, QWidget *parent = nullptr);

    /// Called with a text that is not among the items; its name part ("[ref] name") is never empty.
    void SetNewTextHandler(std::function<void(const QString &text)> handler);
    /// Called on every Enter, after the text has been dealt with.
    void SetEnterHandler(std::function<void()> handler);
    /// Off: the list can only be chosen from.
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
