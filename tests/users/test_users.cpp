#include "controls/TreeModel.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"
#include "support/ModalDriver.h"
#include "support/RightsTable.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"
#include "users/UsersModule.h"
#include "users/frmAddEditUser.h"
#include "users/frmUsers.h"
#include "users/frmUsersPassword.h"

#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using Dialogs::Answer;

namespace
{
const QString nines = RightsBlank();
const QString incomplete = u"Form not complete"_qs;
const QString missing = u"The followings fields must be completed:\n"_qs;
const QString mismatch = u"Password doesn't match Confirm Password!"_qs;

/// The rights of a clerk: the first digits as given, "1" after them.
QString Clerk(const QString &start)
{
    return start.leftJustified(256, u'1');
}

ListModel &Rows(QWidget &form)
{
    return Find<ListView>(form, "MainList")->Model();
}

TreeModel &Tree(QWidget &form)
{
    return Find<TreeView>(form, "SecurityList")->Model();
}

/// Chooses an entry of the pop-up menu of a right, which a key has opened.
void ChooseRight(QWidget &form, const QString &key, const QString &entry)
{
    auto *view = Find<TreeView>(form, "SecurityList");
    view->Model().Select(view->Model().Find(key));
    QTest::keyClick(view, Qt::Key_Space);
    auto *menu = Find<QMenu>(form, key.startsWith(u'#') ? "ID_YesNo" : "ID_SecurityMenu");
    QVERIFY2(menu->isVisible(), qPrintable(key));
    Find<QAction>(*menu, entry)->trigger();
    menu->close();
}

/// Fills in a new user.
void TypeUser(QWidget &form, const QString &name, const QString &first, const QString &second)
{
    TypeInto(form, "UserName", name);
    TypeInto(form, "NewPass1", first);
    TypeInto(form, "NewPass2", second);
}

/// A row of the list of users.
ListItem RowOf(int id, const QString &name)
{
    return {u'?' % QString::number(id), name};
}

QString StoredRights(const QString &name)
{
    return TestDatabase::Value(u"SELECT SecurityRights FROM Users WHERE UserName = '" % name % u'\'');
}

void ExpectLockedOut(ScriptedDialogs &dialogs, Answer answer)
{
    dialogs.Expect("Security",
                   "Nobody would be able to change the rights of users after this change, not even to take "
                   "it back.\nOkay to go on?",
                   answer);
}
} // namespace

