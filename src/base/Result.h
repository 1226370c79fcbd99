#pragma once

#include "base/KorAssert.h"
#include "base/KorString.h"

#include <string>
#include <utility>

/// What came of something that can fail for reasons outside of the program. What has more to tell than that
/// is derived from it.
template <typename T = void>
struct Result;

/// It was done, or it failed and `error` is one sentence for the user that says why, names the file concerned
/// and says what to do.
template <>
struct [[nodiscard]] Result<void> {
    std::string error = {}; ///< empty when it was done

    bool ok() const { return error.empty(); }
    explicit operator bool() const { return ok(); }

    /// A failure without a sentence is a fault of the program: it is reported, and told as "?".
    static Result failure(const KorString& sentence) {
        const bool says = KorAssert::check(!sentence.isEmpty(), "a failure says why");
        return {says ? sentence.toStdString() : "?"};
    }
};

/// The same of something that yields a value. After a failure `value` is what a default constructor makes,
/// and means nothing.
template <typename T>
struct [[nodiscard]] Result : Result<> {
    T value = {};

    Result(T yielded) : value(std::move(yielded)) {}
    Result(Result<> failed) : Result<>(std::move(failed)) {}
};
