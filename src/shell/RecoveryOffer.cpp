#include "shell/RecoveryOffer.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "shell/PendingQuestion.h"

#include <QDateTime>
#include <QLocale>

namespace {

constexpr int kCaption = 426;
constexpr int kChanges = 428; // "The program ended before %d changes were stored, the last ... on %s. ..."
constexpr int kReplaced = 429;
constexpr std::array kButtons = {430, 431, 432};

KorDSMRecovery::eAnswer askAbout(const KorDSMRecovery::Lost& lost, QWidget* parent) {
    const QDateTime time = QDateTime::fromSecsSinceEpoch(lost.time);
    const KorString made = fromQt(QLocale().toString(time, QLocale::ShortFormat));
    const auto number = static_cast<std::int64_t>(lost.steps.size());
    KorString question =
        KorString::format(Prompts::counted(kChanges, number), {KorString::number(number), made});
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
