#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/Security.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"
#include "users/UsersModule.h"
#include "users/UsersODBC.h"

#include <QTest>

#include <memory>

namespace
{
const QString nines = RightsBlank();
} // namespace

class TestUsers final : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void FromOpenAccessToUsersAndBack()
    {
        ScriptedDialogs dialogs;
        QVERIFY(CheckLogon("anybody", "anything"));
        QCOMPARE(gUserRights, nines);

        const int anna = Users_Add("Anna", "first", nines);
        QVERIFY(anna > 0);
        dialogs.Expect("Add User", "User already exists in database.");
        QCOMPARE(Users_Add("Anna", "other", nines), 0);
        QVERIFY(!CheckLogon("anybody", "anything"));
        QCOMPARE(gUserRights, QString());
        QVERIFY(CheckLogon("Anna", "first"));

        QVERIFY(Users_ChangePassword(anna, "second"));
        QVERIFY(!CheckLogon("Anna", "first"));
        QVERIFY(Users_UpdateSecurity(anna, QString(256, u'1')));
        QVERIFY(CheckLogon("Anna", "second"));
        QCOMPARE(UserRight(15), 1);
        QCOMPARE(Users_GetSecurityRights(anna), QString(256, u'1'));
        QCOMPARE(Users_GetSecurityRights(anna + 1), QString());

        QVERIFY(Users_Delete(anna));
        QVERIFY(CheckLogon({}, {}));
        QCOMPARE(gUserRights, nines);
    }

    void Logon_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("rights");
        const auto row = [](const char *label, const QString &name, const QString &password,
                            const QString &rights) { QTest::newRow(label) << name << password << rights; };
        const QString some(255, u'2');
        row("wrong password", "Anna", "rosehips", {});
        row("no password", "Anna", {}, {});
        row("wrong name", "Annabel", "rosehip", {});
        row("silent, and nobody is blank", {}, {}, {});
        row("the name's case does not count", "ANNA", "rosehip", some);
        row("no rights stored are all rights", "Blank", "b", nines);
        row("apostrophes", "O'Neil", "it's", some);
        row("backtick", "Back`tick", "`", some);
        row("what is typed stays a value", "' OR '1'='1", "' OR '1'='1", {});
        row("placeholder", "%1", "%2", some);
    }
    void Logon()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, password);
        const std::pair<const char *, const char *> users[] = {
            {"Anna", "rosehip"}, {"O'Neil", "it's"}, {"Back`tick", "`"}, {"%1", "%2"}};
        for (const auto &[user, secret] : users)
            QVERIFY(Users_Add(user, secret, QString(256, u'2')) > 0);
        QVERIFY(Users_Add("Blank", "b", {}) > 0);
        const bool passed = CheckLogon(name, password);
        QTEST(gUserRights, "rights");
        QCOMPARE(passed, !gUserRights.isEmpty());
    }

    void AnInsertKeeps255Rights()
    {
        const QString rights = QString(255, u'9') % u'3';
        const int id = Users_Add("Anna", "x", rights);
        QVERIFY(CheckLogon("Anna", "x"));
        QCOMPARE(gUserRights, QString(255, u'9'));
        QCOMPARE(UserRight(255), 0);
        QVERIFY(Users_UpdateSecurity(id, rights));
        QCOMPARE(Users_GetSecurityRights(id), rights);
    }

    void ListsAreOrderedByName()
    {
        ListModel list;
        ComboModel combo;
        Users_Fill(combo);
        QCOMPARE(combo.Current(), -1);
        const int zoe = Users_Add("Zoe", "x", {});
        const int ben = Users_Add("ben", "x", {});
        const int anna = Users_Add("Anna", "x", {});
        Users_FillList(list);
        Users_Fill(combo);
        QStringList rows;
        for (int row = 0; row < list.Count(); ++row)
            rows.append(list.At(row).key % list.At(row).text);
        QCOMPARE(rows, QStringList({u"?%1Anna"_qs.arg(anna), u"?%1ben"_qs.arg(ben), u"?%1Zoe"_qs.arg(zoe)}));
        QCOMPARE(combo.Count(), 3);
        QCOMPARE(combo.CurrentData(), anna);
    }

    void AwkwardTexts()
    {
        for (const QString &text :
             {u"\"'; DROP TABLE Users; --"_qs, u"100%_[a]*?"_qs, u"\U0001F393 caf\u00E9"_qs, u"  two  "_qs,
              u"c:\\"_qs, QString(255, u'n')}) {
            const QString secret = text % QString(10'000, u'p');
            const int id = Users_Add(text, secret, nines);
            QVERIFY(id > 0);
            ListModel list;
            Users_FillList(list);
            QCOMPARE(list.At(list.Find(u'?' % QString::number(id))).text, text);
            QVERIFY(CheckLogon(text, secret));
            QVERIFY(!CheckLogon(text, secret.chopped(1)));
        }
    }

    void ErrorsGiveTheFailureValue()
    {
        TestDatabase::Run({u"DROP TABLE Users"_qs});
        int boxes = 0;
        const Dialogs::Hooks outer = Dialogs::Installed();
        Dialogs::Installed().msgBox = [&](auto &&...) {
            ++boxes;
            return Dialogs::Answer::Cancel;
        };
        QCOMPARE(Users_Add("Anna", "x", nines), -1);
        QVERIFY(!Users_UpdateSecurity(1, nines));
        QVERIFY(!Users_ChangePassword(1, "x"));
        QVERIFY(!Users_Delete(1));
        QCOMPARE(Users_GetSecurityRights(1), QString());
        QVERIFY(CheckLogon("Anna", "wrong")); // the check fails open
        QCOMPARE(gUserRights, nines);
        Dialogs::Installed() = outer;
        QCOMPARE(boxes, 6);
    }
};

QTEST_GUILESS_MAIN(TestUsers)
#include "test_users.moc"
