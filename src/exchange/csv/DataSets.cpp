#include "exchange/csv/DataSets.h"

#include "controls/ComboModel.h"
#include "controls/ListModel.h"

void FillDataSets(const CsvMap &map, ComboModel &types, ListModel &sets)
{
    types.Add(QStringLiteral("Text File (Comma Separated Values)"));
    types.SetCurrent(0);
    std::vector<ListItem> items;
    for (const CsvDataSet &set : map.DataSets(wizardLanguage))
        items.push_back({u'!' % QString::number(set.number), set.name});
    sets.Fill(std::move(items));
    sets.SelectFirst();
}
