#pragma once

#include "enrolment/Money.h"
#include "platform/connection/Recordset.h"
#include "reports/contacts/ReportChoices.h"

#include <QStringList>

#include <vector>

/// A value of a report: where it comes from, and what it is called in the two layouts.
struct ReportField {
    enum class Kind { Text, Gender, Date };

    QString label; ///< of its row, with one item per line; "" = it has none
    QString title; ///< of its column in a table; "" = it has none
    int width = 0; ///< of the column, in pixels
    QStringList columns{};
    QString joint{}; ///< between the columns that are not empty
    Kind kind = Kind::Text;

    /// Columns in the recordset that is being written, with the schemes of their links.
    struct Place {
        int column;
        QString scheme;
    };
    std::vector<Place> places{};
};

/// Looks the fields up once in the recordset whose rows are written next, instead of for every person.
void FindFields(std::vector<ReportField> &fields, const Recordset &rows);

/// The fields that the ticks ask for, in the order of the report: those of the person up to the notes, those
/// of the person's work, those of an organisation.
std::vector<ReportField> PersonalFields(const ContactFlags &flags);
std::vector<ReportField> WorkFields(const ContactFlags &flags);
std::vector<ReportField> OrgFields(const OrgFlags &flags);

/// The value in a row of the recordset that the field was looked up in, with its links; "" if there is
/// nothing.
QString FieldValue(const ReportField &field, const Recordset::Row &row);

/// An amount with two decimals, with the currency symbol in front.
QString MoneyText(Money amount);

/// Writes the heading above the items of a person or an organisation.
void WriteHeading(const QString &name);
/// Writes a row for each field that has a label and a value.
void WriteLabelRows(const std::vector<ReportField> &fields, const Recordset::Row &row);
/// Writes a row of the two cells "&nbsp;" and `label`, above the rows of a list; and a row of that list.
void WriteListLabel(const QString &label);
void WriteListRow(const QString &value);

/// Writes a cell of a table: a title in bold and centred, or a value, where "" becomes "&nbsp;".
void WriteTitleCell(const QString &title, int width);
void WriteValueCell(const QString &value, int width);
/// Writes the cells of all fields that have a column.
void WriteTitleCells(const std::vector<ReportField> &fields);
void WriteValueCells(const std::vector<ReportField> &fields, const Recordset::Row &row);
