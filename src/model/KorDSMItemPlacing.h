#pragma once

#include "model/KorDSMFamilies.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "records/RowRef.h"

#include <unordered_map>

/// How loaded items find their place below an add-in item.
namespace KorDSMItemPlacing {

/// The child of `parent` that shows the row, or null.
KorDSMDatabaseItem* findChild(const KorDSMDatabaseItem& parent, RowRef row);

/// Puts any number of categories or groups below an add-in: finds each by its key and sorts them once, at
/// the end, so that the work grows no faster than n log n. Categories come by name, case-sensitive by code
/// point, groups by key.
class Filling {
public:
    /// `addIn` must outlive the filling; `groups` is the family of the categories or groups.
    Filling(KorDSMDatabaseItem& addIn, const KorDSMFamily& groups);
    ~Filling();
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

    /// The item for `record`: the present one with the record's key, else a new one, which is at its place
    /// once the filling has ended.
    KorDSMDatabaseItem& place(const StructRecord& record);

private:
    KorDSMDatabaseItem& m_addIn;
    const KorDSMFamily& m_groups;
    std::unordered_map<std::int32_t, KorDSMDatabaseItem*> m_present;
    bool m_grown = false;
};

/// The category or group item for one `record` below an add-in: the present one with the record's key, else
/// a new one at its place.
KorDSMDatabaseItem& place(KorDSMDatabaseItem& addIn, const KorDSMFamily& groups, const StructRecord& record);

/// Puts a record's item below the category or group in which it is filed, where loading would put it.
KorDSMDatabaseItem& file(KorDSMDatabaseItem& group, std::unique_ptr<KorDSMDatabaseItem> item);

} // namespace KorDSMItemPlacing
