#pragma once

#include <QDate>
#include <QLineEdit>

#include <optional>

/// A date, typed as it is written: "01/02/1990", "1/2/90", with dots, dashes or blanks for the slashes, or
/// without any ("010290"). A year, or month and year, left out is today's. Up and Down go one day on or back,
/// Page Up and Page Down one month, Alt+Down opens the calendar. A text that is not a date stays as it was
/// typed, in the colour of errors, until it is corrected.
class DateField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit DateField(QWidget *parent = nullptr);

    /// The date in the text; if it is empty or not a date, the date before it was edited.
    QDate Day() const;
    void SetDay(QDate day);
    /// Shows `proposed`, dimmed, for a date that is not known until the user enters one, be it the same.
    void SetUnknown(QDate proposed);
    bool IsUnknown() const { return m_isUnknown; }
    /// Makes short years mean years up to this one, so that "30" is 1930 for a date of birth. Otherwise they
    /// mean the ones nearest to this year.
    void TakeShortYearsAsPast() { m_past = true; }
    /// Whether the text is a date, or empty, which keeps the previous date.
    bool IsDay() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    std::optional<QDate> Typed() const;
    int FullYear(int shortYear) const;
    void Leave();
    void Dim();
    void OpenCalendar();

    QDate m_day; ///< before the text was edited
    bool m_past = false;
    bool m_isUnknown = false;
};

/// Tells the user about the first text in `form` that should be a date and is not, and moves the focus to it.
/// False if there is one; what depends on the date must not be stored then.
bool DaysAreReadable(QWidget *form);
