#include "exchange/ImportNotes.h"

#include "database/GlobalCode.h"

#include <QFileInfo>

namespace
{
constexpr int listed = 10;
constexpr int shownOfValue = 40;

QString Counted(qsizetype count)
{
    return FormatNumber(static_cast<double>(count), 0);
}

QString Place(int line, const QString &field)
{
    return u"Line " % QString::number(line) % u", field '" % field % u"': ";
}
} // namespace

void ImportNotes::Kind::Add(const QString &text)
{
    if (++count <= listed)
        first.append(text);
}

QString ImportNotes::Kind::Text(const QString &heading) const
{
    if (count == 0)
        return {};
    QString text = heading % u'\n';
    for (const QString &line : first)
        text += u"    " % line % u'\n';
    if (count > listed)
        text += u"    and " % Counted(count - listed) % u" more.\n";
    return text;
}

void ImportNotes::LineRefused(int line, const QString &field, const QString &value, const QString &why)
{
    const QString shown = value.size() > shownOfValue ? value.left(shownOfValue) % u"..." : value;
    m_refused.Add(Place(line, field) % u'\'' % FlattenLines(shown) % u"' " % why % u'.');
}

void ImportNotes::LineWithUnclosedQuote(int line)
{
    m_refused.Add(u"Line " % QString::number(line) % u": a quotation mark is opened and not closed.");
}

void ImportNotes::ValueCut(int line, const QString &field, qsizetype length, int size)
{
    m_cut.Add(Place(line, field) % Counted(length) % u" characters, of which " % Counted(size) % u" fit.");
}

QString ImportNotes::Text(const QString &fileName) const
{
    const QString name = u" of '" % QFileInfo(fileName).fileName() % u"' ";
    const auto heading = [&name](int count, const char *what, const char *one, const char *many) {
        return QString(Counted(count) % u' ' % QLatin1String(what) %
                       (count == 1 ? QString() : QString(u's')) % name %
                       QLatin1String(count == 1 ? one : many) % u':');
    };
    const QString refused =
        m_refused.Text(heading(m_refused.count, "line", "was skipped because of what it holds",
                               "were skipped because of what they hold"));
    const QString cut = m_cut.Text(heading(m_cut.count, "value", "was cut to the size of the column",
                                           "were cut to the size of the column"));
    const bool both = !refused.isEmpty() && !cut.isEmpty();
    return QString(refused % (both ? QString(u'\n') : QString()) % cut).trimmed();
}
