#include "courses/maintenance/frmAddExcludeDates.h"

#include "contacts/lists/ContactFields.h"
#include "courses/maintenance/ExclusionModule.h"
#include "database/values/DecodeDateFunc.h"
#include "forms/fields/FieldFocus.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Dialogs.h"

frmAddExcludeDates::frmAddExcludeDates(QWidget *parent)
    : ItemDialog(QStringLiteral("frmAddExcludeDates"), QStringLiteral("Exclusion Dates"), parent)
{
    FormBuilder form(this);
    AddNotice(form);
    m_refName = form.Text(QStringLiteral("RefName"), QStringLiteral("&Reference ID:"));
    Required().Add(form.Label(), m_refName);
    ContactFields::FitChars(m_refName, 30);
    m_from = form.Date(QStringLiteral("FromDate"), QStringLiteral("Exclude &From:"));
    form.Beside();
    m_to = form.Date(QStringLiteral("ToDate"), QStringLiteral("&To:"));
    m_from->SetDay(Clock::Today());
    m_to->SetDay(Clock::Today());
    AddButtons(form);
}

void frmAddExcludeDates::EditItem(int key)
{
    BeginEditing(key);
    const ReadRow<ExclusionPeriod> period = ADO_Course_ShowExclusionDate(key);
    if (period) {
        ContactFields::Show(m_refName, period->referenceID);
        m_from->SetDay(IntToDate(period->from));
        m_to->SetDay(IntToDate(period->to));
    }
    EndReading(static_cast<bool>(period), QStringLiteral("period"));
}

bool frmAddExcludeDates::IsPeriod()
{
    if (!DaysAreReadable(this))
        return false;
    if (m_to->Day() >= m_from->Day())
        return true;
    Dialogs::Tell(u"The period would end on " % m_to->text() % u", before it begins on " % m_from->text() %
                      u". Nothing was stored.",
                  windowTitle(), Dialogs::Icon::Exclamation);
    FocusField(m_to);
    return false;
}

int frmAddExcludeDates::Store()
{
    if (!IsPeriod())
        return 0;
    const ExclusionPeriod period{Key(), m_refName->text(), DateToInt(m_from->Day()), DateToInt(m_to->Day())};
    return Key() > 0 ? Exclusion_Update(period) : Exclusion_Add(period);
}
