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

#include <algorithm>
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

} // namespace

void Reports::tell(const KorDSMCommit::Report& outcome) {
    QStringList errors;
    for (const SourceCommit& commit : outcome.failed)
        if (commit.conflicts.empty())
            errors << QString::fromStdString(commit.error);
    if (!errors.isEmpty())
        QMessageBox::warning(&m_window, toQt(Prompts::dsm(kNotKept)), errors.join("\n\n"));
    // What another program stored meanwhile is read, and asked about.
    readOutsideChanges();
}

bool Reports::readOutsideChanges(eLook look) {
    const KorDSMBusy busy;
    const bool asks = look == eLook::kAsk;
    if (asks ? KorDSMCommit::isChangedOutside() : KorDSMCommit::isNoticed())
        RightSide::finishEditing(); // what is being typed is a change of what was shown so far
    const std::vector<OutsideChange> changes =
        follow(asks ? &KorDSMCommit::readChanged : &KorDSMCommit::readNoticed);
    return std::ranges::all_of(changes, [](const OutsideChange& change) { return change.conflicts.empty(); });
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
    std::vector<OutsideChange> changes =
        KorDSMCommit::settle(read, [&](const std::vector<OutsideChange>& conflicting) {
            beforeShowing();
            return KorDSMDialogConflicts::ask(conflicting, &m_window);
        });
    if (changes.empty())
        return changes;
    beforeShowing();
    for (const OutsideChange& change : changes)
        if (!change.error.empty())
            KorHostReport::add(KorString(change.error));
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
