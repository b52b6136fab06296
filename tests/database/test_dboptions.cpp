#include "core/session/Session.h"
#include "database/connection/frmDBOptions.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "platform/connection/Connection.h"
#include "support/ModalDriver.h"
#include "support/RightsTable.h"
#include "support/ScriptedDialogs.h"
#include "support/StatementLog.h"
#include "support/TestDatabase.h"
#include "support/TestTable.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

#include <memory>

/// The values of table System and the form that edits them.
class TestDBOptions : public QObject
{
    Q_OBJECT

    static void Activate(QWidget &form)
    {
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
    }
    std::unique_ptr<TestDatabase> m_database;

private slots:
    void init()
    {
        m_database = std::make_unique<TestDatabase>();
        gUserRights = RightsBlank();
        LoadSystemValues();
    }
    void cleanup() { m_database.reset(); }

    void ValuesAreLoadedAndReplacedByTheirNumber()
    {
        TestDatabase::Run({"INSERT INTO System (Ref, SystemValue) VALUES (0, 'first')",
                           "INSERT INTO System (Ref, SystemValue) VALUES (20, 'last')",
                           "INSERT INTO System (Ref, SystemValue) VALUES (21, 'beyond')",
                           "INSERT INTO System (Ref, SystemValue) VALUES (-1, 'before')"});
        LoadSystemValues();
        QCOMPARE(SystemValue(0) % SystemValue(20), u"firstlast"_qs);
        QCOMPARE(SystemValue(SystemRef::CurrencySymbol), QString());

        for (const auto *text : {"x", "O'Neil`s"})
            SetSystemValue(2, QString::fromLatin1(text));
        QCOMPARE(SystemValue(2), u"O'Neil`s"_qs);
        LoadSystemValues();
        QCOMPARE(SystemValue(2), u"O'Neil``s"_qs);
        QCOMPARE(TestDatabase::Value("SELECT COUNT(*) FROM System WHERE Ref = 2"), u"1"_qs);

        gConnection.Close();
        QVERIFY(!SetSystemValue(2, "y"));
        QCOMPARE(SystemValue(2), u"O'Neil``s"_qs);
        LoadSystemValues();
        QCOMPARE(SystemValue(2), QString());
    }

    /// A rate that could not be stored is charged nowhere, and the label it came with stays as well.
    void WhatIsNotStoredIsNotUsed()
    {
        SetSystemValues({{SystemRef::TaxName, "VAT"}, {SystemRef::TaxRate, "17.5"}});
        const QStringList stored = TestDatabase::Rows("SELECT * FROM System ORDER BY Ref");
        frmDBOptions form;
        form.show();
        TypeInto(form, "TaxLabel", "GST");
        TypeInto(form, "TaxRate", "20");
        gConnection.ObserveStatements([](const QString &sql) {
            if (sql == u"DELETE FROM System WHERE Ref = 17")
                gConnection.Close();
        });
        ScriptedDialogs user;
        user.Expect("Database Options",
                    "These values could not be stored:\n    Tax Label: 'GST'\n    Tax Rate in %: '20.00'\n"
                    "All workstations continue with what the database has.\n"
                    "The connection cannot be used: no database is open.");
        Press(form, "OKBtn");
        gConnection.ObserveStatements({});
        QVERIFY(user.AllCame() && form.isVisible());
        QCOMPARE(SystemValue(SystemRef::TaxName) % SystemValue(SystemRef::TaxRate), u"VAT17.5"_qs);
        QVERIFY(m_database->Reconnect());
        QCOMPARE(TestDatabase::Rows("SELECT * FROM System ORDER BY Ref"), stored);
        Press(form, "OKBtn");
        QVERIFY(!form.isVisible());
        QCOMPARE(SystemValue(SystemRef::TaxName) % SystemValue(SystemRef::TaxRate), u"GST20.00"_qs);
    }

