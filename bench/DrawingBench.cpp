#include "GeneratedStandard.h"
#include "ProcessorTime.h"

#include "base/EditorSession.h"
#include "data/StyleDatabases.h"
#include "data/text/SampleData.h"
#include "drawing/Governed.h"
#include "drawing/LiveDrawing.h"
#include "drawing/MapExplanation.h"
#include "drawing/SampleParts.h"
#include "drawing/Shadowing.h"
#include "drawing/StyleDrawing.h"
#include "drawing/SuitingPart.h"
#include "records/TableDeclarations.h"

#include <benchmark/benchmark.h>

#include <random>

// The reference of "change" is "first" of the same run: a drawing from nothing.

namespace {

namespace fs = std::filesystem;

struct Subject {
    StyleSource* source;
    DrawingRequest request;
    std::shared_ptr<const SamplePart> part;
};

/// The sample databases with all parts, and the large Standard.
class Data {
public:
    Data() {
        const fs::path folder = fs::temp_directory_path() / "detailstyles-bench-drawing";
        fs::remove_all(folder);
        const std::string failure = buildSampleData(SOURCE_DIR "/resources", folder.string()).error;
        if (!failure.empty())
            throw std::runtime_error(failure);
        m_support = folder / "Shared/Support";
        m_databases.setOwnerMode(true);
        open(SourceId::standard(), folder / "standard.dsdb");
        open(SourceId::user(), folder / "user.dsdb");
        open(SourceId::addIn(0), folder / "addins/bracing-stairs-metric/styles.dsdb");
        open(SourceId::addIn(1), folder / "addins/fabrication-imperial/styles.dsdb");
        open(kLarge, GeneratedStandard::file());
        for (const std::string& name : SampleParts::names(parts()))
            m_parts[name] =
                std::make_shared<const SamplePart>(std::move(SampleParts::read(parts(), name).value));
    }

    /// Each style of the samples with the part that suits it, or with all.
    std::vector<Subject> samples(bool withAllParts) {
        std::vector<Subject> subjects;
        for (const SourceId id : m_databases.sources())
            if (!(id == kLarge))
                addStyles(id, withAllParts, 1, subjects);
        return subjects;
    }
    /// Some styles of the large Standard.
    std::vector<Subject> large(int count) {
        std::vector<Subject> subjects;
        addStyles(kLarge, false, GeneratedStandard::styles() / count, subjects);
        return subjects;
    }

private:
    static constexpr SourceId kLarge = SourceId::addIn(2);

    static fs::path parts() { return fs::path(SOURCE_DIR) / "resources/parts"; }
    void open(SourceId id, const fs::path& file) {
        if (const Result<> result = m_databases.openFile(id, file.string(), false); !result)
            throw std::runtime_error(result.error);
    }
    void addStyles(SourceId id, bool withAllParts, int step, std::vector<Subject>& subjects) {
        StyleSource* source = m_databases.source(id);
        std::vector<OfferedPart> offered;
        for (const auto& [name, part] : m_parts)
            offered.push_back({name, part.get()});
        const RowArray& styles = source->table(kTableDetailStyle).rows();
        for (int i = 0; i < styles.size(); i += step) {
            const DrawingRequest request{styles.at(i).key, 0, m_support};
            const std::string suiting = id == kLarge ? "beam" : suitingPart(*source, request.style, offered);
            for (const auto& [name, part] : m_parts)
                if (withAllParts || name == suiting)
                    subjects.push_back({source, request, part});
        }
    }

