#include "courses/booking/BookingModule.h"

#include "platform/desktop/Dialogs.h"

namespace
{
struct Wording {
    QString title;
    QString what;
};

Wording WordingOf(BookingClash::Of what)
{
    switch (what) {
    case BookingClash::Of::Venue:
        return {QStringLiteral("Venue Event Booking"), QStringLiteral("venue")};
    case BookingClash::Of::Facility:
        return {QStringLiteral("Facility Event Booking"), QStringLiteral("facility")};
    case BookingClash::Of::Staff:
        break;
    }
    return {QStringLiteral("Staff Event Booking"), QStringLiteral("staff member")};
}
} // namespace

void TellClash(const BookingClash &clash, const QString &title)
{
    const Wording wording = WordingOf(clash.what);
    Dialogs::MsgBox(u"Unable to book " % wording.what % u" '" % clash.name % u"' already booked in '" %
                        clash.title % u"'.",
                    title.isEmpty() ? wording.title : title, Dialogs::Buttons::Ok,
                    Dialogs::Icon::Information);
}
