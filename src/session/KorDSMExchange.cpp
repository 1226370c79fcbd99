#include "session/KorDSMExchange.h"

#include "operations/KorDatabaseAccess.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"

namespace {

constexpr int kOneImported = 486;  // "1 detail style was imported."
constexpr int kManyImported = 261; // "%s detail styles were imported."
constexpr int kOneThere = 487;     // "1 was there already."
constexpr int kManyThere = 488;    // "%s were there already."

KorString counted(const std::vector<KorString>& names, int one, int many) {
    return names.size() == 1
               ? Prompts::dsm(one)
               : KorString::format(Prompts::dsm(many),
                                   {KorString::number(static_cast<std::int64_t>(names.size()))});
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

KorDSMExchange::ExportResult KorDSMExchange::exportStyle(const KorDSMDatabaseItem& style,
                                                         const KorString& file, bool mayReplace) {
    return exportRow({KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()},
                     {kTableDetailStyle, style.recordKey()}, file, mayReplace);
}

KorDSMExchange::ExportResult KorDSMExchange::exportRow(SourceId source, RowRef row, const KorString& file,
                                                       bool mayReplace) {
    ExportResult outcome;
    const int code = KorODBCDetailStyleExports::exportDetail(
        row.table, KorOdbcKey(row.key), source.dsn, source.index, file, &outcome.leftOut, mayReplace);
    static_cast<WriteResult&>(outcome) = resultOf(code);
    return outcome;
}

std::optional<SourceId> KorDSMExchange::importTarget() {
    SourceId to{KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()};
    if (KorODBCDetailStyleExports::GetDSNAndIndexToUse(to.dsn, to.index) != 1)
        return std::nullopt;
    return to;
}

KorDSMExchange::ImportResult KorDSMExchange::importFile(const KorString& file, SourceId to) {
    ImportResult outcome;
    KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(1);
    static_cast<WriteResult&>(outcome) =
        resultOf(KorODBCDetailStyleExports::importFile(file, outcome.report, to));
    KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(0);
    return outcome;
}

KorString KorDSMExchange::summaryOf(const ImportReport& report) {
    const KorString imported = counted(report.imported, kOneImported, kManyImported);
    return report.alreadyThere.empty()
               ? imported
               : KorString::format("%s %s", {imported, counted(report.alreadyThere, kOneThere, kManyThere)});
}
