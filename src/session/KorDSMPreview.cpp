#include "session/KorDSMPreview.h"

#include "base/EditorSession.h"
#include "base/Translation.h"
#include "drawing/WhyNothing.h"
#include "records/StyleRecords.h"
#include "services/Prompts.h"
#include "session/KorDSMProvenanceWords.h"
#include "session/StoredState.h"
#include "session/StyleSheet.h"

#include <algorithm>

namespace {

// Views are shared: as many styles have most of what others of their source look at.
constexpr std::size_t kMostAhead = 200;
constexpr int kNamedReason = 912; // "%s: %s"
constexpr int kRest = 769;        // "Everything else"
constexpr int kAsUsual = 770;
constexpr int kOnTrial = 1450; // "On trial without %s entries of "%s"."

struct ShownPreview {
    KorDSMPreview* preview = nullptr;
};

const StructDetObjReprMapKey* entryOf(StyleSource& source, std::int32_t key) {
    return static_cast<const StructDetObjReprMapKey*>(source.table(kTableReprMapEntry).find(KorOdbcKey(key)));
}

bool isWithin(const KorDSMDatabaseItem* item, RowRef row) {
    while (item && (item->tableType() != row.table || item->recordKey() != row.key))
        item = item->parent();
    return item != nullptr;
}

KorDSMPreview*& current() {
    return EditorSession::currentPart<ShownPreview>().preview;
}

} // namespace

KorDSMPreview* KorDSMPreview::shown() {
    return current();
}

KorDSMPreview::KorDSMPreview(const std::filesystem::path& parts, std::filesystem::path support)
    : m_parts(KorDSMSampleParts::ofSession(parts)), m_support(std::move(support)) {}

KorDSMPreview::~KorDSMPreview() {
    if (current() == this)
        current() = nullptr;
}

StyleSource* KorDSMPreview::source() const {
    return m_subject.style != 0 ? StyleDatabases::current().source(m_subject.source) : nullptr;
}

KorString KorDSMPreview::styleName() const {
    StyleSource* from = source();
    const StructRecord* style =
        from ? from->table(kTableDetailStyle).find(KorOdbcKey(m_subject.style)) : nullptr;
    return style ? style->name : KorString();
}

DrawingRequest KorDSMPreview::request() const {
    DrawingRequest wanted;
    wanted.style = m_subject.style;
    wanted.support = m_support;
    return wanted;
}

DrawingRequest KorDSMPreview::requestOnTrial() const {
    DrawingRequest wanted = request();
    wanted.entriesOff = m_leftOut;
    return wanted;
}

void KorDSMPreview::choosePart(const std::string& name) {
    m_chosen[{m_subject.source, m_subject.style}] = name;
}

void KorDSMPreview::rest() {
    if (current() == this)
        current() = nullptr;
    m_subject = {};
    m_live.reset();
    m_drawing.reset();
    m_governed = {};
}

bool KorDSMPreview::update(const KorDSMDatabaseItem* item, const std::optional<FieldPlace>& typed) {
    const KorDSMPreviewSubject before = std::exchange(m_subject, KorDSMPreviewSubject::of(item));
    if (std::exchange(m_leftOutIn, m_subject.source) != m_subject.source)
        m_leftOut.clear(); // keys mean something in one source only
    endTrialsOutside(item);
    StyleSource* from = source();
    current() = from ? this : nullptr;
    if (!from) {
        m_live.reset();
        return std::exchange(m_drawing, nullptr) != nullptr;
    }
    std::string& chosen = m_chosen[{m_subject.source, m_subject.style}];
    if (chosen.empty())
        chosen = m_parts->suiting(*from, m_subject.style);
    const bool isSame = m_live && before.source == m_subject.source && before.style == m_subject.style &&
                        m_partName == chosen;
    if (!isSame) {
        m_partName = chosen;
        const KorDSMSampleParts::Entry* found = m_parts->find(chosen);
        m_part = found ? found->part : std::make_shared<const SamplePart>();
        m_live = std::make_unique<LiveDrawing>(m_part, request(), found ? found->seen : nullptr);
    }
    m_live->setEntriesOff(m_leftOut);
    const TypedState trial(typed);
    const Drawing& drawn = m_live->update(*from);
    if (isSame && m_drawing && !m_live->hasChanged())
        return false;
    m_drawing = std::make_shared<const Drawing>(drawn);
    m_governed = Governed(*m_drawing);
    return true;
}

