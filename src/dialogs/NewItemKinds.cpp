#include "dialogs/NewItemKinds.h"

#include "model/KorDSMDefines.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"

#include <algorithm>
#include <vector>

namespace {

using namespace KorDSMDefines;

// Records that are named by the dialogs, but are no items of the tree.
constexpr int kAnnotationTypeRecord = 8;
constexpr int kViewArrangeRecord = 22;
constexpr int kLengthClipRecord = 30;

constexpr auto kAnnotationGroupNames = &KorODBCDetObjAnnotationGroup::getRunNames;
constexpr auto kDimRequestGroupNames = &KorODBCDetViewDimRequestLinearGroup::getRunNames;
constexpr auto kQualifierSetGroupNames = &KorODBCDetObjQualifierSetGroup::getRunNames;

const NewItemKind kKinds[] = {
    {kDetailStyle, 33901, 33705, KorODBCDetStyle::getDetailStyleList, kTableDetailStyle},
    {kDetailStyleCategory, 0, 33706, KorOdbcGUI::getDetBaseCategoryList, kNoTable},
    {kDetailStylesSection, 0, 33706, KorOdbcGUI::getDetBaseCategoryList, kNoTable},
    {kAnnotationStrategy, 33903, 33707, KorOdbcGUI::getDetObjAnnotationStrategyList,
     kTableAnnotationStrategy},
    {kAnnotationTypeRecord, 0, 33713, KorOdbcGUI::getDetAnnotationTypeList, kTableAnnotationType},
    {kAnnotationGroup, 0, 33708, kAnnotationGroupNames, kNoTable},
    {kAnnotationsSection, 0, 33708, kAnnotationGroupNames, kNoTable},
    {kDimRequest, 33903, 33709, KorOdbcGUI::getDetViewDimRequestLinearList, kTableDimRequest},
    {kDimRequestGroup, 0, 33710, kDimRequestGroupNames, kNoTable},
    {kDimRequestsSection, 0, 33710, kDimRequestGroupNames, kNoTable},
    {kQualifierSet, 33902, 33711, KorOdbcGUI::getDetObjQualifierSetList, kTableQualifierSet},
    {kQualifierSetGroup, 0, 33712, kQualifierSetGroupNames, kNoTable},
    {kQualifiersSection, 0, 33712, kQualifierSetGroupNames, kNoTable},
    {kViewRequest, 33903, 33717, KorOdbcGUI::getDetViewRequestList, kTableViewRequest},
    {kSystemAndBox, 0, 33716, KorOdbcGUI::getDetViewSystemAndBoxList, kTableSystemAndBox},
    {kViewArrangeRecord, 0, 33715, KorOdbcGUI::getDetViewArrangeStrategyList, kTableViewArrangeStrategy},
    {kReprMapRule, 0, 33718, KorOdbcGUI::getDetViewObjReprMapList, kTableReprMap},
    {kViewDimensioning, 0, 33719, KorOdbcGUI::getDetViewDimStrategyList, kTableViewDimStrategy},
    {kAppearance, 0, 33585, KorOdbcGUI::getDetObjAppearanceList, kTableAppearance},
    {kAnnotationArrangement, 0, 33714, KorOdbcGUI::getDetArrangerControlList, kTableArrangerControl},
    {kSecondArrangerControl, 0, 33714, KorOdbcGUI::getDetArrangerStrategyList, kTableArrangerStrategy},
    {kPointSelection, 0, 33720, KorOdbcGUI::getDetViewDimPointSelectionList, kTablePointSelection},
    {kLengthClipRecord, 0, 33721, KorOdbcGUI::getDetViewLengthClipList, kTableLengthClip},
};

template <typename Group>
void listGroups(KorArray<NewItemGroup>& groups, int (*compare)(const Group&, const Group&)) {
    KorArray<Group> records;
    StyleReads::all(records);
    std::vector<Group> sorted(records.begin(), records.end());
    std::ranges::stable_sort(sorted, [compare](const Group& a, const Group& b) { return compare(a, b) < 0; });
    groups.clear();
    for (const Group& group : sorted)
        groups.append({group.getRunBezeichnung(), group.getKey()});
}

void categories(KorArray<NewItemGroup>& groups) {
    listGroups(groups, KorDetStructureUtilities::compareDetBaseCategories);
}
void annotationGroups(KorArray<NewItemGroup>& groups) {
    listGroups(groups, KorDetStructureUtilities::compareGroupsAS);
}
void dimRequestGroups(KorArray<NewItemGroup>& groups) {
    listGroups(groups, KorDetStructureUtilities::compareGroupsDimRequest);
}
void qualifierSetGroups(KorArray<NewItemGroup>& groups) {
    listGroups(groups, KorDetStructureUtilities::compareGroupsQS);
}

const NewItemGrouping kGroupings[] = {
    {kDetailStyle, kTableDetailStyle, true, categories},
    {kAnnotationStrategy, kTableAnnotationStrategy, false, annotationGroups},
    {kDimRequest, kTableViewDimStrategy, false, dimRequestGroups},
    {kQualifierSet, kTableQualifierSet, false, qualifierSetGroups},
};

} // namespace

const NewItemKind* findNewItemKind(int itemType) {
    const auto* kind = std::ranges::find(kKinds, itemType, &NewItemKind::itemType);
    return kind == std::end(kKinds) ? nullptr : kind;
}

const NewItemGrouping* findNewItemGrouping(int itemType) {
    const auto* grouping = std::ranges::find(kGroupings, itemType, &NewItemGrouping::itemType);
    return grouping == std::end(kGroupings) ? nullptr : grouping;
}
