#include "contacts/ContactSelection.h"

#include "contacts/ConcessionODBC.h"
#include "contacts/ContactListODBC.h"
#include "contacts/ContactModule.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "enrolment/EnrolmentODBC.h"

#include <algorithm>

namespace
{
/// Shows a person with address and town. Who lives in a town that is missing from its table is found by
/// nobody that way, and goes in with the name alone: to drop a student here would end the enrolment.
/// False if the person does not exist any more.
bool ShowPerson(const ListItem &person, ListModel &selected)
{
    const int contactRef = KeyNumber(person.key);
    if (!Contact_Check(contactRef))
        return false;
    Contact_FillInfo(contactRef, selected);
    if (!selected.Contains(person.key))
        selected.Select(selected.Add({person.key, person.text}));
    return true;
}
} // namespace

void Contact_SelectChosen(ListModel &available, ListModel &selected)
{
    QStringList gone;
    for (const int row : available.SelectedRows()) {
        if (!ShowPerson(available.At(row), selected))
            gone.append(available.At(row).key);
    }
    available.ClearSelection();
    for (const QString &key : gone) {
        available.RemoveKey(key);
        selected.RemoveKey(key);
    }
}

void Contact_RefreshSelected(ListModel &selected)
{
    std::vector<ListItem> people;
    for (int row = 0; row < selected.Count(); ++row)
        people.push_back(selected.At(row));
    selected.Clear();
    for (const ListItem &person : people)
        ShowPerson(person, selected);
    selected.ClearSelection();
}

void Contact_FillSubset(int concessionRef, ListModel &available)
{
    if (concessionRef == 0)
        ADO_Contact_Fill(available);
    else
        ADO_Contact_Fill_Concession(concessionRef, available);
}

void Contact_FillSubsetList(ComboModel &subsets)
{
    const int chosen = subsets.CurrentData();
    ComboModel characteristics;
    Contact_FillList(ContactSection::Characteristics, characteristics, false);
    std::vector<ComboItem> items{{QString(), 0}};
    for (int row = 0; row < characteristics.Count(); ++row)
        items.push_back(characteristics.At(row));
    subsets.Fill(std::move(items));
    subsets.SetCurrent(std::max(0, subsets.FindData(chosen)));
}

void Contact_SelectStudents(int courseRef, const ListModel &shown, ListModel &selected)
{
    ListModel enrolled;
    ADO_Course_ShowEnrolledStudents(courseRef, enrolled);
    const ListModel &students = enrolled.IsEmpty() ? shown : enrolled;
    selected.Clear();
    for (int row = 0; row < students.Count(); ++row)
        ShowPerson(students.At(row), selected);
    selected.ClearSelection();
}
