#pragma once

#include "controls/TreeModel.h"
#include "courses/record/CourseRecordODBC.h"
#include "forms/fields/RequiredMarks.h"

#include <QWidget>

class MoneyField;
class ModifiedMark;
class QLineEdit;
class QPlainTextEdit;

/// The "Course" tab: the course's own row and its folders.
class CoursePage final : public QWidget
{
    Q_OBJECT

public:
    explicit CoursePage(QWidget *parent = nullptr);

    /// Lists the folders with `location` ("!" and folder) ticked.
    void ShowFolders(const QString &location);
    void ShowCourse(const CourseRecord &course);
    /// Shows the course's own row alone.
    void ShowFields(const CourseRecord &course);
    /// The course as typed, without its reference.
    CourseRecord Course() const;
    /// True if the course has its name; otherwise the user has been told.
    bool Complete() const { return m_required.Complete(); }
    TreeModel &Folders() { return m_folders; }

    /// The most students; 0 = no limit.
    int Limit() const;
    /// The number of students that the limit may not fall below.
    void SetEnrolled(int count);
    void SetLocked(bool locked, bool feeLocked);
    void Watch(ModifiedMark &modified);

signals:
    void LimitChanged();

private:
    void LeaveLimit();

    TreeModel m_folders;
    RequiredMarks m_required;
    QLineEdit *m_title = nullptr;
    QLineEdit *m_refName = nullptr;
    QPlainTextEdit *m_description = nullptr;
    MoneyField *m_fee = nullptr;
    MoneyField *m_limit = nullptr;
    int m_enrolled = 0;
    bool m_locked = false;
};
