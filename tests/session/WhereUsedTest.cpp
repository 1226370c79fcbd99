#include "SampleSession.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMDependencies.h"
#include "session/KorDSMItemWords.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMRecordState.h"

namespace {

const SourceId kUser = SourceId::user();
const SourceId kStandard = SourceId::standard();

class WhereUsed : public SampleSession {
protected:
    template <typename R>
    std::vector<KorDSMUsage> usagesOf(SourceId id, const KorString& name) {
        return KorDSMWhereUsed::usagesOf(id, {tableOf<R>, row<R>(id, name)->key});
    }
    KorDSMDatabaseItem* itemFor(const KorDSMUsage& usage) {
        return KorDSMWhereUsed::findItem(structure, usage.source, usage.row);
    }
};

} // namespace

TEST_F(WhereUsed, NamesUsersAsPeopleKnowThem) {
    const std::vector<KorDSMUsage> usages = usagesOf<StructDetObjAnnotationStrategy>(kUser, "HB crane mark");
    ASSERT_EQ(usages.size(), 1u);
    EXPECT_EQ(usages[0].database, "User");
    EXPECT_EQ(usages[0].kind, "Representation map");
    EXPECT_EQ(usages[0].name, "HB site") << "the whole, not its entry";
    EXPECT_EQ(usages[0].as, "Annotation strategy");
    EXPECT_EQ(usages[0].source, kUser);
    const auto twice = usagesOf<StructDetObjAppearance>(kUser, "HB members on site");
    ASSERT_EQ(twice.size(), 1u);
    EXPECT_EQ(twice[0].as, "Appearance, 2 times") << "by several entries";
    EXPECT_TRUE(usagesOf<StructDetailStyle>(kUser, "HB post 1:15").empty()) << "its master is no user";
}

TEST_F(WhereUsed, OfAPartNamesTheUsersOfItsWhole) {
    const auto map = usagesOf<StructDetObjReprMap>(kUser, "HB site");
    ASSERT_FALSE(map.empty());
    StyleSource& source = *databases.source(kUser);
    const auto parts = partsOf(source, {kTableReprMap, row<StructDetObjReprMap>(kUser, "HB site")->key});
    ASSERT_FALSE(parts.empty());
    for (const Referrer& part : parts)
        EXPECT_EQ(KorDSMWhereUsed::usagesOf(kUser, {part.table->type, part.key}), map);
}

TEST_F(WhereUsed, LooksIntoEveryOpenSource) {
    const KorString name = usagesOf<StructDetObjQualifierSet>(kUser, "HB rails").front().name;
    TempFolder other;
    ASSERT_EQ(buildSampleData(SOURCE_DIR "/resources", other.path().string()).error, "");
    ASSERT_EQ(databases.openFile(SourceId::addIn(0), (other.path() / "user.dsdb").string(), true).error, "");
    const auto usages = usagesOf<StructDetObjQualifierSet>(kUser, "HB rails");
    const auto inAddIn = std::ranges::count(usages, SourceId::addIn(0), &KorDSMUsage::source);
    EXPECT_GT(inAddIn, 0);
    EXPECT_EQ(static_cast<std::size_t>(inAddIn) * 2, usages.size());
    EXPECT_EQ(usages.front().name, name) << "the own User database comes first";
}

TEST_F(WhereUsed, EveryUserThatATreeShowsCanBeReached) {
    int reached = 0;
    for (const eTableType table : {kTableQualifierSet, kTableAnnotationStrategy, kTableDimRequest,
                                   kTableReprMap, kTableViewRequest, kTablePointSelection}) {
        const RowArray& rows = databases.source(kStandard)->table(table).rows();
        for (int i = 0; i < rows.size(); ++i)
            for (const KorDSMUsage& usage : KorDSMWhereUsed::usagesOf(kStandard, {table, rows.at(i).key})) {
                KorDSMDatabaseItem* item = itemFor(usage);
                ASSERT_NE(item, nullptr) << usage.kind.c_str() << ' ' << usage.name.c_str();
                ++reached;
                EXPECT_EQ(item->tableType(), usage.row.table);
                EXPECT_EQ(item->getDisplayName(), usage.name);
                EXPECT_EQ(KorDSMItemSource::sourceOf(item), kStandard);
                EXPECT_NE(KorDSMItemPath::sectionOf(*item), nullptr);
            }
    }
    EXPECT_GT(reached, 100);
}

