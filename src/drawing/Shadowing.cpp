#include "drawing/Shadowing.h"

#include "base/Translation.h"
#include "drawing/AskedSet.h"
#include "drawing/ObjectMatch.h"
#include "drawing/PartStatement.h"

#include <span>

namespace {

bool isPrefix(const std::string& value) {
    return value.ends_with('*');
}

// Whether whatever fits the value `inner` fits `outer`.
bool coversValue(const std::string& outer, const std::string& inner) {
    if (outer == inner || outer == "*")
        return true;
    const std::string start = outer.substr(0, outer.size() - 1);
    if (isPrefix(outer)) // a number fits other ways to write it, too, which may begin otherwise
        return inner.starts_with(start) && (isPrefix(inner) || !numberIn(inner));
    const std::optional<double> number = numberIn(inner);
    return !isPrefix(inner) && number && number == numberIn(outer);
}

// Whether the test `outer` says yes of each object of which `inner` says yes.
bool coversTest(const PropertyTest& outer, const PropertyTest& inner) {
    if (outer.property != inner.property || inner.kind == PropertyTest::kNotUnderstood)
        return false;
    switch (outer.kind) {
    case PropertyTest::kPresent:
        return true;
    case PropertyTest::kRange:
        if (inner.kind == PropertyTest::kRange)
            return outer.minimum <= inner.minimum && inner.maximum <= outer.maximum;
        return inner.kind == PropertyTest::kOneOf &&
               std::ranges::all_of(inner.values, [&](const auto& value) {
                   const std::optional<double> number = isPrefix(value) ? std::nullopt : numberIn(value);
                   return number && outer.minimum <= *number && *number <= outer.maximum;
               });
    case PropertyTest::kOneOf:
        return inner.kind == PropertyTest::kOneOf &&
               std::ranges::all_of(inner.values, [&](const std::string& value) {
                   return std::ranges::any_of(
                       outer.values, [&](const std::string& other) { return coversValue(other, value); });
               });
    default:
        return false;
    }
}

bool asksTheSame(const AskedQualifier& a, const AskedQualifier& b) {
    return a.property == b.property && a.role == b.role && a.filter == b.filter;
}

// Whether `outer`, without its negation, holds for each object for which `inner`, without its own, does.
bool coversPlainly(const AskedQualifier& outer, const AskedQualifier& inner) {
    return outer.isKnown && inner.isKnown && outer.type == inner.type &&
           (outer.roleNumber == 0 || outer.roleNumber == inner.roleNumber) &&
           coversTest(outer.test, inner.test);
}

bool excludeEachOther(const AskedQualifier& a, const AskedQualifier& b) {
    return a.isKnown && b.isKnown &&
           (a.type != b.type || (a.roleNumber != 0 && b.roleNumber != 0 && a.roleNumber != b.roleNumber));
}

// Whether `outer` holds for each object for which `inner` does.
bool covers(const AskedQualifier& outer, const AskedQualifier& inner) {
    if (outer.negate == inner.negate && asksTheSame(outer, inner))
        return true;
    if (outer.negate && !inner.negate)
        return excludeEachOther(outer, inner);
    if (!outer.negate)
        return !inner.negate && coversPlainly(outer, inner);
    // Both exclude: what is a range can be unknown of what the other one denies, and then excludes nothing.
    const bool canBeUnknown =
        outer.test.kind == PropertyTest::kRange && inner.test.kind == PropertyTest::kOneOf;
    return !canBeUnknown && coversPlainly(inner, outer);
}

bool covers(const AskedSet& outer, std::span<const AskedQualifier> allOfThem) {
    const auto isCovered = [&](const AskedQualifier& qualifier) {
        return std::ranges::any_of(allOfThem,
                                   [&](const AskedQualifier& known) { return covers(qualifier, known); });
    };
    return outer.all ? std::ranges::all_of(outer.qualifiers, isCovered)
                     : std::ranges::any_of(outer.qualifiers, isCovered);
}

bool covers(const AskedSet& outer, const AskedSet& inner) {
    if (outer.saysNothing() || inner.saysNothing() || outer.isCutShort || inner.isCutShort)
        return false;
    const std::span<const AskedQualifier> qualifiers = inner.qualifiers;
    if (inner.all)
        return covers(outer, qualifiers);
    for (std::size_t i = 0; i < qualifiers.size(); ++i)
        if (!covers(outer, qualifiers.subspan(i, 1)))
            return false;
    return true;
}

std::string sentenceFor(std::size_t by, const AskedSet& outer, const AskedSet& inner, bool isSame) {
    const KorString number = KorString::number(static_cast<std::int64_t>(by) + 1);
    return (isSame
                ? KorString::format(translated("It never acts: entry %d before it has the same qualifier set "
                                               "\"%s\"; choose another set, or delete one of the two."),
                                    {number, outer.name})
                : KorString::format(
                      translated(
                          "It never acts: entry %d before it takes all that \"%s\" selects with its set "
                          "\"%s\"; move this one before it, or delete it."),
                      {number, inner.name, outer.name}))
        .toStdString();
}

} // namespace

std::vector<ShadowedEntry> Shadowing::of(StyleSource& source, std::int32_t map,
                                         const std::set<std::int32_t>& entriesOff) {
    StyleRows rows(source);
    const auto entries = ObjectMatch::entriesOf(rows, map);
    std::vector<ShadowedEntry> shadowed;
    constexpr std::size_t kMostEntries = 500; // that each is compared with
    for (std::size_t i = 1; i < entries.size(); ++i)
        for (std::size_t by = 0; by < std::min(i, kMostEntries); ++by) {
            if (entriesOff.contains(entries[by]->key) || entriesOff.contains(entries[i]->key))
                continue;
            const AskedSet& outer = AskedSet::of(rows, entries[by]->qualifierSetKey);
            const AskedSet& inner = AskedSet::of(rows, entries[i]->qualifierSetKey);
            if (!covers(outer, inner))
                continue;
            const bool isSame = entries[by]->qualifierSetKey == entries[i]->qualifierSetKey;
            shadowed.push_back(
                {entries[i]->key, entries[by]->key, isSame, sentenceFor(by, outer, inner, isSame)});
            break;
        }
    return shadowed;
}
