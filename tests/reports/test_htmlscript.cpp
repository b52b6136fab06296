#include "core/session/Session.h"
#include "platform/sql/Windows1252.h"
#include "reports/writer/HTMLscript.h"
#include "support/TestTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

namespace
{
Recordset OneRow(const QString &column, const QString &value)
{
    const Columns columns = {{column, ColumnType::VarWChar, 255},
                             {QStringLiteral("Nothing"), ColumnType::VarWChar, 255}};
    Recordset::Builder builder(std::make_shared<const Columns>(columns));
    builder.AddText(value);
    builder.AddNull();
    return builder.Finish();
}
} // namespace

class test_htmlscript final : public QObject
{
    Q_OBJECT

private slots:

    void init()
    {
        gDocDir = m_folder.path();
        gHeaderFile = gDocDir % u"/header.htm";
        HTMLBorder = 0;
        QFile::remove(gHeaderFile);
    }

    void a_report_from_head_to_end()
    {
        QFile header(gHeaderFile);
        QVERIFY(header.open(QIODevice::WriteOnly));
        header.write("<img src=logo.png>\n<p>Caf\xE9");
        header.close();
        HTML_Start(QStringLiteral("Money & <more>"));
        QVERIFY(HTML_Finish());
        const QByteArray text = Output();
        QVERIFY(text.startsWith(
            "<html>\n<head>\n<meta http-equiv=Content-Type content=\"Text / html\"; Charset = "
            "windows - 1252; >\n<title>Money & <more></title>\n<style>\n<!--\n"));
        QVERIFY(
            text.endsWith("<body lang=EN-GB style='tab-interval:36.0pt'>\n<img src=logo.png>\n<p>Caf\xE9\n"
                          "<p class=MsoNormal><b><span style='font-size:12.0pt;mso-bidi-font-size:12.0pt'>"
                          "Money & <more></span></b></p>\n</BODY>\n</HTML>\n"));
    }

    void texts_and_cells()
    {
        const QString x = QStringLiteral("x<b>");
        QCOMPARE(Written([x] { HTML_Text(0, 4, x); }), "x<b>");
        QCOMPARE(Written([x] { HTML_Text(1, 1, x); }),
                 "<p class=MsoNormal><b><span "
                 "style='font-size:7.0pt;mso-bidi-font-size:12.0pt'>x<b></span></b></p>");
        // A size that is none is the second one.
        QCOMPARE(
            Written([x] { HTML_Text(-1, 7, x); }),
            "<p class=MsoNormal><span style='font-size:8.0pt;mso-bidi-font-size:12.0pt'>x<b></span></p>");
        // The span runs into the style.
        QCOMPARE(Written([x] { HTML_Cell(3, 0, 1, 2, 0, 0, x); }),
                 "<td align = center  valign = bottom  colspan=3style='border:none;border-left:none;"
                 "mso-border-left-alt:none;padding:2pt 2pt 2pt 2pt'>\nx<b>\n</td>");
        HTMLBorder = 1;
        QCOMPARE(Written([x] { HTML_Cell(1, 0, 4, 4, 0, 1250, x); }),
                 "<td width = 1250 align = char  valign = top style='border:solid windowtext .5pt;"
                 "border-left:none;mso-border-left-alt:solid windowtext .5pt;padding:2pt 2pt 2pt "
                 "2pt'>\nx<b>\n</td>");
        HTMLBorder = 2;
        QVERIFY(Written([x] {
                    HTML_Cell(0, 0, 3, 3, 0, 0, x);
                }).contains("justify  valign = baseline style='border:none;"));
    }

