#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "core/Session.h"
#include "database/Security.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"
#include "users/UsersModule.h"
#include "users/UsersODBC.h"

#include <QTest>

#include <memory>

class TestUsers final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_database = std::make_unique<TestDatabase>(); }
    void cleanup() { m_database.reset(); }

    void FromOpenAccessToUsersAndBack();
    void Logon_data();
    void Logon();
    void LogonFailsOpenOnAnError();
    void StatementsAsTheyStand();
    void AnInsertKeeps255Rights();
    void ListsAreOrderedByName();
    void AwkwardTexts_data();
    void AwkwardTexts();
    void ErrorsGiveTheFailureValue();

private:
    std::unique_ptr<TestDatabase> m_database;
};

namespace
{
const QString nines = RightsBlank();

/// Counts the boxes that come, and answers each with Cancel.
class Boxes final
{
public:
    Boxes()
        : m_outer(Dialogs::Installed())
    {
        Dialogs::Installed().msgBox = [this](const QString &, const QString &, Dialogs::Buttons,
                                             Dialogs::Icon, Dialogs::Answer) {
            ++count;
            return Dialogs::Answer::Cancel;
        };
    }
    ~Boxes() { Dialogs::Installed() = m_outer; }
    int count = 0;

private:
    Dialogs::Hooks m_outer;
};
} // namespace

void TestUsers::FromOpenAccessToUsersAndBack()
{
    ScriptedDialogs dialogs;
    QVERIFY(CheckLogon(u"anybody"_qs, u"anything"_qs));
    QCOMPARE(gUserRights, nines);

    const int anna = Users_Add(u"Anna"_qs, u"first"_qs, nines);
    QVERIFY(anna > 0);
    dialogs.Expect(u"Add User"_qs, u"User already exists in database."_qs);
    QCOMPARE(Users_Add(u"Anna"_qs, u"other"_qs, nines), 0);
    QVERIFY(!CheckLogon(u"anybody"_qs, u"anything"_qs));
    QCOMPARE(gUserRights, QString());
    QVERIFY(CheckLogon(u"Anna"_qs, u"first"_qs));

    QVERIFY(Users_ChangePassword(anna, u"second"_qs));
    QVERIFY(!CheckLogon(u"Anna"_qs, u"first"_qs));
    QVERIFY(Users_UpdateSecurity(anna, QString(256, u'1')));
    QVERIFY(CheckLogon(u"Anna"_qs, u"second"_qs));
    QCOMPARE(UserRight(15), 1);
    QCOMPARE(Users_GetSecurityRights(anna), QString(256, u'1'));
    QCOMPARE(Users_GetSecurityRights(anna + 1), QString());

    QVERIFY(Users_Delete(anna));
    QVERIFY(CheckLogon({}, {}));
    QCOMPARE(gUserRights, nines);
}

void TestUsers::Logon_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("rights");
    const QString some(255, u'2');
    QTest::newRow("right") << "Anna"
                           << "rosehip" << some;
    QTest::newRow("wrong password") << "Anna"
                                    << "rosehips"
                                    << "";
    QTest::newRow("no password") << "Anna"
                                 << ""
                                 << "";
    QTest::newRow("wrong name") << "Annabel"
                                << "rosehip"
                                << "";
    QTest::newRow("silent, and nobody is blank") << ""
                                                 << ""
                                                 << "";
    QTest::newRow("the name's case does not count") << "ANNA"
                                                    << "rosehip" << some;
    QTest::newRow("no rights stored are all rights") << "Blank"
                                                     << "b" << nines;
    QTest::newRow("apostrophes") << "O'Neil"
                                 << "it's" << some;
    QTest::newRow("backtick") << "Back`tick"
                              << "`" << some;
    QTest::newRow("what is typed stays a value") << "' OR '1'='1"
                                                 << "' OR '1'='1"
                                                 << "";
    QTest::newRow("placeholder") << "%1"
                                 << "%2" << some;
}

void TestUsers::Logon()
{
    QFETCH(const QString, name);
    QFETCH(const QString, password);
    const QString some(256, u'2');
    for (const auto &[user, secret] : {std::pair{u"Anna"_qs, u"rosehip"_qs},
                                       {u"O'Neil"_qs, u"it's"_qs},
                                       {u"Back`tick"_qs, u"`"_qs},
                                       {u"%1"_qs, u"%2"_qs}})
        QVERIFY(Users_Add(user, secret, some) > 0);
    QVERIFY(Users_Add(u"Blank"_qs, u"b"_qs, {}) > 0);
    const bool passed = CheckLogon(name, password);
    QTEST(gUserRights, "rights");
    QCOMPARE(passed, !gUserRights.isEmpty());
}

