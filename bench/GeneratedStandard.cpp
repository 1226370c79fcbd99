#include "GeneratedStandard.h"

#include "records/TableDeclarations.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <sqlite3.h>
#include <stdexcept>
#include <string_view>

namespace {

using Rows = std::deque<std::unique_ptr<StructRecord>>;

template <typename R, typename Fill>
Result<> add(StyleStore& store, int count, Fill fill) {
    Rows rows;
    TableChange change;
    change.table = findTable(tableOf<R>);
    for (int i = 1; i <= count; ++i) {
        auto record = std::make_unique<R>();
        record->key = i;
        fill(*record, i);
        change.appended.push_back(record.get());
        rows.push_back(std::move(record));
    }
    std::vector<StoreConflict> conflicts;
    return store.apply(change, conflicts);
}

KorString name(const char* what, int number) {
    return KorString(std::string(what) + ' ' + std::to_string(number));
}

constexpr int kCategories = 60;
constexpr int kClips = 1000;
constexpr int kAppearances = 2000;
constexpr int kGroups = 50;

int g_scale = 1;

// Records of a kind that there are more of in a larger database.
int boxes() {
    return 5000 * g_scale;
}
int maps() {
    return 3000 * g_scale;
}
int strategies() {
    return 3000 * g_scale;
}
int requests() {
    return 6000 * g_scale;
}
int points() {
    return 4000 * g_scale;
}
int sets() {
    return 4000 * g_scale;
}
int annotations() {
    return 4000 * g_scale;
}

Result<> addStyles(StyleStore& store, int categoriesInUse) {
    Result<> result = add<StructDetBaseCategory>(store, kCategories, [](auto& category, int i) {
        category.name = name("Category of drawings", i);
        category.number = i;
    });
    if (result)
        result = add<StructDetailStyle>(store, GeneratedStandard::styles(), [](auto& style, int i) {
            style.name = name("Detail style of the works", i);
            style.arrangeStrategyKey = i % 20 + 1;
            style.description = name("For parts of the assembly group", i % 700);
            style.titleFormat =
                name("{L1}{size=7;b=1}{name} {number}{size=3.5;b=0}{br}Scale {scale} Qty {quantity}", i % 40);
            style.cutViewTitleFormat = "{L1}{name}-{name} {scale}";
            style.titlePosition = i % 8;
            for (std::size_t slot = 0; slot < 3; ++slot)
                style.viewRequests[slot] =
                    (i * 3 + static_cast<int>(slot) * 7) % GeneratedStandard::viewRequests() + 1;
        });
    if (result)
        result = add<StructDetailMaster>(store, GeneratedStandard::styles(),
                                         [categoriesInUse](auto& master, int i) {
                                             master.name = name("Detail style of the works", i);
                                             master.detailKey = i / 100 + 1;
                                             master.number = i % 100 + 1;
                                             master.styleKey = i;
                                             master.categoryKey = i % categoriesInUse + 1;
                                         });
    return result;
}

Result<> addViews(StyleStore& store) {
    Result<> result =
        add<StructDetViewRequest>(store, GeneratedStandard::viewRequests(), [](auto& view, int i) {
            view.name = name("View request of the works", i);
            view.systemAndBoxKey = i % boxes() + 1;
            view.reprMapKey = i % maps() + 1;
            view.dimStrategyKey = i % strategies() + 1;
            view.selectModeKey = i % 5 + 1;
            view.lengthClipKey = i % kClips + 1;
            view.scale = 1.0 / (5 + i % 20);
            view.calloutTitleTemplate = "{L1}Detail {name}";
        });
    if (result)
        result = add<StructDetViewRequestCategory>(store, GeneratedStandard::viewRequests(),
                                                   [](auto& filing, int i) {
                                                       filing.name = name("View request of the works", i);
                                                       filing.viewRequestKey = i;
                                                       filing.categoryKey = i % kCategories + 1;
                                                   });
    if (result)
        result = add<StructDetViewSystemAndBox>(
            store, boxes(), [](auto& box, int i) { box.name = name("System and box", i); });
    if (result)
        result = add<StructDetViewLengthClip>(store, kClips,
                                              [](auto& clip, int i) { clip.name = name("Length clip", i); });
    return result;
}

Result<> addObjects(StyleStore& store) {
    Result<> result =
        add<StructDetObjReprMap>(store, maps(), [](auto& map, int i) { map.name = name("Map", i); });
    if (result)
        result = add<StructDetObjReprMapKey>(store, maps() * 4, [](auto& entry, int i) {
            entry.name = name("Entry", i);
            entry.reprMapKey = i % maps() + 1;
            entry.order = i / maps();
            entry.qualifierSetKey = i % sets() + 1;
            entry.appearanceKey = i % kAppearances + 1;
            entry.annotationStrategyKey = i % annotations() + 1;
        });
    if (result)
        result = add<StructDetObjQualifierSetGroup>(store, kGroups,
                                                    [](auto& group, int i) { group.name = name("Sets", i); });
    if (result)
        result = add<StructDetObjQualifierSet>(store, sets(), [](auto& set, int i) {
            set.name = name("Qualifier set", i);
            set.groupKey = i % kGroups + 1;
        });
    if (result)
        result = add<StructDetObjQualifierWithRole>(store, 9760 * g_scale, [](auto& part, int i) {
            part.name = name("Qualifier of a set", i);
            part.qualifierSetKey = i % sets() + 1;
        });
    if (result)
        result = add<StructDetObjAppearance>(store, kAppearances,
                                             [](auto& look, int i) { look.name = name("Appearance", i); });
    if (result)
        result = add<StructDetObjAnnotationGroup>(store, kGroups,
                                                  [](auto& group, int i) { group.name = name("Labels", i); });
    if (result)
        result = add<StructDetObjAnnotationStrategy>(store, annotations(), [](auto& strategy, int i) {
            strategy.name = name("Annotation strategy", i);
            strategy.groupKey = i % kGroups + 1;
            strategy.contents = "{L1}{mark} {profile}";
        });
    return result;
}

Result<> addDimensions(StyleStore& store) {
    Result<> result = add<StructDetViewDimStrategy>(
        store, strategies(), [](auto& strategy, int i) { strategy.name = name("View dimensioning", i); });
    if (result)
        result = add<StructDetViewDimStrategyItem>(store, strategies() * 6, [](auto& item, int i) {
            item.name = name("Item", i);
            item.strategyKey = i % strategies() + 1;
            item.order = i / strategies();
            item.dimRequestKey = i % requests() + 1;
        });
    if (result)
        result = add<StructDetViewDimRequestLinearGroup>(
            store, kGroups, [](auto& group, int i) { group.name = name("Dimensions", i); });
    if (result)
        result = add<StructDetViewDimRequestLinear>(store, requests(), [](auto& request, int i) {
            request.name = name("Dimension request", i);
            request.groupKey = i % kGroups + 1;
            request.startPointsKey = i % points() + 1;
        });
    if (result)
        result = add<StructDetViewDimPointSelection>(store, points(), [](auto& points, int i) {
            points.name = name("Point selection", i);
            points.qualifierSetKey = i % sets() + 1;
        });
    if (result)
        result = add<StructDetViewArrangeStrategy>(
            store, 30, [](auto& strategy, int i) { strategy.name = name("Arrangement", i); });
    return result;
}

} // namespace

