#include "session/KorDSMReadProblems.h"

#include "data/StyleDatabases.h"
#include "services/KorHostReport.h"

void KorDSMReadProblems::reportNew() {
    for (const SourceId id : StyleDatabases::current().sources()) {
        std::set<std::string> standing;
        for (const ReadProblem& problem : StyleDatabases::current().source(id)->problems())
            if (!problem.kept && standing.insert(problem.sentence).second &&
                !m_told[id].contains(problem.sentence))
                KorHostReport::add(KorString(problem.sentence));
        m_told[id] = std::move(standing);
    }
}