    EditorSession m_session;
    StyleDatabases m_databases;
    fs::path m_support;
    std::map<std::string, std::shared_ptr<const SamplePart>> m_parts;
};

Data& data() {
    static Data all;
    return all;
}

void reach(StyleSource& source, const RowRef& from, std::set<RowRef>& reached) {
    const StructRecord* record = source.table(from.table).find(KorOdbcKey(from.key));
    if (!record || !reached.insert(from).second)
        return;
    for (const Column& column : findTable(from.table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kUses)
            reach(source, {column.target, column.integerIn(record)}, reached);
    for (const Referrer& referrer : source.referrersOf(from.table, KorOdbcKey(from.key)))
        if (referrer.column->role == eReferenceRole::kPartOf)
            reach(source, {referrer.table->type, referrer.key}, reached);
}

void firstPictures(benchmark::State& state, const std::vector<Subject>& subjects) {
    std::vector<double> times;
    for (auto run : state)
        for (const Subject& subject : subjects) {
            LiveDrawing live(subject.part, subject.request);
            const auto start = now();
            benchmark::DoNotOptimize(live.update(*subject.source).views.size());
            times.push_back(since(start));
        }
    report(state, std::move(times));
}

// The same in a window that has drawn others of the part, or their thumbnails.
void laterPictures(benchmark::State& state, const std::vector<Subject>& subjects) {
    std::map<const SamplePart*, std::shared_ptr<SeenLines>> seen;
    for (const Subject& subject : subjects) {
        auto& ofPart = seen.try_emplace(subject.part.get(), std::make_shared<SeenLines>()).first->second;
        drawStyle(*subject.source, *subject.part, subject.request, ofPart);
    }
    std::vector<double> times;
    for (auto run : state)
        for (const Subject& subject : subjects) {
            const auto start = now();
            LiveDrawing live(subject.part, subject.request, seen.at(subject.part.get()));
            benchmark::DoNotOptimize(live.update(*subject.source).views.size());
            times.push_back(since(start));
        }
    report(state, std::move(times));
}

// From a change of a cell that the style reaches to the new picture, and back.
void changes(benchmark::State& state, const std::vector<Subject>& subjects) {
    std::vector<double> times;
    std::mt19937 random(1);
    for (auto run : state)
        for (const Subject& subject : subjects) {
            StyleSource& source = *subject.source;
            LiveDrawing live(subject.part, subject.request);
            live.update(source);
            std::set<RowRef> reached;
            reach(source, {kTableDetailStyle, subject.request.style}, reached);
            const std::vector<RowRef> rows(reached.begin(), reached.end());
            for (int change = 0; change < 12; ++change) {
                const RowRef row = rows[random() % rows.size()];
                const TableSchema& table = *findTable(row.table);
                const Column& column = table.columns[random() % table.columns.size()];
                const CellValue before = column.read(source.table(row.table).find(KorOdbcKey(row.key)));
                CellValue after = before;
                if (auto* text = std::get_if<KorString>(&after))
                    *text = *text + KorString("X");
                else if (auto* real = std::get_if<double>(&after))
                    *real = *real * 1.5 + 1;
                else
                    std::get<std::int64_t>(after) += 1;
                for (const CellValue& value : {after, before}) {
                    source.setCell(row.table, KorOdbcKey(row.key), column, value);
                    const auto start = now();
                    benchmark::DoNotOptimize(live.update(source).views.size());
                    times.push_back(since(start));
                }
            }
        }
    report(state, std::move(times));
}

// The light under a field: the index of a drawing, and all columns of its records asked.
void governed(benchmark::State& state, const std::vector<Subject>& subjects) {
    std::vector<double> times;
    for (auto run : state)
        for (const Subject& subject : subjects) {
            const Drawing drawing = drawStyle(*subject.source, *subject.part, subject.request);
            const auto start = now();
            const Governed index(drawing);
            benchmark::DoNotOptimize(
                index.by(subject.source->id(), {kTableDetailStyle, subject.request.style}, 2).size());
            times.push_back(since(start));
        }
    report(state, std::move(times));
}

// The counts beside the entries of a map, and which of them never act.
void explanations(benchmark::State& state, const std::vector<Subject>& subjects) {
    std::vector<double> times;
    for (auto run : state)
        for (const Subject& subject : subjects) {
            const RowArray& views = subject.source->table(kTableViewRequest).rows();
            const auto& view =
                static_cast<const StructDetViewRequest&>(views.at(subject.request.style % views.size()));
            const auto start = now();
            MapExplanation explanation(
                *subject.source, view.reprMapKey, *subject.part,
                MapExplanation::objectsOf(*subject.source, subject.request.style, *subject.part));
            benchmark::DoNotOptimize(explanation.counts().size());
            benchmark::DoNotOptimize(Shadowing::of(*subject.source, view.reprMapKey).size());
            times.push_back(since(start));
        }
    report(state, std::move(times));
}

void thumbnails(benchmark::State& state, const std::vector<Subject>& subjects) {
    constexpr std::size_t kCount = 1000;
    std::vector<double> times;
    for (auto run : state) {
        const auto start = now();
        for (std::size_t i = 0; i < kCount; ++i) {
            const Subject& subject = subjects[i % subjects.size()];
            benchmark::DoNotOptimize(drawStyle(*subject.source, *subject.part, subject.request).views.size());
        }
        times.push_back(since(start));
    }
    report(state, std::move(times));
}

} // namespace

int main(int argc, char** argv) {
    GeneratedStandard::takeScale(argc, argv);
    benchmark::Initialize(&argc, argv);
    const std::vector<Subject> suiting = data().samples(false);
    const std::vector<Subject> all = data().samples(true);
    const std::vector<Subject> large = data().large(100);
    const std::pair<const char*, void (*)(benchmark::State&, const std::vector<Subject>&)> figures[] = {
        {"first", firstPictures}, {"later", laterPictures},      {"change", changes},
        {"governed", governed},   {"explanation", explanations}, {"thumbnails", thumbnails},
    };
    for (const auto& [name, figure] : figures)
        for (const auto& [place, subjects] :
             {std::pair("suiting", &suiting), std::pair("all", &all), std::pair("large", &large)})
            if (subjects != &all || figure != thumbnails)
                benchmark::RegisterBenchmark((std::string(name) + "/" + place).c_str(), figure, *subjects)
                    ->Iterations(1)
                    ->UseManualTime()
                    ->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
