#include "services/KorHostReport.h"
#include "session/DataFolder.h"
#include "session/KorDSMExchange.h"
#include "session/KorDSMListContents.h"
#include "session/KorDSMOpenedFile.h"
#include "session/KorDSMReadProblems.h"
#include "session/KorDSMReload.h"
#include "session/KorDSMSources.h"
#include "session/SampleSession.h"

using namespace KorDSMDefines;

namespace {

class Sources : public SampleSession {
protected:
    KorDsmSectionItem& styles() { return *structure.getSection(kViewDetailStyles); }
    std::vector<std::string> paths() {
        std::vector<std::string> paths;
        for (const KorDSMSources::Entry& entry : KorDSMSources::entriesOf(styles(), "/")) {
            paths.push_back(entry.path.toStdString());
            EXPECT_EQ(KorDSMSources::pathOf(styles(), entry.node, "/"), entry.path);
        }
        return paths;
    }
    static bool has(const std::vector<std::string>& paths, const std::string& path) {
        return std::ranges::find(paths, path) != paths.end();
    }
};

} // namespace

TEST_F(Sources, OfADatabaseWithoutAddInsAreItsGroupsAndOtherwiseTheAddIns) {
    std::vector<std::string> all = paths();
    EXPECT_EQ(all.front(), "Standard");
    EXPECT_TRUE(has(all, "Standard/Beams"));
    EXPECT_TRUE(has(all, "User/Hallberg: railings"));
    installAddIns({"bridges"});
    all = paths();
    EXPECT_FALSE(has(all, "Standard/Beams"));
    EXPECT_TRUE(has(all, "Standard/General/Beams"));
    EXPECT_TRUE(has(all, "Standard/Made for bridges/Hallberg: railings"));
    EXPECT_TRUE(has(all, "User/Hallberg: railings"));
}

TEST_F(Sources, ARememberedSourceThatIsGoneIsTheStandardOneInstead) {
    installAddIns({"bridges"});
    const SourceId bridges = SourceId::addIn(0);
    structure.setTargetDatabase(kViewDetailStyles, bridges.dsn);
    structure.setTargetAddIn(kViewDetailStyles, bridges.index);
    KorDsmAddInContentItem* source = KorDSMSources::current(structure, kViewDetailStyles);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(KorDSMItemSource::sourceOf(source), bridges);
    AddInManager::getInstance().scan(folder.path() / "nowhere");
    reloadDataStructure(structure);
    source = KorDSMSources::current(structure, kViewDetailStyles);
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(KorDSMItemSource::sourceOf(source), SourceId::standard());

    EXPECT_EQ(&KorDSMSources::rememberedGroup(structure, kViewDetailStyles, *source), source);
    KorDSMDatabaseItem* group = source->children()[1];
    structure.setSelectedCategory(kViewDetailStyles, group->recordKey());
    EXPECT_EQ(&KorDSMSources::rememberedGroup(structure, kViewDetailStyles, *source), group);
}

TEST_F(Sources, LoadedAnewTheStructureKeepsItsPlaces) {
    structure.setSelectedSection(kViewAnnotations);
    structure.setTargetDatabase(kViewAnnotations, KorDSNDefinitions::kUser);
    structure.setTargetAddIn(kViewAnnotations, KorDSNDefinitions::kUserIndex);
    structure.getSelectedPath(kViewQualifiers) = KorDSMItemPath::textsTo(styles());
    reloadDataStructure(structure);
    EXPECT_EQ(structure.getSelectedSection(), kViewAnnotations);
    EXPECT_EQ(structure.getTargetDatabase(kViewAnnotations), KorDSNDefinitions::kUser);
    EXPECT_EQ(structure.getSelectedPath(kViewQualifiers).length(), 1);
    EXPECT_EQ(structure.getUpdateStatus(), KorDSMDataStructure::kUpToDate);
}

TEST_F(Sources, AListCountsWhatLiesBelowEachRow) {
    const auto rows = [](const KorDSMDatabaseItem& node) {
        std::vector<std::string> texts;
        const KorDSMListContents contents = KorDSMListContents::of(node);
        EXPECT_EQ(contents.titles.size(), contents.numeric.size());
        for (const KorDSMListContents::Row& row : contents.rows) {
            EXPECT_EQ(row.texts.size(), contents.titles.size());
            texts.push_back(row.texts.front().toStdString());
            if (contents.numeric.back())
                texts.back() += " " + row.texts.back().toStdString();
        }
        return texts;
    };
    KorDSMDatabaseItem& category = item<StructDetBaseCategory>(SourceId::user(), "Hallberg: posts and beams");
    KorDSMDatabaseItem& post = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    using Rows = std::vector<std::string>;
    const Rows categories = {"Hallberg: posts and beams 3", "Hallberg: railings 2",
                             "Hallberg: site drawings 1"};
    EXPECT_EQ(rows(category), (Rows{"HB post 1:15 3", "HB beam 1:15 3", "HB beam, long, 1:10 3"}));
    EXPECT_EQ(rows(post), (Rows{"HB front", "HB side", "HB section"}))
        << "views are counted when they are opened";
    EXPECT_EQ(rows(*styles().children()[1]), categories) << "what is in its only content";
    const std::string general = std::to_string(styles().children()[0]->children()[0]->children().length());
    EXPECT_EQ(rows(styles()), (Rows{"Standard " + general, "User 3"}));
    installAddIns({"bridges"});
    EXPECT_EQ(rows(*styles().children()[0]), (Rows{"General " + general, "Made for bridges 3"}));
    EXPECT_EQ(rows(*styles().children()[0]->children()[1]), categories);
}

