#pragma once

#include "courses/maintenance/CourseSections.h"
#include "forms/frames/ItemDialog.h"

class QLineEdit;

/// One row of a simple vocabulary of the course side: name and reference. On success Item() has the texts.
class frmCourseMainAddEdit final : public ItemDialog
{
    Q_OBJECT

public:
    explicit frmCourseMainAddEdit(CourseSection section, QWidget *parent = nullptr);

    /// Loads a row to change instead of adding one.
    void EditItem(int key);
    RefLabel Item() const;

private:
    int Store() override;

    CourseSection m_section;
    QLineEdit *m_catName;
    QLineEdit *m_refName;
};
