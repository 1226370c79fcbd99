#include "dialogs/NewRecordQuestion.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "services/Prompts.h"
#include "session/KorDSMItemWords.h"
#include "session/KorDSMRecordCommands.h"

#include <QMessageBox>

namespace {

KorString askName(int itemType, bool proposes, QWidget* parent) {
    KorDSMDialogNewItem dialog(itemType, {}, proposes, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.name() : KorString();
}

bool makeFirstGroup(eTableType groups, SourceId source, QWidget* parent) {
    constexpr int kFirst = 833;
    KorDSMDialogNewItem dialog(KorDSMRecordCommands::itemTypeOf(groups), {}, false, parent);
    dialog.introduce(Prompts::dsm(kFirst));
    const KorString name = dialog.exec() == QDialog::Accepted ? dialog.name() : KorString();
    if (name.isEmpty())
        return false;
    const KorDSMRecordCommands::Outcome outcome = KorDSMRecordCommands::create(source, groups, name, 0);
    if (outcome.isFailed())
        QMessageBox::information(parent, parent->window()->windowTitle(),
                                 QString::fromStdString(outcome.error));
    return outcome.isStored();
}

} // namespace

std::optional<NewRecord> askForNewRecord(eTableType table, SourceId source, QWidget* parent) {
    const int type = KorDSMRecordCommands::itemTypeOf(table);
    const eTableType groups = KorDSMRecordCommands::groupsOf(table);
    if (groups == kNoTable) {
        const KorString name = askName(type, true, parent);
        return name.isEmpty() ? std::nullopt : std::optional(NewRecord{name});
    }
    const std::optional<KorDSMFiledNaming> naming = KorDSMFiledNaming::of(type, {});
    if (naming && naming->groups.empty() && !makeFirstGroup(groups, source, parent))
        return std::nullopt;
    KorDSMDialogNewItemWithGroup dialog(type, {}, {}, parent);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return std::nullopt;
    return NewRecord{dialog.name(), dialog.groupKey()};
}
