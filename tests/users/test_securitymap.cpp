#include "users/SecurityMap.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <initializer_list>

namespace
{
/// Entries as one text: mark, position and name, one after the other.
QString Outline(const std::vector<SecurityMapEntry> &entries)
{
    QStringList lines;
    for (const SecurityMapEntry &entry : entries)
        lines.append(entry.key % u'=' % entry.text);
    return lines.join(u'|');
}

QByteArray Utf16(const QString &text)
{
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    return {reinterpret_cast<const char *>(marked.utf16()), marked.size() * 2};
}
} // namespace

class TestSecurityMap final : public QObject
{
    Q_OBJECT

private slots:
    void ShippedMapNamesEveryTestedRight();
    void ShippedMapIsFreeOfSlips();
    void Reading_data();
    void Reading();
    void UnreadableFile();
    void HugeFiles();

private:
    QString Write(const QByteArray &bytes);
    QTemporaryDir m_dir;
};

QString TestSecurityMap::Write(const QByteArray &bytes)
{
    const QString name = m_dir.filePath(QStringLiteral("secmap.dat"));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(name));
    return name;
}

void TestSecurityMap::ShippedMapNamesEveryTestedRight()
{
    const std::vector<SecurityMapEntry> map =
        ReadSecurityMap(QStringLiteral(SHIPPED_MAP), QStringLiteral("english"));
    const auto levels = {15, 23, 25, 26, 27, 28, 29, 30, 31, 33, 34, 35, 48, 49,
                         50, 52, 58, 59, 60, 61, 62, 63, 66, 67, 69, 85, 120};
    const auto yesNos = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 16, 17, 20,  21,
                         22, 24, 32, 36, 37, 45, 46, 47, 53, 54, 64, 65, 68, 70, 90, 95, 96, 104, 105};

    QList<int> wanted(levels);
    wanted.append(yesNos);
    std::sort(wanted.begin(), wanted.end());
    QList<int> named;
    for (const SecurityMapEntry &entry : map) {
        if (entry.kind == RightKind::Level)
            QVERIFY2(std::find(levels.begin(), levels.end(), entry.position) != levels.end(),
                     qPrintable(entry.key));
        if (entry.kind != RightKind::Heading)
            named.append(entry.position);
    }
    std::sort(named.begin(), named.end());
    QCOMPARE(named, wanted);
}

void TestSecurityMap::ShippedMapIsFreeOfSlips()
{
    const std::vector<SecurityMapEntry> map =
        ReadSecurityMap(QStringLiteral(SHIPPED_MAP), QStringLiteral("english"));
    QVERIFY(!map.empty());
    QCOMPARE(map.front().kind, RightKind::Heading);
    QSet<QString> texts;
    for (size_t i = 0; i < map.size(); ++i) {
        const SecurityMapEntry &entry = map[i];
        QVERIFY2(entry.kind != RightKind::Remark, qPrintable(entry.key));
        const bool lastOrNewGroup = i + 1 == map.size() || map[i + 1].kind == RightKind::Heading;
        QVERIFY2(entry.kind != RightKind::Heading || !lastOrNewGroup, "a heading without rights");
        QVERIFY2(!texts.contains(entry.text) || entry.kind == RightKind::Heading, qPrintable(entry.text));
        QVERIFY2(!entry.text.contains(u"  ["), "the level is written there");
        texts.insert(entry.text);
    }
}

