#include "shell/ExchangeCommands.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMExchange.h"
#include "session/KorDSMValueText.h"
#include "shell/ApplyState.h"
#include "shell/CommandStrip.h"
#include "shell/ExchangeRun.h"
#include "shell/Refusal.h"
#include "shell/WindowRefresh.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace {

constexpr int kImportCaption = 263;

// The filter of file dialogs for style databases.
QString fileFilter() {
    return toQt(KorString::format("%s (*.%s)", {Prompts::gui(45028), KorDSMExchange::fileExtension()}));
}

QStringList linesOf(const std::vector<std::string>& sentences) {
    QStringList lines;
    for (const std::string& sentence : sentences)
        lines << QString::fromStdString(sentence);
    return lines;
}

void showIn(QMessageBox& box, const QStringList& lines) {
    if (!lines.isEmpty())
        box.setDetailedText(lines.join('\n'));
}

} // namespace

ExchangeCommands::ExchangeCommands(QWidget& window, TreeSelection& selection, ApplyState& applyState,
                                   WindowRefresh& refresh, CommandStrip& strip)
    : m_window(window), m_selection(selection), m_applyState(applyState), m_refresh(refresh) {
    strip.on(eItemCommand::kExport, [this] { exportStyle(); });
    strip.on(eItemCommand::kImport, [this] { importStyles(); });
}

void ExchangeCommands::exportStyle() {
    KorDSMDatabaseItem* item = m_selection.subject();
    if (!item || item->type() != KorDSMDefines::kDetailStyle)
        return;
    m_selection.selectDatabase(item);
    RightSide::finishEditing();
    QFileDialog dialog(&m_window, toQt(Prompts::ups(33563)));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(toQt(KorDSMExchange::fileExtension()));
    dialog.setNameFilter(fileFilter());
    dialog.selectFile(QStringLiteral("DetailStylesExport"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString file = dialog.selectedFiles().first();
    KorDSMExchange::ExportResult outcome;
    {
        const ExchangeRun run;
        outcome = KorDSMExchange::exportStyle(*item, fromQt(file), QFileInfo::exists(file));
    }
    if (!outcome.isStored()) {
        if (outcome.isFailed())
            QMessageBox::warning(&m_window, toQt(Prompts::gui(45063)), toQt(KorString(outcome.error)));
        return;
    }
    QMessageBox box(
        outcome.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning, toQt(Prompts::gui(45024)),
        toQt(KorString::format(Prompts::ups(33526),
                               {KorDSMValueText::shortName(item->record()->getRunBezeichnung())})),
        QMessageBox::Ok, &m_window);
    showIn(box, linesOf(outcome.leftOut));
    box.exec();
}

void ExchangeCommands::importStyles() {
    const KorDSMDatabaseItem* item = m_selection.subject();
    if (!item)
        return;
    m_selection.selectDatabase(item);
    const std::optional<SourceId> to = KorDSMExchange::importTarget();
    if (!to)
        return refuse(&m_window, KorDSMItemCommands::whyNotWritable(SourceId::user()));
    RightSide::finishEditing();
    const QString file = QFileDialog::getOpenFileName(&m_window, toQt(Prompts::ups(33564)), {}, fileFilter());
    if (file.isEmpty())
        return;
    KorDSMExchange::ImportResult outcome;
    QStringList messages;
    {
        const ExchangeRun run;
        outcome = KorDSMExchange::importFile(fromQt(file), *to);
        messages = run.messages();
    }
    if (!outcome.isStored())
        return outcome.isFailed() ? refuse(&m_window, outcome.error) : void();
    const ImportReport& report = outcome.report;
    if (report.rowsAppended > 0)
        m_applyState.setModified(true);
    m_refresh.reload();
    QMessageBox box(report.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning,
                    toQt(Prompts::dsm(kImportCaption)), toQt(KorDSMExchange::summaryOf(report)),
                    QMessageBox::Ok, &m_window);
    showIn(box, messages << linesOf(report.leftOut) << linesOf(report.problems));
    box.exec();
}
