#pragma once

#include <cstdint>

/// The record tables. The values below `kNumberOfTableTypes` take part in writes and commits by number;
/// the ones above `kNoTable` are catalogues that follow the commit of another table.
enum eTableType : std::int32_t {
    kTableDetailStyle = 0,            ///< detail styles
    kTableViewArrangeStrategy = 1,    ///< how views are placed on the sheet
    kTableViewRequest = 2,            ///< views that styles produce
    kTableReprMapEntry = 3,           ///< entries of representation maps
    kTableReprMap = 4,                ///< representation maps
    kTableSystemAndBox = 5,           ///< from where views look, and at what
    kTableAppearance = 6,             ///< how objects are drawn
    kTableViewDimStrategy = 7,        ///< dimensionings of views
    kTableLengthClip = 8,             ///< clipping strategies of long parts
    kTableAnnotationStrategy = 9,     ///< which labels objects get
    kTableAnnotationType = 10,        ///< what labels look like
    kTableArrangerControl = 11,       ///< how far labels may move
    kTableArrangerStrategy = 12,      ///< how labels are lined up (second arranger)
    kTableDimRequest = 13,            ///< dimension lines
    kTablePointSelection = 14,        ///< points that are dimensioned
    kTableDetailMaster = 15,          ///< numbers by which hosts know styles
    kTableQualifierSet = 16,          ///< sets of qualifiers that pick objects
    kTableDimStrategyItem = 17,       ///< dimension requests of a dimensioning
    kTableRequestType = 18,           ///< word list: kinds of dimension
    kTableQualifierWithRole = 19,     ///< qualifiers of sets
    kTableQualifier = 20,             ///< word list: properties that can be asked for
    kTableQualifierFilter = 21,       ///< values that a property is compared with
    kTableLinetypes = 22,             ///< line types
    kTableBaseCategory = 23,          ///< categories of styles and views
    kTableViewRequestCategory = 24,   ///< in which categories views are listed
    kTableViewSelectMode = 25,        ///< word list: when a view is drawn
    kTableAnnotationGroup = 26,       ///< groups of annotation strategies
    kTableDimRequestGroup = 27,       ///< groups of dimension requests
    kTableQualifierSetGroup = 28,     ///< groups of qualifier sets
    kTableSelectionStrategy = 29,     ///< what a drawing shows beside its part
    kTableArrangeDirection = 30,      ///< word list: where a view goes
    kTableSystemSource = 31,          ///< word list: whose axes a view has
    kTableProcessScaleOverride = 32,  ///< word list: how scales are adapted
    kTableClippingGap = 33,           ///< word list: widths of cut-out stretches
    kTableClippingType = 34,          ///< word list: break lines
    kTablePointType = 35,             ///< word list: kinds of points
    kTableDimGeomRestrictions = 36,   ///< word list: where on their objects points lie
    kTableParentRelaPos = 37,         ///< word list: positions relative to the owner
    kTableGeometricRestrictions = 38, ///< word list: restrictions with a tolerance
    kTableLinearDirection = 39,       ///< word list: directions of dimensions
    kTableOrdinateDimType = 40,       ///< word list: kinds of ordinates
    kTableOrdinatePosition = 41,      ///< word list: where ordinates stand
    kTableOrdinateReference = 42,     ///< word list: where ordinates begin
    kTableHcadSettings = 43,          ///< layer, font and line scale of drawings
    kTableGridRefSettings = 44,       ///< how grid lines are drawn
    kTableHatchSettings = 45,         ///< hatches
    kTableLeaderStyle = 46,           ///< leaders of labels
    kTableModelType = 47,             ///< word list: kinds of model objects
    kNumberOfTableTypes = 48,
    kNoTable = 48, ///< "not set"

    kTableAreaType = 49,           ///< word list: areas of views
    kTableDepthPosition,           ///< word list: where a depth is measured from
    kTableOrientation,             ///< word list: orientations of views
    kTableReferenceAxis,           ///< word list: axes that views follow
    kTableVisibilityStatus,        ///< word list: whether lines are drawn
    kTableBeamPositionCalculation, ///< word list: how positions of beams are counted
    kTableBitmap,                  ///< pictures of words
    kTableBitmapIndex,             ///< places of pictures in strips
    kTableObjectPosition,          ///< word list: positions relative to the view plane
    kTableTextSize,                ///< text sizes
    kTableScaleGroup,              ///< headings of scales
    kTableScale,                   ///< scales
    kTableNumericDefault,          ///< named numbers
    kTableCreationDefault,         ///< defaults of what is new
    kTableModelRole,               ///< word list: roles of objects
    kEndOfTables,
};
