#include "app/ReadProblems.h"

#include "app/Console.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"

#include <algorithm>

bool complainOfReading() {
    bool lost = false;
    StyleDatabases& databases = StyleDatabases::current();
    for (const SourceId id : databases.sources()) {
        StyleSource& source = *databases.source(id);
        for (const ReadProblem& problem : source.problems()) {
            Console::complain(problem.sentence);
            lost = lost || !problem.kept;
        }
        if (source.isOutdated()) {
            Console::complain(KorString::format(
                translated(
                    "The style database \"%s\" was changed by another program while it was being read; "
                    "try again."),
                {source.store().name()}));
            lost = true;
        }
    }
    return lost;
}

void complainUnlessTold(const KorString& reason) {
    StyleDatabases& databases = StyleDatabases::current();
    const bool told = std::ranges::any_of(databases.sources(), [&](SourceId id) {
        const std::vector<ReadProblem>& problems = databases.source(id)->problems();
        return std::ranges::find(problems, reason.toStdString(), &ReadProblem::sentence) != problems.end();
    });
    if (!told)
        Console::complain(reason);
}
