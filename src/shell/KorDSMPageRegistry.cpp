#include "shell/KorDSMPageRegistry.h"

#include "base/KorAssert.h"
#include "model/KorDSMFamilies.h"
#include "pages/KorDSMPageAnnotationStrategy.h"
#include "pages/KorDSMPageAppearance.h"
#include "pages/KorDSMPageArrangerControl.h"
#include "pages/KorDSMPageArrangerControlNew.h"
#include "pages/KorDSMPageCompassPosition.h"
#include "pages/KorDSMPageCutViewTitleProperties.h"
#include "pages/KorDSMPageDetailStylesProperties.h"
#include "pages/KorDSMPageDimPointSelection.h"
#include "pages/KorDSMPageDimRequest.h"
#include "pages/KorDSMPageDimensionTitleProperties.h"
#include "pages/KorDSMPageModelObjectsSelection.h"
#include "pages/KorDSMPageQualifierSet.h"
#include "pages/KorDSMPageReprMapItem.h"
#include "pages/KorDSMPageReprMapRule.h"
#include "pages/KorDSMPageStyleViews.h"
#include "pages/KorDSMPageSystemAndBox.h"
#include "pages/KorDSMPageViewArrangement.h"
#include "pages/KorDSMPageViewCategories.h"
#include "pages/KorDSMPageViewClipping.h"
#include "pages/KorDSMPageViewDefinition.h"
#include "pages/KorDSMPageViewDimensioning.h"
#include "pages/KorDSMPageViewProperties.h"
#include "services/KOSettings.h"

using namespace KorDSMDefines;

namespace {

// Which pages hear of changes made on a page, by template numbers, in order.
const std::vector<std::pair<int, std::vector<int>>>& linkRows() {
    static const std::vector<std::pair<int, std::vector<int>>> rows = {
        {2001, {2004}},       {2007, {2004}}, {2010, {2004}},
        {2014, {2010, 2015}}, {2008, {2004}}, {2011, {2009, 2015, 2007}},
        {2012, {2009, 2007}},
    };
    return rows;
}

template <typename Page>
KorDSMPage* make(QWidget* owner) {
    return new Page(owner);
}

using MakePage = KorDSMPage* (*)(QWidget* owner);
const std::map<int, MakePage>& pageRows() {
    static const std::map<int, MakePage> rows = {
        {1086, make<KorDSMPageViewClipping>},
        {2001, make<KorDSMPageViewArrangement>},
        {2002, make<KorDSMPageDetailStylesProperties>},
        {2003, make<KorDSMPageModelObjectsSelection>},
        {2004, make<KorDSMPageViewDefinition>},
        {2005, make<KorDSMPageViewProperties>},
        {2006, make<KorDSMPageViewCategories>},
        {2007, make<KorDSMPageReprMapRule>},
        {2008, make<KorDSMPageSystemAndBox>},
        {2009, make<KorDSMPageReprMapItem>},
        {2010, make<KorDSMPageViewDimensioning>},
        {2011, make<KorDSMPageQualifierSet>},
        {2012, make<KorDSMPageAnnotationStrategy>},
        {2013, make<KorDSMPageArrangerControl>},
        {2014, make<KorDSMPageDimRequest>},
        {2015, make<KorDSMPageDimPointSelection>},
        {2016, make<KorDSMPageAppearance>},
        {2017, make<KorDSMPageArrangerControlNew>},
        {2020, make<KorDSMPageCompassPosition>},
        {2025, make<KorDSMPageStyleViews>},
        {2309, make<KorDSMPageCutViewTitleProperties>},
        {2321, make<KorDSMPageDimensionTitleProperties>},
    };
    return rows;
}

} // namespace

void KorDSMPageRegistry::createPages(QWidget* owner) {
    clear();
    for (const KorDSMFamily& row : KorDSMFamilies::all())
        if (!row.pages.isEmpty())
            createGroup(owner, row);
    for (const auto& [from, targets] : linkRows())
        for (const int target : targets)
            if (KorDSMPage* sender = page(from))
                sender->addLinkedPage(page(target));
}

void KorDSMPageRegistry::createForLooking(QWidget* owner, eItemType type) {
    clear();
    createGroup(owner, *KorDSMFamilies::of(type));
    for (const auto& [templateId, registered] : m_pages)
        registered->setEditable(false);
}

void KorDSMPageRegistry::createGroup(QWidget* owner, const KorDSMFamily& row) {
    const KorString key = KorString::format("%sTabs", {KOSettings::getKeyDSM()});
    auto group = std::make_unique<TabContent>(key, row.pageGroup);
    for (const int templateId : row.pages) {
        m_pages[templateId] = pageRows().at(templateId)(owner);
        group->addPage(m_pages[templateId]);
    }
    group->createPages();
    m_groups[static_cast<std::size_t>(row.type)] = std::move(group);
}

TabContent* KorDSMPageRegistry::group(eItemType type) const {
    if (!KorAssert::check(type >= 0 && type < kNumberOfItemTypes, "isValid( index )"))
        return nullptr;
    return m_groups[static_cast<std::size_t>(type)].get();
}

KorDSMPage* KorDSMPageRegistry::page(int templateId) const {
    const auto it = m_pages.find(templateId);
    return it == m_pages.end() ? nullptr : it->second;
}

KorDSMPage* KorDSMPageRegistry::pageOfCode(int code) const {
    for (const KorDSMFamily& row : KorDSMFamilies::all())
        for (const int templateId : row.pages)
            if (KorDSMPage* candidate = page(templateId); candidate && candidate->pageCode() == code)
                return candidate;
    return nullptr;
}

void KorDSMPageRegistry::requestInit() {
    for (const auto& [templateId, registered] : m_pages)
        if (registered)
            registered->requestInit();
}

void KorDSMPageRegistry::requestFormInit() {
    for (const auto& [templateId, registered] : m_pages)
        if (auto* form = qobject_cast<KorDSMFormPage*>(registered))
            form->requestInit();
}

void KorDSMPageRegistry::clear() {
    for (auto& group : m_groups)
        group.reset();
    m_pages.clear();
}
