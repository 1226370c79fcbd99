#include "SampleSession.h"

#include "data/StoreEngines.h"
#include "data/exchange/CopiedDatabase.h"
#include "data/pending/RecoveryFile.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMEditedList.h"
#include "session/KorDSMUndo.h"
#include "support/LineProxy.h"

namespace {

// What the host is told after each way of leaving or applying, by value.
class Commit : public SampleSession, public testing::WithParamInterface<const char*> {
protected:
    Commit() {
        databases.setOwnerMode(true);
        for (const auto& [id, name] :
             {std::pair(SourceId::standard(), "standard.dsdb"), std::pair(SourceId::user(), "user.dsdb")}) {
            engine = StoreEngine::of(GetParam());
            engine->make(0);
            const auto from = SqliteStore::open(file(name), SqliteStore::eMode::kRead).store;
            const auto to = engine->open(false);
            EXPECT_EQ(to->begin().error, "");
            EXPECT_EQ(CopiedDatabase::copy(*from, *to, [](const TableSchema&, int) { return true; }).error,
                      "");
            EXPECT_EQ(to->commit().error, "");
            databases.addSource(id, engine->open(false));
            engines.push_back(engine);
        }
    }
    /// Another program on the User database.
    void others(const char* sql) {
        engine->run(sql);
        if (engine->hasTypes())
            engine->run("UPDATE dsdb_state SET last_change = last_change + 1");
    }

    static void clearFlags() {
        KorOdbcMan::m_DSMReloadInfo = KorOdbcMan::m_DSMResetDetViewRequestCache = 0;
        KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
    }
    static std::pair<int, int> flags() {
        return {KorOdbcMan::m_DSMReloadInfo, KorOdbcMan::m_DSMResetDetViewRequestCache};
    }

    /// Changes the description of the first style of a source.
    void change(SourceId id, const char* text) {
        const KorDSNRequest request(id.dsn, id.index);
        const KorOdbcKey key(databases.here()->table(kTableDetailStyle).rows().at(0).key);
        EXPECT_EQ(KorOdbcMan::setAttribute(kTableDetailStyle, key, 3, KorString(text), 0), 1);
    }
    std::shared_ptr<StoreEngine> engine; ///< of the User database
    std::vector<std::shared_ptr<StoreEngine>> engines;
    using Flags = std::pair<int, int>; ///< reload, drop the cache of view requests

    /// Counts the steps that would be brought back after a crash.
    struct Writer : PendingObserver {
        explicit Writer(std::size_t& count) : steps(count) {}
        void changed(std::span<const PendingPlace>, std::span<const PendingCommand> made) override {
            steps = made.empty() ? 0 : made.back().steps.size();
        }
        void takenBack() override { steps = 0; }
        void emptied() override {
            steps = 0;
            ++emptyTimes;
        }
        void storing(std::span<const PendingPlace>, std::uint32_t) override {}
        void notStored() override {}
        void takeOver(std::shared_ptr<RecoveryFile>) override {}
        std::size_t& steps;
        int emptyTimes = 0;
    };
};

INSTANTIATE_TEST_SUITE_P(Stores, Commit, testing::Values("file", "postgresql"),
                         [](const auto& each) { return std::string(each.param); });

} // namespace

