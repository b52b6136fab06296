#include "reports/contacts/ReportFields.h"

#include "database/statements/System.h"
#include "database/values/DecodeDateFunc.h"
#include "reports/writer/HTMLscript.h"

namespace
{
const QString blank = QStringLiteral("&nbsp;");

struct Choice {
    int flag;
    ReportField field;
};

template <typename Flags>
std::vector<ReportField> Ticked(const std::vector<Choice> &choices, const Flags &flags)
{
    std::vector<ReportField> fields;
    for (const Choice &choice : choices) {
        if (flags[static_cast<size_t>(choice.flag)] != 0)
            fields.push_back(choice.field);
    }
    return fields;
}

/// The reference of the system and the up to four that a site has named.
std::vector<ReportField> ReferenceFields()
{
    std::vector<ReportField> fields = {{"Reference ID:", "Reference ID", 100, {"ReferenceID"}}};
    for (int i = 0; i < 4; ++i) {
        const QString label = SystemValue(SystemRef::AltRefLabel + i);
        if (!label.isEmpty())
            fields.push_back({label % u':', label, 100, {u"AltRef" % QString::number(i + 1)}});
    }
    return fields;
}

QString GenderText(qint64 sex)
{
    return sex == 2   ? QStringLiteral("Male")
           : sex == 1 ? QStringLiteral("Female")
                      : QStringLiteral("Not Known");
}
} // namespace

std::vector<ReportField> PersonalFields(const ContactFlags &flags)
{
    using namespace ContactItem;
    using Kind = ReportField::Kind;
    static const std::vector<Choice> choices = {
        {Gender, {"Gender:", "Gender", 100, {"Cust_Sex"}, {}, Kind::Gender}},
        {DateOfBirth, {"Date of Birth:", "DoB", 100, {"Cust_DOB"}, {}, Kind::Date}},
        {Address,
         {"Address:", "Address", 200, {"Cust_Addr1", "Cust_Addr2", "Cust_Addr3", "Cust_Addr4"}, "<BR>"}},
        {City, {"City:", "City", 100, {"City"}}},
        {County, {"County:", "State/County", 100, {"County"}}},
        {Postcode, {"Postcode:", "ZIP/Postcode", 100, {"Cust_Postcode"}}},
        {Country, {"Country:", "Country", 100, {"Country"}}},
        {Telephone, {"Tel (Daytime):", {}, 0, {"Cust_TelDay"}}},
        {Telephone, {"Tel (Evenings):", {}, 0, {"Cust_TelEve"}}},
        {Telephone, {{}, "Telephone", 200, {"Cust_TelDay", "Cust_TelEve"}, "<br>"}},
        {Fax, {"Fax:", "Fax", 200, {"Cust_Fax"}}},
        {Email, {"Email:", "Email", 200, {"Cust_Email"}}},
        {Website, {"Website:", "Website", 200, {"Cust_URL"}}},
        {Ethnic, {"Ethnic:", "Ethnicity", 100, {"Type"}}},
        {Emergency,
         {"Emergency Contact:", "Emergency<BR>Contact", 200, {"Contact_Fname", "Contact_Sname"}, " "}},
        {Emergency, {"Emergency Contact Tel:", "Contact<BR>Telephone", 200, {"ContactTel"}}},
    };
    std::vector<ReportField> fields;
    if (flags[References] != 0)
        fields = ReferenceFields();
    for (ReportField &field : Ticked(choices, flags))
        fields.push_back(std::move(field));
    return fields;
}

std::vector<ReportField> WorkFields(const ContactFlags &flags)
{
    using namespace ContactItem;
    static const std::vector<Choice> choices = {
        {Position, {"Position:", "Position", 200, {"JobTitle"}}},
        {Organisation, {"Organisation:", "Organisation", 200, {"OrganName"}}},
        {OrgReference, {"Reference ID", "Org. Ref ID", 100, {"OrgRefID"}}},
        {OrgAddress, {"Address:", "Address", 200, {"OrgAddr1", "OrgAddr2", "OrgAddr3", "OrgAddr4"}, "<BR>"}},
        {OrgCity, {"City:", "City", 100, {"OrgCity"}}},
        {OrgCounty, {"State/County:", "County", 100, {"OrgCounty"}}},
        {OrgPostcode, {"Zip/Postcode:", "ZIP/Postcode", 100, {"OrgPostcode"}}},
        {OrgCountry, {"Country:", "Country", 100, {"OrgCountry"}}},
        {OrgTelephone, {"Telephone:", "Telephone", 200, {"OrgTel"}}},
        {OrgTelOut, {"Tel (Out of Hours):", "Out-of-Hours<BR>Telephone", 200, {"OrgOOHTel"}}},
        {OrgFax, {"Fax:", "Fax", 200, {"OrgFax"}}},
        {OrgEmail, {"Email:", "Email", 200, {"OrgEmail"}}},
        {OrgWebsite, {"Website:", "Website", 200, {"OrgWebsite"}}},
        {OrgNotes, {"Notes:", "Notes", 300, {"OrgNotes"}}},
    };
    return Ticked(choices, flags);
}

