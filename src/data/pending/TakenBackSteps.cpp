#include "data/pending/TakenBackSteps.h"

#include "data/CellRules.h"

#include <algorithm>

namespace {

using eAction = PendingStep::eAction;

/// What rows would hold had some steps been brought again.
class ComingRows {
public:
    explicit ComingRows(StyleDatabases& databases) : m_databases(databases) {}

    /// Whether the step can be brought again behind those before it.
    bool take(const PendingStep& step) {
        StyleSource* source = m_databases.source(step.source);
        if (!source)
            return false;
        const auto rows = findTable(step.table)->makeRows();
        std::shared_ptr<StructRecord>& row = rowOf(*source, {step.table, step.key});
        switch (step.action) {
        case eAction::kCell:
            if (!row || step.column->read(row.get()) != step.before ||
                !fits(*source, step, *step.column, step.after))
                return false;
            step.column->write(row.get(), step.after);
            return true;
        case eAction::kAppend:
            if (row || !fitsWhole(*source, step))
                return false;
            row = rows->copyOf(step.record.get());
            return true;
        default:
            if (!row || !rows->equal(*row, *step.record) || isUsedByOthers(*source, step))
                return false;
            row = nullptr;
            return true;
        }
    }

private:
    using Row = std::pair<SourceId, RowRef>;

    std::shared_ptr<StructRecord>& rowOf(StyleSource& source, RowRef row) {
        const auto [place, isNew] = m_rows.try_emplace({source.id(), row});
        const StructRecord* stored = isNew ? source.table(row.table).find(KorOdbcKey(row.key)) : nullptr;
        if (stored)
            place->second = findTable(row.table)->makeRows()->copyOf(stored);
        return place->second;
    }
    bool fits(StyleSource& source, const PendingStep& step, const Column& column, const CellValue& value) {
        if (column.isReference()) {
            const auto known = m_rows.find(
                {source.id(), {column.target, static_cast<std::int32_t>(std::get<std::int64_t>(value))}});
            if (known != m_rows.end())
                return known->second != nullptr;
        }
        return faultOf(source, *findTable(step.table), column, step.key, value) == eCellFault::kNone;
    }
    bool fitsWhole(StyleSource& source, const PendingStep& step) {
        return std::ranges::all_of(findTable(step.table)->columns, [&](const Column& column) {
            return fits(source, step, column, column.read(step.record.get()));
        });
    }
    bool isUsedByOthers(StyleSource& source, const PendingStep& step) {
        return std::ranges::any_of(source.referrersOf(step.table, KorOdbcKey(step.key)),
                                   [&](const Referrer& user) {
                                       return !m_rows.contains({source.id(), {user.table->type, user.key}});
                                   });
    }

    StyleDatabases& m_databases;
    std::map<Row, std::shared_ptr<StructRecord>> m_rows; ///< null where there is none
};

} // namespace

std::vector<PendingStep> stepsThatHold(StyleDatabases& databases, const std::vector<PendingStep>& steps) {
    ComingRows rows(databases);
    std::vector<PendingStep> holding;
    const auto isGroupOf = [](const PendingStep& first) {
        return [&first](const PendingStep& step) { return step.group == first.group; };
    };
    for (auto begin = steps.begin(); begin != steps.end();) {
        const auto end = std::find_if_not(begin, steps.end(), isGroupOf(*begin));
        if (!std::all_of(begin, end, [&](const PendingStep& step) { return rows.take(step); }))
            break;
        holding.insert(holding.end(), begin, end);
        begin = end;
    }
    return holding;
}
