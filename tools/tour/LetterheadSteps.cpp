#include "tour/Keyboard.h"
#include "tour/TourDriver.h"
#include "tour/TourPlan.h"

#include <QFile>
#include <QLocale>

namespace
{
const QString wizard = QStringLiteral("frmContactWiz");
const QString letterhead = QStringLiteral("Northgate Adult Education");

/// A report of the wizard, and what staff see in it.
struct Report {
    const char *name;
    const char *title;
    QString (*held)(const TourPlan &plan);
    const char *holds; ///< a text that it must contain
};

QString Count(int count, const QString &one, const QString &many)
{
    return QLocale().toString(count) % u' ' % (count == 1 ? one : many);
}

QString People(int count)
{
    return Count(count, QStringLiteral("person"), QStringLiteral("people"));
}

QString Everybody(const TourPlan &plan)
{
    return People(plan.people);
}

const Report reports[] = {
    {"Contact Details", "Contact Details", Everybody, "Northgate College"},
    {"Staff Details", "Staff Details", [](const TourPlan &) { return People(1); }, "Northgate College"},
    {"Characteristics & Discounts", "Characteristics & Discounts",
     [](const TourPlan &) {
         return Count(RowsOf(QStringLiteral("SELECT * FROM Concessions")), QStringLiteral("characteristic"),
                      QStringLiteral("characteristics"));
     },
     "Open evening"},
    {"Organisations", "Organisations",
     [](const TourPlan &) {
         return Count(RowsOf(QStringLiteral("SELECT * FROM Organisations WHERE OrganRef > 1")),
                      QStringLiteral("organisation"), QStringLiteral("organisations"));
     },
     "2 Chapel Walk"},
    {"Contacts by Characteristic", "Contact Details, ordered by Characteristic",
     [](const TourPlan &) {
         return People(RowsOf(QStringLiteral("SELECT DISTINCT ContactRef FROM ContactConcession")));
     },
     "Open evening"},
    {"Contacts, ordered by Group Type then Group", "Contact Details, ordered by Group Type then Group",
     [](const TourPlan &) { return People(3); }, "Car sharing"},
    {"Contacts, ordered by Group then Group Type", "Contact Details, Ordered by Group then Group Type",
     [](const TourPlan &) { return People(3); }, "Hill Street"},
};

void WriteLetterhead(const TourPlan &plan)
{
    QFile header(plan.programFolder % u"/Reports/header.htm");
    if (header.open(QIODevice::WriteOnly))
        header.write(QString(u"<h1><font color=\"#1f5f7a\">" % letterhead %
                             u"</font></h1>\n<p>2 Chapel Walk, Northgate</p>\n<hr>\n")
                         .toLatin1());
}

void ExpectReport(TourDriver &tour, const TourPlan &plan, const Report &report)
{
    QFile file(plan.programFolder % u"/Reports/temp.htm");
    tour.Expect(file.open(QIODevice::ReadOnly), QStringLiteral("there is no report"));
    const QString text = QString::fromLatin1(file.readAll());
    for (const QString &part :
         {letterhead, QString::fromLatin1(report.title), QString::fromLatin1(report.holds)})
        tour.Expect(text.contains(part), QLatin1String(report.name) % u" lacks " % part);
}

/// Goes through the wizard up to the end of the report.
void Order(Keyboard &keys, const Report &report, int number)
{
    const QString name = QString::fromLatin1(report.name);
    keys.Command(QStringLiteral("C"), 0, QStringLiteral("R"));
    keys.On(wizard, name, [&keys, name, number] {
        keys.Expect(keys.Focus() == u"RepList", u"the wizard starts at " % keys.Focus());
        keys.Tap(QStringLiteral("Down"), number);
        if (keys.IsEnabled(QStringLiteral("cmdNav_2")))
            keys.Tap(QStringLiteral("Return"));
    });
    keys.See(wizard, u"order " % name, [&keys, number] {
        if (number < 2)
            keys.Press(QStringLiteral("AllBtn"));
        keys.Press(QStringLiteral("cmdNav_3"));
    });
}
} // namespace

void AddLetterheadReports(TourDriver &tour, Keyboard &keys, TourPlan &plan)
{
    keys.On(QStringLiteral("frmMain"), QStringLiteral("a letterhead"), [&plan] { WriteLetterhead(plan); });
    int number = 0;
    for (const Report &report : reports) {
        Order(keys, report, number);
        tour.SeeFile(plan.programFolder % u"/opened.txt", u"report " % QLatin1String(report.name),
                     [&tour, &plan, &report] { ExpectReport(tour, plan, report); });
        keys.See(wizard, u"finished " % QLatin1String(report.name), [&keys, &plan, &report] {
            keys.ExpectText(QStringLiteral("Held"), u"The report \"" % QLatin1String(report.title) %
                                                        u"\" holds " % report.held(plan) % u'.');
            keys.Press(&report == reports ? QStringLiteral("PdfBtn") : QStringLiteral("cmdNav_3"));
        });
        if (number++ > 0)
            continue;
        const QString pdf = plan.programFolder % u"/Reports/contacts.pdf";
        keys.ChooseFile(QStringLiteral("Save as PDF"), pdf);
        keys.See(wizard, QStringLiteral("saved as pdf"), [&keys, pdf] {
            QFile file(pdf);
            keys.Expect(file.open(QIODevice::ReadOnly) && file.read(5) == "%PDF-",
                        pdf % u" is not a PDF document");
            keys.ExpectText(QStringLiteral("Saved"), u"Saved as " % pdf);
            keys.Press(QStringLiteral("cmdNav_3"));
        });
    }
}
