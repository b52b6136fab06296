#include "core/Session.h"
#include "reports/HTMLscript.h"
#include "reports/Windows1252.h"
#include "support/ScriptedDialogs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class test_htmlscript final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void a_report_from_head_to_end();
    void lines_data();
    void lines();
    void field_texts_data();
    void field_texts();
    void windows1252_data();
    void windows1252();
    void a_report_that_cannot_be_written_leaves_the_last_one();

private:
    QByteArray Output() const;
    /// What `write` wrote behind the title.
    QByteArray Written(const std::function<void()> &write);
    QTemporaryDir m_folder;
};

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

Q_DECLARE_METATYPE(std::function<void()>)

void test_htmlscript::init()
{
    gDocDir = m_folder.path();
    gHeaderFile = gDocDir % u"/header.htm";
    HTMLBorder = 0;
    QFile::remove(gHeaderFile);
}

QByteArray test_htmlscript::Output() const
{
    QFile file(HTML_OutputPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray test_htmlscript::Written(const std::function<void()> &write)
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

void test_htmlscript::a_report_from_head_to_end()
{
    QFile header(gHeaderFile);
    QVERIFY(header.open(QIODevice::WriteOnly));
    header.write("<img src=logo.png>\n<p>Caf\xE9");
    header.close();
    HTML_Start(QStringLiteral("Money & <more>"));
    QVERIFY(HTML_Finish());
    const QByteArray text = Output();
    QVERIFY(
        text.startsWith("<html>\n<head>\n<meta http-equiv=Content-Type content=\"Text / html\"; Charset = "
                        "windows - 1252; >\n<title>Money & <more></title>\n<style>\n<!--\n"));
    QVERIFY(text.endsWith("<body lang=EN-GB style='tab-interval:36.0pt'>\n<img src=logo.png>\n<p>Caf\xE9\n"
                          "<p class=MsoNormal><b><span style='font-size:12.0pt;mso-bidi-font-size:12.0pt'>"
                          "Money & <more></span></b></p>\n</BODY>\n</HTML>\n"));
}

void test_htmlscript::lines_data()
{
    QTest::addColumn<std::function<void()>>("write");
    QTest::addColumn<QByteArray>("lines");
    const auto row = [](const char *name, const std::function<void()> &write, const char *lines) {
        QTest::newRow(name) << write << QByteArray(lines);
    };
    const QString x = QStringLiteral("x<b>");
    row(
        "bare text", [x] { HTML_Text(0, 4, x); }, "x<b>");
    row(
        "bold", [x] { HTML_Text(1, 1, x); },
        "<p class=MsoNormal><b><span style='font-size:7.0pt;mso-bidi-font-size:12.0pt'>x<b></span></b></p>");
    row(
        "a size that is none", [x] { HTML_Text(-1, 7, x); },
        "<p class=MsoNormal><span style='font-size:8.0pt;mso-bidi-font-size:12.0pt'>x<b></span></p>");
    row(
        "cell with a span, which runs into the style", [x] { HTML_Cell(3, 0, 1, 2, 0, 0, x); },
        "<td align = center  valign = bottom  colspan=3style='border:none;border-left:none;"
        "mso-border-left-alt:none;padding:2pt 2pt 2pt 2pt'>\nx<b>\n</td>");
    row(
        "cell with a width and a border",
        [x] {
            HTMLBorder = 1;
            HTML_Cell(1, 0, 4, 4, 0, 1250, x);
        },
        "<td width = 1250 align = char  valign = top style='border:solid windowtext .5pt;border-left:none;"
        "mso-border-left-alt:solid windowtext .5pt;padding:2pt 2pt 2pt 2pt'>\nx<b>\n</td>");
    row(
        "a border of 2 is none",
        [x] {
            HTMLBorder = 2;
            HTML_Cell(0, 0, 3, 3, 0, 0, x);
        },
        "<td align = justify  valign = baseline style='border:none;border-left:none;mso-border-left-alt:none;"
        "padding:2pt 2pt 2pt 2pt'>\nx<b>\n</td>");
}

void test_htmlscript::lines()
{
    QFETCH(std::function<void()>, write);
    QTEST(Written(write), "lines");
}

void test_htmlscript::field_texts_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("mail") << "Cust_Email"
                          << "a@b.c"
                          << "<a href=\"mailto:a@b.c\">a@b.c</a>";
    QTest::newRow("address with a scheme of its own") << "url"
                                                      << "http://b.c"
                                                      << "<a href=\"http://http://b.c\">http://b.c</a>";
    QTest::newRow("plain, not escaped") << "Title"
                                        << "a<b>"
                                        << "a<b>";
}

void test_htmlscript::field_texts()
{
    QFETCH(QString, column);
    QFETCH(QString, value);
    const Recordset rows = OneRow(column, value);
    QTEST(HTML_FieldText(rows.First(), column), "text");
    QCOMPARE(HTML_FieldText(rows.First(), u"Nothing"), QString());
}

void test_htmlscript::windows1252_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("pound and accents") << QStringLiteral("£ é ÿ") << QByteArray("\xA3 \xE9 \xFF");
    QTest::newRow("euro, quotes, dashes") << QStringLiteral("€“”–…") << QByteArray("\x80\x93\x94\x96\x85");
    QTest::newRow("outside") << QStringLiteral("Łódź ☃")
                             << QByteArray("&#321;\xF3"
                                           "d&#378; &#9731;");
    QTest::newRow("emoji") << QStringLiteral("🎉") << QByteArray("&#127881;");
    QTest::newRow("half an emoji") << QString(QChar(0xD83C)) << QByteArray("&#65533;");
    QTest::newRow("control of the upper range") << QString(QChar(0x85)) << QByteArray("&#133;");
}

void test_htmlscript::windows1252()
{
    QFETCH(QString, text);
    QTEST(ToWindows1252(text), "bytes");
}

void test_htmlscript::a_report_that_cannot_be_written_leaves_the_last_one()
{
    HTML_Start(QStringLiteral("Good"));
    QVERIFY(HTML_Finish());
    const QByteArray good = Output();
    HTML_Start(QStringLiteral("Stopped"));
    HTML_Discard();
    QCOMPARE(Output(), good);

    gDocDir = m_folder.filePath(QStringLiteral("gone"));
    HTML_Start(QStringLiteral("Nowhere"));
    HTML_BlankRow();
    QVERIFY(!HTML_Finish());
    QVERIFY(!QFile::exists(HTML_OutputPath()));
}

QTEST_GUILESS_MAIN(test_htmlscript)
#include "test_htmlscript.moc"
