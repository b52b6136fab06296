#include "attributes/CustomAttribModule.h"
#include "contacts/groups/GroupModule.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "contacts/record/ContactSave.h"
#include "contacts/roles/RoleModule.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Progress.h"
#include "courses/booking/ResourceTree.h"
#include "courses/events/EventODBC.h"
#include "courses/record/CourseModule.h"
#include "database/statements/System.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/OrganisationSave.h"
#include "support/TestDatabase.h"
#include "torture/SaveKills.h"

using SaveKills::Subject;

namespace
{
constexpr int choices = 10;
constexpr int people = 40;

/// One line for all rows of a query.
QString All(const QString &sql)
{
    return TestDatabase::Rows(sql).join(u',') % u';';
}

/// Fills a list with rows of a query: version 0 has the even ones, version 1 the odd ones.
void Choose(ListModel &list, const QString &sql, int version)
{
    std::vector<ListItem> items;
    const QStringList keys = TestDatabase::Rows(sql);
    for (qsizetype i = version; i < keys.size(); i += 2)
        items.push_back({u'?' % keys.at(i), keys.at(i)});
    list.Fill(std::move(items));
}

const QString concessions = QStringLiteral("SELECT ConcessionRef FROM Concessions ORDER BY ConcessionRef");
const QString roles = QStringLiteral("SELECT RoleTypeRef FROM RoleTypes ORDER BY RoleTypeRef");
const QString others =
    QStringLiteral("SELECT ContactRef FROM Contacts WHERE Cust_Surname = 'Other' ORDER BY ContactRef");

// System values.

std::vector<NumberedValue> Values(const QStringList &texts)
{
    return {{SystemRef::CurrencySymbol, texts.at(0)},
            {SystemRef::TaxName, texts.at(1)},
            {SystemRef::TaxRate, texts.at(2)}};
}

int PrepareValues(int)
{
    SetSystemValues(Values({u"$"_qs, u"VAT"_qs, u"17.5"_qs}));
    return 1;
}

bool SaveValues(int)
{
    return SetSystemValues(Values({u"EUR"_qs, u"GST"_qs, u"20"_qs}));
}

QString StateOfValues(int)
{
    return All(u"SELECT Ref, SystemValue FROM System ORDER BY Ref"_qs);
}

// A person.

/// The tables of a deletion, with the person's rows in each.
const QStringList tablesOfPerson{u"StudentsEnrolled"_qs,  u"AttendanceRecord"_qs, u"StaffEmployed"_qs,
                                 u"CourseStaff"_qs,       u"StudentExams"_qs,     u"Groups"_qs,
                                 u"ContactConcession"_qs, u"ContactRoles"_qs,     u"Contacts"_qs};

GroupRef TheGroup()
{
    return GroupRef(TestDatabase::Value(u"SELECT GroupRef FROM GroupNames"_qs).toInt());
}

bool SavePerson(int &key, int version)
{
    ContactRecord record;
    record.forename = u"Version " % QString::number(version);
    record.surname = QStringLiteral("Saved");
    StoredContact shown;
    ListModel members;
    SeenMembers unknown;
    FieldValues notSeen;
    Choose(shown.usedCriteria, concessions, version);
    Choose(shown.roles, roles, version);
    Choose(members, others, version);
    const QString link = u'!' % TestDatabase::Value(u"SELECT LinkRef FROM LinkNames"_qs);
    for (int row = 0; row < members.Count(); ++row)
        members.SetKey(row, members.At(row).key % link);
    ADO_CustomAttrib_Show(shown.attributes, AttribSection::Contacts);
    for (TreeNode *node : shown.attributes.Nodes()) {
        if (node->tick != TreeTick::None && node->row % 2 == version)
            shown.attributes.SetTick(node, TreeTick::On);
    }
    Progress progress;
    const RecordSaved saved = Contact_Save(ContactRef(key), record, shown.Lists(),
                                           {TheGroup(), members, unknown}, notSeen, progress);
    key = saved.key;
    return saved.isWhole;
}

int PreparePerson(int key)
{
    SavePerson(key, 0);
    return key;
}

QString StateOfPerson(int key)
{
    const QString of = u" WHERE ContactRef = " % QString::number(key);
    return All(u"SELECT Cust_Forename FROM Contacts" % of) %
           All(u"SELECT ConcessionRef FROM ContactConcession" % of % u" ORDER BY ConcessionRef") %
           All(u"SELECT RoleTypeRef FROM ContactRoles" % of % u" ORDER BY RoleTypeRef") %
           All(u"SELECT AttributeValueRef FROM AppliedAttributes WHERE AppliesToRef = " %
               QString::number(key) % u" ORDER BY AttributeValueRef") %
           All(u"SELECT ContactRef FROM Groups ORDER BY ContactRef"_qs);
}

int PrepareDeleted(int key)
{
    if (key > 0 && Contact_Check(ContactRef(key)))
        return key;
    ContactRecord record;
    record.forename = QStringLiteral("Deleted");
    record.surname = QStringLiteral("Person");
    key = Contact_Add(record);
    for (const QString &table : tablesOfPerson.first(tablesOfPerson.size() - 1))
        TestDatabase::Run(
            {u"INSERT INTO " % table % u" (ContactRef) VALUES (" % QString::number(key) % u")"});
    return key;
}

bool DeletePerson(int key)
{
    return ADO_Contact_Delete(ContactRef(key));
}

QString StateOfDeleted(int key)
{
    QString rows;
    for (const QString &table : tablesOfPerson)
        rows += All(u"SELECT COUNT(*) FROM " % table % u" WHERE ContactRef = " % QString::number(key));
    return rows;
}

// A course.

/// Fills the branches of each event: version 0 has the even choices, version 1 the odd ones.
void ChooseResources(CourseResources &resources, int version)
{
    using ResourceTree::Kind;
    constexpr RoleTypeRef role{1};
    const QStringList guests = TestDatabase::Rows(others);
    TreeModel &tree = resources.tree;
    for (const ResourceTree::Node &node : ResourceTree::Contents(tree)) {
        if (node.IsItem())
            tree.Remove(ResourceTree::Key(node));
    }
    for (const EventRef event : resources.hours.keys()) {
        ResourceTree::AddRole(tree, event, role, u"Tutor"_qs);
        for (int i = version; i < choices; i += 2) {
            ResourceTree::AddItem(tree, {Kind::Attendance, event, guests.at(i).toInt()}, u"Guest"_qs);
            ResourceTree::AddItem(tree, {Kind::Facilities, event, i + 1}, u"Torch"_qs);
            ResourceTree::AddItem(tree, {Kind::Staff, event, guests.at(i).toInt(), role}, u"Guest"_qs);
            ResourceTree::AddItem(tree, {Kind::Venues, event, i + 2}, u"Hall"_qs);
        }
    }
}

bool SaveCourse(int &key, int version)
{
    CourseRecord course;
    course.courseRef = CourseRef(key);
    course.title = u"Version " % QString::number(version);
    ListModel characteristics;
    Choose(characteristics, concessions, version);
    TreeModel folders;
    for (int folder = 1; folder <= choices; ++folder) {
        TreeNode node{u'!' % QString::number(folder), u"Folder"_qs};
        node.tick = folder % 2 == version ? TreeTick::On : TreeTick::Off;
        folders.Add({}, std::move(node));
    }
    CourseResources resources;
    ReadCourseResources(course.courseRef, resources);
    ChooseResources(resources, version);
    FieldValues notSeen;
    Progress progress;
    const RecordSaved saved = Course_Save(course, {characteristics, folders, resources}, notSeen, progress);
    key = saved.key;
    return saved.isWhole;
}

int PrepareCourse(int key)
{
    const bool isNew = key == 0;
    SaveCourse(key, 0);
    if (isNew) { // which is stored without characteristics and events
        for (int day = 1; day <= 3; ++day)
            ADO_Course_AddEvent(CourseRef(key), day, {20270300 + day, 900, 1000});
        SaveCourse(key, 0);
    }
    return key;
}

QString StateOfCourse(int key)
{
    const QString of = u" WHERE CourseRef = " % QString::number(key);
    return All(u"SELECT Title FROM Courses" % of) %
           All(u"SELECT ConcessionRef FROM CourseChar" % of % u" ORDER BY ConcessionRef") %
           All(u"SELECT CourseHierarchyRef FROM CoursesRelationships" % of %
               u" ORDER BY CourseHierarchyRef") %
           All(u"SELECT EventRef FROM CourseEvents" % of % u" ORDER BY EventRef") %
           All(u"SELECT EventNo,ContactRef FROM AttendanceRecord" % of % u" ORDER BY EventNo,ContactRef") %
           All(u"SELECT EventNo,FacilityRef FROM FacilitiesEmployed" % of %
               u" ORDER BY EventNo,FacilityRef") %
           All(u"SELECT EventNo,ContactRef FROM StaffEmployed" % of % u" ORDER BY EventNo,ContactRef") %
           All(u"SELECT EventNo,VenueRef FROM VenuesEmployed" % of % u" ORDER BY EventNo,VenueRef");
}

// An organisation.

bool SaveOrganisation(int &key, int version)
{
    OrganisationRecord record;
    record.name = u"Version " % QString::number(version);
    StoredOrganisation shown;
    Choose(shown.contacts, others, version);
    Choose(shown.usedCriteria, concessions, version);
    FieldValues notSeen;
    Progress progress;
    const RecordSaved saved = Organisation_Save(OrganRef(key), record, shown.Lists(), notSeen, progress);
    key = saved.key;
    return saved.isWhole;
}

int PrepareOrganisation(int key)
{
    SaveOrganisation(key, 0);
    return key;
}

QString StateOfOrganisation(int key)
{
    const QString of = u" WHERE OrganRef = " % QString::number(key);
    return All(u"SELECT OrganName FROM Organisations" % of) %
           All(u"SELECT ContactRef FROM Contacts" % of % u" ORDER BY ContactRef") %
           All(u"SELECT ConcessionRef FROM OrganChars" % of % u" ORDER BY ConcessionRef");
}

template <bool (*SaveVersion)(int &, int)>
bool SaveNext(int key)
{
    return SaveVersion(key, 1);
}
} // namespace