TEST_F(WhereUsed, WhatIsInNoTreeLeadsNowhere) {
    databases.setCurrentSource(kUser);
    EXPECT_TRUE(KorDSMWhereUsed::usagesOf(kUser, {kTablePointSelection, 4711}).empty());
    EXPECT_TRUE(KorDSMWhereUsed::usagesOf(SourceId::addIn(7), {kTablePointSelection, 1}).empty());
    EXPECT_EQ(KorDSMWhereUsed::findItem(structure, kUser, {kTablePointSelection, 4711}), nullptr);
    EXPECT_EQ(KorDSMWhereUsed::findItem(structure, kUser, {kNoTable, 1}), nullptr);
    EXPECT_EQ(KorDSMWhereUsed::findItem(structure, SourceId::addIn(7), {kTableDetailStyle, 1}), nullptr);
    StructDetViewRequest unused;
    unused.name = "In no style";
    ASSERT_EQ(databases.append(kTableViewRequest, unused), WriteResult::kWritten);
    EXPECT_EQ(KorDSMWhereUsed::findItem(structure, kUser, {kTableViewRequest, unused.key}), nullptr);
}

TEST_F(WhereUsed, IsSaidInANumberAndWhatIsMissingByName) {
    const auto useText = [this](eTableType table, const char* name) {
        databases.setCurrentSource(kUser);
        const RowRef record{table, databases.source(kUser)->table(table).find(KorString(name))->key};
        return KorDSMRecordState::useText(record, KorDSMRecordState::useCountOf(kUser, record));
    };
    EXPECT_EQ(useText(kTableDetailStyle, "HB post 1:15"), "");
    EXPECT_EQ(useText(kTableReprMap, "HB site"), "In 2 views of 1 style");
    EXPECT_EQ(useText(kTableAnnotationStrategy, "HB crane mark"), "In 1 map of 1 style");
    const auto stylesText = [this](eTableType table, const char* name) {
        const RowRef record{table, databases.source(kUser)->table(table).find(KorString(name))->key};
        return KorDSMRecordState::stylesText(KorDSMRecordState::useCountOf(kUser, record));
    };
    EXPECT_EQ(stylesText(kTableReprMap, "HB workshop"),
              "Styles: HB beam 1:15; HB beam, long, 1:10; HB post 1:15");
    EXPECT_TRUE(stylesText(kTableQualifierSet, "HB main profile").view().ends_with(" and 1 more"));
    EXPECT_EQ(stylesText(kTableDetailStyle, "HB post 1:15"), "");

    for (const TableSchema& table : allTables()) {
        const RowArray& rows = databases.source(kUser)->table(table.type).rows();
        for (int i = 0; i < rows.size(); ++i)
            EXPECT_EQ(KorDSMRecordState::missingText(kUser, {table.type, rows.at(i).key}), "")
                << rows.at(i).name.c_str();
    }
    const std::pair<eTableType, const char*> fresh[] = {
        {kTableDetailStyle, "Still missing: View arrangement, Model object selection, Views"},
        {kTableViewRequest, "Still missing: View direction and model box, Object presentation and labeling"},
        {kTableReprMap, "Still missing: Entries"},
        {kTableQualifierSet, "Still missing: Qualifiers"},
        {kTableViewDimStrategy, "Still missing: Dimensions"},
        {kTableDimRequest, "Still missing: Kind of dimension, Start points"},
        {kTableViewArrangeStrategy, ""},
    };
    for (const auto& [table, missing] : fresh) {
        const auto made = KorDSMRecordCommands::create(kUser, table, "Fresh", 1);
        ASSERT_TRUE(made.isStored()) << made.error;
        EXPECT_EQ(KorDSMRecordState::missingText(kUser, made.row), missing);
    }
    const auto lacks = [this](eTableType table, const char* name, const char* column, CellValue value) {
        const RowRef record{table, databases.source(kUser)->table(table).find(KorString(name))->key};
        EXPECT_TRUE(
            databases.setCell(table, KorOdbcKey(record.key), findTable(table)->column(column)->number, value)
                .isStored());
        return KorDSMRecordState::missingText(kUser, record).toStdString();
    };
    // A line has two ends, and a label a text.
    EXPECT_EQ(lacks(kTableDimRequest, "Fresh", "request_type", std::int64_t{1}),
              "Still missing: Start points, End points");
    EXPECT_EQ(lacks(kTableDimRequest, "Fresh", "inner_points", std::int64_t{1}),
              "Still missing: Start points");
    EXPECT_EQ(lacks(kTableAnnotationStrategy, "HB crane mark", "contents", KorString()),
              "Still missing: Contents");
    // A part that lacks something is told of at its whole.
    const RowRef set{kTableQualifierSet, row<StructDetObjQualifierSet>(kUser, "Fresh")->key};
    ASSERT_TRUE(KorDSMPartList(kUser, set, kTableQualifierWithRole).add(0).isStored());
    EXPECT_EQ(KorDSMRecordState::missingText(kUser, set),
              "Still missing: 1. Qualifier of the set: Qualifier");
    EXPECT_EQ(useText(kTableQualifierSet, "Fresh"), "Not used by anything");
}

