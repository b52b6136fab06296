#pragma once

#include <QLineEdit>

#include <functional>

/// Which keys an amount accepts: a digit while the text is shorter than `digitLimit`, a "." while it is
/// shorter than `pointLimit` and has none yet. A point limit of 0 makes it a whole number.
struct MoneyKeys {
    int digitLimit = 9;
    int pointLimit = 9;
    bool digitsAlone = false; ///< the point does not count towards the digits' limit
};

/// A text box for an amount or a whole number, checked key by key. What is pasted, dropped or composed is
/// entered as if it had been typed character by character. Texts that the program sets are shown unchanged,
/// even grouped ones.
class MoneyField final : public QLineEdit
{
    Q_OBJECT

public:
    using KeyRule = MoneyKeys;

    explicit MoneyField(KeyRule rule = {}, QWidget *parent = nullptr);

    /// Runs when the focus leaves the field and on Enter. Until one is set, an amount is rewritten with
    /// two decimals; a whole number is left as it is.
    void SetLeaveHandler(std::function<void()> handler);
    void Leave();

    double Value() const;           ///< the number in the text, grouped or not; 0 if there is none
    void SetValue(double value);    ///< shown with two decimals
    void Normalise(int places = 2); ///< rewrites the text as its number with that many decimals

    /// Wide enough for a grouped amount, or for all the digits of a whole number.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    bool Takes(QChar key, const QString &text) const;
    QString TextWithoutSelection() const;
    void CleanEdit(const QString &edited);

    KeyRule m_rule;
    bool m_typed = false;         ///< the user is still typing the text
    bool m_selectOnPress = false; ///< the mouse press that brings the focus also selects
    QString m_before;
    std::function<void()> m_leave;
};

/// Runs the leave handler of the amount field that has the focus in `form`, as a click elsewhere would: a
/// button pressed by its mnemonic does not take the focus.
void LeaveMoneyField(const QWidget *form);
