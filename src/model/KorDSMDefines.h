#pragma once

#include "base/KorArray.h"
#include "base/KorString.h"

#include <cstdint>

/// Enumerations by which all parts of the editor tell tree items apart, and the icon table.
namespace KorDSMDefines {

/// Kind of a tree item. Each record family has its record, group and section type in consecutive values.
enum eItemType : std::int32_t {
    kDatabaseContent = 0,
    kAddInContent = 1,
    kDetailStyle = 2,
    kDetailStyleCategory = 3,
    kDetailStylesSection = 4,
    kAnnotationStrategy = 7,
    kAnnotationTypeRecord = 8, ///< no item has it: records that only pages and dialogs show
    kAnnotationGroup = 9,
    kAnnotationsSection = 10,
    kDimRequest = 11,
    kDimRequestGroup = 12,
    kDimRequestsSection = 13,
    kQualifierSet = 14,
    kQualifierSetGroup = 15,
    kQualifiersSection = 16,
    kViewRequest = 17,
    kViewRequestCategory = 19,
    kSystemAndBox = 21,
    kViewArrangeRecord = 22, ///< no item has it
    kReprMapRule = 23,
    kViewDimensioning = 24,
    kReprMap = 25,
    kAppearance = 26,
    kAnnotationArrangement = 27,
    kSecondArrangerControl = 28, ///< no item has it: the page group of the second arranger kind
    kPointSelection = 29,
    kLengthClipRecord = 30, ///< no item has it
    kNoType = 34,
    kGridReferenceRecord = 35, ///< no item has this or one of the following: only pages show such records
    kSelectionStrategyRecord = 36,
    kDrawingSettingsRecord = 37,
    kHatchRecord = 38,
    kLeaderStyleRecord = 39,
    kValueRangeRecord = 40,
    kQualifierRecord = 41,
    kModelTypeRecord = 42,
    kModelRoleRecord = 43,
};

/// Number of item types, and of slots in the page registry.
inline constexpr int kNumberOfItemTypes = 34;
/// One more than the highest kind, with those that no item has.
inline constexpr int kNumberOfKinds = 44;

/// The four sections. Their numeric order differs from the order in which they are loaded.
enum eViewSections : std::int32_t {
    kViewDetailStyles = 0,
    kViewQualifiers = 1,
    kViewAnnotations = 2,
    kViewDimRequests = 3,
};
inline constexpr int kNumberOfSections = 4;

/// The order in which sections are loaded and their source combos filled.
inline constexpr eViewSections kLoadingOrder[] = {kViewDetailStyles, kViewAnnotations, kViewDimRequests,
                                                  kViewQualifiers};

/// Number of entries of the icon table.
inline constexpr int kLastIcon = 25;
inline constexpr int kIconHost = 9;          ///< the host application's own icon
inline constexpr int kIconInstallation = 24; ///< icon of the current add-in installation

/// One icon of the table: the number of an icon of the module, or the picture file of an icon that the host
/// brings.
struct Icon {
    int resource = 0;
    KorString file;
};

/// Number of the module's icon at this place of the table; 0 for those that the host brings.
int iconResource(int index);

/// Process-wide icon table, in the order by which items give their icons. Empty until `loadGlobalIcons`.
extern KorArray<Icon> m_GlobalIcons;

/// Empties the icon table and fills it again.
void loadGlobalIcons();

} // namespace KorDSMDefines
