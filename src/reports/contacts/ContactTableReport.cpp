// A part of ContactReport.h.
#include "database/statements/Sentinel.h"
#include "database/values/DecodeDateFunc.h"
#include "reports/contacts/ContactHistory.h"
#include "reports/contacts/ContactReport.h"
#include "reports/writer/HTMLscript.h"

#include <QSet>

namespace
{
const QString lineBreak = QStringLiteral("<br>");

/// What the rows are grouped by: one column or two, whose value is shown where it changes.
class GroupCells final
{
public:
    explicit GroupCells(ContactOrdering ordering)
    {
        switch (ordering) {
        case ContactOrdering::Characteristic:
            m_cells = {{QStringLiteral("Characteristic"), QStringLiteral("CharName")}};
            break;
        case ContactOrdering::GroupTypeThenGroup:
            m_cells = {{QStringLiteral("Group Type"), QStringLiteral("LinkName")},
                       {QStringLiteral("Group"), QStringLiteral("GroupName")}};
            break;
        case ContactOrdering::GroupThenGroupType:
            m_cells = {{QStringLiteral("Group"), QStringLiteral("GroupName")},
                       {QStringLiteral("Group Type"), QStringLiteral("LinkName")}};
            break;
        case ContactOrdering::None:
            break;
        }
    }

    void WriteTitles() const
    {
        for (const Cell &cell : m_cells)
            WriteTitleCell(cell.title, width);
    }

    /// When the first column changes, the second is shown again even if its value is the same.
    void WriteValues(const Recordset::Row &row)
    {
        bool changed = m_isFirst;
        m_isFirst = false;
        for (Cell &cell : m_cells) {
            const QString value = row.Text(cell.column);
            changed = changed || value != cell.last;
            WriteValueCell(changed ? value : QString(), width);
            cell.last = value;
        }
    }

private:
    static constexpr int width = 100;
    struct Cell {
        QString title;
        QString column;
        QString last{};
    };
    std::vector<Cell> m_cells;
    bool m_isFirst = true;
};

QString AttendedText(ContactRef contactRef)
{
    QStringList courses;
    for (const ContactHistory::Attended &attended : ContactHistory::CoursesAttended(contactRef, false))
        courses.append(attended.course);
    return courses.join(lineBreak);
}

/// Role, course and first day, in three cells whose lines match.
void WriteRoleCells(ContactRef contactRef)
{
    QStringList roles;
    QStringList courses;
    QStringList days;
    for (const ContactHistory::Staffed &staffed : ContactHistory::RolesOnCourses(contactRef)) {
        roles.append(staffed.role);
        courses.append(staffed.course);
        days.append(IntToDateText(int(staffed.day)));
    }
    WriteValueCell(roles.join(lineBreak), 200);
    WriteValueCell(courses.join(lineBreak), 200);
    WriteValueCell(days.join(lineBreak), 100);
}

class TableWriter final
{
public:
    TableWriter(const ContactReport &report, const Recordset &people)
        : m_fields(report, people)
        , m_groups(report.ordering)
    {
    }

    void WriteTitles() const
    {
        HTML_RowStart();
        m_groups.WriteTitles();
        WriteTitleCell(QStringLiteral("Name"), 200);
        WriteTitleCells(m_fields.personal);
        const auto title = [this](ContactItem::Flag flag, const QString &text, int width) {
            if (m_fields.Has(flag))
                WriteTitleCell(text, width);
        };
        title(ContactItem::Notes, QStringLiteral("Notes"), 300);
        title(ContactItem::Characteristics, QStringLiteral("Characteristics"), 200);
        title(ContactItem::Groups, QStringLiteral("Groups"), 100);
        title(ContactItem::CoursesAttended, QStringLiteral("Courses<br>Attended"), 200);
        title(ContactItem::CoursesStaffed, QStringLiteral("Role"), 200);
        title(ContactItem::CoursesStaffed, QStringLiteral("on Courses"), 200);
        title(ContactItem::CoursesStaffed, QStringLiteral("Start Date"), 100);
        WriteTitleCells(m_fields.work);
        HTML_RowEnd();
    }

    void Write(const Recordset::Row &row)
    {
        const auto contactRef = static_cast<int>(row.Long(u"ContactRef"));
        HTML_RowStart();
        m_groups.WriteValues(row);
        WriteValueCell(ContactName(m_fields.report.nameOpt, row), 200);
        WriteValueCells(m_fields.personal, row);
        if (m_fields.Has(ContactItem::Notes))
            WriteValueCell(ContactHistory::Notes(ContactRef(contactRef)), 300);
        if (m_fields.Has(ContactItem::Characteristics))
            WriteValueCell(ContactHistory::Characteristics(ContactRef(contactRef)).join(lineBreak), 200);
        if (m_fields.Has(ContactItem::Groups))
            WriteValueCell(ContactHistory::Groups(ContactRef(contactRef)).join(lineBreak), 100);
        if (m_fields.Has(ContactItem::CoursesAttended))
            WriteValueCell(AttendedText(ContactRef(contactRef)), 200);
        if (m_fields.Has(ContactItem::CoursesStaffed))
            WriteRoleCells(ContactRef(contactRef));
        WriteValueCells(m_fields.work, row);
        HTML_RowEnd();
    }

private:
    ContactFields m_fields;
    GroupCells m_groups;
};
} // namespace

ReportResult Contact_Rep_Tabular_HTML(const ContactReport &report, Progress &progress)
{
    return WriteReport("Contact_Rep_Tabular_HTML", BuildTitleString(report), [&]() -> std::optional<int> {
        const std::optional<Recordset> people = OpenContacts(report);
        if (!people)
            return std::nullopt;
        TableWriter writer(report, *people);
        HTML_Table();
        writer.WriteTitles();
        QSet<qint64> written;
        const auto held = WriteRecords(*people, progress, [&](const Recordset::Row &row) {
            const qint64 contactRef = row.Long(u"ContactRef");
            if (IsSentinel(contactRef))
                return false;
            writer.Write(row);
            const bool isNew = !written.contains(contactRef);
            written.insert(contactRef);
            return isNew;
        });
        HTML_TableEnd();
        return held;
    });
}
