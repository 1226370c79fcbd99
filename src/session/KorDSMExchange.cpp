#include "session/KorDSMExchange.h"

#include "operations/KorDatabaseAccess.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "session/KorDSMDeepCopy.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace {

constexpr const char* kUsualFile = "DetailStylesExport";
constexpr int kImported = 261; // "%s detail styles were imported."
constexpr int kThere = 488;    // "%s were there already."

KorString counted(const std::vector<KorString>& names, int text) {
    const auto many = static_cast<std::int64_t>(names.size());
    return KorString::format(Prompts::counted(text, many), {KorString::number(many)});
}

// Where the sign of a UTF-8 text begins that the byte at `at` belongs to.
std::size_t startOfSign(const std::string& text, std::size_t at) {
    constexpr unsigned kTop = 0xC0;
    constexpr unsigned kGoesOn = 0x80;
    while (at > 0 && (static_cast<unsigned char>(text[at]) & kTop) == kGoesOn)
        --at;
    return at;
}

// Of the last operation of the layer.
WriteResult resultOf(int code) {
    if (code == KorODBCDetailStyleExports::kDone)
        return {};
    KorString error;
    KorODBCDetailStyleExports::GetErrorMessage(error, code);
    return {code == KorODBCDetailStyleExports::kCancelled ? WriteResult::kDeclined : WriteResult::kFailed,
            error.toStdString()};
}

} // namespace

KorString KorDSMExchange::fileExtension() {
    return KorDatabaseAccess::getDatabaseExtension();
}

ExchangeCallbacks KorDSMExchange::tell(ExchangeCallbacks callbacks) {
    return KorODBCDetailStyleExports::setCallbacks(std::move(callbacks));
}

void KorDSMExchange::cancel() {
    KorDetailTableDependencies::m_bDeepCopyCanceledByUser = true;
}

KorDSMExchange::ExportResult KorDSMExchange::exportRows(SourceId source, const std::vector<RowRef>& rows,
                                                        const KorString& file, bool mayReplace) {
    ExportResult outcome;
    const KorString name(std::filesystem::path(file.toStdString()).filename().string());
    const int code =
        KorODBCDetailStyleExports::exportRows(source, rows, name, file, &outcome.leftOut, mayReplace);
    static_cast<WriteResult&>(outcome) = resultOf(code);
    return outcome;
}

std::vector<RowRef> KorDSMExchange::stylesOf(const std::vector<KorDSMDatabaseItem*>& items) {
    std::vector<RowRef> rows;
    for (KorDSMDatabaseItem* item : items)
        for (const RowRef& row : KorDSMDeepCopy::recordsOf(*item))
            if (row.table == kTableDetailStyle && std::ranges::find(rows, row) == rows.end())
                rows.push_back(row);
    return rows;
}

KorString KorDSMExchange::proposedFile(const std::vector<KorDSMDatabaseItem*>& items) {
    return items.size() == 1 ? fileNameOf(items.front()->getDisplayName()) : KorString(kUsualFile);
}

KorString KorDSMExchange::fileNameOf(const KorString& text) {
    constexpr std::size_t kLongest = 100; // bytes; file systems take 255, with the extension
    std::string name = text.trimmed().toStdString();
    for (char& sign : name)
        if (static_cast<unsigned char>(sign) < ' ' ||
            std::string_view("/\\:*?\"<>|").find(sign) != std::string_view::npos)
            sign = '-';
    if (name.size() > kLongest)
        name.resize(startOfSign(name, kLongest));
    const bool isHidden = name.empty() || name.front() == '.';
    return isHidden ? KorString("-") + KorString(name) : KorString(name);
}

std::optional<SourceId> KorDSMExchange::importTarget() {
    SourceId to{KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()};
    if (KorODBCDetailStyleExports::GetDSNAndIndexToUse(to.dsn, to.index) != 1)
        return std::nullopt;
    return to;
}

KorString KorDSMExchange::summaryOf(const ImportReport& report) {
    const KorString imported = counted(report.imported, kImported);
    return report.alreadyThere.empty()
               ? imported
               : KorString::format("%s %s", {imported, counted(report.alreadyThere, kThere)});
}
