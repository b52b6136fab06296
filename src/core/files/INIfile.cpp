#include "core/files/INIfile.h"

#include "core/session/Session.h"
#include "database/values/DecodeDateFunc.h"
#include "database/values/GlobalCode.h"
#include "platform/desktop/Clock.h"
#include "platform/desktop/Directories.h"
#include "platform/desktop/TextFile.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>

#include <functional>
#include <limits>
#include <span>

namespace
{
constexpr int reportDays = 90;
constexpr qint64 longestFile = 16 * 1024 * 1024;
constexpr int white = 0xFFFFFF;
constexpr int allCourseParts = 31;

/// A value that is not a number of its kind: it ends the reading.
struct MalformedNumber {
};

QString DateText(const QDate &date)
{
    return IntToDateText(DateToInt(date));
}

void SetDefaults()
{
    gDBQName.clear();
    gDBQFilename.clear();
    gDBQUseODBC = false;
    gDBQType = 0;
    gDocDir = Directories::WrittenFile(QStringLiteral("Reports"));
    gWarnColour = white;
    gShowIDs = 1;
    gDupCourseOpt = allCourseParts;
    gContactData.fill(0);
    gOrgData.fill(0);
    gCourseInf.fill(0);
    gFromDate = DateText(Clock::Today());
    gToDate = DateText(Clock::Today().addDays(reportDays));
    gDBQDescription = QStringLiteral("Veltrane Database");
    gReportWidth = QStringLiteral("100%");
    gReportFont = QStringLiteral("<FONT FACE=\"Arial\" SIZE=2>");
}

template <typename Whole = int>
int NumberOf(QStringView text)
{
    bool good = false;
    const int number = text.trimmed().toInt(&good);
    if (!good || number < std::numeric_limits<Whole>::min() || number > std::numeric_limits<Whole>::max())
        throw MalformedNumber{};
    return number;
}

bool BooleanOf(const QString &text)
{
    if (text.compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    if (text.compare(u"False", Qt::CaseInsensitive) == 0)
        return false;
    return NumberOf(text) != 0;
}

/// Reads the items of a list, each up to its comma. Items that the text does not have keep their value.
void ReadList(const QString &text, std::span<int> items)
{
    qsizetype position = 0;
    for (int &item : items) {
        if (position >= text.size())
            return;
        const qsizetype comma = text.indexOf(u',', position);
        const qsizetype end = comma < 0 ? text.size() : comma;
        item = NumberOf(QStringView(text).mid(position, end - position));
        position = end + 1;
    }
}

/// Reads the count of values and then the values, of which only the first has a meaning.
void ReadSwitches(const QString &text)
{
    const qsizetype comma = text.indexOf(u',');
    const int count = NumberOf(QStringView(text).left(comma < 0 ? text.size() : comma));
    if (comma >= 0 && count > 0)
        ReadList(text.mid(comma + 1), {&gShowIDs, 1});
}

void Store(const QString &name, const QString &value)
{
    using Reader = std::function<void(const QString &)>;
    const auto text = [](QString &target) -> Reader { return [&target](const QString &v) { target = v; }; };
    const auto list = [](std::span<int> target) -> Reader {
        return [target](const QString &v) { ReadList(v, target); };
    };
    static const QHash<QString, Reader> readers{
        {QStringLiteral("DBQNAME"), text(gDBQName)},
        {QStringLiteral("DBQFILENAME"), text(gDBQFilename)},
        {QStringLiteral("DBQUSEODBC"), [](const QString &v) { gDBQUseODBC = BooleanOf(v); }},
        {QStringLiteral("DBQTYPE"), [](const QString &v) { gDBQType = NumberOf<qint16>(v); }},
        {QStringLiteral("DOCDIR"), text(gDocDir)},
        {QStringLiteral("NOTEXTCOL"), [](const QString &v) { gWarnColour = NumberOf(v); }},
        {QStringLiteral("DUP_COURSE_OPT"), [](const QString &v) { gDupCourseOpt = NumberOf<quint8>(v); }},
        {QStringLiteral("SWITCHES"), ReadSwitches},
        {QStringLiteral("CONTACT_DATA"), list(gContactData)},
        {QStringLiteral("ORG_DATA"), list(gOrgData)},
        {QStringLiteral("COURSE_INF"), list(gCourseInf)},
        {QStringLiteral("FROMDATE"), text(gFromDate)},
        {QStringLiteral("TODATE"), text(gToDate)},
    };
    if (const auto reader = readers.constFind(name); reader != readers.constEnd())
        (*reader)(value);
}

void ReadLine(const QString &line)
{
    if (const std::optional<KeyLine> keyLine = KeyLineOf(line))
        Store(keyLine->key.toUpper(), keyLine->value);
}

void ReadFile(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QString text = TextOf(file.read(longestFile), u';');
    try {
        for (qsizetype begin = 0; begin < text.size();) {
            qsizetype end = begin;
            while (end < text.size() && text.at(end) != u'\n' && text.at(end) != u'\r')
                ++end;
            ReadLine(text.mid(begin, end - begin));
            begin = end + 1;
        }
    } catch (const MalformedNumber &) {
        // What was read up to here is kept.
    }
}

void SettleDocumentFolder()
{
    gDocDir = Directories::WithoutTrailingSeparators(gDocDir);
    if (gDocDir.isEmpty() || !QFileInfo(gDocDir).isDir())
        gDocDir = Directories::Writable();
    gDocDir = QDir::toNativeSeparators(gDocDir);
    gHeaderFile = gDocDir % QDir::separator() % u"header.htm";
}

QString ListText(std::span<const int> items)
{
    QString result;
    for (const int item : items)
        result += QString::number(item) % u',';
    return result;
}

/// A value on a single line: after a line end in it, the rest would be a line of its own.
QString OneLine(const QString &value)
{
    QString result = value;
    return result.remove(u'\r').remove(u'\n');
}

QStringList SettingsLines()
{
    return {
        u"; Veltrane Version " % VersionString() % u" INI file",
        QStringLiteral("; Settings of this workstation, written when the program ends"),
        {},
        QStringLiteral("; Current Database Settings"),
        u"[DBQName]=" % OneLine(gDBQName),
        u"[DBQFilename]=" % OneLine(gDBQFilename),
        u"[DBQUseODBC]=" % QStringView(gDBQUseODBC ? u"True" : u"False"),
        u"[DBQType]=" % QString::number(gDBQType),
        {},
        QStringLiteral("; General Options"),
        u"[DocDir]=" % OneLine(gDocDir),
        u"[NoTextCol]=" % QString::number(gWarnColour),
        u"[Switches]=1," % QString::number(gShowIDs) % u',',
        {},
        QStringLiteral("; Duplicate Course Options"),
        u"[Dup_Course_Opt]=" % QString::number(gDupCourseOpt),
        {},
        QStringLiteral("; Contact Report Info"),
        u"[Contact_Data]=" % ListText(gContactData),
        {},
        QStringLiteral("; Organisations Report Info"),
        u"[Org_Data]=" % ListText(gOrgData),
        {},
        QStringLiteral("; Course Report Info"),
        u"[Course_Inf]=" % ListText(gCourseInf),
        u"[FromDate]=" % OneLine(gFromDate),
        u"[ToDate]=" % OneLine(gToDate),
    };
}
} // namespace

void ReadSettings(const QString &file)
{
    SetDefaults();
    ReadFile(file);
    SettleDocumentFolder();
}

bool WriteSettings(const QString &file)
{
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    const QByteArray text = (SettingsLines().join(u'\n') % u'\n').toUtf8();
    // Flushed first: in this version of Qt, a commit does not notice a disk that turns out to be full during
    // its own flush.
    return target.write(text) == text.size() && target.flush() && target.commit();
}
