#include "base/Translation.h"
#include "controls/KorQt.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMUndoStrip.h"

#include <QMessageBox>
#include <QPushButton>

// What the user has to hear of: changes that could not be stored, what other programs changed, damage.

namespace {

constexpr int kNotKept = 210;      // caption of the message about changes that could not be kept
constexpr int kConflictLine = 211; // "%s, %s: the database now holds %s, you wrote %s."
constexpr int kReports = 212;      // caption of the list of problems
constexpr int kConflict = 213;     // caption of the question about values that another program changed too
constexpr int kConflictQuestion = 214;
constexpr int kKeepMine = 215;
constexpr int kTakeStored = 216;

constexpr int kMostShown = 6;

// Values come with their quotation marks; those of a row that is gone are empty.
QString conflictLine(const OutsideConflict& conflict) {
    const StoreConflict& values = conflict.values;
    const auto shown = [](const std::string& value) {
        return value.empty() ? translated("nothing") : KorString(value);
    };
    return toQt(KorString::format(Prompts::dsm(kConflictLine),
                                  {conflict.rowName,
                                   values.column ? values.table->columnName(*values.column) : std::string(),
                                   shown(values.stored), shown(values.mine)}));
}

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
    if (static_cast<std::size_t>(errors.size()) < outcome.failed.size())
        readOutsideChanges();
}

void KorDSMMainDialog::readOutsideChanges() {
    const KorDSMBusy busy;
    followOutsideChanges(StyleDatabases::current().refreshChanged());
}

void KorDSMMainDialog::followOutsideChanges(const std::vector<OutsideChange>& changes) {
    if (changes.empty())
        return;
    for (const OutsideChange& change : changes)
        if (!change.error.empty())
            KorHostReport::add(KorString(change.error));
    if (wantsToKeepMine(changes))
        KorDSMCommit::keepMine(changes);
    reloadSections();
    if (StyleDatabases::current().pending().isEmpty())
        m_apply->setEnabled(false);
    else
        setModified(true);
    m_undoStrip->update();
}

bool KorDSMMainDialog::wantsToKeepMine(const std::vector<OutsideChange>& changes) {
    QStringList lines;
    for (const OutsideChange& change : changes)
        for (const OutsideConflict& conflict : change.conflicts)
            lines << conflictLine(conflict);
    if (lines.isEmpty())
        return false;
    QMessageBox box(QMessageBox::Warning, toQt(Prompts::dsm(kConflict)),
                    toQt(Prompts::dsm(kConflictQuestion)), QMessageBox::NoButton, this);
    addLines(box, lines);
    QPushButton* keep = box.addButton(toQt(Prompts::dsm(kKeepMine)), QMessageBox::AcceptRole);
    const QPushButton* take = box.addButton(toQt(Prompts::dsm(kTakeStored)), QMessageBox::RejectRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep); // so that a hasty key loses nothing
    box.exec();
    return box.clickedButton() != take;
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
    QMessageBox box(QMessageBox::Warning, toQt(Prompts::dsm(kReports)), {}, QMessageBox::Ok, this);
    addLines(box, lines);
    box.exec();
}
