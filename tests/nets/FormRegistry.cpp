#include "nets/FormRegistry.h"

#include "attributes/CustomAttribModule.h"
#include "attributes/frmAddAttribute.h"
#include "attributes/frmAddAttributeVal.h"
#include "attributes/frmCustomAttributes.h"
#include "contacts/groups/frmGroupName.h"
#include "contacts/lists/frmContactMainAddEdit.h"
#include "contacts/maintenance/frmContactMain.h"
#include "contacts/manager/frmContact.h"
#include "contacts/manager/frmQuickFilter.h"
#include "contacts/manager/frmSearchContact.h"
#include "contacts/manager/frmSelectContacts.h"
#include "contacts/record/frmAddContact.h"
#include "contacts/roles/frmAddEditRoleTypes.h"
#include "core/session/Session.h"
#include "core/shell/frmAbout.h"
#include "core/shell/frmLocalOptions.h"
#include "core/shell/frmMain.h"
#include "core/shell/frmSplash.h"
#include "core/shell/frmUserMay.h"
#include "courses/booking/frmSelectFacilities.h"
#include "courses/booking/frmSelectStaff.h"
#include "courses/booking/frmSelectVenues.h"
#include "courses/events/EventODBC.h"
#include "courses/events/frmAddEvents.h"
#include "courses/events/frmEvent.h"
#include "courses/events/frmUnbooked.h"
#include "courses/maintenance/frmAddExcludeDates.h"
#include "courses/maintenance/frmCourseMain.h"
#include "courses/maintenance/frmCourseMainAddEdit.h"
#include "courses/maintenance/frmFacilities.h"
#include "courses/maintenance/frmVenues.h"
#include "courses/manager/FolderModule.h"
#include "courses/manager/frmCategory.h"
#include "courses/manager/frmCourse.h"
#include "courses/manager/frmDuplicateOpts.h"
#include "courses/record/CoursePeople.h"
#include "courses/record/CourseRecordODBC.h"
#include "courses/record/frmAddCourse.h"
#include "courses/schedule/frmSchedule.h"
#include "database/connection/frmDBLogon.h"
#include "database/connection/frmDBOptions.h"
#include "database/connection/frmDBPass.h"
#include "database/connection/frmDBProps.h"
#include "database/connection/frmODBCLogon.h"
#include "database/connection/frmRegisterDB.h"
#include "database/statements/Security.h"
#include "enrolment/EnrolmentODBC.h"
#include "enrolment/frmPercent.h"
#include "enrolment/frmStudentInfo.h"
#include "exchange/export/frmExportWiz.h"
#include "exchange/import/ImportState.h"
#include "exchange/import/frmChangeMap.h"
#include "exchange/import/frmCheckFile.h"
#include "exchange/import/frmImportWiz.h"
#include "forms/frames/frmConflict.h"
#include "organisations/record/frmAddOrg.h"
#include "organisations/record/frmAwardBoard.h"
#include "organisations/record/frmOrganisations.h"
#include "platform/desktop/Directories.h"
#include "reports/contacts/frmContactWiz.h"
#include "reports/courses/frmCourseWiz.h"
#include "support/TestDatabase.h"
#include "users/UsersODBC.h"
#include "users/frmAddEditUser.h"
#include "users/frmUsers.h"
#include "users/frmUsersPassword.h"

#include <QAbstractButton>
#include <QFile>

