#include "base/Translation.h"
#include "controls/KorQt.h"
#include "controls/KorTabCtrl.h"
#include "services/CKorHelp.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "session/KorDSMHandOver.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

// The commands of the main dialog.

namespace {

constexpr int kNotKept = 210;      // caption of the message about changes that could not be kept
constexpr int kConflictLine = 211; // "%s, %s: the database now holds %s, you wrote %s."
constexpr int kReports = 212;      // caption of the list of problems

// Values come with their quotation marks; those of a row that is gone are empty.
KorString conflictLine(const KorString& row, const StoreConflict& values) {
    const auto shown = [](const std::string& value) {
        return value.empty() ? translated("nothing") : KorString(value);
    };
    return KorString::format(Prompts::dsm(kConflictLine),
                             {row, values.column ? values.table->columnName(*values.column) : std::string(),
                              shown(values.stored), shown(values.mine)});
}

} // namespace

void KorDSMMainDialog::onItemCommand(int id) {
    switch (id) {
    case 1029:
        newItem();
        break;
    case 1030:
        use();
        break;
    case 1033:
        copyItem();
        break;
    case 1034:
        renameItem();
        break;
    case 1035:
        deleteItem();
        break;
    case 1039:
        importStyles();
        break;
    case 1037:
        exportStyle();
        break;
    case 1036:
        CKorHelp::showTopic("_Drawing_Style_Manager");
        break;
    default:
        break;
    }
}

void KorDSMMainDialog::finishCurrentPage() {
    if (KorDSMPage* page = KorDSMPage::currentPage())
        page->finishEditing();
}

void KorDSMMainDialog::apply() {
    finishCurrentPage();
    const KorDSMCommit::Outcome outcome = KorDSMCommit::keepAndGoOn();
    m_undoStrip->update();
    if (outcome.ok())
        m_apply->setEnabled(false);
    else
        reportCommit(outcome);
}

void KorDSMMainDialog::reportCommit(const KorDSMCommit::Outcome& outcome) {
    QStringList lines;
    QStringList details;
    for (const SourceCommit& commit : outcome.failed) {
        lines << QString::fromStdString(commit.error);
        for (const StoreConflict& conflict : commit.conflicts)
            details << toQt(conflictLine(conflict.table->rowName(), conflict));
    }
    QMessageBox box(QMessageBox::Warning, toQt(Prompts::dsm(kNotKept)), lines.join("\n\n"), QMessageBox::Ok,
                    this);
    if (!details.isEmpty())
        box.setDetailedText(details.join('\n'));
    box.exec();
}

void KorDSMMainDialog::readOutsideChanges() {
    const std::vector<OutsideChange> changes = StyleDatabases::current().refreshChanged();
    if (changes.empty())
        return;
    for (const OutsideChange& change : changes) {
        if (!change.error.empty())
            KorHostReport::add(KorString(change.error));
        for (const OutsideConflict& conflict : change.conflicts)
            KorHostReport::add(KorString(change.file) + KorString(": ") +
                               conflictLine(conflict.rowName, conflict.values));
    }
    reloadSections();
}

// What could not be read as declared since the last look; values outside their range are shown as they are.
void KorDSMMainDialog::collectReadProblems() {
    for (const SourceId id : StyleDatabases::current().sources()) {
        const std::vector<ReadProblem>& problems = StyleDatabases::current().source(id)->problems();
        std::size_t& seen = m_seenProblems[id];
        for (; seen < problems.size(); ++seen)
            if (!problems[seen].kept)
                KorHostReport::add(KorString(problems[seen].sentence));
        seen = problems.size();
    }
}

void KorDSMMainDialog::showReports() {
    collectReadProblems();
    QStringList lines;
    for (const KorString& sentence : KorHostReport::take())
        lines << toQt(sentence);
    if (lines.isEmpty())
        return;
    constexpr int kMostShown = 6;
    QMessageBox box(QMessageBox::Warning, toQt(Prompts::dsm(kReports)), lines.mid(0, kMostShown).join("\n\n"),
                    QMessageBox::Ok, this);
    if (lines.size() > kMostShown)
        box.setDetailedText(lines.join("\n\n"));
    box.exec();
}

void KorDSMMainDialog::use() {
    m_tabs->finishCurrentPage();
    KorDSMDatabaseItem* item = currentItem();
    if (!item)
        return;
    selectItemDatabase(item);
    KorDSMHandOver::put(item);
    if (m_structure.getUpdateStatus() == KorDSMDataStructure::kReloadRequested)
        m_structure.setUpdateStatus(KorDSMDataStructure::kKeepContent);
    done(QDialog::Accepted);
}
