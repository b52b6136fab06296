#include "database/statements/MiscODBC.h"
#include "tour/TourDriver.h"
#include "tour/TourPlan.h"

namespace
{
/// The number of rows in a table without the first, which means "nothing chosen".
int CountOf(const QString &table)
{
    return RowsOf(u"SELECT * FROM " % table) - 1;
}

/// Opens the record of the selected person `name` and gives it a new characteristic.
void AddCharacteristic(TourDriver &tour, const QString &name, const QString &field, const QString &figure)
{
    tour.On(QStringLiteral("frmAddContact"), QStringLiteral("a new characteristic"), [](QWidget &screen) {
        if (Hands::Text(screen, QStringLiteral("EditBtn")) == QLatin1String("&Edit"))
            Hands::Press(screen, QStringLiteral("EditBtn"));
        Hands::Tab(screen, QStringLiteral("Notes and Characteristics"));
        Hands::Press(screen, QStringLiteral("NewCBtn"));
    });
    tour.On(QStringLiteral("frmContactMainAddEdit"), name, [name, field, figure](QWidget &screen) {
        Hands::Type(screen, QStringLiteral("CatName"), name);
        Hands::Type(screen, field, figure);
    });
    tour.See(QStringLiteral("frmContactMainAddEdit"), u"characteristic " % name,
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("AddBtn")); });
    tour.See(QStringLiteral("frmAddContact"), u"person with " % name, [&tour, name](QWidget &screen) {
        tour.Expect(Hands::Rows(screen, QStringLiteral("UsedCriteria")).join(u' ').contains(name),
                    u"the person does not have " % name);
        Hands::Press(screen, QStringLiteral("OKBtn"));
    });
}
} // namespace

void AddImport(TourDriver &tour, TourPlan &plan)
{
    tour.On(QStringLiteral("frmMain"), QStringLiteral("import"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_Import")); });
    tour.See(QStringLiteral("frmImportWiz"), QStringLiteral("import wizard"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("cmdNav_2")); });
    tour.On(QStringLiteral("frmImportWiz"), QStringLiteral("the file"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("BrowseBtn")); });
    tour.ChooseFile(QStringLiteral("Open"), plan.peopleFile);
    tour.See(QStringLiteral("frmImportWiz"), QStringLiteral("import file"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("cmdNav_2")); });
    tour.See(QStringLiteral("frmImportWiz"), QStringLiteral("field mapping"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("cmdNav_2")); });
    tour.Box(QStringLiteral("CSV Import"),
             u"Import complete:\n" % QString::number(plan.people) %
                 u" Records where imported.\n0 Records where updated.\n0 Records where skipped.",
             QStringLiteral("OK"));
    tour.See(QStringLiteral("frmImportWiz"), QStringLiteral("imported"), [&tour, &plan](QWidget &screen) {
        tour.Expect(CountOf(QStringLiteral("Contacts")) == plan.people,
                    QStringLiteral("not every line became a person"));
        for (const auto *table : {"City", "County", "Organisations"})
            tour.Expect(CountOf(QLatin1String(table)) > 0,
                        QLatin1String(table) % QStringLiteral(" is empty"));
        Hands::Press(screen, QStringLiteral("cmdNav_3"));
    });
}

void AddCharacteristics(TourDriver &tour, TourPlan &plan)
{
    tour.On(QStringLiteral("frmMain"), QStringLiteral("contacts"),
            [](QWidget &screen) { Hands::Command(screen, QStringLiteral("ID_ContactManager")); });
    tour.On(QStringLiteral("frmContact"), QStringLiteral("the people"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("RefBtn")); });
    tour.On(
        QStringLiteral("frmContact"), QStringLiteral("two of the people"), [&tour, &plan](QWidget &screen) {
            const QStringList people = Hands::Rows(screen, QStringLiteral("ContactList2"));
            tour.Expect(people.size() == plan.people,
                        QStringLiteral("the contact manager does not list everybody"));
            plan.students = people.mid(0, 4);
            Hands::ClickRow(screen, QStringLiteral("ContactList2"), plan.students.at(0));
            Hands::ClickRow(screen, QStringLiteral("ContactList2"), plan.students.at(1), Qt::ControlModifier);
            Hands::Press(screen, QStringLiteral("AddCBtn"));
        });
    tour.See(QStringLiteral("frmContact"), QStringLiteral("contact manager"),
             [](QWidget &screen) { Hands::Press(screen, QStringLiteral("ViewBtn")); });
    tour.See(QStringLiteral("frmAddContact"), QStringLiteral("record of a person"));
    AddCharacteristic(tour, QStringLiteral("Student"), QStringLiteral("Percentage"), QStringLiteral("25"));
    tour.On(QStringLiteral("frmAddContact"), QStringLiteral("the next person"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("NextBtn")); });
    AddCharacteristic(tour, QStringLiteral("Bursary"), QStringLiteral("HardDiscount"), QStringLiteral("30"));
    tour.On(QStringLiteral("frmAddContact"), QStringLiteral("leave the record"),
            [](QWidget &screen) { Hands::Press(screen, QStringLiteral("ExitBtn")); });
}
