#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString form = QStringLiteral("frmCourseMain");
const QString dialog = QStringLiteral("frmCourseMainAddEdit");
const QString periods = QStringLiteral("frmAddExcludeDates");
const QString items = QStringLiteral("MainList");
const QString college = QStringLiteral("Northgate College");

/// A row that is added and renamed, another that is added and removed, and the table that holds them.
struct Kept {
    const char *section;
    const char *typed;
    const char *renamed;
    const char *removed;
    const char *table;
    const char *column;
};

constexpr Kept kept[] = {
    {"Characteristics", "Crech", "Creche", "Smoking room", "CourseCharNames", "Name"},
    {"Assessment Subjects", "Numbers", "Numeracy", "Astrology", "ExamName", "Name"},
    {"Assessment Types", "Writen paper", "Written paper", "Duel", "ExamType", "Type"},
};

struct Resource {
    const char *name;
    const char *reference;
    const char *rate;
    bool ofCollege; ///< otherwise of the employer of one of the three people
};

/// A section of things that are booked, with the dialog and the table of it.
struct Resources {
    QString section;
    QString dialog;
    QString nameField;
    QString table;
    QString nameColumn;
    QList<Resource> all;
};

const Resources venues{QStringLiteral("Venues"),
                       QStringLiteral("frmVenues"),
                       QStringLiteral("VenueName"),
                       QStringLiteral("Venues"),
                       QStringLiteral("Description"),
                       {{"Computer Room", "V1", "12.5", true},
                        {"Main Hall", "V2", "40", true},
                        {"Seminar Room", "V3", "8", true},
                        {"Workshop", "V4", "20", false},
                        {"Studio", "V5", "15.75", false}}};
const Resources facilities{QStringLiteral("Facilities"),
                           QStringLiteral("frmFacilities"),
                           QStringLiteral("FacName"),
                           QStringLiteral("Facilities"),
                           QStringLiteral("Name"),
                           {{"Projector", "F1", "5", true},
                            {"Flip chart", "F2", "1", true},
                            {"Laptops", "F3", "30", true},
                            {"Welding torch", "F4", "7.5", false},
                            {"Trampoline", "F5", "9", false}}};

void OpenSection(Keyboard &keys, const QString &section)
{
    keys.On(form, u"open " % section, [&keys, section] {
        keys.Go(QStringLiteral("SecList"));
        keys.ToRow(section);
    });
}

