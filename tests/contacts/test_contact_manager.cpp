#include "contacts/ContactForm.h"
#include "contacts/lists/ConcessionModule.h"
#include "contacts/manager/frmContact.h"
#include "contacts/record/ContactModule.h"
#include "contacts/record/frmAddContact.h"
#include "platform/connection/Connection.h"
#include "support/RightsTable.h"

#include <QFile>
#include <QMenu>
#include <QRadioButton>
#include <QTest>
#include <QThread>
#include <QWheelEvent>

namespace
{
QString Confirm(const QString &name)
{
    return u"Okay to delete record '" % name % u'\'';
}

void SelectEverybody(QWidget &form)
{
    List(form, "ContactList2").SelectAll();
    Press(form, "AddCBtn");
}

/// The record that was opened last beside the manager.
frmAddContact &OpenRecord(const frmContact &form)
{
    const QList<frmAddContact *> records = form.findChildren<frmAddContact *>();
    const auto last = std::find_if(records.rbegin(), records.rend(),
                                   [](const frmAddContact *record) { return record->isVisible(); });
    if (last == records.rend())
        qFatal("no record is open");
    return **last;
}
} // namespace

class TestContactManager : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m = std::make_unique<ContactFixture>();
        m_anna = Contact_Add(Person("Anna", "Bell"));
        m_ben = Contact_Add(Person("Ben", "Carter"));
    }
    void cleanup() { m.reset(); }
    void GatherAndStore();
    void PeopleWhoAreGone();
    void Deleting();
    void ApplyingCanBeStopped();
    void PublishingCanBeStopped();
    void ViewingAndAdding();
    void OtherDatabase();
    void Rights();
    void ReportsOfTheSelection();
    void Menu();
    void ChosenColumns();

private:
    QString SelectionFile() const;

    std::unique_ptr<ContactFixture> m;
    int m_anna = 0;
    int m_ben = 0;
};

QString TestContactManager::SelectionFile() const
{
    QFile file(m->database.Directory() + "/temp/CurrentContactSelection.txt");
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : "none";
}

void TestContactManager::GatherAndStore()
{
    frmContact form;
    QCOMPARE(Texts(List(form, "ContactList2")), QStringList({"Bell, Anna", "Carter, Ben"}));
    TypeInto(form, "SearchBox", "ca");
    QCOMPARE(List(form, "ContactList2").CurrentRow(), 1);
    for (const char *at : {"SearchBox", "ContactList2"}) {
        QTest::keyClick(Find<QWidget>(form, at), Qt::Key_Return);
        frmAddContact &record = OpenRecord(form);
        QCOMPARE(record.windowTitle(), "Carter, Ben (RECORD 1 OF 1)");
        Press(record, "ExitBtn");
        QCOMPARE(Texts(List(form, "ContactInfo")), QStringList());
        QCOMPARE(List(form, "ContactList2").SelectedKeys(), QStringList(u'?' % QString::number(m_ben)));
    }
    Press(form, "AddCBtn");
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList("Carter, Ben"));
    QVERIFY(!List(form, "ContactList2").Selection()->hasSelection());
    QCOMPARE(SelectionFile(), QString(QString::number(m_ben) % u'\n'));
    QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM Ref"), QStringList(QString::number(m_ben)));

    SelectEverybody(form);
    QCOMPARE(List(form, "ContactInfo").Count(), 2);
    List(form, "ContactInfo").SelectOnly(0);
    Press(form, "RemCBtn");
    QCOMPARE(TestDatabase::Rows("SELECT ContactRef FROM Ref"), QStringList(QString::number(m_anna)));
    Press(form, "ClearCBtn");
    QCOMPARE(SelectionFile(), QString());
    QCOMPARE(Rows("Ref"), 0);
}

