#pragma once

#include "base/EditorSession.h"
#include "data/ScopedSource.h"
#include "data/text/SampleData.h"
#include "drawing/SampleParts.h"
#include "drawing/StyleDrawing.h"
#include "drawing/SuitingPart.h"
#include "records/TableDeclarations.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

inline std::filesystem::path partsFolder() {
    return std::filesystem::path(SOURCE_DIR) / "resources/parts";
}

/// The sample databases, open, in a folder of their own. What a test changes stays pending.
class DrawingTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_folder = new TempFolder;
        ASSERT_EQ(buildSampleData(SOURCE_DIR "/resources", s_folder->path().string()).error, "");
    }
    static void TearDownTestSuite() { delete s_folder; }
    void SetUp() override {
        databases.setOwnerMode(true);
        open(SourceId::standard(), "standard.dsdb");
        open(SourceId::user(), "user.dsdb");
        open(SourceId::addIn(0), "addins/bracing-stairs-metric/styles.dsdb");
        open(SourceId::addIn(1), "addins/fabrication-imperial/styles.dsdb");
    }

    template <typename R>
    const R& row(const KorString& name, SourceId id = SourceId::standard()) {
        const auto* found = static_cast<const R*>(databases.source(id)->table(tableOf<R>).find(name));
        if (!found)
            throw std::runtime_error("no such row: " + name.toStdString());
        return *found;
    }
    template <typename R>
    std::int32_t add(R record, const KorString& name, SourceId id = SourceId::standard()) {
        const ScopedSource current(id);
        record.key = 0;
        record.name = name;
        EXPECT_EQ(databases.append(tableOf<R>, record), WriteResult::kWritten);
        return record.key;
    }
    bool set(eTableType table, std::int32_t key, const char* column, const CellValue& value,
             SourceId id = SourceId::standard()) {
        const ScopedSource current(id);
        return databases.setCell(table, KorOdbcKey(key), findTable(table)->column(column)->number, value) ==
               WriteResult::kWritten;
    }
    static SamplePart part(const std::string& name) {
        const Result<SamplePart> part = SampleParts::read(partsFolder(), name);
        EXPECT_EQ(part.error, "");
        return part.value;
    }
    // The name of the part that suits a style.
    std::string suiting(std::int32_t style, SourceId id = SourceId::standard()) {
        std::vector<OfferedPart> offered;
        for (const auto& [name, part] : allParts())
            offered.push_back({name, &part});
        return suitingPart(*databases.source(id), style, offered);
    }
    static const std::map<std::string, SamplePart>& allParts() {
        static const std::map<std::string, SamplePart> all = [] {
            std::map<std::string, SamplePart> parts;
            for (const std::string& name : SampleParts::names(partsFolder()))
                parts[name] = part(name);
            return parts;
        }();
        return all;
    }
    static std::filesystem::path supportFolder() { return s_folder->path() / "Shared/Support"; }
    // All rows that a row leads to: what it uses, and its parts.
    static void reach(StyleSource& source, const RowRef& from, std::set<RowRef>& reached) {
        const StructRecord* record = source.table(from.table).find(KorOdbcKey(from.key));
        if (!record || !reached.insert(from).second)
            return;
        for (const Column& column : findTable(from.table)->columns)
            if (column.isReference() && column.role == eReferenceRole::kUses)
                reach(source, {column.target, column.integerIn(record)}, reached);
        for (const Referrer& referrer : source.referrersOf(from.table, KorOdbcKey(from.key)))
            if (referrer.column->role == eReferenceRole::kPartOf)
                reach(source, {referrer.table->type, referrer.key}, reached);
    }
    Drawing draw(std::int32_t style, const SamplePart& part, SourceId id = SourceId::standard(),
                 std::int32_t view = 0) {
        return drawStyle(*databases.source(id), part, {style, view, supportFolder()});
    }
    Drawing draw(const KorString& style, const std::string& part) {
        return draw(row<StructDetailStyle>(style).key, DrawingTest::part(part));
    }

    EditorSession m_session;
    StyleDatabases databases;

private:
    void open(SourceId id, const char* file) {
        ASSERT_EQ(databases.openFile(id, s_folder->file(file), false).error, "");
    }
    static inline TempFolder* s_folder = nullptr;
};
