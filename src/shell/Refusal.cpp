#include "shell/Refusal.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"

#include <QMessageBox>

namespace {

constexpr int kCaption = 260;
constexpr int kNotDone = 412; // "That could not be done, ..."

} // namespace

void refuse(QWidget* window, const KorString& reason) {
    QMessageBox::information(window, toQt(Prompts::dsm(kCaption)),
                             toQt(reason.isEmpty() ? Prompts::dsm(kNotDone) : reason));
}

void tellFailure(QWidget* window, const WriteResult& result) {
    if (result.isFailed())
        refuse(window, KorString(result.error));
}

bool refusesToWrite(QWidget* window, const KorDSMDatabaseItem& item) {
    const KorString reason = KorDSMItemCommands::whyNotWritable(item);
    if (!reason.isEmpty())
        refuse(window, reason);
    return !reason.isEmpty();
}
