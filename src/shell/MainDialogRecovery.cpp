#include "base/Translation.h"
#include "data/pending/RecoveryFile.h"
#include "data/pending/RecoveryWriter.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/PendingQuestion.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QTimer>

#include <limits>

// Changes that were pending when the program crashed or was killed: written down beside the settings as they
// are made, and offered at the next start.

namespace {

constexpr int kCaption = 426;
constexpr int kOneChange = 427; // "The program ended before a change made on %s was stored. ..."
constexpr int kChanges = 428;   // "The program ended before %d changes were stored, the last ... on %s. ..."
constexpr int kReplaced = 429;
constexpr std::array kButtons = {430, 431, 432};
constexpr int kStep = 433; // what the undo menu calls it
constexpr int kMissing = 434;

enum class eAnswer { kYes, kNever, kNotYet };

std::filesystem::path recoveryFolder() {
    const KorString& chosen = KorDSMDialogFactory::recoveryFolder;
    return chosen.isEmpty() ? KOSettings::getInstance().file().parent_path()
                            : std::filesystem::path(chosen.toStdString());
}

eAnswer askAbout(RecoveryFile& lost, QWidget* parent) {
    const std::vector<KorString> steps =
        KorDSMUndo::stepsOf(lost.changes(), std::numeric_limits<std::size_t>::max());
    const QDateTime time = QDateTime::fromSecsSinceEpoch(lost.time());
    const KorString made(QLocale().toString(time, QLocale::ShortFormat).toStdString());
    const KorString number = KorString::number(static_cast<std::int64_t>(steps.size()));
    KorString question = steps.size() == 1 ? KorString::format(Prompts::dsm(kOneChange), {made})
                                           : KorString::format(Prompts::dsm(kChanges), {number, made});
    for (const std::string& file : lost.replaced())
        question = question + KorString("\n\n") + KorString::format(Prompts::dsm(kReplaced), {file});
    return static_cast<eAnswer>(askAboutChanges(parent, Prompts::dsm(kCaption), question, steps, kButtons));
}

// Those of another data folder wait until that is open.
void tellOfMissing(const RecoveryFile& lost) {
    std::error_code ignored;
    for (const std::string& database : lost.readOnly())
        KorHostReport::add(KorString::format(
            translated(
                "The file \"%s\" has changes of the database \"%s\", which can only be read now; start "
                "the editor again when you may change the database, or delete the file."),
            {lost.file().string(), database}));
    for (const std::string& database : lost.missing())
        if (!std::filesystem::exists(database, ignored))
            KorHostReport::add(KorString::format(
                translated(
                    "The file \"%s\" has changes of the database \"%s\", which is not there any more; put "
                    "the database back, or delete the file."),
                {lost.file().string(), database}));
}

} // namespace

void KorDSMMainDialog::writeRecovery() {
    PendingLog& pending = StyleDatabases::current().pending();
    if (!KorDSMDialogFactory::recoversChanges)
        pending.dismissObserver();
    else if (!pending.isObserved() && !recoveryFolder().empty())
        pending.setObserver(std::make_unique<RecoveryWriter>(recoveryFolder(), StyleDatabases::current(),
                                                             [](const KorString& sentence) {
                                                                 KorHostReport::add(sentence);
                                                                 showReportsSoon();
                                                             }));
}

// Whoever wrote down what is pending may outlive this window.
void KorDSMMainDialog::showReportsSoon() {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* window = qobject_cast<KorDSMMainDialog*>(widget); window && window->isVisible())
            return QTimer::singleShot(0, window, window->waiting(&KorDSMMainDialog::showReports));
}

void KorDSMMainDialog::offerRecovery() {
    if (!KorDSMDialogFactory::recoversChanges || std::exchange(m_offeredRecovery, true))
        return;
    for (RecoveryFile& lost : RecoveryFile::abandonedIn(recoveryFolder())) {
        if (const StoreResult result = lost.read(StyleDatabases::current()); !result) {
            KorHostReport::add(KorString(result.error));
        } else if (lost.changes().isEmpty()) {
            if (lost.missing().empty())
                lost.settle();
            else
                tellOfMissing(lost);
        } else {
            const eAnswer answer = askAbout(lost, this);
            if (answer == eAnswer::kNever)
                lost.settle();
            else if (answer == eAnswer::kYes && bringBack(lost))
                m_broughtBack.push_back(std::move(lost));
        }
    }
    settleBroughtBack();
}

// What was brought back may be nowhere else yet.
void KorDSMMainDialog::settleBroughtBack() {
    if (!StyleDatabases::current().pending().isSafe())
        return;
    for (RecoveryFile& lost : m_broughtBack)
        lost.settle();
    m_broughtBack.clear();
}

bool KorDSMMainDialog::bringBack(RecoveryFile& lost) {
    const KorDSMBusy busy;
    const std::vector<OutsideChange> changes = followOutsideChanges(
        [&lost] { return StyleDatabases::current().bringBack(lost.changes(), Prompts::dsm(kStep)); });
    if (!std::ranges::all_of(changes, [](const OutsideChange& change) { return change.error.empty(); }))
        return false;
    for (const std::string& file : lost.missing())
        KorHostReport::add(KorString::format(Prompts::dsm(kMissing), {file}));
    return true;
}
