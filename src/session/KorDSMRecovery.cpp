#include "session/KorDSMRecovery.h"

#include "base/Translation.h"
#include "data/pending/RecoveryWriter.h"
#include "data/store/DatabaseName.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/Prompts.h"
#include "session/KorDSMUndo.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

constexpr int kMissing = 434;

std::filesystem::path folder() {
    const KorString& chosen = KorDSMDialogFactory::options().recoveryFolder;
    return chosen.isEmpty() ? KOSettings::getInstance().file().parent_path()
                            : std::filesystem::path(chosen.toStdString());
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
        if (!isServerName(database) && !std::filesystem::exists(database, ignored))
            KorHostReport::add(KorString::format(
                translated(
                    "The file \"%s\" has changes of the database \"%s\", which is not there any more; put "
                    "the database back, or delete the file."),
                {lost.file().string(), database}));
}

// What could not be brought back is shown. The file stays until what it held is written down anew.
void bringBack(std::unique_ptr<RecoveryFile> lost, const KorDSMRecovery::Follow& follow) {
    const KorDSMBusy busy;
    const std::vector<std::string> missing = lost->missing();
    bool isBack = false;
    const auto read = [&] {
        StyleDatabases& databases = StyleDatabases::current();
        std::vector<OutsideChange> changes = databases.bringBack(lost->changes());
        isBack = std::ranges::all_of(changes, &std::string::empty, &OutsideChange::error);
        if (isBack)
            databases.pending().takeOver(std::move(lost));
        return changes;
    };
    follow({read, &lost->changes()});
    for (std::size_t i = 0; isBack && i < missing.size(); ++i)
        KorHostReport::add(KorString::format(Prompts::dsm(kMissing), {missing[i]}));
}

} // namespace

void KorDSMRecovery::writeDown(std::function<void()> reportWaits) {
    PendingLog& pending = StyleDatabases::current().pending();
    if (!KorDSMDialogFactory::options().recoversChanges)
        pending.dismissObserver();
    else if (!pending.isObserved() && !folder().empty())
        pending.setObserver(std::make_unique<RecoveryWriter>(
            folder(), StyleDatabases::current(),
            [reportWaits = std::move(reportWaits)](const KorString& sentence) {
                KorHostReport::add(sentence);
                reportWaits();
            }));
}

void KorDSMRecovery::offer(const Ask& ask, const Follow& follow) {
    if (!KorDSMDialogFactory::options().recoversChanges || std::exchange(m_offered, true))
        return;
    for (RecoveryFile& lost : RecoveryFile::abandonedIn(folder()))
        offer(std::move(lost), ask, follow);
}

void KorDSMRecovery::offer(RecoveryFile lost, const Ask& ask, const Follow& follow) {
    if (const Result<> result = lost.read(StyleDatabases::current()); !result) {
        KorHostReport::add(KorString(result.error));
        return;
    }
    if (lost.isCutOff())
        KorHostReport::add(KorString::format(
            translated("The file \"%s\" with the changes of an earlier run breaks off in the middle of a "
                       "change, so that one is lost; look whether it is to be made again."),
            {lost.file().string()}));
    if (lost.changes().isEmpty()) {
        if (lost.missing().empty())
            lost.settle();
        else
            tellOfMissing(lost);
    } else {
        const eAnswer answer =
            ask({KorDSMUndo::stepsOf(lost.changes(), std::numeric_limits<std::size_t>::max()), lost.time(),
                 lost.replaced()});
        if (answer == eAnswer::kNever)
            lost.settle();
        else if (answer == eAnswer::kYes)
            bringBack(std::make_unique<RecoveryFile>(std::move(lost)), follow);
    }
}
