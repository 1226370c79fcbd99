#include "app/ReadProblems.h"

#include "app/Console.h"
#include "data/StyleDatabases.h"

bool complainOfReading() {
    bool lost = false;
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId id : databases.sources())
        for (const ReadProblem& problem : databases.source(id)->problems()) {
            Console::complain(problem.sentence);
            lost = lost || !problem.kept;
        }
    return lost;
}
