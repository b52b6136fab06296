#pragma once

#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "controls/TreeModel.h"
#include "exchange/csv/CsvMap.h"
#include "exchange/import/CsvCheck.h"

#include <QString>

#include <optional>

class Progress;

/// What the import wizard knows, without its widgets: the data sets, the target fields of the chosen one, and
/// the mapping of the file's fields to them. The key of a mapped row in `ImportSel` is the tag of the target,
/// the field's position in the file, "-" and the target's column; that of an unmapped one is "?" and the
/// position.
class ImportState final : public QObject
{
    Q_OBJECT

public:
    explicit ImportState(const CsvMap &map, QObject *parent = nullptr);

    ComboModel ImportTypes;
    ListModel ImportList; ///< key "!" and the number of the data set
    TreeModel ImportKey;  ///< key: tag and column, text: display name
    ListModel ImportSel;  ///< text: field of the file, sub-item: display name of its target

    /// Step 0. False, with a message, if no data set is selected; otherwise its target fields are loaded.
    bool ChooseDataSet();
    /// Step 1. Reads the file's header and maps what can be mapped by name. False, with a message, if there
    /// is no header to read.
    bool ChooseFile(const QString &fileName);
    /// Step 2. False, with a message, if nothing or not every required field is to be imported.
    bool CheckMapping();
    /// What step 3 would do, without doing it. Nullopt, with a message, if that cannot be told.
    std::optional<ImportCheck> Check(Progress &progress);
    /// Writes the faulty lines of the checked file, to be corrected and imported. False if there is no such
    /// file now; the user has been told why.
    bool SaveFaulty(const QString &target, Progress &progress);
    /// False if the file is no longer the one that was checked, and the user wants to check it again.
    bool MayRun() const;
    /// Step 3. False if the import did not reach the end of the file.
    bool Run(Progress &progress);

    const QString &FileName() const { return m_fileName; }
    /// The target of a row of ImportSel; null if the row is not mapped.
    TreeNode *TargetOf(int row) const;
    /// Maps a row to a target; another row with that target loses it. Null unmaps the row.
    void SetTarget(int row, const TreeNode *target);

private:
    void LoadTargets(int dataSet);
    void MatchByName();
    void Unmap(int row);

    CsvMap m_map;
    QString m_fileName;
    std::optional<FileStamp> m_checked; ///< of the file when it was last checked
    QString m_keyColumn;
    QString m_table;
    QString m_query;
};
