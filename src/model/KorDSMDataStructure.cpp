#include "model/KorDSMDataStructure.h"

#include "services/KOSettings.h"
#include "services/Prompts.h"

#include <algorithm>

namespace {

constexpr const char* kShowFullTree = "ShowFullTree";
constexpr const char* kFullExpand = "FullExpand";
constexpr const char* kShowWarning = "ShowWarning";

bool readOption(const char* name) {
    bool value = true;
    const bool stored = KOSettings::getInstance().readBool(KOSettings::getKeyDSM(), name, value);
    return !stored || value;
}

void writeOption(const char* name, bool value) {
    KOSettings::getInstance().writeBool(KOSettings::getKeyDSM(), name, value);
}

} // namespace

bool KorDSMDataStructure::m_bApplyWasPressed = false;

KorDSMDataStructure::KorDSMDataStructure()
    : m_bShowFullTree(readOption(kShowFullTree)), m_bUseFullExpand(readOption(kFullExpand)),
      m_bShowWarning(readOption(kShowWarning)) {
    setUpSections();
    initDataStructure();
}

KorDSMDataStructure::KorDSMDataStructure(const KorDSMDataStructure&) {
    setUpSections();
    initDataStructure();
}

KorDSMDataStructure& KorDSMDataStructure::operator=(const KorDSMDataStructure& other) {
    if (this == &other)
        return *this;
    m_AddedItems = other.m_AddedItems;
    m_UpdateStatus = other.m_UpdateStatus;
    m_SelectedPath = other.m_SelectedPath;
    m_TargetDatabase = other.m_TargetDatabase;
    m_TargetAddIn = other.m_TargetAddIn;
    m_SelectedCategory = other.m_SelectedCategory;
    m_SelectedItem = other.m_SelectedItem;
    m_SelectedSection = other.m_SelectedSection;
    m_bShowFullTree = other.m_bShowFullTree;
    m_bUseFullExpand = other.m_bUseFullExpand;
    m_bShowWarning = other.m_bShowWarning;
    return *this;
}

void KorDSMDataStructure::setUpSections() {
    for (const KorDSMSection& section : KorDSMFamilies::sections())
        getSection(section.section)->describe(section, Prompts::ups(section.namePrompt));
}

void KorDSMDataStructure::appendAddedItemData(std::unique_ptr<KorDSMTreeItemData> data) {
    const auto it = std::ranges::find(m_AddedItems, data->getType(), &KorDSMAddedItemsCollection::getType);
    if (it != m_AddedItems.end())
        return (*it)->add(std::move(data));
    m_AddedItems.push_back(std::make_shared<KorDSMAddedItemsCollection>(data->getType()));
    m_AddedItems.back()->add(std::move(data));
}

std::unique_ptr<KorDSMTreeItemData> KorDSMDataStructure::removeAddedItemData(const KorDSMTreeItemData* data) {
    const auto it = std::ranges::find_if(m_AddedItems, [&](const auto& collection) {
        return data && collection->getType() == data->getType();
    });
    return it == m_AddedItems.end() ? nullptr : (*it)->remove(data);
}

void KorDSMDataStructure::resetTargets() {
    m_TargetDatabase.fill(KorDSNDefinitions::kStandard);
    m_TargetAddIn.fill(KorDSNDefinitions::kStandardIndex);
    m_SelectedCategory.fill(0);
    m_SelectedItem.fill(0);
    m_SelectedSection = KorDSMDefines::kViewDetailStyles;
}

void KorDSMDataStructure::emptyDataStructure() {
    for (const eViewSections section : KorDSMDefines::kLoadingOrder)
        getSection(section)->deleteChildren();
    deleteAddedItems();
    resetTargets();
    m_UpdateStatus = kEmptied;
}

void KorDSMDataStructure::initDataStructure() {
    resetTargets();
    m_UpdateStatus = kNotLoaded;
}

int KorDSMDataStructure::getNumberOfAddIns() {
    const KorDSMDatabaseItem* standard = getDetailStylesSection()->children()[0];
    return standard ? standard->children().length() : 0;
}

void KorDSMDataStructure::setShowFullTree(bool on) {
    m_bShowFullTree = on;
    writeOption(kShowFullTree, on);
}

void KorDSMDataStructure::setUseFullExpand(bool on) {
    m_bUseFullExpand = on;
    writeOption(kFullExpand, on);
}

void KorDSMDataStructure::setShowWarning(bool on) {
    m_bShowWarning = on;
    writeOption(kShowWarning, on);
}
