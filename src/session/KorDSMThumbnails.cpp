#include "session/KorDSMThumbnails.h"

#include "data/StyleDatabases.h"
#include "drawing/DrawingSubject.h"
#include "records/TableDeclarations.h"
#include "session/KorDSMItemSource.h"

namespace {

// Of as many it is known whether they hold: more than a screen has room for, some times over.
constexpr std::size_t kMostKept = 400;

} // namespace

KorDSMThumbnails::KorDSMThumbnails(const std::filesystem::path& parts, std::filesystem::path support)
    : m_parts(KorDSMSampleParts::ofSession(parts)), m_support(std::move(support)) {}

std::optional<KorDSMThumbnails::Subject> KorDSMThumbnails::subjectOf(const KorDSMDatabaseItem& item) {
    const eTableType table = item.tableType();
    if ((table != kTableDetailStyle && table != kTableViewRequest) || !item.record())
        return std::nullopt;
    const SourceId source = KorDSMItemSource::sourceOf(&item);
    return source.dsn == KorDSNDefinitions::kLast ? std::nullopt
                                                  : std::optional(Subject{source, {table, item.recordKey()}});
}

bool KorDSMThumbnails::readOneTable(SourceId id) {
    StyleSource* source = StyleDatabases::current().source(id);
    if (!source)
        return false;
    for (const TableSchema& table : allTables())
        if (!source->isRead(table) && source->readingOf(table.type))
            return true;
    return false;
}

KorDSMThumbnails::Wanted KorDSMThumbnails::wantedOf(StyleSource& source, const RowRef& row) {
    Wanted wanted;
    wanted.request.support = m_support;
    if (!source.table(row.table).find(KorOdbcKey(row.key)))
        return wanted;
    if (row.table == kTableDetailStyle) {
        wanted.request.style = row.key;
    } else {
        wanted.request.style = DrawingSubject::of(source, row, 0).style;
        wanted.request.view = row.key;
    }
    wanted.part = m_parts->suiting(source, wanted.request.style);
    return wanted;
}

KorDSMThumbnails::Kept& KorDSMThumbnails::keep(const Subject& subject) {
    const auto known = m_places.find(subject);
    if (known != m_places.end()) {
        m_kept.splice(m_kept.begin(), m_kept, known->second);
        return m_kept.front();
    }
    if (m_kept.size() >= kMostKept) {
        m_places.erase(m_kept.back().subject);
        m_kept.pop_back();
    }
    m_kept.push_front({subject, {}, nullptr});
    m_places[subject] = m_kept.begin();
    return m_kept.front();
}

void KorDSMThumbnails::forget(const Subject& subject) {
    if (const auto known = m_places.find(subject); known != m_places.end())
        known->second->live.reset();
}

std::optional<Drawing> KorDSMThumbnails::draw(const Subject& subject) {
    StyleSource* source = StyleDatabases::current().source(subject.source);
    if (!source)
        return Drawing();
    Wanted wanted = wantedOf(*source, subject.row);
    Kept& kept = keep(subject);
    if (kept.live && kept.wanted == wanted && kept.live->isAsItWas(*source))
        return std::nullopt;
    const KorDSMSampleParts::Entry* found = m_parts->find(wanted.part);
    kept.live = std::make_unique<LiveDrawing>(found ? found->part : std::make_shared<const SamplePart>(),
                                              wanted.request, found ? found->seen : nullptr);
    kept.wanted = std::move(wanted);
    kept.live->update(*source);
    return kept.live->take();
}
