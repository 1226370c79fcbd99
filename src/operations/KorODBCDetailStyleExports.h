#pragma once

#include "data/exchange/ExchangeReport.h"
#include "records/KorDSNDefinitions.h"
#include "records/KorOdbcKey.h"
#include "records/RowRef.h"

#include <map>

/// Detail styles on their way between databases.
class KorODBCDetailStyleExports {
public:
    /// Results of the operations, besides 1 for success.
    enum eResult : int {
        kDone = 1,
        kCancelled = 0,       ///< by the user; there is nothing to tell
        kNoSuchSource = -1,   ///< a database is not open
        kNoSuchRow = -2,      ///< the style does not exist
        kReadOnlyTarget = -3, ///< the target may not be edited
        kSameSource = -4,     ///< the style is in the target already
        kFileFailed = -5,     ///< the file could not be written or read
        kNotStored = -6,      ///< the target refused a row
    };

    /// Writes one row (`eType` is its table type, 0 for a detail style) with everything that it depends on
    /// into a new database file, which can be opened as a source. Pending changes are part of it. An existing
    /// file is replaced, or refused where `mayReplace` is false; on failure it stays as it is. References to
    /// rows that do not exist are left out and told in `leftOut`, one sentence each. Returns 1, or another of
    /// `eResult`.
    static int exportDetail(int eType, const KorOdbcKey& key, eDSN dsn, eIndex index, const KorString& path,
                            std::vector<std::string>* leftOut = nullptr, bool mayReplace = true);

    /// The same for several rows of a source, `name` being what they are called while progress is told.
    static int exportRows(SourceId from, const std::vector<RowRef>& rows, const KorString& name,
                          const KorString& path, std::vector<std::string>* leftOut = nullptr,
                          bool mayReplace = true);

    /// Copies one row with everything that it depends on from an open source into an editable one, as one
    /// group of pending changes. Rows that the target has with the same name and content are not copied
    /// again; rows of the same name and other content come in under a free name. Groups and categories are
    /// matched by name alone. Returns 1, or another of `eResult`; then nothing is changed. What was done is
    /// added to `report`. With `asName`, which must be free in the target, the row itself becomes a new one
    /// of that name, even where the target has the same already.
    static int importDetail(int eType, const KorOdbcKey& key, eDSN fromDSN, eIndex fromIndex, eDSN toDSN,
                            eIndex toIndex, ImportReport* report = nullptr, const KorString& asName = {});

    /// Rows on their way from one open source into another.
    struct CopyWish {
        SourceId from;
        SourceId to; ///< must be one that may be edited
        std::vector<RowRef> rows;
        KorString label; ///< of the step of undo
        eNamesakes namesakes = eNamesakes::kKeepBoth;
        std::map<RowRef, eNamesakes> single = {}; ///< of rows for which another one was chosen
        RowRef group = {};    ///< of the target, under which new rows are filed; none: where they were
        bool isTrial = false; ///< everything is done and reported, and then taken back without a trace
    };
    /// As `importDetail` for several rows, as one step. What became of each row stands in `report.rows`.
    static int copyRows(const CopyWish& wish, ImportReport& report);

    /// Opens an exchange file as the source `SourceId::exchange()`, in the place of one that is open. It is
    /// checked for damage and read whole before anything is taken from it. Returns 1, or another of
    /// `eResult`. `deleteCache` closes it.
    static int openFile(const KorString& path);
    /// What a step of undo that imports from the file is called.
    static KorString labelOfImport(const KorString& path);

    /// The source that an import goes into: the given one where it may be edited, else the User database.
    /// Returns 1, or 0 and leaves the pair untouched when neither may be edited.
    static int GetDSNAndIndexToUse(eDSN& dsn, eIndex& index);

    /// The sentence for the user that belongs to a result; empty for success and for what the user cancelled.
    /// For the last failed operation it names the file and the reason. Returns 1 when there is a text.
    static int GetErrorMessage(KorString& text, int code);

    /// Closes the exchange file that is open as a source, if any. `mode` is kept for callers and has no
    /// meaning.
    static void deleteCache(int mode);

    /// Whether an open database has a format from before version 5.1. Files of such a format are refused when
    /// they are opened, so none that is open has it.
    static bool isDatabaseOlderThan5_1(eDSN dsn);

    /// In advanced mode the message callback is told of each row that could not keep its name.
    static void EnableAdvancedDeepCopyMode(int on);
    static bool isAdvancedDeepCopyModeEnabled();

    /// Installs the functions that are told of progress and returns the previous ones.
    static ExchangeCallbacks setCallbacks(ExchangeCallbacks callbacks);
};
