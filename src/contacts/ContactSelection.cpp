#include "contacts/ContactSelection.h"

#include "contacts/ConcessionODBC.h"
#include "contacts/ContactListODBC.h"
#include "contacts/ContactModule.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "enrolment/EnrolmentODBC.h"

#include <algorithm>
#include <optional>

namespace
{
/// Reads people one by one into a list of their own: thousands are picked at a time, and a list on the
/// screen works out its buttons and counts at every row and selection.
class PeopleReader final
{
public:
    /// The row of a person with address and town; nothing if the person does not exist any more. Who lives
    /// in a town that is missing from its table is found by nobody that way, and has the name alone: to
    /// drop a student here would end the enrolment.
    std::optional<ListItem> Read(const ListItem &person)
    {
        const int contactRef = KeyNumber(person.key);
        if (!Contact_Check(contactRef))
            return std::nullopt;
        m_row.Clear();
        Contact_FillInfo(contactRef, m_row);
        return m_row.IsEmpty() ? ListItem{person.key, person.text} : m_row.At(0);
    }

    /// The rows of all of `people` who still exist.
    std::vector<ListItem> ReadAll(const ListModel &people)
    {
        std::vector<ListItem> items;
        for (int row = 0; row < people.Count(); ++row) {
            if (auto person = Read(people.At(row)))
                items.push_back(*std::move(person));
        }
        return items;
    }

private:
    ListModel m_row;
};
} // namespace

void Contact_SelectChosen(ListModel &available, ListModel &selected)
{
    PeopleReader reader;
    QStringList gone;
    std::vector<ListItem> joining;
    for (const int row : available.SelectedRows()) {
        const ListItem &chosen = available.At(row);
        std::optional<ListItem> person = reader.Read(chosen);
        if (!person)
            gone.append(chosen.key);
        else if (!selected.Contains(chosen.key))
            joining.push_back(*std::move(person));
    }
    available.ClearSelection();
    for (const QString &key : gone) {
        available.RemoveKey(key);
        selected.RemoveKey(key);
    }
    const int first = selected.Count();
    selected.AddAll(std::move(joining));
    if (selected.Count() > first)
        selected.Selection()->select({selected.index(first, 0), selected.index(selected.Count() - 1, 0)},
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void Contact_RefreshSelected(ListModel &selected)
{
    selected.Fill(PeopleReader().ReadAll(selected));
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
    selected.Fill(PeopleReader().ReadAll(students));
}
