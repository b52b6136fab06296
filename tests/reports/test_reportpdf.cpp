#include "core/session/Session.h"
#include "reports/writer/HTMLscript.h"
#include "reports/writer/PackedPdf.h"
#include "reports/writer/ReportMarkup.h"
#include "reports/writer/ReportPages.h"
#include "support/TestTable.h"

#include <QBuffer>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <QtEndian>

namespace
{
/// Keeps the texts that can be seen on each page, without their spaces.
class Seen final : public QPaintEngine
{
public:
    Seen()
        : QPaintEngine(AllFeatures)
    {
    }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void drawPath(const QPainterPath &) override {}
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override {}
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
    void updateState(const QPaintEngineState &now) override
    {
        if (now.state() & DirtyTransform)
            m_transform = now.transform();
        if (now.state() & DirtyClipRegion)
            m_clip = m_transform.mapRect(QRectF(now.clipRegion().boundingRect()));
        if (now.state() & DirtyClipPath)
            m_clip = m_transform.mapRect(now.clipPath().boundingRect());
        if (now.state() & (DirtyClipRegion | DirtyClipPath) && now.clipOperation() == Qt::NoClip)
            m_clip = {};
    }
    void drawTextItem(const QPointF &at, const QTextItem &item) override
    {
        const QPointF onPaper = m_transform.map(at);
        if (!m_clip.isEmpty() && !m_clip.contains(onPaper + QPointF(1, 0)))
            return;
        pages.back() += item.text().remove(u' ').remove(QChar::LineSeparator);
        lowest = std::max(lowest, onPaper.y());
        rightmost = std::max(rightmost, onPaper.x());
    }

    QStringList pages{QString()};
    qreal lowest = 0;
    qreal rightmost = 0;

private:
    QTransform m_transform;
    QRectF m_clip;
};

class Paper final : public QPdfWriter
{
public:
    explicit Paper(QIODevice *nothing)
        : QPdfWriter(nothing)
    {
        setResolution(ReportPages::resolution);
    }
    QPaintEngine *paintEngine() const override { return &m_seen; }
    bool newPage() override
    {
        m_seen.pages.append(QString());
        return true;
    }
    const Seen &On() const { return m_seen; }

private:
    mutable Seen m_seen;
};

QString Words(int count, const QString &between)
{
    QStringList words;
    for (int i = 0; i < count; ++i)
        words.append(u"w" % QString::number(i));
    return words.join(between);
}

/// A table whose first row has `text` in its last cell.
void WriteTable(int rows, int columns, const QString &text)
{
    const auto write = [columns](int mode, int align, const QString &each, const QString &last) {
        HTML_RowStart();
        for (int column = 1; column <= columns; ++column)
            HTML_Cell(0, mode, align, 0, 2, 100, column == columns ? last : each);
        HTML_RowEnd();
    };
    HTML_Start(QStringLiteral("People"));
    HTML_Table();
    write(Html::bold, Html::centre, QStringLiteral("Row"), QStringLiteral("Notes"));
    for (int row = 0; row < rows; ++row)
        write(Html::plain, Html::left, u"row" % QString::number(row),
              row == 0 ? text : QStringLiteral("&nbsp;"));
    HTML_TableEnd();
    HTML_Text(Html::plain, 2, QStringLiteral("end"));
    QVERIFY(HTML_Finish());
}
} // namespace

class test_reportpdf final : public QObject
{
    Q_OBJECT

private slots:

    void init()
    {
        gDocDir = m_folder.path();
        gHeaderFile.clear();
        HTMLBorder = 1;
    }