void GeneratedStandard::setScale(int scale) {
    g_scale = scale;
}

void GeneratedStandard::takeScale(int& argc, char** argv) {
    for (int i = 1; i + 1 < argc; ++i)
        if (std::string_view(argv[i]) == "--scale") {
            setScale(std::max(1, std::atoi(argv[i + 1])));
            std::copy(argv + i + 2, argv + argc + 1, argv + i);
            argc -= 2;
            return;
        }
}

int GeneratedStandard::styles() {
    return 10000 * g_scale;
}

int GeneratedStandard::viewRequests() {
    return 30000 * g_scale;
}

Result<> GeneratedStandard::write(const std::string& path, int categoriesInUse) {
    return SqliteStore::createWith(path, [categoriesInUse](StyleStore& store) {
        Result<> result = addStyles(store, categoriesInUse);
        for (const auto& addFamily : {addViews, addObjects, addDimensions})
            if (result)
                result = addFamily(store);
        return result;
    });
}

Result<> GeneratedStandard::writeNamesakes(const std::string& path, int count) {
    return SqliteStore::createWith(path, [count](StyleStore& store) {
        Result<> result =
            add<StructDetBaseCategory>(store, 1, [](auto& category, int) { category.name = "Beams"; });
        if (result)
            result = add<StructDetViewRequest>(store, count, [](auto& view, int i) {
                view.name = "Front";
                view.scale = 1.0 / i;
            });
        if (result)
            result = add<StructDetailStyle>(store, count, [](auto& style, int i) {
                style.name = "Beam";
                style.viewRequests[0] = i;
            });
        if (result)
            result = add<StructDetailMaster>(store, count, [](auto& master, int i) {
                master.name = "Beam";
                master.detailKey = 1;
                master.number = master.styleKey = i;
                master.categoryKey = 1;
            });
        return result;
    });
}

Result<> GeneratedStandard::writeCategories(const std::string& path, int count) {
    return SqliteStore::createWith(path, [count](StyleStore& store) {
        Result<> result = add<StructDetBaseCategory>(store, count, [](auto& category, int i) {
            category.name = name("Category", i);
            category.number = i;
        });
        if (result)
            result = add<StructDetailStyle>(store, count,
                                            [](auto& style, int i) { style.name = name("Style", i); });
        if (result)
            result = add<StructDetailMaster>(store, count, [count](auto& master, int i) {
                master.name = name("Style", i);
                master.detailKey = master.styleKey = i;
                master.number = 1;
                master.categoryKey = count + 1 - i;
            });
        return result;
    });
}

const std::string& GeneratedStandard::file() {
    static const std::string path = [] {
        std::string made = std::filesystem::temp_directory_path() /
                           ("detailstyles-bench-standard-" + std::to_string(g_scale) + ".dsdb");
        if (const Result<> result = write(made); !result)
            throw std::runtime_error(result.error);
        return made;
    }();
    return path;
}

void GeneratedStandard::scanTable(sqlite3* database, const TableSchema& table, RowArray& rows) {
    std::string sql = "SELECT key";
    for (const Column& column : table.columns)
        sql += ",\"" + column.name + '"';
    sql += " FROM \"" + table.name + '"';
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        StructRecord& record = rows.append();
        record.key = sqlite3_column_int(statement, 0);
        int index = 0;
        for (const Column& column : table.columns) {
            ++index;
            if (column.isText())
                column.textIn(&record) = KorString(
                    std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(statement, index)),
                                     static_cast<std::size_t>(sqlite3_column_bytes(statement, index))));
            else if (column.isReal())
                column.realIn(&record) = sqlite3_column_double(statement, index);
            else
                column.integerIn(&record) = sqlite3_column_int(statement, index);
        }
    }
    sqlite3_finalize(statement);
}
