#include "contacts/ConcessionODBC.h"
#include "contacts/ContactForm.h"
#include "contacts/frmAddContact.h"

#include <QTest>

namespace
{
const QString duplicate = QStringLiteral("Contact already exists in database.");
const QString changed = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");
const QString failure =
    QStringLiteral("A number of errors have been detected, please seek technical support.");
} // namespace

class TestContactFormLeaving final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void RequiredFields_data();
    void RequiredFields();
    void DuplicateKeepsTheData();
    void LockedDatabaseKeepsTheData();
    void CharacteristicsThatFail();
    void Leaving_data();
    void Leaving();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestContactFormLeaving::RequiredFields_data()
{
    QTest::addColumn<QString>("forename");
    QTest::addColumn<QString>("surname");
    QTest::addColumn<QString>("missing");
    QTest::newRow("both") << u""_qs << u""_qs << u"    Forename\n    Surname\n"_qs;
    QTest::newRow("surname") << u"Anna"_qs << u""_qs << u"    Surname\n"_qs;
    QTest::newRow("forename") << u""_qs << u"Bell"_qs << u"    Forename\n"_qs;
}

void TestContactFormLeaving::RequiredFields()
{
    QFETCH(QString, forename);
    QFETCH(QString, surname);
    QFETCH(QString, missing);
    frmAddContact form;
    Find<QLineEdit>(form, "Forname")->setText(forename);
    Find<QLineEdit>(form, "Surname")->setText(surname);
    QCOMPARE(Find<CaptionLabel>(form, "Label_1")->IsMissing(), forename.isEmpty());
    m->dialogs.Expect("Form not complete", u"The followings fields must be completed:\n" % missing);
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 0);
    QCOMPARE(Caption(form, "OKBtn"), u"&Add Record"_qs);
}

void TestContactFormLeaving::DuplicateKeepsTheData()
{
    Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    TypeName(form, "Anna", "Bell");
    TypeInto(form, "Addr1", "1 Mill Lane");
    TypeInto(form, "Telday", "01904");
    m->dialogs.Expect("Add Contact", duplicate);
    Press(form, "OKBtn");
    QCOMPARE(Caption(form, "OKBtn"), u"&Add Record"_qs);
    QCOMPARE(Find<QLineEdit>(form, "Telday")->text(), u"01904"_qs);
    TypeInto(form, "RefID_0", "2nd");
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE ReferenceID = '2nd' AND Cust_TelDay = '01904'"), 1);
}

void TestContactFormLeaving::LockedDatabaseKeepsTheData()
{
    if (TestDatabase::IsOnServer())
        QSKIP("a server locks rows, not the database");
    QString impatient = m->database.ConnectionText();
    QVERIFY(gConnection.Open(impatient.replace(";PWD=", ";LockWait=50;PWD=")));
    frmAddContact form;
    TypeName(form, "Anna", "Bell");
    Connection other;
    QVERIFY(other.Open(m->database.ConnectionText()));
    QVERIFY(other.Execute("BEGIN EXCLUSIVE"));
    m->dialogs.Expect("Veltrane Connection", failure);
    Press(form, "OKBtn");
    QCOMPARE(Find<QLineEdit>(form, "Surname")->text(), u"Bell"_qs);
    QVERIFY(!IsReadOnly(form, "Surname"));
    QVERIFY(other.Execute("ROLLBACK"));
    Press(form, "OKBtn");
    QCOMPARE(Rows("Contacts WHERE Cust_Surname = 'Bell'"), 1);
}

/// The person is stored, the characteristics are not: they stay on the screen, to be saved again.
void TestContactFormLeaving::CharacteristicsThatFail()
{
    Concession_Add("Student", 20, 0, "");
    const int anna = Contact_Add(Person("Anna", "Bell"));
    frmAddContact form;
    form.OpenRecords({Key(anna)});
    Press(form, "EditBtn");
    Find<QTabWidget>(form, "SSActiveTabs1")->setCurrentIndex(1);
    Press(form, "AddCBtn");
    Sql("ALTER TABLE ContactConcession RENAME TO Away");
    gConnection.OpenRecordset("SELECT * FROM ContactConcession");
    const QString source = gConnection.Errors().first().source;
    m->dialogs.Expect(source, failure);
    Press(form, "OKBtn");
    Sql("ALTER TABLE Away RENAME TO ContactConcession");
    QCOMPARE(Caption(form, "EditBtn"), u"&View"_qs);
    m->dialogs.Expect("Warning", changed, Dialogs::Answer::Yes);
    form.reject();
    QCOMPARE(Rows("ContactConcession"), 1);
}

void TestContactFormLeaving::Leaving_data()
{
    QTest::addColumn<bool>("complete");
    QTest::addColumn<Dialogs::Answer>("answer");
    QTest::addColumn<bool>("leaves");
    QTest::addColumn<int>("stored");
    QTest::newRow("save and go") << true << Dialogs::Answer::Yes << true << 1;
    QTest::newRow("save that fails") << false << Dialogs::Answer::Yes << false << 0;
    QTest::newRow("drop and go") << true << Dialogs::Answer::No << true << 0;
    QTest::newRow("stay") << true << Dialogs::Answer::Cancel << false << 0;
}

void TestContactFormLeaving::Leaving()
{
    QFETCH(bool, complete);
    QFETCH(Dialogs::Answer, answer);
    QFETCH(bool, leaves);
    QFETCH(int, stored);
    frmAddContact form;
    form.show();
    TypeInto(form, "Forname", "Anna");
    if (complete)
        TypeInto(form, "Surname", "Bell");
    m->dialogs.Expect("Warning", changed, answer);
    if (!complete)
        m->dialogs.Expect("Form not complete", "The followings fields must be completed:\n    Surname\n");
    gDialogResult = -7;
    QTest::keyClick(&form, Qt::Key_Escape);
    QCOMPARE(form.isVisible(), !leaves);
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), stored);
    if (leaves)
        QCOMPARE(gDialogResult > 1, stored == 1);
    if (leaves && stored == 0)
        QCOMPARE(gDialogResult, 0);
}

QTEST_MAIN(TestContactFormLeaving)
#include "test_contact_form_leaving.moc"
