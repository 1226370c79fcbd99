#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "model/KorDSMDialogFactory.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMRequestItems.h"
#include "session/KorDSMUndo.h"
#include "session/KorDSMValueText.h"
#include "shell/DeletionQuestion.h"
#include "shell/KorDSMViewRequestDialog.h"
#include "shell/Refusal.h"

#include <QLineEdit>
#include <QMessageBox>

// What the view request dialog does to view requests, and how that is stored.

using namespace KorDSMDefines;

namespace {

constexpr int kNotKept = 210; // caption of the message about changes that could not be kept
constexpr const char* kHelpTopic = "_KorDSMViewRequestDialog";

RowRef rowOf(const KorDSMDatabaseItem& request) {
    return {kTableViewRequest, request.recordKey()};
}

} // namespace

void KorDSMViewRequestDialog::act(int action) {
    switch (action) {
    case kNew:
        return makeNew();
    case kRename:
        return rename();
    case kDelete:
        return remove();
    default:
        CKorHelp::showTopic(kHelpTopic);
    }
}

void KorDSMViewRequestDialog::makeNew() {
    const KorDSMDatabaseItem* request = chosenRequest();
    const SourceId source = KorDSMItemSource::sourceOf(selectedItem());
    KorDSMDialogNewItem dialog(kViewRequest, request ? request->getDisplayName() : KorString(), true, this);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const auto outcome = request
                             ? KorDSMRecordCommands::copy(source, rowOf(*request), dialog.name())
                             : KorDSMRecordCommands::create(source, kTableViewRequest, dialog.name(),
                                                            KorDSMRequestItems::categoryOf(*selectedItem()));
    if (!outcome.isStored())
        return tellFailure(this, outcome);
    readAgain(source, outcome.row.key);
}

void KorDSMViewRequestDialog::rename() {
    const KorDSMDatabaseItem* request = chosenRequest();
    if (!request)
        return;
    const SourceId source = KorDSMItemSource::sourceOf(request);
    KorDSMDialogNewItem dialog(kViewRequest, request->getDisplayName(), false, this);
    if (dialog.exec() != QDialog::Accepted || dialog.name().isEmpty())
        return;
    const auto outcome = KorDSMRecordCommands::rename(source, rowOf(*request), dialog.name());
    if (outcome.isFailed())
        return tellFailure(this, outcome);
    if (outcome == WriteResult::kWritten)
        readAgain(source, outcome.row.key);
}

std::optional<std::vector<RowRef>>
KorDSMViewRequestDialog::agreesToRemove(const KorDSMDatabaseItem& request) {
    const KorString name = KorDSMValueText::shortName(request.getDisplayName());
    QMessageBox box(QMessageBox::Information, toQt(Prompts::ups(19960)),
                    toQt(KorString::format(Prompts::ups(19961), {name})), QMessageBox::Yes | QMessageBox::No,
                    this);
    box.setTextFormat(Qt::PlainText);
    return askToDelete(box, KorDSMItemSource::sourceOf(&request), {rowOf(request)});
}

void KorDSMViewRequestDialog::remove() {
    const KorDSMDatabaseItem* request = chosenRequest();
    if (!request)
        return;
    const SourceId source = KorDSMItemSource::sourceOf(request);
    const auto users = KorDSMWhereUsed::usagesOf(source, rowOf(*request));
    if (!users.empty()) {
        KorDSMDialogInUse(KorDSMItemCommands::inUseText(), users, this).exec();
        return;
    }
    const auto also = agreesToRemove(*request);
    if (!also)
        return;
    const auto outcome = KorDSMRecordCommands::remove(source, {rowOf(*request)},
                                                      KorDSMRecordCommands::eFiled::kForbids, *also);
    if (!outcome.isStored())
        return tellFailure(this, outcome);
    readAgain(source, 0);
}

// Selects the request with this key; without one the source, whose items are new.
void KorDSMViewRequestDialog::readAgain(SourceId source, std::int32_t key) {
    for (KorDSMDatabaseItem* each : m_root.children()) {
        if (KorDSMItemSource::sourceOf(each) != source)
            continue;
        m_rightSide.letGo();
        auto& node = static_cast<KorDsmAddInRequestItem&>(*each);
        m_tree.fillAgain(node, [&node] { KorDSMRequestItems::fill(node); });
        m_rightSide.pages().requestInit();
        m_tree.control()->selectItem(nullptr);
        if (!m_filter.text().isEmpty())
            filter();
        KorDSMDatabaseItem* request = KorDSMRequestItems::find(m_root, source, key);
        select(request ? request : &node);
    }
}

// What was done here is stored, unless it joins changes that an editor has not stored yet.
bool KorDSMViewRequestDialog::store() {
    if (KorDSMUndo::stepCount() == m_stepsBefore)
        return true;
    KorDSMDialogFactory::getDSMDataStructure().setUpdateStatus(KorDSMDataStructure::kReloadRequested);
    if (m_stepsBefore > 0)
        return true;
    const SourceId source = m_source.selected();
    std::int32_t key = chosenRequest()->recordKey();
    const auto ask = [this](const std::vector<OutsideChange>& conflicts) {
        return KorDSMDialogConflicts::ask(conflicts, this);
    };
    const auto read = [&] {
        std::vector<OutsideChange> changes = KorDSMCommit::settle(&KorDSMCommit::readChanged, ask);
        for (const OutsideChange& change : changes)
            if (const auto now = change.newKeys.find({kTableViewRequest, key});
                change.source == source && now != change.newKeys.end())
                key = now->second;
        if (!changes.empty())
            readAgain(source, key);
        return changes;
    };
    KorDSMCommit::Report outcome;
    do // what was decided is kept
        outcome = KorDSMCommit::readAndKeep(read, &KorDSMCommit::keepAndGoOn);
    while (outcome.isAsked);
    QStringList errors;
    for (const SourceCommit& commit : outcome.failed)
        errors << QString::fromStdString(commit.error);
    if (!errors.isEmpty())
        QMessageBox::warning(this, toQt(Prompts::dsm(kNotKept)), errors.join("\n\n"));
    const KorDSMDatabaseItem* request = chosenRequest();
    return outcome.ok() && request && request->recordKey() == key;
}
