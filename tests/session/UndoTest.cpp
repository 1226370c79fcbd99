#include "SampleSession.h"

#include "session/KorDSMCommit.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemUpdate.h"
#include "session/KorDSMUndo.h"

namespace {

const SourceId kUser = SourceId::user();
using eKind = KorDSMRowChange::eKind;

class Undo : public SampleSession {
protected:
    Undo() { databases.setCurrentSource(kUser); }

    void onMessage(const KorMessage& message) override {
        SampleSession::onMessage(message);
        if (message.number == DsmSetModified::kNumber)
            modified = static_cast<const DsmSetModified&>(message).modified;
    }

    using Lines = std::multiset<std::string>;

    /// All items that are loaded, by their paths.
    Lines shown() {
        Lines lines;
        for (const auto section : KorDSMDefines::kLoadingOrder)
            add(*structure.getSection(section), {}, lines);
        return lines;
    }
    void add(KorDSMDatabaseItem& item, const std::string& path, Lines& lines) {
        const std::string own = path + "/" + item.getDisplayName().toStdString();
        lines.insert(own);
        for (KorDSMDatabaseItem* child : item.children()) {
            EXPECT_EQ(child->parent(), &item);
            add(*child, own, lines);
        }
    }
    static std::string difference(const Lines& is, const Lines& should) {
        std::string text;
        std::vector<std::string> lines;
        std::ranges::set_difference(is, should, std::back_inserter(lines));
        for (const std::string& line : lines)
            text += "+ " + line + "\n";
        lines.clear();
        std::ranges::set_difference(should, is, std::back_inserter(lines));
        for (const std::string& line : lines)
            text += "- " + line + "\n";
        return text;
    }
    void loadEverySection() {
        item<StructDetObjQualifierSet>(kUser, "HB rails");
        item<StructDetObjAnnotationStrategy>(kUser, "HB mark");
        item<StructDetViewDimRequestLinear>(kUser, "HB overall");
    }
    KorDSMItemUpdate::Changes follow(const std::vector<KorDSMRowChange>& changes) {
        return KorDSMItemUpdate::follow(structure, changes);
    }

    std::optional<bool> modified;
};

} // namespace

TEST_F(Undo, SaysInTheMenuWhatItTakesBack) {
    EXPECT_FALSE(KorDSMUndo::canUndo());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo");
    EXPECT_TRUE(KorDSMUndo::undo().empty());
    EXPECT_FALSE(modified.has_value());

    const std::int32_t post = row<StructDetailStyle>(kUser, "HB post 1:15")->key;
    ASSERT_EQ(KorDSMGuardedWrite::setAttributeInt(kTableDetailStyle, KorOdbcKey(post), 6, 2), 1);
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo change of Title position of \"HB post 1:15\"");
    KorDSMDatabaseItem& style = item<StructDetailStyle>(kUser, "HB post 1:15");
    ASSERT_TRUE(KorDSMItemCommands::copyItem(style, KorString(std::string(10000, 'x'))).isStored());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo copying of \"HB post 1:15\"");
    ASSERT_TRUE(KorDSMItemCommands::renameItem(style, KorString(std::string(10000, 'y'))).isStored());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo renaming of \"HB post 1:15\"");
    ASSERT_EQ(KorDSMGuardedWrite::setAttributeInt(kTableDetailStyle, KorOdbcKey(post), 6, 3), 1);
    EXPECT_LT(KorDSMUndo::undoText().size(), 100u) << "no menu is as wide as a name can be";

    StructDetViewRequest request;
    request.name = "Another view";
    ASSERT_EQ(databases.append(kTableViewRequest, request), WriteResult::kWritten);
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo creation of \"Another view\"");
    KorArray<std::int32_t> categories{row<StructDetBaseCategory>(kUser, "Hallberg: railings")->key};
    ASSERT_EQ(KorODBCDetStyle::setDetViewRequestCategories(request, categories), 1);
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo change of View category of \"Another view\"");
    KorDSMUndo::undo();
    EXPECT_EQ(KorDSMUndo::redoText(), "Redo change of View category of \"Another view\"");
    ASSERT_EQ(databases.remove(kTableQualifierSet,
                               KorOdbcKey(row<StructDetObjQualifierSet>(kUser, "HB fitted parts")->key)),
              WriteResult::kWritten);
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo deletion of \"HB fitted parts\"") << "its parts go with it";
}

