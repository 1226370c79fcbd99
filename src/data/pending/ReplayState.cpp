#include "data/pending/ReplayState.h"

OutsideConflict& ReplayState::addConflict(OutsideConflict::eKind kind, RowRef row, const Column* column,
                                          std::shared_ptr<const StructRecord> record) {
    OutsideConflict& conflict = conflicts.emplace_back();
    conflict.kind = kind;
    conflict.table = findTable(row.table);
    conflict.key = row.key;
    conflict.column = column;
    conflict.record = std::move(record);
    if (const StructRecord* before = rowsBefore.stored(row))
        conflict.before = source.table(row.table).rows().copyOf(before);
    else if (const auto gone = deleted.find(row); gone != deleted.end())
        conflict.before = source.table(row.table).rows().copyOf(gone->second.get());
    return conflict;
}

KorString ReplayState::targetName(const Column& column, const CellValue& mine) const {
    return column.isReference()
               ? rowsBefore.nameOf({column.target, static_cast<std::int32_t>(std::get<std::int64_t>(mine))})
               : KorString();
}

bool ReplayState::isLost(RowRef target) const {
    return target.key > 0 && !appended.contains(target) && !odd.contains(target) && rowsBefore.isGone(target);
}

CellValue ReplayState::storedIn(RowRef row, const Column& column) const {
    const auto shown = storedCells.find({row, &column});
    return shown == storedCells.end() ? column.read(source.table(row.table).find(KorOdbcKey(row.key)))
                                      : shown->second;
}
