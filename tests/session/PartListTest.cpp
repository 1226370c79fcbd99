#include "SampleSession.h"

#include "session/KorDSMCommit.h"
#include "session/KorDSMCopiedRows.h"
#include "session/KorDSMCopyWish.h"
#include "session/KorDSMItemUpdate.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMQualifierWords.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMRecordUse.h"
#include "session/KorDSMUndo.h"

#include <array>
#include <cstdlib>
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
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo adding to \"HB workshop\": Representation map entry");
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

// Whatever is done to lists and records, orders stay whole, the items show it, and all of it can be taken
// back, so that the file stays as it was to the last byte.
TEST_F(PartList, RandomCommandsKeepTheOrderAndAreAllTakenBack) {
    constexpr int kCommands = 10'000;
    const std::string bytes = bytesOf(file("user.dsdb"));
    KorDSMDatabaseItem& style = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    const char* seed = std::getenv("DETAILSTYLES_SEED");
    std::mt19937 random(seed ? static_cast<unsigned>(std::atoi(seed)) : 7);
    const auto below = [&random](std::size_t limit) { return static_cast<int>(random() % limit); };
    const auto open = [this](eTableType whole, const char* name, eTableType parts) {
        return KorDSMEditedList::of(
            SourceId::user(),
            {whole, databases.source(SourceId::user())->table(whole).find(KorString(name))->key}, parts);
    };
    const std::unique_ptr<KorDSMEditedList> lists[] = {
        open(kTableReprMap, "HB workshop", kTableReprMapEntry),
        open(kTableDetailStyle, "HB post 1:15", kTableDetailStyle),
        open(kTableQualifierSet, "HB holes", kTableQualifierWithRole),
        open(kTableViewDimStrategy, "HB chain", kTableDimStrategyItem)};
    const auto firstView = [this] {
        return databases.source(SourceId::user())->table(kTableViewRequest).rows().at(0).key;
    };
    const auto edit = [&](KorDSMEditedList& edited) -> KorDSMEditedList::Outcome {
        const Keys now = edited.keys();
        Keys rows;
        std::ranges::copy_if(now, std::back_inserter(rows), [&](std::int32_t) { return below(3) == 0; });
        if (rows.empty())
            return edited.canBeEmpty() ? edited.add(0) : edited.add(0, std::int64_t{firstView()});
        switch (now.size() > 12 ? 0 : below(6)) {
        case 0:
            return edited.remove(rows);
        case 1:
            return edited.duplicate(rows);
        case 2:
            return edited.moveTo(rows, below(now.size() + 1));
        case 3:
            return edited.moveBy(rows, below(2) ? 1 : -1);
        case 4:
            return edited.set(rows, *edited.cells().front(),
                              edited.value(now.back(), *edited.cells().front()));
        default: {
            std::vector<RowRef> records;
            for (const std::int32_t key : rows)
                records.push_back(edited.record(key));
            const auto text = KorDSMCopiedRows::textOf(SourceId::user(), records);
            return edited.paste(now.front(), KorDSMCopiedRows::read(text.value, edited.recordTable()),
                                eNamesakes::kUseTheirs);
        }
        }
    };
    const auto treat = [&](eTableType table) {
        const RowArray& rows = databases.source(SourceId::user())->table(table).rows();
        const RowRef one{table, rows.at(below(static_cast<std::size_t>(rows.size()))).key};
        const KorString name("Random " + std::to_string(random()));
        const bool isListed =
            std::ranges::any_of(lists, [one](const auto& each) { return each->whole() == one; });
        switch (rows.size() > 40 ? 2 : below(isListed ? 2 : 3)) {
        case 0:
            return KorDSMRecordCommands::copy(SourceId::user(), one, name,
                                              static_cast<KorDSMRecordCommands::eDepth>(below(2)));
        case 1:
            return KorDSMRecordCommands::rename(SourceId::user(), one, name);
        default:
            return KorDSMRecordCommands::remove(SourceId::user(), one);
        }
    };
    for (int i = 0; i < kCommands; ++i) {
        const std::size_t before = KorDSMUndo::stepCount();
        KorDSMEditedList& edited = *lists[below(std::size(lists))];
        if (below(4) != 0)
            edit(edited);
        else
            treat(std::array{kTableViewRequest, kTableReprMap, kTableAppearance,
                             kTableSystemAndBox}[static_cast<std::size_t>(below(4))]);
        KorDSMItemUpdate::follow(structure, KorDSMUndo::changesSince(before));
        int expected = 0;
        for (const int order : orders(list))
            ASSERT_EQ(order, ++expected);
        if (i % 100 == 0)
            for (KorDSMDatabaseItem* view : expand(style))
                for (KorDSMDatabaseItem* part : expand(*view))
                    if (part->tableType() == kTableReprMap && part->recordKey() == list.whole().key) {
                        Keys shown;
                        for (const KorDSMDatabaseItem* entry : expand(*part))
                            shown.push_back(entry->recordKey());
                        ASSERT_EQ(shown, list.keys());
                    }
    }
    int undone = 0;
    for (; KorDSMUndo::canUndo(); ++undone)
        KorDSMItemUpdate::follow(structure, KorDSMUndo::undo());
    EXPECT_GT(undone, kCommands / 2);
    EXPECT_EQ(list.keys(), keys);
    EXPECT_TRUE(KorDSMCommit::keepAndGoOn().ok());
    EXPECT_EQ(bytesOf(file("user.dsdb")), bytes);
}

