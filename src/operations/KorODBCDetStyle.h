#pragma once

#include "operations/StyleReadOperations.h"
#include "records/WriteResult.h"

/// Detail styles and what they are made of, mostly by key.
class KorODBCDetStyle : public StyleReadOperations {
public:
    static int getDetailStyleList(KorArray<KorString>& names) {
        return StyleReads::names<StructDetailStyle>(names);
    }
    static int getDetViewRequestTable(KorArray<StructDetViewRequest>& rows) { return StyleReads::all(rows); }
    static int getDetViewRequestCategoriesTable(KorArray<StructDetViewRequestCategory>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetBaseCategoriesTable(KorArray<StructDetBaseCategory>& rows) {
        return StyleReads::all(rows);
    }

    static int getDetObjAnnotationStrategyByGroup(const KorOdbcKey& group,
                                                  KorArray<StructDetObjAnnotationStrategy>& rows) {
        return StyleReads::parts(rows, &StructDetObjAnnotationStrategy::groupKey, group);
    }
    static int getDetObjQualifierSetByGroup(const KorOdbcKey& group,
                                            KorArray<StructDetObjQualifierSet>& rows) {
        return StyleReads::parts(rows, &StructDetObjQualifierSet::groupKey, group);
    }

    /// Makes the categories of a view request exactly `categories` (base category keys). Returns 1, or a code
    /// below 1 of `WriteResult`; then nothing was written.
    static int setDetViewRequestCategories(const StructDetViewRequest& request,
                                           const KorArray<std::int32_t>& categories);
};

/// Which categories a view request is filed under, while they are being chosen.
class KorRequestObject {
public:
    static bool getSelected(const StructDetBaseCategory& category, const StructDetViewRequest& request);
    /// Files the request under the category or takes it out, as a pending change.
    static WriteResult setSelected(bool selected, const StructDetBaseCategory& category,
                                   const StructDetViewRequest& request);
};

class KorODBCTextSizes {
public:
    /// The text sizes (mm on paper) in the order of the table.
    static int getTextSizesList(KorArray<double>& sizes);
};

class KorODBCDetGeometricRestrictions {
public:
    static int getDetGeometricRestrictionTable(KorArray<StructDetGeometricRestrictions>& rows) {
        return StyleReads::all(rows);
    }
    static int getDetGeometricRestrictionList(KorArray<KorString>& names) {
        return StyleReads::names<StructDetGeometricRestrictions>(names);
    }
};

class KorODBCClippingGap {
public:
    static int getClippingGapByKey(const KorOdbcKey& key, StructClippingGap& record) {
        return StyleReads::read(key, record);
    }
    /// The row with exactly this gap (mm; -1 is the default).
    static int getClippingGapByValue(double gap, StructClippingGap& record);
};

class KorODBCClippingType {
public:
    static int getClippingType(const KorOdbcKey& key, StructClippingType& record) {
        return StyleReads::read(key, record);
    }
    static int getClippingType(const KorString& runName, StructClippingType& record) {
        return StyleReads::read(runName, record);
    }
};

class KorODBCDetailProcessScaleOverride {
public:
    static int getDetailProcessScaleOverrideByKey(const KorOdbcKey& key,
                                                  StructDetailProcessScaleOverride& record) {
        return StyleReads::read(key, record);
    }
    static int getDetailProcessScaleOverrideByName(const KorString& name,
                                                   StructDetailProcessScaleOverride& record) {
        return StyleReads::read(name, record);
    }
};

class KorODBCBeamPositionCalculation {
public:
    static int getBeamPositionCalculation(const KorOdbcKey& key, StructBeamPositionCalculation& record) {
        return StyleReads::read(key, record);
    }
    static int getBeamPositionCalculationByRunname(const KorString& name,
                                                   StructBeamPositionCalculation& record) {
        return StyleReads::read(name, record);
    }
};

/// Dimension requests by the group in which they are filed.
class KorODBCDetViewDimRequestLinear {
public:
    static int getDetViewDimRequestLinearByGroup(const KorOdbcKey& group,
                                                 KorArray<StructDetViewDimRequestLinear>& rows) {
        return StyleReads::parts(rows, &StructDetViewDimRequestLinear::groupKey, group);
    }
};

/// The groups of one family: annotation strategies, qualifier sets or dimension requests.
template <typename Group>
class KorODBCGroup {
public:
    static int get(const KorOdbcKey& key, Group& record) { return StyleReads::read(key, record); }
    static int get(const KorString& runName, Group& record) { return StyleReads::read(runName, record); }
    static int getList(KorArray<Group>& groups) { return StyleReads::all(groups); }
    static int getTable(KorArray<Group>& groups) { return StyleReads::all(groups); }
    static int getRunNames(KorArray<KorString>& names) { return StyleReads::names<Group>(names); }
    /// Writes the record's row, or appends the record when it has no key yet and gives it one. Returns 1 on
    /// success.
    static int save(Group& group);
};

using KorODBCDetObjAnnotationGroup = KorODBCGroup<StructDetObjAnnotationGroup>;
using KorODBCDetObjQualifierSetGroup = KorODBCGroup<StructDetObjQualifierSetGroup>;
using KorODBCDetViewDimRequestLinearGroup = KorODBCGroup<StructDetViewDimRequestLinearGroup>;
