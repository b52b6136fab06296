#include "Bench.h"

#include "contacts/lists/VocabularyModule.h"
#include "controls/ComboModel.h"
#include "controls/ListModel.h"
#include "core/session/Session.h"
#include "platform/connection/Connection.h"
#include "platform/engines/FileText.h"
#include "support/TestDatabase.h"

#include <sqlite3.h>

#include <memory>

namespace
{
constexpr int towns = 10'000;

/// A database of many towns, and a separate handle that reads them by hand.
class Fixture final
{
public:
    Fixture()
    {
        {
            const WriteGroup group(gConnection);
            for (int town = 0; town < towns; ++town)
                TestDatabase::Run({u"INSERT INTO City (City, ReferenceID) VALUES ('Newton " %
                                   QString::number(town * 7919 % towns) % u" on the Wold','')"});
        }
        Bench::Require(sqlite3_open(gDBQFilename.toUtf8().constData(), &m_handle) == SQLITE_OK &&
                           InstallTextComparison(m_handle) &&
                           sqlite3_prepare_v2(m_handle,
                                              "SELECT ReferenceID,City, City_ID FROM City ORDER BY City ASC",
                                              -1, &m_list, nullptr) == SQLITE_OK,
                       QStringLiteral("the twin cannot read the towns"));
    }
    ~Fixture()
    {
        sqlite3_finalize(m_list);
        sqlite3_close(m_handle);
    }
    Fixture(const Fixture &) = delete;
    Fixture &operator=(const Fixture &) = delete;

    /// Reads every row into values of the program's kind, and drops them.
    double Read()
    {
        qsizetype read = 0;
        const double taken = Bench::Milliseconds([&] {
            while (sqlite3_step(m_list) == SQLITE_ROW) {
                for (int column = 0; column < 2; ++column) {
                    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_list, column));
                    read += QString::fromUtf8(text, sqlite3_column_bytes(m_list, column)).size();
                }
                read += sqlite3_column_int64(m_list, 2) > 0 ? 1 : 0;
            }
            sqlite3_reset(m_list);
        });
        Bench::Require(read > towns, QStringLiteral("nothing was read"));
        return taken;
    }

private:
    TestDatabase m_database;
    sqlite3 *m_handle = nullptr;
    sqlite3_stmt *m_list = nullptr;
};

template <typename Model, typename Fill>
Bench::Case Filling(Fill fill)
{
    const auto fixture = std::make_shared<Fixture>();
    const auto model = std::make_shared<Model>();
    Bench::Case benchmark;
    benchmark.unit = QStringLiteral("ms");
    benchmark.bar = 3;
    benchmark.rounds = 25;
    benchmark.ours = [fixture, model, fill] {
        const double taken = Bench::Milliseconds([&] { fill(*model); });
        Bench::Require(model->Count() >= towns, QStringLiteral("the list is not full"));
        return taken;
    };
    benchmark.twin = [fixture] { return fixture->Read(); };
    return benchmark;
}

const Bench::Registration maintenance("contacts: open a section of 10,000 towns", [] {
    return Filling<ListModel>([](ListModel &list) { Contact_FillListView(ContactSection::Cities, list); });
});

const Bench::Registration dropDown("contacts: fill a drop-down of 10,000 towns", [] {
    return Filling<ComboModel>(
        [](ComboModel &list) { Contact_FillList(ContactSection::Cities, list, true); });
});
} // namespace
