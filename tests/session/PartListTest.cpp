#include "SampleSession.h"

#include "session/KorDSMItemUpdate.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMUndo.h"

#include <random>

namespace {

using Keys = KorDSMPartList::Keys;

class PartList : public SampleSession {
protected:
    PartList() { databases.setCurrentSource(SourceId::user()); }

    KorDSMPartList listOf(const char* map) {
        return {SourceId::user(),
                {kTableReprMap, row<StructDetObjReprMap>(SourceId::user(), map)->key},
                kTableReprMapEntry};
    }
    static std::string names(const KorDSMPartList& list) {
        std::string names;
        for (const std::int32_t key : list.keys())
            names += list.row(key)->name.toStdString() + ";";
        return names;
    }
    static std::vector<int> orders(const KorDSMPartList& list) {
        std::vector<int> orders;
        for (const std::int32_t key : list.keys())
            orders.push_back(static_cast<const StructDetObjReprMapKey*>(list.row(key))->order);
        return orders;
    }
    std::size_t steps() { return databases.pending().steps().size(); }

    KorDSMPartList list = listOf("HB workshop");
    Keys keys = list.keys();
};

} // namespace

TEST_F(PartList, WhatIsListedComesFromTheDeclarations) {
    EXPECT_EQ(KorDSMPartList::listedParts(kTableReprMap), std::vector{kTableReprMapEntry});
    EXPECT_EQ(KorDSMPartList::listedParts(kTableQualifierSet), std::vector{kTableQualifierWithRole});
    EXPECT_EQ(KorDSMPartList::listedParts(kTableViewDimStrategy), std::vector{kTableDimStrategyItem});
    EXPECT_TRUE(KorDSMPartList::listedParts(kTableViewRequest).empty());
    std::string cells;
    for (const Column* column : list.cells())
        cells += column->name + ";";
    EXPECT_EQ(cells, "qualifier_set;appearance;annotation_strategy;");
    EXPECT_TRUE(list.isOrdered());
}

TEST_F(PartList, EachCommandIsOneStepThatKeepsTheOrder) {
    ASSERT_EQ(names(list), "Main part;Fitted parts;Holes;");

    KorDSMPartList::Outcome added = list.add(keys[0]);
    ASSERT_TRUE(added.isStored());
    EXPECT_EQ(list.keys()[1], added.selected.at(0));
    EXPECT_EQ(orders(list), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo adding to \"HB workshop\"");
    EXPECT_TRUE(list.add(0).isStored());
    EXPECT_EQ(list.keys().size(), 5u);
    ASSERT_TRUE(list.remove({list.keys()[1], list.keys()[4]}).isStored());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo removal of 2 entries from \"HB workshop\"");
    EXPECT_EQ(names(list), "Main part;Fitted parts;Holes;");
    EXPECT_EQ(orders(list), (std::vector{1, 2, 3}));

    const auto twice = list.duplicate({keys[0], keys[1]});
    EXPECT_EQ(names(list), "Main part;Fitted parts;Main part;Fitted parts;Holes;");
    EXPECT_EQ(twice.selected, (Keys{list.keys()[2], list.keys()[3]}));
    EXPECT_EQ(orders(list), (std::vector{1, 2, 3, 4, 5}));

    KorDSMUndo::undo();
    KorDSMUndo::undo();
    KorDSMUndo::undo();
    KorDSMUndo::undo();
    EXPECT_EQ(list.keys(), keys);
    EXPECT_FALSE(KorDSMUndo::canUndo());
}

TEST_F(PartList, AMoveWritesOnlyRowsWhoseNumberChanges) {
    EXPECT_EQ(list.moveBy({keys[0]}, -1), WriteResult::kUnchanged) << "there is nothing above";
    EXPECT_EQ(list.moveTo({keys[1]}, 1), WriteResult::kUnchanged);
    EXPECT_EQ(list.moveTo({keys[1]}, 2), WriteResult::kUnchanged);
    EXPECT_EQ(steps(), 0u);
    const KorDSMPartList::Outcome up = list.moveBy({keys[2]}, -1);
    EXPECT_EQ(names(list), "Main part;Holes;Fitted parts;");
    EXPECT_EQ(up.selected, Keys{keys[2]});
    EXPECT_EQ(up.changes.size(), 2u);
    EXPECT_EQ(steps(), 2u);
    // Rows that don't stand together come together, in their order.
    EXPECT_TRUE(list.moveTo({keys[1], keys[0]}, 3).isStored());
    EXPECT_EQ(names(list), "Holes;Main part;Fitted parts;");
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo move of 2 entries of \"HB workshop\"");
    EXPECT_TRUE(list.moveBy({keys[2]}, 99).isStored());
    EXPECT_EQ(names(list), "Main part;Fitted parts;Holes;");
}

