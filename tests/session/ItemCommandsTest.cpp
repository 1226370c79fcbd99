#include "SampleSession.h"

#include "services/KorHostReport.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMNewItem.h"
#include "session/KorDSMUndo.h"
#include "support/OtherProgram.h"

namespace {

using namespace KorDSMItemCommands;

const SourceId kUser = SourceId::user();

class ItemCommands : public SampleSession {
protected:
    KorDSMDatabaseItem& style(const KorString& name) { return item<StructDetailStyle>(kUser, name); }
    const StructDetailMaster* master(const KorString& name) { return row<StructDetailMaster>(kUser, name); }
    int rows(eTableType table) { return databases.source(kUser)->table(table).rows().size(); }
};

} // namespace

TEST_F(ItemCommands, CopyGivesAStyleAMasterWithTheFirstFreeNumber) {
    KorDSMDatabaseItem& original = style("HB post 1:15");
    const int siblings = original.parent()->children().length();
    CopyResult copied = copyItem(original, " My post ");
    ASSERT_TRUE(copied.isStored());
    ASSERT_EQ(copied.added.size(), 1u);
    const auto* copy = row<StructDetailStyle>(kUser, "My post");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copied.added[0]->recordKey(), copy->key);
    EXPECT_EQ(copied.added[0]->parent(), original.parent());
    EXPECT_EQ(original.parent()->children().length(), siblings + 1);
    EXPECT_EQ(original.parent()->children()[siblings], copied.added[0]);
    EXPECT_EQ(copied.added[0]->children().length(), original.children().length());
    EXPECT_EQ(copy->viewRequests, row<StructDetailStyle>(kUser, "HB post 1:15")->viewRequests);

    // (1, 1), (1, 2) and (1, 3) are taken
    ASSERT_NE(master("My post"), nullptr);
    EXPECT_EQ(master("My post")->detailKey, 1);
    EXPECT_EQ(master("My post")->number, 4);
    EXPECT_EQ(master("My post")->styleKey, copy->key);
    EXPECT_EQ(master("My post")->categoryKey, master("HB post 1:15")->categoryKey);
    EXPECT_EQ(writes, 2);
    EXPECT_TRUE(copied.notice.receivers.empty());

    databases.undo();
    EXPECT_EQ(row<StructDetailStyle>(kUser, "My post"), nullptr) << "one step of undo";
    EXPECT_EQ(master("My post"), nullptr);
    EXPECT_TRUE(databases.pending().isEmpty());
}

TEST_F(ItemCommands, ANewStyleIsFiledWithTheFirstFreeNumberOfItsCategory) {
    databases.setCurrentSource(kUser);
    KorDSMDatabaseItem& category = *style("HB post 1:15").parent();
    for (const int number : {4, 5}) { // (1, 1), (1, 2) and (1, 3) are taken
        const KorString name = KorString::format("New %d", {KorString::number(number)});
        KorDSMDatabaseItem* made = KorDSMNewItem::create(KorDSMDefines::kDetailStyle, name, category).value;
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->parent(), &category);
        ASSERT_NE(master(name), nullptr);
        EXPECT_EQ(master(name)->detailKey, 1);
        EXPECT_EQ(master(name)->number, number);
        EXPECT_EQ(master(name)->styleKey, made->recordKey());
        EXPECT_EQ(master(name)->categoryKey, category.recordKey());
    }
    databases.undo();
    databases.undo();
    EXPECT_TRUE(databases.pending().isEmpty()) << "each is one step";
}

TEST_F(ItemCommands, CopyTakesPartsAlongAndTellsThePagesThatListTheRecord) {
    KorDSMDatabaseItem& original = item<StructDetObjQualifierSet>(kUser, "HB fitted parts");
    const int parts = rows(kTableQualifierWithRole);
    const CopyResult copied = copyItem(original, "Fitted \"100 %s\" parts");
    ASSERT_TRUE(copied.isStored());
    EXPECT_EQ(rows(kTableQualifierWithRole), parts + 2);
    EXPECT_EQ(copied.notice.senderPageCode, 14);
    EXPECT_EQ(copied.notice.receivers, (std::vector<int>{25, 29, 23}));
    EXPECT_EQ(copied.notice.path("|"), KorString("Hallberg: workshop|Fitted \"100 %s\" parts"));
    EXPECT_EQ(writes, 1);

    KorDSMDatabaseItem& label = item<StructDetObjAnnotationStrategy>(kUser, "HB mark");
    const CopyResult mark = copyItem(label, "HB mark 2");
    EXPECT_EQ(mark.notice.senderPageCode, 7);
    EXPECT_EQ(mark.notice.receivers, (std::vector<int>{25, 23}));
    EXPECT_EQ(static_cast<KorDsmAnnotationStrategyItem*>(mark.added.at(0))->annotationType().name, "HB mark");
}

