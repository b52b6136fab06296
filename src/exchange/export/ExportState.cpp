#include "exchange/export/ExportState.h"

#include "exchange/csv/CsvBoxes.h"
#include "exchange/csv/DataSets.h"
#include "exchange/csv/TextLines.h"
#include "exchange/export/CsvExport.h"
#include "platform/desktop/Directories.h"

#include <QSaveFile>

namespace
{
constexpr int bitsKept = 31;

QString MaskFile()
{
    return Directories::WrittenFile(QStringLiteral("export.tmp"));
}
} // namespace

ExportState::ExportState(const CsvMap &map)
    : m_map(map)
{
    FillDataSets(m_map, ExportTypes, ExportList);
    ExportSel.SetCheckable(true);
    m_masks.assign(static_cast<size_t>(ExportList.Count()), notStored);
    LoadMasks();
}

void ExportState::LoadMasks()
{
    TextLines lines;
    if (!lines.Open(MaskFile()))
        return;
    QString line;
    for (int &mask : m_masks) {
        if (!lines.Next(line))
            return;
        bool isNumber = false;
        const int stored = line.trimmed().toInt(&isNumber);
        mask = isNumber && stored >= 0 ? stored : notStored;
    }
}

void ExportState::SaveMasks() const
{
    QByteArray text;
    for (const int mask : m_masks)
        text += QByteArray::number(mask) + "\r\n";
    QSaveFile file(MaskFile());
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size())
        file.commit();
}

bool ExportState::ChooseDataSet()
{
    const std::vector<int> selected = ExportList.SelectedRows();
    if (selected.empty())
        return TellOfExport(QStringLiteral("No selected/available items to export."));
    const ListItem &set = ExportList.At(selected.front());
    m_chosen = static_cast<size_t>(selected.front());
    m_name = set.text;
    const std::vector<CsvMapEntry> entries = m_map.Entries(wizardLanguage, KeyNumber(set.key));
    m_query = CsvMap::ValueOf(entries, u'$');

    std::vector<ListItem> fields;
    for (const CsvMapEntry &entry : entries) {
        if (entry.tag == u'*' || entry.tag == u'?')
            fields.push_back({.key = entry.value, .text = entry.text, .bold = entry.tag == u'*'});
    }
    ExportSel.Fill(std::move(fields));
    ExportSel.SelectFirst();

    int &mask = m_masks[m_chosen];
    if (mask == notStored) {
        bool isNumber = false;
        const int proposed = CsvMap::ValueOf(entries, u'&').toInt(&isNumber);
        mask = isNumber ? proposed : notStored;
    }
    ShowMask(mask);
    return true;
}

void ExportState::ShowMask(int mask)
{
    for (int row = 0; row < ExportSel.Count(); ++row)
        ExportSel.SetChecked(row, mask == notStored || (row < bitsKept && (mask & (1 << row))));
}

void ExportState::TickAll(bool ticked)
{
    for (int row = 0; row < ExportSel.Count(); ++row)
        ExportSel.SetChecked(row, ticked);
}

bool ExportState::ChooseFields()
{
    const std::vector<int> checked = ExportSel.CheckedRows();
    if (checked.empty())
        return TellOfExport(QStringLiteral("You need at least one field to export."));
    int &mask = m_masks[m_chosen];
    mask = 0;
    for (const int row : checked) {
        if (row < bitsKept)
            mask |= 1 << row;
    }
    return true;
}

bool ExportState::Run(const QString &fileName, Progress &progress) const
{
    return Export_CSV_File(fileName, ExportSel, m_query, progress);
}
