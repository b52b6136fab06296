#include "contacts/ContactForm.h"
#include "contacts/record/frmAddContact.h"
#include "database/values/DecodeDateFunc.h"
#include "organisations/Companies.h"
#include "organisations/record/OrganisationModule.h"
#include "organisations/record/frmAddOrg.h"
#include "platform/desktop/Clock.h"
#include "support/RightsTable.h"
#include "support/StatementLog.h"

#include <QTest>

// What the record screens of people and of organisations have in common, on both of them.

using Dialogs::Answer;

namespace
{
const QString changed = QStringLiteral("Some of the data has changed.\nOkay to update before exiting?");
const QString incomplete = QStringLiteral("The followings fields must be completed:\n");

struct Subject {
    QString word; ///< "Contact", as the boxes have it
    QString okBtn;
    QString nameField;
    QString placeholderField;
    QString missing;
    QString rows;   ///< all of them but the sentinel
    QString stored; ///< the fax number of one, up to its key
    int right;
    std::function<std::unique_ptr<RecordForm>()> open;
    std::function<int(const QString &name)> add;
    std::function<bool(int key)> erase;

    bool IsPerson() const { return word == "Contact"; }
    QString Title(const QString &name) const { return IsPerson() ? QString(name % u", Anna") : name; }
    QString Placeholder() const { return u'#' % word % u" Deleted#"; }
    /// Types a new record of a name, which is the same as one that `add` stored.
    void Type(QWidget &form, const QString &name) const
    {
        TypeInto(form, nameField, name);
        TypeInto(form, "Addr1", IsPerson() ? QString("1 Mill Lane") : Company(name).addr1);
        if (IsPerson())
            TypeInto(form, "Forname", "Anna");
    }
    QString Fax(int key) const { return TestDatabase::Value(stored % SqlNumber(key)); }
    std::pair<QString, QString> Duplicate(const QString &deed) const
    {
        return {deed % u' ' % word, word % u" already exists in database."};
    }
};

const Subject subjects[] = {
    {"Contact", "OKBtn", "Surname", "Forname", "    Forename\n    Surname\n", "Contacts WHERE ContactRef > 1",
     "SELECT Cust_Fax FROM Contacts WHERE ContactRef = ", 23,
     [] { return std::make_unique<frmAddContact>(); },
     [](const QString &name) { return Contact_Add(Person("Anna", name)); },
     [](int key) { return ADO_Contact_Delete(ContactRef(key)); }},
    {"Organisation", "OkBtn", "OrgName", "OrgName", "    Name\n", "Organisations WHERE OrganRef > 1",
     "SELECT Fax FROM Organisations WHERE OrganRef = ", 25, [] { return std::make_unique<frmAddOrg>(); },
     [](const QString &name) { return Organisation_Add(Company(name)); },
     [](int key) { return Organisation_Delete(OrganRef(key)); }}};

QTabWidget &Tabs(QWidget &form)
{
    return *Find<QTabWidget>(form, "SSActiveTabs1");
}

/// The field shows today for a birthday that nobody knows; only one that was entered is stored.
void KeepsAnUnknownBirthday(int person)
{
    const QString unknown = u" WHERE Cust_DOB IS NULL AND ContactRef = " % SqlNumber(person);
    QCOMPARE(Stored(person).dob, 0);
    Sql(u"UPDATE Contacts SET Cust_DOB = NULL WHERE ContactRef = " % SqlNumber(person));
    frmAddContact form;
    form.OpenRecords({Key(person)});
    Press(form, "EditBtn");
    auto *dob = Find<DateField>(form, "Dob");
    QCOMPARE(dob->Day(), Clock::Today());
    QCOMPARE(dob->palette().text(), dob->palette().placeholderText());
    TypeInto(form, "Fax", "01905");
    Press(form, "OKBtn");
    QCOMPARE(Rows(u"Contacts" % unknown), 1);

    Press(form, "EditBtn");
    dob->setFocus();
    QTest::keyClicks(dob, u'\b' % dob->text().right(1));
    QVERIFY(dob->palette().text() != dob->palette().placeholderText());
    Press(form, "OKBtn");
    QCOMPARE(Stored(person).dob, DateToInt(Clock::Today()));
}
} // namespace