void TestUsers::LogonFailsOpenOnAnError()
{
    Boxes boxes;
    QVERIFY(Users_Add(u"Anna"_qs, u"rosehip"_qs, QString(256, u'1')) > 0);
    TestDatabase::Run({u"DROP TABLE Users"_qs});
    QVERIFY(CheckLogon(u"Anna"_qs, u"wrong"_qs));
    QCOMPARE(gUserRights, nines);
    QCOMPARE(boxes.count, 1);
}

void TestUsers::StatementsAsTheyStand()
{
    StatementLog log;
    const int id = ADO_Users_AddUser(u"O''Neil"_qs, u"pass"_qs, u"9912"_qs);
    const QString number = QString::number(id);
    const QString sameName = u"SELECT * FROM Users WHERE UserName = 'O''Neil'"_qs;
    QCOMPARE(
        log.Statements(),
        QStringList(
            {sameName,
             u"INSERT INTO Users (UserName, Password, SecurityRights) VALUES ('O''Neil','pass','9912')"_qs,
             sameName}));
    log.Clear();
    ADO_Users_UpdateUserSecurity(id, u"11"_qs);
    ADO_Users_ChangePassword(id, u"new"_qs);
    ADO_Users_GetSecurityRights(id);
    ADO_Users_Logon(u"x"_qs, u"y"_qs);
    ADO_Users_Delete(id);
    QCOMPARE(log.Statements(),
             QStringList({u"UPDATE Users SET SecurityRights = '11' WHERE UserID = " % number,
                          u"UPDATE Users SET Password = 'new' WHERE UserID = " % number,
                          u"SELECT * FROM Users WHERE UserID = " % number, u"SELECT * FROM Users"_qs,
                          u"SELECT * FROM Users WHERE UserName = 'x' AND Password = 'y'"_qs,
                          u"DELETE FROM Users WHERE UserID = " % number}));
}

void TestUsers::AnInsertKeeps255Rights()
{
    const QString rights = QString(255, u'9') % u'3';
    const int id = Users_Add(u"Anna"_qs, u"x"_qs, rights);
    QCOMPARE(Users_GetSecurityRights(id), QString(255, u'9'));
    QVERIFY(CheckLogon(u"Anna"_qs, u"x"_qs));
    QCOMPARE(UserRight(254), 9);
    QCOMPARE(UserRight(255), 0);
    QVERIFY(Users_UpdateSecurity(id, rights));
    QCOMPARE(Users_GetSecurityRights(id), rights);
}

void TestUsers::ListsAreOrderedByName()
{
    ListModel list;
    ComboModel combo;
    Users_FillList(list);
    Users_Fill(combo);
    QVERIFY(list.IsEmpty());
    QCOMPARE(combo.Current(), -1);

    const int zoe = Users_Add(u"Zoe"_qs, u"x"_qs, {});
    const int ben = Users_Add(u"ben"_qs, u"x"_qs, {});
    const int anna = Users_Add(u"Anna"_qs, u"x"_qs, {});
    Users_FillList(list);
    Users_Fill(combo);
    QStringList rows;
    for (int row = 0; row < list.Count(); ++row)
        rows.append(list.At(row).key % list.At(row).text);
    QCOMPARE(rows, QStringList({u"?%1Anna"_qs.arg(anna), u"?%1ben"_qs.arg(ben), u"?%1Zoe"_qs.arg(zoe)}));
    QCOMPARE(combo.Count(), 3);
    QCOMPARE(combo.CurrentText(), u"Anna"_qs);
    QCOMPARE(combo.CurrentData(), anna);
}

void TestUsers::AwkwardTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << "\"'; DROP TABLE Users; --";
    QTest::newRow("wildcards") << "100%_[a]*?";
    QTest::newRow("emoji") << QString::fromUtf8("\xF0\x9F\x8E\x93 caf\xC3\xA9");
    QTest::newRow("blanks kept") << "  two  ";
    QTest::newRow("backslash at the end") << "c:\\";
    QTest::newRow("255 characters") << QString(255, u'n');
}

void TestUsers::AwkwardTexts()
{
    QFETCH(const QString, text);
    const QString secret = text % QString(10'000, u'p');
    const int id = Users_Add(text, secret, nines);
    QVERIFY(id > 0);
    ListModel list;
    Users_FillList(list);
    QCOMPARE(list.At(0).text, text);
    QVERIFY(CheckLogon(text, secret));
    QVERIFY(!CheckLogon(text, secret.chopped(1)));
}

void TestUsers::ErrorsGiveTheFailureValue()
{
    TestDatabase::Run({u"DROP TABLE Users"_qs});
    Boxes boxes;
    QCOMPARE(Users_Add(u"Anna"_qs, u"x"_qs, nines), -1);
    QVERIFY(!Users_UpdateSecurity(1, nines));
    QVERIFY(!Users_ChangePassword(1, u"x"_qs));
    QVERIFY(!Users_Delete(1));
    QCOMPARE(Users_GetSecurityRights(1), QString());
    QCOMPARE(boxes.count, 5);
}

QTEST_GUILESS_MAIN(TestUsers)
#include "test_users.moc"
