#include "SampleSession.h"

#include "operations/KorODBCDetailStyleExports.h"
#include "session/KorDSMDeepCopy.h"
#include "session/KorDSMUndo.h"

namespace {

using eFate = ImportReport::Row::eFate;
using KorDSMDeepCopy::Outcome;
using KorDSMDeepCopy::Wish;

class DeepCopy : public SampleSession {
protected:
    DeepCopy() { databases.setCurrentSource(SourceId::user()); }

    Wish wishFor(const char* name, eNamesakes namesakes = eNamesakes::kKeepBoth) {
        return {SourceId::standard(),
                SourceId::user(),
                {{kTableDetailStyle, row<StructDetailStyle>(SourceId::standard(), name)->key}},
                namesakes};
    }
    static std::string told(const Outcome& outcome) {
        std::string lines = outcome.error.toStdString();
        for (const ImportReport::Row& each : outcome.report.rows)
            lines += std::to_string(each.table) + " " + each.name.toStdString() + " " +
                     std::to_string(static_cast<int>(each.fate)) + "\n";
        return lines;
    }
    static long count(const Outcome& outcome, eFate fate) {
        return std::ranges::count(outcome.report.rows, fate, &ImportReport::Row::fate);
    }
    static const ImportReport::Row* find(const Outcome& outcome, eTableType table, const char* name) {
        for (const ImportReport::Row& each : outcome.report.rows)
            if (each.table == table && each.name == name)
                return &each;
        return nullptr;
    }
    std::string anyStyle() {
        return databases.source(SourceId::standard())
            ->table(kTableDetailStyle)
            .rows()
            .at(0)
            .name.toStdString();
    }
    std::size_t steps() { return databases.pending().steps().size(); }

    std::string style = anyStyle();
};

} // namespace

TEST_F(DeepCopy, WhatIsPreviewedIsDoneAndLeavesNoTraceBefore) {
    // Something that can be brought again must survive a preview.
    const auto& post = *row<StructDetailStyle>(SourceId::user(), "HB post 1:15");
    ASSERT_EQ(KorDSMGuardedWrite::setAttributeInt(kTableDetailStyle, KorOdbcKey(post.key), 6,
                                                  post.titlePosition == 3 ? 2 : 3),
              1);
    KorDSMUndo::undo();
    ASSERT_TRUE(KorDSMUndo::canRedo());

    const Outcome preview = KorDSMDeepCopy::preview(wishFor(style.c_str()));
    ASSERT_TRUE(preview.done) << preview.error.toStdString();
    EXPECT_GT(count(preview, eFate::kNew), 5);
    EXPECT_EQ(steps(), 0U);
    EXPECT_TRUE(KorDSMUndo::canRedo());
    EXPECT_EQ(row<StructDetailStyle>(SourceId::user(), style.c_str()), nullptr);

    const Outcome copy = KorDSMDeepCopy::copy(wishFor(style.c_str()));
    ASSERT_TRUE(copy.done);
    EXPECT_EQ(told(copy), told(preview));
    EXPECT_EQ(KorDSMUndo::undoText(), KorString("Undo copying of \"" + style + "\""));
    ASSERT_NE(row<StructDetailStyle>(SourceId::user(), style.c_str()), nullptr);
    EXPECT_FALSE(copy.changes.empty());

    const Outcome again = KorDSMDeepCopy::preview(wishFor(style.c_str()));
    EXPECT_EQ(count(again, eFate::kEqual), static_cast<long>(again.report.rows.size()));
    KorDSMUndo::undo();
    EXPECT_EQ(steps(), 0U) << "one step of undo";
}

