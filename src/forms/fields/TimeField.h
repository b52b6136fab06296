#pragma once

#include <QLineEdit>

#include <optional>

/// A time of day, typed as it is written: "09:30", "9.30", "930", or the hour alone. Up and Down go five
/// minutes on or back, Page Up and Page Down one hour. A text that is not a time stays as it was typed, in
/// the colour of errors, until it is corrected.
class TimeField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit TimeField(QWidget *parent = nullptr);

    /// The time in the text, as a time-int; if it is empty or not a time, the one before it was edited.
    int Time() const { return Typed().value_or(m_time); }
    void SetTime(int time);
    /// Whether the text is a time, or empty, which keeps the previous time.
    bool IsTime() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void Left(); ///< the user has finished with the field, which shows a time

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::optional<int> Typed() const;
    void Leave();
    void Step(int minutes);

    int m_time = 0; ///< before the text was edited
};

/// Tells the user about the first text in `form` that should be a time and is not, and moves the focus to it.
/// False if there is one; what depends on the time must not be stored then.
bool TimesAreReadable(QWidget *form);

/// Exchanges the times of an event that would end before it starts.
void PutInOrder(TimeField *from, TimeField *to);
