#include "core/Session.h"
#include "database/Security.h"
#include "database/System.h"
#include "database/frmDBOptions.h"
#include "platform/Connection.h"
#include "support/ModalDriver.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include <memory>

/// The values of table System and the form that edits them.
class TestDBOptions : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void ValuesAreLoadedByTheirNumber();
    void AValueIsReplacedAsAWhole();
    void AFailedStatementIsPassedOver();
    void OnlyWhatChangedIsSaved_data();
    void OnlyWhatChangedIsSaved();
    void CancelSavesNothing();
    void TheTaxRateIsForcedIntoItsRange_data();
    void TheTaxRateIsForcedIntoItsRange();
    void VouchersMustDiffer_data();
    void VouchersMustDiffer();
    void FieldsAreReadOnlyByRight_data();
    void FieldsAreReadOnlyByRight();

private:
    std::unique_ptr<TestDatabase> m_database;
};

void TestDBOptions::init()
{
    m_database = std::make_unique<TestDatabase>();
    gUserRights = RightsBlank();
    TestDatabase::Run({"DELETE FROM System"});
    LoadSystemValues();
}

void TestDBOptions::cleanup()
{
    m_database.reset();
}

void TestDBOptions::ValuesAreLoadedByTheirNumber()
{
    TestDatabase::Run({"INSERT INTO System (Ref, SystemValue) VALUES (0, 'first')",
                       "INSERT INTO System (Ref, SystemValue) VALUES (20, 'last')",
                       "INSERT INTO System (Ref, SystemValue) VALUES (21, 'beyond')",
                       "INSERT INTO System (Ref, SystemValue) VALUES (-1, 'before')"});
    LoadSystemValues();
    QCOMPARE(SystemValue(0), QStringLiteral("first"));
    QCOMPARE(SystemValue(20), QStringLiteral("last"));
    QCOMPARE(SystemValue(SystemRef::CurrencySymbol), QString());
    TestDatabase::Run({"DELETE FROM System"});
    LoadSystemValues();
    QCOMPARE(SystemValue(0), QString());
}

void TestDBOptions::AValueIsReplacedAsAWhole()
{
    SetSystemValue(2, QStringLiteral("x"));
    StatementLog log;
    SetSystemValue(2, QStringLiteral("O'Neil`s"));
    QCOMPARE(log.Statements(),
             QStringList({"DELETE FROM System WHERE Ref = 2",
                          "INSERT INTO System (Ref, SystemValue) VALUES (2,'O''Neil``s')"}));
    QCOMPARE(SystemValue(2), QStringLiteral("O'Neil`s"));
    LoadSystemValues();
    QCOMPARE(SystemValue(2), QStringLiteral("O'Neil``s"));
    QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM System WHERE Ref = 2"), QStringLiteral("1"));
}

void TestDBOptions::AFailedStatementIsPassedOver()
{
    SetSystemValue(2, QStringLiteral("x"));
    ScriptedDialogs nobody;
    gConnection.Close();
    SetSystemValue(2, QStringLiteral("y"));
    QCOMPARE(SystemValue(2), QStringLiteral("y"));
    LoadSystemValues();
    QCOMPARE(SystemValue(2), QString());
}

void TestDBOptions::OnlyWhatChangedIsSaved_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("saved");
    QTest::newRow("nothing") << "CSymbol"
                             << "GBP" << QStringList();
    QTest::newRow("currency") << "CSymbol"
                              << "EUR" << QStringList{"2|EUR"};
    QTest::newRow("the rate travels with its label") << "TaxLabel"
                                                     << "GST" << QStringList{"16|GST", "17|20.00"};
    QTest::newRow("the rate alone is not stored") << "TaxRate"
                                                  << "5" << QStringList();
    QTest::newRow("a reference label") << "RefID_3"
                                       << "Old ref" << QStringList{"6|Old ref"};
    QTest::newRow("a voucher") << "VoucherLabel_4"
                               << "Gift" << QStringList{"14|Gift"};
    QTest::newRow("an emptied one") << "VoucherLabel_0"
                                    << "" << QStringList{"10|"};
}

