#include "Bench.h"

#include "contacts/record/frmAddContact.h"
#include "core/session/Session.h"
#include "database/statements/Security.h"
#include "database/statements/System.h"
#include "forms/fields/TypedCombo.h"
#include "platform/connection/Connection.h"
#include "platform/engines/FileText.h"
#include "support/TestDatabase.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <sqlite3.h>

#include <memory>

// The record of a person among very many others: how soon it opens, how soon the next one is shown, and what
// a key press costs in its longest drop-down list.

namespace
{
constexpr int towns = 10'000;
constexpr int organisations = 10'000;
constexpr int people = 50'000;
constexpr int walked = 40;
constexpr double mostMillisecondsAKey = 50;

/// A separate handle that runs the program's statements by hand.
class ByHand final
{
public:
    ByHand()
    {
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &m_handle) == SQLITE_OK &&
                           InstallTextComparison(m_handle),
                       QStringLiteral("the twin cannot open the database"));
    }
    ~ByHand() { sqlite3_close(m_handle); }
    ByHand(const ByHand &) = delete;
    ByHand &operator=(const ByHand &) = delete;

    void Run(const QString &sql)
    {
        Bench::Require(sqlite3_exec(m_handle, sql.toUtf8().constData(), nullptr, nullptr, nullptr) ==
                           SQLITE_OK,
                       QString::fromUtf8(sqlite3_errmsg(m_handle)));
    }

    /// Reads every row of the queries into values of the program's kind, and drops them.
    double Read(const QStringList &queries)
    {
        qsizetype read = 0;
        const double taken = Bench::Milliseconds([&] {
            for (const QString &query : queries)
                read += ReadOne(query);
        });
        Bench::Require(read > 0, QStringLiteral("nothing was read"));
        return taken;
    }

private:
    qsizetype ReadOne(const QString &query)
    {
        sqlite3_stmt *statement = nullptr;
        Bench::Require(sqlite3_prepare_v2(m_handle, query.toUtf8().constData(), -1, &statement, nullptr) ==
                           SQLITE_OK,
                       query);
        qsizetype read = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                if (sqlite3_column_type(statement, column) != SQLITE_TEXT) {
                    read += sqlite3_column_int64(statement, column) > 0 ? 1 : 0;
                    continue;
                }
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
                read += QString::fromUtf8(text, sqlite3_column_bytes(statement, column)).size();
            }
        }
        sqlite3_finalize(statement);
        return read;
    }

    sqlite3 *m_handle = nullptr;
};

struct Fixture {
    Fixture()
    {
        gUserRights = RightsBlank();
        LoadSystemValues();
        byHand.Run(QStringLiteral("BEGIN"));
        for (int i = 0; i < towns; ++i)
            byHand.Run(u"INSERT INTO City (City, ReferenceID) VALUES ('Newton " %
                       QString::number(i * 7919 % towns) % u" on the Wold','')");
        for (int i = 0; i < organisations; ++i)
            byHand.Run(u"INSERT INTO Organisations (OrganName, ReferenceID, City, County, Country) VALUES "
                       u"('Miller and Sons " %
                       QString::number(i * 7919 % organisations) % u"','',1,1,1)");
        for (int i = 0; i < people; ++i) {
            const QString number = QString::number(i);
            byHand.Run(u"INSERT INTO Contacts (Cust_Forename, Cust_Surname, Cust_Addr1, ReferenceID, "
                       u"Cust_Designation, Cust_City, Cust_County, Cust_Country, Cust_Ethnicgroup, OrganRef, "
                       u"ContactContactRef, Cust_DOB, Cust_Sex) VALUES ('Margaret','Featherstone " %
                       number % u"','1 Micklegate','ST-" % number % u"',1," % QString::number(2 + i % towns) %
                       u",1,1,1," % QString::number(2 + i % organisations) % u',' %
                       QString::number(2 + i / 2) % u",19720314,1)");
        }
        for (int i = 0; i < 20; ++i) {
            const QString number = QString::number(i);
            byHand.Run(u"INSERT INTO Concessions (Name, ReferenceID) VALUES ('Characteristic " % number %
                       u"','')");
            byHand.Run(u"INSERT INTO RoleTypes (Name, ReferenceID) VALUES ('Role " % number % u"','')");
        }
        byHand.Run(QStringLiteral("INSERT INTO ContactConcession (ContactRef, ConcessionRef) SELECT "
                                  "ContactRef, 1 + ContactRef % 20 FROM Contacts"));
        byHand.Run(QStringLiteral("COMMIT"));
        for (int i = 0; i < walked; ++i)
            keys.append(u'?' % QString::number(2 + i * (people / walked)));
    }