TEST_F(Undo, TellsWhichRowsAreDifferentAndWhetherAnythingIsLeft) {
    const RowRef post{kTableDetailStyle, row<StructDetailStyle>(kUser, "HB post 1:15")->key};
    KorDSMGuardedWrite::setAttributeInt(post.table, KorOdbcKey(post.key), 6, 2);
    KorDSMDatabaseItem& style = item<StructDetailStyle>(kUser, "HB post 1:15");
    ASSERT_TRUE(KorDSMItemCommands::copyItem(style, "Copy").isStored());

    const auto gone = KorDSMUndo::undo();
    ASSERT_EQ(gone.size(), 2u);
    EXPECT_EQ(gone[0].row.table, kTableDetailMaster) << "backwards";
    EXPECT_EQ(gone[1].kind, eKind::kDeleted);
    EXPECT_EQ(gone[1].source, kUser);
    EXPECT_EQ(modified, true);
    const auto back = KorDSMUndo::undo();
    ASSERT_EQ(back.size(), 1u);
    EXPECT_EQ(back[0].row, post);
    EXPECT_EQ(back[0].kind, eKind::kChanged);
    EXPECT_TRUE(back[0].changedColumn(6));
    EXPECT_EQ(row<StructDetailStyle>(kUser, "HB post 1:15")->titlePosition, 3);
    EXPECT_EQ(modified, false) << "nothing is left to be applied";
    KorDSMUndo::redo();
    EXPECT_EQ(KorDSMUndo::redo().at(0).kind, eKind::kAppended);
    EXPECT_FALSE(KorDSMUndo::canRedo());
    EXPECT_EQ(modified, true);
}

TEST_F(Undo, WhatOthersStoreLeavesTheStepsThatStillFit) {
    const RowRef post{kTableDetailStyle, row<StructDetailStyle>(kUser, "HB post 1:15")->key};
    KorDSMGuardedWrite::setAttributeInt(post.table, KorOdbcKey(post.key), 6, 2);
    const int step = KorDSMUndo::lastStep();
    KorDSMDatabaseItem& style = item<StructDetailStyle>(kUser, "HB post 1:15");
    ASSERT_TRUE(KorDSMItemCommands::copyItem(style, "Copy").isStored());
    ASSERT_TRUE(KorDSMItemCommands::renameItem(item<StructDetailStyle>(kUser, "Copy"), "Same").isStored());
    KorDSMUndo::undo();
    KorDSMUndo::undo();
    const auto others = [&](const std::string& sql) {
        OtherProgram(file("user.dsdb")).run(sql);
        const auto read = KorDSMCommit::settle(
            &KorDSMCommit::readChanged, [](const std::vector<OutsideChange>& changes) { return changes; });
        EXPECT_EQ(read.size(), 1U);
        EXPECT_EQ(KorDSMUndo::lastStep(), step);
    };
    others("UPDATE detail_style SET description = 'theirs' WHERE name <> 'HB post 1:15'");
    EXPECT_EQ(KorDSMUndo::redoSteps(5).size(), 2U);
    EXPECT_FALSE(KorDSMUndo::redo().empty());
    EXPECT_FALSE(KorDSMUndo::redo().empty());
    EXPECT_NE(row<StructDetailStyle>(kUser, "Same"), nullptr);
    KorDSMUndo::undo();
    KorDSMUndo::undo();
    const std::string another =
        " WHERE key = (SELECT MAX(key) FROM detail_style WHERE name <> 'HB post 1:15')";
    others("UPDATE detail_style SET name = 'Same'" + another);
    EXPECT_EQ(KorDSMUndo::redoSteps(5).size(), 1U) << "the name of the renaming is taken";
    others("UPDATE detail_style SET name = 'Copy'" + another);
    EXPECT_FALSE(KorDSMUndo::canRedo());
}

TEST_F(Undo, TheItemsFollowEveryCommandThereAndBack) {
    loadEverySection();
    std::vector<Lines> states{shown()};
    const auto did = [&](bool done) {
        ASSERT_TRUE(done);
        states.push_back(shown());
    };
    KorDSMDatabaseItem& post = item<StructDetailStyle>(kUser, "HB post 1:15");
    did(KorDSMItemCommands::copyItem(post, "Copy of post").isStored());
    did(KorDSMItemCommands::renameItem(post, "Post").isStored());
    did(KorDSMItemCommands::moveToGroup(post, item<StructDetBaseCategory>(kUser, "Hallberg: railings"))
            .isStored());
    did(KorDSMItemCommands::deleteItem(post).isStored());
    did(KorDSMItemCommands::copyItem(item<StructDetObjQualifierSet>(kUser, "HB rails"), "Rails").isStored());
    did(KorDSMItemCommands::moveToGroup(item<StructDetObjQualifierSet>(kUser, "Rails"),
                                        item<StructDetObjQualifierSetGroup>(kUser, "Hallberg: site"))
            .isStored());
    did(KorDSMItemCommands::deleteItem(item<StructDetObjQualifierSet>(kUser, "Rails")).isStored());
    did(KorDSMItemCommands::deleteItem(item<StructDetBaseCategory>(kUser, "Hallberg: site drawings"))
            .isStored());

    for (std::size_t i = states.size() - 1; i > 0; --i) {
        const std::string what = KorDSMUndo::undoText().toStdString();
        follow(KorDSMUndo::undo());
        EXPECT_EQ(difference(shown(), states[i - 1]), "") << what;
    }
    EXPECT_FALSE(KorDSMUndo::canUndo());
    for (std::size_t i = 1; i < states.size(); ++i) {
        const std::string what = KorDSMUndo::redoText().toStdString();
        follow(KorDSMUndo::redo());
        EXPECT_EQ(difference(shown(), states[i]), "") << what;
    }
    structure.emptyDataStructure();
    KorDSMSectionLoader().loadDataStructure(structure);
    loadEverySection();
    EXPECT_EQ(difference(shown(), states.back()), "") << "as if it had been loaded so";
}

