#include "model/KorDSMSectionLoader.h"

#include "model/KorDSMBusy.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMItemPlacing.h"
#include "model/KorProgressCtrl.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorDSNManager.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"
#include "operations/StyleReads.h"
#include "services/AddInManager.h"
#include "services/Prompts.h"

#include <algorithm>

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
        loadSectionData(structure, KorDSMFamilies::section(section));
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
    m_progress = {};
    KorArray<LoadedSource> sources = standardSideSources();
    sources.append({SourceId::user(), {}});
    for (const LoadedSource& source : sources) {
        if (source.addIn.number >= 0)
            KorOdbcGUI::switchKordoDetailsCurrent(source.addIn);
        const KorDSNRequest request(source.id.dsn, source.id.index);
        KorArray<KorString> names;
        m_progress.total += std::max(0, KorODBCDetStyle::getDetailStyleList(names));
    }
}

void KorDSMSectionLoader::loadSectionData(KorDSMDataStructure& structure, const KorDSMSection& section) {
    auto standard = std::make_unique<KorDsmDatabaseContentItem>(
        KorDSNDefinitions::kStandard, KorDSMDefines::kIconHost, Prompts::ups(21021));
    if (KorDSMDefines::m_GlobalIcons.isEmpty())
        KorDSMDefines::loadGlobalIcons();
    for (const LoadedSource& source : standardSideSources()) {
        const bool isAddIn = source.addIn.number >= 0;
        if (isAddIn)
            KorOdbcGUI::switchKordoDetailsCurrent(source.addIn);
        const KorDSNRequest request(source.id.dsn, source.id.index);
        std::unique_ptr<KorDsmAddInContentItem> item =
            loadAddIn(section, source.id.index, isAddIn ? addInName(source.addIn) : Prompts::ups(21023));
        item->setImage(isAddIn ? AddInManager::getInstance().getAddIn(source.addIn).getIcon()
                               : KorDSMDefines::m_GlobalIcons[KorDSMDefines::kIconInstallation].file);
        standard->addChild(std::move(item));
    }

    constexpr std::int32_t kUserIcon = 6;
    auto user =
        std::make_unique<KorDsmDatabaseContentItem>(KorDSNDefinitions::kUser, kUserIcon, Prompts::ups(21022));
    {
        const KorDSNRequest request(KorDSNDefinitions::kUser, KorDSNDefinitions::kUserIndex);
        user->addChild(loadAddIn(section, KorDSNDefinitions::kUserIndex, Prompts::ups(21022)));
    }

    KorDsmSectionItem& node = *structure.getSection(section.section);
    node.addChild(std::move(standard));
    node.addChild(std::move(user));
}

std::unique_ptr<KorDsmAddInContentItem> KorDSMSectionLoader::loadAddIn(const KorDSMSection& section,
                                                                       eIndex index, const KorString& name) {
    std::unique_ptr<KorDsmAddInContentItem> item = section.makeContent();
    if (section.load)
        section.load(*item, m_progress);
    else
        loadGroups(*item);
    item->describe(index, name);
    return item;
}

void SectionLoadProgress::step() {
    ++done;
    const int percent = total > 0 ? done * 100 / total : 100;
    KorProgressCtrl::setPercentage(percent - 1, 1);
    KorProgressCtrl::setPercentage(percent, 0);
}

namespace {

// The masters by the keys of their styles.
std::vector<const StructDetailMaster*> mastersByStyle() {
    std::vector<const StructDetailMaster*> masters;
    const RowArray* rows = StyleReads::rows<StructDetailMaster>();
    masters.reserve(rows ? static_cast<std::size_t>(rows->size()) : 0);
    for (int i = 0; rows && i < rows->size(); ++i)
        masters.push_back(&static_cast<const StructDetailMaster&>(rows->at(i)));
    std::ranges::stable_sort(masters, {}, &StructDetailMaster::styleKey);
    return masters;
}

} // namespace

void KorDSMSectionLoader::loadDetailStylesAddInContent(KorDsmAddInContentItem& addIn,
                                                       SectionLoadProgress& progress) {
    const KorDSMFamily& styles = *KorDSMFamilies::of(kTableDetailStyle);
    const auto masters = mastersByStyle();
    auto master = masters.begin(); // goes with the styles, which come by their keys
    KorDSMItemPlacing::Filling filling(addIn, *KorDSMFamilies::of(kTableBaseCategory));
    const RowArray* rows = StyleReads::rows<StructDetailStyle>();
    for (int i = 0; rows && i < rows->size(); ++i) {
        progress.step();
        while (master != masters.end() && (*master)->styleKey < rows->at(i).key)
            ++master;
        const auto* category =
            master != masters.end() && (*master)->styleKey == rows->at(i).key
                ? StyleReads::find<StructDetBaseCategory>(KorOdbcKey((*master)->categoryKey))
                : nullptr;
        if (category)
            filling.place(*category).addChild(KorDSMFamilies::makeItem(styles, rows->at(i)));
    }
    // The items of views are made when they are looked at, but who opens the first style should not wait for
    // their table.
    static_cast<void>(StyleReads::rows<StructDetViewRequest>());
    const RowArray* categories = StyleReads::rows<StructDetBaseCategory>();
    for (int i = 0; categories && i < categories->size(); ++i)
        filling.place(categories->at(i));
}

void KorDSMSectionLoader::loadDetailStylesDependencies(KorDsmDetailStyleItem* style) {
    const StructDetailStyle& record = style->getRecord();
    style->reserveChildren(record.getLengthItems());
    for (int i = 0; i < record.getLengthItems(); ++i) {
        const auto* request = StyleReads::find<StructDetViewRequest>(KorOdbcKey(record.getViewRequestAt(i)));
        if (!request)
            continue;
        style->addChild(std::make_unique<KorDsmViewRequestItem>()).initRecord(*request);
    }
}