TEST_F(Sources, ItemsOfAnAddInHaveItsSource) {
    installAddIns({"bridges", "cranes"});
    KorDSMItemSource selection;
    for (const SourceId id :
         {SourceId::standard(), SourceId::addIn(0), SourceId::addIn(1), SourceId::user()}) {
        KorDSMDatabaseItem& content = *KorDSMItemPath::findAddIn(styles(), id);
        KorDSMDatabaseItem& view = *content.children()[0]->children()[0]->children()[0];
        for (KorDSMDatabaseItem* item : {&content, &view}) {
            EXPECT_EQ(KorDSMItemSource::sourceOf(item), id);
            EXPECT_TRUE(selection.select(item));
            EXPECT_EQ(selection.selected(), id);
            EXPECT_EQ(databases.currentSource(), id);
        }
    }
    EXPECT_FALSE(selection.select(&styles())) << "a section has none";
    EXPECT_EQ(databases.currentSource(), SourceId::user());
    EXPECT_EQ(KorDSMItemSource::sourceOf(nullptr), SourceId::user());
}

TEST_F(Sources, WhatCannotBeReadIsToldOnceAndWhatIsOutOfRangeNever) {
    KorDSMReadProblems problems;
    const auto told = [&](const char* change) {
        databases.closeSource(SourceId::user());
        OtherProgram(file("user.dsdb")).run(change);
        EXPECT_EQ(databases.openFile(SourceId::user(), file("user.dsdb"), false).error, "");
        static_cast<void>(databases.source(SourceId::user())->complete());
        KorHostReport::take();
        problems.reportNew();
        return KorHostReport::take().size();
    };
    EXPECT_EQ(told("UPDATE detail_style SET title_position = 99"), 0U);
    const char* damage = "UPDATE view_request SET scale = 'x' WHERE name = 'HB front'";
    EXPECT_EQ(told(damage), 1U);
    EXPECT_EQ(told(damage), 0U);
    EXPECT_EQ(told("UPDATE view_request SET scale = 0.1 WHERE name = 'HB front'"), 0U);
    EXPECT_EQ(told(damage), 1U) << "it went and came again";
}

TEST(ExchangeSummary, CountsWhatCameAndWhatWasThere) {
    ImportReport report;
    report.imported = {"A"};
    EXPECT_EQ(KorDSMExchange::summaryOf(report).view(), "1 detail style was imported.");
    report.imported = {"A", "B"};
    report.alreadyThere = {"C"};
    EXPECT_EQ(KorDSMExchange::summaryOf(report).view(),
              "2 detail styles were imported. 1 was there already.");
    report.alreadyThere = {"C", "D"};
    EXPECT_TRUE(KorDSMExchange::summaryOf(report).view().ends_with("2 were there already."));
}

TEST_F(Sources, TwoSourcesCanChangeTheirPlaces) {
    folder.write("sources.ini", "[standard]\nfile = user.dsdb\n[user]\nfile = standard.dsdb\n");
    DataFolder places(folder.path());
    std::set<SourceId> moved = {SourceId::standard(), SourceId::user()};
    EXPECT_TRUE(places.openAnew(moved));
    EXPECT_TRUE(moved.empty() && places.problems().empty());
    EXPECT_TRUE(databases.source(SourceId::standard())->store().name().ends_with("user.dsdb"));
    EXPECT_TRUE(databases.source(SourceId::user())->store().name().ends_with("standard.dsdb"));
}

TEST_F(Sources, AnOpenedFileIsOneMoreSourceThatCanOnlyBeReadAndIsOpenOnce) {
    std::filesystem::copy(file("user.dsdb"), file("by mail.dsdb"));
    const std::size_t open = databases.sources().size();
    EXPECT_EQ(KorDSMOpenedFile::open(file("standard.dsdb")).value, SourceId::standard());
    const SourceId source = KorDSMOpenedFile::open(file("by mail.dsdb")).value;
    std::filesystem::create_symlink(file("by mail.dsdb"), file("link.dsdb"));
    EXPECT_EQ(KorDSMOpenedFile::open(file("link.dsdb")).value, source);
    EXPECT_EQ(databases.sources().size(), open + 1);
    folder.write("letter.dsdb", "Dear colleague");
    for (const char* wrong : {"letter.dsdb", "nowhere.dsdb"})
        EXPECT_NE(KorDSMOpenedFile::open(file(wrong)).error, "") << wrong;
    EXPECT_EQ(AddInManager::getInstance().addIns().size(), 1U);
    databases.setOwnerMode(true);
    EXPECT_FALSE(databases.isEditable(source));

    KorDSMOpenedFile::select(source);
    const KorArray<KorString>& place = structure.getSelectedPath(kViewDetailStyles);
    ASSERT_GE(place.length(), 5);
    EXPECT_EQ(place[2], "by mail.dsdb");
    EXPECT_EQ(KorDSMItemPath::findAddIn(styles(), source)->children()[0]->children()[0]->getDisplayName(),
              place[4]);
}