bool KorDSMPreview::lookAhead() {
    StyleSource* from = source();
    if (!from)
        return false;
    if (!(std::exchange(m_aheadIn, m_subject.source) == m_subject.source)) {
        const RowArray& styles = from->table(kTableDetailStyle).rows();
        m_ahead.clear();
        for (int i = 0; i < styles.size(); ++i)
            m_ahead.push_back(styles.at(i).key);
        std::ranges::rotate(m_ahead, std::ranges::find(m_ahead, m_subject.style));
        m_ahead.resize(std::min(m_ahead.size(), kMostAhead));
        std::ranges::reverse(m_ahead);
    }
    if (m_ahead.empty())
        return false;
    DrawingRequest wanted = request();
    wanted.style = m_ahead.back();
    m_ahead.pop_back();
    if (const KorDSMSampleParts::Entry* found = m_parts->find(m_parts->suiting(*from, wanted.style)))
        drawStyle(*from, *found->part, wanted, found->seen);
    return !m_ahead.empty();
}

std::shared_ptr<const Drawing> KorDSMPreview::drawStored() const {
    StyleSource* from = source();
    if (!from || !m_live)
        return nullptr;
    const StoredState stored(StyleDatabases::current());
    // On trial, too: what differs is what is pending alone.
    return std::make_shared<const Drawing>(drawStyle(*from, *m_part, requestOnTrial(), m_live->seen()));
}

bool KorDSMPreview::isPending() const {
    return source() && StyleDatabases::current().pending().hasPending(m_subject.source);
}

std::optional<PicturePage> KorDSMPreview::pageOf(bool stored, bool sheet) const {
    const auto drawn = stored ? drawStored() : m_drawing;
    if (!drawn)
        return std::nullopt;
    const PicturePage page = ::pageOf(*drawn, trialText());
    if (!sheet)
        return page;
    std::optional<StoredState> state;
    if (stored)
        state.emplace(StyleDatabases::current());
    return StyleSheet::pageOf(page, *drawn, m_subject.source, m_subject.style);
}

KorString KorDSMPreview::whyBlank(bool stored) const {
    StyleSource* from = source();
    if (!from)
        return m_subject.why;
    std::optional<StoredState> state;
    if (stored)
        state.emplace(StyleDatabases::current());
    const auto* style = static_cast<const StructDetailStyle*>(
        from->table(kTableDetailStyle).find(KorOdbcKey(m_subject.style)));
    if (!style)
        return translated("This detail style is not stored yet.");
    bool hasViews = false;
    for (int i = 0; i < style->getLengthItems(); ++i)
        hasViews = hasViews || style->getViewRequestAt(i) > 0;
    if (!hasViews)
        return translated("This detail style has no views yet; it gets them on its page of views.");
    return KorString::format(
        translated(
            "No view of this detail style shows anything of the sample part \"%s\"; another one can be "
            "chosen above."),
        {translated(m_part->name)});
}

Governed::Places KorDSMPreview::governedBy(const RowRef& row, int column) const {
    StyleSource* from = source();
    return from ? m_governed.by(*from, row, column) : Governed::Places();
}

Governed::Places KorDSMPreview::placesOf(const std::vector<int>& objects) const {
    Governed::Places places;
    const auto all = m_drawing ? m_drawing->all() : std::vector<const Primitive*>();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i]->object >= 0 && std::ranges::find(objects, all[i]->object) != objects.end())
            places.push_back(i);
    return places;
}

Box2 KorDSMPreview::boxOf(const RowRef& row) const {
    return m_governed.box(m_subject.source, row);
}

KorString KorDSMPreview::whyNothing(const RowRef& row, int column) {
    StyleSource* from = source();
    return from && m_drawing
               ? KorString(WhyNothing::sentenceFor(*from, row, column, *m_part, requestOnTrial()))
               : KorString();
}

std::string KorDSMPreview::partThatShows(const RowRef& row, int column) {
    StyleSource* from = source();
    const std::string suiting = from ? m_parts->suiting(*from, m_subject.style) : std::string();
    std::vector<const SamplePart*> others; // the one that suits the style first
    for (const KorDSMSampleParts::Entry& entry : m_parts->all())
        if (entry.name != m_partName)
            others.insert(entry.name == suiting ? others.begin() : others.end(), entry.part.get());
    const SamplePart* found =
        from ? WhyNothing::partThatShows(*from, row, column, requestOnTrial(), others) : nullptr;
    const auto entry = std::ranges::find(
        m_parts->all(), found, [](const KorDSMSampleParts::Entry& each) { return each.part.get(); });
    return found && entry != m_parts->all().end() ? entry->name : std::string();
}

std::vector<EntryCount> KorDSMPreview::countsOf(std::int32_t map) const {
    StyleSource* from = source();
    if (!from)
        return {};
    return MapExplanation(*from, map, *m_part, MapExplanation::objectsOf(*from, m_subject.style, *m_part),
                          m_leftOut)
        .counts();
}