void TestContactManager::PeopleWhoAreGone()
{
    frmContact form;
    SelectEverybody(form);
    List(form, "ContactInfo").SelectOnly(1);
    ADO_Contact_Delete(ContactRef(m_anna));
    Sql(u"UPDATE Contacts SET Cust_Surname = 'Carter-Bell' WHERE ContactRef = " % QString::number(m_ben));
    List(form, "ContactList2").SelectOnly(0);
    Press(form, "AddCBtn");
    QCOMPARE(Texts(List(form, "ContactList2")), QStringList("Carter, Ben"));
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList("Carter, Ben"));

    Press(form, "RefBtn");
    QCOMPARE(Texts(List(form, "ContactList2")), QStringList("Carter-Bell, Ben"));
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList("Carter-Bell, Ben"));
    const QStringList ben(u'?' % QString::number(m_ben));
    QCOMPARE(List(form, "ContactInfo").SelectedKeys(), ben);
    List(form, "ContactList2").SelectOnly(0);
    Press(form, "RefBtn");
    QCOMPARE(List(form, "ContactList2").SelectedKeys(), ben);
    ADO_Contact_Delete(ContactRef(m_ben));
    Press(form, "RefBtn");
    QVERIFY(List(form, "ContactInfo").IsEmpty());
    QCOMPARE(Rows("Ref"), 0);
}

void TestContactManager::Deleting()
{
    const int chloe = Contact_Add(Person("Chloe", "Dawson"));
    frmContact form;
    SelectEverybody(form);
    List(form, "ContactList2").SelectAll();
    m->dialogs.Expect("Confirm Deletion", Confirm("Bell, Anna"), Dialogs::Answer::Yes);
    m->dialogs.Expect("Confirm Deletion", Confirm("Carter, Ben"), Dialogs::Answer::No);
    m->dialogs.Expect("Confirm Deletion", Confirm("Dawson, Chloe"), Dialogs::Answer::Yes);
    QTest::keyClick(form.findChild<QWidget *>("ContactList2"), Qt::Key_Delete);
    QVERIFY(!Contact_Check(ContactRef(m_anna)) && Contact_Check(ContactRef(m_ben)) &&
            !Contact_Check(ContactRef(chloe)));
    QCOMPARE(Texts(List(form, "ContactList2")), QStringList("Carter, Ben"));
    QVERIFY(!List(form, "ContactList2").IsSelected(0));
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList("Carter, Ben"));
    QCOMPARE(SelectionFile(), QString(QString::number(m_ben) % u'\n'));
}

