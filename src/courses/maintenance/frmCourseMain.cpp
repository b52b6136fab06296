#include "courses/maintenance/frmCourseMain.h"

#include "courses/maintenance/frmAddExcludeDates.h"
#include "courses/maintenance/frmCourseMainAddEdit.h"
#include "courses/maintenance/frmFacilities.h"
#include "courses/maintenance/frmVenues.h"
#include "database/statements/Security.h"
#include "forms/lists/DeleteSelected.h"

#include <QPushButton>

namespace
{
template <typename Form>
int RunOn(Form &&form, int key)
{
    if (key > 0)
        form.EditItem(key);
    return form.Run();
}
} // namespace

frmCourseMain::frmCourseMain(QWidget *parent)
    : SectionsDialog(QStringLiteral("frmCourseMain"), QStringLiteral("Course Maintenance"), parent)
{
    QList<std::pair<int, QString>> sections;
    for (const CourseSectionInfo &section : CourseSections())
        sections.append({static_cast<int>(section.code), section.caption});
    ShowSections(sections);
}

void frmCourseMain::FillItems()
{
    Items().SetColumns(Course_Columns(Section()));
    Course_FillItems(Section(), Items());
}

void frmCourseMain::ApplyRights(bool chosen)
{
    const CourseSection section = Section();
    const Level level = UserRight(CourseSectionOf(section).right);
    Buttons().Apply(level, chosen);
    // A dialog that has nothing but its texts is not opened to look at them.
    const bool opensToLook = section == CourseSection::Venues || section == CourseSection::Facilities;
    Buttons().edit->setEnabled(chosen && (opensToLook || level >= Level::Edit));
    // An award or an assessment is more than its name, which is all that can be changed here.
    const bool isAdded = section != CourseSection::Awards && section != CourseSection::Assessments;
    Buttons().add->setEnabled(isAdded && level >= Level::Add);
}

void frmCourseMain::AddItem()
{
    const int added = OpenDialog(0);
    if (added < 1)
        return;
    ShowSection();
    SelectKey(u'!' % SqlNumber(added));
}

void frmCourseMain::EditItem()
{
    OpenDialog(KeyNumber(Items().At(Items().SelectedRows().front()).key));
    Refresh();
}

void frmCourseMain::DeleteItems()
{
    const CourseSection section = Section();
    DeleteSelected(Items(), [section](const ListItem &item) {
        return Course_DeleteItem(section, KeyNumber(item.key)) ? Deletion::Done : Deletion::Failed;
    });
}

int frmCourseMain::OpenDialog(int key)
{
    switch (Section()) {
    case CourseSection::Venues:
        return RunOn(frmVenues(this), key);
    case CourseSection::Facilities:
        return RunOn(frmFacilities(this), key);
    case CourseSection::ExcludeDates:
        return RunOn(frmAddExcludeDates(this), key);
    default:
        return RunOn(frmCourseMainAddEdit(Section(), this), key);
    }
}
