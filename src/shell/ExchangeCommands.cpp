#include "shell/ExchangeCommands.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogImport.h"
#include "services/Prompts.h"
#include "session/KorDSMExchange.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/CommandStrip.h"
#include "shell/ExchangeRun.h"
#include "shell/Refusal.h"
#include "shell/WindowRefresh.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace {

constexpr int kImportCaption = 263;
constexpr int kExported = 726; // "%s detail styles were exported."

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

ExchangeCommands::ExchangeCommands(QWidget& window, KorDSMDataStructure& structure, TreeSelection& selection,
                                   WindowRefresh& refresh, CommandStrip& strip)
    : m_window(window), m_structure(structure), m_selection(selection), m_refresh(refresh) {
    strip.on(eItemCommand::kExport, [this] { exportStyles(); });
    strip.on(eItemCommand::kImport, [this] { importStyles(); });
}

QString ExchangeCommands::askFile(const std::vector<KorDSMDatabaseItem*>& items) {
    QFileDialog dialog(&m_window, toQt(Prompts::ups(33563)));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(toQt(KorDSMExchange::fileExtension()));
    dialog.setNameFilter(fileFilter());
    // A name may have points of its own, of which none begins an extension.
    dialog.selectFile(toQt(KorDSMExchange::proposedFile(items)) + u'.' +
                      toQt(KorDSMExchange::fileExtension()));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().first();
}

void ExchangeCommands::exportStyles() {
    const std::vector<KorDSMDatabaseItem*> items = m_selection.subjects();
    const std::vector<RowRef> styles = KorDSMExchange::stylesOf(items);
    if (styles.empty())
        return;
    m_selection.selectDatabase(items.front());
    RightSide::finishEditing();
    const KorString name = KorDSMValueText::shortName(items.front()->getDisplayName());
    const SourceId source = KorDSMItemSource::sourceOf(items.front());
    const QString file = askFile(items);
    if (file.isEmpty())
        return;
    KorDSMExchange::ExportResult outcome;
    {
        const ExchangeRun run;
        outcome = KorDSMExchange::exportRows(source, styles, fromQt(file), QFileInfo::exists(file));
    }
    if (!outcome.isStored()) {
        if (outcome.isFailed())
            QMessageBox::warning(&m_window, toQt(Prompts::gui(45063)), toQt(KorString(outcome.error)));
        return;
    }
    const auto count = static_cast<std::int64_t>(styles.size());
    QMessageBox box(
        outcome.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning, toQt(Prompts::gui(45024)),
        toQt(count == 1 && items.front()->type() == KorDSMDefines::kDetailStyle
                 ? KorString::format(Prompts::ups(33526), {name})
                 : KorString::format(Prompts::counted(kExported, count), {KorString::number(count)})),
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
    const KorDSMImport import(fromQt(file));
    if (!import.error().isEmpty())
        return refuse(&m_window, import.error());
    KorDSMDialogImport dialog(import, *to, &m_window);
    if (dialog.exec() == QDialog::Accepted)
        bring(import, dialog.wish());
}

void ExchangeCommands::bring(const KorDSMImport& import, const KorDSMDeepCopy::Wish& wish) {
    KorDSMDeepCopy::Outcome outcome;
    QStringList messages;
    {
        const ExchangeRun run;
        outcome = KorDSMDeepCopy::copy(wish);
        messages = run.messages();
    }
    if (!outcome.done)
        return outcome.error.isEmpty() ? void() : refuse(&m_window, outcome.error);
    const ImportReport& report = outcome.report;
    m_refresh.reload();
    m_refresh.showNew(itemsOf(outcome.changes));
    QMessageBox box(report.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning,
                    toQt(Prompts::dsm(kImportCaption)), toQt(KorDSMExchange::summaryOf(report)),
                    QMessageBox::Ok, &m_window);
    showIn(box, messages << linesOf(report.leftOut) << linesOf(import.problems()));
    box.exec();
}

// The styles that came.
std::vector<KorDSMDatabaseItem*> ExchangeCommands::itemsOf(const std::vector<KorDSMRowChange>& changes) {
    std::vector<KorDSMDatabaseItem*> items;
    for (const KorDSMRowChange& change : changes)
        if (change.row.table == kTableDetailStyle)
            if (KorDSMDatabaseItem* item = KorDSMWhereUsed::findItem(m_structure, change.source, change.row))
                items.push_back(item);
    return items;
}