void TestContactManager::ApplyingCanBeStopped()
{
    Concession_Add("Student", 20, 0, "");
    frmContact form;
    form.show();
    SelectEverybody(form);
    Choose(form, "CharList", "Student");
    Dialogs::Installed().serveEvents = [] { QApplication::processEvents(); };
    gConnection.ObserveStatements([&form](const QString &sql) {
        if (!sql.startsWith("INSERT"))
            return;
        QThread::msleep(400);
        // Until the box is there, the form is deaf: a second press must not start a second run.
        QTest::mouseClick(Find<QPushButton>(form, "AddToConBtn"), Qt::LeftButton);
        // Nor may the wheel choose other people, or the window go, while theirs are being read.
        auto *subset = Find<ComboBox>(form, "ConcessionList");
        QWheelEvent notch({}, subset->mapToGlobal(QPointF()), {}, {0, -120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(subset, &notch);
        QCOMPARE(subset->Model().Current(), 0);
        QVERIFY(!form.close() && form.isVisible());
    });
    m->driver.Expect("ProgressBox", [](QDialog &box) { Press(box, "CancelBtn"); });
    m->dialogs.Expect(
        "Contact Update",
        "Stopped after 1 of 2 contacts. Those have the characteristic, the rest are as they were.");
    Press(form, "AddToConBtn");
    gConnection.ObserveStatements({});
    QCOMPARE(Rows("ContactConcession"), 1);
    // Who was deleted elsewhere meanwhile gets nothing, and leaves the selection.
    ADO_Contact_Delete(ContactRef(m_ben));
    m->dialogs.Expect("Contact Update", "Another user has deleted these meanwhile, and they are left out:\n"
                                        "    Carter, Ben");
    m->dialogs.Expect("Contact Update", "Remove all previous contacts added to this type?",
                      Dialogs::Answer::No);
    Press(form, "AddToConBtn");
    QCOMPARE(Rows(u"ContactConcession WHERE ContactRef = " % QString::number(m_ben)), 0);
    QCOMPARE(Texts(List(form, "ContactInfo")), QStringList("Bell, Anna"));
    QCOMPARE(SelectionFile(), QString(QString::number(m_anna) % u'\n'));
}

/// Reports would miss people: the selection is published whole before they open.
void TestContactManager::PublishingCanBeStopped()
{
    frmContact form;
    form.show();
    List(form, "ContactList2").SelectAll();
    Dialogs::Installed().serveEvents = [] { QApplication::processEvents(); };
    gConnection.ObserveStatements([](const QString &sql) {
        if (sql.startsWith("INSERT INTO Ref"))
            QThread::msleep(400);
    });
    m->driver.Expect("ProgressBox", [](QDialog &box) { Press(box, "CancelBtn"); });
    m->dialogs.Expect("Selected Contacts",
                      "Stopped after 1 of 2 contacts. Reports and merges know of those, the rest are missing "
                      "there.");
    Press(form, "AddCBtn");
    gConnection.ObserveStatements({});
    QCOMPARE(SelectionFile(), QString(QString::number(m_anna) % u'\n'));
    m->driver.Expect("frmContactWiz", [](QDialog &wizard) { wizard.reject(); });
    Press(form, "RepBtn");
    QCOMPARE(SelectionFile(), QString(QString::number(m_anna) % u'\n' % QString::number(m_ben) % u'\n'));
}

void TestContactManager::ViewingAndAdding()
{
    frmContact form;
    form.show();
    QVERIFY(!Find<QPushButton>(form, "ViewBtn")->isEnabled());
    SelectEverybody(form);
    List(form, "ContactInfo").ClearSelection();
    List(form, "ContactList2").SelectOnly(1);
    Press(form, "ViewBtn");
    frmAddContact &anna = OpenRecord(form);
    QCOMPARE(anna.windowTitle(), u"Bell, Anna (RECORD 1 OF 2)"_qs);

    // Another person is added beside her, and each save is seen at once.
    Press(form, "AddBtn");
    frmAddContact &added = OpenRecord(form);
    QVERIFY(added.y() > anna.y());
    TypeName(added, "Dev", "Abbot");
    Press(added, "OKBtn");
    QCOMPARE(Texts(List(form, "ContactList2")), QStringList({"Abbot, Dev", "Bell, Anna", "Carter, Ben"}));
    QCOMPARE(List(form, "ContactList2").SelectedRows(), std::vector({2}));
    Press(added, "ExitBtn");
    QCOMPARE(gDialogResult, 0);
    Press(anna, "EditBtn");
    TypeInto(anna, "Surname", "Zimmer");
    Press(anna, "OKBtn");
    QVERIFY(Texts(List(form, "ContactInfo")).contains("Zimmer, Anna"));
    QVERIFY(anna.isVisible() && !added.isVisible());

    // She is brought to the front, not opened twice.
    List(form, "ContactList2").SelectOnly(2);
    QTest::keyClick(Find<QWidget>(form, "ContactList2"), Qt::Key_Return);
    QCOMPARE(&OpenRecord(form), &anna);
}

void TestContactManager::OtherDatabase()
{
    frmContact form;
    SelectEverybody(form);
    m.reset();
    m = std::make_unique<ContactFixture>();
    form.Form_Refresh();
    QVERIFY(List(form, "ContactList2").IsEmpty());
    QVERIFY(List(form, "ContactInfo").IsEmpty());
}

void TestContactManager::Rights()
{
    Concession_Add("Student", 20, 0, "");
    const auto open = []() -> std::unique_ptr<QWidget> {
        auto form = std::make_unique<frmContact>();
        SelectEverybody(*form);
        List(*form, "ContactList2").SelectAll();
        Choose(*form, "CharList", "Student");
        return form;
    };
    CheckRights(open, {{22, 3, "RepBtn", Left::Disabled},
                       {22, 9, "RepBtn", Left::Enabled},
                       {23, 1, "AddBtn", Left::Disabled},
                       {23, 2, "AddBtn", Left::Enabled},
                       {23, 3, "DelCBtn", Left::Disabled},
                       {23, 9, "DelCBtn", Left::Enabled},
                       {24, 3, "AddToConBtn", Left::Disabled},
                       {24, 3, "CharList", Left::Disabled},
                       {24, 9, "AddToConBtn", Left::Enabled},
                       {24, 0, "FindBtn", Left::Enabled}});
    for (const int level : {1, 2}) {
        gUserRights = RightsWith(31, level);
        frmContact form;
        QCOMPARE(Find<TypedCombo>(form, "CharList")->isEditable(), level == 2);
    }
}

void TestContactManager::ReportsOfTheSelection()
{
    frmContact form;
    for (const bool selected : {false, true}) {
        if (selected)
            SelectEverybody(form);
        m->driver.Expect(u"frmContactWiz"_qs, [selected](QDialog &wizard) {
            QCOMPARE(Find<QRadioButton>(wizard, u"ConOpt_1"_qs)->isChecked(), selected);
            wizard.close();
        });
        Press(form, "RepBtn");
    }
}

void TestContactManager::Menu()
{
    frmContact form;
    form.show();
    auto *menu = Find<QMenu>(form, "Menu");
    const auto command = [menu](const QString &name) { return menu->findChild<QAction *>(name); };
    emit Find<ListView>(form, "ContactList2")->customContextMenuRequested({5, 5});
    QVERIFY(!command("ID_Add")->isEnabled() && !command("ID_Delete")->isEnabled());
    command("ID_SelectAll")->trigger();
    menu->close();
    emit Find<ListView>(form, "ContactList2")->customContextMenuRequested({5, 5});
    QVERIFY(command("ID_Add")->isEnabled() && command("ID_Delete")->isEnabled());
    command("ID_Add")->trigger();
    menu->close();
    QCOMPARE(List(form, "ContactInfo").Count(), 2);
}

void TestContactManager::ChosenColumns()
{
    const auto concession = QString::number(Concession_Add("Student", 20, 0, ""));
    Sql(u"INSERT INTO ContactConcession (ConcessionRef,ContactRef) VALUES (" % concession % u',' %
        QString::number(m_ben) % u')');
    Sql(u"UPDATE Contacts SET Cust_Email = 'ben@x.org' WHERE ContactRef = " % QString::number(m_ben));
    {
        frmContact form;
        List(form, "ContactList2").SelectOnly(1);
        QMenu *columns = Find<QMenu>(form, "Menu")->actions().last()->menu();
        emit columns->aboutToShow();
        columns->actions().at(2)->trigger();
        QCOMPARE(List(form, "ContactList2").At(1).subItems, QStringList("ben@x.org"));
        QCOMPARE(List(form, "ContactList2").SelectedKeys(), QStringList(u'?' % QString::number(m_ben)));
    }
    frmContact form;
    QCOMPARE(List(form, "ContactList2").headerData(1, Qt::Horizontal, Qt::DisplayRole), "E-mail");
    Choose(form, "ConcessionList", "Student");
    QCOMPARE(List(form, "ContactList2").At(0).subItems, QStringList("ben@x.org"));
    QMenu *columns = Find<QMenu>(form, "Menu")->actions().last()->menu();
    emit columns->aboutToShow();
    columns->actions().at(2)->trigger();
    QCOMPARE(List(form, "ContactList2").columnCount(), 1);
}

QTEST_MAIN(TestContactManager)
#include "test_contact_manager.moc"