void TestSecurityMap::Reading_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("outline");

    const QByteArray plain("[ENGLISH]\n[!g]=Group\n[?23]=People\n[#1]=Menu\n[END]\n");
    const QString all = QStringLiteral("!g=Group|?23=People|#1=Menu");
    QTest::newRow("plain") << plain << all;
    QTest::newRow("carriage returns too") << QByteArray(plain).replace("\n", "\r\n") << all;
    QTest::newRow("carriage returns alone") << QByteArray(plain).replace("\n", "\r") << all;
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF" + plain << all;
    QTest::newRow("two-byte encoding") << Utf16(QString::fromLatin1(plain)) << all;
    QTest::newRow("UTF-8 text") << QByteArray("[english]\n[?1]=Caf\xC3\xA9\n") << u"?1=Caf\u00E9"_qs;
    QTest::newRow("one-byte text") << QByteArray("[english]\n[?1]=Caf\xE9\n") << u"?1=Caf\u00E9"_qs;
    QTest::newRow("another language first") << "[FRENCH]\n[!g]=Groupe\n[END]\n" + plain + "[!x]=Behind\n"
                                            << all;
    QTest::newRow("no such language") << QByteArray("[FRENCH]\n[?1]=Un\n[END]\n") << QString();
    QTest::newRow("no end") << QByteArray("[ENGLISH]\n[?1]=One\n[?2]=Tw") << u"?1=One|?2=Tw"_qs;
    QTest::newRow("mixed case, blanks")
        << QByteArray("  [English] \n [ ?1 ]=  One  \n [end] \n[?2]=Two") << u"?1=One"_qs;
    QTest::newRow("broken lines are passed over")
        << QByteArray("[ENGLISH]\n[?1=One\n?2]=Two\n[?3]=\n[]=Four\n[?5]\n\n[?6]=Six\n") << u"?6=Six"_qs;
    QTest::newRow("positions outside the rights")
        << QByteArray("[ENGLISH]\n[?255]=Last\n[?256]=Over\n[#999999999999]=Far\n[?-1]=Under\n[?x]=None\n")
        << u"?255=Last"_qs;
    QTest::newRow("the first of one key stays")
        << QByteArray("[ENGLISH]\n[?1]=One\n[?1]=Again\n[#1]=Kind\n") << u"?1=One|#1=Kind"_qs;
    QTest::newRow("a remark has no right")
        << QByteArray("[ENGLISH]\n[note]=Ask first\n") << u"note=Ask first"_qs;
    QTest::newRow("brackets in a text") << QByteArray("[ENGLISH]\n[?1]=A [b]= c\n") << u"?1=A [b]= c"_qs;
    QTest::newRow("empty") << QByteArray() << QString();
    QByteArray binary;
    for (int i = 0; i < 100'000; ++i)
        binary.append(static_cast<char>((i * 7919) >> 3));
    QTest::newRow("binary") << binary << QString();
    QTest::newRow("binary inside the section")
        << "[ENGLISH]\n" + binary.left(5000).replace("]=", "  ") + "\n[?7]=Kept\n"
        << u"?7=Kept"_qs;
}

void TestSecurityMap::Reading()
{
    QFETCH(const QByteArray, bytes);
    QTEST(Outline(ReadSecurityMap(Write(bytes), QStringLiteral("english"))), "outline");
}

void TestSecurityMap::UnreadableFile()
{
    QVERIFY(ReadSecurityMap(m_dir.filePath(QStringLiteral("none.dat")), QStringLiteral("english")).empty());
    QVERIFY(ReadSecurityMap(m_dir.path(), QStringLiteral("english")).empty());
}

void TestSecurityMap::HugeFiles()
{
    QByteArray million("[ENGLISH]\n");
    for (int i = 0; i < 1'000'000; ++i)
        million += "[!" + QByteArray::number(i) + "]=Group\n";
    const auto entries = ReadSecurityMap(Write(million), QStringLiteral("english"));
    QVERIFY(entries.size() < 10'000);

    const QByteArray longLine = "[ENGLISH]\n[?1]=" + QByteArray(20'000'000, 'x') + "\n[?2]=Two\n";
    QCOMPARE(Outline(ReadSecurityMap(Write(longLine), QStringLiteral("english"))), u"?2=Two"_qs);
}

QTEST_GUILESS_MAIN(TestSecurityMap)
#include "test_securitymap.moc"