std::vector<ReportField> OrgFields(const OrgFlags &flags)
{
    using namespace OrgItem;
    static const std::vector<Choice> choices = {
        {Reference, {"Reference ID", "Reference ID", 100, {"ReferenceID"}}},
        {Address, {"Address:", "Address", 200, {"Addr1", "Addr2", "Addr3", "Addr4"}, "<BR>"}},
        {City, {"City:", "City", 100, {"City"}}},
        {County, {"State/County:", "State/County", 100, {"County"}}},
        {Postcode, {"Zip/Postcode:", "ZIP/Postcode", 100, {"Postcode"}}},
        {Country, {"Country:", "Country", 100, {"Country"}}},
        {Telephone, {"Telephone:", "Telephone", 200, {"TelDay"}}},
        {TelOut, {"Tel (Out of Hours):", "Out-of-Hours<BR>Telephone", 200, {"TelOut"}}},
        {Fax, {"Fax:", "Fax", 200, {"Fax"}}},
        {Email, {"Email:", "Email", 200, {"Email"}}},
        {Website, {"Website:", "Website", 200, {"URL"}}},
    };
    return Ticked(choices, flags);
}

void FindFields(std::vector<ReportField> &fields, const Recordset &rows)
{
    for (ReportField &field : fields) {
        field.places.clear();
        for (const QString &column : field.columns)
            field.places.push_back({rows.ColumnIndex(column), HTML_LinkScheme(column)});
    }
}

QString FieldValue(const ReportField &field, const Recordset::Row &row)
{
    switch (field.kind) {
    case ReportField::Kind::Gender:
        return GenderText(row.Long(field.places.front().column));
    case ReportField::Kind::Date: {
        // A missing date is left empty, since as text it would read as today.
        const auto date = static_cast<int>(row.Long(field.places.front().column));
        return date == 0 ? QString() : IntToDateText(int(date));
    }
    case ReportField::Kind::Text:
        break;
    }
    QString value;
    for (const ReportField::Place &place : field.places) {
        const QString part = HTML_LinkText(place.scheme, row.Text(place.column));
        if (part.isEmpty())
            continue;
        if (!value.isEmpty())
            value += field.joint;
        value += part;
    }
    return value;
}

QString MoneyText(Money amount)
{
    return SystemValue(SystemRef::CurrencySymbol) % amount.Text();
}

void WriteHeading(const QString &name)
{
    HTML_Text(Html::bold, Html::headingSize, name);
    HTML_Text(Html::bare, 0, QStringLiteral("<br>"));
}

void WriteLabelRows(const std::vector<ReportField> &fields, const Recordset::Row &row)
{
    for (const ReportField &field : fields) {
        if (field.label.isEmpty())
            continue;
        const QString value = FieldValue(field, row);
        if (!value.isEmpty())
            HTML_LabelRow(field.label, value);
    }
}

void WriteListLabel(const QString &label)
{
    HTML_RowStart();
    HTML_Cell(0, Html::bold, 0, 0, 0, 100, blank);
    HTML_Cell(0, Html::bold, 0, 0, 0, 200, label);
    HTML_RowEnd();
}

void WriteListRow(const QString &value)
{
    HTML_LabelRow(blank, value);
}

void WriteTitleCell(const QString &title, int width)
{
    HTML_Cell(0, Html::bold, Html::centre, 0, Html::textSize, width, title);
}

void WriteValueCell(const QString &value, int width)
{
    HTML_Cell(0, Html::plain, 0, 0, Html::textSize, width, value.isEmpty() ? blank : value);
}

void WriteTitleCells(const std::vector<ReportField> &fields)
{
    for (const ReportField &field : fields) {
        if (!field.title.isEmpty())
            WriteTitleCell(field.title, field.width);
    }
}

void WriteValueCells(const std::vector<ReportField> &fields, const Recordset::Row &row)
{
    for (const ReportField &field : fields) {
        if (!field.title.isEmpty())
            WriteValueCell(FieldValue(field, row), field.width);
    }
}
