#include "model/KorDSMDependencies.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMSectionLoader.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorOdbcGUI.h"

#include <algorithm>

using namespace KorDSMDefines;

namespace {

template <typename Item, typename Base = KorDSMDatabaseItem>
std::unique_ptr<Base> make() {
    return std::make_unique<Item>();
}

std::unique_ptr<KorDSMDatabaseItem> makeStrategyArrangement() {
    return std::make_unique<KorDsmAnnotationArrangementItem>(true);
}

// A node can be given another type than its own.
template <typename Item>
void addDependents(KorDSMDatabaseItem& item) {
    if (auto* typed = dynamic_cast<Item*>(&item))
        KorDSMDependencies::addDependents(*typed);
}

void leaveViews(KorDSMDatabaseItem& item) {
    static_cast<KorDsmDetailStyleItem&>(item).leaveViews();
}

void readAnnotationType(KorDSMDatabaseItem& item) {
    auto& annotation = static_cast<KorDsmAnnotationStrategyItem&>(item);
    StructDetAnnotationType type = annotation.annotationType();
    KorOdbcGUI::getDetAnnotationType(KorOdbcKey(annotation.getRecord().annotationTypeKey), type);
    annotation.setAnnotationType(type);
}

template <typename R, int (*Compare)(const R&, const R&)>
bool isBefore(const StructRecord& a, const StructRecord& b) {
    return Compare(static_cast<const R&>(a), static_cast<const R&>(b)) < 0;
}

// What the class of the items says itself.
template <typename Item>
constexpr KorDSMFamily shownBy(KorDSMFamily row) {
    row.type = Item::kType;
    row.table = tableOf<typename Item::Record>;
    row.make = make<Item>;
    if constexpr (requires(Item & item) { KorDSMDependencies::addDependents(item); })
        row.addDependents = addDependents<Item>;
    return row;
}

// Records that are edited beside the choice of them.
constexpr KorDSMFamily chosenBeside(eItemType type, eTableType table) {
    return {.type = type,
            .table = table,
            .confirmationPrompt = KorDSMFamily::kTableName,
            .namePrompt = KorDSMFamily::kTableName,
            .proposesName = true};
}

constexpr KorDSMFamily kFamilies[] = {
    shownBy<KorDsmDetailStyleItem>({.icon = 12,
                                    .bringsChildren = true,
                                    .complete = leaveViews,
                                    .group = kDetailStyleCategory,
                                    .filedBy = kTableDetailMaster,
                                    .statusPrompt = 33513,
                                    .titlePrompt = 33901,
                                    .namePrompt = 33705,
                                    .proposesName = true,
                                    .pageGroup = "DetailStyle",
                                    .pages = {2001, 2002, 2309, 2003, 2025},
                                    .isExchanged = true}),
    shownBy<KorDsmDetailStyleCategoryItem>(
        {.icon = 13,
         .isCategory = true,
         .isBefore = isBefore<StructDetBaseCategory, KorDetStructureUtilities::compareDetBaseCategories>,
         .statusPrompt = 33512,
         .namePrompt = 33706}),
    shownBy<KorDsmViewRequestItem>({.icon = 22,
                                    .startsExpanded = false,
                                    .hasEqualItems = true,
                                    .statusPrompt = KorDSMFamily::kEntryText,
                                    .confirmationPrompt = 33570,
                                    .titlePrompt = 33903,
                                    .namePrompt = 33717,
                                    .proposesName = true,
                                    .pageGroup = "Views",
                                    .pages = {2004, 2005, 1086, 2020, 2006}}),
    shownBy<KorDsmReprMapRuleItem>({.icon = 21,
                                    .startsExpanded = false,
                                    .hasEqualItems = true,
                                    .statusPrompt = 33580,
                                    .confirmationPrompt = 33580,
                                    .namePrompt = 33718,
                                    .proposesName = true,
                                    .pageGroup = "ReprMapRule",
                                    .pages = {2007}}),
    shownBy<KorDsmReprMapItem>({.icon = 18,
                                .startsExpanded = false,
                                .hasEqualItems = true,
                                .statusPrompt = 33595,
                                .pageGroup = "ReprMapItem",
                                .pages = {2009}}),
    shownBy<KorDsmViewDimensioningItem>({.icon = 16,
                                         .startsExpanded = false,
                                         .hasEqualItems = true,
                                         .statusPrompt = 33610,
                                         .confirmationPrompt = 33610,
                                         .namePrompt = 33719,
                                         .proposesName = true,
                                         .pageGroup = "ViewDimensioning",
                                         .pages = {2010}}),
    shownBy<KorDsmPointSelectionItem>({.icon = 19,
                                       .startsExpanded = false,
                                       .hasEqualItems = true,
                                       .statusPrompt = 33645,
                                       .confirmationPrompt = 33645,
                                       .namePrompt = 33720,
                                       .proposesName = true,
                                       .pageGroup = "DimPoints",
                                       .pages = {2015}}),
    // New ones are proposed by the names of the view dimensionings in which they are going to be used.
    shownBy<KorDsmDimRequestItem>({.icon = 11,
                                   .startsExpanded = false,
                                   .hasEqualItems = true,
                                   .group = kDimRequestGroup,
                                   .statusPrompt = 33625,
                                   .confirmationPrompt = 33625,
                                   .titlePrompt = 33903,
                                   .namePrompt = 33709,
                                   .proposesName = true,
                                   .namedLike = kTableViewDimStrategy,
                                   .pageGroup = "DimRequest",
                                   .pages = {2014, 2321},
                                   .listedBy = {kViewDimensioning, kPointSelection}}),
    shownBy<KorDsmDimRequestGroupItem>(
        {.isBefore =
             isBefore<StructDetViewDimRequestLinearGroup, KorDetStructureUtilities::compareGroupsDimRequest>,
         .statusPrompt = 33517,
         .namePrompt = 33710}),
    shownBy<KorDsmSystemAndBoxItem>({.icon = 23,
                                     .hasEqualItems = true,
                                     .statusPrompt = 33772,
                                     .confirmationPrompt = 33772,
                                     .namePrompt = 33716,
                                     .proposesName = true,
                                     .pageGroup = "SystemAndBox",
                                     .pages = {2008}}),
    shownBy<KorDsmQualifierSetItem>({.icon = 14,
                                     .startsExpanded = false,
                                     .hasEqualItems = true,
                                     .group = kQualifierSetGroup,
                                     .statusPrompt = 33675,
                                     .confirmationPrompt = 33665,
                                     .titlePrompt = 33902,
                                     .namePrompt = 33711,
                                     .proposesName = true,
                                     .pageGroup = "QualifierSet",
                                     .pages = {2011},
                                     .listedBy = {kReprMap, kPointSelection, kReprMapRule}}),
    shownBy<KorDsmQualifierSetGroupItem>(
        {.isBefore = isBefore<StructDetObjQualifierSetGroup, KorDetStructureUtilities::compareGroupsQS>,
         .statusPrompt = 33519,
         .namePrompt = 33712}),
    shownBy<KorDsmAnnotationStrategyItem>({.icon = 10,
                                           .startsExpanded = false,
                                           .hasEqualItems = true,
                                           .complete = readAnnotationType,
                                           .group = kAnnotationGroup,
                                           .statusPrompt = 33790,
                                           .confirmationPrompt = 33790,
                                           .titlePrompt = 33903,
                                           .namePrompt = 33707,
                                           .proposesName = true,
                                           .pageGroup = "AnnotationStrategy",
                                           .pages = {2012},
                                           .listedBy = {kReprMap, kReprMapRule}}),
    shownBy<KorDsmAnnotationGroupItem>(
        {.isBefore = isBefore<StructDetObjAnnotationGroup, KorDetStructureUtilities::compareGroupsAS>,
         .statusPrompt = 33515,
         .namePrompt = 33708}),
    // Items of this type show the records of the next family too, on its pages.
    {.type = kAnnotationArrangement,
     .table = kTableArrangerControl,
     .icon = 10,
     .startsExpanded = false,
     .hasEqualItems = true,
     .make = make<KorDsmAnnotationArrangementItem>,
     .statusPrompt = 33805,
     .confirmationPrompt = 33805,
     .namePrompt = 33714,
     .proposesName = true,
     .pageGroup = "ArrangerControl",
     .pages = {2013}},
    {.type = kSecondArrangerControl,
     .table = kTableArrangerStrategy,
     .make = makeStrategyArrangement,
     .confirmationPrompt = 33805,
     .namePrompt = 33714,
     .proposesName = true,
     .pageGroup = "ArrangerControlNew",
     .pages = {2017}},
    shownBy<KorDsmAppearanceItem>({.icon = 20,
                                   .startsExpanded = false,
                                   .statusPrompt = 33685,
                                   .namePrompt = 33585,
                                   .proposesName = true,
                                   .pageGroup = "Appearance",
                                   .pages = {2016}}),

    // What stands in no tree, but is named, or asked about before it is changed.
    {.type = kViewRequestCategory, .table = kTableViewRequestCategory, .icon = 13},
    {.type = kAnnotationTypeRecord,
     .table = kTableAnnotationType,
     .confirmationPrompt = 33800,
     .namePrompt = 33713,
     .proposesName = true},
    {.type = kViewArrangeRecord,
     .table = kTableViewArrangeStrategy,
     .confirmationPrompt = 33538,
     .namePrompt = 33715,
     .proposesName = true},
    {.type = kLengthClipRecord,
     .table = kTableLengthClip,
     .confirmationPrompt = 33759,
     .namePrompt = 33721,
     .proposesName = true},
    chosenBeside(kGridReferenceRecord, kTableGridRefSettings),
    chosenBeside(kSelectionStrategyRecord, kTableSelectionStrategy),
    chosenBeside(kDrawingSettingsRecord, kTableHcadSettings),
    chosenBeside(kHatchRecord, kTableHatchSettings),
    chosenBeside(kLeaderStyleRecord, kTableLeaderStyle),
    chosenBeside(kValueRangeRecord, kTableQualifierFilter),
    chosenBeside(kQualifierRecord, kTableQualifier),
    chosenBeside(kModelTypeRecord, kTableModelType),
    chosenBeside(kModelRoleRecord, kTableModelRole),
};

constexpr KorDSMSection kSections[] = {
    {kViewDetailStyles, kDetailStylesSection, 33511, 1400, 1000, 1064, 1062, 1064, kDetailStyle,
     make<KorDsmDetailStylesAddInItem, KorDsmAddInContentItem>,
     KorDSMSectionLoader::loadDetailStylesAddInContent},
    {kViewQualifiers, kQualifiersSection, 33518, 1401, 1007, 1061, 1060, 1061, kQualifierSet,
     make<KorDsmQualifierSetsAddInItem, KorDsmAddInContentItem>},
    {kViewAnnotations, kAnnotationsSection, 33514, 1402, 1008, 1057, 1063, 1057, kAnnotationStrategy,
     make<KorDsmAnnotationsAddInItem, KorDsmAddInContentItem>},
    {kViewDimRequests, kDimRequestsSection, 33516, 1403, 1009, 1059, 1058, 1059, kDimRequest,
     make<KorDsmDimRequestsAddInItem, KorDsmAddInContentItem>},
};
static_assert(std::size(kSections) == kNumberOfSections);

// Where each value of a key stands among the families; -1: nowhere.
template <std::size_t Count, typename Key>
consteval std::array<std::int8_t, Count> placesOf(Key KorDSMFamily::*key) {
    std::array<std::int8_t, Count> places{};
    places.fill(-1);
    for (std::size_t i = 0; i < std::size(kFamilies); ++i)
        places.at(static_cast<std::size_t>(kFamilies[i].*key)) = static_cast<std::int8_t>(i);
    return places;
}

template <std::size_t Count>
const KorDSMFamily* at(const std::array<std::int8_t, Count>& places, int value) {
    const int place =
        value >= 0 && value < static_cast<int>(Count) ? places[static_cast<std::size_t>(value)] : -1;
    return place < 0 ? nullptr : &kFamilies[place];
}

} // namespace

