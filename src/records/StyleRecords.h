#pragma once

#include "records/StructRecord.h"

#include <array>

/// A detail style: how the drawing of a part or an assembly is produced.
struct StructDetailStyle : StructRecord {
    /// Number of view slots of a style. A slot holds the key of a view request, or 0.
    static constexpr int kViewSlots = 20;

    std::int32_t arrangeStrategyKey = 0;      ///< how its views are placed
    KorString description;                    ///< for users
    std::int32_t objectSelectionStrategy = 0; ///< key of what a drawing shows
    KorString titleFormat;                    ///< contents and formatting, as the label designer encodes them
    std::int32_t titlePosition = 3; ///< 0 none, 1 lower left, 2 above detail, 3 above main view, 4 below
                                    ///< detail, 5 lower right, 6 upper left, 7 upper right
    KorString cutViewTitleFormat;   ///< the same for cut views
    std::int32_t cutViewTitlePosition = 0;               ///< 0 below, 1 above the cut view
    std::int32_t automaticClipping = 0;                  ///< 0 off: the view's length clip decides
    std::int32_t gridRefSettingsKey = 0;                 ///< how grid lines are drawn
    std::int32_t hcadSettingsKey = 0;                    ///< layer, font and line scale
    std::array<std::int32_t, kViewSlots> viewRequests{}; ///< keys; 0: an empty slot

    long getTitlePosition() const { return titlePosition; }
    void setTitlePosition(long position) { titlePosition = static_cast<std::int32_t>(position); }
    const KorString& getTitleFormat() const { return titleFormat; }
    long getCutViewTitlePosition() const { return cutViewTitlePosition; }
    void setCutViewTitlePosition(long position) {
        cutViewTitlePosition = static_cast<std::int32_t>(position);
    }
    const KorString& getCutViewTitleFormat() const { return cutViewTitleFormat; }
    void setCutViewTitleFormat(const KorString& format) { cutViewTitleFormat = format; }
    std::int32_t getObjectSelectionStrategy() const { return objectSelectionStrategy; }
    void setObjectSelectionStrategy(std::int32_t strategy) { objectSelectionStrategy = strategy; }
    std::int32_t getAutomaticClipping() const { return automaticClipping; }

    /// Number of view slots up to the last used one; a slot in between may be empty (0).
    int getLengthItems() const;
    int numViewRequests() const { return getLengthItems(); }
    /// Key in slot `index`, or 0 when the slot is empty or does not exist.
    std::int32_t getViewRequestAt(int index) const {
        return index >= 0 && index < kViewSlots ? viewRequests[static_cast<std::size_t>(index)] : 0;
    }

    bool operator==(const StructDetailStyle&) const = default;
};

inline int StructDetailStyle::getLengthItems() const {
    int length = kViewSlots;
    while (length > 0 && viewRequests[static_cast<std::size_t>(length - 1)] <= 0)
        --length;
    return length;
}

/// Files a detail style under a category and gives it the pair of numbers by which the host knows it.
struct StructDetailMaster : StructRecord {
    std::int32_t detailKey = 0;   ///< number of the style's family
    std::int32_t number = 0;      ///< number inside the family; the pair is unique in a source
    std::int32_t styleKey = 0;    ///< the style that it tells of
    std::int32_t categoryKey = 0; ///< where the style is filed

    bool operator==(const StructDetailMaster&) const = default;
};

/// A category of detail styles and view requests.
struct StructDetBaseCategory : StructRecord {
    std::int32_t number = 0;    ///< of the families of its styles
    std::int32_t bitmapKey = 0; ///< its picture

    bool operator==(const StructDetBaseCategory&) const = default;
};

/// How the views of a drawing are placed on the sheet.
struct StructDetViewArrangeStrategy : StructRecord {
    std::int32_t projection = 0;    ///< 0 first angle, 1 third angle
    double rowSpacing = 20.0;       ///< mm on paper
    double columnSpacing = 20.0;    ///< mm on paper
    double frameMargin = 10.0;      ///< mm on paper
    std::int32_t alignViews = 1;    ///< 1: views beside each other stand on one line
    std::int32_t stackSections = 0; ///< 1: sections stand above each other

    bool operator==(const StructDetViewArrangeStrategy&) const = default;
};

/// Which model objects a drawing made with a style selects.
struct StructDetObjSelectionStrategy : StructRecord {
    std::int32_t drawingKind = 0;        ///< 0 overview, 1 single part, 2 assembly
    std::int32_t includeAccessories = 1; ///< 1: shown too
    std::int32_t includeWelds = 1;       ///< 1: shown too
    double neighbourDistance = 0.0;      ///< mm; objects this near are shown too

    bool operator==(const StructDetObjSelectionStrategy&) const = default;
};

/// How the grid lines of the building are drawn.
struct StructDetGridRefSettings : StructRecord {
    std::int32_t showGrid = 1;    ///< 1: grid lines are drawn
    double bubbleDiameter = 8.0;  ///< mm on paper
    double overhang = 15.0;       ///< mm on paper
    std::int32_t linetypeKey = 0; ///< of the grid lines

    bool operator==(const StructDetGridRefSettings&) const = default;
};

/// Layer, font and line scale of the generated drawing.
struct StructDetHcadSettings : StructRecord {
    KorString layer = "0";         ///< of what has none of its own
    std::int32_t colorByLayer = 1; ///< 1: colours follow the layers
    KorString textFont = "Arial";  ///< of all texts
    double lineScale = 1.0;        ///< of patterned lines

    bool operator==(const StructDetHcadSettings&) const = default;
};
