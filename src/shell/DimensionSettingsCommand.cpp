#include "shell/DimensionSettingsCommand.h"

#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogDimensionSettings.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMItemSource.h"
#include "shell/CommandHelp.h"
#include "shell/CommandStrip.h"
#include "shell/TreeSelection.h"

#include <QMenu>

namespace {

constexpr int kLookAt = 812; // "Dimension settings..."

// A section lies in no source; its settings are one's own.
SourceId sourceOf(const KorDSMDatabaseItem* item) {
    const SourceId source = KorDSMItemSource::sourceOf(item);
    return source.dsn == KorDSNDefinitions::kLast ? SourceId::user() : source;
}

} // namespace

DimensionSettingsCommand::DimensionSettingsCommand(QWidget& window, TreeSelection& selection,
                                                   RightSide& rightSide, CommandStrip& strip)
    : m_window(window), m_selection(selection), m_rightSide(rightSide) {
    strip.on(eItemCommand::kDimensionSettings, [this] { open(sourceOf(m_selection.subject())); });
}

void DimensionSettingsCommand::addTo(QMenu& menu, KorDSMDatabaseItem& item) {
    if (KorDSMItemCommands::whyNotWritable(item).isEmpty())
        return;
    CommandStrip::leaveOut(menu, eItemCommand::kDimensionSettings);
    CommandHelp::set(
        menu.addAction(toQt(Prompts::dsm(kLookAt)), this, [this, &item] { open(sourceOf(&item)); }), kLookAt);
}

void DimensionSettingsCommand::open(SourceId source) {
    RightSide::finishEditing();
    KorDSMDialogDimensionSettings dialog(source, &m_window);
    if (dialog.exec() != QDialog::Accepted || !dialog.isStored())
        return;
    // Scales and text sizes are in lists, and lengths may have another unit.
    m_rightSide.pages().requestInit();
    m_rightSide.leavePage();
    m_rightSide.resume();
}
