#include "database/connection/CredentialStore.h"

#include "core/session/Session.h"
#include "platform/desktop/Directories.h"
#include "platform/desktop/TextFile.h"

#include <QFile>

#include <array>
#include <filesystem>
#include <optional>
#include <utility>

namespace
{
using Table = std::array<unsigned char, 256>;

/// Longer lines are not ours; a file that is not a store may have lines of any length.
constexpr qint64 longestLine = 64 * 1024;

/// Pairs of bytes that are exchanged for each other, from a small fixed generator. The bytes that end a line
/// or a text are left alone, so that a scrambled line stays one line.
Table MakeTable()
{
    Table table{};
    std::array<unsigned char, 252> free{};
    size_t count = 0;
    for (unsigned value = 0; value < 256; ++value) {
        table[value] = static_cast<unsigned char>(value);
        if (value != 0 && value != '\n' && value != '\r' && value != 26)
            free[count++] = static_cast<unsigned char>(value);
    }
    quint32 seed = 20050322;
    while (count > 1) {
        const unsigned char first = free[--count];
        seed = seed * 1664525U + 1013904223U;
        const size_t partner = (seed >> 8) % count;
        const unsigned char second = free[partner];
        free[partner] = free[--count];
        table[first] = second;
        table[second] = first;
    }
    return table;
}

/// The unscrambled line, with its key in upper case.
std::optional<KeyLine> EntryOf(const QByteArray &scrambled)
{
    std::optional<KeyLine> line = KeyLineOf(QString::fromUtf8(ScrambleLine(scrambled)));
    if (line)
        line->key = line->key.toUpper();
    return line;
}

/// Calls `take` with each line of the file, without its end. False if a read fails.
template <typename Take>
bool ForEachLine(QFile &file, Take &&take)
{
    bool longOne = false;
    QByteArray buffer(longestLine, '\0');
    while (!file.atEnd()) {
        const qint64 length = file.readLine(buffer.data(), buffer.size());
        if (length <= 0)
            return false;
        QByteArray line(buffer.constData(), length);
        const bool isWhole = line.endsWith('\n') || file.atEnd();
        while (line.endsWith('\n') || line.endsWith('\r'))
            line.chop(1);
        if (!std::exchange(longOne, !isWhole) && isWhole && !take(line))
            return false;
    }
    return true;
}

bool WriteLine(QFile &out, const QByteArray &line)
{
    return out.write(line + '\n') == line.size() + 1;
}

bool WriteStore(QFile &out, const QString &file, const QString &key, const QString &value)
{
    if (QFile in(file); in.exists()) {
        if (!in.open(QIODevice::ReadOnly))
            return false;
        const bool copied = ForEachLine(in, [&](const QByteArray &line) {
            const std::optional<KeyLine> entry = EntryOf(line);
            return (entry && entry->key == key.toUpper()) || WriteLine(out, line);
        });
        if (!copied)
            return false;
    }
    if (!value.isEmpty()) {
        const QString line = u'[' % key % u"]=" % value;
        if (!WriteLine(out, ScrambleLine(line.toUtf8())))
            return false;
    }
    return out.flush();
}

bool Replace(const QString &file, const QString &by)
{
    std::error_code failure;
    std::filesystem::rename(by.toStdU16String(), file.toStdU16String(), failure);
    return !failure;
}

QString KeyFile()
{
    return Directories::WrittenFile(QStringLiteral("key.dat"));
}

const QString at = QStringLiteral("@");
const QString escapedAt = QStringLiteral("%40");

QString WithoutAt(QString text)
{
    return text.replace(at, escapedAt);
}

QString WithAt(QString text)
{
    return text.replace(escapedAt, at);
}
} // namespace

QByteArray ScrambleLine(const QByteArray &line)
{
    static const Table table = MakeTable();
    QByteArray result = line;
    for (char &byte : result)
        byte = static_cast<char>(table[static_cast<unsigned char>(byte)]);
    return result;
}

QString FetchCredential(const QString &file, const QString &key)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return {};
    QString value;
    ForEachLine(in, [&](const QByteArray &line) {
        if (const std::optional<KeyLine> entry = EntryOf(line); entry && entry->key == key.toUpper())
            value = entry->value;
        return true;
    });
    return value;
}

bool StoreCredential(const QString &file, const QString &key, const QString &value)
{
    if (key.isEmpty() || key.contains(u'\n') || value.contains(u'\n'))
        return false;
    QFile out(Directories::WrittenFile(QStringLiteral("temp.dat")));
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    out.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const bool written = WriteStore(out, file, key, value);
    out.close();
    if (written && out.error() == QFile::NoError && Replace(file, out.fileName()))
        return true;
    out.remove();
    return false;
}

bool StoreSessionCredential()
{
    if (gDBQUseODBC)
        return StoreCredential(KeyFile(), gDBQName, gDBPassword);
    return StoreCredential(KeyFile(), gDBQFilename, WithoutAt(gDBUser) % u'@' % WithoutAt(gDBPassword));
}

void FetchSessionCredential()
{
    const QString value = FetchCredential(KeyFile(), gDBQUseODBC ? gDBQName : gDBQFilename);
    if (gDBQUseODBC) {
        gDBPassword = value;
        return;
    }
    const qsizetype parting = value.indexOf(at);
    if (parting < 0)
        return;
    gDBUser = WithAt(value.left(parting));
    gDBPassword = WithAt(value.mid(parting + 1));
}
