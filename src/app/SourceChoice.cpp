#include "app/SourceChoice.h"

#include "app/DidYouMean.h"
#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "services/AddInManager.h"

#include <algorithm>

namespace {

const KorAddIn* addInOf(SourceId id) {
    const std::vector<KorAddIn>& addIns = AddInManager::getInstance().addIns();
    const auto it =
        std::ranges::find(addIns, id, [](const KorAddIn& a) { return SourceId::addIn(a.id().number); });
    return it == addIns.end() ? nullptr : &*it;
}

bool isCalled(SourceId id, const KorString& name) {
    const KorString wanted = name.lowered();
    const KorAddIn* addIn = addInOf(id);
    return SourceChoice::nameOf(id).lowered() == wanted || (addIn && addIn->info().name.lowered() == wanted);
}

// Standard, add-ins, User: the order in which the editor shows them.
std::vector<SourceId> openSources() {
    std::vector<SourceId> ids = StyleDatabases::current().sources();
    std::ranges::stable_partition(ids, [](SourceId id) { return id != SourceId::user(); });
    return ids;
}

// In the order in which they are searched.
std::vector<SourceId> knownSources() {
    std::vector<SourceId> ids = {SourceId::user(), SourceId::standard()};
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        ids.push_back(SourceId::addIn(addIn.id().number));
    return ids;
}

} // namespace

namespace SourceChoice {

KorString nameOf(SourceId id) {
    if (id == SourceId::standard())
        return "standard";
    if (id == SourceId::user())
        return "user";
    const KorAddIn* addIn = addInOf(id);
    return addIn ? addIn->id().id : KorString::number(id.index);
}

KorString missingBefore(SourceId found) {
    for (const SourceId id : knownSources()) {
        if (id == found)
            break;
        if (!StyleDatabases::current().source(id))
            return nameOf(id);
    }
    return {};
}

KorString missing() {
    KorString names;
    for (const SourceId id : knownSources())
        if (!StyleDatabases::current().source(id))
            names = names + (names.isEmpty() ? "" : ", ") + nameOf(id);
    return names;
}

Result<std::vector<SourceId>> choose(const std::string& name) {
    if (name.empty())
        return openSources();
    std::vector<KorString> known;
    KorString names;
    for (const SourceId id : knownSources()) {
        if (!isCalled(id, name)) {
            known.push_back(nameOf(id));
            names = names + (names.isEmpty() ? "" : ", ") + known.back();
            continue;
        }
        if (StyleDatabases::current().source(id))
            return std::vector{id};
        return Result<>::failure(KorString::format(
            translated("The database of the source \"%s\" cannot be used now."), {nameOf(id)}));
    }
    return Result<>::failure(
        KorString::format(translated("There is no source \"%s\"; there are %s."), {name, names}) +
        didYouMean(name, known));
}

} // namespace SourceChoice
