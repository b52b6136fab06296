#include "courses/events/ExclusionsPage.h"

#include "courses/maintenance/ExclusionModule.h"
#include "courses/maintenance/frmAddExcludeDates.h"
#include "database/statements/Security.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "forms/fields/FieldLock.h"
#include "forms/frames/FormBuilder.h"
#include "platform/desktop/Dialogs.h"

namespace
{
/// A row is keyed by its first day, which no two of them share; its last day is in the date text.
int DayIn(const QString &text)
{
    return DateToInt(QDate::fromString(text, QStringLiteral("dd/MM/yyyy")));
}
} // namespace

ExclusionsPage::ExclusionsPage(QWidget *parent)
    : QWidget(parent)
{
    m_chosen.SetColumns(
        {QStringLiteral("Reference ID"), QStringLiteral("Exclude From"), QStringLiteral("Exclude To")});
    FormBuilder form(this);
    form.Combo(QStringLiteral("ExcludeList"), QStringLiteral("&Period:"), m_choice);
    form.BeginButtons(FormBuilder::Align::Start);
    m_add = form.Button(QStringLiteral("AddDate"), QStringLiteral("&Add"));
    QPushButton *make = form.Button(QStringLiteral("NewDateBtn"), QStringLiteral("Ne&w"));
    form.EndButtons();
    m_list = form.List(QStringLiteral("Exclusions"), QStringLiteral("&Left out by this series:"), m_chosen);
    m_list->SetColumnChars({30, 14, 14});
    m_list->SetEmptyText(QStringLiteral("No period is left out."));
    form.BeginButtons(FormBuilder::Align::Start);
    m_remove = form.Button(QStringLiteral("DelEBtn"), QStringLiteral("Remove E&xclusion"));
    form.EndButtons();

    make->setEnabled(UserMay(Right::FreeDates, Level::Add));
    connect(m_add, &QPushButton::clicked, this, &ExclusionsPage::Add);
    connect(make, &QPushButton::clicked, this, &ExclusionsPage::AddNew);
    connect(m_remove, &QPushButton::clicked, this, &ExclusionsPage::Remove);
    connect(m_list, &ListView::DeletePressed, m_remove, &QPushButton::click);
    connect(&m_choice, &ComboModel::CurrentChanged, this, &ExclusionsPage::EnableButtons);
    connect(&m_chosen, &ListModel::Changed, this, [this] {
        EnableButtons();
        emit Changed();
    });
    EnableButtons();
}

void ExclusionsPage::FillPeriods(QDate start)
{
    m_start = start;
    const auto periods = ADO_Course_FillExclusionDates2(DateToInt(start));
    m_periods = periods.value_or(std::vector<ExclusionPeriod>());
    std::vector<ComboItem> items;
    for (size_t place = 0; place < m_periods.size(); ++place)
        items.push_back({Exclusion_Text(m_periods[place]), static_cast<int>(place)});
    m_choice.Fill(std::move(items));
    m_choice.SetCurrent(0);
    EnableButtons();
}

std::vector<SeriesPlan::Exclusion> ExclusionsPage::Exclusions() const
{
    std::vector<SeriesPlan::Exclusion> exclusions;
    for (int row = 0; row < m_chosen.Count(); ++row) {
        const ListItem &item = m_chosen.At(row);
        exclusions.push_back({item.text, DayIn(item.subItems.at(0)), DayIn(item.subItems.at(1))});
    }
    return exclusions;
}

void ExclusionsPage::EnableButtons()
{
    EnableButton(m_add, m_choice.Current() >= 0, m_list);
    EnableButton(m_remove, !m_chosen.IsEmpty(), m_list);
}

void ExclusionsPage::Add()
{
    const ExclusionPeriod &period = m_periods[static_cast<size_t>(m_choice.CurrentData())];
    const QString key = u'!' % SqlNumber(period.from);
    m_chosen.RemoveKey(key);
    m_chosen.Add({key, period.referenceID, {IntToDateText(int(period.from)), IntToDateText(int(period.to))}});
    m_chosen.SelectOnly(m_chosen.Count() - 1);
}

void ExclusionsPage::AddNew()
{
    frmAddExcludeDates form(this);
    const int added = form.Run();
    if (added < 1)
        return;
    FillPeriods(m_start);
    for (size_t place = 0; place < m_periods.size(); ++place) {
        if (m_periods[place].excludeRef == added)
            m_choice.ChooseData(static_cast<int>(place));
    }
}

void ExclusionsPage::Remove()
{
    const int row = m_chosen.CurrentRow();
    if (row < 0)
        return;
    const QStringList days = m_chosen.At(row).subItems;
    const Dialogs::Answer answer = Dialogs::MsgBox(
        u"Okay to delete exclusion " % days.at(0) % u" - " % days.at(1), QStringLiteral("Confirm Deletion"),
        Dialogs::Buttons::YesNo, Dialogs::Icon::Question, Dialogs::Answer::No);
    if (answer == Dialogs::Answer::Yes)
        m_chosen.Remove(row);
}
