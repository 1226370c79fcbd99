#include "shell/Reports.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "model/KorDSMBusy.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/ApplyState.h"
#include "shell/StatusLine.h"
#include "shell/TypedText.h"
#include "shell/WindowRefresh.h"

#include <QMessageBox>

#include <optional>

namespace {

constexpr int kNotKept = 210; // caption of the message about changes that could not be kept
constexpr int kReports = 212; // caption of the list of problems

constexpr int kStoredAllTheSame = 1091;

constexpr int kMostShown = 6;

// Shows a few lines in the box, and all of them in its details where there are more.
void addLines(QMessageBox& box, const QStringList& lines) {
    box.setInformativeText(lines.mid(0, kMostShown).join("\n\n"));
    if (lines.size() > kMostShown)
        box.setDetailedText(lines.join("\n\n"));
}

void report(const std::vector<OutsideChange>& changes) {
    for (const OutsideChange& change : changes)
        if (!change.error.empty())
            KorHostReport::add(KorString(change.error));
}

} // namespace

bool Reports::keep(const std::function<KorDSMCommit::Report()>& commit) {
    const KorDSMBusy busy;
    const auto read = [this] {
        return takeOver(KorDSMCommit::isChangedOutside(), &KorDSMCommit::readChanged);
    };
    const KorDSMCommit::Report outcome = KorDSMCommit::readAndKeep(read, commit);
    QStringList errors;
    for (const SourceCommit& failed : outcome.failed)
        errors << QString::fromStdString(failed.error);
    for (const std::string& why : outcome.unread)
        if (errors.isEmpty())
            KorHostReport::add(KorString(why));
        else // of the same event, mostly
            errors << QString::fromStdString(why);
    if (!errors.isEmpty())
        QMessageBox::warning(&m_window, toQt(Prompts::dsm(kNotKept)), errors.join("\n\n"));
    return outcome.ok();
}

std::vector<OutsideChange> Reports::takeOver(bool isChanged, const KorDSMCommit::Read& read) {
    std::optional<TypedText> focus;
    if (isChanged) {
        RightSide::finishEditing(); // what is being typed is a change of what was shown so far
        focus.emplace();
    }
    return settle(read);
}

void Reports::readOutsideChanges() {
    const KorDSMBusy busy;
    report(takeOver(KorDSMCommit::isNoticed(), &KorDSMCommit::readNoticed));
}

bool Reports::readNoticed() {
    if (!KorDSMCommit::isNoticed())
        return true;
    if (!TypedText::canBeKept())
        return false;
    const KorDSMBusy busy;
    std::optional<TypedText> typed; // while it is read the text stays in sight
    follow(&KorDSMCommit::readNoticed, [&typed] {
        if (!typed)
            typed.emplace();
    });
    return true;
}

std::vector<OutsideChange> Reports::follow(const KorDSMCommit::Read& read,
                                           const std::function<void()>& beforeShowing) {
    std::vector<OutsideChange> changes = settle(read, beforeShowing);
    report(changes);
    return changes;
}

std::vector<OutsideChange> Reports::settle(const KorDSMCommit::Read& read,
                                           const std::function<void()>& beforeShowing) {
    std::vector<OutsideChange> changes =
        KorDSMCommit::settle(read, [&](const std::vector<OutsideChange>& conflicting) {
            beforeShowing();
            return KorDSMDialogConflicts::ask(conflicting, &m_window);
        });
    if (changes.empty())
        return changes;
    beforeShowing();
    if (const auto rows = KorDSMCommit::rowsOf(changes))
        m_refresh.follow(*rows, changes);
    else
        m_refresh.reload(changes);
    if (KorDSMUndo::isPending())
        m_applyState.setModified(true);
    m_applyState.update();
    for (const OutsideChange& change : changes)
        if (change.wasStored)
            m_status.say(KorString::format(Prompts::dsm(kStoredAllTheSame),
                                           {KorDSMWhereUsed::sourceName(change.source)}));
    return changes;
}

void Reports::show() {
    m_readProblems.reportNew();
    QStringList lines;
    for (const KorString& sentence : KorHostReport::take())
        lines << toQt(sentence);
    if (lines.isEmpty())
        return;
    QMessageBox box(QMessageBox::Warning, toQt(Prompts::dsm(kReports)), {}, QMessageBox::Ok, &m_window);
    addLines(box, lines);
    box.exec();
}
