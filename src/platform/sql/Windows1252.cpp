#include "platform/sql/Windows1252.h"

#include <array>
#include <charconv>

namespace
{
/// The characters of the bytes 0x80 to 0x9F.
constexpr std::array<char16_t, 32> upper = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// The byte of a character, or -1 if there is none.
int ByteOf(char32_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<int>(c);
    for (size_t i = 0; i < upper.size(); ++i) {
        if (c == upper[i])
            return static_cast<int>(0x80 + i);
    }
    return -1;
}
} // namespace

QString FromWindows1252(const char *bytes, qsizetype size)
{
    QString text = QString::fromLatin1(bytes, size);
    for (QChar &c : text) {
        if (c >= QChar(0x80) && c <= QChar(0x9F))
            c = QChar(upper[static_cast<size_t>(c.unicode() - 0x80)]);
    }
    return text;
}

char *WriteWindows1252(char *out, QStringView text)
{
    const char16_t *in = text.utf16();
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        if (in[i] < 0x80) {
            *out++ = static_cast<char>(in[i]);
            continue;
        }
        char32_t c = in[i];
        if (QChar::isHighSurrogate(c) && i + 1 < size && QChar::isLowSurrogate(in[i + 1]))
            c = QChar::surrogateToUcs4(c, in[++i]);
        else if (QChar::isSurrogate(c))
            c = QChar::ReplacementCharacter;
        const int byte = ByteOf(c);
        if (byte >= 0) {
            *out++ = static_cast<char>(byte);
            continue;
        }
        *out++ = '&';
        *out++ = '#';
        constexpr int mostDigits = 7;
        out = std::to_chars(out, out + mostDigits, static_cast<quint32>(c)).ptr;
        *out++ = ';';
    }
    return out;
}

QByteArray ToWindows1252(const QString &text)
{
    QByteArray bytes(text.size() * mostBytesInWindows1252, Qt::Uninitialized);
    bytes.truncate(WriteWindows1252(bytes.data(), text) - bytes.constData());
    return bytes;
}