namespace
{
CourseRef g_courseRef;
int g_contactRef = 0;
int g_organRef = 0;
ListModel *g_list = nullptr; ///< the list of a form's opener

/// What narrows a list of people down changes nothing.
const QStringList searchOfPeople{QStringLiteral("SearchBox"), QStringLiteral("ConcessionList")};

const ListItem clerk{QStringLiteral("?1"), QStringLiteral("clerk")};

template <typename Form, typename... Arguments>
std::function<std::unique_ptr<QWidget>()> Open(Arguments... arguments)
{
    return [=] { return std::make_unique<Form>(arguments...); };
}

std::unique_ptr<QWidget> OpenPicker()
{
    auto form = std::make_unique<frmSelectContacts>();
    form->Configure(frmSelectContacts::Mode::EnrolOnCourse, *g_list,
                    CoursePeople::Students(CourseRef(g_courseRef), 3));
    return form;
}

std::unique_ptr<QWidget> OpenSearch()
{
    return std::make_unique<frmSearchContact>(*g_list);
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
    form->EditCourse(CourseRef(g_courseRef));
    return form;
}

std::unique_ptr<QWidget> OpenOrganisation()
{
    auto form = std::make_unique<frmAddOrg>();
    form->OpenRecords({u'?' % QString::number(g_organRef)}, RecordForm::Open::Edit);
    return form;
}

std::unique_ptr<QWidget> OpenPerson()
{
    auto form = std::make_unique<frmAddContact>();
    form->OpenRecords({u'?' % QString::number(g_contactRef)});
    return form;
}

std::unique_ptr<QWidget> OpenPersonToEdit()
{
    auto form = OpenPerson();
    form->findChild<QAbstractButton *>(QStringLiteral("EditBtn"))->click();
    return form;
}

std::unique_ptr<QWidget> OpenSeries()
{
    return std::make_unique<frmAddEvents>(g_courseRef, true);
}

std::unique_ptr<QWidget> OpenUnbooked()
{
    const BookingClash clash{BookingClash::Of::Venue, QStringLiteral("Hall"), QStringLiteral("Pottery")};
    return std::make_unique<frmUnbooked>(std::vector<UnbookedEvent>{{1, {20270301, 900, 1030}, {clash}}});
}

std::unique_ptr<QWidget> OpenNewFolder()
{
    static TreeModel tree;
    auto form = std::make_unique<frmCategory>(Course_FolderStore(tree));
    form->NewFolder(QStringLiteral("!0"));
    return form;
}

std::unique_ptr<QWidget> OpenEvent()
{
    return std::make_unique<frmEvent>(g_courseRef, 1);
}

/// For the one event, so that the lists tell who is free.
SelectTarget TheEvent()
{
    static TreeModel tree;
    return {tree, EventRef(1), {20270301, 900, 1030}};
}

std::unique_ptr<QWidget> OpenNewCharacteristic()
{
    auto form = std::make_unique<frmContactMainAddEdit>(ContactSection::Characteristics);
    form->SetCaptions(QStringLiteral("Characteristics"), QStringLiteral("Characteristics:"));
    return form;
}

/// An import of a file of people, up to the mapping of its fields.
ImportState *ImportedPeople()
{
    static ImportState state(CsvMap::Installed());
    state.ImportList.SelectFirst();
    QFile people(Directories::WrittenFile(QStringLiteral("temp/people.csv")));
    if (people.open(QIODevice::WriteOnly))
        people.write("Surname,Shoe size\nLee,38\n");
    people.close();
    if (!state.ChooseDataSet() || !state.ChooseFile(people.fileName()))
        return nullptr;
    return &state;
}

template <typename Form, typename... Arguments>
std::unique_ptr<QWidget> OpenOnImport(Arguments... arguments)
{
    ImportState *state = ImportedPeople();
    return state ? std::make_unique<Form>(*state, arguments...) : nullptr;
}

std::unique_ptr<QWidget> OpenSplash()
{
    auto form = std::make_unique<frmSplash>();
    form->AskForLogon();
    return form;
}

std::unique_ptr<QWidget> OpenStudent()
{
    ADO_Course_ShowEnrolledStudents(CourseRef(g_courseRef), *g_list);
    if (g_list->IsEmpty())
        return nullptr;
    return std::make_unique<frmStudentInfo>(g_courseRef, *g_list, g_list->At(0).key);
}
} // namespace

