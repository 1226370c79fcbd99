#pragma once

#include "records/KorDSNDefinitions.h"

#include <map>
#include <set>
#include <string>

/// What in the open databases cannot be read as it is declared, told once while it stands. Values outside
/// their range are no problem: they are shown as they are.
class KorDSMReadProblems {
public:
    /// Reports to the host what was found since the last call. What went and comes again is told again.
    void reportNew();

private:
    std::map<SourceId, std::set<std::string>> m_told;
};
