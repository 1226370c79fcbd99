#include "model/KorDSMSectionLoader.h"

#include "model/KorDSMBusy.h"
#include "model/KorDSMItemPlacing.h"
#include "model/KorDSMMessages.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "services/Prompts.h"

// The part of the loader that serves the three families that are filed in groups: their groups are read when
// the editor opens, their records when the add-in is opened for the first time.

namespace {

template <typename GroupItem>
void loadGroups(KorDSMDatabaseItem& addIn) {
    KorArray<typename GroupItem::Record> groups;
    KorODBCGroup<typename GroupItem::Record>::getList(groups);
    KorDSMItemPlacing::Filling<GroupItem> filling(addIn);
    for (const auto& group : groups)
        filling.place(group);
}

void sendProgress(DsmProgress::eState state, int percent, const KorString& text = {}) {
    DsmProgress message;
    message.state = state;
    message.percent = percent;
    message.text = text;
    KorDSMMainWindow::sendMessage(message);
}

template <typename GroupItem, typename Item>
void placeRecord(KorDSMItemPlacing::Filling<GroupItem>& filling, const KorString& name) {
    typename Item::Record record;
    typename GroupItem::Record group;
    if (StyleReads::read(name, record) != 1 || StyleReads::read(KorOdbcKey(record.getGroup()), group) != 1)
        return;
    auto* item = new Item;
    item->initRecord(record);
    if constexpr (requires { item->m_AnnotationType; })
        KorOdbcGUI::getDetAnnotationType(KorOdbcKey(record.annotationTypeKey), item->m_AnnotationType);
    filling.place(group).addChild(item);
}

template <typename GroupItem, typename Item>
void expand(KorDSMDatabaseItem& addIn) {
    if (addIn.m_bExpanded)
        return;
    const KorDSMBusy busy;
    KorArray<KorString> names;
    StyleReads::names<typename Item::Record>(names);
    const KorString text = KorString::format("%s %s", {Prompts::ups(21034), Prompts::ups(21002)});
    sendProgress(DsmProgress::kStart, 0);
    int shown = -1;
    KorDSMItemPlacing::Filling<GroupItem> filling(addIn);
    for (int i = 0; i < names.length(); ++i) {
        const int percent = i * 100 / names.length();
        if (percent != shown)
            sendProgress(DsmProgress::kStep, shown = percent, text);
        placeRecord<GroupItem, Item>(filling, names[i]);
    }
    sendProgress(DsmProgress::kDone, 100);
    addIn.m_bExpanded = true;
}

} // namespace

void KorDSMSectionLoader::loadAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn) {
    loadGroups<KorDsmAnnotationGroupItem>(*addIn);
}

void KorDSMSectionLoader::loadDimRequestAddInContent(KorDsmDimRequestsAddInItem* addIn) {
    loadGroups<KorDsmDimRequestGroupItem>(*addIn);
}

void KorDSMSectionLoader::loadQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn) {
    loadGroups<KorDsmQualifierSetGroupItem>(*addIn);
}

void KorDSMSectionLoader::expandAnnotationsAddInContent(KorDsmAnnotationsAddInItem* addIn) {
    expand<KorDsmAnnotationGroupItem, KorDsmAnnotationStrategyItem>(*addIn);
}

void KorDSMSectionLoader::expandDimRequestsAddInContent(KorDsmDimRequestsAddInItem* addIn) {
    expand<KorDsmDimRequestGroupItem, KorDsmDimRequestItem>(*addIn);
}

void KorDSMSectionLoader::expandQualifiersAddInContent(KorDsmQualifierSetsAddInItem* addIn) {
    expand<KorDsmQualifierSetGroupItem, KorDsmQualifierSetItem>(*addIn);
}
