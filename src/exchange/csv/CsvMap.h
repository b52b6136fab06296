#pragma once

#include <QString>

#include <vector>

/// A data set that can be imported and exported.
struct CsvDataSet {
    QString name; ///< as shown in a wizard's list
    int number = 0;
};

/// A line in a data set's block. The tag says what the value is: "*" a required and "?" an optional column of
/// the query, "%" the key column, "#" the table, "$" the query, "&" a default bit mask.
struct CsvMapEntry {
    QString text; ///< as shown to the user
    QChar tag;
    QString value;
};

/// The map of CSV fields, `system/csvmap.dat`: which data sets exist and which columns they have. Lines that
/// are not understood are skipped; a file that is missing or not a map has no data sets.
class CsvMap final
{
public:
    explicit CsvMap(const QString &fileName);
    static CsvMap FromBytes(const QByteArray &bytes);
    /// The map that ships with the program, or the one that the site has put in its place.
    static CsvMap Installed();

    std::vector<CsvDataSet> DataSets(const QString &language) const;
    std::vector<CsvMapEntry> Entries(const QString &language, int number) const;
    /// The value of the first entry with that tag; "" if there is none.
    static QString ValueOf(const std::vector<CsvMapEntry> &entries, QChar tag);

private:
    CsvMap() = default;
    void Read(class TextLines &lines);
    size_t BehindHeader(const QString &language) const;
    std::vector<QString> m_lines; ///< trimmed, without empty ones
};
