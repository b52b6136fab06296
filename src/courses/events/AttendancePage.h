#pragma once

#include <QWidget>

class ListModel;
class ListView;
class QPushButton;

/// The "Attendance" tab of an event: who came. Space ticks a person and goes down to the next.
class AttendancePage final : public QWidget
{
    Q_OBJECT

public:
    explicit AttendancePage(ListModel &students, QWidget *parent = nullptr);

    /// What the user's rights allow; a locked page still shows who came.
    void Allow(bool change);

signals:
    void OthersAsked();          ///< for people who may not be on the course
    void PaymentsAsked(int row); ///< of that person

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool HaveAllAttended() const;
    void TickAll();
    void EnableButtons();

    ListModel &m_students;
    ListView *m_view = nullptr;
    QPushButton *m_other = nullptr;
    QPushButton *m_payments = nullptr;
    QPushButton *m_all = nullptr;
    bool m_mayChange = false;
};
