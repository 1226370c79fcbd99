#include "GeneratedStandard.h"
#include "Growth.h"

#include "data/StyleDatabases.h"
#include "data/pending/RecoveryWriter.h"
#include "model/KorDSMDialogFactory.h"
#include "operations/KorOdbcMan.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMImport.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <malloc.h>
#include <sqlite3.h>

// Each figure stands beside its reference; what counts is the ratio of the two.

namespace {

namespace fs = std::filesystem;

// The tables that the four sections are loaded from.
constexpr eTableType kSectionTables[] = {kTableDetailStyle,      kTableDetailMaster,    kTableViewRequest,
                                         kTableBaseCategory,     kTableAnnotationGroup, kTableDimRequestGroup,
                                         kTableQualifierSetGroup};

// As at the start of a program: what the run before gave back is put in order only when the next one asks for
// memory, and would count as its time.
void freshHeap() {
    malloc_trim(0);
}

void referenceScan(benchmark::State& state) {
    for (auto run : state) {
        sqlite3* database = nullptr;
        sqlite3_open_v2(GeneratedStandard::file().c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
        std::vector<std::unique_ptr<RowArray>> tables;
        for (const eTableType type : kSectionTables) {
            tables.push_back(findTable(type)->makeRows());
            GeneratedStandard::scanTable(database, *findTable(type), *tables.back());
        }
        sqlite3_close(database);
        benchmark::DoNotOptimize(tables.data());
        state.PauseTiming();
        tables.clear();
        freshHeap();
        state.ResumeTiming();
    }
}

void loadSections(benchmark::State& state) {
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    for (auto run : state) {
        state.PauseTiming();
        auto databases = std::make_unique<StyleDatabases>();
        static_cast<void>(databases->openFile(SourceId::standard(), GeneratedStandard::file(), true));
        structure.emptyDataStructure();
        freshHeap();
        state.ResumeTiming();
        KorDSMSectionLoader().loadDataStructure(structure);
        state.PauseTiming();
        databases.reset();
        state.ResumeTiming();
    }
}

// 10,000 pending column writes.
constexpr int kWrites = 10000;

fs::path writableCopy() {
    const fs::path copy = fs::temp_directory_path() / "detailstyles-bench-user.dsdb";
    fs::copy_file(GeneratedStandard::file(), copy, fs::copy_options::overwrite_existing);
    return copy;
}

void referenceUpdates(benchmark::State& state) {
    const fs::path file = writableCopy();
    sqlite3* database = nullptr;
    sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(database, "PRAGMA synchronous=EXTRA", nullptr, nullptr, nullptr);
    int round = 0;
    for (auto run : state) {
        ++round;
        sqlite3_exec(database, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, "UPDATE view_request SET scale=? WHERE key=?", -1, &statement, nullptr);
        for (int key = 1; key <= kWrites; ++key) {
            sqlite3_bind_double(statement, 1, round + key);
            sqlite3_bind_int(statement, 2, key);
            sqlite3_step(statement);
            sqlite3_reset(statement);
        }
        sqlite3_finalize(statement);
        sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    }
    sqlite3_close(database);
}

void applyUpdates(benchmark::State& state) {
    const fs::path file = writableCopy();
    StyleDatabases databases;
    static_cast<void>(databases.openFile(SourceId::user(), file.string(), false));
    const KorDSNRequest request(SourceId::user().dsn, SourceId::user().index);
    int round = 0;
    for (auto run : state) {
        state.PauseTiming();
        ++round;
        for (int key = 1; key <= kWrites; ++key)
            KorOdbcMan::setAttribute(kTableViewRequest, KorOdbcKey(key), 10, static_cast<double>(round + key),
                                     KorOdbcMan::kThisRow);
        state.ResumeTiming();
        if (!KorDSMCommit::keepAndGoOn().ok())
            state.SkipWithError("the changes were not kept");
    }
}

// The file is imported into an empty User database, and once more where all of it is there already.
void importNamesakes(benchmark::State& state) {
    reportGrowth(state, [&state](int count) {
        const fs::path folder = fs::temp_directory_path() / "detailstyles-bench-import";
        fs::create_directory(folder);
        static_cast<void>(GeneratedStandard::writeNamesakes(folder / "file.dsdb", count));
        static_cast<void>(SqliteStore::create(folder / "user.dsdb"));
        double seconds = 0;
        {
            StyleDatabases databases;
            static_cast<void>(databases.openFile(SourceId::user(), folder / "user.dsdb", false));
            const Stopwatch watch;
            for (int round = 0; round < 2; ++round) {
                const KorDSMImport import((folder / "file.dsdb").string());
                const ImportReport report = KorDSMDeepCopy::copy(import.wishFor(SourceId::user())).report;
                const auto& list = round == 0 ? report.imported : report.alreadyThere;
                if (list.size() != static_cast<std::size_t>(count))
                    state.SkipWithError("not every style was imported once");
            }
            seconds = watch.seconds();
        }
        fs::remove_all(folder);
        return seconds;
    });
}

// Styles of the generated database, with all that they use, into an empty one.
void deepCopyStyles(benchmark::State& state) {
    reportGrowth(state, [&state](int count) {
        const fs::path user = fs::temp_directory_path() / "detailstyles-bench-copy.dsdb";
        fs::remove(user);
        static_cast<void>(SqliteStore::create(user));
        double seconds = 0;
        {
            StyleDatabases databases;
            static_cast<void>(databases.openFile(SourceId::standard(), GeneratedStandard::file(), true));
            static_cast<void>(databases.openFile(SourceId::user(), user, false));
            KorDSMDeepCopy::Wish wish{.from = SourceId::standard(), .to = SourceId::user(), .records = {}};
            const RowArray& styles = databases.source(wish.from)->table(kTableDetailStyle).rows();
            for (int i = 0; i < std::min(count, styles.size()); ++i)
                wish.records.push_back({kTableDetailStyle, styles.at(i).key});
            const Stopwatch watch;
            const KorDSMDeepCopy::Outcome outcome = KorDSMDeepCopy::copy(wish);
            seconds = watch.seconds();
            if (!outcome.done || outcome.report.imported.size() != wish.records.size())
                state.SkipWithError("not every style was copied");
        }
        fs::remove(user);
        return seconds;
    });
}

// As many changed cells, new rows and deleted rows, when another program stored something.
void replayChanges(benchmark::State& state) {
    reportGrowth(state, [&state](int count) {
        const SourceId id = SourceId::user();
        StyleDatabases databases;
        static_cast<void>(databases.openFile(id, writableCopy().string(), false));
        databases.setCurrentSource(id);
        for (int key = 1; key <= count; ++key) {
            databases.setCell(kTableViewRequest, KorOdbcKey(key), 10, static_cast<double>(key));
            databases.remove(kTableDetailStyle, KorOdbcKey(key));
            StructDetBaseCategory category;
            category.name = KorString::number(std::int64_t{key});
            databases.append(kTableBaseCategory, category);
        }
        const auto steps = databases.pending().steps().size();
        const Stopwatch watch;
        const OutsideChange change = databases.refresh(id);
        const double seconds = watch.seconds();
        if (!change.conflicts.empty() || databases.pending().steps().size() != steps)
            state.SkipWithError("not every change was made anew");
        return seconds;
    });
}

// Pending column writes alone, and with each of them written down for the case of a crash.
void recordSteps(benchmark::State& state) {
    StyleDatabases databases;
    static_cast<void>(databases.openFile(SourceId::user(), writableCopy().string(), false));
    if (state.range(0))
        databases.pending().setObserver(std::make_unique<RecoveryWriter>(
            fs::temp_directory_path() / "detailstyles-bench", databases, [](const KorString&) {}));
    const KorDSNRequest request(SourceId::user().dsn, SourceId::user().index);
    int step = 0;
    for (auto run : state) {
        ++step;
        KorOdbcMan::setAttribute(kTableViewRequest, KorOdbcKey(1 + step % kWrites), 10,
                                 static_cast<double>(step), KorOdbcMan::kThisRow);
    }
    databases.closeSource(SourceId::user());
}

} // namespace

BENCHMARK(recordSteps)->ArgName("recovery")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(referenceScan)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(loadSections)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(referenceUpdates)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(applyUpdates)->Unit(benchmark::kMillisecond)->MinTime(2);
BENCHMARK(replayChanges)->Arg(kWrites / 4)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(deepCopyStyles)->Arg(2500)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(importNamesakes)->Arg(4000)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    GeneratedStandard::takeScale(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
