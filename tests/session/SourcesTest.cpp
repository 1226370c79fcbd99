#include "services/AddInManager.h"
#include "session/KorDSMExchange.h"
#include "session/KorDSMReload.h"
#include "session/KorDSMSources.h"
#include "session/SampleSession.h"

using namespace KorDSMDefines;

namespace {

class Sources : public SampleSession {
protected:
    void addAddIn() {
        std::filesystem::remove_all(folder.path() / "addins");
        folder.write("addins/bridges/addin.ini", "name = Bridges");
        std::filesystem::copy(file("user.dsdb"), folder.path() / "addins/bridges/styles.dsdb");
        AddInManager::getInstance().scan(folder.path());
        const KorAddIn& addIn = AddInManager::getInstance().addIns().front();
        EXPECT_EQ(
            databases.openFile(SourceId::addIn(addIn.id().number), addIn.database().string(), true).error,
            "");
        reloadDataStructure(structure);
    }
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
    addAddIn();
    all = paths();
    EXPECT_FALSE(has(all, "Standard/Beams"));
    EXPECT_TRUE(has(all, "Standard/General/Beams"));
    EXPECT_TRUE(has(all, "Standard/Bridges/Hallberg: railings"));
    EXPECT_TRUE(has(all, "User/Hallberg: railings"));
}

TEST_F(Sources, ARememberedSourceThatIsGoneIsTheStandardOneInstead) {
    addAddIn();
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
