#include "pages/KorDSMPlainPage.h"

#include <algorithm>

using namespace KorDSMDefines;

const std::vector<PlainPageDescription>& KorDSMPlainPage::descriptions() {
    static const std::vector<PlainPageDescription> pages = {
        {5, 2001, 33538, 2, {}, {}, {3, 9, 10, 11}},
        {kReprMapRule, 2007, 33580},
        {kReprMap, 2009, 33595},
        {kViewDimensioning, 2010, 33610},
        {kPointSelection, 2015, 33645},
        {kDimRequest, 2014, 33625, 0, {2, 3, 4, 5, 6, 7, 10, 11, 12, 13, 14}},
        {33, 2321, 33994, 0, {8, 9}, {8}},
        {kSystemAndBox, 2008, 33772},
        {kQualifierSet, 2011, 33675},
        {kAnnotationStrategy, 2012, 33790, 0, {}, {6}},
        {kAnnotationArrangement, 2013, 33805},
        {kSecondArrangerControl, 2017, 33805},
        {kAppearance, 2016, 33685},
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
