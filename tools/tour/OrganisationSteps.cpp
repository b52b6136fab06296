#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString list = QStringLiteral("frmOrganisations");
const QString record = QStringLiteral("frmAddOrg");
const QString contacts = QStringLiteral("ContactInfo");
const QString college = QStringLiteral("Northgate College");

QString EmployerOf(const QString &person)
{
    return TextOf(u"SELECT Organisations.OrganName FROM Contacts INNER JOIN Organisations ON "
                  u"Contacts.OrganRef = Organisations.OrganRef WHERE ContactRef = " %
                  KeyOf(person));
}

/// The question about a person who belongs to another organisation.
void AnswerMove(Keyboard &keys, TourPlan &plan, int member, const QString &answer)
{
    const auto question = [&plan, member] {
        const QString &person = plan.members.at(member);
        const QString owner = EmployerOf(person);
        return QString(u"Contact '" % person % u"' is already in Organisation '" % owner %
                       u"'\nWould you like to remove from '" % owner % u"' and add to this Organisation?");
    };
    keys.Box(QStringLiteral("Change Contact Organisation"), question, answer);
}
} // namespace

void AddOrganisation(Keyboard &keys, TourPlan &plan)
{
    keys.Command(QStringLiteral("C"), 2, QStringLiteral("R"));
    keys.See(list, QStringLiteral("organisations"), [&keys, &plan] {
        plan.employer = EmployerOf(plan.members.at(1));
        keys.ExpectRow(QStringLiteral("MainList"), plan.employer);
        keys.Press(QStringLiteral("AddBtn"));
    });
    keys.On(record, QStringLiteral("a college"), [&keys] {
        keys.Expect(keys.Focus() == u"OrgName", u"the record starts at " % keys.Focus());
        keys.Write(college);
        keys.Fill(QStringLiteral("Addr1"), QStringLiteral("2 Chapel Walk"));
        keys.Choose(QStringLiteral("CityList"), QStringLiteral("[NG] Northgate"));
        keys.Fill(QStringLiteral("Telday"), QStringLiteral("0113 496 0000"));
    });
    keys.See(record, QStringLiteral("new organisation"), [&keys] {
        keys.OpenTab(QStringLiteral("Contacts"));
        keys.Press(QStringLiteral("AddContactBtn"));
    });
    keys.On(QStringLiteral("frmSelectContacts"), QStringLiteral("two people"), [&keys, &plan] {
        for (const QString &member : plan.members.mid(0, 2)) {
            keys.Write(member);
            keys.Tap(QStringLiteral("Return"));
        }
        keys.Press(QStringLiteral("ExitBtn"));
    });
    keys.See(record, QStringLiteral("people of the college"), [&keys] {
        keys.Expect(keys.Rows(contacts).size() == 2, QStringLiteral("the two people are not listed"));
        keys.Press(QStringLiteral("OkBtn"));
    });
    AnswerMove(keys, plan, 0, QStringLiteral("Yes"));
    AnswerMove(keys, plan, 1, QStringLiteral("No"));
    keys.See(record, QStringLiteral("one person moved"), [&keys, &plan] {
        keys.Expect(keys.Rows(contacts).size() == 1 &&
                        keys.Rows(contacts).first().startsWith(plan.members.at(0)),
                    u"the college has " % keys.Rows(contacts).join(u", "));
        keys.Expect(EmployerOf(plan.members.at(0)) == college, QStringLiteral("the first was not moved"));
        keys.Expect(EmployerOf(plan.members.at(1)) == plan.employer, QStringLiteral("the second was moved"));
        keys.Press(QStringLiteral("ExitBtn"));
    });
    keys.See(list, QStringLiteral("college listed"), [&keys] {
        keys.ExpectRow(QStringLiteral("MainList"), college);
        keys.Press(QStringLiteral("ExitBtn"));
    });
}