void AddItem(Keyboard &keys, const QString &name)
{
    keys.On(form, u"add " % name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
    keys.On(dialog, name, [&keys, name] {
        keys.Expect(keys.Focus() == u"CatName", u"the dialog starts at " % keys.Focus());
        keys.Write(name);
    });
    keys.See(dialog, u"new row " % name, [&keys] { keys.Tap(QStringLiteral("Return")); });
}

int RowsNamed(const Kept &row, const char *name)
{
    return RowsOf(u"SELECT * FROM " % QString::fromLatin1(row.table) % u" WHERE " %
                  QString::fromLatin1(row.column) % u" = '" % QString::fromLatin1(name) % u'\'');
}

void KeepSection(Keyboard &keys, const Kept &row)
{
    const QString removed = QString::fromLatin1(row.removed);
    OpenSection(keys, QString::fromLatin1(row.section));
    AddItem(keys, QString::fromLatin1(row.typed));
    keys.On(form, u"rename in " % QString::fromLatin1(row.section),
            [&keys] { keys.Press(QStringLiteral("EditBtn")); });
    keys.On(dialog, QString::fromLatin1(row.renamed), [&keys, row] {
        keys.Fill(QStringLiteral("CatName"), QString::fromLatin1(row.renamed));
        keys.Tap(QStringLiteral("Return"));
    });
    AddItem(keys, removed);
    keys.On(form, u"remove " % removed, [&keys, row, removed] {
        keys.Expect(RowsNamed(row, row.removed) == 1, removed % u" was not stored");
        keys.ExpectRow(items, QString::fromLatin1(row.renamed));
        keys.Press(QStringLiteral("DelBtn"));
    });
    keys.Box(QStringLiteral("Confirm Deletion"), u"Okay to delete item '" % removed % u'\'',
             QStringLiteral("Yes"));
    keys.See(form, u"section " % QString::fromLatin1(row.section), [&keys, row] {
        keys.Expect(RowsNamed(row, row.renamed) == 1 && RowsNamed(row, row.typed) == 0 &&
                        RowsNamed(row, row.removed) == 0,
                    u"the table " % QString::fromLatin1(row.table) % u" differs from the list");
    });
}

/// The sections whose dialogs belong to the assessments: they list, and add nothing.
void SeeEmptySection(Keyboard &keys, const QString &section)
{
    OpenSection(keys, section);
    keys.See(form, u"section " % section, [&keys, section] {
        keys.Expect(keys.Rows(items).isEmpty(), section % u" is not empty");
        keys.Expect(!keys.IsEnabled(QStringLiteral("AddBtn")), section % u" can be added to");
    });
}

void AddResource(Keyboard &keys, TourPlan &plan, const Resources &kind, const Resource &resource)
{
    const QString name = QString::fromLatin1(resource.name);
    keys.On(form, u"add " % name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
    keys.On(kind.dialog, name, [&keys, &plan, kind, resource, name] {
        keys.Fill(QStringLiteral("RefName"), QString::fromLatin1(resource.reference));
        keys.Fill(kind.nameField, name);
        keys.Choose(QStringLiteral("OrganList"), resource.ofCollege ? college : plan.employer);
        keys.Fill(QStringLiteral("Rate"), QString::fromLatin1(resource.rate));
    });
    keys.See(kind.dialog, name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
}

/// Name, owner and rate of a resource, as its table holds them.
QString Stored(const Resources &kind, const QString &reference, const QString &column)
{
    return TextOf(u"SELECT " % column % u" FROM " % kind.table % u" INNER JOIN Organisations ON " %
                  kind.table % u".OrganRef = Organisations.OrganRef WHERE " % kind.table %
                  u".ReferenceID = '" % reference % u'\'');
}

void AddResources(Keyboard &keys, TourPlan &plan, const Resources &kind)
{
    OpenSection(keys, kind.section);
    for (const Resource &resource : kind.all)
        AddResource(keys, plan, kind, resource);
    keys.See(form, u"section " % kind.section, [&keys, &plan, kind] {
        for (const Resource &resource : kind.all) {
            const QString reference = QString::fromLatin1(resource.reference);
            const QString name = QString::fromLatin1(resource.name);
            keys.ExpectRow(items, u'[' % reference % u"] " % name);
            keys.Expect(Stored(kind, reference, kind.table % u'.' % kind.nameColumn) == name &&
                            Stored(kind, reference, QStringLiteral("OrganName")) ==
                                (resource.ofCollege ? college : plan.employer) &&
                            Stored(kind, reference, QStringLiteral("ChargeRate")).toDouble() ==
                                QByteArray(resource.rate).toDouble(),
                        name % u" is stored with another name, owner or rate");
        }
    });
}

void AddPeriod(Keyboard &keys, const QString &name, const QString &from, const QString &to)
{
    keys.On(form, u"add " % name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
    keys.On(periods, name, [&keys, name, from, to] {
        keys.Fill(QStringLiteral("RefName"), name);
        keys.Fill(QStringLiteral("FromDate"), from);
        keys.Fill(QStringLiteral("ToDate"), to);
    });
    keys.See(periods, name, [&keys] { keys.Press(QStringLiteral("AddBtn")); });
}
} // namespace

void AddCourseLists(Keyboard &keys)
{
    keys.Command(QStringLiteral("O"), 1, QStringLiteral("M"));
    keys.See(form, QStringLiteral("course maintenance"), [&keys] {
        keys.Expect(keys.Rows(QStringLiteral("SecList")).size() == 8,
                    QStringLiteral("not every section is listed"));
    });
    for (const Kept &row : kept)
        KeepSection(keys, row);
    SeeEmptySection(keys, QStringLiteral("Awards"));
    SeeEmptySection(keys, QStringLiteral("Assessments"));
}

void AddVenuesAndFacilities(Keyboard &keys, TourPlan &plan)
{
    AddResources(keys, plan, venues);
    AddResources(keys, plan, facilities);
}

void AddFreeDates(Keyboard &keys)
{
    OpenSection(keys, QStringLiteral("Exclude Dates"));
    AddPeriod(keys, QStringLiteral("Half term"), QStringLiteral("26/10/2026"), QStringLiteral("30/10/2026"));
    AddPeriod(keys, QStringLiteral("Christmas"), QStringLiteral("21/12/2026"), QStringLiteral("01/01/2027"));
    keys.See(form, QStringLiteral("section Exclude Dates"), [&keys] {
        keys.Expect(RowsOf(QStringLiteral("SELECT * FROM ExclusionDates")) == 2,
                    QStringLiteral("the two periods are not stored"));
        keys.Expect(keys.Rows(items).filter(QStringLiteral("Christmas")).size() == 1,
                    QStringLiteral("Christmas is not listed"));
        keys.Press(QStringLiteral("ExitBtn"));
    });
}
