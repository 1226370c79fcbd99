#include "session/KorDSMSearch.h"

#include "data/ScopedSource.h"
#include "data/store/LockWait.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMFamilies.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"
#include "session/SearchPath.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>

namespace {

constexpr int kField = 1003;
constexpr int kValue = 1004;
constexpr const char* kBetween = " › ";
constexpr std::ptrdiff_t kFewest = 2;  // letters with which values are looked for
constexpr std::size_t kTargets = 1000; // records whose users are looked for

std::ptrdiff_t countLetters(std::string_view text) {
    return std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

// The lesser, the earlier.
struct Rank {
    bool isInside = false;
    bool isPart = false;
    eSearchKind rankedAs = eSearchKind::kCommand;
    bool isOff = false;
    bool isElsewhere = false;
    bool isLater = false;
    std::size_t length = 0;
    eSearchKind kind = eSearchKind::kCommand;

    auto operator<=>(const Rank&) const = default;
};

Rank rankOf(eSearchKind kind, const SearchFit& fit, std::size_t length) {
    // A whole value says less than a whole name.
    const bool isPart = fit.isPart || kind == eSearchKind::kValue;
    // "Undo ... of NAME" comes behind what has that name: Enter would take back what is looked for.
    const bool isBehind = kind == eSearchKind::kCommand && fit.isLater;
    return {fit.isInside, isPart, isBehind ? eSearchKind::kRecord : kind, false, isBehind, fit.isLater,
            length,       kind};
}

bool isEdited(eTableType table) {
    if (KorDSMFamilies::of(table))
        return true;
    return std::ranges::any_of(findTable(table)->columns, [](const Column& column) {
        return column.isReference() &&
               (column.role == eReferenceRole::kPartOf || column.role == eReferenceRole::kIdentifies) &&
               isEdited(column.target);
    });
}

int ownIconOf(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->icon != 0 ? KorDSMDefines::iconResource(family->icon) : 0;
}

// That of the nearest whole, or of what uses such records, where they have none of their own.
int iconOf(eTableType table) {
    if (const int own = ownIconOf(table); own != 0)
        return own;
    for (const Column& column : findTable(table)->columns)
        if (column.isReference() && column.role != eReferenceRole::kUses && column.target != table)
            return iconOf(column.target);
    for (const TableSchema& user : allTables())
        for (const Column& column : user.columns)
            if (column.isReference() && column.target == table && ownIconOf(user.type) != 0)
                return ownIconOf(user.type);
    return 0;
}

KorString joined(const std::vector<KorString>& steps) {
    KorString path;
    for (const KorString& step : steps)
        path = path.isEmpty() ? step : path + KorString(kBetween) + step;
    return path;
}

// Where only another wording has the words, it is shown behind the one that is shown.
KorString shownAs(const SearchWords& words, const KorString& shown, const std::vector<KorString>& others) {
    if (words.fit(shown.lowered().view()))
        return shown;
    for (const KorString& other : others)
        if (words.fit(other.lowered().view()))
            return KorString::format("%s (%s)", {shown, other});
    return shown;
}

std::optional<SearchFit> bestOf(const SearchWords& words, const std::vector<KorString>& texts,
                                std::string_view context) {
    std::optional<SearchFit> best;
    for (const KorString& text : texts)
        if (const auto fit = words.fit(text.lowered().view(), context); fit && (!best || *fit < *best))
            best = fit;
    return best;
}

} // namespace

struct KorDSMSearch::Source {
    StyleSource* source;
    std::vector<SearchTable> tables;

    const SearchTable& table(eTableType type) const {
        return *std::ranges::find_if(tables,
                                     [type](const SearchTable& each) { return each.schema().type == type; });
    }
};

struct KorDSMSearch::Field {
    const TableSchema* table;
    const Column* column;
    std::vector<KorString> wordings; // first the one that is shown
    SourceId source;
    RowRef row;
};

struct KorDSMSearch::Candidate {
    Rank rank;
    std::size_t order; // of those that rank alike
    std::size_t place; // of the term, the field, or the source
    const SearchTable* table = nullptr;
    const Column* column = nullptr;
    std::size_t row = 0;

