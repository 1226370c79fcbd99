#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMExchange.h"
#include "session/KorDSMValueText.h"
#include "shell/ExchangeRun.h"
#include "shell/KorDSMMainDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

// Export and import of detail styles.

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

void KorDSMMainDialog::exportStyle() {
    KorDSMDatabaseItem* item = subject();
    if (!item || item->m_Type != KorDSMDefines::kDetailStyle)
        return;
    selectItemDatabase(item);
    finishCurrentPage();
    QFileDialog dialog(this, toQt(Prompts::ups(33563)));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(toQt(KorDSMExchange::fileExtension()));
    dialog.setNameFilter(fileFilter());
    dialog.selectFile(QStringLiteral("DetailStylesExport"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString file = dialog.selectedFiles().first();
    KorDSMExchange::ExportOutcome outcome;
    {
        const ExchangeRun run;
        outcome = KorDSMExchange::exportStyle(*item, fromQt(file), QFileInfo::exists(file));
    }
    if (!outcome.done) {
        if (!outcome.error.isEmpty())
            QMessageBox::warning(this, toQt(Prompts::gui(45063)), toQt(outcome.error));
        return;
    }
    QMessageBox box(
        outcome.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning, toQt(Prompts::gui(45024)),
        toQt(KorString::format(Prompts::ups(33526),
                               {KorDSMValueText::shortName(item->record()->getRunBezeichnung())})),
        QMessageBox::Ok, this);
    showIn(box, linesOf(outcome.leftOut));
    box.exec();
}

void KorDSMMainDialog::importStyles() {
    const KorDSMDatabaseItem* item = subject();
    if (!item)
        return;
    selectItemDatabase(item);
    const std::optional<SourceId> to = KorDSMExchange::importTarget();
    if (!to)
        return refuse(KorDSMItemCommands::whyNotWritable(SourceId::user()));
    finishCurrentPage();
    const QString file = QFileDialog::getOpenFileName(this, toQt(Prompts::ups(33564)), {}, fileFilter());
    if (file.isEmpty())
        return;
    KorDSMExchange::ImportOutcome outcome;
    QStringList messages;
    {
        const ExchangeRun run;
        outcome = KorDSMExchange::importFile(fromQt(file), *to);
        messages = run.messages();
    }
    const ImportReport& report = outcome.report;
    if (!outcome.done) {
        const bool isCancelled = report.error.empty();
        return isCancelled ? void() : refuse(KorString(report.error));
    }
    if (report.rowsAppended > 0)
        setModified(true);
    reloadSections();
    QMessageBox box(report.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning,
                    toQt(Prompts::dsm(kImportCaption)), toQt(KorDSMExchange::summaryOf(report)),
                    QMessageBox::Ok, this);
    showIn(box, messages << linesOf(report.leftOut) << linesOf(report.problems));
    box.exec();
}
