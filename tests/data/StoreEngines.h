#pragma once

#include "StoreTestSupport.h"
#include "data/store/odbc/OdbcStore.h"
#include "support/DatabaseServer.h"

/// A new database of one engine, as the suites that every store has to pass see it.
class StoreEngine {
public:
    virtual ~StoreEngine() = default;
    virtual void make(int views) = 0;
    /// Another connection to it.
    virtual std::unique_ptr<StyleStore> open(bool readOnly) = 0;
    /// All that would be different had something been written.
    virtual std::string stored() = 0;
    /// Runs SQL as another program does.
    virtual void run(const std::string& sql) = 0;
    /// What the engine calls a number of each kind.
    virtual bool hasTypes() const { return false; }

    static std::unique_ptr<StoreEngine> of(const std::string& name);
};

class FileEngine final : public StoreEngine {
public:
    void make(int views) override { makeDatabase(m_path, views); }
    std::unique_ptr<StyleStore> open(bool readOnly) override {
        using enum SqliteStore::eMode;
        OpenedStore opened = SqliteStore::open(m_path, readOnly ? kRead : kWrite);
        EXPECT_EQ(opened.error, "");
        return std::move(opened.store);
    }
    std::string stored() override { return std::to_string(m_folder.count()) + bytesOf(m_path); }
    void run(const std::string& sql) override { OtherProgram(m_path).run(sql); }

private:
    TempFolder m_folder;
    std::string m_path = m_folder.file("user.dsdb");
};

/// One behind an ODBC driver.
class OdbcEngine final : public StoreEngine {
public:
    explicit OdbcEngine(std::string connection, bool hasTypes)
        : m_address(ServerAddress::parse(connection, "a test")), m_hasTypes(hasTypes) {
        EXPECT_EQ(m_address.error, "");
    }

    const ServerAddress& address() const { return m_address.value; }
    void make(int views) override {
        OdbcDatabase database(address(), {});
        ASSERT_EQ(database.connect().error, "");
        ASSERT_EQ(OdbcSchema(database).create().error, "");
        const auto rows = someViews(views);
        std::vector<StoreConflict> conflicts;
        ASSERT_EQ(views == 0 ? "" : applyTo(*open(false), appending(rows), conflicts).error, "");
    }
    std::unique_ptr<StyleStore> open(bool readOnly) override {
        using enum OdbcStore::eMode;
        OpenedServer opened = OdbcStore::open(address(), readOnly ? kRead : kWrite);
        EXPECT_EQ(opened.error, "");
        return std::move(opened.store);
    }
    std::string stored() override {
        std::string all;
        for (const char* table : {"dsdb_state", "dsdb_change", "dsdb_commit", "view_request", "linetype"})
            for (const auto& row : query("SELECT * FROM %s" + std::string(table) + " ORDER BY 1, 2"))
                for (const auto& cell : row)
                    all += cell.value_or("null") + "\n";
        return all;
    }
    void run(const std::string& sql) override {
        OdbcDatabase database(address(), {});
        EXPECT_EQ(database.connect().error, "");
        if (m_hasTypes)
            static_cast<void>(database.execute("SET search_path = " + address().schema));
        for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 1) {
            end = sql.find(';', at);
            const std::string one = sql.substr(at, end - at);
            EXPECT_EQ(one.find_first_not_of(' ') == one.npos ? "" : database.execute(one).error, "") << one;
        }
    }
    bool hasTypes() const override { return m_hasTypes; }
    /// `%s` stands before names of tables.
    OdbcRows query(std::string sql) {
        OdbcDatabase database(address(), {});
        OdbcRows rows;
        EXPECT_EQ(database.connect().error, "");
        const std::string schema = m_hasTypes ? address().schema + "." : std::string();
        sql = KorString::format(KorString(sql), {schema}).toStdString();
        EXPECT_EQ(database.failure(database.connection.query(sql, rows)).error, "");
        return rows;
    }

private:
    Result<ServerAddress> m_address;
    bool m_hasTypes;
};

inline std::unique_ptr<StoreEngine> StoreEngine::of(const std::string& name) {
    if (name == "file")
        return std::make_unique<FileEngine>();
    if (name == "postgresql") {
        DatabaseServer& server = DatabaseServer::instance();
        return std::make_unique<OdbcEngine>(server.connection(server.newSchema()), true);
    }
    static const TempFolder folder;
    static int count = 0;
    const std::string file = folder.file("styles" + std::to_string(++count) + ".db");
    return std::make_unique<OdbcEngine>("Driver=SQLite3;Timeout=500;Database=" + file, false);
}

/// Base of suites for every store.
class EachStore : public testing::TestWithParam<const char*> {
protected:
    std::unique_ptr<StyleStore> open(bool readOnly = false) { return engine->open(readOnly); }
    std::unique_ptr<StyleStore> openNew(int views) {
        engine->make(views);
        return open();
    }

    std::unique_ptr<StoreEngine> engine = StoreEngine::of(GetParam());
};

#define FOR_EACH_STORE(Suite)                                                                                \
    INSTANTIATE_TEST_SUITE_P(Stores, Suite, testing::Values("file", "postgresql", "driver"),                 \
                             [](const auto& each) { return std::string(each.param); })
