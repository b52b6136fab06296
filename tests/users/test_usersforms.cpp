#include "controls/TreeModel.h"
#include "core/Session.h"
#include "database/Security.h"
#include "forms/ListView.h"
#include "forms/TreeView.h"
#include "support/ModalDriver.h"
#include "support/RightsTable.h"
#include "support/ScriptedDialogs.h"
#include "support/TestDatabase.h"
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
const QString changed = u"Some of the data has changed.\nOkay to update before exiting?"_qs;
const QString uncheck = u"Uncheck the SystemAdmin box to change value."_qs;

/// The rights of a clerk: the first digits as given, "1" behind them.
QString Clerk(const QString &start)
{
    return start.leftJustified(256, u'1');
}

ListModel &Rows(QWidget &form)
{
    return Find<ListView>(form, u"MainList"_qs)->Model();
}

TreeModel &Tree(QWidget &form)
{
    return Find<TreeView>(form, u"SecurityList"_qs)->Model();
}

/// Chooses an entry of the pop-up menu of a right, which a key has opened.
void ChooseRight(QWidget &form, const QString &key, const QString &entry)
{
    auto *view = Find<TreeView>(form, u"SecurityList"_qs);
    view->Model().Select(view->Model().Find(key));
    QTest::keyClick(view, Qt::Key_Space);
    auto *menu = Find<QMenu>(form, key.startsWith(u'?') ? u"ID_SecurityMenu"_qs : u"ID_YesNo"_qs);
    QVERIFY2(menu->isVisible(), qPrintable(key));
    Find<QAction>(*menu, entry)->trigger();
    menu->close();
}

QString StoredRights(const QString &name)
{
    return TestDatabase::Value(u"SELECT SecurityRights FROM Users WHERE UserName = '" % name % u'\'');
}
} // namespace

class TestUsersForms final : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void AUserFromFirstToLast();
    void AddRefuses_data();
    void AddRefuses();
    void RightsMenusByMouseAndKey();
    void AdministratorBox();
    void CopyFromAnotherUser();
    void UpdateOfSeveralUsers();
    void LeavingChanges_data();
    void LeavingChanges();
    void WorkStaysOnScreenAfterAnError();
    void PasswordRefuses();
    void DeleteAsksForEach();
    void RightsOfUsers();
    void ReadOnlyShowsAndNoMore();
    void MissingMap();

private:
    std::unique_ptr<TestDatabase> m_database;
};

void TestUsersForms::init()
{
    m_database = std::make_unique<TestDatabase>();
    gUserRights = nines;
}

void TestUsersForms::cleanup()
{
    m_database.reset();
}

void TestUsersForms::AUserFromFirstToLast()
{
    ScriptedDialogs dialogs;
    ModalDriver driver;
    frmUsers users;
    users.show();
    QVERIFY(Rows(users).IsEmpty());

    driver.Expect(u"frmAddEditUser"_qs, [](QDialog &form) {
        QVERIFY(!Find<QCheckBox>(form, u"CopyFromChk"_qs)->isVisible());
        TypeInto(form, u"UserName"_qs, u"O'Neil"_qs);
        TypeInto(form, u"NewPass1"_qs, u"it's"_qs);
        TypeInto(form, u"NewPass2"_qs, u"it's"_qs);
        ChooseRight(form, u"?15"_qs, u"ID_Add"_qs);
        ChooseRight(form, u"#17"_qs, u"ID_No"_qs);
        Press(form, u"AddBtn"_qs);
    });
    Press(users, u"AddBtn"_qs);
    QCOMPARE(gDialogResult, 1);
    QCOMPARE(Rows(users).At(0).key, u"!1"_qs);
    QCOMPARE(Rows(users).At(0).text, u"O'Neil"_qs);
    QVERIFY(Rows(users).IsSelected(0));
    QVERIFY(CheckLogon(u"O'Neil"_qs, u"it's"_qs));
    QCOMPARE(UserRight(15), 2);
    QCOMPARE(UserRight(17), 0);
    QCOMPARE(UserRight(16), 9);
    gUserRights = nines;

    driver.Expect(u"frmAddEditUser"_qs, [](QDialog &form) {
        QCOMPARE(Find<QPushButton>(form, u"AddBtn"_qs)->text(), u"&Update"_qs);
        QCOMPARE(Find<ListView>(form, u"EditList"_qs)->Model().At(0).text, u"O'Neil"_qs);
        QVERIFY(Tree(form).Find(u"?15"_qs)->text.endsWith(u"  [Add Only]"));
        ChooseRight(form, u"?15"_qs, u"ID_FullAccess"_qs);
        Press(form, u"AddBtn"_qs);
    });
    QTest::keyClick(Find<ListView>(users, u"MainList"_qs), Qt::Key_Return);
    QCOMPARE(StoredRights(u"O''Neil"_qs).size(), 256);
    QCOMPARE(StoredRights(u"O''Neil"_qs).at(15), u'9');

    driver.Expect(u"frmUsersPassword"_qs, [](QDialog &form) {
        QCOMPARE(Find<QLineEdit>(form, u"UserName"_qs)->text(), u"O'Neil"_qs);
        QVERIFY(Find<QLineEdit>(form, u"UserName"_qs)->isReadOnly());
        TypeInto(form, u"NewPass1"_qs, u"`new`"_qs);
        TypeInto(form, u"NewPass2"_qs, u"`new`"_qs);
        Press(form, u"AddBtn"_qs);
    });
    Press(users, u"SetPassBtn"_qs);
    QVERIFY(CheckLogon(u"O'Neil"_qs, u"`new`"_qs));

    dialogs.Expect(u"Confirm Deletion"_qs, u"Okay to delete user 'O'Neil'"_qs, Answer::Yes);
    QTest::keyClick(Find<ListView>(users, u"MainList"_qs), Qt::Key_Delete);
    QVERIFY(Rows(users).IsEmpty());
    QCOMPARE(TestDatabase::Value(u"SELECT COUNT(*) FROM Users"_qs), u"0"_qs);
}

