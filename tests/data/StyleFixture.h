#pragma once

#include "base/EditorSession.h"
#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "data/check/ConsistencyCheck.h"
#include "data/store/ReadReport.h"
#include "data/store/SqliteStore.h"
#include "operations/KorOdbcMan.h"
#include "records/TableDeclarations.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

/// A Standard and a User database in a folder of their own, open in a fresh instance, with helpers that write
/// as the editor does.
class StyleFixture : public testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"standard.dsdb", "user.dsdb"})
            ASSERT_EQ(SqliteStore::create(file(name)).error, "");
        open(false);
        databases.setOwnerMode(true);
    }
    /// Opens both anew, so that only what is stored is seen.
    void open(bool standardReadOnly = true) {
        ASSERT_EQ(databases.openFile(kStandard, file("standard.dsdb"), standardReadOnly).error, "");
        ASSERT_EQ(databases.openFile(kUser, file("user.dsdb"), false).error, "");
    }
    std::string file(const std::string& name) const { return m_folder.file(name); }

    /// What is found in a source but for the gap in the fixture's list of views, and what its styles lack
    /// before they can be drawn with.
    static std::vector<Finding> faultsOf(StyleSource& source) {
        std::vector<Finding> findings = ConsistencyCheck(source).run();
        std::erase_if(findings, [](const Finding& finding) {
            return finding.sentence.find("not ready for drawings") != std::string::npos ||
                   finding.sentence.find("has a gap in its list") != std::string::npos;
        });
        return findings;
    }
    bool commit() {
        const StyleDatabases::CommitWalk walk(databases);
        bool all = true;
        for (int table = 0; table < kNumberOfTableTypes; ++table)
            all = KorOdbcMan::setStatusOnUpdate(static_cast<eTableType>(table), KorOdbcMan::kThisRow) == 1 &&
                  all;
        return all;
    }

    template <typename R>
    std::int32_t add(SourceId id, const KorString& name, R record = {}) {
        const KorDSNRequest request(id.dsn, id.index);
        record.name = name;
        EXPECT_EQ(databases.append(tableOf<R>, record), WriteResult::kWritten);
        return record.key;
    }
    template <typename R>
    const R* row(SourceId id, const KorString& name) {
        return static_cast<const R*>(databases.source(id)->table(tableOf<R>).find(name));
    }
    template <typename R>
    const R* row(SourceId id, std::int32_t key) {
        return static_cast<const R*>(databases.source(id)->table(tableOf<R>).find(KorOdbcKey(key)));
    }
    template <typename R>
    int count(SourceId id) {
        return databases.source(id)->table(tableOf<R>).rows().size();
    }
    int rowCount(SourceId id) {
        int rows = 0;
        for (const TableSchema& table : allTables())
            rows += databases.source(id)->table(table.type).rows().size();
        return rows;
    }
    /// All rows of a source, in words.
    static std::string contentOf(StyleSource& source) {
        std::string all;
        for (const TableSchema& table : allTables())
            for (int i = 0; i < source.table(table.type).rows().size(); ++i) {
                const StructRecord& record = source.table(table.type).rows().at(i);
                all += table.name + std::to_string(record.key);
                for (const Column& column : table.columns)
                    all += " " + displayText(column.read(&record));
                all += "\n";
            }
        return all;
    }
    std::string contentOf(SourceId id) { return contentOf(*databases.source(id)); }
    WriteResult set(SourceId id, eTableType table, std::int32_t key, int column, const CellValue& value) {
        const KorDSNRequest request(id.dsn, id.index);
        return databases.setCell(table, KorOdbcKey(key), column, value);
    }

    /// A style with two views in slots 1 and 3, which share a representation map of two entries, filed under
    /// the category "Columns", and known to the host by (7, `number`). What names `name` does not occur in is
    /// shared by the styles of a source.
    std::int32_t addStyle(SourceId id, const KorString& name, std::int32_t number) {
        if (!row<StructDetObjReprMap>(id, "Steel"))
            addSharedRows(id);
        StructDetailStyle style;
        style.viewRequests[0] = addView(id, name + KorString(" front"));
        style.viewRequests[2] = addView(id, name + KorString(" top"));
        style.titleFormat = "{name}";
        const std::int32_t key = add(id, name, style);
        StructDetailMaster master;
        master.detailKey = 7;
        master.number = number;
        master.styleKey = key;
        master.categoryKey = row<StructDetBaseCategory>(id, "Columns")->key;
        add(id, name, master);
        return key;
    }

    static constexpr SourceId kStandard = SourceId::standard();
    static constexpr SourceId kUser = SourceId::user();
    EditorSession m_session;
    TempFolder m_folder;
    StyleDatabases databases;

private:
    void addSharedRows(SourceId id) {
        add<StructTextSize>(id, "3.5", StructTextSize{{}, 3.5});
        add<StructNumericDefault>(id, "C01_DistanceUnit", StructNumericDefault{{}, 1.0});
        const auto picture = add<StructBitmap>(id, "column", StructBitmap{{}, 201});
        StructBitmapIndex strip;
        strip.bitmapKey = picture;
        add(id, "column", strip);
        StructDetBaseCategory category;
        category.bitmapKey = picture;
        add(id, "Columns", category);
        StructDetObjQualifierSet set;
        set.groupKey = add<StructDetObjQualifierSetGroup>(id, "Profiles");
        StructDetObjQualifierWithRole member;
        member.qualifierSetKey = add(id, "Beams", set);
        member.qualifierKey = add<StructDetObjQualifier>(id, "Section is I");
        add(id, "Section is I", member);
        StructDetObjReprMapKey entry;
        entry.reprMapKey = add<StructDetObjReprMap>(id, "Steel");
        entry.qualifierSetKey = member.qualifierSetKey;
        entry.appearanceKey = add<StructDetObjAppearance>(id, "Solid");
        entry.order = 1;
        add(id, "Beams", entry);
        entry.order = 2;
        entry.qualifierSetKey = add(id, "Others", set);
        entry.appearanceKey = add<StructDetObjAppearance>(id, "Dashed");
        add(id, "Rest", entry);
    }

    std::int32_t addView(SourceId id, const KorString& name) {
        StructDetViewRequest view;
        view.reprMapKey = row<StructDetObjReprMap>(id, "Steel")->key;
        view.scale = 0.1;
        const std::int32_t key = add(id, name, view);
        StructDetViewRequestCategory filing;
        filing.viewRequestKey = key;
        filing.categoryKey = row<StructDetBaseCategory>(id, "Columns")->key;
        add(id, name, filing);
        return key;
    }
};
