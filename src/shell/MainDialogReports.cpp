#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"

#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

// What the user has to hear of: changes that could not be stored, what other programs changed, damage.

namespace {

constexpr int kNotKept = 210; // caption of the message about changes that could not be kept
constexpr int kReports = 212; // caption of the list of problems

constexpr int kMostShown = 6;

// Shows a few lines in the box, and all of them in its details where there are more.
void addLines(QMessageBox& box, const QStringList& lines) {
    box.setInformativeText(lines.mid(0, kMostShown).join("\n\n"));
    if (lines.size() > kMostShown)
        box.setDetailedText(lines.join("\n\n"));
}

} // namespace

void KorDSMMainDialog::reportCommit(const KorDSMCommit::Outcome& outcome) {
    QStringList errors;
    for (const SourceCommit& commit : outcome.failed)
        if (commit.conflicts.empty())
            errors << QString::fromStdString(commit.error);
    if (!errors.isEmpty())
        QMessageBox::warning(this, toQt(Prompts::dsm(kNotKept)), errors.join("\n\n"));
    // What another program stored meanwhile is read, and asked about.
    readOutsideChanges();
}

bool KorDSMMainDialog::readOutsideChanges() {
    const KorDSMBusy busy;
    StyleDatabases& databases = StyleDatabases::current();
    if (databases.isChangedOutside())
        finishCurrentPage(); // what is being typed is a change of what was shown so far
    const std::vector<OutsideChange> changes =
        followOutsideChanges([&databases] { return databases.refreshChanged(); });
    return std::ranges::all_of(changes, [](const OutsideChange& change) { return change.conflicts.empty(); });
}

std::vector<OutsideChange> KorDSMMainDialog::followOutsideChanges(const KorDSMCommit::Read& read) {
    const std::vector<OutsideChange> changes =
        KorDSMCommit::settle(read, [this](const std::vector<OutsideChange>& conflicting) {
            return KorDSMDialogConflicts::ask(conflicting, this);
        });
    if (changes.empty())
        return changes;
    for (const OutsideChange& change : changes)
        if (!change.error.empty())
            KorHostReport::add(KorString(change.error));
    reloadSections();
    if (StyleDatabases::current().pending().isEmpty())
        m_apply->setEnabled(false);
    else
        setModified(true);
    m_undoStrip->update();
    return changes;
}

// What could not be read as declared since the last look; values outside their range are shown as they are.
void KorDSMMainDialog::collectReadProblems() {
    for (const SourceId id : StyleDatabases::current().sources()) {
        std::set<std::string> standing;
        for (const ReadProblem& problem : StyleDatabases::current().source(id)->problems())
            if (!problem.kept && standing.insert(problem.sentence).second &&
                !m_toldProblems[id].contains(problem.sentence))
                KorHostReport::add(KorString(problem.sentence));
        m_toldProblems[id] = std::move(standing); // what went and comes again is told again
    }
}

void KorDSMMainDialog::showReports() {
    collectReadProblems();
    QStringList lines;
    for (const KorString& sentence : KorHostReport::take())
        lines << toQt(sentence);
    if (lines.isEmpty())
        return;
    QMessageBox box(QMessageBox::Warning, toQt(Prompts::dsm(kReports)), {}, QMessageBox::Ok, this);
    addLines(box, lines);
    box.exec();
}
