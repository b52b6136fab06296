#pragma once

#include "courses/maintenance/CourseSections.h"
#include "forms/frames/SectionsDialog.h"

/// The vocabularies of the course side: characteristics, venues, facilities, assessments and so on.
class frmCourseMain final : public SectionsDialog
{
    Q_OBJECT

public:
    explicit frmCourseMain(QWidget *parent = nullptr);

private:
    CourseSection Section() const { return static_cast<CourseSection>(SectionNumber()); }
    void FillItems() override;
    void ApplyRights(bool chosen) override;
    void AddItem() override;
    void EditItem() override;
    void DeleteItems() override;
    /// Opens the section's dialog for a new row, or for the one of `key`; the key of what was stored, or 0.
    int OpenDialog(int key);
};
