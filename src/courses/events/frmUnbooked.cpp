#include "courses/events/frmUnbooked.h"

#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "forms/frames/FormBuilder.h"

namespace
{
QString WordFor(BookingClash::Of what)
{
    switch (what) {
    case BookingClash::Of::Venue:
        return QStringLiteral("Venue");
    case BookingClash::Of::Facility:
        return QStringLiteral("Facility");
    case BookingClash::Of::Staff:
        break;
    }
    return QStringLiteral("Staff");
}
} // namespace

frmUnbooked::frmUnbooked(const std::vector<UnbookedEvent> &events, QWidget *parent)
    : FormDialog(QStringLiteral("frmUnbooked"), QStringLiteral("Event bookings"), parent)
{
    m_list.SetColumns({QStringLiteral("Event"), QStringLiteral("Date"), QStringLiteral("Time"),
                       QStringLiteral("Kind"), QStringLiteral("Not booked"), QStringLiteral("Held by")});
    std::vector<ListItem> rows;
    for (const UnbookedEvent &event : events) {
        for (const BookingClash &clash : event.clashes)
            rows.push_back(
                {u'!' % SqlNumber(static_cast<int>(rows.size()) + 1),
                 QString::number(event.number),
                 {IntToDateText(int(event.hours.date)), TimesText(event.hours.from, event.hours.to),
                  WordFor(clash.what), clash.name, clash.title}});
    }
    m_list.Fill(std::move(rows));
    FormBuilder form(this);
    ListView *list =
        form.List(QStringLiteral("UnbookedList"), QStringLiteral("The events were made without these:"),
                  m_list, ListView::Choice::Multi);
    list->SetColumnChars({8, 12, 15, 10, 26, 26});
    form.BeginButtons();
    QPushButton *print = form.Button(QStringLiteral("PrintBtn"), QStringLiteral("&Print"));
    QPushButton *exit = form.DefaultButton(QStringLiteral("ExitBtn"), QStringLiteral("E&xit"));
    form.EndButtons();
    connect(print, &QPushButton::clicked, list, &ListView::Print);
    connect(exit, &QPushButton::clicked, this, &frmUnbooked::reject);
    m_list.SelectFirst();
    resize(fontMetrics().averageCharWidth() * 110, fontMetrics().lineSpacing() * 22);
}
