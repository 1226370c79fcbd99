#include "app/Commands.h"
#include "app/Console.h"
#include "app/SourceChoice.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/check/ConsistencyCheck.h"
#include "data/store/SqliteStore.h"
#include "session/DataFolder.h"
#include "session/LabelDoubts.h"
#include "session/ShadowedEntries.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

/// What was found in one file.
struct FileFindings {
    std::string file;
    std::vector<Finding> findings;
};

FileFindings checkSource(StyleDatabases& databases, SourceId id) {
    static_cast<void>(databases.readWhole(id)); // a failure is a finding
    StyleSource& source = *databases.source(id);
    FileFindings found{source.store().name(), ConsistencyCheck(source).run()};
    std::ranges::move(shadowedEntries(source), std::back_inserter(found.findings));
    std::ranges::move(LabelDoubts::in(source), std::back_inserter(found.findings));
    return found;
}

Finding damage(std::string sentence) {
    Finding finding;
    finding.severity = eSeverity::kError;
    finding.sentence = std::move(sentence);
    return finding;
}

FileFindings checkFile(const std::string& file) {
    StyleDatabases databases;
    const Result<> result = databases.openFile(SourceId::standard(), file, true);
    if (databases.source(SourceId::standard()))
        return checkSource(databases, SourceId::standard());
    FileFindings found{file, {}};
    std::ranges::transform(integrityFindings(file), std::back_inserter(found.findings), &damage);
    if (found.findings.empty())
        found.findings.push_back(damage(result.error));
    return found;
}

std::vector<FileFindings> checkAll(const CheckOptions& options) {
    std::vector<FileFindings> found;
    if (options.files.empty())
        for (const SourceId id : SourceChoice::choose({}).value)
            found.push_back(checkSource(StyleDatabases::current(), id));
    std::ranges::transform(options.files, std::back_inserter(found), &checkFile);
    return found;
}

const char* nameOf(eSeverity severity) {
    return severity == eSeverity::kError     ? translatable("error")
           : severity == eSeverity::kWarning ? translatable("warning")
                                             : translatable("note");
}

// The sentence is for people, in their language; everything else is for programs, in any language the same.
QJsonObject toJson(const std::string& file, const Finding& finding) {
    return {{"file", Console::text(file)},
            {"severity", nameOf(finding.severity)},
            {"kind", finding.table ? Console::text(finding.table->kindName()) : QJsonValue()},
            {"key", finding.key > 0 ? QJsonValue(finding.key) : QJsonValue()},
            {"name", Console::text(finding.name)},
            {"column", finding.column ? Console::text(finding.column->name) : QJsonValue()},
            {"sentence", Console::text(finding.sentence)}};
}

void printJson(const std::vector<FileFindings>& found) {
    QJsonArray array;
    for (const FileFindings& file : found)
        for (const Finding& finding : file.findings)
            array.append(toJson(file.file, finding));
    Console::print(array);
}

void printText(const std::vector<FileFindings>& found) {
    for (const FileFindings& file : found) {
        Console::say(
            KorString::format(file.findings.empty() ? translated("%s: nothing found") : "%s:", {file.file}));
        for (const Finding& finding : file.findings)
            Console::say(
                KorString::format("  %s: %s", {translated(nameOf(finding.severity)), finding.sentence}));
    }
}

} // namespace

int checkCommand(DataFolder& folder, const CheckOptions& options) {
    const std::vector<FileFindings> found = checkAll(options);
    if (options.json)
        printJson(found);
    else
        printText(found);
    // What is only noted needs nobody to do anything.
    const bool sound = std::ranges::all_of(found, [](const FileFindings& file) {
        return std::ranges::all_of(
            file.findings, [](eSeverity each) { return each == eSeverity::kNote; }, &Finding::severity);
    });
    return sound && folder.isCompleteButForStandard() ? kExitDone : kExitFailed;
}
