#include "controls/TreeModel.h"
#include "support/Files.h"
#include "support/TestTable.h"
#include "users/SecurityMap.h"
#include "users/UserRights.h"

#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace
{
const QString english = u"english"_qs;

/// Entries as one text: key and name, one after the other.
QString Outline(const std::vector<SecurityMapEntry> &entries)
{
    QStringList lines;
    for (const SecurityMapEntry &entry : entries)
        lines.append(entry.key % u'=' % entry.text);
    return lines.join(u'|');
}
} // namespace

class TestUserRights final : public QObject
{
    Q_OBJECT

    std::vector<SecurityMapEntry> Read(const QByteArray &bytes) const
    {
        const QString name = m_dir.filePath(u"secmap.dat"_qs);
        WriteFile(name, bytes);
        return ReadSecurityMap(name, english);
    }
    QTemporaryDir m_dir;

private slots:
    void ShippedMapNamesEveryTestedRight()
    {
        QList<int> levels{15, 23, 25, 26, 27, 28, 29, 30, 31, 33, 34, 35, 48, 49,
                          50, 52, 58, 59, 60, 61, 62, 63, 66, 67, 69, 85, 120};
        QList<int> yesNos{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 16, 17, 20,  21,
                          22, 24, 32, 36, 37, 45, 46, 47, 53, 54, 64, 65, 68, 70, 90, 95, 96, 104, 105};
        const std::vector<SecurityMapEntry> map = ReadSecurityMap(QStringLiteral(SHIPPED_MAP), english);
        QVERIFY(!map.empty() && map.front().kind == RightKind::Heading);
        QSet<QString> texts;
        for (size_t i = 0; i < map.size(); ++i) {
            const SecurityMapEntry &entry = map[i];
            QVERIFY2(!entry.text.contains(u"  ["), "the level is written there");
            if (entry.kind == RightKind::Heading) {
                const bool hasRights = i + 1 < map.size() && map[i + 1].kind != RightKind::Heading;
                QVERIFY2(hasRights, qPrintable(entry.key));
                continue;
            }
            QVERIFY2(!texts.contains(entry.text), qPrintable(entry.text));
            texts.insert(entry.text);
            QList<int> &wanted = entry.kind == RightKind::Level ? levels : yesNos;
            QVERIFY2(wanted.removeOne(entry.position), qPrintable(entry.key));
        }
        QVERIFY(levels.isEmpty() && yesNos.isEmpty());
    }

