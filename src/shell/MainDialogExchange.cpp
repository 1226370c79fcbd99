#include "controls/KorQt.h"
#include "operations/KorDatabaseAccess.h"
#include "operations/KorOdbcMan.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"
#include "shell/ExchangeRun.h"
#include "shell/KorDSMMainDialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

// Export and import of detail styles.

namespace {

constexpr int kOneImported = 486;  // "1 detail style was imported."
constexpr int kManyImported = 261; // "%s detail styles were imported."
constexpr int kOneThere = 487;     // "1 was there already."
constexpr int kManyThere = 488;    // "%s were there already."
constexpr int kImportCaption = 263;

// The filter of file dialogs for style databases.
QString fileFilter() {
    return toQt(
        KorString::format("%s (*.%s)", {Prompts::gui(45028), KorDatabaseAccess::getDatabaseExtension()}));
}

KorString counted(const std::vector<KorString>& names, int one, int many) {
    return names.size() == 1
               ? Prompts::dsm(one)
               : KorString::format(Prompts::dsm(many),
                                   {KorString::number(static_cast<std::int64_t>(names.size()))});
}

KorString summary(const ImportReport& report) {
    const KorString imported = counted(report.imported, kOneImported, kManyImported);
    return report.alreadyThere.empty()
               ? imported
               : KorString::format("%s %s", {imported, counted(report.alreadyThere, kOneThere, kManyThere)});
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

// In advanced mode the messages tell of each row that could not keep its name.
int importFile(const QString& file, SourceId to, ImportReport& report, QStringList& messages) {
    const ExchangeRun run;
    KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(1);
    const int result = KorODBCDetailStyleExports::importFile(fromQt(file), report, to);
    KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(0);
    messages = run.messages();
    messages << linesOf(report.leftOut) << linesOf(report.problems);
    return result;
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
    dialog.setDefaultSuffix(toQt(KorDatabaseAccess::getDatabaseExtension()));
    dialog.setNameFilter(fileFilter());
    dialog.selectFile(QStringLiteral("DetailStylesExport"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    int result = 0;
    std::vector<std::string> leftOut;
    {
        const ExchangeRun run;
        result = KorODBCDetailStyleExports::exportDetail(
            0, KorOdbcKey(item->recordKey()), KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn(),
            fromQt(dialog.selectedFiles().first()), &leftOut,
            QFileInfo::exists(dialog.selectedFiles().first()));
    }
    if (result == KorODBCDetailStyleExports::kDone) {
        QMessageBox box(
            leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning, toQt(Prompts::gui(45024)),
            toQt(KorString::format(Prompts::ups(33526),
                                   {KorDSMValueText::shortName(item->record()->getRunBezeichnung())})),
            QMessageBox::Ok, this);
        showIn(box, linesOf(leftOut));
        box.exec();
        return;
    }
    KorString error;
    KorODBCDetailStyleExports::GetErrorMessage(error, result);
    if (!error.isEmpty())
        QMessageBox::warning(this, toQt(Prompts::gui(45063)), toQt(error));
}

void KorDSMMainDialog::importStyles() {
    const KorDSMDatabaseItem* item = subject();
    if (!item)
        return;
    selectItemDatabase(item);
    SourceId to{KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()};
    if (KorODBCDetailStyleExports::GetDSNAndIndexToUse(to.dsn, to.index) != 1)
        return refuse(KorDSMItemCommands::whyNotWritable(SourceId::user()));
    finishCurrentPage();
    const QString file = QFileDialog::getOpenFileName(this, toQt(Prompts::ups(33564)), {}, fileFilter());
    if (file.isEmpty())
        return;
    ImportReport report;
    QStringList messages;
    if (importFile(file, to, report, messages) != KorODBCDetailStyleExports::kDone) {
        const bool isCancelled = report.error.empty();
        return isCancelled ? void() : refuse(KorString(report.error));
    }
    if (report.rowsAppended > 0)
        setModified(true);
    reloadSections();
    QMessageBox box(report.leftOut.empty() ? QMessageBox::Information : QMessageBox::Warning,
                    toQt(Prompts::dsm(kImportCaption)), toQt(summary(report)), QMessageBox::Ok, this);
    showIn(box, messages);
    box.exec();
}
