#include "app/ProgramFixture.h"
#include "support/DatabaseServer.h"
#include "support/LineProxy.h"

#include "data/store/SqliteStore.h"
#include "data/store/odbc/OdbcDatabase.h"

#include <QProcess>

#include <atomic>
#include <csignal>

namespace fs = std::filesystem;

namespace {

class ServerCommandTest : public ProgramTest {
protected:
    QString connection() const { return QString::fromStdString(m_server.connection(m_schema)); }
    void settings(const std::string& text) const { writeBytes(data() / "sources.ini", text); }
    ProgramRun does(const QStringList& command) {
        ProgramRun done = run(command);
        EXPECT_EQ(done.exitCode, 0) << command.join(' ').toStdString() << "\n"
                                    << done.complaints.join('\n').toStdString();
        return done;
    }
    std::string user() const { return (data() / "user.dsdb").string(); }
    /// Whether two files hold the same, by keys and bits.
    static void expectAlike(const std::string& one, const std::string& other) {
        const auto first = SqliteStore::open(one, SqliteStore::eMode::kRead).store;
        const auto second = SqliteStore::open(other, SqliteStore::eMode::kRead).store;
        ASSERT_TRUE(first && second);
        for (const TableSchema& table : allTables()) {
            std::vector<ReadProblem> problems;
            const auto mine = table.makeRows();
            const auto theirs = table.makeRows();
            EXPECT_TRUE(first->readTable(table, *mine, problems) &&
                        second->readTable(table, *theirs, problems));
            ASSERT_EQ(mine->size(), theirs->size()) << table.name;
            for (int i = 0; i < mine->size(); ++i)
                EXPECT_TRUE(mine->equal(mine->at(i), theirs->at(i))) << table.name << " " << i;
        }
    }

    DatabaseServer& m_server = DatabaseServer::instance();
    std::string m_schema = m_server.newSchema();
};

} // namespace

TEST_F(ServerCommandTest, AnOfficeMovesToAServerWorksThereAndTakesItsStylesBack) {
    const QString file = QString::fromStdString(user());
    EXPECT_TRUE(run({"server", "check", connection()}).complaints.join(' ').contains("no styles"));
    does({"server", "create", connection()});
    EXPECT_TRUE(run({"server", "create", connection()}).complaints.join(' ').contains("already"));
    const QString alone = does({"list", "--source", "user", "--json"}).output;
    const QStringList change = {"set", "detail-style", "Beam", "description", "Träger; 'neu' = {1}"};
    EXPECT_TRUE(does({"copy-database", file, connection()})
                    .output.contains(QString::fromStdString("/" + m_schema + "\".")));
    EXPECT_TRUE(
        run({"copy-database", file, connection()}).complaints.join(' ').contains("holds rows already"));
    settings("# the office\n[User]\nconnection = " + m_server.connection(m_schema) + "\n");
    const std::string before = bytesOf(user());
    EXPECT_EQ(does({"list", "--source", "user", "--json"}).output, alone);
    does(change);
    EXPECT_EQ(bytesOf(user()), before) << "the change is on the server";
    const QString typed = QString::fromStdString("detailstyles --data " + data().string() +
                                                 " show --source user detail-style Be");
    EXPECT_FALSE(does({"complete", typed}).output.contains("Beam")) << "the file is not used any more";
    for (const auto& [word, phrase] :
         {std::pair("check", "read and changed"), std::pair("upgrade", "present version"),
          std::pair("status", "changes: 2")})
        EXPECT_TRUE(does({"server", word, "user"}).output.contains(phrase)) << word;
    for (const auto& [set, phrase] :
         {std::pair("CommLog=1", " CommLog=0"), {"Debug=1", " Debug=0"}, {"Debug=0", ""}}) {
        writeBytes(folder() / "odbcinst.ini",
                   std::string("[PostgreSQL Unicode]\nDriver=psqlodbcw.so\n") + set + "\n");
        environment.insert("ODBCSYSINI", named(""));
        const QString said = does({"server", "check", "user"}).output;
        EXPECT_EQ(said.contains("temporary files"), *phrase != 0) << set;
        EXPECT_TRUE(said.contains(phrase)) << said.toStdString();
    }
    environment.remove("ODBCSYSINI");
    OdbcDatabase owner(ServerAddress::parse(m_server.connection(m_schema), "a test").value, {});
    EXPECT_EQ(owner.connect().error, "");
    EXPECT_EQ(owner.execute("CREATE ROLE carl LOGIN IN ROLE \"" + m_schema + "_reader\"").error, "");
    settings("[user]\nconnection = " + m_server.connection(m_schema, "carl") + "\n");
    EXPECT_TRUE(does({"list", "--source", "user"}).complaints.filter("role of an editor").isEmpty());
    const QStringList refused = run(change).complaints;
    EXPECT_EQ(refused.filter("role of an editor").size(), 1) << refused.join('\n').toStdString();
    does({"copy-database", "user", named("back.dsdb")});
    fs::remove(data() / "sources.ini");
    EXPECT_TRUE(does({"complete", typed}).output.contains("Beam"));
    does(change);
    expectAlike(user(), (folder() / "back.dsdb").string());
}