    void OnlyWhatChangedIsSaved_data()
    {
        const TestTable<QString, QString, QStringList> row{"field", "text", "saved"};
        row("nothing", "CSymbol", "GBP", {});
        row("currency", "CSymbol", "EUR", {"2|EUR"});
        row("the rate travels with its label", "TaxLabel", "GST", {"16|GST", "17|20.00"});
        row("the rate alone is not stored", "TaxRate", "5", {});
        row("a reference label", "RefID_3", "Old ref", {"6|Old ref"});
        row("a voucher", "VoucherLabel_4", "Gift", {"14|Gift"});
        row("an emptied one", "VoucherLabel_0", "", {"10|"});
    }
    void OnlyWhatChangedIsSaved()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(QStringList, saved);
        SetSystemValue(SystemRef::CurrencySymbol, "GBP");
        SetSystemValue(SystemRef::TaxName, "VAT");
        SetSystemValue(SystemRef::TaxRate, "20");
        SetSystemValue(SystemRef::VoucherName, "Grant");
        StatementLog log;
        for (const auto *button : {"CancelBtn", "OKBtn"}) {
            QVERIFY(log.Statements().isEmpty());
            frmDBOptions form;
            form.show();
            Find<QLineEdit>(form, field)->setText(text);
            Press(form, QString::fromLatin1(button));
            QVERIFY(!form.isVisible());
        }
        QStringList expected;
        for (const QString &value : saved) {
            const QString ref = value.section(u'|', 0, 0);
            expected.append(u"DELETE FROM System WHERE Ref = " % ref);
            expected.append(u"INSERT INTO System (Ref, SystemValue) VALUES (" % ref % u",'" %
                            value.section(u'|', 1) % u"')");
        }
        QCOMPARE(log.Statements(), expected);
    }

    void TheTaxRateIsForcedIntoItsRange()
    {
        frmDBOptions form;
        Activate(form);
        for (const auto &[typed, left] :
             {std::pair{"17.5", "17.50"}, {"120", "100.00"}, {"", "0.00"}, {"17.555", "17.56"}}) {
            TypeInto(form, "TaxRate", QString::fromLatin1(typed));
            Find<QLineEdit>(form, "CSymbol")->setFocus();
            QCOMPARE(Find<QLineEdit>(form, "TaxRate")->text(), QString::fromLatin1(left));
        }
    }

    void VouchersMustDiffer_data()
    {
        const TestTable<QString, bool> row{"typed", "refused"};
        row("the same", "Grant", true);
        row("other case is another name", "grant", false);
        row("two empty ones", "", false);
    }
    void VouchersMustDiffer()
    {
        QFETCH(QString, typed);
        QFETCH(bool, refused);
        SetSystemValue(SystemRef::VoucherName, "Grant");
        frmDBOptions form;
        Activate(form);
        Find<QTabWidget>(form, "OptionTabs")->setCurrentIndex(2);
        ScriptedDialogs user;
        for (int times = 0; times < (refused ? 2 : 0); ++times)
            user.Expect("Voucher Names", "Vouchers must have unique names!");
        Find<QLineEdit>(form, "VoucherLabel_1")->setFocus();
        QCoreApplication::processEvents();
        TypeInto(form, "VoucherLabel_1", typed);
        // Enter leaves no field, and still may not save two of one name.
        QTest::keyClick(Find<QWidget>(form, "VoucherLabel_1"), Qt::Key_Return);
        QCOMPARE(form.isVisible(), refused);
        if (!refused)
            return;
        Find<QLineEdit>(form, "VoucherLabel_3")->setFocus();
        QTRY_VERIFY(user.AllCame());
        QCOMPARE(form.focusWidget()->objectName(), u"VoucherLabel_1"_qs);
        Press(form, "CancelBtn");
        QVERIFY(!form.isVisible());
    }

    void FieldsAreReadOnlyByRight()
    {
        const QList<std::pair<int, QString>> locked{
            {0, ""},
            {95, "CSymbol"},
            {96, "TaxLabel TaxRate"},
            {104, "RefID_0 RefID_1 RefID_2 RefID_3"},
            {105, "VoucherLabel_0 VoucherLabel_1 VoucherLabel_2 VoucherLabel_3 VoucherLabel_4"},
        };
        for (const auto &[right, fields] : locked) {
            gUserRights = RightsWith(right, 3);
            const frmDBOptions form;
            QStringList readOnly;
            for (const QLineEdit *field : form.findChildren<QLineEdit *>()) {
                if (field->isReadOnly())
                    readOnly.append(field->objectName());
            }
            readOnly.sort();
            QCOMPARE(readOnly.join(u' '), fields);
        }
    }
};

QTEST_MAIN(TestDBOptions)
#include "test_dboptions.moc"
