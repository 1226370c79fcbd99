#include "EditingProgram.h"
#include "StyleFixture.h"

#include "data/check/ConsistencyCheck.h"
#include "support/Mentions.h"
#include "support/OtherProgram.h"

#include <algorithm>
#include <functional>

// Another program stores what cannot stand beside what is pending.

namespace {

class ReplayTest : public StyleFixture {
protected:
    void SetUp() override {
        StyleFixture::SetUp();
        m_style = addStyle(kUser, "Column", 1);
        StructDetailStyle style = *row<StructDetailStyle>(kUser, m_style);
        style.viewRequests[1] = row<StructDetViewRequest>(kUser, "Column top")->key;
        style.viewRequests[2] = addView("Column section");
        databases.setCurrentSource(kUser);
        ASSERT_EQ(databases.store(kTableDetailStyle, style), WriteResult::kWritten);
        addView("Column side");
        m_category = add<StructDetBaseCategory>(kUser, "Empty");
        ASSERT_TRUE(commit());
        open(false);
        databases.setCurrentSource(kUser);
        m_odd = EditingProgram::oddities(databases);
    }
    /// Whatever was done must leave a sound database in which every style has one master.
    void TearDown() override {
        EXPECT_TRUE(commit());
        EXPECT_TRUE(databases.pending().isEmpty());
        open(false);
        databases.setCurrentSource(kUser);
        EXPECT_EQ(EditingProgram::oddities(databases), m_odd);
        EXPECT_EQ(EditingProgram::stylesWithoutOneMaster(databases), 0);
    }

    std::int32_t addView(const char* name) {
        StructDetViewRequest view = *row<StructDetViewRequest>(kUser, "Column front");
        view.key = 0;
        return add(kUser, name, view);
    }
    void others(const std::string& sql) { OtherProgram(file("user.dsdb")).run(sql); }
    void otherEditor(const std::function<void(EditingProgram&)>& work) {
        EditingProgram other(file("user.dsdb"));
        work(other);
        EXPECT_TRUE(other.commit());
    }
    /// What the user would be asked or told; `mine` is the answer to all.
    std::vector<OutsideConflict> settle(bool mine = false) {
        std::vector<OutsideConflict> conflicts;
        for (const OutsideChange& change : databases.refreshChanged()) {
            EXPECT_EQ(change.error, "");
            conflicts.insert(conflicts.end(), change.conflicts.begin(), change.conflicts.end());
        }
        for (const OutsideConflict& conflict : conflicts) {
            const bool canKeep = conflict.reason.isEmpty() && conflict.kind != OutsideConflict::eKind::kGone;
            EXPECT_TRUE(!mine || databases.keepMine(kUser, conflict).isStored() == canKeep);
        }
        return conflicts;
    }
    std::string reasonOf(const std::vector<OutsideConflict>& conflicts) {
        return conflicts.size() == 1 ? conflicts[0].reason.toStdString()
                                     : std::to_string(conflicts.size()) + " conflicts";
    }
    const StructDetailMaster* masterOf(const char* style) {
        const auto* found = row<StructDetailStyle>(kUser, style);
        const auto rows = found ? databases.source(kUser)->referrersOf(kTableDetailStyle, found->key)
                                : std::vector<Referrer>();
        return rows.size() == 1 ? row<StructDetailMaster>(kUser, rows[0].key) : nullptr;
    }
    /// The views of the style, in the order of its slots.
    std::string views() {
        std::string names;
        for (const std::int32_t key : row<StructDetailStyle>(kUser, m_style)->viewRequests)
            if (key > 0)
                names += row<StructDetViewRequest>(kUser, key)->name.toStdString().substr(7) + " ";
        return names;
    }
    void setViews(std::initializer_list<const char*> names) { setViews(mine(), names); }
    static void setViews(EditingProgram& program, std::initializer_list<const char*> names) {
        program.setViews("Column", std::vector<std::string>(names.begin(), names.end()));
    }
    EditingProgram& mine() { return m_mine; }

    std::int32_t m_style = 0;
    std::int32_t m_category = 0;
    std::multiset<std::string> m_odd;

private:
    EditingProgram m_mine{databases};
};

} // namespace

