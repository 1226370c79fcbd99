#pragma once

#include "base/KorString.h"
#include "records/TableTypes.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// How an export, import or deep copy tells of its progress, and hears that it is to end. Any of the
/// functions may be empty.
struct ExchangeCallbacks {
    std::function<void(int steps, const KorString& name)>
        start;                          ///< what is being exchanged, in how many steps
    std::function<void(int done)> step; ///< so many steps are done
    std::function<void()> end;
    std::function<void(const KorString& text)> message; ///< something that the user should know
    std::function<bool()> isCancelled;                  ///< asked after each step
};

/// What is done with a row whose name the target has for a row of other content.
enum class eNamesakes : std::uint8_t {
    kKeepBoth,  ///< the row comes in under a free name
    kUseTheirs, ///< the target's row takes its place
    kReplace,   ///< the target's row gets the row's content and parts
};

/// What an import brought.
struct ImportReport {
    /// What became of one row that is no part of another.
    struct Row {
        enum class eFate : std::uint8_t { kNew, kEqual, kKeptBoth, kUsedTheirs, kReplaced };

        eTableType table = kNoTable;
        KorString name; ///< in the source that it came from
        eFate fate = eFate::kNew;
        std::int32_t key = 0; ///< in that source

        /// Whether the target has a row of its name and other content.
        bool hasNamesake() const { return fate != eFate::kNew && fate != eFate::kEqual; }
    };

    /// A row that could not keep its name, because the target has another row of that name.
    struct Renamed {
        eTableType table = kNoTable;
        KorString from;
        KorString to;
    };

    std::vector<KorString> imported;     ///< detail styles, by the names that they have in the target
    std::vector<KorString> alreadyThere; ///< detail styles that the target has with the same content
    std::vector<Renamed> renamed;
    int rowsAppended = 0;
    std::vector<Row> rows;             ///< each once, those that others use before them
    std::vector<std::string> problems; ///< values that are taken although they are outside their range
    std::vector<std::string> leftOut;  ///< references to rows that do not exist, one sentence each
};