void SaveKills::MakeChoices()
{
    const int attribute = CustomAttrib_AddAttrib({u"Diet"_qs, AttribType::Multi});
    for (int i = 0; i < choices; ++i) {
        const QString name = u"Choice " % QString::number(i);
        Concession_Add(name, 10, 0, {});
        RoleType_Add({name, {}, 1, RoleStatus::Active, {}});
        CustomAttrib_AddAttribVal(name, AttributeRef(attribute));
        TestDatabase::Run({u"INSERT INTO Venues (Description,ReferenceID) VALUES ('" % name % u"','')",
                           u"INSERT INTO Facilities (Name,ReferenceID) VALUES ('" % name % u"','')"});
    }
    for (int i = 0; i < people; ++i) {
        ContactRecord person;
        person.forename = QString::number(i);
        person.surname = QStringLiteral("Other");
        Contact_Add(person);
    }
    GroupName_Add(u"Family"_qs, {},
                  LinkRef(Contact_AddItem(ContactSection::GroupTypes, u"Relations"_qs, {})));
}

const std::vector<Subject> &SaveKills::Subjects()
{
    static const std::vector<Subject> subjects{
        {u"storing system values"_qs, 5000, PrepareValues, SaveValues, StateOfValues},
        {u"deleting a person"_qs, 2000, PrepareDeleted, DeletePerson, StateOfDeleted},
        {u"saving a person with lists"_qs, 500, PreparePerson, SaveNext<SavePerson>, StateOfPerson},
        {u"saving a course"_qs, 1000, PrepareCourse, SaveNext<SaveCourse>, StateOfCourse},
        {u"saving an organisation with people"_qs, 500, PrepareOrganisation, SaveNext<SaveOrganisation>,
         StateOfOrganisation}};
    return subjects;
}
