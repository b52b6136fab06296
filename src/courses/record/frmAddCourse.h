#pragma once

#include "controls/ListModel.h"
#include "courses/record/CourseVersion.h"
#include "database/statements/WholeSave.h"
#include "database/values/Keys.h"
#include "forms/frames/FormDialog.h"

class CharacteristicsPage;
class CoursePage;
class QPushButton;
class QTabWidget;
class ResourcesPage;
class StudentsPage;

/// Adds and edits a course, its folders, its students and its events. When it closes, gDialogResult holds the
/// course's reference, or 0 if nothing was saved.
class frmAddCourse final : public FormDialog
{
    Q_OBJECT

public:
    explicit frmAddCourse(QWidget *parent = nullptr);

    /// Opens on a new course in the folder `location` ("!" and folder; "!0" is the root level).
    void NewCourse(const QString &location);
    /// Opens on a course; false if it could not be read.
    bool EditCourse(CourseRef courseRef);
    QString CourseTitle() const;

    void done(int result) override;

protected:
    bool MayLeave() override;

private:
    void EnablePages(bool enabled);
    void RowExists(CourseRef courseRef);
    void ShowTitle();
    void ApplyRights();
    void Save();
    RecordSaved Store();
    void ShowEvents();
    bool MayReadEventsAgain(const QString &what);
    void AddEvents();
    void OpenEvent(EventRef eventRef);
    void AddStudents();
    CourseLists Lists();

    CourseRef m_courseRef; ///< 0 = a new course
    int m_saved = 0;       ///< the course's reference once it was saved
    CourseRecord m_record; ///< as it was read or stored last
    FieldValues m_seen;    ///< the stored version that the screen set out from; empty = not known
    QTabWidget *m_tabs = nullptr;
    CoursePage *m_course = nullptr;
    CharacteristicsPage *m_characteristics = nullptr;
    StudentsPage *m_students = nullptr;
    ResourcesPage *m_resources = nullptr;
    QPushButton *m_add = nullptr;
    ModifiedMark *m_modified = nullptr;
};
