#include "model/KorDSMSectionLoader.h"

#include "model/KorDSMBusy.h"
#include "model/KorDSMItemPlacing.h"
#include "model/KorDSMMessages.h"
#include "operations/CurrentRows.h"
#include "operations/StyleReads.h"
#include "services/Prompts.h"

// The part of the loader that serves the families that are filed in groups: their groups are read when the
// editor opens, their records when the add-in is opened for the first time.

namespace {

const KorDSMFamily& familyIn(const KorDsmAddInContentItem& addIn) {
    return *KorDSMFamilies::of(addIn.section()->family);
}

const KorDSMFamily& groupsIn(const KorDsmAddInContentItem& addIn) {
    return *KorDSMFamilies::of(familyIn(addIn).group);
}

void sendProgress(DsmProgress::eState state, int percent, const KorString& text = {}) {
    DsmProgress message;
    message.state = state;
    message.percent = percent;
    message.text = text;
    KorDSMMainWindow::sendMessage(message);
}

void placeRecord(KorDSMItemPlacing::Filling& filling, const KorDSMFamily& family, const Column& filing,
                 const KorString& name) {
    const StructRecord* record = CurrentRows::find(family.table, name);
    if (!record)
        return;
    const StructRecord* group = CurrentRows::find(filing.target, KorOdbcKey(filing.integerIn(record)));
    if (group)
        filling.place(*group).addChild(KorDSMFamilies::makeItem(family, *record));
}

} // namespace

void KorDSMSectionLoader::loadGroups(KorDsmAddInContentItem& addIn) {
    const KorDSMFamily& groups = groupsIn(addIn);
    KorDSMItemPlacing::Filling filling(addIn, groups);
    const RowArray* rows = CurrentRows::all(groups.table);
    for (int i = 0; rows && i < rows->size(); ++i)
        filling.place(rows->at(i));
}

void KorDSMSectionLoader::expandAddInContent(KorDsmAddInContentItem& addIn) {
    if (addIn.isExpanded() || !addIn.section())
        return;
    const KorDSMBusy busy;
    const KorDSMFamily& family = familyIn(addIn);
    const Column& filing = *KorDSMFamilies::filingColumn(family.table);
    KorArray<KorString> names;
    StyleReads::names(family.table, names);
    const KorString text = KorString::format("%s %s", {Prompts::ups(21034), Prompts::ups(21002)});
    sendProgress(DsmProgress::kStart, 0);
    int shown = -1;
    KorDSMItemPlacing::Filling filling(addIn, groupsIn(addIn));
    for (int i = 0; i < names.length(); ++i) {
        const int percent = i * 100 / names.length();
        if (percent != shown)
            sendProgress(DsmProgress::kStep, shown = percent, text);
        placeRecord(filling, family, filing, names[i]);
    }
    sendProgress(DsmProgress::kDone, 100);
    addIn.setExpanded();
}