TEST_F(ItemCommands, CopyOfWhatIsShownAsAPartAppearsInItsGroupToo) {
    item<StructDetObjQualifierSet>(kUser, "HB rails"); // its section is loaded
    KorDSMDatabaseItem& points = item<StructDetViewDimPointSelection>(kUser, "HB posts");
    KorDSMDatabaseItem& part = *expand(points)[0];
    const CopyResult copied = copyItem(part, "Rails again");
    ASSERT_EQ(copied.added.size(), 2u);
    EXPECT_EQ(copied.added[0]->parent(), &points);
    EXPECT_EQ(copied.added[1]->parent()->getDisplayName(), "Hallberg: workshop");
    for (KorDSMDatabaseItem* added : copied.added)
        bind(*added);
    const DeleteResult deleted = deleteItem(*copied.added[0]);
    EXPECT_EQ(deleted.removed.size(), 2u) << "both are gone with the row";
    EXPECT_EQ(points.children().length(), 1);

    const CopyResult again = copyItem(part, "Rails again");
    for (KorDSMDatabaseItem* added : again.added)
        bind(*added);
    EXPECT_EQ(deleteItem(*again.added[1]).removed.size(), 1u);
    EXPECT_TRUE(points.children().isEmpty()) << "they are read anew when the entry is opened";
    EXPECT_EQ(expand(points).length(), 1);
}

TEST_F(ItemCommands, WhatCannotBeCopiedOrNamedChangesNothing) {
    KorDSMDatabaseItem& original = style("HB post 1:15");
    EXPECT_FALSE(copyItem(original, "HB beam 1:15").error.empty());
    EXPECT_FALSE(copyItem(original, "  ").error.empty());
    EXPECT_FALSE(copyItem(*original.parent(), "Other").isStored()) << "categories are not copied";
    EXPECT_FALSE(copyItem(*original.children()[0], "Other").isStored()) << "views neither";
    KorDSMDatabaseItem& foreign = item<StructDetObjQualifierSetGroup>(SourceId::standard(), "Plates");
    EXPECT_NE(renameItem(foreign, "Mine").error.find("Standard"), std::string::npos);
    EXPECT_NE(deleteItem(foreign).error.find("Standard"), std::string::npos);
    databases.setCurrentSource(kUser);
    databases.remove(kTableDetailMaster, KorOdbcKey(master("HB post 1:15")->key));
    const std::size_t steps = databases.pending().steps().size();
    EXPECT_EQ(copyItem(original, "Other").error,
              "\"HB post 1:15\" has no category any more, so it cannot be copied.");
    EXPECT_EQ(databases.pending().steps().size(), steps);
    EXPECT_EQ(row<StructDetailStyle>(kUser, "Other"), nullptr);
    EXPECT_TRUE(assertions.empty());
}

TEST_F(ItemCommands, DeleteTakesTheMasterAlong) {
    KorDSMDatabaseItem& doomed = style("HB erection plan");
    KorDSMDatabaseItem& category = *doomed.parent();
    DeleteResult deleted = deleteItem(doomed);
    ASSERT_TRUE(deleted.isStored());
    ASSERT_EQ(deleted.removed.size(), 1u);
    EXPECT_EQ(deleted.removed[0]->getDisplayName(), "HB erection plan") << "it lives until its entry is gone";
    EXPECT_EQ(category.children().find(&doomed), -1);
    EXPECT_EQ(row<StructDetailStyle>(kUser, "HB erection plan"), nullptr);
    EXPECT_EQ(master("HB erection plan"), nullptr);
    EXPECT_EQ(writes, 2);
    const int listings = rows(kTableViewRequestCategory);
    EXPECT_EQ(viewsListedIn(category), 2);
    EXPECT_TRUE(deleteItem(category).isStored()) << "groups are not checked for use";
    EXPECT_EQ(rows(kTableViewRequestCategory), listings - 2) << "no view is listed in what is gone";
    databases.undo();
    EXPECT_EQ(rows(kTableViewRequestCategory), listings) << "one step of undo";
    EXPECT_NE(row<StructDetBaseCategory>(kUser, "Hallberg: site drawings"), nullptr);
}

