#include "contacts/manager/ContactSearchPage.h"

#include "forms/frames/FormBuilder.h"

#include <QToolButton>

namespace
{
constexpr int allGenders = -1;
constexpr int shortList = 10; ///< characters: three groups stand side by side
} // namespace

ContactSearchPage::ContactSearchPage(QWidget *parent)
    : QWidget(parent)
{
    FormBuilder form(this);
    form.BeginColumns();
    BuildPerson(form);
    form.NextColumn();
    BuildAddress(form);
    form.NextColumn();
    BuildOrganisation(form);
    form.EndColumns();
    m_lists[Place(SearchField::Gender)].Fill({{QString(), allGenders},
                                              {QStringLiteral("Male"), 2},
                                              {QStringLiteral("Female"), 1},
                                              {QStringLiteral("Not Specified"), 0}});
    FillLists();
    Clear();
}

void ContactSearchPage::BuildPerson(FormBuilder &form)
{
    form.BeginGroup(QStringLiteral("Person"), QStringLiteral("PersonFrame"));
    Add(form, {{SearchField::Title, "SearchDesList", "Titl&e:", ContactSection::Titles},
               {SearchField::Forename, "SearchForename", "&Forename:"},
               {SearchField::Surname, "SearchSurname", "Su&rname:"}});
    Gender(form);
    Age(form);
    Add(form,
        {{SearchField::EthnicOrigin, "SearchEthnicList", "Eth&nic origin:", ContactSection::EthnicTypes}});
    form.EndGroup();
}

void ContactSearchPage::BuildAddress(FormBuilder &form)
{
    form.BeginGroup(QStringLiteral("Address"), QStringLiteral("AddressFrame"));
    Add(form, {{SearchField::Address, "SearchAddr1", "A&ddress:"},
               {SearchField::Town, "SearchCityList", "T&own/City:", ContactSection::Cities},
               {SearchField::County, "SearchCountyList", "State/Co&unty:", ContactSection::Counties},
               {SearchField::Country, "SearchCountryList", "Countr&y:", ContactSection::Countries},
               {SearchField::Postcode, "SearchPostcode", "&ZIP/Postcode:"}});
    form.EndGroup();
}

void ContactSearchPage::BuildOrganisation(FormBuilder &form)
{
    form.BeginGroup(QStringLiteral("Organisation"), QStringLiteral("OrganisationFrame"));
    Add(form, {{SearchField::OrgAddress, "SearchOrgAddr1", "Address:"},
               {SearchField::OrgTown, "SearchOrgCityList", "Town/City:", ContactSection::Cities},
               {SearchField::OrgCounty, "SearchOrgCountyList", "State/County:", ContactSection::Counties},
               {SearchField::OrgCountry, "SearchOrgCountryList", "Country:", ContactSection::Countries},
               {SearchField::OrgPostcode, "SearchOrgPostcode", "ZIP/Postcode:"}});
    form.EndGroup();
}

void ContactSearchPage::Add(FormBuilder &form, std::initializer_list<Field> fields)
{
    for (const Field &field : fields) {
        CaptionLabel *label = Equals(form, field.field, field.caption);
        if (field.vocabulary) {
            label->setBuddy(List(form, field.field, field.name));
            m_vocabularies.emplace_back(field.field, *field.vocabulary);
        } else {
            label->setBuddy(m_texts[Place(field.field)] = form.Text(field.name, {}, 255));
        }
    }
}

ComboBox *ContactSearchPage::List(FormBuilder &form, SearchField field, const QString &name)
{
    ComboBox *list = form.Combo(name, {}, m_lists[Place(field)]);
    list->setMinimumContentsLength(shortList);
    return list;
}

CaptionLabel *ContactSearchPage::Equals(FormBuilder &form, SearchField field, const QString &caption)
{
    // The gender has none, so that the numbers after it are one less.
    const size_t number = Place(field) - (field > SearchField::Gender ? 1 : 0);
    auto *equals = new QToolButton;
    equals->setText(QStringLiteral("="));
    equals->setAutoRaise(true);
    equals->setFocusPolicy(Qt::StrongFocus);
    equals->setFixedWidth(equals->fontMetrics().horizontalAdvance(QStringLiteral("<>")) * 2);
    equals->setToolTip(QStringLiteral("= finds people whose data is so, <> those whose data is not"));
    equals->setAccessibleName(QString(caption).remove(u'&') % u" is or is not");
    form.Place(equals, u"LblEquals_" % QString::number(number), caption);
    connect(equals, &QToolButton::clicked, equals, [equals] {
        equals->setText(equals->text() == u"=" ? QStringLiteral("<>") : QStringLiteral("="));
    });
    m_equals[Place(field)] = equals;
    CaptionLabel *label = form.Label();
    form.Beside();
    return label;
}

/// It is always asked for as it is.
void ContactSearchPage::Gender(FormBuilder &form)
{
    auto *equals = new QLabel(QStringLiteral("="));
    equals->setAlignment(Qt::AlignCenter);
    equals->setFixedWidth(m_equals[Place(SearchField::Title)]->width());
    form.Place(equals, QStringLiteral("SexEquals"), QStringLiteral("&Gender:"));
    CaptionLabel *label = form.Label();
    form.Beside();
    label->setBuddy(List(form, SearchField::Gender, QStringLiteral("SearchSexList")));
}

void ContactSearchPage::Age(FormBuilder &form)
{
    CaptionLabel *label = Equals(form, SearchField::Age, QStringLiteral("&Aged Between:"));
    m_ageFrom = form.Digits(QStringLiteral("AgeFrom"), {}, 3);
    label->setBuddy(m_ageFrom);
    form.Beside();
    m_ageTo = form.Digits(QStringLiteral("AgeTo"), QStringLiteral("and"), 3);
    m_ageTo->SetLeaveHandler([this] { LeaveAgeTo(); });
}

// The texts are compared, not the numbers: "9" and "10" change places. Staff know it, and it stays.
void ContactSearchPage::LeaveAgeTo()
{
    const QString from = m_ageFrom->text();
    const QString to = m_ageTo->text();
    if (to >= from)
        return;
    m_ageFrom->setText(to);
    m_ageTo->setText(from);
}

void ContactSearchPage::FillLists()
{
    for (const auto &[field, vocabulary] : m_vocabularies)
        Contact_FillList(vocabulary, m_lists[Place(field)], false);
}

void ContactSearchPage::Store(ContactSearchCriteria &criteria) const
{
    for (size_t field = 0; field < searchFieldCount; ++field) {
        SearchCriterion &criterion = criteria.fields[field];
        criterion.isNot = m_equals[field] && m_equals[field]->text() != u"=";
        if (m_texts[field]) {
            criterion.text = m_texts[field]->text();
        } else if (m_lists[field].Current() >= 0) {
            criterion.text = m_lists[field].CurrentText();
            criterion.key = m_lists[field].CurrentData();
        }
    }
    criteria.Of(SearchField::Age).text = m_ageFrom->text();
    criteria.ageTo = m_ageTo->text();
}

void ContactSearchPage::Clear()
{
    for (QLineEdit *text : m_texts) {
        if (text)
            text->clear();
    }
    for (ComboModel &list : m_lists)
        list.SetCurrent(-1);
    m_lists[Place(SearchField::Gender)].SetCurrent(0);
    m_ageFrom->clear();
    m_ageTo->clear();
}

QWidget *ContactSearchPage::First() const
{
    return m_texts[Place(SearchField::Surname)];
}
