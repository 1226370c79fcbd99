#include "model/KorDSMSectionLoader.h"

#include "model/KorDSMBusy.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMItemPlacing.h"
#include "model/KorProgressCtrl.h"
#include "operations/KorDSNManager.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"
#include "services/AddInManager.h"
#include "services/Prompts.h"

void KorDSMSectionLoader::loadDataStructure(KorDSMDataStructure& structure) {
    const KorDSMBusy busy;
    structure.deleteAddedItems();
    if (KorOdbcMan::m_DSMNewReloadInfo != 0) {
        KorOdbcMan::m_DSMNewReloadInfo = 0;
        structure.setUpdateStatus(KorDSMDataStructure::kReloadRequested);
    }
    if (structure.getUpdateStatus() == KorDSMDataStructure::kUpToDate ||
        structure.getUpdateStatus() == KorDSMDataStructure::kKeepContent)
        return;
    structure.emptyDataStructure();
    StartProgressBar();
    for (const KorDSMDefines::eViewSections section : KorDSMDefines::kLoadingOrder)
        loadSectionData(structure, section);
    structure.setUpdateStatus(KorDSMDataStructure::kUpToDate);
    KorProgressCtrl::reset();
}

namespace {

// Every source that sections are made of, in the order of loading, with the add-in it belongs to.
struct LoadedSource {
    SourceId id;
    KorAddInId addIn; // number -1 for Standard and User
};

KorArray<LoadedSource> standardSideSources() {
    KorArray<LoadedSource> sources{{SourceId::standard(), {}}};
    KorArray<KorAddInId> addIns;
    AddInManagerInterface::getInstance().getInstalledAddIns(addIns);
    for (const KorAddInId& addIn : addIns)
        sources.append(
            {{KorDSNDefinitions::kAddIn, KorDSNManager::getInstance().getAddInIdx(addIn.number)}, addIn});
    return sources;
}

KorString addInName(const KorAddInId& addIn) {
    const auto info = AddInManagerInterface::getInstance().getInstalledCountryAddInInfo(addIn);
    return info.isValid() ? info.name : KorString();
}

} // namespace

void KorDSMSectionLoader::StartProgressBar() {
    KorProgressCtrl::setPercentage(0, 0);
    KorProgressCtrl::activate(KorString::format("%s %s", {Prompts::ups(21034), Prompts::ups(21001)}));
    m_Total = 0;
    m_Done = 0;
    KorArray<LoadedSource> sources = standardSideSources();
    sources.append({SourceId::user(), {}});
    for (const LoadedSource& source : sources) {
        if (source.addIn.number >= 0)
            KorOdbcGUI::switchKordoDetailsCurrent(source.addIn);
        const KorDSNRequest request(source.id.dsn, source.id.index);
        KorArray<KorString> names;
        m_Total += std::max(0, KorODBCDetStyle::getDetailStyleList(names));
    }
}

void KorDSMSectionLoader::loadSectionData(KorDSMDataStructure& structure, int section) {
    auto* standard = new KorDsmDatabaseContentItem;
    standard->m_IconIndex = KorDSMDefines::kIconHost;
    standard->m_Database = KorDSNDefinitions::kStandard;
    standard->m_Name = Prompts::ups(21021);
    if (KorDSMDefines::m_GlobalIcons.isEmpty())
        KorDSMDefines::loadGlobalIcons();
    for (const LoadedSource& source : standardSideSources()) {
        const bool isAddIn = source.addIn.number >= 0;
        if (isAddIn)
            KorOdbcGUI::switchKordoDetailsCurrent(source.addIn);
        const KorDSNRequest request(source.id.dsn, source.id.index);
        KorDsmAddInContentItem* item =
            loadAddIn(section, source.id.index, isAddIn ? addInName(source.addIn) : Prompts::ups(21023));
        item->m_Image = isAddIn ? AddInManager::getInstance().getAddIn(source.addIn).getIcon()
                                : KorDSMDefines::m_GlobalIcons[KorDSMDefines::kIconInstallation].file;
        standard->addChild(item);
    }

    auto* user = new KorDsmDatabaseContentItem;
    user->m_IconIndex = 6;
    user->m_Database = KorDSNDefinitions::kUser;
    user->m_Name = Prompts::ups(21022);
    {
        const KorDSNRequest request(KorDSNDefinitions::kUser, KorDSNDefinitions::kUserIndex);
        user->addChild(loadAddIn(section, KorDSNDefinitions::kUserIndex, Prompts::ups(21022)));
    }

    KorDsmSectionItem& node = *structure.getSection(static_cast<KorDSMDefines::eViewSections>(section));
    node.addChild(standard);
    node.addChild(user);
}

