#pragma once

#include "data/StyleDatabases.h"
#include "data/check/ConsistencyCheck.h"
#include "data/exchange/MasterNumbers.h"
#include "data/store/SqliteStore.h"
#include "records/TableDeclarations.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>

/// What the editor's commands write, each as one step of undo, on databases of its own or on those of a test.
class EditingProgram {
public:
    explicit EditingProgram(StyleDatabases& databases) : m_databases(databases) {}
    /// Another program at work on a database.
    explicit EditingProgram(std::unique_ptr<StyleStore> store)
        : m_own(std::make_unique<StyleDatabases>()), m_databases(*m_own) {
        m_databases.addSource(SourceId::user(), std::move(store));
        m_databases.setCurrentSource(SourceId::user());
    }
    explicit EditingProgram(const std::string& file)
        : EditingProgram(SqliteStore::open(file, SqliteStore::eMode::kWrite).store) {}

    StyleDatabases& databases() { return m_databases; }
    StyleTable& table(eTableType type) { return m_databases.here()->table(type); }
    std::int32_t keyOf(eTableType type, const KorString& name) {
        const StructRecord* row = table(type).find(name);
        return row ? row->key : 0;
    }
    /// The master of a style, or null.
    const StructDetailMaster* masterOf(std::int32_t style) {
        for (const Referrer& referrer : m_databases.here()->referrersOf(kTableDetailStyle, style))
            return static_cast<const StructDetailMaster*>(
                table(kTableDetailMaster).find(KorOdbcKey(referrer.key)));
        return nullptr;
    }

    void addStyle(const KorString& name, const KorString& category) {
        const Group group(*this);
        StructDetailStyle style;
        style.name = name;
        EXPECT_EQ(m_databases.append(kTableDetailStyle, style), WriteResult::kWritten);
        addMaster(name, style.key, keyOf(kTableBaseCategory, category));
    }
    void copyStyle(const KorString& from, const KorString& name) {
        const Group group(*this);
        const std::int32_t key = keyOf(kTableDetailStyle, from);
        const std::int32_t copy = append(kTableDetailStyle, key, name);
        addMaster(name, copy, masterOf(key)->categoryKey);
    }
    template <typename R>
    void copyRow(const KorString& from, const KorString& name) {
        append(tableOf<R>, keyOf(tableOf<R>, from), name);
    }
    void removeStyle(const KorString& name) {
        const Group group(*this);
        const std::int32_t key = keyOf(kTableDetailStyle, name);
        const std::int32_t master = masterOf(key)->key;
        EXPECT_EQ(m_databases.remove(kTableDetailStyle, KorOdbcKey(key)), WriteResult::kWritten);
        EXPECT_EQ(m_databases.remove(kTableDetailMaster, KorOdbcKey(master)), WriteResult::kWritten);
    }
    template <typename R>
    void removeRow(const KorString& name) {
        EXPECT_EQ(m_databases.remove(tableOf<R>, KorOdbcKey(keyOf(tableOf<R>, name))), WriteResult::kWritten);
    }
    void rename(const KorString& name, const KorString& to) {
        const Group group(*this);
        const std::int32_t key = keyOf(kTableDetailStyle, name);
        write(kTableDetailStyle, key, 1, to);
        write(kTableDetailMaster, masterOf(key)->key, 1, to);
    }
    void refile(const KorString& style, const KorString& category) {
        write(kTableDetailMaster, masterOf(keyOf(kTableDetailStyle, style))->key, 5,
              std::int64_t{keyOf(kTableBaseCategory, category)});
    }
    template <typename R>
    void set(const KorString& name, int column, const CellValue& value) {
        write(tableOf<R>, keyOf(tableOf<R>, name), column, value);
    }
    /// These views and no other ones.
    void setViews(const KorString& style, const std::vector<std::string>& names) {
        const Group group(*this);
        const std::int32_t key = keyOf(kTableDetailStyle, style);
        for (std::size_t slot = 0; slot < StructDetailStyle::kViewSlots; ++slot)
            write(kTableDetailStyle, key, 12 + static_cast<int>(slot),
                  std::int64_t{slot < names.size() ? keyOf(kTableViewRequest, names[slot]) : 0});
    }
    bool commit() {
        const StyleDatabases::CommitWalk walk(m_databases);
        bool all = true;
        for (int type = 0; type < kNumberOfTableTypes; ++type)
            all = m_databases.keepTable(static_cast<eTableType>(type)) == 1 && all;
        return all;
    }

    /// What a check finds wrong in the current source, without what is only unused.
    static std::multiset<std::string> oddities(StyleDatabases& databases) {
        std::multiset<std::string> found;
        for (const Finding& finding : ConsistencyCheck(*databases.here()).run())
            if (finding.severity != eSeverity::kNote)
                found.insert(finding.sentence);
        return found;
    }
    static int stylesWithoutOneMaster(StyleDatabases& databases) {
        StyleSource& source = *databases.here();
        const RowArray& styles = source.table(kTableDetailStyle).rows();
        int count = 0;
        for (int i = 0; i < styles.size(); ++i)
            count += source.referrersOf(kTableDetailStyle, styles.at(i).key).size() != 1;
        return count + (source.table(kTableDetailMaster).rows().size() != styles.size());
    }

private:
    class Group {
    public:
        explicit Group(EditingProgram& program) : m_log(program.m_databases.pending()) {
            m_log.beginGroup("command");
        }
        ~Group() { m_log.endGroup(); }
        Group(const Group&) = delete;
        Group& operator=(const Group&) = delete;

    private:
        PendingLog& m_log;
    };

    void write(eTableType type, std::int32_t key, int column, const CellValue& value) {
        EXPECT_TRUE(m_databases.setCell(type, KorOdbcKey(key), column, value).isStored())
            << findTable(type)->name << " " << key << " " << column;
    }
    std::int32_t append(eTableType type, std::int32_t from, const KorString& name) {
        const auto copy = table(type).rows().copyOf(table(type).find(KorOdbcKey(from)));
        copy->name = name;
        EXPECT_EQ(m_databases.append(type, *copy), WriteResult::kWritten);
        return copy->key;
    }
    void addMaster(const KorString& name, std::int32_t style, std::int32_t category) {
        StructDetailMaster master;
        master.name = name;
        master.detailKey = 7;
        master.number = 1;
        master.number = MasterNumbers(*m_databases.here()).take(master);
        master.styleKey = style;
        master.categoryKey = category;
        EXPECT_EQ(m_databases.append(kTableDetailMaster, master), WriteResult::kWritten);
    }

    std::unique_ptr<StyleDatabases> m_own;
    StyleDatabases& m_databases;
};
