#include "data/StyleDatabases.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMSelectionHistory.h"
#include "session/KorDSMUndo.h"
#include "session/SampleSession.h"

namespace {

class SelectionHistory : public SampleSession {
protected:
    KorDSMDatabaseItem& style(const KorString& name) {
        return item<StructDetailStyle>(SourceId::user(), name);
    }
    bool canGoBack() const { return history.canGoBack(exists); }
    bool canGoForward() const { return history.canGoForward(exists); }
    std::string nameAt(const std::optional<KorDSMPlace>& place) {
        KorDSMDatabaseItem* found = place ? place->find(structure) : nullptr;
        return found ? found->getDisplayName().toStdString() : "nothing";
    }
    std::string back() { return nameAt(history.goBack(exists)); }
    std::string forward() { return nameAt(history.goForward(exists)); }

    KorDSMSelectionHistory history;
    KorDSMSelectionHistory::Exists exists = [this](const KorDSMPlace& place) {
        return place.isStillThere(structure);
    };
};

} // namespace

TEST_F(SelectionHistory, PassesOverStalePlacesAndStaysWhereThereIsNoOther) {
    EXPECT_FALSE(canGoBack() || canGoForward());
    const auto copied = KorDSMItemCommands::copyItem(style("HB post 1:15"), "HB post 1:20");
    ASSERT_TRUE(copied.isStored());
    history.record(KorDSMPlace(*copied.added.front()));
    history.record(KorDSMPlace(style("HB post 1:15")));
    history.record(KorDSMPlace(style("HB post 1:15")));
    EXPECT_EQ(history.position(), 2);
    EXPECT_TRUE(canGoBack());
    EXPECT_FALSE(canGoForward());
    {
        const auto deleted = KorDSMItemCommands::deleteItem(*copied.added.front());
        ASSERT_TRUE(deleted.isStored());
    }
    EXPECT_FALSE(canGoBack()) << "only a stale place and the same one are left";
    EXPECT_EQ(back(), "nothing");
    EXPECT_EQ(history.position(), 2);
    history.record(KorDSMPlace(*style("HB post 1:15").parent()));
    EXPECT_EQ(back(), "HB post 1:15");
    EXPECT_EQ(history.position(), 2);
    EXPECT_FALSE(canGoBack());
    EXPECT_EQ(history.places().size(), 4U) << "stale places are never removed";

    KorDSMUndo::undo();
    EXPECT_TRUE(canGoBack()) << "the row is back";
    EXPECT_TRUE(canGoForward());
    // From the middle: the place that was left comes again before the new one.
    history.record(KorDSMPlace(*style("HB post 1:15").children()[0]));
    EXPECT_EQ(history.places().size(), 6U);
    EXPECT_EQ(history.position(), 5);
    EXPECT_EQ(back(), "HB post 1:15");
    EXPECT_EQ(forward(), "HB front");
}

TEST_F(SelectionHistory, FindsPlacesInWhatWasLoadedAnew) {
    KorDSMDatabaseItem& view = *style("HB post 1:15").children()[0];
    const KorDSNRequest request(SourceId::user().dsn, SourceId::user().index);
    KorDSMDependencies::createChildren(view);
    KorDSMDatabaseItem* deep = view.children()[view.children().length() - 1];
    const std::vector<KorDSMPlace> places = {KorDSMPlace(*deep),
                                             KorDSMPlace(view),
                                             KorDSMPlace(*view.parent()),
                                             KorDSMPlace(*view.parent()->parent()),
                                             KorDSMPlace(*KorDSMItemPath::addInOf(view)),
                                             KorDSMPlace(*KorDSMItemPath::addInOf(view)->parent())};
    std::vector<std::string> names;
    for (const KorDSMPlace& place : places)
        names.push_back(nameAt(place));
    structure.emptyDataStructure();
    for (const KorDSMPlace& place : places)
        EXPECT_FALSE(place.isStillThere(structure));
    KorDSMSectionLoader().loadDataStructure(structure);
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_TRUE(places[i].isStillThere(structure));
        EXPECT_EQ(nameAt(places[i]), names[i]);
        EXPECT_EQ(KorDSMPlace(*places[i].find(structure)), places[i]);
        EXPECT_EQ(places[i].section(), KorDSMDefines::kViewDetailStyles);
    }
    EXPECT_EQ(names[1], "HB front");

    StyleSource& source = *databases.source(SourceId::user());
    source.dropTables();
    for (const KorDSMPlace& place : places)
        EXPECT_TRUE(place.isStillThere(structure));
    for (const TableSchema& table : allTables())
        EXPECT_FALSE(source.isRead(table)) << table.name << " was read for it";
}
