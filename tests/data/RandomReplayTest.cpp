#include "EditingProgram.h"
#include "StoreEngines.h"

#include "data/exchange/CopiedDatabase.h"
#include "data/text/SampleData.h"

#include <algorithm>
#include <functional>
#include <random>

// Two programs do what comes into their heads with one database; one stores before the other.

namespace {

using Names = std::vector<KorString>;

/// Commands by chance, the same for the same seed.
class RandomEditor {
public:
    RandomEditor(EditingProgram& program, unsigned seed, const char* who)
        : m_program(program), m_random(seed), m_who(who) {}

    void work(int commands) {
        const std::function<void()> all[] = {
            [this] { m_program.addStyle(newName(), any<StructDetBaseCategory>()); },
            [this] { m_program.copyStyle(any<StructDetailStyle>(), newName()); },
            [this] { copyRow(); },
            [this] { removeStyle(); },
            [this] { removeUnused(); },
            [this] { m_program.rename(any<StructDetailStyle>(), newName()); },
            [this] { m_program.refile(any<StructDetailStyle>(), any<StructDetBaseCategory>()); },
            [this] { refileSet(); },
            [this] { setSomething(); },
            [this] { setViews(); },
            [this] { removeEntry(); },
        };
        for (int i = 0; i < commands; ++i)
            all[below(std::size(all))]();
    }

private:
    std::size_t below(std::size_t count) { return m_random() % count; }
    // Often one that the other program takes too.
    KorString newName() {
        const KorString name =
            KorString(below(2) ? m_who : "New ") + KorString::number(std::int64_t(below(4)));
        for (const eTableType type :
             {kTableDetailStyle, kTableViewRequest, kTableQualifierSet, kTableReprMap})
            if (m_program.keyOf(type, name) > 0)
                return KorString(m_who) + KorString::number(std::int64_t{100 + ++m_last});
        return name;
    }
    template <typename R>
    const KorString& any() {
        const RowArray& rows = m_program.table(tableOf<R>).rows();
        return rows.at(static_cast<int>(below(static_cast<std::size_t>(rows.size())))).name;
    }
    void copyRow() {
        switch (below(3)) {
        case 0:
            return m_program.copyRow<StructDetViewRequest>(any<StructDetViewRequest>(), newName());
        case 1:
            return m_program.copyRow<StructDetObjQualifierSet>(any<StructDetObjQualifierSet>(), newName());
        default:
            return m_program.copyRow<StructDetObjReprMap>(any<StructDetObjReprMap>(), newName());
        }
    }
    bool hasFew(eTableType type) { return m_program.table(type).rows().size() < 3; }
    void removeStyle() {
        if (!hasFew(kTableDetailStyle))
            m_program.removeStyle(any<StructDetailStyle>());
    }
    // The last ones, whose keys are given again.
    void removeUnused() {
        StyleSource& source = *m_program.databases().here();
        const eTableType types[] = {kTableViewRequest, kTableQualifierSet,      kTableReprMap,
                                    kTableLengthClip,  kTableQualifierSetGroup, kTableBaseCategory};
        const eTableType type = types[below(std::size(types))];
        const RowArray& rows = source.table(type).rows();
        for (int i = rows.size() - 1; i >= 0 && !hasFew(type); --i) {
            const auto users = source.referrersOf(type, rows.at(i).key);
            if (std::ranges::any_of(
                    users, [](const Referrer& user) { return user.column->role != eReferenceRole::kPartOf; }))
                continue;
            EXPECT_EQ(m_program.databases().remove(type, KorOdbcKey(rows.at(i).key)), WriteResult::kWritten);
            return;
        }
    }
    void refileSet() {
        const KorString set = any<StructDetObjQualifierSet>();
        m_program.set<StructDetObjQualifierSet>(
            set, 2,
            std::int64_t{m_program.keyOf(kTableQualifierSetGroup, any<StructDetObjQualifierSetGroup>())});
    }
    void setSomething() {
        switch (below(3)) {
        case 0:
            return m_program.set<StructDetailStyle>(any<StructDetailStyle>(), 3, newName());
        case 1:
            return m_program.set<StructDetailStyle>(any<StructDetailStyle>(), 6,
                                                    static_cast<std::int64_t>(below(8)));
        default:
            return m_program.set<StructDetViewRequest>(any<StructDetViewRequest>(), 10,
                                                       1.0 / static_cast<double>(1 + below(50)));
        }
    }
    void setViews() {
        std::vector<std::string> views(below(5));
        for (std::string& view : views)
            view = any<StructDetViewRequest>().toStdString();
        m_program.setViews(any<StructDetailStyle>(), views);
    }
    void removeEntry() {
        if (hasFew(kTableReprMapEntry))
            return;
        const RowArray& rows = m_program.table(kTableReprMapEntry).rows();
        const int key = rows.at(static_cast<int>(below(static_cast<std::size_t>(rows.size())))).key;
        EXPECT_EQ(m_program.databases().remove(kTableReprMapEntry, KorOdbcKey(key)), WriteResult::kWritten);
    }