    TestDatabase database;
    ByHand byHand;
    QStringList keys;
};

QStringList StatementsOf(const std::function<void()> &work)
{
    QStringList statements;
    gConnection.ObserveStatements([&statements](const QString &sql) { statements.append(sql); });
    work();
    gConnection.ObserveStatements({});
    return statements;
}

void ShowWhole(QWidget &form)
{
    form.show();
    QApplication::processEvents();
    Bench::Require(form.isVisible(), QStringLiteral("no form"));
}

double Open()
{
    std::unique_ptr<frmAddContact> form;
    return Bench::Milliseconds([&form] {
        form = std::make_unique<frmAddContact>();
        ShowWhole(*form);
    });
}

const Bench::Registration opening("record: open a new person beside 70,000 rows", [] {
    const auto fixture = std::make_shared<Fixture>();
    const QStringList queries = StatementsOf([] { Open(); });
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 3;
    benchmark.ours = [fixture] { return Open(); };
    benchmark.twin = [fixture, queries] { return fixture->byHand.Read(queries); };
    return benchmark;
});

double Walk(frmAddContact &form, const QStringList &keys)
{
    form.OpenRecords(keys);
    ShowWhole(form);
    auto *next = form.findChild<QPushButton *>(QStringLiteral("NextBtn"));
    return Bench::Milliseconds([next] {
               while (next->isEnabled()) {
                   next->click();
                   QApplication::processEvents();
               }
           }) /
           static_cast<double>(keys.size() - 1);
}

/// The twin reads what one record needs and repaints the form, which showing the next record always requires.
const Bench::Registration nextRecord("record: open the next of 50,000 people", [] {
    const auto fixture = std::make_shared<Fixture>();
    const auto form = std::make_shared<frmAddContact>();
    const QStringList queries = StatementsOf([&] { Walk(*form, fixture->keys.mid(0, 1)); });
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 3;
    benchmark.ours = [fixture, form] { return Walk(*form, fixture->keys); };
    benchmark.twin = [fixture, form, queries] {
        return fixture->byHand.Read(queries) + Bench::Milliseconds([&form] {
                   form->update();
                   QApplication::processEvents();
               });
    };
    return benchmark;
});

/// The time of the slowest key press while a name is typed.
double SlowestKey(frmAddContact &form, const QString &name, const QString &text)
{
    auto *list = form.findChild<TypedCombo *>(name);
    list->lineEdit()->clear();
    list->setFocus();
    double slowest = 0;
    for (const QChar letter : text) {
        slowest = qMax(slowest, Bench::Milliseconds([&] {
                           QTest::keyClick(list->lineEdit(), letter.toLatin1());
                           QApplication::processEvents();
                       }));
    }
    return slowest;
}

const Bench::Registration typing("record: a key in its longest list, of 50 ms", [] {
    const auto fixture = std::make_shared<Fixture>();
    const auto form = std::make_shared<frmAddContact>();
    ShowWhole(*form);
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.ours = [fixture, form] {
        return qMax(SlowestKey(*form, QStringLiteral("ContactList"), QStringLiteral("featherstone 4999")),
                    SlowestKey(*form, QStringLiteral("CityList"), QStringLiteral("newton 999")));
    };
    benchmark.twin = [] { return mostMillisecondsAKey; };
    return benchmark;
});
} // namespace
