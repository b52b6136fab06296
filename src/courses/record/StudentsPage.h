#pragma once

#include "controls/ListModel.h"
#include "database/values/Keys.h"

#include <QWidget>

class ListView;
class QLabel;
class QPushButton;

/// The "Students" tab: who is on the course, and whether they have paid.
class StudentsPage final : public QWidget
{
    Q_OBJECT

public:
    explicit StudentsPage(QWidget *parent = nullptr);

    /// Lists the students of a saved course.
    void ShowStudents(CourseRef courseRef);
    ListModel &Students() { return m_students; }
    int Enrolled() const { return m_students.Count(); }
    /// What the user's rights and the course's limit leave. `whyNot` says why nobody can be added.
    void Allow(bool add, bool remove, const QString &whyNot);

signals:
    void AddAsked();
    void Enrolment();

private:
    void Remove();
    void OpenStudent();
    void EnableButtons();

    ListModel m_students;
    ListView *m_view = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_remove = nullptr;
    QPushButton *m_info = nullptr;
    QLabel *m_whyNot = nullptr;
    CourseRef m_courseRef;
    bool m_mayAdd = false;
    bool m_mayRemove = false;
};