// What is pasted is what was copied, whatever became of the original, and brings what is not there.
TEST_F(PartList, CopiedRowsOutliveTheirOriginals) {
    const KorString set = list.text(keys[0], *list.cells()[0]);
    const auto text = KorDSMCopiedRows::textOf(SourceId::user(), {list.record(keys[0])});
    const std::shared_ptr<KorDSMCopiedRows> copied = KorDSMCopiedRows::read(text.value, kTableReprMapEntry);
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(KorDSMCopiedRows::read(text.value, kTableDimStrategyItem), nullptr);
    EXPECT_EQ(KorDSMCopiedRows::read(text.value + " ", kTableReprMapEntry), nullptr)
        << "it was tampered with";
    EXPECT_EQ(copied->compareWith(SourceId::user(), list.cells()).missing.size(), 0U);

    // The record of that name is meant where it was copied, whatever it holds by now.
    const std::int32_t key = row<StructDetObjQualifierSet>(SourceId::user(), set)->key;
    ASSERT_TRUE(databases.setCell(kTableQualifierSet, KorOdbcKey(key), 4, KorString("Changed")).isStored());
    EXPECT_EQ(copied->compareWith(SourceId::user(), list.cells()).different.size(), 0U);
    ASSERT_TRUE(databases.setCell(kTableQualifierSet, KorOdbcKey(key), 1, KorString("Renamed")).isStored());
    EXPECT_EQ(copied->compareWith(SourceId::user(), {list.cells()[0]}).missing.size(), 1U);
    const std::size_t before = steps();
    const KorDSMEditedList::Outcome pasted = list.paste(keys[2], copied, eNamesakes::kUseTheirs);
    ASSERT_TRUE(pasted.isStored()) << pasted.error;
    EXPECT_EQ(list.text(pasted.selected.at(0), *list.cells()[0]), set);
    EXPECT_NE(row<StructDetObjQualifierSet>(SourceId::user(), set), nullptr);
    KorDSMUndo::undo();
    EXPECT_EQ(steps(), before) << "it is one step";
    EXPECT_EQ(list.paste(0, copied, eNamesakes::kUseTheirs).selected.size(), 1u);
    EXPECT_TRUE(
        list.pasteCells({keys[0], keys[1]}, *list.cells()[1], copied, eNamesakes::kUseTheirs).isStored());
    EXPECT_EQ(list.text(keys[1], *list.cells()[1]), list.text(keys[0], *list.cells()[1]));
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

TEST_F(PartList, AChangeOfASharedListIsMadeInTheCopyThatIsWishedInstead) {
    using Change = std::function<KorDSMPartList::Outcome()>;
    const auto& view = *row<StructDetViewRequest>(SourceId::user(), "HB front");
    const KorDSMRecordUse::Use use{
        {kTableViewRequest, view.key}, findTable(kTableViewRequest)->column(3), {}};
    ASSERT_EQ(use.column->target, kTableReprMap);
    const std::shared_ptr<KorDSMCopiedRows> copied = KorDSMCopiedRows::read(
        KorDSMCopiedRows::textOf(SourceId::user(), {list.record(keys[2])}).value, kTableReprMapEntry);
    const std::vector<std::pair<Change, std::string>> changes = {
        {[&] { return list.moveTo({keys[2]}, 0); }, "Holes;Main part;Fitted parts;"},
        {[&] { return list.remove({keys[1]}); }, "Main part;Holes;"},
        {[&] { return list.duplicate({keys[0]}); }, "Main part;Main part;Fitted parts;Holes;"},
        {[&] { return list.paste(keys[0], copied, eNamesakes::kUseTheirs); },
         "Main part;Holes;Fitted parts;Holes;"},
        {[&] { return list.set({keys[1]}, *list.table().column(1), KorString("Fittings")); },
         "Main part;Fittings;Holes;"},
    };
    for (const auto& [change, expected] : changes) {
        answer = KorDSMGuardedWrite::kCopy;
        EXPECT_EQ(change().kind, WriteResult::kMakeCopy);
        answer = KorDSMGuardedWrite::kWrite;
        const auto copy =
            KorDSMRecordUse::copyFor(SourceId::user(), use, "HB front's own", KorDSMCopyWish::take());
        ASSERT_TRUE(copy.isStored()) << copy.error;
        EXPECT_EQ(names(listOf("HB front's own")), expected);
        EXPECT_EQ(names(list), "Main part;Fitted parts;Holes;");
        KorDSMUndo::undo();
        EXPECT_EQ(row<StructDetObjReprMap>(SourceId::user(), "HB front's own"), nullptr) << "one step";
    }
}

TEST_F(PartList, NoStepQuotesANameThatNobodyGave) {
    const std::int32_t made = list.add(0).selected.front();
    ASSERT_TRUE(list.set({made}, *list.cells()[1], std::int64_t{1}).isStored());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo change of Appearance of an entry of \"HB workshop\"");
    ASSERT_TRUE(list.set({keys[0]}, *list.cells()[1], std::int64_t{2}).isStored());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo change of Appearance of \"Main part\" in \"HB workshop\"");
}