void TestUsersForms::AddRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    const QString missing = u"The followings fields must be completed:\n"_qs;
    QTest::newRow("nothing") << ""
                             << ""
                             << ""
                             << "Form not complete" << missing + u"    User\n    Password\n"_qs;
    QTest::newRow("no name") << ""
                             << "x"
                             << "x"
                             << "Form not complete" << missing + u"    User\n"_qs;
    QTest::newRow("no password") << "Zoe"
                                 << ""
                                 << "x"
                                 << "Form not complete" << missing + u"    Password\n"_qs;
    QTest::newRow("mismatch") << "Zoe"
                              << "x"
                              << "X"
                              << "Password"
                              << "Password doesn't match Confirm Password!";
    QTest::newRow("name taken") << "anna"
                                << "x"
                                << "x"
                                << "Add User"
                                << "User already exists in database.";
}

void TestUsersForms::AddRefuses()
{
    QFETCH(const QString, name);
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    QFETCH(const QString, title);
    QFETCH(const QString, text);
    Users_Add(u"Anna"_qs, u"x"_qs, nines);
    ScriptedDialogs dialogs;
    frmAddEditUser form;
    form.show();
    TypeInto(form, u"UserName"_qs, name);
    TypeInto(form, u"NewPass1"_qs, first);
    TypeInto(form, u"NewPass2"_qs, second);
    dialogs.Expect(title, text);
    Press(form, u"AddBtn"_qs);
    QVERIFY(form.isVisible());
    QCOMPARE(gDialogResult, 0);
    QCOMPARE(TestDatabase::Value(u"SELECT COUNT(*) FROM Users"_qs), u"1"_qs);
    QCOMPARE(Find<QLineEdit>(form, u"UserName"_qs)->text(), name);
}

void TestUsersForms::RightsMenusByMouseAndKey()
{
    ScriptedDialogs dialogs;
    frmAddEditUser form;
    form.show();
    auto *view = Find<TreeView>(form, u"SecurityList"_qs);
    auto *levels = Find<QMenu>(form, u"ID_SecurityMenu"_qs);
    auto *yesNo = Find<QMenu>(form, u"ID_YesNo"_qs);
    QCOMPARE(view->Model().Selected(), view->Model().Nodes().front());

    const auto ask = [&](const QString &key, QContextMenuEvent::Reason reason) {
        const TreeNode *node = view->Model().Find(key);
        view->ShowNode(node);
        const QPoint at = view->visualRect(view->Model().IndexOf(node)).center();
        view->Model().Select(node);
        QWidget *target = reason == QContextMenuEvent::Mouse ? view->viewport() : view;
        QContextMenuEvent event(reason, at, target->mapToGlobal(at));
        QApplication::sendEvent(target, &event);
        const QString shown = levels->isVisible()  ? u"levels"_qs
                              : yesNo->isVisible() ? u"yes/no"_qs
                                                   : u"none"_qs;
        levels->close();
        yesNo->close();
        return shown;
    };
    for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
        QCOMPARE(ask(u"?23"_qs, reason), u"levels"_qs);
        QCOMPARE(ask(u"#1"_qs, reason), u"yes/no"_qs);
        QCOMPARE(ask(u"!contacts"_qs, reason), u"none"_qs);
    }

    const std::pair<const char *, const char *> choices[] = {{"ID_NoAccess", "  []"},
                                                             {"ID_ViewOnly", "  [View/Select Only]"},
                                                             {"ID_Add", "  [Add Only]"},
                                                             {"ID_Add/Edit", "  [Add and Edit Only]"},
                                                             {"ID_FullAccess", "  [Full Access]"}};
    for (const auto &[entry, text] : choices) {
        ChooseRight(form, u"?23"_qs, QString::fromLatin1(entry));
        QVERIFY2(Tree(form).Find(u"?23"_qs)->text.endsWith(QString::fromLatin1(text)), text);
    }
    dialogs.Expect(u"Warning"_qs, changed, Answer::No);
    form.reject();
}