    auto key() const { return std::tie(rank, order); }
};

// The best ones of each kind, as they are met.
struct KorDSMSearch::Query {
    SearchWords words;
    std::size_t atMost;
    std::array<std::vector<Candidate>, kNumberOfSearchKinds> found{};
    std::size_t count = 0;
    bool areAll = true;

    void take(Candidate candidate) {
        candidate.order = count++;
        std::vector<Candidate>& kept = found[static_cast<std::size_t>(candidate.rank.kind)];
        kept.push_back(candidate);
        if (kept.size() >= 8 * atMost)
            shorten(kept);
    }
    void shorten(std::vector<Candidate>& kept) {
        areAll = areAll && kept.size() <= atMost;
        if (kept.size() <= atMost)
            return;
        std::ranges::nth_element(kept, kept.begin() + static_cast<std::ptrdiff_t>(atMost), {},
                                 &Candidate::key);
        kept.resize(atMost);
    }
    std::vector<Candidate> best() {
        std::vector<Candidate> all;
        for (std::vector<Candidate>& kept : found) {
            shorten(kept);
            all.insert(all.end(), kept.begin(), kept.end());
        }
        std::ranges::sort(all, {}, &Candidate::key);
        return all;
    }
};

KorDSMSearch::KorDSMSearch(const Here& here, std::vector<KorDSMSearchTerm> terms)
    : m_here(here), m_terms(std::move(terms)) {
    for (const KorDSMSearchTerm& term : m_terms) {
        std::vector<KorString>& wordings = m_termWordings.emplace_back(std::vector{term.text});
        for (const std::vector<KorString>& more : {m_wordings.of(term.text), term.alsoCalled})
            wordings.insert(wordings.end(), more.begin(), more.end());
    }
    readSources();
    addFields();
}

KorDSMSearch::~KorDSMSearch() = default;

std::vector<SourceId> KorDSMSearch::orderedSources(const Here& here) {
    std::vector<SourceId> ids = StyleDatabases::current().sources();
    std::ranges::stable_partition(ids, [&here](SourceId id) { return id == here.source; });
    return ids;
}

void KorDSMSearch::readSources() {
    m_sources.clear();
    for (const SourceId id : orderedSources(m_here)) {
        Source& source = m_sources.emplace_back();
        source.source = StyleDatabases::current().source(id);
        for (const TableSchema& table : allTables())
            source.tables.emplace_back(*source.source, table, isEdited(table.type), m_wordings);
    }
}

bool KorDSMSearch::mayCollect() {
    return !KorDSMBusy::isBusy() && !LockWait::isWaiting();
}

bool KorDSMSearch::collectAhead() {
    return std::ranges::any_of(m_sources, [this](Source& source) {
        const ScopedSource scoped(source.source->id());
        return std::ranges::any_of(source.tables, [this](SearchTable& table) {
            return !table.isOutdated() && table.collectValues(m_wordings);
        });
    });
}

std::pair<SourceId, RowRef> KorDSMSearch::rowOf(const Here& here, eTableType table) {
    if (here.row.table == table && here.row.key > 0)
        return {here.source, here.row};
    StyleSource* source = StyleDatabases::current().source(here.source);
    const RowArray* rows = source ? &source->table(table).rows() : nullptr;
    for (const Column& column : findTable(table)->columns)
        if (rows && here.row.key > 0 && column.isReference() && column.role == eReferenceRole::kPartOf &&
            column.target == here.row.table)
            for (int i = 0; i < rows->size(); ++i)
                if (column.integerIn(&rows->at(i)) == here.row.key)
                    return {here.source, {table, rows->at(i).key}};
    for (const SourceId id : orderedSources(here))
        if (const RowArray& all = StyleDatabases::current().source(id)->table(table).rows(); all.size() > 0)
            return {id, {table, all.at(0).key}};
    return {here.source, {table, 0}};
}

void KorDSMSearch::addFields() {
    for (const TableSchema& table : allTables()) {
        const auto [source, row] =
            isEdited(table.type) ? rowOf(m_here, table.type) : std::pair<SourceId, RowRef>();
        if (row.key <= 0)
            continue;
        for (const Column& column : table.columns) {
            const bool isShown = !column.isReference() || column.role == eReferenceRole::kUses ||
                                 column.role == eReferenceRole::kFiledUnder;
            if (column.number == 1 || !isShown || (column.isSlot() && column.slot > 0))
                continue;
            std::vector<KorString> wordings{KorDSMValueText::columnCaption(table, column)};
            const std::vector<KorString> others = m_wordings.of(wordings.front());
            wordings.insert(wordings.end(), others.begin(), others.end());
            m_fields.push_back({&table, &column, std::move(wordings), source, row});
        }
    }
}

std::vector<KorString> KorDSMSearch::sourceNames() const {
    std::vector<KorString> names;
    for (const Source& source : m_sources)
        names.push_back(KorDSMWhereUsed::sourceName(source.source->id()));
    return names;
}

KorDSMSearchResult KorDSMSearch::find(const KorString& typed, std::size_t atMost) {
    Query query{SearchWords(typed), atMost};
    if (query.words.isEmpty())
        return {};
    if (std::ranges::any_of(m_sources, [](const Source& source) {
            return std::ranges::any_of(source.tables, &SearchTable::isOutdated);
        }))
        readSources();
    findTerms(query);
    findFields(query);
    findRecords(query);
    if (countLetters(typed.trimmed().view()) >= kFewest) {
        while (collectAhead())
            ;
        findValues(query);
    }
    KorDSMSearchResult result;
    for (const Candidate& candidate : query.best())
        result.hits.push_back(describe(query.words, candidate));
    result.areAll = query.areAll;
    return result;
}

void KorDSMSearch::findTerms(Query& query) const {
    for (std::size_t i = 0; i < m_terms.size(); ++i) {
        const KorString context =
            KorString::format("%s %s", {m_terms[i].kindText, m_terms[i].path}).lowered();
        const auto fit = bestOf(query.words, m_termWordings[i], context.view());
        if (!fit)
            continue;
        Rank rank = rankOf(m_terms[i].kind, *fit, m_terms[i].text.size());
        rank.isOff = !m_terms[i].isOffered;
        query.take({rank, 0, i});
    }
}

void KorDSMSearch::findFields(Query& query) const {
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const Field& field = m_fields[i];
        const KorString context = KorDSMValueText::tableCaption(*field.table).lowered();
        const auto fit = bestOf(query.words, field.wordings, context.view());
        if (!fit)
            continue;
        Rank rank = rankOf(eSearchKind::kField, *fit, field.wordings.front().size());
        rank.isElsewhere = field.row != m_here.row;
        query.take({rank, 0, i});
    }
}

