#pragma once

#include "records/TableDeclarations.h"

/// The comparisons with which lists are sorted before they are shown: -1, 0 or 1. Groups and categories
/// come by their order number and then by name, everything else by name; names as people read them, so
/// case does not matter and "View 9" comes before "View 10".
class KorDetStructureUtilities {
public:
    static int compareDetBaseCategories(const StructDetBaseCategory& a, const StructDetBaseCategory& b);
    static int compareViewRequests(const StructDetViewRequest& a, const StructDetViewRequest& b);
    static int compareGroupsAS(const StructDetObjAnnotationGroup& a, const StructDetObjAnnotationGroup& b);
    static int compareGroupsQS(const StructDetObjQualifierSetGroup& a,
                               const StructDetObjQualifierSetGroup& b);
    static int compareGroupsDimRequest(const StructDetViewDimRequestLinearGroup& a,
                                       const StructDetViewDimRequestLinearGroup& b);
    static int compareAnnotations(const StructDetObjAnnotationStrategy& a,
                                  const StructDetObjAnnotationStrategy& b);
    static int compareQualifiers(const StructDetObjQualifierSet& a, const StructDetObjQualifierSet& b);
    static int compareDimRequests(const StructDetViewDimRequestLinear& a,
                                  const StructDetViewDimRequestLinear& b);
    static int compareDetRequestTypes(const StructDetRequestType& a, const StructDetRequestType& b);

    /// Names as people read them.
    static int compareNames(const KorString& a, const KorString& b);
    static bool isNameBefore(const KorString& a, const KorString& b) { return compareNames(a, b) < 0; }
};
