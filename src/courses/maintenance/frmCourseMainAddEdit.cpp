#include "courses/maintenance/frmCourseMainAddEdit.h"

#include "contacts/lists/ContactFields.h"
#include "forms/frames/FormBuilder.h"

frmCourseMainAddEdit::frmCourseMainAddEdit(CourseSection section, QWidget *parent)
    : ItemDialog(QStringLiteral("frmCourseMainAddEdit"), CourseSectionOf(section).caption, parent)
    , m_section(section)
{
    FormBuilder form(this);
    AddNotice(form);
    m_catName = form.Text(QStringLiteral("CatName"), CourseSectionOf(section).caption % u':');
    Required().Add(form.Label(), m_catName);
    ContactFields::FitChars(m_catName, 30);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("Reference ID:"));
    AddButtons(form);
}

void frmCourseMainAddEdit::EditItem(int key)
{
    BeginEditing(key);
    const ReadRow<RefLabel> item = Course_ViewItem(m_section, key);
    if (item) {
        ContactFields::Show(m_catName, item->name);
        ContactFields::Show(m_refName, item->reference);
    }
    EndReading(static_cast<bool>(item), CourseSectionOf(m_section).word);
}

RefLabel frmCourseMainAddEdit::Item() const
{
    return {m_refName->text(), m_catName->text()};
}

int frmCourseMainAddEdit::Store()
{
    return Key() > 0 ? Course_UpdateItem(m_section, Key(), Item()) : Course_AddItem(m_section, Item());
}
