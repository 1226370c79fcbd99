#include "StoreEngines.h"
#include "base/EditorSession.h"
#include "data/StyleDatabases.h"
#include "support/LineProxy.h"

#include <cstdlib>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

// Several programs at work on one database, whose lines break at random.

namespace {

using View = StructDetViewRequest;
using Clip = StructDetViewLengthClip;
using Trouble = LineProxy::eTrouble;

constexpr int kMostEditors = 4;
constexpr int kShared = 6; ///< views whose scales are moved from one to the other
constexpr int kScale = 10;
constexpr int kLengthClip = 9;
constexpr double kWhole = kShared * 1000.0;

/// Of all editors together.
int rounds() {
    const char* wanted = std::getenv("DETAILSTYLES_ROUNDS");
    return wanted ? std::atoi(wanted) : 150;
}

/// One program. Each change that it stores also counts up a row of its own, so that what it was told can be
/// compared with what is stored; and moves an amount between two shared rows, so that what somebody else
/// stored in between, or a half of a change, would alter the sum.
class Editor {
public:
    Editor(const std::string& server, const std::string& schema, int number)
        : m_line(server), m_random(static_cast<unsigned>(1000 + number)), m_number(number) {
        using namespace std::chrono_literals;
        const ServerAddress address =
            ServerAddress::parse(DatabaseServer::connectionBy(m_line.folder(), schema), "a test").value;
        m_databases.addSource(SourceId::user(),
                              OdbcStore::open(address, OdbcStore::eMode::kWrite, {30s, 30s, 0ms, 0ms}).store);
        m_databases.setCurrentSource(SourceId::user());
    }
    /// Returns how many changes it was told were stored.
    int work(int count) {
        for (int i = 0; i < count; ++i) {
            follow();
            change();
            if (below(3) == 0)
                m_line.strikeAt(1 + below(8), static_cast<Trouble>(1 + below(2)), below(2) == 0);
            const StyleDatabases::CommitWalk walk(m_databases);
            for (int table = 0; table < kNumberOfTableTypes; ++table)
                m_databases.keepTable(static_cast<eTableType>(table));
            m_stored += m_databases.pending().isEmpty();
            m_line.mend();
        }
        follow();
        return m_stored;
    }

private:
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    double scaleOf(int key) {
        return static_cast<const View*>(m_databases.here()->table(kTableViewRequest).find(KorOdbcKey(key)))
            ->scale;
    }
    void set(int key, int column, const CellValue& value) {
        m_databases.setCell(kTableViewRequest, KorOdbcKey(key), column, value);
    }
    void change() {
        PendingLog& pending = m_databases.pending();
        const int from = 1 + below(kShared);
        const int to = 1 + (from + below(kShared - 1)) % kShared;
        const double amount = 1 + below(5);
        pending.beginGroup("move");
        set(from, kScale, scaleOf(from) - amount);
        set(to, kScale, scaleOf(to) + amount);
        set(kShared + m_number, kScale, scaleOf(kShared + m_number) + 1);
        referTo(from);
        pending.endGroup();
    }
    // Clips come, are used, and go.
    void referTo(int view) {
        const RowArray& clips = m_databases.here()->table(kTableLengthClip).rows();
        if (clips.size() < 3) {
            Clip clip;
            clip.name = KorString("Clip " + std::to_string(m_random()));
            m_databases.append(kTableLengthClip, clip);
            set(view, kLengthClip, std::int64_t{clip.key});
        } else {
            const int key = clips.at(below(clips.size())).key;
            if (below(2) && m_databases.users(kTableLengthClip, KorOdbcKey(key)).empty())
                m_databases.remove(kTableLengthClip, KorOdbcKey(key));
            else
                set(view, kLengthClip, std::int64_t{key});
        }
    }
    // What the line left in doubt is found out; what conflicts is given up as a whole.
    void follow() {
        for (bool isRead = false; !isRead;) {
            isRead = true;
            for (const OutsideChange& change : m_databases.refreshChanged()) {
                isRead = isRead && change.ok();
                m_stored += change.wasStored;
            }
        }
        for (int table = 0; table < kNumberOfTableTypes; ++table)
            m_databases.dropTable(static_cast<eTableType>(table));
    }

    LineProxy m_line;
    std::mt19937 m_random;
    int m_number;
    int m_stored = 0;
    StyleDatabases m_databases;
};

class ServerInterleaving : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Editors, ServerInterleaving, testing::Values(2, 3, kMostEditors));

} // namespace

TEST_P(ServerInterleaving, NothingIsLostHalvedOrTakenForTheOtherOutcome) {
    DatabaseServer& server = DatabaseServer::instance();
    const std::string schema = server.newSchema();
    OdbcEngine engine(server.connection(schema), true);
    engine.make(kShared + kMostEditors);
    engine.run("UPDATE view_request SET scale = 1000 WHERE key <= " + std::to_string(kShared) +
               "; UPDATE view_request SET scale = 1 WHERE key > " + std::to_string(kShared));
    const int each = rounds() / GetParam();
    std::vector<std::pair<pid_t, int>> editors;
    for (int number = 1; number <= GetParam(); ++number) {
        int ends[2] = {};
        ASSERT_EQ(pipe(ends), 0);
        const pid_t process = fork();
        if (process == 0) {
            const EditorSession session;
            const int stored = Editor(server.socket(), schema, number).work(each);
            _exit(write(ends[1], &stored, sizeof stored) == sizeof stored ? 0 : 1);
        }
        close(ends[1]);
        editors.emplace_back(process, ends[0]);
    }
    int all = 0;
    for (int number = 1; const auto& [process, output] : editors) {
        int stored = -1;
        EXPECT_EQ(read(output, &stored, sizeof stored), static_cast<ssize_t>(sizeof stored));
        close(output);
        waitpid(process, nullptr, 0);
        EXPECT_EQ(engine.query("SELECT scale FROM %sview_request WHERE key = " +
                               std::to_string(kShared + number++))[0][0],
                  std::to_string(stored + 1))
            << "an editor was told something else than what is stored";
        all += stored;
    }
    EXPECT_GT(all, each / 4);
    EXPECT_EQ(engine.query("SELECT SUM(scale) FROM %sview_request WHERE key <= " + std::to_string(kShared)),
              (OdbcRows{{std::to_string(static_cast<int>(kWhole))}}))
        << "a change was lost or halved";
    EXPECT_EQ(engine.query("SELECT key FROM %sview_request v WHERE v.length_clip > 0 AND NOT EXISTS (SELECT "
                           "1 FROM " +
                           schema + ".length_clip c WHERE c.key = v.length_clip)"),
              OdbcRows());
    RecordProperty("stored", all);
}
