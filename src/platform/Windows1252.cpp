#include "platform/Windows1252.h"

#include <array>

namespace
{
/// What the bytes 0x80 to 0x9F stand for.
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

void AppendWindows1252(QByteArray &bytes, QStringView text)
{
    // Nearly every text is ASCII as a whole.
    const qsizetype before = bytes.size();
    bytes.resize(before + text.size());
    char *out = bytes.data() + before;
    qsizetype i = 0;
    for (; i < text.size() && text[i].unicode() < 0x80; ++i)
        out[i] = static_cast<char>(text[i].unicode());
    bytes.truncate(before + i);
    for (; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        } else if (text[i].isSurrogate())
            c = QChar::ReplacementCharacter;
        const int byte = ByteOf(c);
        if (byte >= 0)
            bytes.append(static_cast<char>(byte));
        else
            bytes.append("&#" + QByteArray::number(static_cast<uint>(c)) + ';');
    }
}

QByteArray ToWindows1252(const QString &text)
{
    QByteArray bytes;
    AppendWindows1252(bytes, text);
    return bytes;
}
