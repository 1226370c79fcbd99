#include "GeneratedStandard.h"
#include "Growth.h"
#include "OpenEditor.h"

#include "controls/KorStyle.h"
#include "data/StyleDatabases.h"
#include "data/exchange/CopiedDatabase.h"
#include "data/store/odbc/OdbcLibrary.h"
#include "data/store/odbc/OdbcStore.h"
#include "records/TableDeclarations.h"
#include "services/KOSettings.h"
#include "session/KorDSMCommit.h"
#include "shell/ModuleResources.h"
#include "support/DatabaseServer.h"
#include "support/LineProxy.h"

#include <benchmark/benchmark.h>

// The generated Standard on a server of the benchmark's own, by a local socket.

namespace {

ServerAddress addressBy(const std::string& folder, const std::string& schema) {
    return ServerAddress::parse(DatabaseServer::connectionBy(folder, schema), "a benchmark").value;
}

ServerAddress newDatabase() {
    DatabaseServer& server = DatabaseServer::instance();
    const std::string schema = server.newSchema();
    ServerAddress address = ServerAddress::parse(server.connection(schema), "a benchmark").value;
    OdbcDatabase database(address, {});
    static_cast<void>(database.connect());
    static_cast<void>(OdbcSchema(database).create());
    return address;
}

// Returns the number of rows.
int upload(const ServerAddress& address, const std::string& file = GeneratedStandard::file()) {
    const auto from = SqliteStore::open(file, SqliteStore::eMode::kRead).store;
    const auto to = OdbcStore::open(address, OdbcStore::eMode::kWrite).store;
    int all = 0;
    Result<> result = to->begin();
    if (result)
        result =
            CopiedDatabase::copy(*from, *to, [&](const TableSchema&, int rows) { return (all += rows) > 0; });
    if (result)
        result = to->commit();
    return result ? all : 0;
}

const ServerAddress& standard() {
    static const ServerAddress address = [] {
        ServerAddress made = newDatabase();
        upload(made);
        return made;
    }();
    return address;
}

void uploadRows(benchmark::State& state) {
    int rows = 0;
    for (auto run : state) {
        state.PauseTiming();
        const ServerAddress address = newDatabase();
        state.ResumeTiming();
        rows = upload(address);
        if (rows == 0)
            state.SkipWithError("nothing was uploaded");
    }
    state.counters["rows/s"] = benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate);
}

// What the driver needs to hand over all cells, of their own types, by blocks of rows.
class RawFetch {
public:
    explicit RawFetch(const std::string& connection) : m_odbc(*OdbcLibrary::instance()) {
        m_odbc.allocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        m_odbc.setEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3),
                          0);
        m_odbc.allocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        m_odbc.driverConnect(m_connection, nullptr, text(connection), SQL_NTS, nullptr, 0, nullptr,
                             SQL_DRIVER_NOPROMPT);
    }
    ~RawFetch() {
        m_odbc.disconnect(m_connection);
        m_odbc.freeHandle(SQL_HANDLE_DBC, m_connection);
        m_odbc.freeHandle(SQL_HANDLE_ENV, m_environment);
    }
    RawFetch(const RawFetch&) = delete;
    RawFetch& operator=(const RawFetch&) = delete;

    std::size_t table(const std::string& schema, const TableSchema& table) {
        constexpr std::size_t kRows = 512;
        constexpr std::size_t kRoom = 256;
        std::string sql = "SELECT key";
        for (const Column& column : table.columns)
            sql += ", \"" + column.name + "\"";
        sql += " FROM " + schema + ".\"" + table.name + "\" ORDER BY key";
        SQLHSTMT statement = SQL_NULL_HSTMT;
        SQLULEN fetched = 0;
        m_odbc.allocHandle(SQL_HANDLE_STMT, m_connection, &statement);
        m_odbc.setStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(kRows), 0);
        m_odbc.setStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
        m_odbc.execDirect(statement, text(sql), SQL_NTS);
        m_cells.resize(std::max(m_cells.size(), table.columns.size() + 1));
        for (std::size_t i = 0; i <= table.columns.size(); ++i) {
            const Column* column = i == 0 ? nullptr : &table.columns[i - 1];
            const bool isText = column && column->isText();
            const bool isReal = column && column->isReal();
            m_cells[i].first.resize(kRows * kRoom);
            m_cells[i].second.resize(kRows);
            m_odbc.bindCol(statement, static_cast<SQLUSMALLINT>(i + 1),
                           isText   ? SQL_C_CHAR
                           : isReal ? SQL_C_DOUBLE
                                    : SQL_C_SLONG,
                           m_cells[i].first.data(), isText ? kRoom : 0, m_cells[i].second.data());
        }
        std::size_t rows = 0;
        while (SQL_SUCCEEDED(m_odbc.fetch(statement)))
            rows += fetched;
        m_odbc.freeHandle(SQL_HANDLE_STMT, statement);
        return rows;
    }