class TestRecordForms final : public QObject
{
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<ContactFixture>(); }
    void cleanup() { m.reset(); }
    void AddEditAgain_data() { EachSubject(); }
    void AddEditAgain();
    void Walking_data() { EachSubject(); }
    void Walking();
    void FocusStays_data() { EachSubject(); }
    void FocusStays();
    void Leaving_data();
    void Leaving();
    void Deleted_data();
    void Deleted();
    void Rights_data() { EachSubject(); }
    void Rights();
    void LockedDatabase();

private:
    static void EachSubject()
    {
        QTest::addColumn<int>("subject");
        QTest::newRow("person") << 0;
        QTest::newRow("organisation") << 1;
    }
    std::unique_ptr<ContactFixture> m;
};

/// Whatever field the hands are at, a mnemonic leaves the focus on something that takes keys.
void TestRecordForms::FocusStays()
{
    QFETCH(int, subject);
    const Subject &s = subjects[subject];
    const QStringList keys{u'?' % SqlNumber(s.add("Bell")), u'?' % SqlNumber(s.add("Carter"))};
    const std::unique_ptr<RecordForm> form = s.open();
    form->OpenRecords(keys);
    form->show();
    QApplication::setActiveWindow(form.get());
    int tried = 0;
    for (QWidget *field : form->findChildren<QWidget *>()) {
        Press(*form, "EditBtn");
        const bool isField = field->isVisible() && field->isEnabled() && field->focusPolicy() & Qt::TabFocus;
        for (const QString &button : {s.okBtn, u"NextBtn"_qs, u"PrevBtn"_qs, u"MainRefBtn"_qs}) {
            auto *pressed = form->findChild<QAbstractButton *>(button);
            if (!isField || !pressed || !pressed->isEnabled())
                continue;
            field->setFocus();
            pressed->click();
            const QWidget *focus = QApplication::focusWidget();
            QVERIFY2(focus && focus->isEnabled() && form->isAncestorOf(focus),
                     qPrintable(QString(field->objectName() % u", " % button)));
            ++tried;
        }
        if (Caption(*form, "EditBtn") == "&View")
            Press(*form, "EditBtn");
    }
    QVERIFY(tried > 50);
}

void TestRecordForms::AddEditAgain()
{
    QFETCH(int, subject);
    const Subject &s = subjects[subject];
    Clock::StopAt(QDateTime(QDate(2026, 3, 9), QTime(12, 0)));
    const std::unique_ptr<RecordForm> form = s.open();
    Clock::StopAt({});
    QCOMPARE(form->windowTitle(), u"New Record"_qs);
    QCOMPARE(Tabs(*form).isTabEnabled(1), !s.IsPerson());
    QCOMPARE(IsShown(*form, "NewBtn"), s.IsPerson());
    m->dialogs.Expect("Form not complete", incomplete % s.missing);
    Press(*form, s.okBtn);
    TypeInto(*form, s.nameField, "Bell");
    if (s.IsPerson()) {
        m->dialogs.Expect("Form not complete", incomplete % "    Forename\n");
        Press(*form, s.okBtn);
    }
    QCOMPARE(Rows(s.rows), 0);
    s.Type(*form, "O'Neil");
    Press(*form, s.okBtn);
    QCOMPARE(form->windowTitle(), s.Title("O'Neil"));
    QCOMPARE(Caption(*form, s.okBtn), u"&Update Record"_qs);
    QVERIFY(IsReadOnly(*form, s.nameField) && Tabs(*form).isTabEnabled(1) && IsShown(*form, "NewBtn"));

    Press(*form, "EditBtn");
    QCOMPARE(form->windowTitle(), QString(u"Editing " % s.Title("O'Neil")));
    QCOMPARE(Caption(*form, "EditBtn"), u"&View"_qs);
    TypeInto(*form, "Fax", "01904");
    Press(*form, s.okBtn);
    if (!s.IsPerson())
        m->dialogs.Expect("New Record", "Clear forms?", Answer::Yes);
    Press(*form, "NewBtn");
    Press(*form, "ExitBtn");
    QCOMPARE(s.Fax(gDialogResult), u"01904"_qs); // the one saved, not the one begun
    QCOMPARE(Rows(s.rows), 1);
    if (s.IsPerson())
        KeepsAnUnknownBirthday(gDialogResult);
}

