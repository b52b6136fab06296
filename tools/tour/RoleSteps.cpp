#include "tour/Keyboard.h"
#include "tour/TourPlan.h"

namespace
{
const QString record = QStringLiteral("frmAddContact");
const QString roles = QStringLiteral("RolesInfo");

/// Engages the person of the record from one day to another.
void Engage(Keyboard &keys, const QString &role, const QString &rate, const QString &from, const QString &to)
{
    keys.On(record, role, [&keys, role, rate, from, to] {
        keys.Choose(QStringLiteral("RoleList"), role);
        keys.ExpectText(QStringLiteral("Rate"), rate);
        keys.Fill(QStringLiteral("StartDate"), from);
        keys.Fill(QStringLiteral("EndDate"), to);
        keys.Press(QStringLiteral("AddRoleBtn"));
        keys.ExpectRow(roles, role % u" | " % rate % u" | " % from % u" | " % to);
    });
}
} // namespace

void AddRoles(Keyboard &keys, TourPlan &plan)
{
    keys.On(record, QStringLiteral("roles"), [&keys] {
        keys.Press(QStringLiteral("EditBtn"));
        keys.OpenTab(QStringLiteral("Roles"));
    });
    Engage(keys, QStringLiteral("Tutor"), QStringLiteral("25.50"), QStringLiteral("01/09/2025"),
           QStringLiteral("31/07/2026"));
    Engage(keys, QStringLiteral("Assessor"), QStringLiteral("0.00"), QStringLiteral("15/01/2026"),
           QStringLiteral("30/06/2026"));
    keys.See(record, QStringLiteral("roles of a person"), [&keys] { keys.Press(QStringLiteral("OKBtn")); });
    keys.On(record, QStringLiteral("roles stored"), [&keys, &plan] {
        keys.Expect(RowsOf(u"SELECT * FROM ContactRoles WHERE StartDate = 20250901 AND EndDate = 20260731 "
                           u"AND ContactRef = " %
                           KeyOf(plan.members.at(0))) == 1,
                    QStringLiteral("the days of the role were not stored"));
    });
}
