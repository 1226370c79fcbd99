#include "SampleSession.h"

#include "data/RowClosure.h"
#include "data/StyleDatabases.h"
#include "operations/KorOdbcGUI.h"
#include "services/KorHostReport.h"
#include "session/KorDSMValueText.h"
#include "support/OtherProgram.h"

namespace {

const SourceId kUser = SourceId::user();

// Which question comes before a write, and that a declined one writes nothing.
class GuardedWrite : public SampleSession {
protected:
    GuardedWrite() {
        databases.setCurrentSource(kUser);
        KorDSMGuardedWrite::addAskFunction(this, [this](eTableType table, const KorOdbcKey& key) {
            asked.push_back({table, key});
            return answer;
        });
        answer = KorDSMGuardedWrite::kDecline;
    }
    /// A part of the kind whose whole has users enough, or none.
    Referrer sharedPart(eTableType whole) {
        const RowArray& rows = databases.here()->table(whole).rows();
        for (int i = 0; i < rows.size(); ++i)
            if (databases.ownerCount(whole, KorOdbcKey(rows.at(i).key)) > 1)
                if (const auto parts = partsOf(*databases.here(), {whole, rows.at(i).key}); !parts.empty())
                    return parts.front();
        return {};
    }
    CellValue cell(eTableType table, std::int32_t key, int column) {
        return findTable(table)->column(column)->read(databases.here()->table(table).find(KorOdbcKey(key)));
    }
    std::vector<RowRef> asked;
};

} // namespace

TEST_F(GuardedWrite, OfAPartAsksForItsWhole) {
    const struct {
        eTableType whole;
        int column; // of the part
        CellValue value;
    } cases[] = {
        {kTableReprMap, 3, std::int64_t{77}},
        {kTableViewDimStrategy, 3, std::int64_t{77}},
        {kTableQualifierSet, 6, std::int64_t{1}},
    };
    for (const auto& each : cases) {
        const Referrer part = sharedPart(each.whole);
        ASSERT_NE(part.table, nullptr) << findTable(each.whole)->name;
        const eTableType table = part.table->type;
        const RowRef whole{each.whole,
                           part.column->integerIn(databases.here()->table(table).find(KorOdbcKey(part.key)))};
        const CellValue before = cell(table, part.key, each.column);
        const CellValue other = before == each.value ? CellValue(std::int64_t{0}) : each.value;
        const auto write = [&] {
            return KorDSMGuardedWrite::setAttributeValue(table, KorOdbcKey(part.key), each.column, other);
        };
        asked.clear();
        answer = KorDSMGuardedWrite::kDecline;
        EXPECT_EQ(write(), WriteResult::kDeclined);
        EXPECT_EQ(asked, std::vector{whole}) << "once, for the whole";
        EXPECT_EQ(cell(table, part.key, each.column), before);
        answer = KorDSMGuardedWrite::kWrite;
        EXPECT_EQ(write(), WriteResult::kWritten);
        EXPECT_EQ(cell(table, part.key, each.column), other);
        structure.setShowWarning(false);
        asked.clear();
        databases.undo();
        EXPECT_EQ(write(), WriteResult::kWritten);
        EXPECT_TRUE(asked.empty());
        structure.setShowWarning(true);
    }
}

TEST_F(GuardedWrite, TheLimitsOfEachColumnCanBeTypedAndWrittenAndNothingBeyond) {
    answer = KorDSMGuardedWrite::kWrite;
    int limits = 0;
    for (const TableSchema& table : allTables())
        for (const Column& column : table.columns) {
            const RowArray& rows = databases.here()->table(table.type).rows();
            if (column.isReference() || column.isText() || column.maximum > 1e9 || rows.size() == 0)
                continue;
            SCOPED_TRACE(table.name + "." + column.name);
            for (const double limit : {column.minimum, column.maximum}) {
                const CellValue value =
                    column.isInteger() ? CellValue(static_cast<std::int64_t>(limit)) : CellValue(limit);
                const KorString typed = KorDSMValueText::toText(table, column, value);
                const auto parsed = KorDSMValueText::parse(table, column, typed);
                ASSERT_TRUE(parsed) << typed.c_str();
                EXPECT_EQ(parsed.value, value);
                EXPECT_TRUE(databases.setCell(table.type, KorOdbcKey(rows.at(0).key), column.number, value)
                                .isStored());
                ++limits;
            }
            EXPECT_FALSE(column.isInRange(column.maximum + 1));
            EXPECT_EQ(databases.setCell(table.type, KorOdbcKey(rows.at(0).key), column.number,
                                        static_cast<std::int64_t>(column.maximum) + 1),
                      WriteResult::kFailed);
        }
    EXPECT_GT(limits, 40);
}

TEST_F(GuardedWrite, OfAnAppearanceAsksWhereSeveralEntriesUseIt) {
    const RowArray& rows = databases.here()->table(kTableAppearance).rows();
    int shared = 0;
    for (int i = 0; i < rows.size(); ++i) {
        const RowRef row{kTableAppearance, rows.at(i).key};
        const bool several = databases.ownerCount(row.table, KorOdbcKey(row.key)) > 1;
        shared += several;
        asked.clear();
        const CellValue before = cell(row.table, row.key, 10);
        const WriteResult result =
            KorDSMGuardedWrite::setAttributeValue(row.table, KorOdbcKey(row.key), 10, 0.77);
        EXPECT_EQ(cell(row.table, row.key, 10), several ? before : CellValue(0.77));
        EXPECT_EQ(result.kind, several ? WriteResult::kDeclined : WriteResult::kWritten);
        EXPECT_EQ(asked.size(), several ? 1u : 0u);
    }
    EXPECT_GT(shared, 0);
}

