#include "app/Commands.h"
#include "app/Console.h"
#include "app/OutputFile.h"
#include "app/ReadProblems.h"
#include "app/RowChoice.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "session/KorDSMExchange.h"

#include <algorithm>

namespace {

int failed(const KorString& sentence) {
    Console::complain(sentence);
    return kExitFailed;
}

// The styles that are meant, of one source. Returns an exit code, and tells why there are none.
eExitCode choose(const ExportOptions& options, SourceId& source, std::vector<RowRef>& styles) {
    std::string sourceName = options.source;
    std::vector<std::string> names = options.others;
    names.insert(names.begin(), options.style);
    for (const std::string& name : names) {
        const FoundRow found = RowChoice::findInOneState({"detail-style", name, sourceName});
        if (found.tell() != kExitDone)
            return found.code;
        const RowChoice& row = found.value;
        source = row.source;
        sourceName = SourceChoice::nameOf(source).toStdString();
        if (std::ranges::find(styles, row.ref()) == styles.end())
            styles.push_back(row.ref());
    }
    return kExitDone;
}

} // namespace

int exportCommand(DataFolder&, const ExportOptions& options) {
    SourceId id;
    std::vector<RowRef> styles;
    if (const eExitCode found = choose(options, id, styles); found != kExitDone)
        return found;
    StyleSource& source = *StyleDatabases::current().source(id);
    if (!source.complete())
        return failed(
            KorString::format(translated("\"%s\" could not be read whole, so nothing was exported from it."),
                              {source.store().name()}));
    if (const KorString hindrance = OutputFile::hindrance(options.file, options.overwrite);
        !hindrance.isEmpty())
        return failed(hindrance);
    const KorDSMExchange::ExportResult outcome =
        KorDSMExchange::exportRows(id, styles, options.file, options.overwrite);
    if (!outcome.isStored())
        return failed(outcome.error);
    for (const RowRef& style : styles)
        Console::sayStored(
            KorString::format(translated("The detail style \"%s\" was exported into \"%s\"."),
                              {source.table(style.table).find(KorOdbcKey(style.key))->name, options.file}));
    for (const std::string& sentence : outcome.leftOut)
        Console::complain(sentence);
    return outcome.leftOut.empty() ? kExitDone : kExitFailed;
}