    void nothing_is_lost_between_pages_data()
    {
        const TestTable<int, int, QString, QString, int> row{"rows", "columns", "text", "seen", "pages"};
        const QString lines = Words(300, QStringLiteral("<br>"));
        const QString seen = Words(300, {});
        row("no rows", 0, 2, "", "", 1);
        row("many rows", 200, 2, "x", "x", 4);
        row("many columns", 3, 90, "x", "x", 1);
        row("a cell taller than a page", 3, 2, lines, seen, 4);
        row("a cell taller than a page, with tags", 3, 2, "<i>" + lines + "</i>", seen, 4);
        row("a word longer than a page", 3, 2, QString(3000, u'm'), QString(3000, u'm'), 4);
        row("lines in the file", 3, 2, "one\r\ntwo &amp; 3<4", "onetwo&3<4", 1);
        row("an end tag in the file", 3, 2, "one\r\n</td>\r\ntwo", "onetwo", 1);
        row("other letters", 3, 2, QStringLiteral("\u0416\u6f22 &#128512;"),
            QStringLiteral("\u0416\u6f22\U0001f600"), 1);
    }
    void nothing_is_lost_between_pages()
    {
        QFETCH(int, rows);
        QFETCH(int, columns);
        QFETCH(QString, text);
        QFETCH(QString, seen);
        QFETCH(int, pages);
        WriteTable(rows, columns, text);
        ReportReader report(HTML_OutputPath());
        QBuffer nothing;
        Paper paper(&nothing);
        paper.setPageLayout(ReportPages::SheetFor(report.WidestRow()));
        ReportPages printed(paper, report.WidestRow(), gDocDir);
        QVERIFY(printed.Begin());
        for (ReportBlock block; report.Next(block);)
            printed.Add(block);
        QVERIFY(printed.End());

        QString expected;
        for (int row = 0; row < rows; ++row) {
            expected += QString(u"row" % QString::number(row)).repeated(columns - 1);
            expected += row == 0 ? seen : QString(QChar(0xa0));
        }
        QString all;
        const QString titles = QStringLiteral("Row").repeated(columns - 1) % u"Notes";
        const Seen &on = paper.On();
        QVERIFY2(on.pages.size() >= pages, qPrintable(QString::number(on.pages.size())));
        for (qsizetype page = 0; page < on.pages.size(); ++page) {
            const QString begin =
                u"Page" % QString::number(page + 1) % (page == 0 ? u"People" : u"") % titles;
            QVERIFY2(on.pages[page].startsWith(begin), qPrintable(on.pages[page].left(80)));
            all += on.pages[page].mid(begin.size());
        }
        QCOMPARE(all, QString(expected % u"end"));
        QVERIFY(on.lowest <= paper.height());
        QVERIFY(on.rightmost <= paper.width());
    }

    void markup_data()
    {
        const TestTable<QByteArray, QString, QString> row{"html", "text", "link"};
        row("spaces", " a \r\n b<BR> c ", QStringLiteral("a b\u2028c"), "");
        row("characters", "&nbsp;&amp;&#9731; A&B < 5 \xA3", QStringLiteral("\u00a0&\u2603 A&B < 5 \u00a3"),
            "");
        row("link", "to <a href=\"http://b.uk\">b.uk</a>", "to b.uk", "3 4 http://b.uk");
        row("tags", "<b>x</b>", "(rich)", "");
        row("entities", "caf&eacute;", "(rich)", "");
        row("link without end", "<a href=\"x\">y", "(rich)", "");
    }
    void markup()
    {
        QFETCH(QByteArray, html);
        QFETCH(QString, link);
        const auto markup = ReadReportMarkup(html);
        QTEST(markup ? markup->text : QStringLiteral("(rich)"), "text");
        QString links;
        for (const ReportMarkup::Link &each : markup.value_or(ReportMarkup{}).links)
            links = QString::number(each.from) % u' ' % QString::number(each.length) % u' ' % each.target;
        QCOMPARE(links, link);
    }

    void a_packed_pdf_finds_each_object()
    {
        QBuffer pdf;
        pdf.open(QIODevice::WriteOnly);
        QPdfWriter writer(&pdf);
        QPainter painter(&writer);
        for (int page = 0; page < 100; ++page) {
            painter.drawText(100, 100, QStringLiteral("page"));
            writer.newPage();
        }
        painter.end();
        const QByteArray packed = PackedPdf(pdf.data());
        QVERIFY(packed.size() < pdf.data().size() * 2 / 3);
        QCOMPARE(PackedPdf(packed), packed);
        QCOMPARE(PackedPdf(pdf.data().left(1000)), pdf.data().left(1000));

        const qsizetype start = packed.lastIndexOf("startxref\n") + 10;
        const QByteArray table = packed.mid(packed.mid(start, packed.indexOf('\n', start) - start).toInt());
        QVERIFY(table.contains("/Root 2 0 R"));
        const QByteArray entries =
            qUncompress(QByteArray(3, '\0') + '\1' + table.mid(table.indexOf("stream\n") + 7));
        int inFile = 0;
        for (qsizetype number = 0; number < entries.size() / 7; ++number) {
            const char *entry = entries.constData() + number * 7;
            const auto at = qFromBigEndian<quint32>(entry + 1);
            if (entry[0] == 1) {
                const QByteArray begin = QByteArray::number(number) + " 0 obj\n";
                QCOMPARE(packed.mid(at, begin.size()), begin);
                ++inFile;
            } else if (entry[0] == 2) {
                QCOMPARE(entries[static_cast<qsizetype>(at) * 7], '\1');
            }
        }
        QVERIFY(inFile > 100);
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(test_reportpdf)
#include "test_reportpdf.moc"
