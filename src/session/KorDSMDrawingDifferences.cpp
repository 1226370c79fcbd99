#include "session/KorDSMDrawingDifferences.h"

#include "base/Translation.h"
#include "services/Prompts.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

constexpr int kOfView = 913; // "%s – %s"
constexpr int kSheet = 914;

// What users count: of a dimension or label its text, of all others each line.
struct CountedKind {
    Primitive::ePurpose purpose;
    const char* name;
};
constexpr CountedKind kKinds[] = {
    {Primitive::kVisibleEdge, translatable("visible edges")},
    {Primitive::kHiddenEdge, translatable("hidden edges")},
    {Primitive::kCutEdge, translatable("cut edges")},
    {Primitive::kHatch, translatable("hatches")},
    {Primitive::kCentreLine, translatable("centre lines")},
    {Primitive::kBreakLine, translatable("break lines")},
    {Primitive::kSymbol, translatable("lines of symbols")},
    {Primitive::kGridLine, translatable("grid lines")},
    {Primitive::kDimension, translatable("dimensions")},
    {Primitive::kLabel, translatable("labels")},
    {Primitive::kTitle, translatable("titles")},
    {Primitive::kFrame, translatable("frames")},
};

bool isCounted(const Primitive& primitive) {
    const bool isByText = primitive.purpose == Primitive::kDimension ||
                          primitive.purpose == Primitive::kLabel || primitive.purpose == Primitive::kTitle;
    return !isByText || primitive.kind == Primitive::kText;
}

using Place = std::pair<long, long>; // hundredths of a millimetre

Place placeOf(Vec2 point, Vec2 from) {
    return {std::lround((point.u - from.u) * 100), std::lround((point.v - from.v) * 100)};
}

// Where a view has its own zero: that of what it shows of the model, which dimensions do not move.
Vec2 zeroOf(const Primitives& primitives) {
    Box2 model;
    for (const Primitive& primitive : primitives)
        if (primitive.purpose <= Primitive::kCutEdge)
            model.add(primitive.box());
    if (model.isEmpty())
        model = boxOf(primitives);
    return model.isEmpty() ? Vec2() : model.low;
}

struct Seen {
    const Primitive* primitive;
    std::vector<Place> places;
    bool isGone = false;
};

std::vector<Seen> countedOf(const Primitives& primitives, Primitive::ePurpose purpose) {
    const Vec2 zero = zeroOf(primitives);
    std::vector<Seen> seen;
    for (const Primitive& primitive : primitives) {
        if (primitive.purpose != purpose || !isCounted(primitive))
            continue;
        Seen& each = seen.emplace_back(Seen{&primitive, {}});
        for (const Vec2& point : primitive.points)
            each.places.push_back(placeOf(point, zero));
    }
    return seen;
}

bool isSameLook(const Primitive& a, const Primitive& b) {
    return a.kind == b.kind && a.pen == b.pen && a.text == b.text && a.style == b.style;
}

struct Counts {
    int came = 0;
    int went = 0;
    int moved = 0;
    int changed = 0;
};

// Takes each pair that `isPair` from both lists; returns how many.
template <typename IsPair>
int takePairs(std::vector<Seen>& before, std::vector<Seen>& after, IsPair isPair) {
    std::multimap<std::size_t, Seen*> open; // by a number that pairs have in common
    const auto numberOf = [](const Seen& seen) {
        return static_cast<std::size_t>(seen.primitive->object + 1) * 8 + seen.primitive->kind;
    };
    for (Seen& each : before)
        if (!each.isGone)
            open.emplace(numberOf(each), &each);
    int pairs = 0;
    for (Seen& each : after) {
        if (each.isGone)
            continue;
        const auto [first, last] = open.equal_range(numberOf(each));
        for (auto it = first; it != last; ++it)
            if (isPair(*it->second, each)) {
                it->second->isGone = each.isGone = true;
                open.erase(it);
                ++pairs;
                break;
            }
    }
    return pairs;
}

Counts compare(const Primitives& before, const Primitives& after, Primitive::ePurpose purpose) {
    std::vector<Seen> old = countedOf(before, purpose);
    std::vector<Seen> now = countedOf(after, purpose);
    const auto isAtPlace = [](const Seen& a, const Seen& b) { return a.places == b.places; };
    takePairs(old, now, [&](const Seen& a, const Seen& b) {
        return isAtPlace(a, b) && isSameLook(*a.primitive, *b.primitive);
    });
    Counts counts;
    counts.changed = takePairs(old, now, isAtPlace);
    counts.moved = takePairs(
        old, now, [](const Seen& a, const Seen& b) { return isSameLook(*a.primitive, *b.primitive); });
    for (const Seen& each : old)
        counts.went += !each.isGone;
    for (const Seen& each : now)
        counts.came += !each.isGone;
    return counts;
}

std::string wordsOf(const Primitives& before, const Primitives& after) {
    static constexpr std::pair<int Counts::*, const char*> kChanges[] = {
        {&Counts::came, translatable("%d came")},
        {&Counts::went, translatable("%d went")},
        {&Counts::moved, translatable("%d moved")},
        {&Counts::changed, translatable("%d look different")},
    };
    std::string words;
    for (const CountedKind& kind : kKinds) {
        const Counts counts = compare(before, after, kind.purpose);
        std::string changes;
        for (const auto& [count, text] : kChanges)
            if (counts.*count > 0)
                changes +=
                    (changes.empty() ? "" : ", ") +
                    KorString::format(translated(text), {KorString::number(counts.*count)}).toStdString();
        if (!changes.empty())
            words += (words.empty() ? "" : "; ") + translated(kind.name).toStdString() + ": " + changes;
    }
    return words;
}

const Primitives& primitivesOf(const Drawing& drawing, std::int32_t view) {
    static const Primitives kNone;
    for (const ViewPicture& picture : drawing.views)
        if (picture.key == view)
            return picture.primitives;
    return kNone;
}

} // namespace

std::vector<KorString> KorDSMDrawingDifferences::wordsOf(const Drawing& before, const Drawing& after) {
    std::vector<std::pair<std::int32_t, std::string>> views;
    for (const Drawing* drawing : {&before, &after})
        for (const ViewPicture& view : drawing->views)
            if (std::ranges::find(views, view.key, [](const auto& each) { return each.first; }) ==
                views.end())
                views.emplace_back(view.key, view.name);
    std::vector<KorString> words;
    const auto add = [&words](const KorString& name, const std::string& text) {
        if (!text.empty())
            words.push_back(KorString::format(Prompts::dsm(kOfView), {name, text}));
    };
    for (const auto& [key, name] : views)
        add(name, ::wordsOf(primitivesOf(before, key), primitivesOf(after, key)));
    add(Prompts::dsm(kSheet), ::wordsOf(before.sheet, after.sheet));
    return words;
}
