#pragma once

#include "data/StyleSource.h"
#include "records/StyleRecords.h"

#include <map>
#include <utility>

/// The pairs of numbers that the masters of one source give their styles, and which of them are free. Giving
/// any number of masters theirs costs no more than sorting them.
class MasterNumbers {
public:
    /// Takes the pairs of all masters of the source.
    explicit MasterNumbers(StyleSource& source);
    /// Takes those of the family of `asked` alone, and not its own.
    MasterNumbers(StyleSource& source, const StructDetailMaster& asked);

    /// The first number from `master.number` on that no other master of its family has. It is taken from now
    /// on.
    std::int32_t take(const StructDetailMaster& master);

private:
    std::int32_t firstFree(std::int32_t family, std::int32_t number);
    void occupy(std::int32_t family, std::int32_t number);

    std::map<std::pair<std::int32_t, std::int32_t>, std::int32_t> m_next; // of a taken pair, a number to try
};

/// The first number from `master.number` on that gives no other row of the source the pair of numbers that
/// `master` would have.
std::int32_t freeMasterNumber(StyleSource& source, const StructDetailMaster& master);
