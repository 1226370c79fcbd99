#pragma once

#include "data/pending/PendingLog.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// A style database as a recovery file names it.
struct RecoverySource {
    int number = 0;    ///< by which the lines of steps refer to it
    std::string stamp; ///< of the file at that time
    std::string path;  ///< absolute, without links
};

/// The lines of a recovery file: fields between tabs, the first of which says what the line is. Each ends in
/// a line break. Lines between `begin` and `end` count together or not at all.
namespace RecoveryText {

/// What the lines of a file add up to so far.
using Seal = std::uint32_t;
constexpr Seal kNoSeal = 0x811c9dc5;

/// The lines as they stand in the file: each with the seal of all lines up to it as its last field, so that a
/// changed, missing or foreign one is found. Takes the lines into the seal.
std::string sealed(std::string_view lines, Seal& seal);

std::string head();
std::string source(const RecoverySource& source);
/// `sourceNumber` is that of the step's source. A name that stays as it is makes no step of the log that is
/// read, but one of its `names`.
std::string step(int sourceNumber, const PendingStep& step);
std::string forgotten(int sourceNumber, eTableType table);
std::string begin(const KorString& label);
/// Between `begin` and `end`: what follows is another command.
std::string next(const KorString& label);
std::string end();
std::string undo();
/// That a commit of this table begins, which leaves `mark` in the database, or 0; true until another line
/// follows.
std::string storing(int sourceNumber, eTableType table, std::uint32_t mark);

/// A file beside this one, as it was when what it held came into this one, so that it counts no more.
struct TakenOver {
    std::string file; ///< its name in the folder
    Seal seal = kNoSeal;
    std::string database; ///< whose changes came over; empty for all
};
std::string takenOver(const TakenOver& other);

/// What was being committed at the end, of one source.
struct Storing {
    std::vector<PendingPlace> places;
    std::uint32_t mark = 0;
};

/// What a file says.
struct Parsed {
    std::unique_ptr<PendingLog>
        changes; ///< null when it was not written by this version, or changed afterwards
    Storing storing;
    std::vector<TakenOver> takenOver;
    std::size_t size = 0;  ///< in bytes, without what it broke off in: more lines may follow there
    Seal seal = kNoSeal;   ///< of its lines up to there
    bool isCutOff = false; ///< behind it begins a change that is not whole
};

/// The changes that stand at the end of a file with this text, of the sources that `idOf` gives for the
/// databases that it names. A text that breaks off anywhere only loses what it broke off in.
using SourceNames = std::function<SourceId(const RecoverySource&)>;
Parsed parse(std::string_view text, const SourceNames& idOf);

} // namespace RecoveryText
