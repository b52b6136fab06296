#pragma once

#include <QString>

#include <vector>

/// A data set that the map offers for import and export.
struct CsvDataSet {
    QString name; ///< as shown in a wizard's list
    int number = 0;
};

/// A line of a data set's block. The tag tells what the value is: "*" a required and "?" an optional
/// column of the query, "%" the key column, "#" the table, "$" the query, "&" a default bit mask.
struct CsvMapEntry {
    QString text; ///< as shown to the user
    QChar tag;
    QString value;
};

/// The map of CSV fields, `system/csvmap.dat`: which data sets exist and which columns they have. Lines
/// that are not understood are passed over; a file that is missing or is none gives no data sets.
class CsvMap final
{
public:
    explicit CsvMap(const QString &fileName);
    static CsvMap FromBytes(const QByteArray &bytes);
    /// The map that ships with the program, or the one that the site put in its place.
    static CsvMap Installed();

    std::vector<CsvDataSet> DataSets(const QString &language) const;
    std::vector<CsvMapEntry> Entries(const QString &language, int number) const;
    /// The value of the first entry with that tag; "" where there is none.
    static QString ValueOf(const std::vector<CsvMapEntry> &entries, QChar tag);

private:
    CsvMap() = default;
    void Read(class TextLines &lines);
    size_t BehindHeader(const QString &language) const;
    std::vector<QString> m_lines; ///< trimmed, without empty ones
};