    void Reading_data()
    {
        const TestTable<QByteArray, QString> row{"bytes", "outline"};
        const QByteArray plain("[ENGLISH]\n[!g]=Group\n[?23]=People\n[#1]=Menu\n[END]\n");
        const QString all = u"!g=Group|?23=People|#1=Menu"_qs;
        const QString marked = QChar(QChar::ByteOrderMark) + QString::fromLatin1(plain);
        row("carriage returns too", QByteArray(plain).replace("\n", "\r\n"), all);
        row("carriage returns alone", QByteArray(plain).replace("\n", "\r"), all);
        row("byte-order mark", "\xEF\xBB\xBF" + plain, all);
        row("two-byte encoding", {reinterpret_cast<const char *>(marked.utf16()), marked.size() * 2}, all);
        row("UTF-8 text", "[english]\n[?1]=Caf\xC3\xA9\n", "?1=Caf\u00E9");
        row("one-byte text", "[english]\n[?1]=Caf\xE9\n", "?1=Caf\u00E9");
        row("another language first", "[FRENCH]\n[!g]=Groupe\n[END]\n" + plain + "[!x]=Behind\n", all);
        row("no such language", "[FRENCH]\n[?1]=Un\n[END]\n", {});
        row("no end", "[ENGLISH]\n[?1]=One\n[?2]=Tw", "?1=One|?2=Tw");
        row("blanks", "  [English] \n [ ?1 ]=  One  \n [end] \n[?2]=Two", "?1=One");
        row("broken lines", "[ENGLISH]\n[?1=One\n?2]=Two\n[?3]=\n[]=Four\n[?5]\n\n[?6]=Six\n", "?6=Six");
        row("positions outside", "[ENGLISH]\n[?255]=Last\n[?256]=Over\n[#999999999999]=Far\n[?-1]=Under\n",
            "?255=Last");
        row("the first of one key stays", "[ENGLISH]\n[?1]=One\n[?1]=Again\n[#1]=Kind\n", "?1=One|#1=Kind");
        row("a remark has no right", "[ENGLISH]\n[note]=Ask first\n", "note=Ask first");
        row("brackets in a text", "[ENGLISH]\n[?1]=A [b]= c\n", "?1=A [b]= c");
        QByteArray binary;
        for (int i = 0; i < 100'000; ++i)
            binary.append(static_cast<char>((i * 7919) >> 3));
        row("binary", binary, {});
        row("binary inside", "[ENGLISH]\n" + binary.left(5000).replace("]=", "  ") + "\n[?7]=Kept\n",
            "?7=Kept");
        row("a line of 20 MB", "[ENGLISH]\n[?1]=" + QByteArray(20'000'000, 'x') + "\n[?2]=Two\n", "?2=Two");
    }
    void Reading()
    {
        QFETCH(const QByteArray, bytes);
        QTEST(Outline(Read(bytes)), "outline");
    }

    void UnreadableAndHugeFiles()
    {
        QVERIFY(ReadSecurityMap(m_dir.filePath(u"none.dat"_qs), english).empty());
        QVERIFY(ReadSecurityMap(m_dir.path(), english).empty());
        QByteArray million("[ENGLISH]\n");
        for (int i = 0; i < 1'000'000; ++i)
            million += "[!" + QByteArray::number(i) + "]=Group\n";
        QVERIFY(Read(million).size() < 10'000);
    }

    void Loading()
    {
        const QList<std::pair<QString, QString>> texts{
            {"", QString(256, u'9')},
            {"0123", "0123" + QString(252, u'9')}, // the rest stays
            {QString(300, u'2'), QString(256, u'2')},
            {"3x' 9\u0663", "300090" + QString(250, u'9')},
        };
        for (const auto &[loaded, text] : texts) {
            UserRights rights;
            rights.Load(loaded);
            QCOMPARE(rights.Text(), text);
        }
    }

    void TreeShowsLevels()
    {
        const std::tuple<QString, char16_t, QString> levels[] = {
            {"?5", u'0', "Right  []"},
            {"?5", u'1', "Right  [View/Select Only]"},
            {"?5", u'2', "Right  [Add Only]"},
            {"?5", u'3', "Right  [Add and Edit Only]"},
            {"?5", u'9', "Right  [Full Access]"},
            {"?5", u'7', "Right  []"},
            {"#5", u'9', "Right  [Yes]"},
            {"#5", u'0', "Right  [No]"},
            {"#5", u'3', "Right  [No]"},
            {"!5", u'1', "Right"},
        };
        for (const auto &[key, digit, text] : levels) {
            TreeModel tree;
            tree.Add({}, {.key = key, .text = "Right"});
            UserRights rights;
            RefreshRightTexts(tree, rights);
            rights.Set(5, digit);
            RefreshRightTexts(tree, rights);
            QCOMPARE(tree.Find(key)->text, text);
        }
    }

    void TreeOfTheMap()
    {
        const std::vector<SecurityMapEntry> map{
            {RightKind::YesNo, "#9", "Before any group", 9},
            {RightKind::Heading, "!a", "A"},
            {RightKind::Level, "?1", "One", 1},
            {RightKind::Heading, "!b", "B"},
            {RightKind::YesNo, "#2", "Two", 2},
        };
        TreeModel tree;
        for (int times = 0; times < 2; ++times)
            FillRightsTree(tree, map, UserRights());
        QStringList shown;
        for (const TreeNode *node : tree.Nodes())
            shown.append(node->parent->key % u'/' % node->text);
        QCOMPARE(shown, QStringList({"/Before any group  [Yes]", "/A", "!a/One  [Full Access]", "/B",
                                     "!b/Two  [Yes]"}));
        QCOMPARE(tree.Selected(), tree.Find("#9"));
        QVERIFY(tree.Find("!b")->expanded);
    }
};

QTEST_GUILESS_MAIN(TestUserRights)
#include "test_userrights.moc"