TEST_F(GuardedWrite, AsksTheOneAddedLastOfThoseThatAreStillThere) {
    const Referrer part = sharedPart(kTableReprMap);
    ASSERT_NE(part.table, nullptr);
    const KorOdbcKey map(
        part.column->integerIn(databases.here()->table(part.table->type).find(KorOdbcKey(part.key))));
    const auto write = [&] { return KorDSMGuardedWrite::setAttributeInt(kTableReprMap, map, 3, 1); };
    const auto answering = [](int given) { return [given](eTableType, const KorOdbcKey&) { return given; }; };
    KorDSMGuardedWrite::removeAskFunction(this);
    EXPECT_EQ(write(), KorDSMGuardedWrite::kDecline) << "nobody to ask";
    const char owners[3] = {};
    for (int i = 0; i < 3; ++i)
        KorDSMGuardedWrite::addAskFunction(&owners[i], answering(10 + i));
    EXPECT_EQ(write(), 12);
    KorDSMGuardedWrite::removeAskFunction(&owners[1]);
    EXPECT_EQ(write(), 12) << "another one went";
    KorDSMGuardedWrite::addAskFunction(&owners[0], answering(20));
    EXPECT_EQ(write(), 20) << "its owner's turn came again";
    KorDSMGuardedWrite::removeAskFunction(this);
    EXPECT_EQ(write(), 20) << "who went had none";
    KorDSMGuardedWrite::removeAskFunction(&owners[0]);
    EXPECT_EQ(write(), 12) << "an owner has one function";
    // Who is asked may go while it answers, as an editor that is closed by the host.
    KorDSMGuardedWrite::addAskFunction(&owners[2], [&](eTableType, const KorOdbcKey&) {
        KorDSMGuardedWrite::removeAskFunction(&owners[2]);
        return asked.empty() ? 30 : 0;
    });
    EXPECT_EQ(write(), 30);
    EXPECT_EQ(write(), KorDSMGuardedWrite::kDecline);
    EXPECT_TRUE(databases.pending().isEmpty());
}

TEST_F(GuardedWrite, TheFourWriteFunctionsAskOnlyForRecordsThatCanBeShared) {
    const Referrer part = sharedPart(kTableReprMap);
    ASSERT_NE(part.table, nullptr);
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeInt(part.table->type, KorOdbcKey(part.key), 3, 77),
              KorDSMGuardedWrite::kWrite);
    EXPECT_TRUE(asked.empty());
    const std::int32_t map =
        part.column->integerIn(databases.here()->table(part.table->type).find(KorOdbcKey(part.key)));
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeInt(kTableReprMap, KorOdbcKey(map), 3, 1),
              KorDSMGuardedWrite::kDecline);
    EXPECT_EQ(asked, (std::vector{RowRef{kTableReprMap, map}}));
}

TEST_F(GuardedWrite, TellsWhyAWriteFailed) {
    const KorOdbcKey key(databases.here()->table(kTableQualifierSet).rows().at(0).key);
    const KorOdbcKey gone(4711);
    structure.setShowWarning(false);
    KorHostReport::take();
    const auto failed = KorDSMGuardedWrite::setAttributeValue(kTableQualifierSet, key, 1, KorString(" "));
    EXPECT_EQ(failed, WriteResult::kFailed);
    EXPECT_EQ(failed.error, "The name must not be empty.");
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeString(kTableQualifierSet, gone, 1, "Any", 0), 0);
    const std::vector<KorString> told = KorHostReport::take();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0], KorString(failed.error));
    EXPECT_TRUE(databases.pending().isEmpty());
    const KorString name = databases.here()->table(kTableQualifierSet).find(key)->name;
    EXPECT_EQ(KorDSMGuardedWrite::setAttributeValue(kTableQualifierSet, key, 1, name),
              WriteResult::kUnchanged);
    EXPECT_TRUE(KorHostReport::take().empty());
    structure.setShowWarning(true);
}

TEST_F(GuardedWrite, WhatCannotBeReadIsMendedAfterAQuestionAndHindersOtherWrites) {
    const RowArray& rows = databases.here()->table(kTableViewRequest).rows();
    const std::int32_t damaged = rows.at(0).key;
    const std::int32_t sound = rows.at(1).key;
    OtherProgram(file("user.dsdb"))
        .run(("UPDATE view_request SET scale = 'x' WHERE key = " + std::to_string(damaged)).c_str());
    ASSERT_EQ(databases.openFile(kUser, file("user.dsdb"), false).error, "");
    const auto write = [](std::int32_t key) {
        return KorDSMGuardedWrite::setAttributeValue(kTableViewRequest, KorOdbcKey(key), 10, 0.5);
    };
    ASSERT_FALSE(databases.here()->complete());
    KorHostReport::take();
    EXPECT_TRUE(write(sound).isFailed());
    EXPECT_EQ(KorHostReport::take().size(), 1U);
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(write(damaged), WriteResult::kDeclined);
    EXPECT_EQ(asked, (std::vector{RowRef{kTableViewRequest, damaged}}));
    answer = KorDSMGuardedWrite::kWrite;
    EXPECT_EQ(write(damaged), WriteResult::kWritten);
    EXPECT_FALSE(databases.here()->complete()) << "it is not stored yet";
    {
        const StyleDatabases::CommitWalk walk(databases);
        for (const TableSchema& table : allTables())
            EXPECT_EQ(databases.keepTable(table.type), 1);
    }
    EXPECT_EQ(databases.here()->complete().error, "");
    EXPECT_FALSE(write(sound).isFailed());
}