    void fields_of_addresses_become_links()
    {
        const auto text = [](const QString &column, const QString &value) {
            return HTML_FieldText(OneRow(column, value).First(), column);
        };
        QCOMPARE(text("Cust_Email", "a@b.c"), QString("<a href=\"mailto:a@b.c\">a@b.c</a>"));
        QCOMPARE(text("url", "http://b.c"), QString("<a href=\"http://http://b.c\">http://b.c</a>"));
        QCOMPARE(text("MyWebPage", "b.c"), QString("<a href=\"http://b.c\">b.c</a>"));
        QCOMPARE(text("Title", "a<b>"), QString("a<b>"));
        QCOMPARE(HTML_FieldText(OneRow("Cust_Email", "a@b.c").First(), u"Nothing"), QString());
    }

    void letters_outside_the_code_page_stay()
    {
        QCOMPARE(ToWindows1252("£ é ÿ"), "\xA3 \xE9 \xFF");
        QCOMPARE(ToWindows1252("€“”–…"), "\x80\x93\x94\x96\x85");
        QCOMPARE(ToWindows1252("Łódź ☃"), "&#321;\xF3"
                                          "d&#378; &#9731;");
        QCOMPARE(ToWindows1252("🎉"), "&#127881;");
        QCOMPARE(ToWindows1252(QString(QChar(0xD83C))), "&#65533;");
        QCOMPARE(ToWindows1252(QString(QChar(0x85))), "&#133;");
    }

    void letterheads_data()
    {
        const TestTable<QByteArray, QByteArray, QString> row{"file", "inReport", "fault"};
        const QByteArray most(8 << 20, 'x');
        row("picture", {"\x89PNG\0\0\x01", 7}, {}, "is not a text file.");
        row("huge", most + 'x', {}, "is larger than 8 megabytes.");
        row("just not huge", most, most + '\n', {});
        row("another code page", "\x81\xFF\n", "\x81\xFF\n", {});
        row("marked UTF-8", "\xEF\xBB\xBF\xC3\xA9", "\xE9\n", {});
        row("UTF-16", {"\xFF\xFE\x0D\x01", 4}, "&#269;\n", {});
    }
    void letterheads()
    {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, inReport);
        QFETCH(QString, fault);
        QFile header(gHeaderFile);
        QVERIFY(header.open(QIODevice::WriteOnly));
        header.write(file);
        header.close();
        HTML_Start({});
        QVERIFY(HTML_Finish());
        const QByteArray all = Output();
        const QByteArray body = "36.0pt'>\n";
        const qsizetype start = all.indexOf(body) + body.size();
        QVERIFY(all.mid(start, all.indexOf("<p class=MsoNormal>") - start) == inReport);
        const QString told = HTML_HeaderFault();
        QVERIFY2(fault.isEmpty() ? told.isEmpty() : told.endsWith(fault), qPrintable(told));
    }

    void a_letterhead_that_is_no_file()
    {
        QVERIFY(QDir().mkdir(gHeaderFile));
        HTML_Start({});
        QVERIFY(HTML_Finish());
        QVERIFY(
            HTML_HeaderFault().endsWith(QString(QDir::toNativeSeparators(gHeaderFile) % u" is a folder.")));
        QVERIFY(QDir().rmdir(gHeaderFile));
        QVERIFY(mkfifo(QFile::encodeName(gHeaderFile).constData(), 0600) == 0); // not waited for
        HTML_Start({});
        QVERIFY(HTML_Finish());
        QVERIFY(HTML_HeaderFault().endsWith(u" is not a file."));
    }

private:
    QByteArray Output() const
    {
        QFile file(HTML_OutputPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// What `write` wrote after the title.

    QByteArray Written(const std::function<void()> &write)
    {
        HTML_Start({});
        write();
        if (!HTML_Finish())
            return "not written";
        const QByteArray all = Output();
        const QByteArray title = "<span style='font-size:12.0pt;mso-bidi-font-size:12.0pt'></span></b></p>\n";
        const qsizetype start = all.indexOf(title) + title.size();
        return all.mid(start, all.indexOf("\n</BODY>") - start);
    }
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(test_htmlscript)
#include "test_htmlscript.moc"
