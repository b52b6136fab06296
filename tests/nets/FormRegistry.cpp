#include "nets/FormRegistry.h"

#include "contacts/frmSelectContacts.h"
#include "core/Session.h"
#include "courses/CourseRecordODBC.h"
#include "courses/frmAddCourse.h"
#include "courses/frmCourse.h"
#include "database/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/frmPercent.h"
#include "enrolment/frmStudentInfo.h"
#include "reports/frmCourseWiz.h"
#include "support/TestDatabase.h"
#include "users/UsersODBC.h"
#include "users/frmAddEditUser.h"
#include "users/frmUsers.h"
#include "users/frmUsersPassword.h"

namespace
{
int g_courseRef = 0;
ListModel *g_list = nullptr; ///< the list of a form's opener

const ListItem clerk{QStringLiteral("?1"), QStringLiteral("clerk")};

template <typename Form, typename... Arguments>
std::function<std::unique_ptr<QWidget>()> Open(Arguments... arguments)
{
    return [=] { return std::make_unique<Form>(arguments...); };
}

std::unique_ptr<QWidget> OpenPicker()
{
    auto form = std::make_unique<frmSelectContacts>();
    form->Configure(frmSelectContacts::Mode::EnrolOnCourse, *g_list, g_courseRef, 3);
    return form;
}

std::unique_ptr<QWidget> OpenNewCourse()
{
    auto form = std::make_unique<frmAddCourse>();
    form->NewCourse(QStringLiteral("!0"));
    return form;
}

std::unique_ptr<QWidget> OpenCourse()
{
    auto form = std::make_unique<frmAddCourse>();
    form->EditCourse(g_courseRef);
    return form;
}

std::unique_ptr<QWidget> OpenStudent()
{
    ADO_Course_ShowEnrolledStudents(g_courseRef, *g_list);
    return std::make_unique<frmStudentInfo>(g_courseRef, *g_list, g_list->At(0).key);
}
} // namespace

const std::vector<FormEntry> &FormRegistry()
{
    static const std::vector<FormEntry> forms = {
        {QStringLiteral("frmAddCourse new"), OpenNewCourse, QStringLiteral("Title"), QStringList()},
        {QStringLiteral("frmAddCourse edit"), OpenCourse, QStringLiteral("Title"), QStringList()},
        {QStringLiteral("frmAddEditUser new"), Open<frmAddEditUser>(), QStringLiteral("UserName")},
        {QStringLiteral("frmAddEditUser update"),
         [] { return std::make_unique<frmAddEditUser>(std::vector<ListItem>{clerk}, false); }},
        {QStringLiteral("frmCourse"), Open<frmCourse>(), {}, QStringList()},
        {QStringLiteral("frmCourseWiz"), Open<frmCourseWiz>()},
        {QStringLiteral("frmPercent"),
         Open<frmPercent>(QStringList{QStringLiteral("Welding"), QStringLiteral("Welding")})},
        {QStringLiteral("frmSelectContacts"), OpenPicker},
        {QStringLiteral("frmStudentInfo"), OpenStudent, {}, QStringList()},
        {QStringLiteral("frmUsers"), Open<frmUsers>()},
        {QStringLiteral("frmUsersPassword"), Open<frmUsersPassword>(clerk)},
    };
    return forms;
}

void FillForms()
{
    static ListModel list;
    g_list = &list;
    gUserRights = RightsBlank();
    TestDatabase::Run({
        QStringLiteral(
            "INSERT INTO Contacts (Cust_Forename, Cust_Surname, ReferenceID) VALUES ('Ann','Lee','')"),
        QStringLiteral(
            "INSERT INTO Contacts (Cust_Forename, Cust_Surname, ReferenceID) VALUES ('Bob','Ray','')"),
        QStringLiteral("INSERT INTO Concessions (ReferenceID, Name, Percentage, HardDiscount) VALUES "
                       "('','Student',20,0)"),
        QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (2,'£')"),
        QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (10,'Luncheon')"),
    });
    ADO_Users_AddUser(clerk.text, QStringLiteral("secret"), RightsBlank());
    g_courseRef = ADO_Course_AddCourse(QStringLiteral("Welding"), {}, 100, 10, {});
    const QString person =
        TestDatabase::Value(QStringLiteral("SELECT ContactRef FROM Contacts WHERE Cust_Surname = 'Lee'"));
    ADO_Course_EnrollStudent(g_courseRef, person.toInt());
}
