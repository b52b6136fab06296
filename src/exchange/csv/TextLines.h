#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QString>

/// Tells whether a file is still the one that was read.
struct FileStamp {
    qint64 size = -1; ///< -1: there is no file
    QDateTime modified;
    static FileStamp Of(const QString &fileName);
    bool operator==(const FileStamp &other) const = default;
};

/// The lines of a text file of unknown origin: UTF-8 and UTF-16 with or without a byte-order mark, and
/// otherwise Windows-1252; lines end with CR, LF or both. If a file has lines in UTF-8 and in Windows-1252,
/// each is read as what it is. The whole file is read when it is opened, so that a file that changes in the
/// meantime cannot give half a line.
class TextLines final
{
public:
    enum class Encoding { Utf8, Utf16LE, Utf16BE, Windows1252 };
    struct Place {
        qsizetype offset = 0;
        int number = 0;
    };

    /// False if the file cannot be read; Problem() then says why, as a sentence.
    bool Open(const QString &fileName);
    void SetBytes(const QByteArray &bytes);
    const QString &Problem() const { return m_problem; }

    /// The next line without its end; false after the last one.
    bool Next(QString &line);
    /// The end of the last line returned: CR, LF, both, or "" at the end of the file.
    QString End() const { return QString::fromLatin1(m_end); }
    int Number() const { return m_place.number; } ///< of the last line returned, from 1
    /// Whether the last line returned is not in the encoding of most of the file.
    bool IsOdd() const { return m_isOdd; }
    /// The encoding of most of the file, as a word.
    QString EncodingName() const;
    Place Here() const { return m_place; }
    void GoTo(const Place &place) { m_place = place; }
    /// The stamp of the file as it was read.
    const FileStamp &Stamp() const { return m_stamp; }

private:
    QString Decoded(QByteArrayView line);

    QString m_problem;
    QByteArray m_bytes; ///< UTF-8 or Windows-1252; UTF-16 is turned into UTF-8
    Encoding m_encoding = Encoding::Utf8;
    bool m_isMixed = false; ///< not every line is in m_encoding
    bool m_isOdd = false;
    FileStamp m_stamp;
    Place m_place;
    QByteArray m_end;
};
