#pragma once

#include "exchange/csv/CsvReader.h"
#include "exchange/import/ImportColumn.h"

#include <QStringList>

#include <vector>

class ListModel;

/// The file of an import, line by line, with the columns that its fields go to.
class ImportSource final
{
public:
    enum class Opened { Yes, RefusedQuery, Told };
    /// Told: there is nothing to import, and the user has been told why. A refused query is reported under
    /// `routineName`. Only inside Reported.
    Opened Open(const char *routineName, const QString &fileName, const ListModel &fields, const QString &sql,
                const QString &table);

    int Lines() const { return m_lines; } ///< after the header
    /// Goes to the next line; false after the last one.
    bool Next();
    const CsvLine &Line() const { return m_line; }
    const std::vector<ImportColumn> &Columns() const { return m_columns; }
    /// The line's text for a column.
    QString Text(const ImportColumn &column) const { return m_texts.value(column.Position() - 1); }
    /// Whether that text has NUL characters in the file, which Text leaves out.
    bool HasNul(const ImportColumn &column) const { return m_withNul.contains(column.Position() - 1); }
    /// What comes after the last field that the header names; "" if nothing does.
    QString TextAfterHeader() const;
    bool IsBlank() const; ///< the line has no text in any field
    const QString &Header() const { return m_header; }
    /// The header's name for the field that a column is taken from.
    QString FieldName(const ImportColumn &column) const { return m_names.value(column.Position() - 1); }
    /// The encoding of most of the file, as a word.
    QString EncodingName() const { return m_reader.EncodingName(); }
    /// The stamp of the file as it was read.
    const FileStamp &Stamp() const { return m_reader.Stamp(); }

private:
    bool HeaderDiffers(const ListModel &fields) const;

    CsvReader m_reader;
    QString m_header;
    QStringList m_names; ///< of the header's fields
    std::vector<ImportColumn> m_columns;
    int m_lines = 0;
    CsvLine m_line;
    QStringList m_texts;
    QList<qsizetype> m_withNul; ///< positions in m_texts
};
