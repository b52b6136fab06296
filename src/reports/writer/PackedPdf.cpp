#include "reports/writer/PackedPdf.h"

#include <QByteArrayView>
#include <QtEndian>

#include <algorithm>
#include <vector>

namespace
{
constexpr size_t objectsInPack = 200;
constexpr qsizetype entrySize = 20; ///< of the toolkit's table of objects

struct Object {
    size_t number = 0;
    QByteArrayView bytes; ///< from its number to its end mark
};

/// The document as the toolkit wrote it.
struct Document {
    QByteArrayView head;
    std::vector<Object> objects; ///< in the order of the file
    QByteArrayView trailer;      ///< what is in it, its size left out
    size_t size = 0;             ///< one more than the highest number of an object
};

QByteArrayView Between(QByteArrayView bytes, QByteArrayView begin, QByteArrayView end)
{
    const qsizetype from = bytes.indexOf(begin);
    const qsizetype to = from < 0 ? -1 : bytes.indexOf(end, from + begin.size());
    return to < 0 ? QByteArrayView() : bytes.sliced(from + begin.size(), to - from - begin.size());
}

bool ReadTable(QByteArrayView pdf, qsizetype table, Document &document)
{
    const QByteArrayView count = Between(pdf.sliced(table), "xref\n0 ", "\n");
    document.size = count.toULong();
    const qsizetype first = count.end() - pdf.begin() + 1;
    if (count.isEmpty() || first + static_cast<qsizetype>(document.size) * entrySize > pdf.size())
        return false;
    std::vector<std::pair<qsizetype, size_t>> places;
    for (size_t number = 1; number < document.size; ++number) {
        const QByteArrayView entry =
            pdf.sliced(first + static_cast<qsizetype>(number) * entrySize, entrySize);
        if (entry[17] == 'n')
            places.emplace_back(entry.first(10).toLongLong(), number);
    }
    places.emplace_back(table, 0);
    std::sort(places.begin(), places.end());
    document.head = pdf.first(places.front().first);
    for (size_t i = 0; i + 1 < places.size(); ++i) {
        const auto [from, number] = places[i];
        const QByteArrayView bytes = pdf.sliced(from, places[i + 1].first - from);
        const QByteArray begin = QByteArray::number(number) + " 0 obj\n";
        if (!bytes.startsWith(begin) || !bytes.endsWith("endobj\n"))
            return false;
        document.objects.push_back({number, bytes});
    }
    return places.back().first == table;
}

bool Read(QByteArrayView pdf, Document &document)
{
    constexpr QByteArrayView startMark = "startxref\n";
    const qsizetype start = pdf.lastIndexOf(startMark);
    if (!pdf.startsWith("%PDF-1.4\n") || start < 0)
        return false;
    const qsizetype table = Between(pdf.sliced(start), startMark, "\n").toLongLong();
    if (table <= 0 || table >= start || !ReadTable(pdf, table, document))
        return false;
    const QByteArrayView trailer = Between(pdf.sliced(table), "trailer\n<<\n", ">>\nstartxref");
    document.trailer = trailer.sliced(std::max<qsizetype>(0, trailer.indexOf('\n')));
    return trailer.startsWith("/Size ");
}

class Writer final
{
public:
    explicit Writer(const Document &document)
        : m_document(document)
        , m_places(document.size)
    {
        m_out = "%PDF-1.5\n" + document.head.sliced(document.head.indexOf('\n') + 1).toByteArray();
    }

    QByteArray Write()
    {
        for (const Object &object : m_document.objects) {
            if (object.bytes.endsWith("endstream\nendobj\n")) {
                m_places[object.number] = {1, m_out.size(), 0};
                m_out += object.bytes;
            } else {
                Pack(object);
            }
        }
        EndPack();
        WriteTable();
        return m_out;
    }

private:
    /// Where an object is: at a place of the file (kind 1), or in a pack (kind 2), which is an object itself.
    struct Place {
        char kind = 0;
        qsizetype at = 0;
        size_t index = 0;
    };

    void Pack(const Object &object)
    {
        const QByteArrayView text = object.bytes.sliced(object.bytes.indexOf('\n') + 1);
        m_index += QByteArray::number(object.number) + ' ' + QByteArray::number(m_pack.size()) + ' ';
        m_pack += text.chopped(7); // its end mark
        m_packed.push_back(object.number);
        if (m_packed.size() == objectsInPack)
            EndPack();
    }

    void EndPack()
    {
        if (m_packed.empty())
            return;
        const size_t number = m_places.size();
        for (size_t i = 0; i < m_packed.size(); ++i)
            m_places[m_packed[i]] = {2, static_cast<qsizetype>(number), i};
        const QByteArray keys = "/Type /ObjStm /N " + QByteArray::number(m_packed.size()) + " /First " +
                                QByteArray::number(m_index.size());
        m_places.push_back({1, m_out.size(), 0});
        WriteStream(number, keys, m_index + m_pack);
        m_index.clear();
        m_pack.clear();
        m_packed.clear();
    }

    void WriteStream(size_t number, const QByteArray &keys, const QByteArray &bytes)
    {
        const QByteArray small = qCompress(bytes).mid(4); // without the length that the toolkit puts first
        m_out += QByteArray::number(number) + " 0 obj\n<<" + keys + " /Filter /FlateDecode /Length " +
                 QByteArray::number(small.size()) + ">>\nstream\n" + small + "\nendstream\nendobj\n";
    }

    void WriteTable()
    {
        const size_t number = m_places.size();
        const qsizetype table = m_out.size();
        m_places.push_back({1, table, 0});
        QByteArray entries;
        for (const Place &place : m_places) {
            char entry[7] = {place.kind};
            qToBigEndian(static_cast<quint32>(place.at), entry + 1);
            qToBigEndian(static_cast<quint16>(place.index), entry + 5);
            entries.append(entry, sizeof entry);
        }
        WriteStream(number,
                    "/Type /XRef /W [1 4 2] /Size " + QByteArray::number(m_places.size()) +
                        m_document.trailer.toByteArray(),
                    entries);
        m_out += "startxref\n" + QByteArray::number(table) + "\n%%EOF\n";
    }

    const Document &m_document;
    std::vector<Place> m_places;
    QByteArray m_out;
    QByteArray m_index;
    QByteArray m_pack;
    std::vector<size_t> m_packed;
};
} // namespace

QByteArray PackedPdf(const QByteArray &pdf)
{
    Document document;
    return Read(pdf, document) ? Writer(document).Write() : pdf;
}
