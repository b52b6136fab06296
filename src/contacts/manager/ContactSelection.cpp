#include "contacts/manager/ContactSelection.h"

#include "contacts/lists/ConcessionODBC.h"
#include "contacts/lists/ContactListODBC.h"
#include "contacts/lists/VocabularyModule.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/ContactRecordODBC.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "core/session/Progress.h"
#include "database/statements/DeletedMeanwhile.h"
#include "database/statements/MiscODBC.h"
#include "database/values/GlobalCode.h"
#include "enrolment/EnrolmentODBC.h"

#include <algorithm>
#include <optional>

namespace
{
/// Looks people up one by one and apart from the lists on the screen, which work out their buttons and
/// counts at every row and selection.
class PeopleReader final
{
public:
    PeopleReader(Progress &progress, int people)
        : m_progress(progress)
    {
        m_progress.Begin(people);
    }

    /// False once the run is cancelled or a read failed.
    bool GoesOn() const { return !m_failed && !m_progress.IsCancelled(); }
    bool Failed() const { return m_failed; }

    /// The row of a person with address and town; nothing if the person no longer exists. Whoever lives
    /// in a town that is missing from its table is found by nobody that way, and has the name alone: to
    /// drop a student here would end the enrolment.
    std::optional<ListItem> Read(ListItem person)
    {
        const ContactRef contactRef(KeyNumber(person.key));
        const std::optional<bool> exists = ADO_Contact_CheckContact(contactRef);
        m_progress.SetValue(m_progress.Value() + 1);
        m_failed = !exists;
        if (m_failed)
            return person;
        if (!*exists)
            return std::nullopt;
        m_row.Clear();
        Contact_FillInfo(contactRef, m_row);
        return m_row.IsEmpty() ? ListItem{person.key, person.text} : m_row.At(0);
    }

private:
    Progress &m_progress;
    bool m_failed = false;
    ListModel m_row;
};

/// The rows of those of `people` who still exist.
std::vector<ListItem> ReadAll(const ListModel &people, Progress &progress)
{
    PeopleReader reader(progress, people.Count());
    std::vector<ListItem> items;
    for (int row = 0; row < people.Count(); ++row) {
        if (!reader.GoesOn())
            items.push_back(people.At(row));
        else if (auto person = reader.Read(people.At(row)))
            items.push_back(*std::move(person));
    }
    return items;
}

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

void Contact_SelectChosen(ListModel &available, ListModel &selected, Progress &progress)
{
    const QStringList chosen = available.SelectedKeys();
    PeopleReader reader(progress, static_cast<int>(chosen.size()));
    QStringList gone;
    std::vector<ListItem> joining;
    qsizetype done = 0;
    for (; done < chosen.size() && reader.GoesOn(); ++done) {
        const QString &key = chosen.at(done);
        const int row = available.Find(key);
        if (row < 0)
            continue;
        std::optional<ListItem> person = reader.Read(available.At(row));
        if (reader.Failed())
            break;
        if (!person)
            gone.append(key);
        else if (!selected.Contains(key))
            joining.push_back(*std::move(person));
    }
    available.SelectKeys(chosen.mid(done));
    available.Take(available.RowsOf(gone));
    selected.Take(selected.RowsOf(gone));
    QStringList joined;
    for (const ListItem &person : joining)
        joined.append(person.key);
    selected.AddAll(std::move(joining));
    selected.SelectKeys(selected.SelectedKeys() + joined);
}

void Contact_RefreshSelected(ListModel &selected, Progress &progress)
{
    selected.Fill(ReadAll(selected, progress));
}

bool Contact_DropDeleted(ListModel &selected, const QString &title)
{
    const ContactSectionInfo &people = ContactSectionOf(ContactSection::Contacts);
    return LeaveOutDeleted(selected, people.table, people.keyColumn, title);
}

void Contact_FillSubset(ConcessionRef concessionRef, ListModel &available, Progress &progress,
                        const QList<PersonDetail> &details)
{
    if (!concessionRef) {
        ADO_Contact_Fill(available, details);
        return;
    }
    ADO_Contact_Fill_Concession(concessionRef, available, progress, details);
    // They come in the order in which they got the characteristic.
    available.sort(0, Qt::AscendingOrder);
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

void Contact_SelectStudents(CourseRef courseRef, const ListModel &shown, ListModel &selected,
                            Progress &progress)
{
    ListModel enrolled;
    ADO_Course_ShowEnrolledStudents(courseRef, enrolled);
    std::vector<ListItem> names;
    const ListModel &students = enrolled.IsEmpty() ? shown : enrolled;
    names.reserve(static_cast<size_t>(students.Count()));
    for (int row = 0; row < students.Count(); ++row)
        names.push_back({students.At(row).key, students.At(row).text});
    enrolled.Fill(std::move(names));
    selected.Fill(ReadAll(enrolled, progress));
}

bool Contact_FollowStored(const QStringList &stored, QSet<QString> &known, ListModel &selected,
                          const QString &title)
{
    const QSet<QString> gone = known - QSet<QString>(stored.begin(), stored.end());
    QStringList removed;
    for (const int row : selected.RowsOf(gone.values()))
        removed.append(selected.At(row).text);
    Progress progress;
    PeopleReader reader(progress, static_cast<int>(stored.size()));
    std::vector<ListItem> joining;
    QStringList added;
    for (const QString &key : stored) {
        if (known.contains(key) || selected.Contains(key))
            continue;
        std::optional<ListItem> person = reader.Read({key, u"No. " % key.mid(1)});
        if (reader.Failed())
            return false;
        if (!person)
            continue;
        added.append(person->text);
        joining.push_back(*std::move(person));
    }
    selected.Take(selected.RowsOf(gone.values()));
    selected.AddAll(std::move(joining));
    known = {stored.begin(), stored.end()};
    TellNames(QStringLiteral("Another user has added these meanwhile, and they stay:"), added, title);
    TellNames(QStringLiteral("Another user has removed these meanwhile, and they are left out:"), removed,
              title);
    return true;
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
    for (const TreeNode *node : tree.SelectedNodes()) {
        if (node->key.startsWith(u'A'))
            branches.append(node->key.contains(u';') ? node->parent->key : node->key);
    }
    for (const QString &branch : branches) {
        for (int row = 0; row < people.Count(); ++row) {
            TreeNode node;
            node.key = u'A' % SqlNumber(KeyNumber(people.At(row).key)) % u';' % SqlNumber(KeyNumber(branch));
            node.text = people.At(row).text % u" [not enrolled]";
            node.image = QStringLiteral("user");
            tree.Add(branch, std::move(node));
        }
    }
}

void SaveContactSelection(const ListModel &selection, const QString &fileName, Progress &progress)
{
    FillRefTable(selection, fileName, progress);
}
