#include "app/Commands.h"
#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/SourceChoice.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/check/OrphanedParts.h"
#include "session/KorDSMCompaction.h"

#include <algorithm>

namespace {

int refuse(const KorString& sentence) {
    Console::complain(sentence);
    return kExitFailed;
}

KorString sentenceOf(const KorString& pattern, StyleSource& source, eTableType table,
                     const StructRecord& part) {
    return KorString::format(pattern, {findTable(table)->rowName(), part.name, KorString::number(part.key),
                                       source.store().name()});
}

std::vector<KorString> wouldRemove(StyleSource& source) {
    std::vector<KorString> sentences;
    for (const RowRef& part : orphanedParts(source))
        sentences.push_back(sentenceOf(
            translated("Would remove the %s \"%s\" (key %s) of \"%s\", whose owner does not exist."), source,
            part.table, *source.table(part.table).find(KorOdbcKey(part.key))));
    return sentences;
}

// What is pending is what was removed, with all that went along.
std::vector<KorString> removed(StyleSource& source) {
    std::vector<KorString> sentences;
    for (const PendingStep* step : StyleDatabases::current().pending().steps())
        sentences.push_back(
            sentenceOf(translated("Removed the %s \"%s\" (key %s) of \"%s\", whose owner does not exist."),
                       source, step->table, *step->record));
    return sentences;
}

} // namespace

int compactCommand(DataFolder&, const CompactOptions& options) {
    const Result<std::vector<SourceId>> chosen = SourceChoice::choose(options.source);
    if (!chosen)
        return refuse(KorString(chosen.error));
    const SourceId id = chosen.value.front();
    StyleSource& source = *StyleDatabases::current().source(id);
    if (const std::string tooNew = StyleDatabases::current().whyTooNew(id); !tooNew.empty())
        return refuse(KorString(tooNew));
    if (!options.dryRun && !StyleDatabases::current().isEditable(id))
        return refuse(
            KorString::format(translated("The source \"%s\" is read-only, so nothing was removed from it."),
                              {SourceChoice::nameOf(id)}));
    if (const Result<> whole = source.complete(); !whole)
        return refuse(KorString(whole.error));
    StyleDatabases::current().setCurrentSource(id);
    if (!options.dryRun)
        KorDSMCompaction::run(id);
    const std::vector<KorString> sentences = options.dryRun ? wouldRemove(source) : removed(source);
    if (!options.dryRun && !keepChanges())
        return kExitFailed;
    std::ranges::for_each(sentences, options.dryRun ? &Console::say : &Console::sayStored);
    if (sentences.empty())
        Console::say(KorString::format(translated("%s: nothing to remove"), {source.store().name()}));
    return kExitDone;
}
