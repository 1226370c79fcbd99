#include "app/Commands.h"
#include "app/Console.h"
#include "app/OutputFile.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "session/KorDSMExchange.h"

namespace {

int failed(const KorString& sentence) {
    Console::complain(sentence);
    return kExitFailed;
}

} // namespace

int exportCommand(DataFolder&, const ExportOptions& options) {
    RowChoice row;
    KorString error;
    const eExitCode found = RowChoice::findInOneState(options.row, row, error);
    complainOfReading();
    if (found != kExitDone) {
        complainUnlessTold(error);
        return found;
    }
    StyleSource& source = *StyleDatabases::current().source(row.source);
    if (!source.complete())
        return failed(
            KorString::format(translated("\"%s\" could not be read whole, so nothing was exported from it."),
                              {source.store().name()}));
    if (const KorString hindrance = OutputFile::hindrance(options.file, options.overwrite);
        !hindrance.isEmpty())
        return failed(hindrance);
    const KorDSMExchange::ExportResult outcome =
        KorDSMExchange::exportRow(row.source, {row.table->type, row.key}, options.file, options.overwrite);
    if (!outcome.isStored())
        return failed(outcome.error);
    Console::sayStored(KorString::format(translated("The detail style \"%s\" was exported into \"%s\"."),
                                         {row.record()->name, options.file}));
    for (const std::string& sentence : outcome.leftOut)
        Console::complain(sentence);
    return outcome.leftOut.empty() ? kExitDone : kExitFailed;
}
