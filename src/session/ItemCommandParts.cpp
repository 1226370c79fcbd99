#include "session/ItemCommandParts.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMSectionLoader.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorOdbcGUI.h"
#include "services/Prompts.h"
#include "session/KorDSMItemKinds.h"
#include "session/KorDSMValueText.h"

namespace ItemCommandParts {

namespace {

constexpr int kTaken = 231;      // "There is one of this name already."
constexpr int kNameNeeded = 232; // "A name is needed."

} // namespace

KorString label(int number, const KorString& name) {
    return KorString::format(Prompts::dsm(number), {KorDSMValueText::shortName(name)});
}

KorString whyIncomplete() {
    return StyleDatabases::current().here()->complete().error;
}

KorString whyFull(eTableType table) {
    return StyleDatabases::current().here()->whyFull(table);
}

KorString whyNotNamed(const KorDSMDatabaseItem& item, const KorString& name, std::int32_t exceptKey) {
    if (KorString readOnly = KorDSMItemCommands::whyNotWritable(item); !readOnly.isEmpty())
        return readOnly;
    if (name.isEmpty())
        return Prompts::dsm(kNameNeeded);
    const StructRecord* present = StyleDatabases::current().here()->table(item.tableType()).find(name);
    return present && present->key != exceptKey ? Prompts::dsm(kTaken) : KorString();
}

KorDSMItemCommands::ListNotice noticeFor(const KorDSMDatabaseItem& item, int action) {
    const KorDSMItemKind* kind = findItemKind(item.m_Type);
    if (!kind || kind->listedBy.empty())
        return {};
    const Column& filing = *filingColumn(item.tableType());
    const StructRecord* group = StyleDatabases::current()
                                    .here()
                                    ->table(filing.target)
                                    .find(KorOdbcKey(filing.integerIn(item.record())));
    return {item.m_Type, action, group ? group->name : KorString(), item.record()->name, kind->listedBy};
}

void loadBesideRecord(KorDSMDatabaseItem& item) {
    if (auto* style = dynamic_cast<KorDsmDetailStyleItem*>(&item))
        KorDSMSectionLoader::loadDetailStylesDependencies(style);
    else if (auto* annotation = dynamic_cast<KorDsmAnnotationStrategyItem*>(&item))
        KorOdbcGUI::getDetAnnotationType(KorOdbcKey(annotation->getRecord().annotationTypeKey),
                                         annotation->m_AnnotationType);
}

} // namespace ItemCommandParts
