#include "model/items/KorDsmItems.h"

#include "model/KorDSMMessages.h"
#include "model/KorDSMSectionLoader.h"
#include "operations/KorDSNManager.h"
#include "operations/KorOdbcMan.h"
#include "operations/StyleReads.h"

namespace {

template <typename Item>
std::unique_ptr<Item> cloneOf(const Item& item) {
    auto copy = std::make_unique<Item>();
    copy->initRecord(item.getRecord());
    return copy;
}

} // namespace

std::unique_ptr<KorDSMDatabaseItem> KorDsmDetailStyleItem::clone() const {
    return cloneOf(*this);
}

void KorDsmDetailStyleItem::leaveViews() {
    m_Source = {KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()};
    leaveChildren();
}

void KorDsmDetailStyleItem::makeChildren() {
    const KorDSNRequest request(m_Source.dsn, m_Source.index);
    KorDSMSectionLoader::loadDetailStylesDependencies(this);
}

std::vector<const StructRecord*> KorDsmDetailStyleItem::rowsOfChildrenLeft() const {
    const KorDSNRequest request(m_Source.dsn, m_Source.index);
    std::vector<const StructRecord*> rows;
    for (int i = 0; i < getRecord().getLengthItems(); ++i)
        if (const auto* view =
                StyleReads::find<StructDetViewRequest>(KorOdbcKey(getRecord().getViewRequestAt(i))))
            rows.push_back(view);
    return rows;
}

std::unique_ptr<KorDSMDatabaseItem> KorDsmViewRequestItem::clone() const {
    return cloneOf(*this);
}

std::unique_ptr<KorDSMDatabaseItem> KorDsmDimRequestItem::clone() const {
    return cloneOf(*this);
}

std::unique_ptr<KorDSMDatabaseItem> KorDsmPointSelectionItem::clone() const {
    return cloneOf(*this);
}

std::unique_ptr<KorDSMDatabaseItem> KorDsmQualifierSetItem::clone() const {
    return cloneOf(*this);
}

std::unique_ptr<KorDSMDatabaseItem> KorDsmAnnotationStrategyItem::clone() const {
    auto copy = cloneOf(*this);
    copy->m_AnnotationType = m_AnnotationType;
    return copy;
}

void KorDsmDimRequestItem::setName(KorString name) {
    getRecord().setRunBezeichnung(name);
    DsmSetEntryText message;
    message.entry = entry();
    message.text = getRecord().getRunBezeichnung();
    KorDSMMainWindow::sendMessage(message);
}

void KorDsmReprMapItem::createQualifierSet(std::unique_ptr<KorDSMDatabaseItem> child) {
    KorAssert::check(m_QualifierSet == nullptr, "m_QualifierSet == NULL");
    m_QualifierSet = &addChild(std::move(child));
}

void KorDsmReprMapItem::createAppearance(std::unique_ptr<KorDSMDatabaseItem> child) {
    KorAssert::check(m_Appearance == nullptr, "m_Appearance == NULL");
    m_Appearance = &addChild(std::move(child));
}

void KorDsmReprMapItem::createAnnotationStrategy(std::unique_ptr<KorDSMDatabaseItem> child) {
    KorAssert::check(m_AnnotationStrategy == nullptr, "m_AnnotationStrategy == NULL");
    m_AnnotationStrategy = &addChild(std::move(child));
}

void KorDsmReprMapItem::dependentsDropped() {
    m_QualifierSet = nullptr;
    m_Appearance = nullptr;
    m_AnnotationStrategy = nullptr;
}

bool KorDsmAnnotationArrangementItem::isEqual(const KorDSMDatabaseItem& other) const {
    const auto* same = dynamic_cast<const KorDsmAnnotationArrangementItem*>(&other);
    if (!same || same->m_bStandsForStrategy != m_bStandsForStrategy)
        return false;
    const bool equal = m_bStandsForStrategy ? m_Strategy == same->m_Strategy : m_Control == same->m_Control;
    return equal && KorDSMDatabaseItem::isEqual(other);
}

KorString KorDsmAnnotationArrangementItem::getDisplayName() const {
    return record() ? record()->getRunBezeichnung() : KorString();
}

const StructRecord* KorDsmAnnotationArrangementItem::record() const {
    const StructRecord* own = &m_Control;
    if (m_bStandsForStrategy)
        own = &m_Strategy;
    return own->key > 0 ? own : nullptr;
}

eTableType KorDsmAnnotationArrangementItem::tableType() const {
    return m_bStandsForStrategy ? kTableArrangerStrategy : kTableArrangerControl;
}

void KorDsmAnnotationArrangementItem::assignRecord(const StructRecord& newRecord) {
    updateRecord(newRecord);
    recordReplaced();
}

void KorDsmAnnotationArrangementItem::updateRecord(const StructRecord& changed) {
    if (m_bStandsForStrategy)
        m_Strategy = static_cast<const StructDetArrangerStrategy&>(changed);
    else
        m_Control = static_cast<const StructDetArrangerControl&>(changed);
}

bool KorDsmAnnotationArrangementItem::usesNewArranger() const {
    return m_bStandsForStrategy || m_Control.newArranger != 0;
}