TEST_P(Commit, WhatTurnsOutToBeStoredCountsAsAppliedAndIsNotTakenBackBefore) {
    if (std::string(GetParam()) != "postgresql")
        GTEST_SKIP() << "no line can break";
    LineProxy line(DatabaseServer::instance().socket());
    const std::string schema = static_cast<OdbcEngine&>(*engine).address().schema;
    const ServerAddress address =
        ServerAddress::parse(DatabaseServer::connectionBy(line.folder(), schema), "a test").value;
    databases.addSource(SourceId::user(), OdbcStore::open(address, OdbcStore::eMode::kWrite).store);
    int commit = 0;
    for (const char* text : {"first", "second"}) {
        change(SourceId::user(), text);
        commit = -line.requests();
        ASSERT_TRUE(KorDSMCommit::keepAndGoOn().ok());
        commit += line.requests();
    }
    change(SourceId::user(), "third");
    clearFlags();
    KorDSMDataStructure::m_bApplyWasPressed = false;
    line.strikeAt(commit, LineProxy::eTrouble::kCutAfter, true);
    EXPECT_EQ(KorDSMCommit::keepAndGoOn().failed.size(), 1U);
    EXPECT_FALSE(KorDSMUndo::canUndo());
    EXPECT_TRUE(KorDSMUndo::undo().empty());
    EXPECT_TRUE(KorDSMUndo::isPending());
    EXPECT_TRUE(mentions(KorDSMCommit::whatMayBeStored().toStdString(), "User"));
    EXPECT_EQ(flags(), Flags(0, 0));
    line.mend();
    KorDSMCommit::settle(&KorDSMCommit::readChanged,
                         [](const std::vector<OutsideChange>& changes) { return changes; });
    EXPECT_FALSE(KorDSMUndo::isPending());
    EXPECT_EQ(KorDSMCommit::whatMayBeStored(), "");
    EXPECT_EQ(flags(), Flags(1, 1));
    EXPECT_TRUE(KorDSMDataStructure::m_bApplyWasPressed);
}

TEST_P(Commit, OkTellsTheHostToDropItsViewsOnlyWhereSomethingWasPending) {
    EXPECT_TRUE(KorDSMCommit::keepAndClose(false).ok());
    EXPECT_EQ(flags(), (Flags{1, 0}));
    EXPECT_EQ(structure.getUpdateStatus(), KorDSMDataStructure::kUpToDate);
    KorOdbcMan::m_DSMResetDetViewRequestCache = 7;
    EXPECT_TRUE(KorDSMCommit::keepAndClose(false).ok());
    EXPECT_EQ(flags(), (Flags{1, 7})) << "what an earlier Apply told stays told";
    clearFlags();
    change(SourceId::user(), "mine");
    KorOdbcCompactDetailsTables::m_bCompactPerformed = true;
    EXPECT_TRUE(KorDSMCommit::keepAndClose(true).ok());
    EXPECT_EQ(flags(), (Flags{1, 1}));
    EXPECT_EQ(structure.getUpdateStatus(), KorDSMDataStructure::kReloadRequested) << "after compacting";
    EXPECT_FALSE(KorOdbcCompactDetailsTables::m_bCompactPerformed);
    EXPECT_FALSE(KorDSMDataStructure::m_bApplyWasPressed);
}

TEST_P(Commit, ApplyTellsAllAndCancelOnlyToReload) {
    EXPECT_TRUE(KorDSMCommit::keepAndGoOn().ok());
    EXPECT_EQ(flags(), (Flags{1, 1}));
    EXPECT_TRUE(KorDSMDataStructure::m_bApplyWasPressed);
    clearFlags();
    change(SourceId::user(), "mine");
    KorDSMCommit::discard();
    EXPECT_EQ(flags(), (Flags{1, 0}));
    EXPECT_TRUE(databases.pending().isEmpty());
}

TEST_P(Commit, TellsTheHostToReloadWhenOneSourceWasKeptAndAnotherNot) {
    change(SourceId::user(), "mine");
    others("UPDATE detail_style SET description = 'theirs'");
    EXPECT_FALSE(KorDSMCommit::keepAndClose(true).ok());
    EXPECT_EQ(flags(), (Flags{0, 0})) << "nothing was stored";
    change(SourceId::standard(), "maker's");
    EXPECT_FALSE(KorDSMCommit::keepAndGoOn().ok());
    EXPECT_EQ(flags(), (Flags{1, 1}));
    EXPECT_FALSE(databases.pending().hasPending(SourceId::standard()));
    EXPECT_TRUE(databases.pending().hasPending(SourceId::user()));
}

