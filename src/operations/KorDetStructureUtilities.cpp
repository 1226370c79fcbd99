#include "operations/KorDetStructureUtilities.h"

#include <algorithm>
#include <string_view>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view takeNumber(std::string_view& text) {
    const std::size_t zeros = std::min(text.find_first_not_of('0'), text.size());
    text.remove_prefix(zeros);
    std::size_t length = 0;
    while (length < text.size() && isDigit(text[length]))
        ++length;
    const std::string_view number = text.substr(0, length);
    text.remove_prefix(length);
    return number;
}

int sign(int order) {
    return (order > 0) - (order < 0);
}

int compareNumbers(std::string_view& a, std::string_view& b) {
    const std::string_view left = takeNumber(a);
    const std::string_view right = takeNumber(b);
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return sign(left.compare(right));
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

unsigned char folded(char c) {
    return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

// Digits count as numbers, and of the letters of ASCII upper and lower case as the same.
int compareFolded(std::string_view left, std::string_view right) {
    while (!left.empty() && !right.empty()) {
        if (isDigit(left.front()) && isDigit(right.front())) {
            if (const int order = compareNumbers(left, right))
                return order;
            continue;
        }
        if (folded(left.front()) != folded(right.front()))
            return folded(left.front()) < folded(right.front()) ? -1 : 1;
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    return left.empty() == right.empty() ? 0 : left.empty() ? -1 : 1;
}

template <typename Group>
int compareOrdered(const Group& a, const Group& b, std::int32_t Group::*order) {
    if (a.*order != b.*order)
        return a.*order < b.*order ? -1 : 1;
    return KorDetStructureUtilities::compareNames(a.name, b.name);
}

} // namespace

int KorDetStructureUtilities::compareNames(const KorString& a, const KorString& b) {
    // Lists of tens of thousands of names are sorted: most need no copies in lower case.
    const int order = isAscii(a.view()) && isAscii(b.view())
                          ? compareFolded(a.view(), b.view())
                          : compareFolded(a.lowered().view(), b.lowered().view());
    return order ? order : a.compare(b);
}

int KorDetStructureUtilities::compareDetBaseCategories(const StructDetBaseCategory& a,
                                                       const StructDetBaseCategory& b) {
    return compareOrdered(a, b, &StructDetBaseCategory::number);
}

int KorDetStructureUtilities::compareViewRequests(const StructDetViewRequest& a,
                                                  const StructDetViewRequest& b) {
    return compareNames(a.name, b.name);
}

int KorDetStructureUtilities::compareGroupsAS(const StructDetObjAnnotationGroup& a,
                                              const StructDetObjAnnotationGroup& b) {
    return compareOrdered(a, b, &StructDetObjAnnotationGroup::order);
}

int KorDetStructureUtilities::compareGroupsQS(const StructDetObjQualifierSetGroup& a,
                                              const StructDetObjQualifierSetGroup& b) {
    return compareOrdered(a, b, &StructDetObjQualifierSetGroup::order);
}

int KorDetStructureUtilities::compareGroupsDimRequest(const StructDetViewDimRequestLinearGroup& a,
                                                      const StructDetViewDimRequestLinearGroup& b) {
    return compareOrdered(a, b, &StructDetViewDimRequestLinearGroup::order);
}

int KorDetStructureUtilities::compareAnnotations(const StructDetObjAnnotationStrategy& a,
                                                 const StructDetObjAnnotationStrategy& b) {
    return compareNames(a.name, b.name);
}

int KorDetStructureUtilities::compareQualifiers(const StructDetObjQualifierSet& a,
                                                const StructDetObjQualifierSet& b) {
    return compareNames(a.name, b.name);
}

int KorDetStructureUtilities::compareDimRequests(const StructDetViewDimRequestLinear& a,
                                                 const StructDetViewDimRequestLinear& b) {
    return compareNames(a.name, b.name);
}

int KorDetStructureUtilities::compareDetRequestTypes(const StructDetRequestType& a,
                                                     const StructDetRequestType& b) {
    return compareNames(a.name, b.name);
}
