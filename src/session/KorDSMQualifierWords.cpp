#include "session/KorDSMQualifierWords.h"

#include "operations/CurrentRows.h"
#include "records/ObjectRecords.h"
#include "records/OwnWords.h"
#include "records/TableDeclarations.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMSampleParts.h"

#include <set>

namespace {

constexpr int kIs = 630;      // "%s is %s"
constexpr int kIsNot = 631;   // "%s is not %s"
constexpr int kAny = 632;     // "any %s"
constexpr int kNone = 633;    // "no %s"
constexpr int kAs = 634;      // "%s as %s"
constexpr int kAnd = 635;     // "%s, and %s"
constexpr int kOr = 636;      // "%s, or %s"
constexpr int kNothing = 637; // "It has no qualifiers, so it selects nothing yet"

template <typename R>
const R* rowOf(std::int32_t key) {
    return static_cast<const R*>(CurrentRows::find(tableOf<R>, KorOdbcKey(key)));
}

// The name of a filter without the word of the qualifier before it: "purpose: gusset" of the plate purpose.
KorString valueOf(const KorString& what, const KorString& filter) {
    const std::string name = filter.toStdString();
    const std::size_t colon = name.find(": ");
    if (colon == std::string::npos)
        return filter;
    const std::string word = KorString(name.substr(0, colon)).lowered().toStdString();
    const bool isRepeated = what.lowered().toStdString().find(word) != std::string::npos;
    return isRepeated ? KorString(name.substr(colon + 2)) : filter;
}

KorString phraseOf(const StructDetObjQualifierWithRole& row) {
    const auto* qualifier = rowOf<StructDetObjQualifier>(row.qualifierKey);
    const auto* filter = rowOf<StructDetObjQualifierFilter>(row.filterKey);
    const auto* type = qualifier ? rowOf<StructDetModelType>(qualifier->modelTypeKey) : nullptr;
    const KorString what = qualifier ? OwnWords::nameOf(kTableQualifier, *qualifier) : KorString("?");
    const KorString phrase =
        filter ? KorString::format(Prompts::dsm(row.negate ? kIsNot : kIs),
                                   {what, valueOf(qualifier ? qualifier->name : what, filter->name)})
               : KorString::format(Prompts::dsm(row.negate ? kNone : kAny),
                                   {type ? OwnWords::nameOf(kTableModelType, *type) : what});
    const auto* role = rowOf<StructModelRole>(row.modelRoleKey);
    return role && role->role != 0
               ? KorString::format(Prompts::dsm(kAs), {phrase, OwnWords::nameOf(kTableModelRole, *role)})
               : phrase;
}

} // namespace

KorString KorDSMQualifierWords::sentenceOf(std::int32_t key) {
    const auto* set = rowOf<StructDetObjQualifierSet>(key);
    if (!set)
        return {};
    const KorDSMPartList qualifiers(CurrentRows::source(), {kTableQualifierSet, key},
                                    kTableQualifierWithRole);
    KorString sentence;
    for (const std::int32_t row : qualifiers.keys()) {
        const KorString phrase =
            phraseOf(static_cast<const StructDetObjQualifierWithRole&>(*qualifiers.row(row)));
        sentence = sentence.isEmpty() ? phrase
                                      : KorString::format(Prompts::dsm(set->combination == 0 ? kAnd : kOr),
                                                          {sentence, phrase});
    }
    return sentence.isEmpty() ? Prompts::dsm(kNothing) : sentence;
}

std::vector<KorString> KorDSMQualifierWords::properties() {
    std::set<std::string> names;
    for (const StructRecord* row : CurrentRows::byName(kTableQualifier))
        names.insert(static_cast<const StructDetObjQualifier*>(row)->property.trimmed().toStdString());
    const auto parts = KorDSMSampleParts::ofSession(KorResources::folder() / "parts");
    for (const KorDSMSampleParts::Entry& entry : parts->all())
        for (const PartObject& object : entry.part->objects)
            for (const auto& [name, value] : object.properties)
                names.insert(name);
    names.erase("");
    return {names.begin(), names.end()};
}
