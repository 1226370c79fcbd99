#include "app/Commands.h"
#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/SourceChoice.h"
#include "base/Translation.h"
#include "data/KorOdbcMan.h"
#include "data/check/OrphanedParts.h"

namespace {

int refuse(const KorString& sentence) {
    Console::complain(sentence);
    return kExitFailed;
}

// What is removed, one sentence each; to be asked for before it is removed.
std::vector<KorString> sentencesOf(StyleSource& source, bool dryRun) {
    const KorString pattern =
        dryRun ? translated("Would remove the %s \"%s\" (key %s) of \"%s\", whose owner does not exist.")
               : translated("Removed the %s \"%s\" (key %s) of \"%s\", whose owner does not exist.");
    std::vector<KorString> sentences;
    for (const RowRef& part : orphanedParts(source)) {
        const StyleTable& table = source.table(part.table);
        sentences.push_back(
            KorString::format(pattern, {table.schema().rowName(), table.find(KorOdbcKey(part.key))->name,
                                        KorString::number(part.key), source.store().name()}));
    }
    return sentences;
}

} // namespace

int compactCommand(DataFolder&, const CompactOptions& options) {
    const SourceChoice::Sources chosen = SourceChoice::choose(options.source);
    if (chosen.ids.empty())
        return refuse(chosen.error);
    const SourceId id = chosen.ids.front();
    StyleDatabases& databases = StyleDatabases::current();
    StyleSource& source = *databases.source(id);
    if (!options.dryRun && !databases.isEditable(id))
        return refuse(
            KorString::format(translated("The source \"%s\" is read-only, so nothing was removed from it."),
                              {SourceChoice::nameOf(id)}));
    if (const std::string reason = whyNotCompactable(source); !reason.empty())
        return refuse(KorString(reason));
    const std::vector<KorString> sentences = sentencesOf(source, options.dryRun);
    if (!options.dryRun) {
        databases.setCurrentSource(id);
        if (KorOdbcCompactDetailsTables::startCompactProcess(id.dsn, 0,
                                                             KorOdbcCompactDetailsTables::kUnusedParts) < 0 ||
            !keepChanges())
            return kExitFailed;
    }
    for (const KorString& sentence : sentences)
        Console::say(sentence);
    if (sentences.empty())
        Console::say(KorString::format(translated("%s: nothing to remove"), {source.store().name()}));
    return kExitDone;
}