/// A name that another record has is refused, and what was typed stays, but when the user moves on.
void TestRecordForms::Walking()
{
    QFETCH(int, subject);
    const Subject &s = subjects[subject];
    const int first = s.add("Bell");
    const int second = s.add("Carter");
    const std::unique_ptr<RecordForm> form = s.open();
    form->OpenRecords({Key(first), Key(second)});
    QCOMPARE(form->windowTitle(), QString(s.Title("Bell") % u" (RECORD 1 OF 2)"));
    QVERIFY(!Find<QPushButton>(*form, "PrevBtn")->isEnabled());
    Press(*form, "EditBtn");
    s.Type(*form, "Carter");
    TypeInto(*form, "Fax", "1");
    const auto [title, text] = s.Duplicate("Update");
    m->dialogs.Expect(title, text);
    Press(*form, s.okBtn);
    QCOMPARE(Find<QLineEdit>(*form, "Fax")->text(), u"1"_qs);
    m->dialogs.Expect("Record Changed", "Okay to update record?", Answer::Yes);
    m->dialogs.Expect(title, text);
    Press(*form, "NextBtn");
    QCOMPARE(form->windowTitle(), QString(s.Title("Carter") % u" (RECORD 2 OF 2)"));
    QVERIFY(IsReadOnly(*form, s.nameField) && !Find<QPushButton>(*form, "NextBtn")->isEnabled());

    for (const Answer answer : {Answer::No, Answer::Yes}) {
        Press(*form, "EditBtn");
        TypeInto(*form, "Fax", "2");
        m->dialogs.Expect("Record Changed", "Okay to update record?", answer);
        const bool isLast = Find<QPushButton>(*form, "PrevBtn")->isEnabled();
        Press(*form, isLast ? "PrevBtn" : "NextBtn");
    }
    QCOMPARE(s.Fax(first), u"2"_qs);
    QCOMPARE(s.Fax(second), QString());

    for (const Answer answer : {Answer::No, Answer::Yes}) {
        if (!s.IsPerson())
            m->dialogs.Expect("New Record", "Clear forms?", answer);
        if (!s.IsPerson() || answer == Answer::Yes)
            Press(*form, "NewBtn");
        QCOMPARE(Find<QLineEdit>(*form, s.nameField)->text().isEmpty(), answer == Answer::Yes);
    }
    for (const char *button : {"PrevBtn", "NextBtn", "EditBtn"})
        QVERIFY2(!IsShown(*form, button), button);
    s.Type(*form, "Bell");
    m->dialogs.Expect("Add " % s.word, text);
    Press(*form, s.okBtn);
    QCOMPARE(Caption(*form, s.okBtn), u"&Add Record"_qs);
}

void TestRecordForms::Leaving_data()
{
    QTest::addColumn<int>("subject");
    QTest::addColumn<bool>("complete");
    QTest::addColumn<Answer>("answer");
    QTest::addColumn<bool>("leaves");
    for (const int subject : {0, 1}) {
        const QByteArray word = subjects[subject].word.toLatin1();
        QTest::addRow("%s, save and go", word.data()) << subject << true << Answer::Yes << true;
        QTest::addRow("%s, save that fails", word.data()) << subject << false << Answer::Yes << false;
        QTest::addRow("%s, drop and go", word.data()) << subject << true << Answer::No << true;
        QTest::addRow("%s, stay", word.data()) << subject << true << Answer::Cancel << false;
    }
}

