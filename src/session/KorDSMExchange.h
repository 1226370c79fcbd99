#pragma once

#include "data/exchange/ExchangeReport.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"
#include "records/WriteResult.h"

#include <optional>
#include <string>
#include <vector>

/// Detail styles out of a source into a file, and from files into a source. One that the user
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
/// Writes rows of a source with all that they depend on into a new file. An existing one is replaced, or
/// refused where `mayReplace` is false.
ExportResult exportRows(SourceId source, const std::vector<RowRef>& rows, const KorString& file,
                        bool mayReplace);
/// The styles that are exported for these items: styles, and all that are filed in categories; each once.
std::vector<RowRef> stylesOf(const std::vector<KorDSMDatabaseItem*>& items);
/// A name for the file of these items: that of a single one, as far as file names can have it.
KorString proposedFile(const std::vector<KorDSMDatabaseItem*>& items);
/// A text as the name of a file, without what file systems do not take.
KorString fileNameOf(const KorString& text);

/// The source that an import goes into: the current one where it may be edited, else the User database;
/// none where that may not be edited either.
std::optional<SourceId> importTarget();
/// How many styles came in, and how many were there already, in words.
KorString summaryOf(const ImportReport& report);

} // namespace KorDSMExchange