namespace KorDSMFamilies {

std::span<const KorDSMFamily> all() {
    return kFamilies;
}

std::span<const KorDSMSection> sections() {
    return kSections;
}

const KorDSMFamily* of(eItemType type) {
    static constexpr auto kPlaces = placesOf<kNumberOfKinds>(&KorDSMFamily::type);
    return at(kPlaces, type);
}

const KorDSMFamily* of(eTableType table) {
    static constexpr auto kPlaces = placesOf<kEndOfTables>(&KorDSMFamily::table);
    return at(kPlaces, table);
}

const KorDSMFamily* filedUnder(const KorDSMFamily& group) {
    const auto* family = std::ranges::find(kFamilies, group.type, &KorDSMFamily::group);
    return family == std::end(kFamilies) ? nullptr : family;
}

bool bringsChildren(eItemType type) {
    const KorDSMFamily* family = of(type);
    return family && family->bringsChildren;
}

const KorDSMSection& section(eViewSections section) {
    return kSections[static_cast<std::size_t>(section)];
}

const KorDSMSection* sectionOf(const KorDSMFamily& family) {
    const auto* section = std::ranges::find_if(kSections, [&](const KorDSMSection& candidate) {
        return candidate.family == family.type || of(candidate.family)->group == family.type;
    });
    return section == std::end(kSections) ? nullptr : section;
}

const KorDSMSection* sectionOfType(eItemType type) {
    const auto* section = std::ranges::find(kSections, type, &KorDSMSection::type);
    return section == std::end(kSections) ? nullptr : section;
}

const Column* filingColumn(eTableType table) {
    for (const Column& column : findTable(table)->columns)
        if (column.isReference() && column.role == eReferenceRole::kFiledUnder)
            return &column;
    return nullptr;
}

std::unique_ptr<KorDSMDatabaseItem> makeItem(const KorDSMFamily& family, const StructRecord& record) {
    std::unique_ptr<KorDSMDatabaseItem> item = family.make();
    item->updateRecord(record);
    if (family.complete)
        family.complete(*item);
    return item;
}

} // namespace KorDSMFamilies

namespace KorDSMDefines {

bool canHaveEqualItems(eItemType type) {
    const KorDSMFamily* family = KorDSMFamilies::of(type);
    return family && family->hasEqualItems;
}

bool isGroupType(eItemType type) {
    const KorDSMFamily* family = KorDSMFamilies::of(type);
    return family && family->isGroup();
}

bool isSectionType(eItemType type) {
    return KorDSMFamilies::sectionOfType(type) != nullptr;
}

} // namespace KorDSMDefines