void TestUsersForms::AdministratorBox()
{
    const int anna = Users_Add(u"Anna"_qs, u"x"_qs, nines);
    ScriptedDialogs dialogs;
    frmAddEditUser form({{u"?%1"_qs.arg(anna), u"Anna"_qs}}, false);
    form.show();
    auto *administrator = Find<QCheckBox>(form, u"AdminChk"_qs);
    auto *view = Find<TreeView>(form, u"SecurityList"_qs);
    QVERIFY(administrator->isChecked());

    const QPoint first = view->visualRect(view->model()->index(0, 0)).center();
    dialogs.Expect({}, uncheck);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, first);
    dialogs.Expect({}, uncheck);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, first, view->viewport()->mapToGlobal(first));
    QApplication::sendEvent(view->viewport(), &asked);
    dialogs.Expect({}, uncheck);
    QTest::keyClick(view, Qt::Key_Space);
    QVERIFY(!Find<QMenu>(form, u"ID_YesNo"_qs)->isVisible());

    administrator->click();
    ChooseRight(form, u"#4"_qs, u"ID_No"_qs);
    administrator->click();
    QVERIFY(Tree(form).Find(u"#4"_qs)->text.endsWith(u"[Yes]"));
    administrator->click();
    QVERIFY(Tree(form).Find(u"#4"_qs)->text.endsWith(u"[No]"));
    Press(form, u"AddBtn"_qs);
    QCOMPARE(StoredRights(u"Anna"_qs), RightsWith(4, 0));
}

void TestUsersForms::CopyFromAnotherUser()
{
    const int anna = Users_Add(u"Anna"_qs, u"x"_qs, Clerk(u"0000"_qs));
    Users_Add(u"Zoe"_qs, u"x"_qs, Clerk(u"9090"_qs));
    ScriptedDialogs dialogs;
    frmAddEditUser form;
    form.show();
    auto *copy = Find<QCheckBox>(form, u"CopyFromChk"_qs);
    auto *administrator = Find<QCheckBox>(form, u"AdminChk"_qs);
    auto *list = Find<QComboBox>(form, u"UserList"_qs);
    QVERIFY(copy->isVisible());
    QVERIFY(!list->isEnabled());

    administrator->click();
    copy->click();
    QVERIFY(!administrator->isChecked());
    QCOMPARE(list->currentText(), u"Anna"_qs);
    QVERIFY(Tree(form).Find(u"#2"_qs)->text.endsWith(u"[No]"));
    list->setCurrentIndex(1);
    QVERIFY(Tree(form).Find(u"#2"_qs)->text.endsWith(u"[Yes]"));
    administrator->click();
    QVERIFY(!copy->isChecked());
    administrator->click();

    TypeInto(form, u"UserName"_qs, u"Ben"_qs);
    TypeInto(form, u"NewPass1"_qs, u"x"_qs);
    TypeInto(form, u"NewPass2"_qs, u"x"_qs);
    Press(form, u"AddBtn"_qs);
    QCOMPARE(StoredRights(u"Ben"_qs), Clerk(u"9090"_qs).left(255));
    QVERIFY(anna != gDialogResult);
}