void KorDSMSearch::findRecords(Query& query) const {
    for (std::size_t place = 0; place < m_sources.size(); ++place) {
        const SourceId id = m_sources[place].source->id();
        const std::string source = KorDSMWhereUsed::sourceName(id).lowered().toStdString();
        for (const SearchTable& table : m_sources[place].tables) {
            if (!KorDSMFamilies::of(table.schema().type))
                continue;
            const std::string context = table.kind() + " " + source;
            const auto take = [&](const SearchTable::Match& match) {
                Rank rank = rankOf(eSearchKind::kRecord, match.fit, match.length);
                rank.isElsewhere = id != m_here.source;
                query.take({rank, 0, place, &table, nullptr, match.row});
                return true;
            };
            table.names(query.words, take, &context);
        }
    }
}

void KorDSMSearch::findValues(Query& query) const {
    for (std::size_t place = 0; place < m_sources.size(); ++place) {
        const Source& source = m_sources[place];
        std::map<std::pair<eTableType, std::vector<std::string>>, SearchTable::Keys> known;
        const auto keysOf = [&](eTableType target, const std::string& context) -> const SearchTable::Keys& {
            const auto [found, isNew] = known.try_emplace({target, query.words.missingIn(context)});
            SearchTable::Keys& keys = found->second;
            const SearchTable& table = source.table(target);
            const auto take = [&](const SearchTable::Match& match) {
                keys.emplace(table.rowAt(match.row).key, match.fit);
                return keys.size() < kTargets;
            };
            if (isNew)
                table.names(query.words, take, &context);
            return keys;
        };
        for (const SearchTable& table : source.tables)
            table.values(query.words, keysOf, query.atMost, [&](const SearchTable::Match& match) {
                Rank rank = rankOf(eSearchKind::kValue, match.fit, match.length);
                rank.isElsewhere = source.source->id() != m_here.source;
                query.take({rank, 0, place, &table, match.column, match.row});
                return true;
            });
    }
}

