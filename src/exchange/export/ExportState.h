#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "exchange/csv/CsvMap.h"

#include <QString>

#include <vector>

class Progress;

/// What the export wizard knows, without its widgets: the data sets, the fields of the chosen one, and which
/// of them were ticked last time. The ticks of each data set are a bit mask, kept in `export.tmp`: a line for
/// each data set, in the order of the map, with bit i for its i-th field. A changed map changes their
/// meaning.
class ExportState final
{
public:
    /// Reads the masks.
    explicit ExportState(const CsvMap &map);
    /// Writes the masks; failure to write them is ignored.
    void SaveMasks() const;

    ComboModel ExportTypes;
    ListModel ExportList; ///< key "!" and the number of the data set
    ListModel ExportSel;  ///< key: column, text: display name

    /// Step 0. False, with a message, if no data set is selected; otherwise its fields are loaded and ticked.
    bool ChooseDataSet();
    /// Step 1. False, with a message, if nothing is ticked; otherwise the ticks are kept.
    bool ChooseFields();
    void TickAll(bool ticked);
    /// Step 3. True if the file was written.
    bool Run(const QString &fileName, Progress &progress) const;

    /// The name of the chosen data set.
    const QString &DataSet() const { return m_name; }

private:
    static constexpr int notStored = -1;
    void LoadMasks();
    void ShowMask(int mask);

    CsvMap m_map;
    QString m_name;
    QString m_query;
    std::vector<int> m_masks; ///< one for each data set
    size_t m_chosen = 0;      ///< the data set of ExportSel
};