void TestRecordForms::Leaving()
{
    QFETCH(int, subject);
    QFETCH(bool, complete);
    QFETCH(Answer, answer);
    QFETCH(bool, leaves);
    const Subject &s = subjects[subject];
    const bool stored = complete && answer == Answer::Yes;
    const std::unique_ptr<RecordForm> form = s.open();
    form->show();
    TypeInto(*form, "Fax", "1");
    if (complete)
        s.Type(*form, "Bell");
    m->dialogs.Expect("Warning", changed, answer);
    if (!complete)
        m->dialogs.Expect("Form not complete", incomplete % s.missing);
    gDialogResult = -7;
    QTest::keyClick(form.get(), Qt::Key_Escape);
    QCOMPARE(form->isVisible(), !leaves);
    QCOMPARE(Rows(s.rows), stored ? 1 : 0);
    if (leaves)
        QCOMPARE(s.Fax(gDialogResult), stored ? u"1"_qs : QString());
    if (leaves && !stored)
        QCOMPARE(gDialogResult, 0);
}

void TestRecordForms::Deleted_data()
{
    QTest::addColumn<int>("subject");
    QTest::addColumn<QString>("button");
    QTest::addColumn<Answer>("keeps");
    for (const int subject : {0, 1}) {
        const QByteArray word = subjects[subject].word.toLatin1();
        for (const char *button : {"update", "NextBtn", "ExitBtn"}) {
            QTest::addRow("%s, %s, keep", word.data(), button) << subject << QString(button) << Answer::Yes;
            QTest::addRow("%s, %s, let go", word.data(), button) << subject << QString(button) << Answer::No;
        }
        QTest::addRow("%s, edit", word.data()) << subject << u"EditBtn"_qs << Answer::None;
    }
    QTest::addRow("Contact, refresh") << 0 << u"MainRefBtn"_qs << Answer::None;
}

/// Another workstation deletes the record while it is on the screen: nothing is written for it, and what
/// was typed is not lost without a word.
void TestRecordForms::Deleted()
{
    QFETCH(int, subject);
    QFETCH(QString, button);
    QFETCH(Answer, keeps);
    const Subject &s = subjects[subject];
    const int gone = s.add("Bell");
    const int other = s.add("Carter");
    const std::unique_ptr<RecordForm> form = s.open();
    const bool edits = keeps != Answer::None;
    form->OpenRecords({Key(gone), Key(other)}, edits ? RecordForm::Open::Edit : RecordForm::Open::View);
    form->show();
    Tabs(*form).setCurrentIndex(1);
    if (edits)
        TypeInto(*form, "Fax", "1");
    QVERIFY(s.erase(gone));
    const StatementLog log;
    if (button == "NextBtn")
        m->dialogs.Expect("Record Changed", "Okay to update record?", Answer::Yes);
    if (button == "ExitBtn")
        m->dialogs.Expect("Warning", changed, Answer::Yes);
    if (edits)
        m->dialogs.Expect("Record Deleted",
                          u"Another user has deleted this " % s.word.toLower() %
                              u" meanwhile.\nOkay to keep what is on the screen as a new record?",
                          keeps);
    Press(*form, button == "update" ? s.okBtn : button);
    QVERIFY2(log.Statements().filter(QRegularExpression("^(INSERT|UPDATE|DELETE)")).isEmpty(),
             qPrintable(log.Statements().join('\n')));

    if (keeps == Answer::Yes) {
        QCOMPARE(form->windowTitle(), u"New Record"_qs);
        Press(*form, s.okBtn);
        QCOMPARE(Rows(s.rows), 2);
        QCOMPARE(TestDatabase::Rows(s.stored % "0 OR " % (s.IsPerson() ? "Cust_Fax" : "Fax") % " = '1'"),
                 QStringList("1"));
        return;
    }
    QCOMPARE(Rows(s.rows), 1);
    QCOMPARE(form->isVisible(), button != "ExitBtn");
    if (button == "NextBtn") {
        QCOMPARE(form->windowTitle(), QString(s.Title("Carter") % u" (RECORD 2 OF 2)"));
        Tabs(*form).setCurrentIndex(1);
        Press(*form, "PrevBtn");
    }
    QCOMPARE(Find<QLineEdit>(*form, s.placeholderField)->text(), s.Placeholder());
    QVERIFY(!Tabs(*form).isEnabled() && Tabs(*form).currentIndex() == 0);
    QVERIFY(!Find<QPushButton>(*form, s.okBtn)->isEnabled() && !IsShown(*form, "EditBtn"));
    if (button == "ExitBtn")
        return;
    Press(*form, "NextBtn");
    QVERIFY(Tabs(*form).isEnabled());
    QCOMPARE(Find<QLineEdit>(*form, s.nameField)->text(), u"Carter"_qs);
}