TEST_P(Commit, WhatIsOvertakenIsTriedAgainWithOtherKeysButNotForEverAndNotWhereItIsAsked) {
    struct Case {
        int overtaken;
        bool conflicts;
        int tries;
    };
    databases.setCurrentSource(SourceId::user());
    const auto read = [] {
        return KorDSMCommit::settle(&KorDSMCommit::readChanged, [](const auto& mine) { return mine; });
    };
    for (const auto& [overtaken, conflicts, expected] : {Case{2, false, 3}, {1, true, 1}, {1000, false, 5}}) {
        StructDetViewRequest mine;
        mine.name = KorString::format("Mine %s", {KorString::number(std::int64_t{overtaken})});
        EXPECT_EQ(databases.append(kTableViewRequest, mine), WriteResult::kWritten);
        change(SourceId::user(), mine.name.toStdString().c_str());
        int tries = 0;
        const auto outcome = KorDSMCommit::readAndKeep(read, [&, most = overtaken, isAsked = conflicts] {
            const std::string key =
                std::to_string(databases.here()->table(kTableViewRequest).find(mine.name)->key);
            if (++tries <= most)
                others(isAsked ? "UPDATE detail_style SET description = 'theirs'"
                               : ("INSERT INTO view_request (key, name) VALUES (" + key + ", 'Theirs " + key +
                                  "')")
                                     .c_str());
            return KorDSMCommit::keepAndGoOn();
        });
        EXPECT_EQ(tries, expected);
        EXPECT_EQ(outcome.ok(), tries == 3);
        EXPECT_EQ(outcome.isAsked, conflicts);
        EXPECT_EQ(outcome.failed.size(), tries == 5);
        EXPECT_EQ(KorDSMUndo::isPending(), !outcome.ok());
    }
}

TEST_P(Commit, WhileTheUserChoosesNothingIsWrittenDownAndAfterwardsWhatWasChosen) {
    change(SourceId::user(), "mine");
    others("UPDATE detail_style SET description = 'theirs'");
    const auto shown = [&] { return row<StructDetailStyle>(SourceId::user(), "HB post 1:15")->description; };
    std::size_t written = 0;
    auto observer = std::make_unique<Writer>(written);
    const Writer& writer = *observer;
    databases.pending().setObserver(std::move(observer));
    const auto read = [&] {
        auto changes = databases.refreshChanged();
        EXPECT_EQ(shown(), "theirs");
        return changes;
    };
    const auto changes = KorDSMCommit::settle(read, [&](const auto& asked) {
        EXPECT_EQ(asked.at(0).conflicts.size(), 1U);
        EXPECT_EQ(written, 1U);
        EXPECT_EQ(writer.emptyTimes, 0) << "a crash would have lost it at that moment";
        return std::vector<OutsideChange>();
    });
    EXPECT_EQ(shown(), "theirs");
    EXPECT_EQ(written, 0U);
    EXPECT_FALSE(databases.pending().canUndo() || databases.pending().canRedo());
    KorDSMCommit::settle([&] { return changes; }, [](const auto& asked) { return asked; });
    EXPECT_EQ(shown(), "mine");
    EXPECT_TRUE(KorDSMCommit::keepAndGoOn().ok());
    KorDSMCommit::settle([&] { return databases.refreshChanged(); },
                         [](const auto&) {
                             ADD_FAILURE() << "asked about nothing";
                             return std::vector<OutsideChange>();
                         });
}

TEST_P(Commit, WhatWasMadeForAChangeThatIsDroppedGoesWithItAndNothingElse) {
    const auto style = [&] { return row<StructDetailStyle>(SourceId::user(), "HB post 1:15"); };
    const auto made = [&](const char* name) {
        return row<StructDetViewRequest>(SourceId::user(), name) != nullptr;
    };
    databases.setCurrentSource(SourceId::user());
    for (const bool isMine : {true, false}) {
        const auto views =
            KorDSMEditedList::of(SourceId::user(), {kTableDetailStyle, style()->key}, kTableDetailStyle);
        ASSERT_TRUE(views->duplicate({views->keys().front()}).isStored());
        StructDetViewRequest apart;
        apart.name = isMine ? "Made apart" : "Made apart too";
        databases.append(kTableViewRequest, apart);
        others("UPDATE detail_style SET view_3 = view_2, view_2 = view_1 WHERE name = 'HB post 1:15'");
        KorDSMCommit::settle(&KorDSMCommit::readChanged, [isMine](const auto& asked) {
            return isMine ? asked : std::vector<OutsideChange>();
        });
        EXPECT_EQ(made("HB front 1"), isMine);
        EXPECT_TRUE(made(apart.name.toStdString().c_str()));
        KorDSMCommit::discard();
        EXPECT_FALSE(databases.pending().canUndo());
    }
}
