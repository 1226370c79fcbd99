#include "session/KorDSMDrawingDifferences.h"

#include "base/Translation.h"
#include "services/Prompts.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

constexpr int kOfView = 913; // "%s – %s"
constexpr int kSheet = 914;

// What users count: of a dimension its text, of a label or title all of its texts, of all others each line.
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
    std::vector<const Primitive*> primitives; // of a label or title, one for each line; at least one
    std::vector<Place> places;
    bool isGone = false;

    const Primitive& first() const { return *primitives.front(); }
};

// What made a label or title is its own: all lines of it share that.
bool isNextLine(const Primitive& text, const Seen& before) {
    const bool hasLines = text.purpose == Primitive::kLabel || text.purpose == Primitive::kTitle;
    return hasLines && text.provenance && text.provenance == before.first().provenance;
}

std::vector<Seen> countedOf(const Primitives& primitives, Primitive::ePurpose purpose) {
    const Vec2 zero = zeroOf(primitives);
    std::vector<Seen> seen;
    for (const Primitive& primitive : primitives) {
        if (primitive.purpose != purpose || !isCounted(primitive))
            continue;
        if (seen.empty() || !isNextLine(primitive, seen.back()))
            seen.emplace_back();
        Seen& each = seen.back();
        each.primitives.push_back(&primitive);
        for (const Vec2& point : primitive.points)
            each.places.push_back(placeOf(point, zero));
    }
    return seen;
}

bool isSameLook(const Seen& a, const Seen& b) {
    return std::ranges::equal(a.primitives, b.primitives, [](const Primitive* one, const Primitive* other) {
        return one->kind == other->kind && one->pen == other->pen && one->text == other->text &&
               one->style == other->style;
    });
}

struct Counts {
    int equal = 0;
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
        return static_cast<std::size_t>(seen.first().object + 1) * 8 + seen.first().kind;
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
    Counts counts;
    counts.equal = takePairs(
        old, now, [&](const Seen& a, const Seen& b) { return isAtPlace(a, b) && isSameLook(a, b); });
    counts.changed = takePairs(old, now, isAtPlace);
    counts.moved = takePairs(old, now, isSameLook);
    for (const Seen& each : old)
        counts.went += !each.isGone;
    for (const Seen& each : now)
        counts.came += !each.isGone;
    return counts;
}

void append(std::string& words, const KorString& more) {
    words += (words.empty() ? "" : "; ") + more.toStdString();
}

std::string wordsOf(const Primitives& before, const Primitives& after, int& equal) {
    static constexpr std::pair<int Counts::*, const char*> kChanges[] = {
        {&Counts::came, translatable("%d came")},
        {&Counts::went, translatable("%d went")},
        {&Counts::moved, translatable("%d moved")},
        {&Counts::changed, translatable("%d look different")},
    };
    std::string words;
    for (const CountedKind& kind : kKinds) {
        const Counts counts = compare(before, after, kind.purpose);
        equal += counts.equal;
        std::string changes;
        for (const auto& [count, text] : kChanges)
            if (counts.*count > 0)
                changes +=
                    (changes.empty() ? "" : ", ") +
                    KorString::format(translated(text), {KorString::number(counts.*count)}).toStdString();
        if (!changes.empty())
            append(words, KorString::format("%s: %s", {translated(kind.name), changes}));
    }
    return words;
}

// A view has its own zero: what is equal in it can stand elsewhere on the sheet all the same.
std::string wordsOfView(const Primitives& before, const Primitives& after) {
    int equal = 0;
    std::string words = wordsOf(before, after, equal);
    if (equal == 0 || placeOf(zeroOf(after), zeroOf(before)) == Place{})
        return words;
    std::string all = translated("stands elsewhere on the sheet").toStdString();
    if (!words.empty())
        append(all, words);
    return all;
}

// The frame follows what it is drawn around: it does not move, its size differs.
std::string wordsOfSheet(const Primitives& before, const Primitives& after) {
    const auto frameOf = [](const Primitives& sheet) {
        const auto frame = std::ranges::find(sheet, Primitive::kFrame, &Primitive::purpose);
        return frame == sheet.end() ? Box2() : frame->box();
    };
    int equal = 0;
    std::string words = wordsOf(before, after, equal);
    const Box2 old = frameOf(before);
    const Box2 now = frameOf(after);
    if (placeOf({now.width(), now.height()}, {old.width(), old.height()}) != Place{})
        append(words, translated("the frame has another size"));
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
        add(name, wordsOfView(primitivesOf(before, key), primitivesOf(after, key)));
    add(Prompts::dsm(kSheet), wordsOfSheet(before.sheet, after.sheet));
    return words;
}
