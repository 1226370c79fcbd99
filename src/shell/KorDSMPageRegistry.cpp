#include "shell/KorDSMPageRegistry.h"

#include "base/KorAssert.h"
#include "model/KorDSMFamilies.h"
#include "pages/KorDSMPageCompassPosition.h"
#include "pages/KorDSMPageCutViewTitleProperties.h"
#include "pages/KorDSMPageDetailStylesProperties.h"
#include "pages/KorDSMPageModelObjectsSelection.h"
#include "pages/KorDSMPageStyleViews.h"
#include "pages/KorDSMPageViewCategories.h"
#include "pages/KorDSMPageViewClipping.h"
#include "pages/KorDSMPageViewDefinition.h"
#include "pages/KorDSMPageViewProperties.h"
#include "pages/KorDSMPlainPage.h"
#include "services/KOSettings.h"

#include <functional>

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

// Pages with controls of their own; all others are made from their table's declaration.
using MakePage = std::function<KorDSMPage*(QWidget*)>;
const std::map<int, MakePage>& pageRows() {
    static const std::map<int, MakePage> rows = {
        {2002, [](QWidget* owner) { return new KorDSMPageDetailStylesProperties(owner); }},
        {1086, [](QWidget* owner) { return new KorDSMPageViewClipping(owner); }},
        {2003, [](QWidget* owner) { return new KorDSMPageModelObjectsSelection(owner); }},
        {2004, [](QWidget* owner) { return new KorDSMPageViewDefinition(owner); }},
        {2005, [](QWidget* owner) { return new KorDSMPageViewProperties(owner); }},
        {2006, [](QWidget* owner) { return new KorDSMPageViewCategories(owner); }},
        {2020, [](QWidget* owner) { return new KorDSMPageCompassPosition(owner); }},
        {2025, [](QWidget* owner) { return new KorDSMPageStyleViews(owner); }},
        {2309, [](QWidget* owner) { return new KorDSMPageCutViewTitleProperties(owner); }},
    };
    return rows;
}

KorDSMPage* makePage(int templateId, QWidget* owner) {
    const auto it = pageRows().find(templateId);
    return it == pageRows().end() ? KorDSMPlainPage::make(owner, templateId) : it->second(owner);
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
        m_pages[templateId] = makePage(templateId, owner);
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

void KorDSMPageRegistry::requestPlainInit() {
    for (const auto& [templateId, registered] : m_pages)
        if (auto* plain = qobject_cast<KorDSMPlainPage*>(registered))
            plain->requestInit();
}

void KorDSMPageRegistry::clear() {
    for (auto& group : m_groups)
        group.reset();
    m_pages.clear();
}
