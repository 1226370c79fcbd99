#pragma once

#include "base/Result.h"
#include "data/CellRules.h"
#include "records/WriteResult.h"

/// The reasons for which a row is not written, each with its sentence for the user.
namespace WriteRefusal {

WriteResult notOpen();
/// For a row that was deleted meanwhile, and for one that never was.
WriteResult noRow();
WriteResult noColumn();
/// `why` is the sentence of a source that could be edited otherwise, else empty.
WriteResult readOnly(const std::string& why = {});
/// `reading` is the failure that keeps the write from being judged.
WriteResult incomplete(Result<> reading);
/// The value must not stand in the column, for a reason other than `kNone`.
WriteResult unfit(const TableSchema& table, const Column& column, const CellValue& value, eCellFault fault);
/// `why` is the sentence about the table that has no keys left.
WriteResult full(std::string why);

} // namespace WriteRefusal
