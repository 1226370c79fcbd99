#pragma once

#include "base/KorString.h"
#include "records/TableSchema.h"

#include <functional>
#include <string>
#include <vector>

/// Lists of words that stand below the help of a command.
namespace WordLists {

/// Words in lines below one that says what they are.
std::string of(const KorString& head, const std::vector<std::string>& words);
/// The kinds of records that are meant; without a function all of them.
std::string kinds(const std::function<bool(const TableSchema&)>& isMeant = {});
/// All kinds with what the editor calls them, one a line.
std::string kindsWithCaptions();

} // namespace WordLists
