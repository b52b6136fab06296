#include "core/Session.h"
#include "database/Security.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"
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
        const TestTable<QString, QString, QString> row{"name", "password", "rights"};
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

    void ErrorsGiveTheFailureValue()
    {
        TestDatabase::Run({"DROP TABLE Users"});
        ScriptedDialogs dialogs;
        for (int failures = 0; failures < 6; ++failures)
            dialogs.ExpectFailure();
        QCOMPARE(Users_Add("Anna", "x", nines), -1);
        QVERIFY(!Users_UpdateSecurity(1, nines));
        QVERIFY(!Users_ChangePassword(1, "x"));
        QVERIFY(!Users_Delete(1));
        QCOMPARE(Users_GetSecurityRights(1), QString());
        QVERIFY(CheckLogon("Anna", "wrong")); // the check fails open
        QCOMPARE(gUserRights, nines);
    }
};

QTEST_GUILESS_MAIN(TestUsers)
#include "test_users.moc"