TEST_F(ReplayTest, NewRowsThatEqualThoseOfAnotherProgramStayNewWithAllThatBelongsToThem) {
    for (const bool typed : {false, true}) {
        const KorString name = typed ? "Typed" : "Plain";
        mine().addStyle(name, "Columns");
        if (typed)
            mine().set<StructDetailStyle>(name, 3, KorString("mine"));
        mine().copyRow<StructDetObjQualifierSet>("Beams", name + KorString(" mine"));
        mine().copyRow<StructDetObjReprMap>("Steel", name + KorString(" mine"));
        otherEditor([&](EditingProgram& other) {
            other.addStyle(name, "Columns");
            other.copyRow<StructDetObjQualifierSet>("Beams", name + KorString(" theirs"));
            other.copyRow<StructDetObjReprMap>("Steel", name + KorString(" theirs"));
        });
        EXPECT_EQ(settle().size(), 1u) << "the style has another name, which is told";
        EXPECT_TRUE(commit());
        open(false);
        databases.setCurrentSource(kUser);
        const auto* theirs = masterOf(name.c_str());
        const auto* own = masterOf((name + KorString(" 1")).c_str());
        ASSERT_TRUE(theirs && own);
        EXPECT_NE(own->number, theirs->number);
        EXPECT_EQ(own->name, name + KorString(" 1"));
        for (const char* whose : {" mine", " theirs"}) {
            StyleSource& source = *databases.source(kUser);
            const auto set = row<StructDetObjQualifierSet>(kUser, name + KorString(whose))->key;
            EXPECT_EQ(partsOf(source, {kTableQualifierSet, set}).size(), 1u) << whose;
            const auto map = row<StructDetObjReprMap>(kUser, name + KorString(whose))->key;
            EXPECT_EQ(partsOf(source, {kTableReprMap, map}).size(), 2u) << whose;
        }
    }
}

TEST_F(ReplayTest, ADeletionIsDecidedForTheRowAndWhatIdentifiesItTogether) {
    for (const char* change : {"UPDATE detail_style SET description = 'theirs'",
                               "UPDATE detail_master SET category = (SELECT \"key\" FROM base_category WHERE "
                               "name = 'Empty')"}) {
        mine().removeStyle("Column");
        others(change);
        const std::string theirs = contentOf(kUser);
        const auto asked = settle();
        ASSERT_EQ(asked.size(), 1u);
        EXPECT_TRUE(asked[0].reason.isEmpty());
        EXPECT_TRUE(databases.pending().isEmpty()) << "nothing of it is left pending";
        EXPECT_TRUE(row<StructDetailStyle>(kUser, "Column") && masterOf("Column"));
    }
    mine().removeStyle("Column");
    others("UPDATE detail_master SET number = 9");
    ASSERT_EQ(settle(true).size(), 1u);
    EXPECT_EQ(count<StructDetailStyle>(kUser), 0);
    EXPECT_EQ(count<StructDetailMaster>(kUser), 0);
}

TEST_F(ReplayTest, WhatOnlyADeletedRowUsesGoesOrStaysWithIt) {
    for (const bool keepsMine : {false, true}) {
        mine().removeStyle("Column");
        for (const char* view : {"Column front", "Column top", "Column section"})
            mine().removeRow<StructDetViewRequest>(view);
        mine().removeRow<StructDetBaseCategory>("Columns");
        others("UPDATE detail_style SET description = description || 'theirs'");
        EXPECT_EQ(settle(keepsMine).size(), 1u) << "of the style alone";
        EXPECT_EQ(count<StructDetViewRequest>(kUser), keepsMine ? 1 : 4);
        EXPECT_EQ(count<StructDetBaseCategory>(kUser), keepsMine ? 1 : 2);
        EXPECT_TRUE(commit());
    }
}