TEST_F(ServerCommandTest, WhoeverIsOvertakenAgainAndAgainHasItsTurnAndAnotherKey) {
    does({"server", "create", connection()});
    OdbcDatabase others(ServerAddress::parse(m_server.connection(m_schema), "a test").value, {});
    EXPECT_EQ(others.connect().error, "");
    std::atomic<int> stored = 0;
    LineProxy line(m_server.socket());
    line.before("last_change + 1", [&] {
        const std::string key = std::to_string(++stored);
        EXPECT_EQ(others
                      .execute("SET search_path = " + m_schema +
                               "; UPDATE dsdb_state SET last_change = last_change + 1; INSERT INTO "
                               "view_request SELECT * FROM jsonb_populate_record(NULL::view_request, (SELECT "
                               "jsonb_object_agg(column_name, 0) FROM information_schema.columns WHERE "
                               "table_name = 'view_request' AND table_schema = '" +
                               m_schema + "') || jsonb_build_object('key', " + key + ", 'name', 'Theirs " +
                               key + "'))")
                      .error,
                  "");
    });
    settings("[user]\nconnection = " + DatabaseServer::connectionBy(line.folder(), m_schema) + "\n");
    does({"new", "view-request", "Mine"});
    EXPECT_EQ(stored, 2) << "one before the command had its turn, one before that";
    const QString all = does({"list", "--source", "user", "--kind", "view-request"}).output;
    for (const char* name : {"Mine", "Theirs 1", "Theirs 2"})
        EXPECT_TRUE(all.contains(name)) << all.toStdString();
}

TEST_F(ServerCommandTest, ACopyThatIsStoppedLeavesNothing) {
    does({"server", "create", connection()});
    LineProxy line(m_server.socket());
    const QString slow = QString::fromStdString(DatabaseServer::connectionBy(line.folder(), m_schema));
    const QString file = named("copy/new.dsdb");
    fs::create_directory(folder() / "copy");
    does({"copy-database", QString::fromStdString(user()), connection()});
    const auto stopped = [&](const QStringList& command, int request) {
        line.strikeAt(request, LineProxy::eTrouble::kFreezeBefore, false);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(DETAILSTYLES_PROGRAM, command);
        while (!line.hasStruck() && process.state() != QProcess::NotRunning)
            process.waitForFinished(1);
        EXPECT_TRUE(line.hasStruck()) << "it ended before";
        if (process.state() == QProcess::Running) {
            EXPECT_EQ(::kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
        }
        process.waitForFinished();
        EXPECT_EQ(process.exitStatus(), QProcess::CrashExit) << "as shells expect it";
        line.mend();
        return QString::fromUtf8(process.readAllStandardError());
    };
    constexpr int kAmidTables = 15;
    EXPECT_TRUE(stopped({"copy-database", slow, file}, kAmidTables).contains("copy was stopped"));
    EXPECT_TRUE(fs::is_empty(folder() / "copy"));
    does({"copy-database", connection(), file});
    m_schema = m_server.newSchema();
    does({"server", "create", connection()});
    const QString empty = QString::fromStdString(DatabaseServer::connectionBy(line.folder(), m_schema));
    stopped({"copy-database", file, empty}, 2 * kAmidTables);
    does({"copy-database", file, connection()});
}

TEST_F(ServerCommandTest, WhatIsWrongWithTheSettingsIsSaidAndNoOtherDatabaseTaken) {
    const std::pair<std::string, const char*> cases[] = {
        {"[user]\nconnection = Driver=PostgreSQL Unicode;Server=/nowhere;Database=x;PWD=secret\n",
         "password"},
        {"[user]\nconnection = Driver=PostgreSQL Unicode;Server=/nowhere;Database=x\n", "cannot be reached"},
        {"[user]\nfile = UID=a;PWD=secret;Server=x\n", "password"},
        {"[user]\nconnetcion = x\n", "Line 2"},
        {"[user]\nfile = usr.dsdb\n", "does not exist"},
        {"[user]\nfile = standard.dsdb\n", "are kept in one database"},
        {"[user]\nfile = link.dsdb\n", "are kept in one database"},
        {"[usr]\nfile = user.dsdb\n", "\"usr\", which there is not"},
        {"connection = x\n", "Line 1"},
        {"[user]\nfile = user.dsdb\nport = 3\n", "Line 3"},
        {"[user]\nfile = user.dsdb\n[User]\nconnection = Server=x\n", "Line 4"},
    };
    fs::create_symlink(data() / "standard.dsdb", data() / "link.dsdb");
    for (const auto& [text, phrase] : cases) {
        settings(text);
        const ProgramRun list = run({"list", "--source", "user"});
        const QString said = list.complaints.join('\n');
        EXPECT_TRUE(said.contains(phrase)) << said.toStdString();
        EXPECT_FALSE((list.output + said).contains("secret"));
        EXPECT_EQ(list.output.contains("Heavy beam"), text.starts_with("[usr]")) << phrase;
    }
    settings(std::string(300, 'x') + std::string(300, '\n') + "x\n");
    EXPECT_EQ(run({"list"}).complaints.size(), 1) << "it is no file of settings at all";
    settings("");
    EXPECT_TRUE(
        run({"server", "check", "standard"}).complaints.join(' ').contains("no database on a server"));
    for (const char* where : {"Server=x;PWD=secret", "UID=a;PWD=secret;Server=x", "PWD=secret"})
        EXPECT_FALSE(run({"server", "status", where}).complaints.join(' ').contains("secret")) << where;
}