class TestUsers final : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestDatabase> m_database;

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = nines;
    }
    void cleanup() { m_database.reset(); }

    void AUserFromFirstToLast()
    {
        ScriptedDialogs dialogs;
        ModalDriver driver;
        frmUsers users;
        users.show();
        QVERIFY(Rows(users).IsEmpty() && CheckLogon("anybody", "anything"));

        driver.Expect("frmAddEditUser", [](QDialog &form) {
            QVERIFY(!Find<QCheckBox>(form, "CopyFromChk")->isVisible());
            TypeUser(form, "O'Neil", "it's", "it's");
            ChooseRight(form, "?15", "ID_Add");
            ChooseRight(form, "#17", "ID_No");
            Press(form, "AddBtn");
            QCOMPARE(gDialogResult, 1);
        });
        ExpectLockedOut(dialogs, Answer::Yes); // who may only add users cannot take the rest back
        Press(users, "AddBtn");
        QCOMPARE(Rows(users).At(0).key % Rows(users).At(0).text, u"!1O'Neil"_qs);
        QVERIFY(Rows(users).IsSelected(0));
        QVERIFY(!CheckLogon("anybody", "anything") && gUserRights.isEmpty());
        QVERIFY(CheckLogon("O'Neil", "it's"));
        QVERIFY(UserRight(Right::Users) == Level::Add);
        QVERIFY(UserRight(Right::UserPasswords) == Level::None);
        QVERIFY(UserRight(Right::DatabasePassword) == Level::Full);
        gUserRights = nines;

        dialogs.Expect("Warning", "Some of the data has changed.\nOkay to update before exiting?",
                       Answer::Yes);
        driver.Expect("frmAddEditUser", [](QDialog &form) {
            QCOMPARE(Find<QPushButton>(form, "AddBtn")->text(), u"&Update"_qs);
            QCOMPARE(Find<ListView>(form, "EditList")->Model().At(0).text, u"O'Neil"_qs);
            QVERIFY(Tree(form).Find("?15")->text.endsWith(u"  [Add Only]"));
            ChooseRight(form, "?15", "ID_FullAccess");
            QTest::keyClick(&form, Qt::Key_Escape); // and Yes
        });
        QTest::keyClick(Find<ListView>(users, "MainList"), Qt::Key_Return);
        QCOMPARE(StoredRights("O''Neil").size(), 256);
        QCOMPARE(StoredRights("O''Neil").at(15), u'9');

        driver.Expect("frmUsersPassword", [](QDialog &form) {
            QCOMPARE(Find<QLineEdit>(form, "UserName")->text(), u"O'Neil"_qs);
            TypeInto(form, "NewPass1", "`new`");
            TypeInto(form, "NewPass2", "`new`");
            Press(form, "AddBtn");
        });
        Press(users, "SetPassBtn");
        QVERIFY(CheckLogon("O'Neil", "`new`") && !CheckLogon("O'Neil", "it's"));

        dialogs.Expect("Confirm Deletion", "Okay to delete user 'O'Neil'", Answer::Yes);
        QTest::keyClick(Find<ListView>(users, "MainList"), Qt::Key_Delete);
        QVERIFY(Rows(users).IsEmpty() && CheckLogon({}, {}));
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

    void AddRefuses_data()
    {
        const TestTable<QStringList, QString, QString> row{"typed", "title", "text"};
        row("nothing", {"", "", ""}, incomplete, missing % u"    User\n    Password\n");
        row("no password", {"Zoe", "", "x"}, incomplete, missing % u"    Password\n");
        row("mismatch", {"Zoe", "x", "X"}, "Password", mismatch);
        row("name taken", {"anna", "x", "x"}, "Add User", "User already exists in database.");
    }
    void AddRefuses()
    {
        QFETCH(const QStringList, typed);
        QFETCH(const QString, title);
        QFETCH(const QString, text);
        Users_Add("Anna", "x", nines);
        ScriptedDialogs dialogs;
        frmAddEditUser form;
        form.show();
        TypeUser(form, typed[0], typed[1], typed[2]);
        dialogs.Expect(title, text);
        Press(form, "AddBtn");
        QVERIFY(form.isVisible());
        QCOMPARE(gDialogResult, 0);
        QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM Users"), u"1"_qs);
    }

    void AdministratorBox()
    {
        const int anna = Users_Add("Anna", "x", nines);
        ScriptedDialogs dialogs;
        frmAddEditUser form({RowOf(anna, "Anna")}, false);
        form.show();
        auto *administrator = Find<QCheckBox>(form, "AdminChk");
        auto *view = Find<TreeView>(form, "SecurityList");
        QVERIFY(administrator->isChecked());

        const QPoint first = view->visualRect(view->model()->index(0, 0)).center();
        for (int times = 0; times < 3; ++times)
            dialogs.Expect({}, "Uncheck the SystemAdmin box to change value.");
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, first);
        QContextMenuEvent asked(QContextMenuEvent::Mouse, first, view->viewport()->mapToGlobal(first));
        QApplication::sendEvent(view->viewport(), &asked);
        QTest::keyClick(view, Qt::Key_Space);
        QVERIFY(dialogs.AllCame());
        QVERIFY(!Find<QMenu>(form, "ID_YesNo")->isVisible());

        administrator->click();
        ChooseRight(form, "#4", "ID_No");
        administrator->click();
        QVERIFY(Tree(form).Find("#4")->text.endsWith(u"[Yes]"));
        administrator->click();
        QVERIFY(Tree(form).Find("#4")->text.endsWith(u"[No]"));
        Press(form, "AddBtn");
        QCOMPARE(StoredRights("Anna"), RightsWith(4, 0));
    }

    void ManyRightsAtOnce()
    {
        frmAddEditUser form;
        form.show();
        auto *view = Find<TreeView>(form, "SecurityList");
        const auto type = [&](const QString &key, Qt::Key digit) {
            view->Model().Select(view->Model().Find(key));
            QTest::keyClick(view, digit);
        };
        const auto levels = [&](const QStringList &keys) {
            QStringList result;
            for (const QString &key : keys) {
                const QString text = Tree(form).Find(key)->text;
                result.append(text.mid(text.indexOf(u'[')));
            }
            return result.join(QString());
        };
        const QStringList contacts{"#1", "?23", "#24", "#22"};
        type("!contacts", Qt::Key_1);
        QCOMPARE(levels(contacts), u"[Yes][View/Select Only][No][Yes]"_qs);
        QCOMPARE(levels({"#9"}), u"[Yes]"_qs);
        ChooseRight(form, "!contacts", "ID_NoAccess");
        QCOMPARE(levels(contacts), u"[No][][No][No]"_qs);
        type("?23", Qt::Key_3);
        type("?23", Qt::Key_4); // is no level
        type("#1", Qt::Key_1);
        QCOMPARE(levels(contacts), u"[No][Add and Edit Only][No][No]"_qs);

        Press(form, "EverythingBtn");
        QCOMPARE(levels(contacts), u"[Yes][Full Access][Yes][Yes]"_qs);
        Press(form, "LookOnlyBtn");
        QCOMPARE(levels(contacts + QStringList{"#13", "#45"}),
                 u"[Yes][View/Select Only][No][Yes][No][Yes]"_qs);
    }

    void CopyFromAnotherUser()
    {
        Users_Add("Zoe", "x", Clerk("9090"));
        Users_Add("Anna", "x", Clerk("0000"));
        frmAddEditUser form;
        form.show();
        auto *copy = Find<QCheckBox>(form, "CopyFromChk");
        auto *administrator = Find<QCheckBox>(form, "AdminChk");
        auto *list = Find<QComboBox>(form, "UserList");
        QVERIFY(!list->isEnabled());

        administrator->click();
        copy->click();
        QVERIFY(!administrator->isChecked());
        QCOMPARE(list->currentText(), u"Anna"_qs);
        QVERIFY(Tree(form).Find("#2")->text.endsWith(u"[No]"));
        list->setCurrentIndex(1);
        QVERIFY(Tree(form).Find("#2")->text.endsWith(u"[Yes]"));
        administrator->click();
        QVERIFY(!copy->isChecked());
        administrator->click();

        TypeUser(form, "Ben", "x", "x");
        Press(form, "AddBtn");
        QCOMPARE(StoredRights("Ben"), Clerk("9090").left(255));
    }

    void UpdateOfSeveralUsers()
    {
        Users_Add("Anna", "x", Clerk("0909"));
        Users_Add("Ben", "x", nines);
        Users_Add("Carl", "x", nines);
        ModalDriver driver;
        frmUsers users;
        users.show();
        Rows(users).Select(1);
        driver.Expect("frmAddEditUser", [](QDialog &form) {
            QCOMPARE(Find<ListView>(form, "EditList")->Model().Count(), 2);
            QVERIFY(!Find<QCheckBox>(form, "AdminChk")->isChecked());
            Press(form, "AddBtn");
            QCOMPARE(gDialogResult, 1);
        });
        Press(users, "EditBtn");
        // Position 255 was not stored at the insert, and starts as full.
        QCOMPARE(StoredRights("Anna"), Clerk("0909").left(255) % u'9');
        QCOMPARE(StoredRights("Ben"), StoredRights("Anna"));
        QCOMPARE(StoredRights("Carl"), nines.left(255));
    }

    void WorkStaysOnScreenAfterAnError()
    {
        const int anna = Users_Add("Anna", "x", nines);
        frmAddEditUser adding;
        frmAddEditUser updating({RowOf(anna, "Anna")}, false);
        adding.show();
        updating.show();
        TypeUser(adding, "Zoe", "x", "x");
        TestDatabase::Run({"DROP TABLE Users"});
        for (frmAddEditUser *form : {&adding, &updating}) {
            ScriptedDialogs dialogs;
            dialogs.ExpectFailure();
            Press(*form, "AddBtn");
            QVERIFY(form->isVisible());
        }
        QCOMPARE(gDialogResult, 0);
    }

    void PasswordRefuses()
    {
        const int anna = Users_Add("Anna", "old", nines);
        ScriptedDialogs dialogs;
        frmUsersPassword form(RowOf(anna, "Anna"));
        form.show();
        dialogs.Expect(incomplete, missing % u"    New Password\n");
        Press(form, "AddBtn");
        TypeInto(form, "NewPass1", "new");
        dialogs.Expect("Password", mismatch);
        Press(form, "AddBtn");
        QVERIFY(form.isVisible() && CheckLogon("Anna", "old"));
    }

    /// Somebody must be able to change the rights of users; without users, everybody is.
    void SomebodyKeepsTheKeyToTheHouse()
    {
        const QString clerk(256, u'1');
        ScriptedDialogs dialogs;
        const auto asks = [&dialogs](Answer answer) { ExpectLockedOut(dialogs, answer); };
        asks(Answer::No);
        QVERIFY2(!Users_MayChange(0, clerk), "the first user");
        QString onlooker = clerk;
        onlooker[static_cast<int>(Right::SecurityMenu)] = u'9';
        asks(Answer::No);
        QVERIFY2(!Users_MayChange(0, onlooker), "sees the users, and can change nothing");
        const int anna = Users_Add("Anna", "x", nines);
        const int ben = Users_Add("Ben", "x", clerk);
        QVERIFY(Users_MayChange(ben, std::nullopt) && Users_MayChange(0, clerk));
        for (const std::optional<QString> &rights : {std::optional<QString>(), std::optional(clerk)}) {
            asks(Answer::No);
            QVERIFY(!Users_MayChange(anna, rights));
        }
        frmUsers users;
        users.show();
        dialogs.Expect("Confirm Deletion", "Okay to delete user 'Anna'", Answer::Yes);
        asks(Answer::Yes);
        Press(users, "DelBtn");
        QCOMPARE(Rows(users).Count(), 1);
        QVERIFY2(Users_MayChange(ben, clerk), "nobody has it any more");
        QVERIFY2(Users_MayChange(ben, std::nullopt), "the last one");
    }

    void DeleteAsksForEach()
    {
        for (const auto *name : {"Carl", "Anna", "Dora", "Ben"})
            Users_Add(QString::fromLatin1(name), "x", nines);
        ScriptedDialogs dialogs;
        frmUsers users;
        users.show();
        Rows(users).Select(1);
        Rows(users).Select(3);
        dialogs.Expect("Confirm Deletion", "Okay to delete user 'Anna'", Answer::Yes);
        dialogs.Expect("Confirm Deletion", "Okay to delete user 'Ben'", Answer::No);
        dialogs.Expect("Confirm Deletion", "Okay to delete user 'Dora'", Answer::Yes);
        Press(users, "DelBtn");
        QCOMPARE(TestDatabase::Rows("SELECT UserName FROM Users ORDER BY UserName"),
                 QStringList({"Ben", "Carl"}));
        QCOMPARE(Rows(users).Count(), 2);
        QCOMPARE(Rows(users).SelectedRows(), std::vector<int>{0});
        Users_Add("Eve", "x", nines);
        users.Form_Refresh();
        QCOMPARE(Rows(users).Count(), 3);
    }

    void RightsOfUsers()
    {
        const int anna = Users_Add("Anna", "x", Clerk("9090"));
        const auto users = [] {
            auto form = std::make_unique<frmUsers>();
            form->show();
            return form;
        };
        // Level 3 may change rights but not add.
        const std::vector<RightsRow> rights{
            {15, 0, "AddBtn", Left::Disabled},    {15, 1, "AddBtn", Left::Disabled},
            {15, 2, "AddBtn", Left::Enabled},     {15, 2, "DelBtn", Left::Disabled},
            {15, 3, "AddBtn", Left::Disabled},    {15, 3, "DelBtn", Left::Disabled},
            {15, 9, "AddBtn", Left::Enabled},     {15, 9, "DelBtn", Left::Enabled},
            {15, 1, "EditBtn", Left::Enabled},    {17, 0, "SetPassBtn", Left::Disabled},
            {15, 0, "SetPassBtn", Left::Enabled},
        };
        CheckRights(users, rights);
        ModalDriver driver;
        for (const auto &[level, mayChange] : {std::pair{1, false}, {2, false}, {3, true}, {9, true}}) {
            gUserRights = RightsWith(15, level);
            const auto form = users();
            driver.Expect("frmAddEditUser", [mayChange = mayChange](QDialog &edit) {
                QCOMPARE(Find<QPushButton>(edit, "AddBtn")->isEnabled(), mayChange);
                QCOMPARE(Find<QCheckBox>(edit, "AdminChk")->isEnabled(), mayChange);
                Press(edit, "ExitBtn");
            });
            Press(*form, "EditBtn");
        }
        frmAddEditUser readOnly({RowOf(anna, "Anna")}, true);
        readOnly.show();
        auto *view = Find<TreeView>(readOnly, "SecurityList");
        view->Model().Select(view->Model().Find("#0"));
        QTest::keyClick(view, Qt::Key_Space);
        QVERIFY(!Find<QMenu>(readOnly, "ID_YesNo")->isVisible());
    }
};

QTEST_MAIN(TestUsers)
#include "test_users.moc"
