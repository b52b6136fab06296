#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString form = QStringLiteral("frmContactMain");
const QString dialog = QStringLiteral("frmContactMainAddEdit");
const QString sections = QStringLiteral("SecList");
const QString items = QStringLiteral("MainList");

/// A row that is added and renamed, and another that is added and removed.
struct Kept {
    const char *section;
    const char *typed;
    const char *reference;
    const char *renamed;
    const char *removed;
};

constexpr Kept kept[] = {
    {"Titles", "Professor", "PROF", "Prof", "Sir"},
    {"Cities", "Nortgate", "NG", "Northgate", "Overwater"},
    {"Countries", "Scotland", "SCT", "Alba", "Atlantis"},
};

void OpenSection(Keyboard &keys, const QString &section)
{
    keys.Go(sections);
    keys.ToRow(section);
}

/// Adds a row to the open section; the list shows and selects it.
void AddItem(Keyboard &keys, const QString &name, const QString &reference)
{
    keys.On(form, u"add " % name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
    keys.On(dialog, name, [&keys, name, reference] {
        keys.Expect(keys.Focus() == u"CatName", u"the dialog starts at " % keys.Focus());
        keys.Write(name);
        keys.Fill(QStringLiteral("RefName"), reference);
    });
    keys.See(dialog, u"new row " % name, [&keys] { keys.Tap(QStringLiteral("Return")); });
    keys.On(form, name % u" listed", [&keys, name, reference] {
        keys.ExpectRow(items, reference.isEmpty() ? name : QString(u'[' % reference % u"] " % name));
    });
}

void KeepSection(Keyboard &keys, const Kept &row)
{
    const QString section = QString::fromLatin1(row.section);
    const QString renamed = QString::fromLatin1(row.renamed);
    const QString removed = QString::fromLatin1(row.removed);
    const QString reference = QString::fromLatin1(row.reference);
    keys.On(form, section, [&keys, section] { OpenSection(keys, section); });
    AddItem(keys, QString::fromLatin1(row.typed), reference);
    keys.On(form, u"rename in " % section, [&keys] { keys.Press(QStringLiteral("EditBtn")); });
    keys.On(dialog, u"rename to " % renamed, [&keys, renamed] {
        keys.Fill(QStringLiteral("CatName"), renamed);
        keys.Tap(QStringLiteral("Return"));
    });
    AddItem(keys, removed, {});
    keys.On(form, u"remove from " % section, [&keys, renamed, reference] {
        keys.ExpectRow(items, u'[' % reference % u"] " % renamed);
        keys.Press(QStringLiteral("DelBtn"));
    });
    keys.Box(QStringLiteral("Confirm Deletion"), u"Okay to delete item '" % removed % u'\'',
             QStringLiteral("Yes"));
    keys.See(form, u"section " % section, [&keys, removed] {
        keys.Expect(keys.Rows(items).filter(removed).isEmpty(), removed % u" is still listed");
    });
}
} // namespace

void AddReferenceLists(Keyboard &keys)
{
    keys.Command(QStringLiteral("C"), 0, QStringLiteral("M"));
    keys.See(form, QStringLiteral("reference lists"), [&keys] {
        keys.Expect(keys.Rows(sections).size() == 10, QStringLiteral("not every section is listed"));
        keys.Expect(keys.Focus() == sections, u"the lists start at " % keys.Focus());
    });
    for (const Kept &row : kept)
        KeepSection(keys, row);
}

void AddRoleTypes(Keyboard &keys)
{
    keys.On(form, QStringLiteral("roles"), [&keys] {
        OpenSection(keys, QStringLiteral("Roles"));
        keys.Press(QStringLiteral("AddBtn"));
    });
    keys.On(QStringLiteral("frmAddEditRoleTypes"), QStringLiteral("tutor"), [&keys] {
        keys.Expect(keys.Focus() == u"RoleName", u"the dialog starts at " % keys.Focus());
        keys.Write(QStringLiteral("Tutor"));
        keys.Fill(QStringLiteral("RefName"), QStringLiteral("TUT"));
        keys.Fill(QStringLiteral("Description"), QStringLiteral("Leads the evening classes"));
        keys.Fill(QStringLiteral("Rate"), QStringLiteral("25.5"));
    });
    keys.See(QStringLiteral("frmAddEditRoleTypes"), QStringLiteral("role"),
             [&keys] { keys.Press(QStringLiteral("AddBtn")); });
    keys.On(form, QStringLiteral("a second role"), [&keys] {
        keys.ExpectRow(items, QStringLiteral("[TUT] Tutor"));
        keys.Press(QStringLiteral("AddBtn"));
    });
    keys.On(QStringLiteral("frmAddEditRoleTypes"), QStringLiteral("assessor"), [&keys] {
        keys.Write(QStringLiteral("Assessor"));
        keys.Tap(QStringLiteral("Return"));
    });
    keys.See(form, QStringLiteral("roles kept"),
             [&keys] { keys.ExpectRow(items, QStringLiteral("Assessor")); });
}

void AddGroupTypes(Keyboard &keys)
{
    keys.On(form, QStringLiteral("group types"),
            [&keys] { OpenSection(keys, QStringLiteral("Group Types")); });
    AddItem(keys, QStringLiteral("Family"), {});
    AddItem(keys, QStringLiteral("Car sharing"), {});
    keys.On(form, QStringLiteral("groups"), [&keys] {
        OpenSection(keys, QStringLiteral("Groups"));
        keys.Press(QStringLiteral("AddBtn"));
    });
    keys.On(QStringLiteral("frmGroupName"), QStringLiteral("the group"), [&keys] {
        keys.Choose(QStringLiteral("LinkList"), QStringLiteral("Family"));
        keys.Fill(QStringLiteral("GroupName"), QStringLiteral("Hill Street"));
    });
    keys.See(QStringLiteral("frmGroupName"), QStringLiteral("group"),
             [&keys] { keys.Tap(QStringLiteral("Return")); });
    keys.On(form, QStringLiteral("group listed"), [&keys] {
        keys.ExpectRow(items, QStringLiteral("Hill Street"));
        keys.Press(QStringLiteral("ExitBtn"));
    });
}
