#include "exchange/import/ImportNotes.h"

#include "database/values/GlobalCode.h"

#include <QFileInfo>

namespace
{
constexpr int listed = 10;
}

void ImportNotes::Kind::Add(const ImportFault &fault)
{
    if (++count <= listed)
        first.append(fault.Sentence());
}

QString ImportNotes::Kind::Text(const QString &heading) const
{
    if (count == 0)
        return {};
    QString text = heading % u'\n';
    for (const QString &line : first)
        text += u"    " % line % u'\n';
    if (count > listed)
        text += u"    and " % FormatNumber(count - listed, 0) % u" more.\n";
    return text;
}

void ImportNotes::LineSkipped(const std::vector<ImportFault> &faults)
{
    if (!faults.empty())
        m_skipped.Add(faults.front());
}

void ImportNotes::ValuesLost(const std::vector<ImportFault> &losses)
{
    for (const ImportFault &loss : losses)
        m_lost.Add(loss);
}

QString ImportNotes::Text(const QString &fileName) const
{
    const QString name = u" of '" % QFileInfo(fileName).fileName() % u"' ";
    const auto heading = [&name](int count, const char *what, const char *one, const char *many) {
        const bool isOne = count == 1;
        return QString(FormatNumber(count, 0) % u' ' % QLatin1String(what) % QLatin1String(isOne ? "" : "s") %
                       name % QLatin1String(isOne ? one : many) % u':');
    };
    const QString skipped =
        m_skipped.Text(heading(m_skipped.count, "line", "was skipped because of its contents",
                               "were skipped because of their contents"));
    const QString lost = m_lost.Text(
        heading(m_lost.count, "value", "was not imported unchanged", "were not imported unchanged"));
    const bool both = !skipped.isEmpty() && !lost.isEmpty();
    return QString(skipped % QLatin1String(both ? "\n" : "") % lost).trimmed();
}