KorDSMPreview::Picked KorDSMPreview::pickedBy(std::int32_t set) const {
    StyleSource* from = source();
    if (!from)
        return {};
    SetExplanation explanation(*from, set, *m_part);
    return {std::ssize(explanation.picked()), std::ssize(explanation.picked(eAnswer::kUnknown)),
            std::ssize(m_part->objects)};
}

std::vector<QualifierCount> KorDSMPreview::countsOfSet(std::int32_t set) const {
    StyleSource* from = source();
    return from ? SetExplanation(*from, set, *m_part).counts() : std::vector<QualifierCount>();
}

void KorDSMPreview::leaveOut(std::int32_t entry, bool out) {
    if (out)
        m_leftOut.insert(entry);
    else
        m_leftOut.erase(entry);
    if (m_tell)
        m_tell();
}

void KorDSMPreview::endTrialsOutside(const KorDSMDatabaseItem* item) {
    StyleSource* from = source();
    std::erase_if(m_leftOut, [&](std::int32_t key) {
        const StructDetObjReprMapKey* entry = from ? entryOf(*from, key) : nullptr;
        return !entry || !isWithin(item, {kTableReprMap, entry->reprMapKey});
    });
}

KorString KorDSMPreview::trialText() const {
    StyleSource* from = source();
    const StructDetObjReprMapKey* entry =
        from && !m_leftOut.empty() ? entryOf(*from, *m_leftOut.begin()) : nullptr;
    const StructRecord* map =
        entry ? from->table(kTableReprMap).find(KorOdbcKey(entry->reprMapKey)) : nullptr;
    if (!map)
        return {};
    const std::int64_t count = std::ssize(m_leftOut); // of one map: trials of others have ended
    return KorString::format(Prompts::counted(kOnTrial, count), {KorString::number(count), map->name});
}

const Primitive* KorDSMPreview::primitiveAt(std::size_t place) const {
    if (!m_drawing)
        return nullptr;
    const std::vector<const Primitive*> all = m_drawing->all();
    return place < all.size() ? all[place] : nullptr;
}

std::vector<KorDSMPreview::Maker> KorDSMPreview::makersOf(std::size_t place) const {
    std::vector<Maker> makers;
    const Primitive* primitive = primitiveAt(place);
    if (!primitive || !primitive->provenance)
        return makers;
    for (const ProvenanceStep& step : *primitive->provenance)
        makers.push_back({step.row, step.columns, KorDSMProvenanceWords::sentenceOf(step)});
    return makers;
}

std::vector<KorDSMPreview::Reason> KorDSMPreview::reasonsFor(std::size_t place) const {
    std::vector<Reason> reasons;
    const Primitive* primitive = primitiveAt(place);
    StyleSource* from = source();
    if (!primitive || !primitive->provenance || primitive->object < 0 || !from)
        return reasons;
    const auto map = std::ranges::find(*primitive->provenance, kTableReprMap,
                                       [](const ProvenanceStep& step) { return step.row.table; });
    if (map == primitive->provenance->end())
        return reasons;
    MapExplanation explanation(*from, map->row.key, *m_part,
                               MapExplanation::objectsOf(*from, m_subject.style, *m_part), m_leftOut);
    for (const EntryReason& reason : explanation.reasonsFor(primitive->object)) {
        const StructRecord* entry = from->table(kTableReprMapEntry).find(KorOdbcKey(reason.entry));
        const KorString name = entry ? entry->name : KorString();
        reasons.push_back({{kTableReprMapEntry, reason.entry},
                           reason.reason == EntryReason::kDecides,
                           KorString::format(Prompts::dsm(kNamedReason), {name, reason.sentence})});
    }
    if (std::ranges::none_of(reasons, &Reason::decides))
        reasons.push_back(reasonOfRest(*primitive, map->row));
    return reasons;
}

// Of what no entry fits; where it belongs to an assembly, the entry that draws that.
KorDSMPreview::Reason KorDSMPreview::reasonOfRest(const Primitive& primitive, RowRef map) const {
    const auto entry = std::ranges::find(*primitive.provenance, kTableReprMapEntry,
                                         [](const ProvenanceStep& step) { return step.row.table; });
    const bool isByEntry = entry != primitive.provenance->end();
    const KorString how = isByEntry ? KorString::format(translated("is drawn like the assembly, by %s"),
                                                        {KorDSMProvenanceWords::nameOf(entry->row)})
                                    : Prompts::dsm(kAsUsual);
    const KorString text = KorString::format(Prompts::dsm(kNamedReason), {Prompts::dsm(kRest), how});
    if (isByEntry)
        return {entry->row, true, text};
    return {map, true, text, {findTable(map.table)->column("hide_unmatched")->number}};
}