TEST_F(Undo, WhatComesBackStandsWhereItStoodAndIsLedTo) {
    KorDSMDatabaseItem& first = *item<StructDetailStyle>(kUser, "HB beam 1:15").parent()->children()[0];
    KorDSMDatabaseItem& home = *first.parent();
    const auto names = [&home] {
        std::vector<KorString> below;
        for (const KorDSMDatabaseItem* child : home.children())
            below.push_back(child->getDisplayName());
        return below;
    };
    const std::vector<KorString> before = names();
    ASSERT_GT(before.size(), 2u);
    auto& other = item<StructDetBaseCategory>(kUser, "Hallberg: railings");
    ASSERT_NE(&other, &home);
    ASSERT_TRUE(KorDSMItemCommands::moveToGroup(first, other).isStored());
    const auto changes = KorDSMUndo::undo();
    follow(changes);
    EXPECT_EQ(names(), before);
    EXPECT_EQ(KorDSMUndo::itemOf(structure, changes), &first) << "it is filed by another row";

    ASSERT_TRUE(KorDSMItemCommands::deleteItems({home.children()[0], home.children()[1]}).isStored());
    follow(KorDSMUndo::undo());
    EXPECT_EQ(names(), before);
}

TEST_F(Undo, ChildrenFollowWhatTheirParentsUse) {
    loadEverySection();
    KorDSMDatabaseItem& style = item<StructDetailStyle>(kUser, "HB railing, gates");
    const int views = style.children().length();
    const std::int32_t other = row<StructDetailStyle>(kUser, "HB post 1:15")->viewRequests[0];
    const int freeSlot = 12 + row<StructDetailStyle>(kUser, "HB railing, gates")->getLengthItems();
    KorDSMGuardedWrite::setAttributeInt(kTableDetailStyle, KorOdbcKey(style.recordKey()), freeSlot, other);
    follow(KorDSMUndo::undo());
    const auto again = follow(KorDSMUndo::redo());
    EXPECT_EQ(style.children().length(), views + 1);
    EXPECT_EQ(again.added.size(), static_cast<std::size_t>(views + 1)) << "they need entries";
    ASSERT_EQ(again.changed.size(), 1u);
    EXPECT_EQ(again.changed[0], &style);

    // Both points of a dimension request, which it shows twice, at once.
    KorDSMDatabaseItem& request = item<StructDetViewDimRequestLinear>(kUser, "HB depth");
    ASSERT_EQ(expand(request).length(), 2);
    const std::int32_t points = request.children()[0]->recordKey();
    ASSERT_EQ(request.children()[1]->recordKey(), points);
    KorDSMGuardedWrite::setAttributeString(kTablePointSelection, KorOdbcKey(points), 1, "Outline", 0);
    follow(KorDSMUndo::undo());
    const auto renamed = follow(KorDSMUndo::redo());
    EXPECT_GE(renamed.changed.size(), 2u);
    EXPECT_EQ(request.children()[1]->getDisplayName(), "Outline");
    databases.remove(kTablePointSelection, KorOdbcKey(points));
    follow(KorDSMUndo::undo());
    EXPECT_EQ(request.children().length(), 2);
    follow(KorDSMUndo::redo());
    EXPECT_TRUE(expand(request).isEmpty());

    // A part that is no item of its own.
    KorDSMDatabaseItem& chain = item<StructDetViewDimStrategy>(kUser, "HB chain");
    ASSERT_EQ(expand(chain).length(), 4);
    databases.remove(kTableDimStrategyItem,
                     KorOdbcKey(row<StructDetViewDimStrategyItem>(kUser, "HB holes, running")->key));
    follow(KorDSMUndo::undo());
    follow(KorDSMUndo::redo());
    EXPECT_FALSE(chain.isExpanded()) << "made anew when it is opened";
    EXPECT_EQ(expand(chain).length(), 3);
    EXPECT_TRUE(assertions.empty());
}