TEST_F(WhereUsed, WhatIsMissingBelowIsSaidWithItsPlace) {
    databases.setCurrentSource(kUser);
    const RowRef style{kTableDetailStyle, row<StructDetailStyle>(kUser, "HB post 1:15")->key};
    EXPECT_EQ(KorDSMRecordState::lacksBelow(kUser, style).count, 0);
    EXPECT_EQ(KorDSMRecordState::lacksBelow(kUser, {kTableDetailStyle, 4711}).count, 0) << "it may be gone";
    const auto clear = [this](const char* entry, const char* column) {
        const auto* record = row<StructDetObjReprMapKey>(kUser, entry);
        const int number = findTable(kTableReprMapEntry)->column(std::string_view(column))->number;
        EXPECT_TRUE(databases.setCell(kTableReprMapEntry, KorOdbcKey(record->key), number, std::int64_t{0})
                        .isStored());
        return RowRef{kTableReprMapEntry, record->key};
    };
    const RowRef entry = clear("Main part", "appearance");
    const RowRef map{kTableReprMap, row<StructDetObjReprMap>(kUser, "HB workshop")->key};
    EXPECT_EQ(KorDSMRecordState::missingText(kUser, map), "Still missing: 1. Main part: Appearance");
    EXPECT_EQ(KorDSMRecordState::missingText(kUser, style), "");
    const KorDSMRecordState::LacksBelow lacks = KorDSMRecordState::lacksBelow(kUser, style);
    ASSERT_EQ(lacks.count, 1) << "once, however many views use it";
    EXPECT_EQ(lacks.first[0].row, entry);
    EXPECT_EQ(lacks.first[0].column, 5);
    EXPECT_EQ(lacks.first[0].text, "HB workshop › 1. Main part: Appearance");
    EXPECT_EQ(KorDSMRecordState::lacksBelow(kUser, map).count, 0) << "it is said of the map itself";
}

TEST_F(WhereUsed, PointsOfARequestAreToldApartByTheirRole) {
    databases.setCurrentSource(kUser);
    const RowRef request{kTableDimRequest, row<StructDetViewDimRequestLinear>(kUser, "HB depth")->key};
    KorDSMDatabaseItem* item = KorDSMWhereUsed::findItem(structure, kUser, request);
    ASSERT_NE(item, nullptr);
    KorDSMDependencies::createChildren(*item);
    ASSERT_EQ(item->children().length(), 2);
    EXPECT_EQ(item->children()[0]->getDisplayName(), item->children()[1]->getDisplayName());
    EXPECT_EQ(roleOf(*item->children()[0]), "Start points");
    EXPECT_EQ(roleOf(*item->children()[1]), "End points");
    EXPECT_EQ(roleOf(*item), "");
}