TEST_F(ReplayTest, TheSlotsOfARowAreOneValue) {
    ASSERT_EQ(views(), "front top section ");
    setViews({"Column front", "Column section"});
    otherEditor([](EditingProgram& other) {
        setViews(other, {"Column front", "Column side", "Column section"});
    });
    EXPECT_EQ(settle().size(), 1u);
    EXPECT_EQ(views(), "front side section ");
    EXPECT_TRUE(databases.pending().isEmpty());

    setViews({"Column front", "Column section"});
    otherEditor([](EditingProgram& other) { setViews(other, {"Column side", "Column section"}); });
    EXPECT_EQ(settle(true).size(), 1u) << "though the last slot is the same";
    EXPECT_EQ(views(), "front section ");
    EXPECT_TRUE(commit());

    setViews({"Column front", "Column section", "Column side"});
    others("UPDATE detail_style SET description = 'theirs'");
    EXPECT_TRUE(settle().empty()) << "another value of the same row";
    EXPECT_EQ(views(), "front section side ");
    EXPECT_TRUE(commit());

    setViews({"Column front", "Column side"});
    otherEditor([](EditingProgram& other) {
        setViews(other, {"Column section", "Column side"});
        other.removeRow<StructDetViewRequest>("Column front");
    });
    EXPECT_EQ(settle(true).size(), 1u);
    EXPECT_EQ(views(), "side ") << "without the view that is gone";
}

TEST_F(ReplayTest, TheNameOfARowAndOfWhatIdentifiesItAreOneValue) {
    const auto names = [this] {
        const auto* style = row<StructDetailStyle>(kUser, m_style);
        return style->name + KorString("|") + row<StructDetailMaster>(kUser, 1)->name;
    };
    mine().rename("Column", "Mine");
    others("UPDATE detail_style SET name = 'Theirs'");
    EXPECT_EQ(settle().size(), 1u);
    EXPECT_EQ(names(), "Theirs|Column");
    EXPECT_TRUE(databases.pending().isEmpty());

    mine().rename("Theirs", "Mine");
    others("UPDATE detail_master SET name = 'Theirs too'");
    EXPECT_EQ(settle(true).size(), 1u);
    EXPECT_EQ(names(), "Mine|Mine");
    EXPECT_TRUE(commit());

    mine().rename("Mine", "Taken");
    otherEditor([](EditingProgram& other) { other.addStyle("Taken", "Columns"); });
    EXPECT_EQ(reasonOf(settle()), "Another record has this name now.");
    EXPECT_EQ(names(), "Mine|Mine");
    EXPECT_TRUE(databases.pending().isEmpty());
}

TEST_F(ReplayTest, AGroupThatCameIntoUseStays) {
    mine().removeRow<StructDetBaseCategory>("Empty");
    otherEditor([](EditingProgram& other) { other.addStyle("Theirs", "Empty"); });
    EXPECT_EQ(reasonOf(settle(true)), "Another record uses it now.");
    EXPECT_EQ(masterOf("Theirs")->categoryKey, row<StructDetBaseCategory>(kUser, "Empty")->key);
}

TEST_F(ReplayTest, NothingIsDeletedWhereUseCannotBeJudged) {
    const auto set = add<StructDetObjQualifierSet>(kUser, "Unused");
    ASSERT_TRUE(commit());
    ASSERT_EQ(databases.remove(kTableQualifierSet, set), WriteResult::kWritten);
    others("UPDATE repr_map_entry SET qualifier_set = " + std::to_string(set) +
           " WHERE name = 'Rest'; ALTER TABLE repr_map_entry RENAME TO away");
    const std::string told = reasonOf(settle(true));
    EXPECT_TRUE(mentions(told, "user.dsdb") && mentions(told, "could not be read whole")) << told;
    EXPECT_TRUE(row<StructDetObjQualifierSet>(kUser, "Unused"));
    others("ALTER TABLE away RENAME TO repr_map_entry");
    settle();
}

TEST_F(ReplayTest, APartThatGotItsOwnerStays) {
    others("INSERT INTO qualifier_with_role(\"key\", name, qualifier_set) VALUES (50, 'Left', 77)");
    settle();
    ASSERT_EQ(databases.remove(kTableQualifierWithRole, KorOdbcKey(50)), WriteResult::kWritten);
    others("INSERT INTO qualifier_set(\"key\", name) VALUES (77, 'Back')");
    EXPECT_EQ(reasonOf(settle(true)), "It belongs to a record now.");
    EXPECT_TRUE(row<StructDetObjQualifierWithRole>(kUser, 50));

    const auto own = row<StructDetObjQualifierWithRole>(kUser, "Section is I")->key;
    ASSERT_EQ(databases.remove(kTableQualifierWithRole, KorOdbcKey(own)), WriteResult::kWritten);
    others("UPDATE qualifier_set SET description = 'theirs'");
    EXPECT_TRUE(settle().empty()) << "what had its owner all the time is deleted";
    EXPECT_FALSE(row<StructDetObjQualifierWithRole>(kUser, own));
}

