#include "pages/KorDSMPlainPage.h"

#include <algorithm>

using namespace KorDSMDefines;

const std::vector<PlainPageDescription>& KorDSMPlainPage::descriptions() {
    static const std::vector<PlainPageDescription> pages = {
        {5, 2001, 33538, kTableViewArrangeStrategy, 2, {}},
        {kReprMapRule, 2007, 33580, kTableReprMap, 0, {}},
        {kReprMap, 2009, 33595, kTableReprMapEntry, 0, {}},
        {kViewDimensioning, 2010, 33610, kTableViewDimStrategy, 0, {}},
        {kPointSelection, 2015, 33645, kTablePointSelection, 0, {}},
        {kDimRequest, 2014, 33625, kTableDimRequest, 0, {2, 3, 4, 5, 6, 7, 10, 11, 12, 13, 14}},
        {33, 2321, 33994, kTableDimRequest, 0, {8, 9}},
        {kSystemAndBox, 2008, 33772, kTableSystemAndBox, 0, {}},
        {kQualifierSet, 2011, 33675, kTableQualifierSet, 0, {}},
        {kAnnotationStrategy, 2012, 33790, kTableAnnotationStrategy, 0, {}},
        {kAnnotationArrangement, 2013, 33805, kTableArrangerControl, 0, {}},
        {kSecondArrangerControl, 2017, 33805, kTableArrangerStrategy, 0, {}},
        {kAppearance, 2016, 33685, kTableAppearance, 0, {}},
    };
    return pages;
}

bool KorDSMPlainPage::isPlainTemplate(int templateId) {
    return std::ranges::find(descriptions(), templateId, &PlainPageDescription::templateId) !=
           descriptions().end();
}

KorDSMPage* KorDSMPlainPage::make(QWidget* parent, int templateId) {
    const auto it = std::ranges::find(descriptions(), templateId, &PlainPageDescription::templateId);
    return it == descriptions().end() ? nullptr : new KorDSMPlainPage(parent, *it);
}
