#include "contacts/ContactForm.h"
#include "contacts/frmAddContact.h"
#include "platform/Clock.h"

#include <QScopeGuard>
#include <QTest>

class TestContactForm final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void AddEditAgain();
    void Walking();
    void Rights_data();
    void Rights();
    void AltReferences();
    void Addresses();
    void EveryFieldTakesAnyText();

private:
    std::unique_ptr<ContactFixture> m;
};

void TestContactForm::AddEditAgain()
{
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
    int key = 0;
    {
        frmAddContact form;
        QCOMPARE(form.windowTitle(), u"New Record"_qs);
        QCOMPARE(Find<QDateEdit>(form, "Dob")->date(), QDate(2026, 3, 9));
        QVERIFY(!Find<QTabWidget>(form, "SSActiveTabs1")->isTabEnabled(1));
        TypeName(form, "Anna", "O'Neil");
        TypeInto(form, "Addr1", "1 Mill Lane");
        Press(form, "OKBtn");
        QCOMPARE(form.windowTitle(), u"O'Neil, Anna"_qs);
        QCOMPARE(Caption(form, "OKBtn"), u"&Update Record"_qs);
        QVERIFY(IsReadOnly(form, "Surname"));
        QVERIFY(Find<QTabWidget>(form, "SSActiveTabs1")->isTabEnabled(1));

        Press(form, "EditBtn");
        QCOMPARE(form.windowTitle(), u"Editing O'Neil, Anna"_qs);
        QCOMPARE(Caption(form, "EditBtn"), u"&View"_qs);
        TypeInto(form, "Surname", "Bell");
        Press(form, "OKBtn");
        QCOMPARE(form.windowTitle(), u"Bell, Anna"_qs);
        Press(form, "ExitBtn");
        key = gDialogResult;
    }
    Clock::StopAt({});
    QCOMPARE(Stored(key).surname, u"Bell"_qs);
    QCOMPARE(Stored(key).dob, 20260309);
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 1);
}

void TestContactForm::Walking()
{
    const int anna = Contact_Add(Person("Anna", "Bell"));
    ContactRecord second = Person("Ben", "Carter");
    second.dob = 20051332;
    const int ben = Contact_Add(second);
    frmAddContact form;
    form.OpenRecords({Key(anna), Key(ben), "?4711"});
    QCOMPARE(form.windowTitle(), u"Bell, Anna (RECORD 1 OF 3)"_qs);
    QVERIFY(!Find<QPushButton>(form, "PrevBtn")->isEnabled());

    Press(form, "EditBtn");
    TypeName(form, "Ben", "Carter");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::Yes);
    m->dialogs.Expect("Update Contact", "Contact already exists in database.");
    Press(form, "NextBtn");
    QCOMPARE(form.windowTitle(), u"Carter, Ben (RECORD 2 OF 3)"_qs);
    QVERIFY(IsReadOnly(form, "Surname"));
    QCOMPARE(Stored(anna).forename, u"Anna"_qs);
    // A birthday that is no date must not show that of the person before.
    QCOMPARE(Find<QDateEdit>(form, "Dob")->date(), Clock::Today());

    Press(form, "EditBtn");
    TypeInto(form, "Addr2", "dropped");
    m->dialogs.Expect("Record Changed", "Okay to update record?", Dialogs::Answer::No);
    Press(form, "NextBtn");
    QCOMPARE(Stored(ben).addr2, QString());
    QCOMPARE(Find<QLineEdit>(form, "Forname")->text(), u"#Contact Deleted#"_qs);
    QVERIFY(!Find<QTabWidget>(form, "SSActiveTabs1")->isEnabled());
    QVERIFY(!Find<QPushButton>(form, "NextBtn")->isEnabled());
    QVERIFY(!IsShown(form, "EditBtn"));
    Press(form, "PrevBtn");
    QCOMPARE(Find<QLineEdit>(form, "Surname")->text(), u"Carter"_qs);
    QVERIFY(Find<QTabWidget>(form, "SSActiveTabs1")->isEnabled());

    Press(form, "NewBtn");
    QCOMPARE(form.windowTitle(), u"New Record"_qs);
    for (const char *button : {"PrevBtn", "NextBtn", "EditBtn", "MainRefBtn"})
        QVERIFY2(!IsShown(form, button), button);
    QCOMPARE(Find<QLineEdit>(form, "Surname")->text(), QString());
}

void TestContactForm::Rights_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("mayAdd");
    QTest::addColumn<bool>("mayEdit");
    QTest::newRow("look") << 1 << false << false;
    QTest::newRow("add") << 2 << true << false;
    QTest::newRow("change") << 3 << true << true;
    QTest::newRow("all") << 9 << true << true;
}