const std::vector<FormEntry> &FormRegistry()
{
    static const std::vector<FormEntry> forms = {
        {QStringLiteral("frmAbout"), Open<frmAbout>()},
        {QStringLiteral("frmAddAttribute"), Open<frmAddAttribute>(), QStringLiteral("AttribName")},
        {QStringLiteral("frmAddAttributeVal"),
         Open<frmAddAttributeVal>(AttributeRef(1), QStringLiteral("Diet")), QStringLiteral("AttribName")},
        {QStringLiteral("frmAddContact new"), Open<frmAddContact>(), QStringLiteral("Surname")},
        {QStringLiteral("frmAddContact view"), OpenPerson, {}, QStringList()},
        {QStringLiteral("frmAddContact edit"), OpenPersonToEdit, QStringLiteral("Surname"), std::nullopt,
         QStringLiteral("C")},
        {QStringLiteral("frmAddCourse new"), OpenNewCourse, QStringLiteral("Title"), QStringList()},
        {QStringLiteral("frmAddCourse edit"), OpenCourse, QStringLiteral("Title"), QStringList()},
        {QStringLiteral("frmAddEditRoleTypes"), Open<frmAddEditRoleTypes>(), QStringLiteral("RoleName")},
        {QStringLiteral("frmAddEvents"), OpenSeries, {}, std::nullopt, QStringLiteral("C")},
        {QStringLiteral("frmAddExcludeDates"), Open<frmAddExcludeDates>(), QStringLiteral("RefName")},
        {QStringLiteral("frmAddOrg new"), Open<frmAddOrg>(), QStringLiteral("OrgName")},
        {QStringLiteral("frmAddOrg edit"), OpenOrganisation, QStringLiteral("OrgName"), QStringList()},
        {QStringLiteral("frmAddEditUser new"), Open<frmAddEditUser>(), QStringLiteral("UserName")},
        {QStringLiteral("frmAddEditUser update"),
         [] { return std::make_unique<frmAddEditUser>(std::vector<ListItem>{clerk}, false); },
         {},
         std::nullopt,
         QStringLiteral("U")},
        {QStringLiteral("frmChangeMap"), [] { return OpenOnImport<frmChangeMap>(0); }},
        {QStringLiteral("frmCheckFile"), [] { return OpenOnImport<frmCheckFile>(); }},
        {QStringLiteral("frmConflict"),
         Open<frmConflict>(QStringLiteral("contact"),
                           QList<Dialogs::FieldChange>{{"Fax", "01904 1", "01904 2", true, true}})},
        {QStringLiteral("frmContact"), Open<frmContact>(), {}, searchOfPeople},
        {QStringLiteral("frmAwardBoard"), Open<frmAwardBoard>()},
        {QStringLiteral("frmContactMain"), Open<frmContactMain>()},
        {QStringLiteral("frmContactMainAddEdit"), OpenNewCharacteristic, QStringLiteral("CatName")},
        {QStringLiteral("frmContactWiz"), Open<frmContactWiz>()},
        {QStringLiteral("frmCategory"), OpenNewFolder, QStringLiteral("CatName"), QStringList()},
        {QStringLiteral("frmCourse"), Open<frmCourse>(), {}, QStringList(QStringLiteral("ID_Find"))},
        {QStringLiteral("frmCourseMain"), Open<frmCourseMain>()},
        {QStringLiteral("frmCourseMainAddEdit"), Open<frmCourseMainAddEdit>(CourseSection::Characteristics),
         QStringLiteral("CatName")},
        {QStringLiteral("frmCourseWiz"), Open<frmCourseWiz>()},
        {QStringLiteral("frmCustomAttributes"), Open<frmCustomAttributes>(), {}, QStringList()},
        {QStringLiteral("frmDBLogon"), Open<frmDBLogon>()},
        {QStringLiteral("frmDBOptions"), Open<frmDBOptions>(), {}, QStringList()},
        {QStringLiteral("frmDBPass"), Open<frmDBPass>()},
        {QStringLiteral("frmDBProps"), Open<frmDBProps>(QStringLiteral("College"), true)},
        {QStringLiteral("frmDuplicateOpts"), Open<frmDuplicateOpts>()},
        {QStringLiteral("frmEvent"), OpenEvent, QStringLiteral("Description"),
         QStringList{QStringLiteral("RoleList")}},
        {QStringLiteral("frmFacilities"), Open<frmFacilities>(), QStringLiteral("FacName")},
        {QStringLiteral("frmGroupName"), Open<frmGroupName>(), QStringLiteral("GroupName")},
        {QStringLiteral("frmExportWiz"), Open<frmExportWiz>()},
        {QStringLiteral("frmImportWiz"), Open<frmImportWiz>()},
        {QStringLiteral("frmLocalOptions"), Open<frmLocalOptions>()},
        {QStringLiteral("frmMain"), Open<frmMain>()},
        {QStringLiteral("frmODBCLogon"), Open<frmODBCLogon>()},
        {QStringLiteral("frmOrganisations"), Open<frmOrganisations>()},
        {QStringLiteral("frmPercent"),
         Open<frmPercent>(QStringList{QStringLiteral("Welding"), QStringLiteral("Welding")})},
        {QStringLiteral("frmQuickFilter"), Open<frmQuickFilter>()},
        {QStringLiteral("frmRegisterDB"), Open<frmRegisterDB>(), QStringLiteral("DSN")},
        {QStringLiteral("frmSchedule"), Open<frmSchedule>()},
        {QStringLiteral("frmSearchContact"), OpenSearch},
        {QStringLiteral("frmSelectContacts"), OpenPicker, {}, searchOfPeople},
        {QStringLiteral("frmSelectFacilities"), Open<frmSelectFacilities>(TheEvent())},
        {QStringLiteral("frmSelectStaff"), Open<frmSelectStaff>(TheEvent(), RoleTypeRef())},
        {QStringLiteral("frmSelectVenues"), Open<frmSelectVenues>(TheEvent())},
        {QStringLiteral("frmSplash"), OpenSplash},
        {QStringLiteral("frmStudentInfo"), OpenStudent, {}, QStringList()},
        {QStringLiteral("frmUnbooked"), OpenUnbooked},
        {QStringLiteral("frmUserMay"), Open<frmUserMay>(clerk.text, RightsBlank())},
        {QStringLiteral("frmUsers"), Open<frmUsers>()},
        {QStringLiteral("frmUsersPassword"), Open<frmUsersPassword>(clerk)},
        {QStringLiteral("frmVenues"), Open<frmVenues>(), QStringLiteral("VenueName")},
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
        QStringLiteral("INSERT INTO RoleTypes (Name, ReferenceID) VALUES ('Tutor','')"),
        QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (2,'£')"),
        QStringLiteral("INSERT INTO System (Ref, SystemValue) VALUES (10,'Luncheon')"),
    });
    TestDatabase::Run(
        {QStringLiteral("INSERT INTO Organisations (OrganName, ReferenceID) VALUES ('Acme','')")});
    g_organRef =
        TestDatabase::Value(QStringLiteral("SELECT OrganRef FROM Organisations WHERE OrganName = 'Acme'"))
            .toInt();
    CustomAttrib_AddAttribVal(QStringLiteral("Vegan"), AttributeRef(CustomAttrib_AddAttrib(
                                                           {QStringLiteral("Diet"), AttribType::Multi})));
    ADO_Users_AddUser(clerk.text, QStringLiteral("secret"), RightsBlank());
    g_courseRef = CourseRef(ADO_Course_AddCourse(QStringLiteral("Welding"), {}, 100, 10, {}));
    g_contactRef =
        TestDatabase::Value(QStringLiteral("SELECT ContactRef FROM Contacts WHERE Cust_Surname = 'Lee'"))
            .toInt();
    ADO_Course_EnrollStudent(CourseRef(g_courseRef), ContactRef(g_contactRef));
    ADO_Course_AddEvent(g_courseRef, 1, {20270301, 900, 1030});
    const QString person = QString::number(g_contactRef);
    TestDatabase::Run(
        {u"UPDATE Contacts SET Cust_Notes = 'nuts', Cust_Addr1 = 'Hill 1', Cust_Sex = 1, Cust_City = 1, "
         u"Cust_TelDay = '1', Cust_Email = 'a@b', Cust_DOB = 30000 WHERE ContactRef = " %
             person,
         QStringLiteral("INSERT INTO ContactConcession (ContactRef, ConcessionRef) SELECT ") % person %
             u", ConcessionRef FROM Concessions WHERE Name = 'Student'",
         u"UPDATE Organisations SET Notes = 'tea', Addr1 = 'Hill 2' WHERE OrganRef = " %
             QString::number(g_organRef),
         u"INSERT INTO OrganChars (OrganRef, ConcessionRef) SELECT " % QString::number(g_organRef) %
             u", ConcessionRef FROM Concessions WHERE Name = 'Student'"});
}
