#include "contacts/record/ContactCoursesPage.h"

#include "contacts/record/CourseHistoryText.h"
#include "forms/frames/FormBuilder.h"

#include <QFontDatabase>

ContactCoursesPage::ContactCoursesPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    m_text = new QPlainTextEdit(this);
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    form.Place(m_text, QStringLiteral("CoursesText"), QStringLiteral("Courses and pa&yments:"), true);
}

void ContactCoursesPage::ShowHistory(ContactRef contactRef)
{
    m_text->setPlainText(contactRef ? Contact_CourseHistoryText(contactRef) : QString());
}