TEST_F(ItemCommands, SeveralAreDeletedInOneStepOrNoneOfThem) {
    KorDSMDatabaseItem& used = item<StructDetObjAnnotationStrategy>(kUser, "HB crane mark");
    KorDSMDatabaseItem* free = copyItem(used, "Unused").added.at(0);
    EXPECT_FALSE(deleteItems({free, &used}).users.empty());
    EXPECT_NE(row<StructDetObjAnnotationStrategy>(kUser, "Unused"), nullptr);
    const std::vector<KorDSMDatabaseItem*> styles = {&style("HB post 1:15"), &style("HB beam 1:15")};
    const DeleteResult deleted = deleteItems(styles);
    EXPECT_TRUE(deleted.isStored());
    EXPECT_EQ(deleted.removed.size(), 2u);
    EXPECT_EQ(master("HB beam 1:15"), nullptr);
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo deletion of 2 definitions");
    databases.undo();
    EXPECT_NE(master("HB post 1:15"), nullptr);
    EXPECT_NE(master("HB beam 1:15"), nullptr);
}

TEST_F(ItemCommands, DeleteOfAStyleWithoutAMasterIsNotDone) {
    KorDSMDatabaseItem& doomed = style("HB erection plan");
    databases.setCurrentSource(kUser);
    databases.remove(kTableDetailMaster, KorOdbcKey(master("HB erection plan")->key));
    const DeleteResult deleted = deleteItem(doomed);
    EXPECT_FALSE(deleted.isStored());
    EXPECT_TRUE(deleted.removed.empty());
    EXPECT_GE(doomed.parent()->children().find(&doomed), 0);
    EXPECT_EQ(row<StructDetailStyle>(kUser, "HB erection plan"), nullptr);
}

TEST_F(ItemCommands, DeleteRefusesWhatIsUsedAndSaysByWhom) {
    KorDSMDatabaseItem& used = item<StructDetObjAnnotationStrategy>(kUser, "HB crane mark");
    const DeleteResult refused = deleteItem(used);
    EXPECT_FALSE(refused.isStored());
    EXPECT_EQ(refused.error, "This definition cannot be deleted because other definitions still use "
                             "it.\nRemove it from them first.");
    ASSERT_EQ(refused.users.size(), 1u);
    EXPECT_EQ(refused.users[0].name, "HB site");
    EXPECT_EQ(refused.users[0].kind, "Representation map");
    EXPECT_EQ(writes, 0);
    EXPECT_TRUE(databases.pending().isEmpty());

    CopyResult copied = copyItem(used, "Unused");
    const DeleteResult deleted = deleteItem(*copied.added.at(0));
    EXPECT_TRUE(deleted.isStored());
    EXPECT_EQ(deleted.notice.action, DsmListChanged::kReload);
}

TEST_F(ItemCommands, NothingIsMadeInATableWhoseKeysAreUsedUp) {
    StructDetailMaster last;
    last.key = std::numeric_limits<std::int32_t>::max();
    databases.source(SourceId::user())->insert(kTableDetailMaster, last);
    auto& original = item<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    const CopyResult copied = copyItem(original, "Copy");
    EXPECT_FALSE(copied.isStored());
    EXPECT_NE(copied.error.find("2147483647"), std::string::npos) << copied.error;
    const KorDSNRequest request(SourceId::user().dsn, SourceId::user().index);
    EXPECT_EQ(KorDSMNewItem::create(KorDSMDefines::kDetailStyle, "New", *original.parent()).error,
              copied.error);
    EXPECT_TRUE(databases.pending().isEmpty());
    EXPECT_FALSE(databases.pending().canRedo()) << "a command that failed is none that was taken back";
    EXPECT_FALSE(row<StructDetailStyle>(SourceId::user(), "New"));

    StructDetObjQualifierWithRole part;
    part.key = last.key - 1;
    databases.source(kUser)->insert(kTableQualifierWithRole, part);
    const CopyResult set = copyItem(item<StructDetObjQualifierSet>(kUser, "HB fitted parts"), "Copy");
    EXPECT_FALSE(set.isStored()) << "of its two parts one would be missing";
    EXPECT_NE(set.error.find("2147483646"), std::string::npos) << set.error;
    EXPECT_TRUE(databases.pending().isEmpty());
}

