#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QString>

/// What tells whether a file is still the one that was read.
struct FileStamp {
    qint64 size = -1; ///< -1: there is no file
    QDateTime modified;
    static FileStamp Of(const QString &fileName);
    bool operator==(const FileStamp &other) const = default;
};

/// The lines of a text file of unknown origin: UTF-8 and UTF-16 with or without a byte-order mark, and
/// Windows-1252 for what is neither; lines end with CR, LF or both. Where lines of UTF-8 and of Windows-1252
/// stand in one file, each is read as what it is. The file is read at once when it opens, so that a file
/// which changes meanwhile cannot give half a line.
class TextLines final
{
public:
    enum class Encoding { Utf8, Utf16LE, Utf16BE, Windows1252 };
    struct Place {
        qsizetype offset = 0;
        int number = 0;
    };

    /// False if the file cannot be read; Problem() then tells why, as a sentence.
    bool Open(const QString &fileName);
    void SetBytes(const QByteArray &bytes);
    const QString &Problem() const { return m_problem; }

    /// The next line without its end; false behind the last one.
    bool Next(QString &line);
    /// The end of the last line given: CR, LF, both, or "" at the end of the file.
    QString End() const { return QString::fromLatin1(m_end); }
    int Number() const { return m_place.number; } ///< of the last line given, from 1
    /// The last line given is not in the encoding of most of the file.
    bool IsOdd() const { return m_isOdd; }
    /// What the lines of the file that are not odd are written in, as a word.
    QString EncodingName() const;
    Place Here() const { return m_place; }
    void GoTo(const Place &place) { m_place = place; }
    /// Of the file as it was read.
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
