#include "app/Commands.h"
#include "app/CommitReport.h"
#include "app/Console.h"
#include "base/Translation.h"
#include "records/TableSchema.h"
#include "session/KorDSMExchange.h"

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

void printJson(const ImportReport& report) {
    QJsonArray renamed;
    for (const ImportReport::Renamed& row : report.renamed)
        renamed.append(QJsonObject{{"kind", Console::text(findTable(row.table)->kindName())},
                                   {"from", Console::text(row.from)},
                                   {"to", Console::text(row.to)}});
    Console::print(QJsonObject{{"imported", toJson(report.imported)},
                               {"alreadyThere", toJson(report.alreadyThere)},
                               {"renamed", renamed},
                               {"recordsAdded", report.rowsAppended}});
}

std::vector<KorString> sentencesOf(const ImportReport& report) {
    std::vector<KorString> sentences;
    for (const KorString& name : report.imported)
        sentences.push_back(KorString::format(translated("Imported the detail style \"%s\"."), {name}));
    for (const KorString& name : report.alreadyThere)
        sentences.push_back(
            KorString::format(translated("The detail style \"%s\" is there already."), {name}));
    for (const ImportReport::Renamed& row : report.renamed)
        sentences.push_back(KorString::format(translated("The %s \"%s\" came in as \"%s\"."),
                                              {findTable(row.table)->rowName(), row.from, row.to}));
    return sentences;
}

} // namespace

int importCommand(DataFolder&, const ImportOptions& options) {
    const KorDSMExchange::ImportResult outcome = KorDSMExchange::importFile(options.file, SourceId::user());
    const ImportReport& report = outcome.report;
    for (const auto* sentences : {&report.problems, &report.leftOut})
        for (const std::string& sentence : *sentences)
            Console::complain(sentence);
    if (!outcome.isStored()) {
        Console::complain(outcome.error);
        return kExitFailed;
    }
    if (!keepChanges())
        return kExitFailed;
    if (options.json)
        printJson(report);
    std::ranges::for_each(sentencesOf(report), options.json ? &Console::noteStored : &Console::sayStored);
    return report.leftOut.empty() ? kExitDone : kExitFailed;
}
