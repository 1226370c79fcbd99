#include "data/exchange/MasterNumbers.h"

#include <limits>
#include <vector>

namespace {

template <typename Visit>
void forEachMaster(StyleSource& source, Visit visit) {
    const RowArray& rows = source.table(kTableDetailMaster).rows();
    for (int i = 0; i < rows.size(); ++i)
        visit(static_cast<const StructDetailMaster&>(rows.at(i)));
}

} // namespace

MasterNumbers::MasterNumbers(StyleSource& source) {
    forEachMaster(source, [this](const auto& master) { occupy(master.detailKey, master.number); });
}

// Most masters are of other families: what is not asked for is not entered.
MasterNumbers::MasterNumbers(StyleSource& source, const StructDetailMaster& asked) {
    forEachMaster(source, [this, &asked](const auto& master) {
        if (master.detailKey == asked.detailKey && master.key != asked.key)
            occupy(master.detailKey, master.number);
    });
}

std::int32_t MasterNumbers::take(const StructDetailMaster& master) {
    const std::int32_t number = firstFree(master.detailKey, master.number);
    occupy(master.detailKey, number);
    return number;
}

// All pairs passed on the way lead to what was found, so that no way is gone twice.
std::int32_t MasterNumbers::firstFree(std::int32_t family, std::int32_t number) {
    std::vector<std::int32_t*> passed;
    for (auto it = m_next.find({family, number}); it != m_next.end(); it = m_next.find({family, number})) {
        passed.push_back(&it->second);
        number = it->second;
    }
    for (std::int32_t* next : passed)
        *next = number;
    return number;
}

void MasterNumbers::occupy(std::int32_t family, std::int32_t number) {
    const bool isLast = number == std::numeric_limits<std::int32_t>::max();
    m_next.try_emplace({family, number}, isLast ? 1 : number + 1);
}

std::int32_t freeMasterNumber(StyleSource& source, const StructDetailMaster& master) {
    return MasterNumbers(source, master).take(master);
}
