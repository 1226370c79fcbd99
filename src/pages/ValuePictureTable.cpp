#include "pages/ValuePictureTable.h"

#include <numeric>

namespace {

// Pictures numbered in the order of the values.
std::vector<int> from(int picture, std::size_t count) {
    std::vector<int> pictures(count);
    std::iota(pictures.begin(), pictures.end(), picture);
    return pictures;
}

} // namespace

const std::vector<PicturedColumn>& ValuePictureTable::small() {
    static const std::vector<PicturedColumn> columns = {
        {kTableDetailStyle, 6, 0, {1106, 1083, 1085, 1084, 1102, 1105, 1103, 1104}},
        {kTableDetailStyle, 8, 0, from(2071, 2)},
        {kTableViewArrangeStrategy, 2, 0, from(1971, 2)},
        {kTableViewRequest, 12, 0, from(1991, 9)},
        {kTableViewRequest, 13, 0, from(2011, 4)},
        {kTableAnnotationType, 2, 0, from(2021, 6)},
        {kTableAnnotationType, 5, 0, from(2031, 3)},
        {kTableArrangerControl, 5, 0, from(2041, 5)},
        {kTableArrangerStrategy, 2, 0, from(2051, 3)},
        {kTableDimRequest, 9, 0, from(2061, 4)},
        {kTableRequestType, 2, 0, from(1541, 5)},
        {kTableSelectionStrategy, 2, 0, from(1981, 3)},
        {kTableArrangeDirection, 2, 0, from(1511, 8)},
        {kTableSystemSource, 2, 0, from(1521, 7)},
        {kTableProcessScaleOverride, 2, 0, from(1931, 5)},
        {kTablePointType, 2, 0, from(1531, 8)},
        {kTableDimGeomRestrictions, 2, 1, from(1401, 8)},
        {kTableParentRelaPos, 2, 0, from(1851, 6)},
        {kTableLinearDirection, 2, 0, from(1811, 4)},
        {kTableOrdinateDimType, 2, 0, from(1821, 4)},
        {kTableOrdinatePosition, 2, 0, from(1831, 3)},
        {kTableOrdinateReference, 2, 0, from(1841, 4)},
        {kTableModelType, 2, 1, from(1941, 12)},
        {kTableAreaType, 2, 0, from(1891, 6)},
        {kTableDepthPosition, 2, 0, from(1881, 7)},
        {kTableOrientation, 2, 0, from(1861, 8)},
        {kTableReferenceAxis, 2, 0, from(1871, 6)},
        {kTableVisibilityStatus, 2, 0, from(1921, 3)},
        {kTableBeamPositionCalculation, 2, 0, from(1901, 5)},
        {kTableObjectPosition, 2, 0, from(1911, 4)},
        {kTableModelRole, 2, 0, from(1961, 7)},
    };
    return columns;
}

const std::vector<PicturedColumn>& ValuePictureTable::large() {
    static const std::vector<PicturedColumn> columns = {
        {kTableDetailStyle, 6, 0, {1106, 1083, 1085, 1084, 1102, 1105, 1103, 1104}},
        {kTableDimRequest, 9, 0, from(2065, 4)},
    };
    return columns;
}

// A word that brings a picture of its own is shown by that.
const std::vector<ShownBy>& ValuePictureTable::rows() {
    static const std::vector<ShownBy> rows = {
        {kTableBaseCategory, {3}},
        {kTableViewArrangeStrategy, {2}},
        {kTableViewRequest, {2}},
        {kTableSystemAndBox, {3}},
        {kTableAnnotationStrategy, {3}},
        {kTableAnnotationType, {2}},
        {kTableArrangerControl, {5}},
        {kTableArrangerStrategy, {2}},
        {kTableDimRequest, {3}},
        {kTablePointSelection, {3}},
        {kTableRequestType, {3, 2}},
        {kTableSelectionStrategy, {2}},
        {kTableArrangeDirection, {3, 2}},
        {kTableSystemSource, {3, 2}},
        {kTableProcessScaleOverride, {2}},
        {kTablePointType, {3, 2}},
        {kTableDimGeomRestrictions, {3, 2}},
        {kTableParentRelaPos, {2}},
        {kTableGeometricRestrictions, {4}},
        {kTableLinearDirection, {2}},
        {kTableOrdinateDimType, {2}},
        {kTableOrdinatePosition, {2}},
        {kTableOrdinateReference, {2}},
        {kTableModelType, {2}},
        {kTableAreaType, {2}},
        {kTableDepthPosition, {2}},
        {kTableOrientation, {2}},
        {kTableReferenceAxis, {2}},
        {kTableVisibilityStatus, {2}},
        {kTableBeamPositionCalculation, {2}},
        {kTableObjectPosition, {2}},
        {kTableModelRole, {2}},
    };
    return rows;
}

const std::vector<int>& ValuePictureTable::ofCategories() {
    static const std::vector<int> pictures = from(1501, 8);
    return pictures;
}
