#pragma once

#include "data/exchange/ExchangeReport.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"
#include "records/WriteResult.h"

#include <optional>
#include <string>
#include <vector>

/// Detail styles out of the current source into a file, and from files into a source. One that the user
/// cancelled is declined.
namespace KorDSMExchange {

/// Extension of the files, without the dot.
KorString fileExtension();

/// Installs the functions that are told of progress, and returns those before.
ExchangeCallbacks tell(ExchangeCallbacks callbacks);
/// Ends the exchange that is under way; what it did so far is taken back.
void cancel();

struct ExportResult : WriteResult {
    std::vector<std::string> leftOut = {}; ///< references to rows that do not exist, one sentence each
};
/// Writes a style of the current source with all that it depends on into a new file. An existing one is
/// replaced, or refused where `mayReplace` is false.
ExportResult exportStyle(const KorDSMDatabaseItem& style, const KorString& file, bool mayReplace);
/// The same for a row of any table and source.
ExportResult exportRow(SourceId source, RowRef row, const KorString& file, bool mayReplace);

/// The source that an import goes into: the current one where it may be edited, else the User database;
/// none where that may not be edited either.
std::optional<SourceId> importTarget();
struct ImportResult : WriteResult {
    ImportReport report = {};
};
/// Imports all styles of a file as pending changes. The callbacks hear of each row that could not keep its
/// name.
ImportResult importFile(const KorString& file, SourceId to);
/// How many styles came in, and how many were there already, in words.
KorString summaryOf(const ImportReport& report);

} // namespace KorDSMExchange