TEST_F(PartList, GapsAndTiesStandStillUntilACommandMendsThem) {
    const auto order = [&](std::size_t row, int value) {
        ASSERT_EQ(databases.setCell(kTableReprMapEntry, KorOdbcKey(keys[row]), 3, std::int64_t{value}),
                  WriteResult::kWritten);
    };
    order(0, 7);
    order(1, 7);
    order(2, -3);
    EXPECT_EQ(list.keys(), (Keys{keys[2], keys[0], keys[1]}));
    ASSERT_TRUE(list.moveBy({keys[1]}, -1).isStored());
    EXPECT_EQ(list.keys(), (Keys{keys[2], keys[1], keys[0]}));
    EXPECT_EQ(orders(list), (std::vector{1, 2, 3}));
}

TEST_F(PartList, IsNotWrittenWithoutConsentOrWhereNothingMayBeWritten) {
    answer = KorDSMGuardedWrite::kDecline;
    const auto shared = list.remove({keys[0]});
    const bool wasAsked = !shared.isStored();
    EXPECT_EQ(wasAsked, KorDSMGuardedWrite::needsConfirmation(kTableReprMap, KorOdbcKey(list.whole().key)));
    if (wasAsked) {
        EXPECT_EQ(list.keys(), keys);
        EXPECT_EQ(steps(), 0u);
        EXPECT_TRUE(assertions.empty());
    }
    KorDSMPartList standard(
        SourceId::standard(),
        {kTableReprMap, row<StructDetObjReprMap>(SourceId::standard(), "Single part")->key},
        kTableReprMapEntry);
    const auto refused = standard.add(0);
    EXPECT_FALSE(refused.isStored());
    EXPECT_NE(refused.error, "");
}

// Whatever is done, the order stays whole, the items show it, and all of it can be taken back.
TEST_F(PartList, RandomCommandsKeepTheOrderAndAreTakenBack) {
    std::mt19937 random(7);
    KorDSMDatabaseItem& style = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    const Keys before = keys;
    int done = 0;
    for (int i = 0; i < 400; ++i) {
        const Keys now = list.keys();
        Keys rows;
        for (const std::int32_t key : now)
            if (random() % 3 == 0)
                rows.push_back(key);
        const int place = static_cast<int>(random() % (now.size() + 1));
        KorDSMPartList::Outcome outcome{{WriteResult::kUnchanged}};
        switch (now.size() > 12 ? 1 : random() % 5) {
        case 0:
            outcome = list.add(now.empty() ? 0 : now[random() % now.size()]);
            break;
        case 1:
            outcome = rows.empty() ? outcome : list.remove(rows);
            break;
        case 2:
            outcome = rows.empty() ? outcome : list.duplicate(rows);
            break;
        case 3:
            outcome = rows.empty() ? outcome : list.moveTo(rows, place);
            break;
        default:
            outcome = rows.empty() ? outcome : list.moveBy(rows, random() % 2 ? 1 : -1);
            break;
        }
        done += outcome == WriteResult::kWritten;
        KorDSMItemUpdate::follow(structure, outcome.changes);
        for (KorDSMDatabaseItem* view : expand(style))
            for (KorDSMDatabaseItem* part : expand(*view))
                if (part->tableType() == kTableReprMap && part->recordKey() == list.whole().key) {
                    Keys shown;
                    for (const KorDSMDatabaseItem* entry : expand(*part))
                        shown.push_back(entry->recordKey());
                    ASSERT_EQ(shown, list.keys());
                }
        int expected = 0;
        for (const int order : orders(list))
            ASSERT_EQ(order, ++expected);
    }
    EXPECT_GT(done, 200);
    while (done-- > 0)
        KorDSMItemUpdate::follow(structure, KorDSMUndo::undo());
    EXPECT_FALSE(KorDSMUndo::canUndo());
    EXPECT_EQ(list.keys(), before);
}

TEST_F(PartList, QualifierSetsReadAsSentences) {
    databases.setCurrentSource(SourceId::standard());
    const auto sentence = [&](const char* set) {
        return KorDSMQualifierWords::sentenceOf(
            row<StructDetObjQualifierSet>(SourceId::standard(), set)->key);
    };
    EXPECT_EQ(sentence("Beams"), "Profile family is I, H and channel sections as Main part, and "
                                 "Profile inclination is not Upright");
    EXPECT_EQ(sentence("All profiles"), "any Profile");
    EXPECT_NE(sentence("Bracing members").view().find(", or Profile family is Round bars"),
              std::string_view::npos);
    EXPECT_EQ(KorDSMQualifierWords::sentenceOf(0), "");
}