TEST_F(DeepCopy, OfNamesakesBothStayOrTheirsIsUsedOrReplaced) {
    ASSERT_TRUE(KorDSMDeepCopy::copy(wishFor(style.c_str())).done);
    const auto& copy = *row<StructDetailStyle>(SourceId::user(), style.c_str());
    const auto* arrangement =
        static_cast<const StructDetViewArrangeStrategy*>(databases.source(SourceId::user())
                                                             ->table(kTableViewArrangeStrategy)
                                                             .find(KorOdbcKey(copy.arrangeStrategyKey)));
    ASSERT_NE(arrangement, nullptr);
    const std::string name = arrangement->name.toStdString();
    const double spacing = arrangement->rowSpacing;
    const std::int32_t key = arrangement->key;
    ASSERT_EQ(databases.setCell(kTableViewArrangeStrategy, KorOdbcKey(key), 3, spacing + 1.0),
              WriteResult::kWritten);

    const Outcome both = KorDSMDeepCopy::preview(wishFor(style.c_str()));
    EXPECT_EQ(find(both, kTableViewArrangeStrategy, name.c_str())->fate, eFate::kKeptBoth);
    EXPECT_EQ(find(both, kTableDetailStyle, style.c_str())->fate, eFate::kKeptBoth)
        << "what uses another record is another record";

    const Outcome theirs = KorDSMDeepCopy::preview(wishFor(style.c_str(), eNamesakes::kUseTheirs));
    EXPECT_EQ(find(theirs, kTableDetailStyle, style.c_str())->fate, eFate::kUsedTheirs);
    EXPECT_EQ(theirs.report.rowsAppended, 0);

    const Outcome replaced = KorDSMDeepCopy::copy(wishFor(style.c_str(), eNamesakes::kReplace));
    ASSERT_TRUE(replaced.done) << replaced.error.toStdString();
    EXPECT_EQ(find(replaced, kTableViewArrangeStrategy, name.c_str())->fate, eFate::kReplaced);
    arrangement = row<StructDetViewArrangeStrategy>(SourceId::user(), KorString(name));
    EXPECT_EQ(arrangement->key, key) << "who uses it uses it still";
    EXPECT_EQ(arrangement->rowSpacing, spacing);
    EXPECT_EQ(count(KorDSMDeepCopy::preview(wishFor(style.c_str())), eFate::kNew), 0);
}

TEST_F(DeepCopy, AGroupStandsForWhatIsFiledInIt) {
    const auto choices = KorDSMDeepCopy::choicesOf(SourceId::standard(),
                                                   KorDSMFamilies::section(KorDSMDefines::kViewQualifiers));
    ASSERT_FALSE(choices.empty());
    auto& group = item<StructDetObjQualifierSetGroup>(SourceId::standard(), choices.front().group);
    std::vector<RowRef> expected;
    for (const auto& choice : choices)
        if (choice.group == choices.front().group)
            expected.push_back(choice.row);
    EXPECT_EQ(KorDSMDeepCopy::recordsOf(group), expected);
    EXPECT_EQ(KorDSMDeepCopy::targetsFor(SourceId::standard()), std::vector{SourceId::user()});
    EXPECT_TRUE(KorDSMDeepCopy::targetsFor(SourceId::user()).empty()) << "Standard is only read";
    const Outcome refused = KorDSMDeepCopy::copy({SourceId::user(), SourceId::standard(), expected});
    EXPECT_FALSE(refused.done);
    EXPECT_NE(refused.error, "");
}

TEST_F(DeepCopy, OneRecordAloneIsTreatedOtherwiseAndAViewBringsNoEmptyCategory) {
    const auto* view = row<StructDetViewRequest>(SourceId::standard(), "Part, front");
    ASSERT_NE(view, nullptr);
    const int categories = databases.source(SourceId::user())->table(kTableBaseCategory).rows().size();
    Wish wish{SourceId::standard(), SourceId::user(), {{kTableViewRequest, view->key}}};
    ASSERT_TRUE(KorDSMDeepCopy::copy(wish).done);
    EXPECT_EQ(databases.source(SourceId::user())->table(kTableBaseCategory).rows().size(), categories);
    EXPECT_EQ(find(KorDSMDeepCopy::preview(wish), kTableViewRequest, "Part, front")->fate, eFate::kEqual);

    const auto* copied = row<StructDetViewRequest>(SourceId::user(), "Part, front");
    databases.setCurrentSource(SourceId::user());
    ASSERT_TRUE(
        KorDSMGuardedWrite::setField(kTableViewRequest, KorOdbcKey(copied->key), 10, 0.25).isStored());
    wish.single[{kTableViewRequest, view->key}] = eNamesakes::kReplace;
    const Outcome replaced = KorDSMDeepCopy::preview(wish);
    EXPECT_EQ(find(replaced, kTableViewRequest, "Part, front")->fate, eFate::kReplaced);
    EXPECT_EQ(count(replaced, eFate::kKeptBoth), 0);
}

