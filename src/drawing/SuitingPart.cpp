#include "drawing/SuitingPart.h"

#include "data/StyleSource.h"
#include "drawing/MapExplanation.h"

namespace {

using Parts = std::vector<OfferedPart>;

std::string folded(const KorString& text) {
    return text.lowered().toStdString();
}

// Of all parts those that the categories name in which a style is filed.
Parts ofItsCategory(StyleSource& source, std::int32_t style, const Parts& parts) {
    Parts named;
    for (const Referrer& referrer : source.referrersOf(kTableDetailStyle, KorOdbcKey(style))) {
        if (referrer.table->type != kTableDetailMaster)
            continue;
        const auto* master = static_cast<const StructDetailMaster*>(
            source.table(kTableDetailMaster).find(KorOdbcKey(referrer.key)));
        const StructRecord* category = source.table(kTableBaseCategory).find(KorOdbcKey(master->categoryKey));
        const std::string name = category ? folded(category->name) : std::string();
        const auto isNamed = [&](const OfferedPart& each) {
            return std::ranges::any_of(each.part->categories, [&](const std::string& word) {
                return name.find(word) != std::string::npos;
            });
        };
        std::ranges::copy_if(parts, std::back_inserter(named), isNamed);
    }
    return named;
}

// The part whose word stands first in a name; null where none does.
const OfferedPart* namedIn(const std::string& name, const Parts& parts) {
    std::pair<std::size_t, std::size_t> best = {std::string::npos, 0}; // where, and how much is left
    const OfferedPart* named = nullptr;
    for (const OfferedPart& each : parts)
        for (const std::string& word : each.part->styles)
            if (const std::pair place = {name.find(word), name.size() - std::min(word.size(), name.size())};
                place.first != std::string::npos && (!named || place < best)) {
                best = place;
                named = &each;
            }
    return named;
}

// How well the maps of a style's views tell the objects of a part apart: the share of their entries that
// decide about any object, times the share of the objects that an entry decides about.
double told(StyleSource& source, const StructDetailStyle& style, const SamplePart& part) {
    StyleRows rows(source);
    std::set<std::int32_t> maps;
    for (int i = 0; i < style.getLengthItems(); ++i)
        if (const auto* view = rows.row<StructDetViewRequest>(style.getViewRequestAt(i)))
            maps.insert(view->reprMapKey);
    const std::vector<int> shown = MapExplanation::objectsOf(source, style.key, part);
    std::size_t entries = 0;
    std::set<std::int32_t> deciding;
    std::set<int> decided;
    for (const std::int32_t map : maps) {
        ObjectMatch::Entries all = ObjectMatch::entriesOf(rows, map);
        entries += all.size();
        ObjectMatch::Decider decider(rows, std::move(all));
        for (const int object : shown)
            if (const auto* entry = decider.decide(part.objects[static_cast<std::size_t>(object)]).entry) {
                deciding.insert(entry->key);
                decided.insert(object);
            }
    }
    if (decided.empty())
        return 0;
    return static_cast<double>(deciding.size()) / static_cast<double>(entries) *
           static_cast<double>(decided.size()) / static_cast<double>(shown.size());
}

} // namespace

std::string suitingPart(StyleSource& source, std::int32_t style, const std::vector<OfferedPart>& parts) {
    if (parts.empty())
        return {};
    const auto* record =
        static_cast<const StructDetailStyle*>(source.table(kTableDetailStyle).find(KorOdbcKey(style)));
    if (!record)
        return parts.front().name;
    Parts asked = ofItsCategory(source, style, parts);
    if (asked.empty())
        asked = parts;
    if (const OfferedPart* named = namedIn(folded(record->name), asked))
        return named->name;
    std::vector<double> shares;
    for (const OfferedPart& each : asked)
        shares.push_back(asked.size() > 1 ? told(source, *record, *each.part) : 1);
    return asked[static_cast<std::size_t>(std::ranges::max_element(shares) - shares.begin())].name;
}
