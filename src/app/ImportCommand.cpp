#include "app/Commands.h"
#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/DidYouMean.h"
#include "app/SourceChoice.h"
#include "base/Translation.h"
#include "records/TableSchema.h"
#include "session/KorDSMImport.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

QJsonArray toJson(const std::vector<KorString>& names) {
    QJsonArray array;
    for (const KorString& name : names)
        array.append(Console::text(name));
    return array;
}

void printJson(const ImportReport& report, bool isDryRun) {
    QJsonArray renamed;
    for (const ImportReport::Renamed& row : report.renamed)
        renamed.append(QJsonObject{{"kind", Console::text(findTable(row.table)->kindName())},
                                   {"from", Console::text(row.from)},
                                   {"to", Console::text(row.to)}});
    QJsonArray replaced;
    for (const ImportReport::Row& row : report.rows)
        if (row.fate == ImportReport::Row::eFate::kReplaced)
            replaced.append(QJsonObject{{"kind", Console::text(findTable(row.table)->kindName())},
                                        {"name", Console::text(row.name)}});
    Console::print(QJsonObject{{"imported", toJson(report.imported)},
                               {"alreadyThere", toJson(report.alreadyThere)},
                               {"renamed", renamed},
                               {"replaced", replaced},
                               {"recordsAdded", report.rowsAppended},
                               {"dryRun", isDryRun}});
}

std::vector<KorString> sentencesOf(const ImportReport& report) {
    std::vector<KorString> sentences;
    for (const KorString& name : report.imported)
        sentences.push_back(KorString::format(translated("Imported the detail style \"%s\"."), {name}));
    for (const KorString& name : report.alreadyThere)
        sentences.push_back(
            KorString::format(translated("The detail style \"%s\" is there already."), {name}));
    for (const ImportReport::Row& row : report.rows)
        if (row.fate == ImportReport::Row::eFate::kReplaced)
            sentences.push_back(KorString::format(translated("Replaced the %s \"%s\" for all that use it."),
                                                  {findTable(row.table)->rowName(), row.name}));
    for (const ImportReport::Renamed& row : report.renamed)
        sentences.push_back(KorString::format(translated("The %s \"%s\" came in as \"%s\"."),
                                              {findTable(row.table)->rowName(), row.from, row.to}));
    return sentences;
}

void tell(const ImportReport& report, const ImportOptions& options) {
    if (options.json)
        printJson(report, options.dryRun);
    const std::vector<KorString> sentences = sentencesOf(report);
    if (!options.dryRun)
        return static_cast<void>(
            std::ranges::for_each(sentences, options.json ? &Console::noteStored : &Console::sayStored));
    if (options.json)
        return;
    std::ranges::for_each(sentences, &Console::say);
    Console::say(translated("This was a dry run: nothing was written."));
}

int failed(const KorString& sentence) {
    Console::complain(sentence);
    return kExitFailed;
}

// The styles that are meant, of all that the file has; a sentence about one that it does not have.
KorString choose(const KorDSMImport& import, const std::vector<std::string>& names,
                 KorDSMDeepCopy::Wish& wish) {
    if (names.empty())
        return {};
    wish.records.clear();
    const std::vector<KorDSMDeepCopy::Choice> styles = import.styles();
    for (const std::string& name : names) {
        const std::size_t before = wish.records.size();
        std::vector<KorString> known;
        for (const KorDSMDeepCopy::Choice& style : styles) {
            known.push_back(style.name);
            if (style.name == KorString(name))
                wish.records.push_back(style.row);
        }
        if (wish.records.size() == before)
            return KorString::format(translated("The file has no detail style \"%s\"."), {name}) +
                   didYouMean(name, known);
    }
    return {};
}

eNamesakes namesakesOf(const std::string& word) {
    return word == "mine"      ? eNamesakes::kUseTheirs
           : word == "replace" ? eNamesakes::kReplace
                               : eNamesakes::kKeepBoth;
}

} // namespace

int importCommand(DataFolder&, const ImportOptions& options) {
    const Result<std::vector<SourceId>> to = SourceChoice::choose(options.to.empty() ? "user" : options.to);
    if (!to)
        return failed(KorString(to.error));
    const KorDSMImport import(options.file);
    if (!import.error().isEmpty())
        return failed(import.error());
    KorDSMDeepCopy::Wish wish = import.wishFor(to.value.front());
    if (const KorString error = choose(import, options.styles, wish); !error.isEmpty())
        return failed(error);
    wish.namesakes = namesakesOf(options.sameName);
    const KorDSMDeepCopy::Outcome outcome =
        options.dryRun ? KorDSMDeepCopy::preview(wish) : KorDSMDeepCopy::copy(wish);
    for (const auto& sentences : {import.problems(), outcome.report.leftOut})
        for (const std::string& sentence : sentences)
            Console::complain(sentence);
    if (!outcome.done && !wish.records.empty())
        return failed(outcome.error);
    if (!options.dryRun && !keepChanges())
        return kExitFailed;
    if (const KorString note = KorDSMDeepCopy::noteOf(wish);
        outcome.report.rowsAppended > 0 && !note.isEmpty())
        Console::complain(note);
    tell(outcome.report, options);
    return outcome.report.leftOut.empty() ? kExitDone : kExitFailed;
}
