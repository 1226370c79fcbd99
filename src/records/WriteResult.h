#pragma once

/// What came of a write to a row: exactly 1 for success, anything else is a failure that changed nothing.
namespace WriteResult {

enum eWriteResult : int {
    kWritten = 1,
    kFailed = 0, ///< no such row or column, or a value that does not fit
    kReadOnlySource = -1,
    kIncompleteSource = -2, ///< a table could not be read, so it cannot be judged
};

} // namespace WriteResult