KorDSMSearchHit KorDSMSearch::describe(const SearchWords& words, const Candidate& candidate) const {
    KorDSMSearchHit hit;
    hit.kind = candidate.rank.kind;
    if (candidate.table) {
        describeRow(words, candidate, hit);
    } else if (hit.kind == eSearchKind::kField) {
        describeField(words, m_fields[candidate.place], hit);
    } else {
        const KorDSMSearchTerm& term = m_terms[candidate.place];
        hit.text = shownAs(words, term.text, m_termWordings[candidate.place]);
        hit.kindText = term.kindText;
        hit.path = term.path;
        hit.isOffered = term.isOffered;
        hit.term = candidate.place;
    }
    return hit;
}

void KorDSMSearch::describeField(const SearchWords& words, const Field& field, KorDSMSearchHit& hit) const {
    hit.text = shownAs(words, field.wordings.front(), field.wordings);
    hit.kindText = Prompts::dsm(kField);
    hit.icon = iconOf(field.row.table);
    hit.sourceId = field.source;
    hit.row = field.row;
    hit.column = field.column->number;
    hit.source = KorDSMWhereUsed::sourceName(field.source);
    const StructRecord* record = StyleDatabases::current()
                                     .source(field.source)
                                     ->table(field.row.table)
                                     .find(KorOdbcKey(field.row.key));
    hit.path = KorDSMValueText::tableCaption(*field.table);
    if (record && !record->name.isEmpty())
        hit.path = joined({hit.path, record->name});
}

void KorDSMSearch::describeRow(const SearchWords& words, const Candidate& candidate,
                               KorDSMSearchHit& hit) const {
    const SearchTable& table = *candidate.table;
    StyleSource& source = *m_sources[candidate.place].source;
    const StructRecord& record = table.rowAt(candidate.row);
    const ScopedSource scoped(source.id());
    hit.icon = iconOf(table.schema().type);
    hit.sourceId = source.id();
    hit.row = {table.schema().type, record.key};
    hit.source = KorDSMWhereUsed::sourceName(source.id());
    std::vector<KorString> path = searchPathTo(source, hit.row);
    const KorString kind = KorDSMValueText::tableCaption(table.schema());
    if (const Column* column = candidate.column) {
        const KorString shown = KorDSMValueText::toText(table.schema(), *column, record);
        hit.column = column->number;
        hit.kindText = Prompts::dsm(kValue);
        hit.text = KorString::format("%s: %s", {KorDSMValueText::columnCaption(table.schema(), *column),
                                                shownAs(words, shown, table.otherValues(*column, shown))});
        path.push_back(record.name.isEmpty() ? kind : record.name);
    } else {
        hit.kindText = kind;
        hit.text = record.name;
    }
    hit.path = joined(path);
}