private:
    static SQLCHAR* text(const std::string& text) {
        return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
    }

    const OdbcLibrary& m_odbc;
    SQLHENV m_environment = SQL_NULL_HENV;
    SQLHDBC m_connection = SQL_NULL_HDBC;
    std::vector<std::pair<std::vector<char>, std::vector<SQLLEN>>> m_cells;
};

void referenceFetch(benchmark::State& state) {
    std::size_t rows = 0;
    for (auto run : state) {
        RawFetch fetch(standard().connection);
        rows = 0;
        for (const TableSchema& table : allTables())
            rows += fetch.table(standard().schema, table);
    }
    state.counters["rows"] = static_cast<double>(rows);
}

void loadAll(benchmark::State& state) {
    LineProxy line(DatabaseServer::instance().socket());
    const ServerAddress address = addressBy(line.folder(), standard().schema);
    int rows = 0;
    int before = 0;
    for (auto run : state) {
        before = line.requests();
        const auto store =
            OdbcStore::open(state.range(0) ? address : standard(), OdbcStore::eMode::kRead).store;
        std::int64_t ignored = 0;
        std::vector<ReadProblem> problems;
        rows = 0;
        bool all = bool(store->beginRead(ignored));
        for (const TableSchema& table : allTables()) {
            const auto read = table.makeRows();
            all = all && store->readTable(table, *read, problems);
            rows += read->size();
        }
        store->endRead();
        if (!all)
            state.SkipWithError("not all was read");
    }
    state.counters["rows"] = rows;
    if (state.range(0))
        state.counters["round trips"] = line.requests() - before;
}

// A hundred cells of one column, and what another editor needs to see that something changed.
void applyHundred(benchmark::State& state) {
    LineProxy line(DatabaseServer::instance().socket());
    StyleDatabases databases;
    const SourceId user = SourceId::user();
    databases.addSource(
        user, OdbcStore::open(addressBy(line.folder(), standard().schema), OdbcStore::eMode::kWrite).store);
    databases.setCurrentSource(user);
    int round = 0;
    int before = 0;
    for (auto run : state) {
        state.PauseTiming();
        ++round;
        for (int key = 1; key <= 100; ++key)
            databases.setCell(kTableViewRequest, KorOdbcKey(key), 10, static_cast<double>(round + key));
        before = line.requests();
        state.ResumeTiming();
        const StyleDatabases::CommitWalk walk(databases);
        for (int table = 0; table < kNumberOfTableTypes; ++table)
            if (!databases.keepTable(static_cast<eTableType>(table)))
                state.SkipWithError("the changes were not kept");
    }
    state.counters["round trips"] = line.requests() - before;
}

class EditingOther {
public:
    explicit EditingOther(const ServerAddress& address) {
        m_databases.addSource(SourceId::user(), OdbcStore::open(address, OdbcStore::eMode::kWrite).store);
        m_databases.setCurrentSource(SourceId::user());
    }
    void change() {
        const StructRecord* row = m_databases.here()->table(kTableViewRequest).find(KorOdbcKey(1));
        const double scale = static_cast<const StructDetViewRequest*>(row)->scale;
        m_databases.setCell(kTableViewRequest, KorOdbcKey(1), 10, scale + 0.001);
        m_databases.keepTable(kTableViewRequest);
    }

private:
    StyleDatabases m_databases;
};