void TestDBOptions::OnlyWhatChangedIsSaved()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QStringList, saved);
    SetSystemValue(SystemRef::CurrencySymbol, QStringLiteral("GBP"));
    SetSystemValue(SystemRef::TaxName, QStringLiteral("VAT"));
    SetSystemValue(SystemRef::TaxRate, QStringLiteral("20"));
    SetSystemValue(SystemRef::VoucherName, QStringLiteral("Grant"));
    frmDBOptions form;
    form.show();
    QCOMPARE(Find<QLineEdit>(form, "TaxRate")->text(), QStringLiteral("20"));
    Find<QLineEdit>(form, field)->setText(text);
    StatementLog log;
    Press(form, QStringLiteral("OKBtn"));
    QVERIFY(!form.isVisible());
    QStringList expected;
    for (const QString &value : saved) {
        const QString ref = value.section(u'|', 0, 0);
        expected.append(u"DELETE FROM System WHERE Ref = " % ref);
        expected.append(u"INSERT INTO System (Ref, SystemValue) VALUES (" % ref % u",'" %
                        value.section(u'|', 1) % u"')");
    }
    QCOMPARE(log.Statements(), expected);
}

void TestDBOptions::CancelSavesNothing()
{
    frmDBOptions form;
    form.show();
    TypeInto(form, QStringLiteral("CSymbol"), QStringLiteral("EUR"));
    StatementLog log;
    Press(form, QStringLiteral("CancelBtn"));
    QVERIFY(!form.isVisible());
    QVERIFY(log.Statements().isEmpty());
}

void TestDBOptions::TheTaxRateIsForcedIntoItsRange_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("left");
    QTest::newRow("in range") << "17.5"
                              << "17.50";
    QTest::newRow("too high") << "120"
                              << "100.00";
    QTest::newRow("the highest") << "100"
                                 << "100.00";
    QTest::newRow("empty") << ""
                           << "0.00";
    QTest::newRow("rounded") << "17.555"
                             << "17.56";
}

void TestDBOptions::TheTaxRateIsForcedIntoItsRange()
{
    QFETCH(QString, typed);
    QFETCH(QString, left);
    frmDBOptions form;
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    TypeInto(form, QStringLiteral("TaxRate"), typed);
    Find<QLineEdit>(form, "CSymbol")->setFocus();
    QCOMPARE(Find<QLineEdit>(form, "TaxRate")->text(), left);
}

void TestDBOptions::VouchersMustDiffer_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("refused");
    QTest::newRow("the same") << "Grant" << true;
    QTest::newRow("other case is another name") << "grant" << false;
    QTest::newRow("a blank more is another name") << "Grant " << false;
    QTest::newRow("two empty ones") << "" << false;
}

void TestDBOptions::VouchersMustDiffer()
{
    QFETCH(QString, typed);
    QFETCH(bool, refused);
    SetSystemValue(SystemRef::VoucherName, QStringLiteral("Grant"));
    frmDBOptions form;
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    Find<QTabWidget>(form, "OptionTabs")->setCurrentIndex(2);
    ScriptedDialogs user;
    if (refused) {
        for (int times = 0; times < 2; ++times)
            user.Expect(QStringLiteral("Voucher Names"), QStringLiteral("Vouchers must have unique names!"));
    }
    TypeInto(form, QStringLiteral("VoucherLabel_1"), typed);
    // Enter leaves no field, and still may not save two of one name.
    QTest::keyClick(Find<QWidget>(form, "VoucherLabel_1"), Qt::Key_Return);
    QCOMPARE(form.isVisible(), refused);
    if (!refused)
        return;
    Find<QLineEdit>(form, "VoucherLabel_3")->setFocus();
    QTRY_VERIFY(user.AllCame());
    QCOMPARE(form.focusWidget()->objectName(), QStringLiteral("VoucherLabel_1"));
    Press(form, QStringLiteral("CancelBtn"));
    QVERIFY(!form.isVisible());
}

void TestDBOptions::FieldsAreReadOnlyByRight_data()
{
    QTest::addColumn<int>("right");
    QTest::addColumn<QStringList>("locked");
    QTest::newRow("none") << 0 << QStringList();
    QTest::newRow("currency") << 95 << QStringList{"CSymbol"};
    QTest::newRow("tax") << 96 << QStringList{"TaxLabel", "TaxRate"};
    QTest::newRow("references") << 104 << QStringList{"RefID_0", "RefID_1", "RefID_2", "RefID_3"};
    QTest::newRow("vouchers") << 105
                              << QStringList{"VoucherLabel_0", "VoucherLabel_1", "VoucherLabel_2",
                                             "VoucherLabel_3", "VoucherLabel_4"};
}

void TestDBOptions::FieldsAreReadOnlyByRight()
{
    QFETCH(int, right);
    QFETCH(QStringList, locked);
    gUserRights[right] = u'3';
    const frmDBOptions form;
    QStringList readOnly;
    for (const QLineEdit *field : form.findChildren<QLineEdit *>()) {
        if (field->isReadOnly())
            readOnly.append(field->objectName());
    }
    readOnly.sort();
    QCOMPARE(readOnly, locked);
}

QTEST_MAIN(TestDBOptions)
#include "test_dboptions.moc"
