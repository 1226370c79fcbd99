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

KorDSMExchange::ExportOutcome KorDSMExchange::exportStyle(const KorDSMDatabaseItem& style,
                                                          const KorString& file, bool mayReplace) {
    return exportRow({KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()},
                     {kTableDetailStyle, style.recordKey()}, file, mayReplace);
}

KorDSMExchange::ExportOutcome KorDSMExchange::exportRow(SourceId source, RowRef row, const KorString& file,
                                                        bool mayReplace) {
    ExportOutcome outcome;
    const int result = KorODBCDetailStyleExports::exportDetail(
        row.table, KorOdbcKey(row.key), source.dsn, source.index, file, &outcome.leftOut, mayReplace);
    outcome.done = result == KorODBCDetailStyleExports::kDone;
    if (!outcome.done)
        KorODBCDetailStyleExports::GetErrorMessage(outcome.error, result);
    return outcome;
}

std::optional<SourceId> KorDSMExchange::importTarget() {
    SourceId to{KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()};
    if (KorODBCDetailStyleExports::GetDSNAndIndexToUse(to.dsn, to.index) != 1)
        return std::nullopt;
    return to;
}

KorDSMExchange::ImportOutcome KorDSMExchange::importFile(const KorString& file, SourceId to) {
    ImportOutcome outcome;
    KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(1);
    outcome.done =
        KorODBCDetailStyleExports::importFile(file, outcome.report, to) == KorODBCDetailStyleExports::kDone;
    KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(0);
    return outcome;
}

KorString KorDSMExchange::summaryOf(const ImportReport& report) {
    const KorString imported = counted(report.imported, kOneImported, kManyImported);
    return report.alreadyThere.empty()
               ? imported
               : KorString::format("%s %s", {imported, counted(report.alreadyThere, kOneThere, kManyThere)});
}
