#pragma once

#include "model/KorDSMFamilies.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/TableDeclarations.h"

/// An item that shows one record of type R. All else follows from the row of the type's family.
template <typename R, KorDSMDefines::eItemType Type>
class KorDsmRecordItem : public KorDSMDatabaseItem {
public:
    using Record = R;
    static constexpr KorDSMDefines::eItemType kType = Type;

    KorDsmRecordItem() : KorDSMDatabaseItem(*KorDSMFamilies::of(Type)) {}

    R& getRecord() { return m_Record; }
    const R& getRecord() const { return m_Record; }
    /// Replaces the record; see `KorDSMDatabaseItem::assignRecord`.
    void setRecord(const R& newRecord) {
        m_Record = newRecord;
        recordReplaced();
    }
    /// Gives a new item its record before it is shown.
    void initRecord(const R& firstRecord) { m_Record = firstRecord; }

    bool isEqual(const KorDSMDatabaseItem& other) const override {
        if (!KorDSMDefines::canHaveEqualItems(Type))
            return KorDSMDatabaseItem::isEqual(other);
        const auto* same = dynamic_cast<const KorDsmRecordItem*>(&other);
        return same && m_Record == same->m_Record && KorDSMDatabaseItem::isEqual(other);
    }

    KorString getDisplayName() const override { return m_Record.getRunBezeichnung(); }
    const StructRecord* record() const override { return &m_Record; }
    eTableType tableType() const override { return tableOf<R>; }
    void assignRecord(const StructRecord& newRecord) override { setRecord(static_cast<const R&>(newRecord)); }
    void updateRecord(const StructRecord& changed) override { m_Record = static_cast<const R&>(changed); }

private:
    R m_Record;
};