void TestUsersForms::UpdateOfSeveralUsers()
{
    Users_Add(u"Anna"_qs, u"x"_qs, Clerk(u"0909"_qs));
    Users_Add(u"Ben"_qs, u"x"_qs, nines);
    Users_Add(u"Carl"_qs, u"x"_qs, nines);
    ModalDriver driver;
    frmUsers users;
    users.show();
    Rows(users).Select(1);
    driver.Expect(u"frmAddEditUser"_qs, [](QDialog &form) {
        QCOMPARE(Find<ListView>(form, u"EditList"_qs)->Model().Count(), 2);
        QVERIFY(!Find<QCheckBox>(form, u"AdminChk"_qs)->isChecked());
        Press(form, u"AddBtn"_qs);
    });
    Press(users, u"EditBtn"_qs);
    QCOMPARE(gDialogResult, 1);
    // Position 255 was not stored at the insert, and starts as full.
    QCOMPARE(StoredRights(u"Anna"_qs), Clerk(u"0909"_qs).left(255) % u'9');
    QCOMPARE(StoredRights(u"Ben"_qs), StoredRights(u"Anna"_qs));
    QCOMPARE(StoredRights(u"Carl"_qs), nines.left(255));
}

void TestUsersForms::LeavingChanges_data()
{
    QTest::addColumn<bool>("complete");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("stays");
    QTest::addColumn<QString>("users");
    QTest::newRow("yes saves") << true << static_cast<int>(Answer::Yes) << false << "1";
    QTest::newRow("yes on an incomplete form stays") << false << static_cast<int>(Answer::Yes) << true << "0";
    QTest::newRow("no leaves") << true << static_cast<int>(Answer::No) << false << "0";
    QTest::newRow("cancel stays") << true << static_cast<int>(Answer::Cancel) << true << "0";
}

void TestUsersForms::LeavingChanges()
{
    QFETCH(const bool, complete);
    QFETCH(const int, answer);
    ScriptedDialogs dialogs;
    frmAddEditUser form;
    form.show();
    TypeInto(form, u"UserName"_qs, u"Anna"_qs);
    if (complete) {
        TypeInto(form, u"NewPass1"_qs, u"x"_qs);
        TypeInto(form, u"NewPass2"_qs, u"x"_qs);
    }
    dialogs.Expect(u"Warning"_qs, changed, static_cast<Answer>(answer));
    if (!complete)
        dialogs.Expect(u"Form not complete"_qs,
                       u"The followings fields must be completed:\n    Password\n"_qs);
    QTest::keyClick(&form, Qt::Key_Escape);
    QTEST(form.isVisible(), "stays");
    QTEST(TestDatabase::Value(u"SELECT COUNT(*) FROM Users"_qs), "users");
}

void TestUsersForms::WorkStaysOnScreenAfterAnError()
{
    const int anna = Users_Add(u"Anna"_qs, u"x"_qs, nines);
    frmAddEditUser adding;
    frmAddEditUser updating({{u"?%1"_qs.arg(anna), u"Anna"_qs}}, false);
    adding.show();
    updating.show();
    for (const auto *field : {"UserName", "NewPass1", "NewPass2"})
        TypeInto(adding, QString::fromLatin1(field), u"Zoe"_qs);
    TestDatabase::Run({u"DROP TABLE Users"_qs});
    int boxes = 0;
    const Dialogs::Hooks outer = Dialogs::Installed();
    Dialogs::Installed().msgBox = [&](auto &&...) {
        ++boxes;
        return Answer::Cancel;
    };
    Press(adding, u"AddBtn"_qs);
    Press(updating, u"AddBtn"_qs);
    Dialogs::Installed() = outer;
    QCOMPARE(boxes, 2);
    QVERIFY(adding.isVisible());
    QVERIFY(updating.isVisible());
    QCOMPARE(gDialogResult, 0);
}

void TestUsersForms::PasswordRefuses()
{
    const int anna = Users_Add(u"Anna"_qs, u"old"_qs, nines);
    ScriptedDialogs dialogs;
    frmUsersPassword form({u"!%1"_qs.arg(anna), u"Anna"_qs});
    form.show();
    dialogs.Expect(u"Form not complete"_qs,
                   u"The followings fields must be completed:\n    New Password\n"_qs);
    Press(form, u"AddBtn"_qs);
    TypeInto(form, u"NewPass1"_qs, u"new"_qs);
    dialogs.Expect(u"Password"_qs, u"Password doesn't match Confirm Password!"_qs);
    Press(form, u"AddBtn"_qs);
    QVERIFY(form.isVisible());
    QVERIFY(CheckLogon(u"Anna"_qs, u"old"_qs));
    Press(form, u"ExitBtn"_qs);
    QVERIFY(!form.isVisible());
    QCOMPARE(gDialogResult, 0);
}

