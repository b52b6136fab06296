#include "exchange/TextLines.h"

#include "platform/Windows1252.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QUtf8StringView>

#include <algorithm>

namespace
{
constexpr qint64 largestFile = 512LL * 1024 * 1024;

/// A character cut off at the very end does not make a file any other than UTF-8.
bool IsUtf8(const QByteArray &bytes)
{
    for (qsizetype cut = 0; cut <= std::min<qsizetype>(3, bytes.size()); ++cut) {
        if (QUtf8StringView(bytes.constData(), bytes.size() - cut).isValidUtf8())
            return true;
        const auto last = static_cast<unsigned char>(bytes.at(bytes.size() - cut - 1));
        if (last < 0x80)
            return false;
    }
    return false;
}

/// Text in UTF-16 without a mark shows by the zero in every other byte of its plain letters.
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

struct Recognised {
    TextLines::Encoding encoding;
    qsizetype markSize;
};

Recognised Recognise(const QByteArray &bytes)
{
    using Encoding = TextLines::Encoding;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return {Encoding::Utf8, 3};
    if (bytes.startsWith("\xFF\xFE"))
        return {Encoding::Utf16LE, 2};
    if (bytes.startsWith("\xFE\xFF"))
        return {Encoding::Utf16BE, 2};
    if (LooksLikeUtf16(bytes, 1))
        return {Encoding::Utf16LE, 0};
    if (LooksLikeUtf16(bytes, 0))
        return {Encoding::Utf16BE, 0};
    return {IsUtf8(bytes) ? Encoding::Utf8 : Encoding::Windows1252, 0};
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
        m_problem = QStringLiteral("It is no file of text.");
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
    const char *const stop = std::find_if(start, end, [](char c) { return c == '\n' || c == '\r'; });
    line = Decoded(start, stop - start);

    const bool pair = end - stop >= 2 && stop[0] == '\r' && stop[1] == '\n';
    const char *const next = stop == end ? end : stop + (pair ? 2 : 1);
    m_end = QByteArray::fromRawData(stop, next - stop);
    m_place.offset = next - m_bytes.constData();
    ++m_place.number;
    return true;
}

QString TextLines::Decoded(const char *bytes, qsizetype size) const
{
    return m_encoding == Encoding::Windows1252 ? FromWindows1252(bytes, size)
                                               : QString::fromUtf8(bytes, size);
}
