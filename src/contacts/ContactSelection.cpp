#include "contacts/ContactSelection.h"

#include "contacts/ConcessionODBC.h"
#include "contacts/ContactListODBC.h"
#include "contacts/ContactModule.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "database/GlobalCode.h"
#include "database/MiscODBC.h"
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

/// Adds those who are not in the list yet, with as many of their sub-items.
void Join(const ListModel &people, ListModel &selected, int subItems)
{
    std::vector<ListItem> joining;
    for (int row = 0; row < people.Count(); ++row) {
        const ListItem &person = people.At(row);
        if (!selected.Contains(person.key))
            joining.push_back({person.key, person.text, person.subItems.mid(0, subItems)});
    }
    selected.AddAll(std::move(joining));
}
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

void Contact_JoinSelection(const ListModel &people, ListModel &selected)
{
    Join(people, selected, 3);
}

void Contact_JoinNames(const ListModel &people, ListModel &selected)
{
    Join(people, selected, 0);
}

void Contact_ReplaceSelection(const ListModel &people, ListModel &selected)
{
    selected.Clear();
    Join(people, selected, 2);
}

void Contact_JoinTree(const ListModel &people, TreeModel &tree)
{
    QStringList branches;
    for (const QModelIndex &selected : tree.Selection()->selectedIndexes())
        branches.append(tree.NodeAt(selected)->key);
    for (const QString &branch : branches) {
        for (int row = 0; row < people.Count(); ++row) {
            TreeNode node;
            node.key = branch % u'A' % SqlNumber(KeyNumber(people.At(row).key));
            node.text = people.At(row).text % u" [not enrolled]";
            node.image = QStringLiteral("user");
            tree.Add(branch, std::move(node));
        }
    }
}

void SaveContactSelection(const ListModel &selection, const QString &fileName)
{
    FillRefTable(selection, fileName);
}
