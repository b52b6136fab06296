#pragma once

#include <QDate>
#include <QLineEdit>

#include <optional>

/// A day, typed as it is written: "01/02/1990", "1/2/90", with points, dashes or blanks for the strokes, or
/// without any ("010290"). What is left out, the year or the month too, is that of today. Up and Down go to
/// the next day, Page Up and Page Down to the next month, Alt+Down opens the calendar. A text that is no day
/// stays as it was typed, in the colour of errors, until it is put right.
class DateField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit DateField(QWidget *parent = nullptr);

    /// The day that the text gives; the one before it was edited where it is empty or gives none.
    QDate Day() const;
    void SetDay(QDate day);
    /// Short years are those up to this one, "30" is 1930 for a day of birth. Without it they are the ones
    /// nearest to this year.
    void TakeShortYearsAsPast() { m_past = true; }
    /// Whether the text gives a day, or is empty and leaves the one before.
    bool IsDay() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::optional<QDate> Typed() const;
    int FullYear(int shortYear) const;
    void Leave();
    void OpenCalendar();

    QDate m_day; ///< before the text was edited
    bool m_past = false;
};

/// Tells of the first text in `form` that should be a day and is none, and goes to it. False where there is
/// one: what hangs on the day is not to be stored.
bool DaysAreReadable(QWidget *form);
