#include "shell/RecoveryOffer.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "shell/PendingQuestion.h"

#include <QDateTime>
#include <QLocale>

namespace {

constexpr int kCaption = 426;
constexpr int kOneChange = 427; // "The program ended before a change made on %s was stored. ..."
constexpr int kChanges = 428;   // "The program ended before %d changes were stored, the last ... on %s. ..."
constexpr int kReplaced = 429;
constexpr std::array kButtons = {430, 431, 432};

KorDSMRecovery::eAnswer askAbout(const KorDSMRecovery::Lost& lost, QWidget* parent) {
    const QDateTime time = QDateTime::fromSecsSinceEpoch(lost.time);
    const KorString made = fromQt(QLocale().toString(time, QLocale::ShortFormat));
    const KorString number = KorString::number(static_cast<std::int64_t>(lost.steps.size()));
    KorString question = lost.steps.size() == 1 ? KorString::format(Prompts::dsm(kOneChange), {made})
                                                : KorString::format(Prompts::dsm(kChanges), {number, made});
    for (const std::string& file : lost.replaced)
        question = question + KorString("\n\n") + KorString::format(Prompts::dsm(kReplaced), {file});
    return static_cast<KorDSMRecovery::eAnswer>(
        askAboutChanges(parent, Prompts::dsm(kCaption), question, lost.steps, kButtons));
}

} // namespace

void RecoveryOffer::look() {
    m_recovery.offer([this](const KorDSMRecovery::Lost& lost) { return askAbout(lost, &m_window); },
                     m_follow);
}