void TestRecordForms::Rights()
{
    QFETCH(int, subject);
    const Subject &s = subjects[subject];
    const int key = s.add("Bell");
    const QByteArray ok = s.okBtn.toLatin1();
    const QByteArray name = s.nameField.toLatin1();
    const auto open = [&]() -> std::unique_ptr<QWidget> {
        std::unique_ptr<RecordForm> form = s.open();
        form->OpenRecords({Key(key)}, RecordForm::Open::Edit);
        return form;
    };
    CheckRights(open, {{s.right, 1, "NewBtn", Left::Hidden},
                       {s.right, 1, "EditBtn", Left::Hidden},
                       {s.right, 1, ok.data(), Left::Disabled},
                       {s.right, 2, "NewBtn", Left::Enabled},
                       {s.right, 2, "EditBtn", Left::Hidden},
                       {s.right, 2, name.data(), Left::Locked},
                       {s.right, 3, "EditBtn", Left::Enabled},
                       {s.right, 3, name.data(), Left::Editable}});
    if (s.IsPerson())
        CheckRights(open, {{31, 2, "NewCBtn", Left::Disabled}});
    const std::pair<int, const char *> lists[] = {{27, "CityList"}, {28, "CountyList"}, {29, "CountryList"},
                                                  {26, "DesList"},  {30, "EthnicList"}, {25, "OrganList"}};
    for (const auto &[right, list] : lists) {
        gUserRights = RightsWith(right, 2);
        const std::unique_ptr<RecordForm> form = s.open();
        for (const auto &[ofRight, typed] : lists) {
            if (auto *combo = form->findChild<TypedCombo *>(typed))
                QVERIFY2(combo->isEditable() == (ofRight != right), typed);
        }
    }
}

void TestRecordForms::LockedDatabase()
{
    if (TestDatabase::IsOnServer())
        QSKIP("a server locks rows, not the database");
    const Subject &s = subjects[0];
    QString impatient = m->database.ConnectionText();
    QVERIFY(gConnection.Open(impatient.replace(";PWD=", ";LockWait=50;PWD=")));
    const std::unique_ptr<RecordForm> form = s.open();
    s.Type(*form, "Bell");
    Connection other;
    QVERIFY(other.Open(m->database.ConnectionText()));
    QVERIFY(other.Execute("BEGIN EXCLUSIVE"));
    m->dialogs.Expect("Veltrane Connection",
                      "A number of errors have been detected, please seek technical support.");
    Press(*form, s.okBtn);
    QCOMPARE(Find<QLineEdit>(*form, s.nameField)->text(), u"Bell"_qs);
    QVERIFY(!IsReadOnly(*form, s.nameField));
    QVERIFY(other.Execute("ROLLBACK"));
    Press(*form, s.okBtn);
    QCOMPARE(Rows(s.rows), 1);
}

QTEST_MAIN(TestRecordForms)
#include "test_record_forms.moc"