TEST_F(DeepCopy, WhatIsDroppedOnAGroupIsFiledThereAndLeavesItsOwnGroupBehind) {
    const auto& group = *row<StructDetBaseCategory>(SourceId::user(), "Hallberg: railings");
    const RowArray& groups = databases.source(SourceId::user())->table(kTableBaseCategory).rows();
    const int before = groups.size();
    Wish wish = wishFor("Crane runway beam");
    wish.group = {kTableBaseCategory, group.key};
    const std::string preview = told(KorDSMDeepCopy::preview(wish));
    const Outcome copied = KorDSMDeepCopy::copy(wish);
    EXPECT_EQ(told(copied), preview);
    EXPECT_EQ(find(copied, kTableBaseCategory, "Beams"), nullptr);
    EXPECT_EQ(groups.size(), before);
    const auto* copy = row<StructDetailStyle>(SourceId::user(), "Crane runway beam");
    const auto filed = KorDSMDeepCopy::recordsOf(item<StructDetBaseCategory>(SourceId::user(), group.name));
    EXPECT_NE(std::ranges::find(filed, RowRef{kTableDetailStyle, copy->key}), filed.end());
    KorDSMUndo::undo();
    EXPECT_EQ(row<StructDetailStyle>(SourceId::user(), "Crane runway beam"), nullptr) << "one step";
}

TEST_F(DeepCopy, WhatIsCopiedTwiceIntoAGroupIsThereOnceAndWhatWasFiledNowhereIsFiledToo) {
    const auto& set = *row<StructDetObjQualifierSet>(SourceId::standard(), "All holes");
    const eTableType groups = tableOf<StructDetObjQualifierSetGroup>;
    const std::int32_t group = databases.source(SourceId::user())->table(groups).rows().at(0).key;
    Wish wish = {SourceId::standard(), SourceId::user(), {{kTableQualifierSet, set.key}}};
    wish.group = {groups, group};
    for (const eFate fate : {eFate::kNew, eFate::kEqual}) {
        const Outcome outcome = KorDSMDeepCopy::copy(wish);
        const auto* told = find(outcome, kTableQualifierSet, "All holes");
        ASSERT_NE(told, nullptr);
        EXPECT_EQ(told->fate, fate);
    }
    KorDSMUndo::undo();
    const Column& filed = *KorDSMFamilies::filingColumn(kTableQualifierSet);
    filed.integerIn(const_cast<StructDetObjQualifierSet*>(&set)) = 0;
    KorDSMDeepCopy::copy(wish);
    const auto* copied = row<StructDetObjQualifierSet>(SourceId::user(), "All holes");
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(filed.integerIn(copied), group);
}

TEST_F(DeepCopy, WhatIsLeftToADefaultIsTheSameAfterItsWayThroughAFile) {
    using Exports = KorODBCDetailStyleExports;
    const SourceId user = SourceId::user();
    const auto& railing = *row<StructDetailStyle>(user, "HB railing, workshop");
    const std::string path = file("railing.dsdb");
    ASSERT_EQ(Exports::exportDetail(0, KorOdbcKey(railing.key), user.dsn, user.index, KorString(path)), 1);
    ASSERT_EQ(Exports::openFile(KorString(path)), 1);
    const SourceId sent = SourceId::exchange();
    EXPECT_EQ(row<StructDetViewLengthClip>(sent, "HB railing panels")->linetypeKey,
              row<StructDetViewLengthClip>(user, "HB railing panels")->linetypeKey);
    const auto& there = *row<StructDetailStyle>(sent, railing.name);
    const Outcome preview = KorDSMDeepCopy::preview({sent, user, {{kTableDetailStyle, there.key}}});
    EXPECT_EQ(count(preview, eFate::kEqual), std::ssize(preview.report.rows)) << told(preview);
    Exports::deleteCache(0);
}