KorDsmAddInContentItem* KorDSMSectionLoader::loadAddIn(int section, eIndex index, const KorString& name) {
    KorDsmAddInContentItem* item = nullptr;
    switch (section) {
    case KorDSMDefines::kViewQualifiers:
        loadQualifiersAddInContent(
            static_cast<KorDsmQualifierSetsAddInItem*>(item = new KorDsmQualifierSetsAddInItem));
        break;
    case KorDSMDefines::kViewAnnotations:
        loadAnnotationsAddInContent(
            static_cast<KorDsmAnnotationsAddInItem*>(item = new KorDsmAnnotationsAddInItem));
        break;
    case KorDSMDefines::kViewDimRequests:
        loadDimRequestAddInContent(
            static_cast<KorDsmDimRequestsAddInItem*>(item = new KorDsmDimRequestsAddInItem));
        break;
    default:
        loadDetailStylesAddInContent(
            static_cast<KorDsmDetailStylesAddInItem*>(item = new KorDsmDetailStylesAddInItem));
        break;
    }
    item->m_AddInIndex = index;
    item->m_Name = name;
    return item;
}

namespace {

// The master of each style by the style's key: the first one where several name it.
std::unordered_map<std::int32_t, const StructDetailMaster*> mastersByStyle() {
    std::unordered_map<std::int32_t, const StructDetailMaster*> masters;
    const RowArray* rows = StyleReads::rows<StructDetailMaster>();
    masters.reserve(rows ? static_cast<std::size_t>(rows->size()) : 0);
    for (int i = 0; rows && i < rows->size(); ++i) {
        const auto& master = static_cast<const StructDetailMaster&>(rows->at(i));
        masters.try_emplace(master.styleKey, &master);
    }
    return masters;
}

} // namespace

void KorDSMSectionLoader::loadDetailStylesAddInContent(KorDsmDetailStylesAddInItem* addIn) {
    const auto masters = mastersByStyle();
    CategoryItems filling(*addIn);
    const RowArray* rows = StyleReads::rows<StructDetailStyle>();
    for (int i = 0; rows && i < rows->size(); ++i) {
        ++m_Done;
        const int percent = m_Total > 0 ? m_Done * 100 / m_Total : 100;
        KorProgressCtrl::setPercentage(percent - 1, 1);
        KorProgressCtrl::setPercentage(percent, 0);
        const auto& style = static_cast<const StructDetailStyle&>(rows->at(i));
        if (const auto master = masters.find(style.key); master != masters.end())
            loadDetailStyle(style, master->second->categoryKey, filling);
    }
    KorArray<StructDetBaseCategory> categories;
    KorOdbcGUI::getDetBaseCategoriesTable(categories);
    for (const StructDetBaseCategory& category : categories)
        filling.place(category);
}

void KorDSMSectionLoader::loadDetailStyle(const StructDetailStyle& style, std::int32_t categoryKey,
                                          CategoryItems& categories) {
    const auto* category = StyleReads::find<StructDetBaseCategory>(KorOdbcKey(categoryKey));
    if (!category)
        return;
    auto* item = new KorDsmDetailStyleItem;
    item->initRecord(style);
    loadDetailStylesDependencies(item);
    categories.place(*category).addChild(item);
}

void KorDSMSectionLoader::loadDetailStylesDependencies(KorDsmDetailStyleItem* style) {
    const StructDetailStyle& record = style->getRecord();
    style->children().reserve(record.getLengthItems());
    for (int i = 0; i < record.getLengthItems(); ++i) {
        const auto* request = StyleReads::find<StructDetViewRequest>(KorOdbcKey(record.getViewRequestAt(i)));
        if (!request)
            continue;
        auto* item = new KorDsmViewRequestItem;
        item->initRecord(*request);
        style->addChild(item);
    }
}