void TestUsersForms::DeleteAsksForEach()
{
    for (const auto *name : {"Anna", "Ben", "Carl", "Dora"})
        Users_Add(QString::fromLatin1(name), u"x"_qs, nines);
    ScriptedDialogs dialogs;
    frmUsers users;
    users.show();
    Rows(users).Select(1);
    Rows(users).Select(3);
    dialogs.Expect(u"Confirm Deletion"_qs, u"Okay to delete user 'Anna'"_qs, Answer::Yes);
    dialogs.Expect(u"Confirm Deletion"_qs, u"Okay to delete user 'Ben'"_qs, Answer::No);
    dialogs.Expect(u"Confirm Deletion"_qs, u"Okay to delete user 'Dora'"_qs, Answer::Yes);
    Press(users, u"DelBtn"_qs);
    QCOMPARE(TestDatabase::Rows(u"SELECT UserName FROM Users ORDER BY UserName"_qs),
             QStringList({u"Ben"_qs, u"Carl"_qs}));
    QCOMPARE(Rows(users).Count(), 2);
    QCOMPARE(Rows(users).SelectedRows(), std::vector<int>{0});

    TestDatabase::Run({u"INSERT INTO Users (UserName, Password, SecurityRights) VALUES ('Eve','x','9')"_qs});
    users.Form_Refresh();
    QCOMPARE(Rows(users).Count(), 3);
}

void TestUsersForms::RightsOfUsers()
{
    Users_Add(u"Anna"_qs, u"x"_qs, nines);
    const auto users = [] {
        auto form = std::make_unique<frmUsers>();
        form->show();
        return form;
    };
    // Level 3 may change rights but not add.
    CheckRights(users, {
                           {15, 0, "AddBtn", Left::Disabled},
                           {15, 0, "DelBtn", Left::Disabled},
                           {15, 1, "AddBtn", Left::Disabled},
                           {15, 1, "DelBtn", Left::Disabled},
                           {15, 2, "AddBtn", Left::Enabled},
                           {15, 2, "DelBtn", Left::Disabled},
                           {15, 3, "AddBtn", Left::Disabled},
                           {15, 3, "DelBtn", Left::Disabled},
                           {15, 9, "AddBtn", Left::Enabled},
                           {15, 9, "DelBtn", Left::Enabled},
                           {15, 1, "EditBtn", Left::Enabled},
                           {15, 9, "EditBtn", Left::Enabled},
                           {17, 0, "SetPassBtn", Left::Disabled},
                           {17, 9, "SetPassBtn", Left::Enabled},
                           {17, 0, "AddBtn", Left::Enabled},
                           {15, 0, "SetPassBtn", Left::Enabled},
                       });

    ModalDriver driver;
    for (const auto &[level, mayChange] : {std::pair{1, false}, {2, false}, {3, true}, {9, true}}) {
        gUserRights = RightsWith(15, level);
        const auto form = users();
        driver.Expect(u"frmAddEditUser"_qs, [mayChange = mayChange](QDialog &rights) {
            QCOMPARE(Find<QPushButton>(rights, u"AddBtn"_qs)->isEnabled(), mayChange);
            QCOMPARE(Find<QCheckBox>(rights, u"AdminChk"_qs)->isEnabled(), mayChange);
            Press(rights, u"ExitBtn"_qs);
        });
        Press(*form, u"EditBtn"_qs);
    }
}

void TestUsersForms::ReadOnlyShowsAndNoMore()
{
    const int anna = Users_Add(u"Anna"_qs, u"x"_qs, Clerk(u"9090"_qs));
    ScriptedDialogs dialogs;
    frmAddEditUser form({{u"?%1"_qs.arg(anna), u"Anna"_qs}}, true);
    form.show();
    auto *view = Find<TreeView>(form, u"SecurityList"_qs);
    view->Model().Select(view->Model().Find(u"#0"_qs));
    QTest::keyClick(view, Qt::Key_Space);
    QVERIFY(!Find<QMenu>(form, u"ID_YesNo"_qs)->isVisible());
    QVERIFY(!Find<QComboBox>(form, u"UserList"_qs)->isEnabled());
    QTest::keyClick(&form, Qt::Key_Escape);
    QVERIFY(!form.isVisible());
}

void TestUsersForms::MissingMap()
{
    QVERIFY(QFile::remove(m_database->Directory() % u"/system/secmap.dat"));
    const int anna = Users_Add(u"Anna"_qs, u"x"_qs, Clerk(u"9090"_qs));
    frmAddEditUser form({{u"?%1"_qs.arg(anna), u"Anna"_qs}}, false);
    form.show();
    QVERIFY(Tree(form).IsEmpty());
    Find<QCheckBox>(form, u"AdminChk"_qs)->click();
    Press(form, u"AddBtn"_qs);
    QCOMPARE(StoredRights(u"Anna"_qs), nines);
}

QTEST_MAIN(TestUsersForms)
#include "test_usersforms.moc"