TEST_F(ReplayTest, AChangeNeverGoesIntoAnotherRecordThatGotTheKey) {
    mine().addStyle("Plate", "Columns");
    const auto view = addView("Plate view");
    ASSERT_TRUE(commit());
    const auto key = row<StructDetailStyle>(kUser, "Plate")->key;
    mine().set<StructDetailStyle>("Plate", 3, KorString("mine"));
    mine().refile("Plate", "Empty");
    mine().setViews("Column", {"Plate view"});
    otherEditor([](EditingProgram& other) {
        other.removeStyle("Plate");
        other.removeRow<StructDetViewRequest>("Plate view");
    });
    otherEditor([](EditingProgram& other) {
        other.addStyle("Bracket", "Columns");
        other.set<StructDetailStyle>("Bracket", 6, std::int64_t{5});
        other.copyRow<StructDetViewRequest>("Column side", "Bracket view");
        other.set<StructDetViewRequest>("Bracket view", 10, 0.5);
    });
    ASSERT_EQ(row<StructDetailStyle>(kUser, "Plate")->key, key);
    const auto told = settle(true);
    EXPECT_EQ(told.size(), 3u);
    for (const OutsideConflict& conflict : told)
        EXPECT_FALSE(conflict.kind == OutsideConflict::eKind::kCell && conflict.reason.isEmpty());
    const auto* bracket = row<StructDetailStyle>(kUser, key);
    EXPECT_EQ(bracket->name, "Bracket");
    EXPECT_EQ(bracket->description, "");
    EXPECT_EQ(masterOf("Bracket")->categoryKey, row<StructDetBaseCategory>(kUser, "Columns")->key);
    EXPECT_EQ(row<StructDetViewRequest>(kUser, view)->name, "Bracket view");
    EXPECT_EQ(views(), "front top section ");

    mine().removeStyle("Bracket");
    otherEditor([](EditingProgram& other) { other.removeStyle("Bracket"); });
    otherEditor([](EditingProgram& other) { other.addStyle("Beam", "Empty"); });
    EXPECT_EQ(settle(true).size(), 1u);
    EXPECT_TRUE(masterOf("Beam"));

    mine().set<StructDetailStyle>("Column", 3, KorString("mine"));
    others("UPDATE detail_style SET name = 'Pillar', title_position = 5 WHERE name = 'Column'");
    EXPECT_TRUE(settle().empty()) << "renamed and changed, but known by its master";
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Pillar")->description, "mine");
}

TEST_F(ReplayTest, ANewRecordBringsItsGroupBack) {
    for (const bool hasNamesake : {false, true}) {
        const std::string name = hasNamesake ? "Second" : "First";
        mine().addStyle(name, "Empty");
        mine().refile("Column", "Empty");
        others("DELETE FROM base_category WHERE name = 'Empty'");
        if (hasNamesake)
            others("INSERT INTO base_category(\"key\", name) VALUES (70, 'Empty')");
        const auto told = settle();
        EXPECT_EQ(told.size(), hasNamesake ? 0u : 1u);
        EXPECT_TRUE(commit());
        open(false);
        databases.setCurrentSource(kUser);
        const auto* group = row<StructDetBaseCategory>(kUser, "Empty");
        ASSERT_TRUE(group);
        EXPECT_EQ(masterOf(name.c_str())->categoryKey, group->key);
        EXPECT_EQ(masterOf("Column")->categoryKey, group->key);
        for (const char* style : {"Column", name.c_str()})
            mine().refile(style, "Columns");
        EXPECT_TRUE(commit());
    }
}

TEST_F(ReplayTest, ACellThatCannotBeReadIsStillReplacedByItsDefault) {
    others("UPDATE detail_style SET title_position = 'nonsense'");
    settle();
    mine().set<StructDetailStyle>("Column", 6, std::int64_t{3});
    others("UPDATE detail_style SET description = 'theirs'");
    EXPECT_TRUE(settle().empty());
    EXPECT_TRUE(commit());
    open(false);
    databases.setCurrentSource(kUser);
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Column")->titlePosition, 3);
    EXPECT_TRUE(databases.source(kUser)->complete().ok());
}
