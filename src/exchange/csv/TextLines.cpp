#include "exchange/csv/TextLines.h"

#include "platform/sql/Windows1252.h"

#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QUtf8StringView>

#include <algorithm>

namespace
{
constexpr qint64 largestFile = 512LL * 1024 * 1024;

bool IsAscii(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
}

bool IsUtf8(QByteArrayView bytes)
{
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

/// A character cut off at the very end does not stop a file from being UTF-8, if it has others that are
/// whole.
bool IsCutUtf8(QByteArrayView bytes)
{
    constexpr qsizetype mostCut = 3;
    for (qsizetype cut = 1; cut <= std::min(mostCut, bytes.size()); ++cut) {
        const QByteArrayView rest = bytes.chopped(cut);
        if (IsAscii(bytes.last(cut)))
            return false;
        if (IsUtf8(rest))
            return !IsAscii(rest);
    }
    return false;
}

/// UTF-16 without a mark is recognised by the zero in every other byte of its plain letters.
bool LooksLikeUtf16(const QByteArray &bytes, int zeroByte)
{
    const qsizetype looked = std::min<qsizetype>(bytes.size(), 4096) & ~qsizetype(1);
    qsizetype zeros = 0;
    qsizetype others = 0;
    for (qsizetype i = 0; i < looked; i += 2) {
        zeros += bytes.at(i + zeroByte) == 0;
        others += bytes.at(i + 1 - zeroByte) == 0;
    }
    return looked >= 4 && zeros * 4 >= looked && others * 20 <= looked;
}

constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");

bool IsLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

struct Recognised {
    TextLines::Encoding encoding;
    qsizetype markSize = 0;
    bool isMixed = false;
};

/// For a text that is not all UTF-8: the encoding of most of its lines with accents.
Recognised RecogniseByLines(const QByteArray &bytes, qsizetype markSize)
{
    const char *const end = bytes.constData() + bytes.size();
    int utf8 = 0;
    int others = 0;
    for (const char *start = bytes.constData() + markSize; start < end;) {
        const char *const stop = std::find_if(start, end, IsLineEnd);
        const QByteArrayView line(start, stop);
        if (!IsAscii(line))
            ++(IsUtf8(line) ? utf8 : others);
        start = stop + 1;
    }
    const bool isUtf8 = markSize > 0 || utf8 >= others;
    return {isUtf8 ? TextLines::Encoding::Utf8 : TextLines::Encoding::Windows1252, markSize,
            isUtf8 ? others > 0 : utf8 > 0};
}

Recognised Recognise(const QByteArray &bytes)
{
    using Encoding = TextLines::Encoding;
    if (bytes.startsWith("\xFF\xFE"))
        return {Encoding::Utf16LE, 2};
    if (bytes.startsWith("\xFE\xFF"))
        return {Encoding::Utf16BE, 2};
    const qsizetype markSize = bytes.startsWith(utf8Mark) ? utf8Mark.size() : 0;
    if (markSize == 0 && LooksLikeUtf16(bytes, 1))
        return {Encoding::Utf16LE};
    if (markSize == 0 && LooksLikeUtf16(bytes, 0))
        return {Encoding::Utf16BE};
    if (IsUtf8(bytes) || IsCutUtf8(bytes))
        return {Encoding::Utf8, markSize};
    return RecogniseByLines(bytes, markSize);
}
} // namespace

FileStamp FileStamp::Of(const QString &fileName)
{
    const QFileInfo info(fileName);
    return info.exists() ? FileStamp{info.size(), info.lastModified()} : FileStamp();
}

bool TextLines::Open(const QString &fileName)
{
    m_problem.clear();
    SetBytes({});
    const QFileInfo info(fileName);
    if (!info.exists())
        m_problem = QStringLiteral("The file does not exist.");
    else if (info.isDir())
        m_problem = QStringLiteral("It is a folder.");
    else if (!info.isFile())
        m_problem = QStringLiteral("It is not a text file.");
    else if (info.size() > largestFile)
        m_problem = QStringLiteral("It is larger than 512 megabytes.");
    if (!m_problem.isEmpty())
        return false;

    m_stamp = FileStamp::Of(fileName);
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_problem = file.errorString() % u'.';
        return false;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        m_problem = file.errorString() % u'.';
    else if (FileStamp::Of(fileName) != m_stamp || bytes.size() != m_stamp.size)
        m_problem = QStringLiteral("Another program is writing it. Try again when it has finished.");
    if (!m_problem.isEmpty())
        return false;
    SetBytes(bytes);
    return true;
}

void TextLines::SetBytes(const QByteArray &bytes)
{
    const Recognised found = Recognise(bytes);
    m_encoding = found.encoding;
    m_isMixed = found.isMixed;
    m_bytes = bytes.mid(found.markSize);
    if (m_encoding == Encoding::Utf16LE || m_encoding == Encoding::Utf16BE) {
        QStringDecoder decode(m_encoding == Encoding::Utf16LE ? QStringDecoder::Utf16LE
                                                              : QStringDecoder::Utf16BE);
        const QString text = decode(m_bytes);
        m_bytes = text.toUtf8();
    }
    m_place = {};
}

bool TextLines::Next(QString &line)
{
    if (m_place.offset >= m_bytes.size())
        return false;
    const char *const start = m_bytes.constData() + m_place.offset;
    const char *const end = m_bytes.constData() + m_bytes.size();
    const char *const stop = std::find_if(start, end, IsLineEnd);
    line = Decoded({start, stop});

    const bool pair = end - stop >= 2 && stop[0] == '\r' && stop[1] == '\n';
    const char *const next = stop == end ? end : stop + (pair ? 2 : 1);
    m_end = QByteArray::fromRawData(stop, next - stop);
    m_place.offset = next - m_bytes.constData();
    ++m_place.number;
    return true;
}

QString TextLines::Decoded(QByteArrayView line)
{
    m_isOdd = m_isMixed && !IsAscii(line) && IsUtf8(line) != (m_encoding == Encoding::Utf8);
    const bool isWindows1252 = (m_encoding == Encoding::Windows1252) != m_isOdd;
    if (isWindows1252)
        return FromWindows1252(line.data(), line.size());
    // The toolkit drops a mark at the beginning of a text, but this is a line in the middle of one.
    return line.startsWith(utf8Mark)
               ? QString(QChar::ByteOrderMark % QString::fromUtf8(line.sliced(utf8Mark.size())))
               : QString::fromUtf8(line);
}

QString TextLines::EncodingName() const
{
    return m_encoding == Encoding::Windows1252 ? QStringLiteral("Windows-1252") : QStringLiteral("UTF-8");
}
