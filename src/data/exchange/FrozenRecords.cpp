#include "data/exchange/FrozenRecords.h"

#include "base/Translation.h"
#include "data/RowClosure.h"
#include "data/pending/RecoveryText.h"
#include "data/store/DatabaseName.h"
#include "data/text/TableRows.h"

#include <algorithm>

namespace {

constexpr const char* kRows = "rows";
constexpr const char* kUsed = "used";

// The same file has the same name, however it was opened.
std::string originOf(StyleSource& source) {
    return databasePlace(source.store().name());
}

std::string linesOf(StyleSource& source, const char* label, const std::vector<RowRef>& rows) {
    std::string lines = RecoveryText::begin(label);
    for (const RowRef& row : rows) {
        const StyleTable& table = source.table(row.table);
        PendingStep step;
        step.action = PendingStep::eAction::kAppend;
        step.table = row.table;
        step.key = row.key;
        step.record = table.rows().copyOf(table.find(KorOdbcKey(row.key)));
        lines += RecoveryText::step(1, step);
    }
    return lines + RecoveryText::end();
}

// What the rows use, without the wholes of parts.
std::vector<RowRef> usedBy(StyleSource& source, const std::vector<RowRef>& rows) {
    std::vector<RowRef> used;
    for (const RowRef& row : rows) {
        const TableSchema& table = *findTable(row.table);
        if (!belongsToOthers(table))
            used.push_back(row);
        const StructRecord* record = source.table(row.table).find(KorOdbcKey(row.key));
        for (const Column& column : table.columns)
            if (column.isReference() && column.role != eReferenceRole::kPartOf)
                used.push_back({column.target, column.integerIn(record)});
    }
    return closureOf(source, used);
}

/// Rows in memory, to be read as a source is.
class FrozenStore final : public StyleStore {
public:
    explicit FrozenStore(std::string name) : m_name(std::move(name)) {}

    TableRows rows;

    const std::string& name() const override { return m_name; }
    bool isReadOnly() const override { return true; }
    std::string whyReadOnly() const override {
        return translated("Copied rows stay as they are.").toStdString();
    }
    Result<> readTable(const TableSchema& table, RowArray& into, std::vector<ReadProblem>&) override {
        const RowArray& from = rows.of(table.type);
        for (int i = 0; i < from.size(); ++i)
            into.insert(from.at(i));
        return {};
    }
    Result<> beginRead(std::int64_t& state) override {
        state = 0;
        return {};
    }
    void endRead() override {}
    std::vector<std::string> integrityFindings() override { return {}; }
    Result<> begin() override { return readOnly(); }
    Result<> apply(const TableChange&, std::vector<StoreConflict>&) override { return readOnly(); }
    std::uint32_t markOfChange() override { return 0; }
    bool holdsMark(std::uint32_t) override { return false; }
    Result<> commit() override { return readOnly(); }
    void rollback() override {}
    bool changedOutside() override { return false; }
    Result<> reopen() override { return {}; }
    void acknowledge() override {}

private:
    static Result<> readOnly() { return Result<>::failure(translated("What was copied cannot be changed.")); }

    std::string m_name;
};

} // namespace

Result<std::string> FrozenRecords::textOf(StyleSource& source, const std::vector<RowRef>& rows) {
    if (Result<> whole = source.complete(); !whole)
        return whole;
    RecoveryText::Seal seal = RecoveryText::kNoSeal;
    return RecoveryText::sealed(RecoveryText::head() + RecoveryText::source({1, {}, originOf(source)}) +
                                    linesOf(source, kRows, rows) +
                                    linesOf(source, kUsed, usedBy(source, rows)),
                                seal);
}

std::unique_ptr<FrozenRecords> FrozenRecords::read(std::string_view text) {
    std::unique_ptr<FrozenRecords> frozen(new FrozenRecords);
    const RecoveryText::Parsed parsed = RecoveryText::parse(text, [&](const RecoverySource& source) {
        frozen->m_origin = source.path;
        return SourceId::exchange();
    });
    if (!parsed.changes || parsed.size != text.size())
        return nullptr;
    auto store = std::make_unique<FrozenStore>(frozen->m_origin);
    for (const auto& [label, steps] : parsed.changes->commands())
        for (const PendingStep& step : steps) {
            if (step.action != PendingStep::eAction::kAppend)
                return nullptr;
            if (label == KorString(kRows)) {
                frozen->m_table = step.table;
                frozen->m_rows.push_back(step.record);
            } else if (RowArray& rows = store->rows.of(step.table); !rows.find(step.key)) {
                rows.insert(*step.record);
            }
        }
    if (frozen->m_rows.empty())
        return nullptr;
    frozen->m_used = std::make_unique<StyleSource>(SourceId::exchange(), std::move(store));
    return frozen;
}

bool FrozenRecords::cameFrom(StyleSource& source) const {
    return m_origin == originOf(source);
}