    EditingProgram& m_program;
    std::mt19937 m_random;
    const char* m_who;
    int m_last = 0;
};

/// In a file, or on a server; mine wins, or theirs.
class RandomReplay : public testing::TestWithParam<std::tuple<const char*, bool>> {
protected:
    RandomReplay() { EXPECT_EQ(buildSampleData(SOURCE_DIR "/resources", m_folder.file("")).error, ""); }
    std::string file() const { return m_folder.file("user.dsdb"); }
    /// A new database with what the file holds.
    void begin() {
        m_databases.closeSource(SourceId::user());
        m_engine = StoreEngine::of(std::get<0>(GetParam()));
        m_engine->make(0);
        const auto from = SqliteStore::open(file(), SqliteStore::eMode::kRead).store;
        const auto to = m_engine->open(false);
        ASSERT_EQ(to->begin().error, "");
        ASSERT_EQ(CopiedDatabase::copy(*from, *to, [](const TableSchema&, int) { return true; }).error, "");
        ASSERT_EQ(to->commit().error, "");
    }
    void open() {
        m_databases.addSource(SourceId::user(), m_engine->open(false));
        m_databases.setCurrentSource(SourceId::user());
    }
    /// Keeps all of this program's that can be kept.
    void keepAll(std::vector<OutsideConflict> conflicts) {
        while (std::erase_if(conflicts, [this](const OutsideConflict& conflict) {
                   return m_databases.keepMine(SourceId::user(), conflict) == WriteResult::kWritten;
               }) > 0)
            ;
    }
    /// Whether something of a conflict is pending although it was not kept.
    bool isPending(const OutsideConflict& conflict) {
        const auto steps = m_databases.pending().steps();
        return std::ranges::any_of(steps, [&](const PendingStep* step) {
            const RowRef row{step->table, step->key};
            if (conflict.kind == OutsideConflict::eKind::kDelete)
                return step->action == PendingStep::eAction::kDelete &&
                       (row == RowRef{conflict.table->type, conflict.key} ||
                        std::ranges::find(conflict.identifying, row) != conflict.identifying.end());
            return !conflict.isMade && std::ranges::any_of(conflict.cells, [&](const WantedCell& cell) {
                return cell.row == row && cell.column == step->column;
            });
        });
    }
    static int mastersOfOtherNames(StyleDatabases& databases) {
        StyleSource& source = *databases.here();
        const RowArray& masters = source.table(kTableDetailMaster).rows();
        int count = 0;
        for (int i = 0; i < masters.size(); ++i) {
            const auto& master = static_cast<const StructDetailMaster&>(masters.at(i));
            const StructRecord* style = source.table(kTableDetailStyle).find(KorOdbcKey(master.styleKey));
            count += !style || style->name != master.name;
        }
        return count;
    }

    TempFolder m_folder;
    std::unique_ptr<StoreEngine> m_engine;
    StyleDatabases m_databases;
};

} // namespace

TEST_P(RandomReplay, LeavesASoundDatabaseWhateverBothDidAndWhoeverWins) {
    {
        EditingProgram before(file());
        for (const char* name : {"A", "B", "C", "D"})
            before.copyStyle("HB post 1:15", name);
        ASSERT_TRUE(before.commit());
    }
    std::size_t found = 0;
    for (unsigned seed = 1; seed <= 20 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        begin();
        open();
        const auto odd = EditingProgram::oddities(m_databases);
        ASSERT_EQ(mastersOfOtherNames(m_databases), 0);
        EditingProgram mine(m_databases);
        RandomEditor(mine, seed, "Mine ").work(20);
        {
            EditingProgram other(m_engine->open(false));
            RandomEditor(other, seed + 1000, "Theirs ").work(20);
            ASSERT_TRUE(other.commit());
        }
        const auto changes = m_databases.refreshChanged();
        ASSERT_EQ(changes.size(), 1u);
        ASSERT_EQ(changes[0].error, "");
        found += changes[0].conflicts.size();
        if (std::get<1>(GetParam()))
            keepAll(changes[0].conflicts);
        else
            for (const OutsideConflict& conflict : changes[0].conflicts)
                EXPECT_FALSE(isPending(conflict)) << conflict.table->name << " " << conflict.key;
        ASSERT_TRUE(mine.commit());
        EXPECT_TRUE(m_databases.pending().isEmpty());
        open();
        const auto now = EditingProgram::oddities(m_databases);
        EXPECT_TRUE(std::ranges::includes(odd, now)) << testing::PrintToString(now);
        EXPECT_EQ(EditingProgram::stylesWithoutOneMaster(m_databases), 0);
        EXPECT_EQ(mastersOfOtherNames(m_databases), 0);
    }
    EXPECT_GT(found, 20u) << "they must get in each other's way";
}

INSTANTIATE_TEST_SUITE_P(WithMineAndTheirs, RandomReplay,
                         testing::Combine(testing::Values("file", "postgresql"), testing::Bool()));
