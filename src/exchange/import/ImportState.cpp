#include "exchange/import/ImportState.h"

#include "exchange/csv/CsvBoxes.h"
#include "exchange/csv/CsvHeaders.h"
#include "exchange/csv/DataSets.h"
#include "exchange/import/CsvImport.h"
#include "platform/desktop/Dialogs.h"

#include <algorithm>

namespace
{

bool IsRequired(const TreeNode *target)
{
    return target->key.startsWith(u'*');
}
} // namespace

ImportState::ImportState(const CsvMap &map, QObject *parent)
    : QObject(parent)
    , m_map(map)
{
    FillDataSets(m_map, ImportTypes, ImportList);
    ImportSel.SetColumns({QStringLiteral("Text Field"), QStringLiteral("Veltrane Field")});
    ImportSel.SetCheckable(true);
    // A tick means that the field is imported, which is impossible without a target.
    connect(&ImportSel, &ListModel::Checked, this, [this](int row) {
        if (ImportSel.At(row).checked && !TargetOf(row))
            ImportSel.SetChecked(row, false);
    });
}

bool ImportState::ChooseDataSet()
{
    const QStringList selected = ImportList.SelectedKeys();
    if (selected.isEmpty())
        return TellOfImport(QStringLiteral("No selected/available items to import."));
    LoadTargets(KeyNumber(selected.first()));
    return true;
}

void ImportState::LoadTargets(int dataSet)
{
    const std::vector<CsvMapEntry> entries = m_map.Entries(wizardLanguage, dataSet);
    m_keyColumn = CsvMap::ValueOf(entries, u'%');
    m_table = CsvMap::ValueOf(entries, u'#');
    m_query = CsvMap::ValueOf(entries, u'$');
    ImportKey.Clear();
    for (const CsvMapEntry &entry : entries) {
        if (entry.tag == u'*' || entry.tag == u'?')
            ImportKey.Add({},
                          {.key = entry.tag % entry.value, .text = entry.text, .bold = entry.tag == u'*'});
    }
}

bool ImportState::ChooseFile(const QString &fileName)
{
    m_fileName = fileName;
    m_checked.reset();
    if (!CsvReadHeaders(fileName, ImportSel))
        return false;
    MatchByName();
    return true;
}

void ImportState::MatchByName()
{
    struct Field {
        int position;
        int row;
        QString text;
    };
    std::vector<Field> fields;
    fields.reserve(static_cast<size_t>(ImportSel.Count()));
    for (int row = 0; row < ImportSel.Count(); ++row) {
        const ListItem &item = ImportSel.At(row);
        fields.push_back({KeyNumber(item.key), row, item.text.toUpper()});
    }
    // The list may be sorted; here the order of the file counts.
    std::sort(fields.begin(), fields.end(),
              [](const Field &left, const Field &right) { return left.position < right.position; });
    for (const TreeNode *target : ImportKey.Nodes()) {
        const QString wanted = target->text.toUpper();
        const auto found = std::find_if(fields.begin(), fields.end(), [&wanted](const Field &field) {
            return field.text.contains(wanted);
        });
        if (found != fields.end() && !wanted.isEmpty())
            SetTarget(found->row, target);
    }
    ImportSel.SelectFirst();
}

TreeNode *ImportState::TargetOf(int row) const
{
    const QString &key = ImportSel.At(row).key;
    const qsizetype hyphen = key.indexOf(u'-');
    return hyphen < 0 ? nullptr : ImportKey.Find(key.left(1) % key.mid(hyphen + 1));
}

void ImportState::Unmap(int row)
{
    ImportSel.SetKey(row, u'?' % QString::number(KeyNumber(ImportSel.At(row).key)));
    ImportSel.SetSubItem(row, 0, QString());
    ImportSel.SetChecked(row, false);
}

void ImportState::SetTarget(int row, const TreeNode *target)
{
    for (int other = 0; target && other < ImportSel.Count(); ++other) {
        if (other != row && TargetOf(other) == target)
            Unmap(other);
    }
    if (!target)
        return Unmap(row);
    const QString position = QString::number(KeyNumber(ImportSel.At(row).key));
    ImportSel.SetKey(row, target->key.left(1) % position % u'-' % target->key.mid(1));
    ImportSel.SetSubItem(row, 0, target->text);
    ImportSel.SetChecked(row, true);
}

bool ImportState::CheckMapping()
{
    const std::vector<int> checked = ImportSel.CheckedRows();
    if (checked.empty())
        return TellOfImport(QStringLiteral("No fields to import."));
    QString missing;
    for (const TreeNode *target : ImportKey.Nodes()) {
        const bool isMapped =
            std::any_of(checked.begin(), checked.end(), [&](int row) { return TargetOf(row) == target; });
        if (IsRequired(target) && !isMapped)
            missing += u"    " % target->text % u'\n';
    }
    return missing.isEmpty() || TellOfImport(u"The following fields are required:\n" % missing);
}

bool ImportState::Run(Progress &progress)
{
    return Import_CSV_File(m_fileName, ImportSel, m_query, m_keyColumn, m_table, progress);
}

std::optional<ImportCheck> ImportState::Check(Progress &progress)
{
    std::optional<ImportCheck> check =
        Check_CSV_File(m_fileName, ImportSel, m_query, m_keyColumn, m_table, progress);
    if (check)
        m_checked = check->file;
    return check;
}

bool ImportState::SaveFaulty(const QString &target, Progress &progress)
{
    return SaveFaultyLines(target, m_fileName, m_checked.value_or(FileStamp()), ImportSel, m_query, m_table,
                           progress);
}

bool ImportState::MayRun() const
{
    return !m_checked || FileStamp::Of(m_fileName) == *m_checked ||
           Dialogs::MsgBox(u"'" % m_fileName % u"' has changed since it was checked.\nOkay to import?",
                           QStringLiteral("CSV Import"), Dialogs::Buttons::YesNo, Dialogs::Icon::Question,
                           Dialogs::Answer::No) == Dialogs::Answer::Yes;
}