// Another editor stores one cell; what this one needs to show it.
void refreshAfterOne(benchmark::State& state) {
    StyleDatabases databases;
    const SourceId user = SourceId::user();
    databases.addSource(user, OdbcStore::open(standard(), OdbcStore::eMode::kWrite).store);
    static_cast<void>(databases.source(user)->readAll());
    EditingOther other(standard());
    for (auto run : state) {
        state.PauseTiming();
        other.change();
        state.ResumeTiming();
        const auto changes = databases.refreshChanged();
        if (changes.size() != 1 || !changes.front().rows) {
            state.SkipWithError(changes.empty() ? "nothing was read" : "everything was read");
            break;
        }
    }
}

// The generated Standard so many times.
ServerAddress newStandard(int scale) {
    static_cast<void>(standard()); // is of the usual size
    const std::string file = std::filesystem::temp_directory_path() / "detailstyles-bench-server.dsdb";
    GeneratedStandard::setScale(scale);
    static_cast<void>(GeneratedStandard::write(file));
    ServerAddress address = newDatabase();
    upload(address, file);
    std::filesystem::remove(file);
    return address;
}

// The window with a style selected.
struct ServerEditor {
    explicit ServerEditor(const ServerAddress& address) {
        using namespace std::chrono_literals;
        databases.addSource(SourceId::user(),
                            OdbcStore::open(address, OdbcStore::eMode::kWrite, {10s, 60s, 0ms, 0ms}).store);
        static_cast<void>(databases.source(SourceId::user())->readAll());
        structure().emptyDataStructure();
        load();
        dialog = std::make_unique<KorDSMMainDialog>(nullptr);
        dialog->OnInitDialog();
        paint(*dialog);
        KorTreeCtrl& tree = *dialog->currentTree().control();
        for (KorTreeHandle entry = tree.getChildItem(tree.getRoot()); entry;
             entry = tree.getChildItem(entry)) {
            tree.expand(entry);
            tree.selectItem(entry);
            if (KorDSMSectionTree::itemOf(entry)->tableType() == kTableDetailStyle)
                break;
        }
        QApplication::processEvents();
    }

    StyleDatabases databases;
    std::unique_ptr<KorDSMMainDialog> dialog;
};

// Another editor stores one cell; what the window needs from the moment when it heard of it until it shows
// it.
void showAfterOne(benchmark::State& state) {
    const ServerAddress address = newStandard(static_cast<int>(state.range(0)));
    EditingOther other(address);
    ServerEditor editor(address); // whose databases are the current ones
    for (auto run : state) {
        state.PauseTiming();
        other.change();
        while (!editor.databases.isNoticed())
            editor.databases.glance();
        state.ResumeTiming();
        QEvent activation(QEvent::WindowActivate);
        QApplication::sendEvent(editor.dialog.get(), &activation);
        while (editor.databases.isNoticed())
            QApplication::processEvents();
        QApplication::processEvents(); // and paints
    }
}

// Each round trip takes 20 ms longer.
void openDelayed(benchmark::State& state) {
    LineProxy line(DatabaseServer::instance().socket());
    line.setDelay(std::chrono::milliseconds(20));
    const ServerAddress address = addressBy(line.folder(), standard().schema);
    for (auto run : state) {
        StyleDatabases databases;
        databases.addSource(SourceId::user(), OdbcStore::open(address, OdbcStore::eMode::kWrite).store);
        if (!databases.source(SourceId::user())->readAll())
            state.SkipWithError("not all was read");
    }
}

} // namespace

BENCHMARK(uploadRows)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(referenceFetch)->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK(loadAll)->ArgName("counted")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK(applyHundred)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(refreshAfterOne)->Unit(benchmark::kMillisecond)->MinTime(1);
BENCHMARK(showAfterOne)->ArgName("scale")->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond)->Iterations(50);
BENCHMARK(openDelayed)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

int main(int argc, char** argv) {
    GeneratedStandard::takeScale(argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(new KorStyle);
    KOSettings::getInstance().useFile(std::filesystem::temp_directory_path() /
                                      "detailstyles-bench-settings.ini");
    ModuleResources::setUp({});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