void TestContactForm::Rights()
{
    QFETCH(int, level);
    QFETCH(bool, mayAdd);
    QFETCH(bool, mayEdit);
    const int anna = Contact_Add(Person("Anna", "Bell"));
    gUserRights[23] = QChar(u'0' + level);
    gUserRights[27] = QChar(u'0' + level);
    gUserRights[31] = QChar(u'0' + level);
    frmAddContact form;
    QCOMPARE(Find<TypedCombo>(form, "CityList")->isEditable(), mayEdit);
    QVERIFY(Find<TypedCombo>(form, "CountyList")->isEditable());
    form.OpenRecords({Key(anna)});
    QCOMPARE(IsShown(form, "NewBtn"), mayAdd);
    QCOMPARE(IsShown(form, "EditBtn"), mayEdit);
    QVERIFY(!Find<QPushButton>(form, "OKBtn")->isEnabled());
    QVERIFY(!Find<QPushButton>(form, "NewCBtn")->isEnabled());
    QVERIFY(IsReadOnly(form, "Surname") && !Find<QWidget>(form, "CountyList")->isEnabled());
    if (mayEdit) {
        Press(form, "EditBtn");
        QVERIFY(Find<QPushButton>(form, "NewCBtn")->isEnabled());
    }
}

void TestContactForm::AltReferences()
{
    SetSystemValue(SystemRef::AltRefLabel + 1, "Union No");
    frmAddContact form;
    for (int i = 1; i <= 4; ++i)
        QCOMPARE(IsShown(form, u"RefID_" % QString::number(i)), i == 2);
    QCOMPARE(Find<QLabel>(form, "RefID_2_Label")->text(), u"Union No:"_qs);
}

void TestContactForm::Addresses()
{
    // The desktop's opener, which only notes what it was given.
    const QString bin = m->database.Directory() + "/bin";
    const QString opened = bin + "/opened";
    QDir().mkpath(bin);
    for (const auto &[name, line] : {std::pair(QString("xdg-open"), QString(u"echo \"$1\" >> " % opened)),
                                     {"xdg-mime", "echo x.desktop"}}) {
        QFile program(bin + "/" + name);
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write(QString(u"#!/bin/sh\n" % line % u"\n").toUtf8());
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QByteArray path = qgetenv("PATH");
    const auto restore = qScopeGuard([&path] { qputenv("PATH", path); });
    qputenv("PATH", bin.toUtf8() + ":" + path);
    const auto lines = [&opened] {
        QFile file(opened);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };

    frmAddContact form;
    Press(form, "EBtn");
    Press(form, "GoBtn");
    QString expected;
    for (const auto &[field, text, button, address] :
         {std::tuple("email", "anna@bell.example", "EBtn", "mailto:anna@bell.example"),
          {"URL", "bell.example", "GoBtn", "http://bell.example"},
          {"URL", "http://bell.example/x", "GoBtn", "http://bell.example/x"},
          {"URL", "https://bell.example", "GoBtn", "https://bell.example"}}) {
        TypeInto(form, field, text);
        Press(form, button);
        expected += address % QString("\n");
        QTRY_COMPARE(lines(), expected);
    }
}

void TestContactForm::EveryFieldTakesAnyText()
{
    const QString text =
        QString::fromUtf8("'; DELETE FROM Contacts; -- \"%1\" 100% [x] \\ \U0001F469\u200D\U0001F393");
    const QString longText = QString("It's 10% ").repeated(1112).left(10000);
    frmAddContact form;
    ContactRecord expected;
    for (const QString &each : {text, longText}) {
        for (QLineEdit *field : form.findChildren<QLineEdit *>()) {
            const bool ownField = !qobject_cast<QComboBox *>(field->parentWidget()) &&
                                  !qobject_cast<QAbstractSpinBox *>(field->parentWidget());
            if (ownField && !field->objectName().startsWith("Org_"))
                field->setText(each);
        }
        auto *notes = Find<QPlainTextEdit>(form, "Notes");
        notes->selectAll();
        notes->insertPlainText(each);
        Press(form, "OKBtn");
        const QStringList fields =
            Fields(Stored(TestDatabase::Value("SELECT MAX(ContactRef) AS K FROM Contacts").toInt()));
        QVERIFY2(fields.count(each) == 20, qPrintable(fields.join('|').left(1500)));
        Press(form, "EditBtn");
    }
    QCOMPARE(Rows("Contacts WHERE ContactRef > 1"), 1);
}

QTEST_MAIN(TestContactForm)
#include "test_contact_form.moc"