TEST_F(ItemCommands, WhatCannotBeJudgedWhileATableIsLockedIsRefusedWithTheReason) {
    KorDSMDatabaseItem& used = item<StructDetObjAnnotationStrategy>(kUser, "HB crane mark");
    const KorOdbcKey key(used.recordKey());
    OtherProgram other(file("user.dsdb"));
    other.run("BEGIN EXCLUSIVE");
    EXPECT_NE(deleteItem(used).error.find("user.dsdb"), std::string::npos);
    EXPECT_NE(copyItem(used, "Copy").error.find("user.dsdb"), std::string::npos);
    databases.setCurrentSource(kUser);
    KorHostReport::take();
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeString(kTableAnnotationStrategy, key, 1, "Mine", 0), 0);
    ASSERT_EQ(KorHostReport::take().size(), 1u);
    EXPECT_TRUE(databases.pending().isEmpty() && assertions.empty());
    other.run("COMMIT");
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeString(kTableAnnotationStrategy, key, 1, "Mine", 0), 1);
}

TEST_F(ItemCommands, RenameReachesTheMasterAndEveryTwin) {
    KorDSMDatabaseItem& original = style("HB post 1:15");
    EXPECT_TRUE(renameItem(original, "HB post 1:15").isStored());
    EXPECT_EQ(writes, 0) << "the same name is no change";
    EXPECT_FALSE(renameItem(original, "HB beam 1:15").error.empty());
    ASSERT_TRUE(renameItem(original, "HB Post 1:15").isStored());
    EXPECT_NE(master("HB Post 1:15"), nullptr);
    EXPECT_EQ(original.getDisplayName(), "HB Post 1:15");

    KorDSMDatabaseItem& filed = item<StructDetObjQualifierSet>(kUser, "HB rails");
    KorDSMDatabaseItem& points = item<StructDetViewDimPointSelection>(kUser, "HB posts");
    KorDSMDatabaseItem& twin = *expand(points)[0];
    bind(filed);
    bind(twin);
    answer = KorDSMGuardedWrite::kDecline;
    EXPECT_FALSE(renameItem(filed, "Rails").isStored()) << "shared, and the user declined";
    EXPECT_EQ(twin.getDisplayName(), "HB rails");
    answer = KorDSMGuardedWrite::kWrite;
    const CommandResult renamed = renameItem(filed, "Rails");
    ASSERT_TRUE(renamed.isStored());
    EXPECT_EQ(twin.getDisplayName(), "Rails");
    EXPECT_EQ(renamed.notice.action, DsmListChanged::kRenamed);
    databases.undo();
    EXPECT_NE(row<StructDetObjQualifierSet>(kUser, "HB rails"), nullptr);
}

TEST_F(ItemCommands, MoveFilesUnderAnotherGroupOfTheSameKindAndSource) {
    KorDSMDatabaseItem& post = style("HB post 1:15");
    KorDSMDatabaseItem& railings = item<StructDetBaseCategory>(kUser, "Hallberg: railings");
    KorDSMDatabaseItem& columns = item<StructDetBaseCategory>(SourceId::standard(), "Columns");
    KorDSMDatabaseItem& site = item<StructDetObjQualifierSetGroup>(kUser, "Hallberg: site");
    std::set<std::string> reasons;
    for (KorDSMDatabaseItem* wrong : {&columns, &site, post.parent()})
        reasons.insert(whyNotMovable(post, *wrong).toStdString());
    reasons.insert(whyNotMovable(*post.children()[0], railings).toStdString());
    EXPECT_FALSE(reasons.contains(""));
    EXPECT_EQ(reasons.size(), 3u) << "another database, another kind, already there";
    EXPECT_FALSE(moveToGroup(post, columns).isStored());

    KorDSMDatabaseItem& old = *post.parent();
    ASSERT_TRUE(canMove(post, railings));
    ASSERT_TRUE(moveToGroup(post, railings).isStored());
    EXPECT_EQ(post.parent(), &railings);
    EXPECT_EQ(old.children().find(&post), -1);
    EXPECT_EQ(master("HB post 1:15")->categoryKey, railings.recordKey());

    KorDSMDatabaseItem& rails = item<StructDetObjQualifierSet>(kUser, "HB rails");
    ASSERT_TRUE(moveToGroup(rails, site).isStored());
    EXPECT_EQ(row<StructDetObjQualifierSet>(kUser, "HB rails")->groupKey, site.recordKey());
    EXPECT_EQ(static_cast<KorDsmQualifierSetItem&>(rails).getRecord().groupKey, site.recordKey());
}
