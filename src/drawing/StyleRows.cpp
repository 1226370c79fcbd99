#include "drawing/StyleRows.h"

#include "base/Translation.h"

StyleRows::Work::Work(StyleRows& rows) : m_rows(rows), m_outer(rows.m_work), m_reads(rows.m_reads) {
    rows.m_work = this;
}

StyleRows::Work::~Work() {
    m_rows.m_work = m_outer;
    if (m_outer)
        for (const std::string& sentence : m_notes)
            m_outer->note(sentence);
}

void StyleRows::Work::note(const std::string& sentence) {
    constexpr std::size_t kMostNotes = 100; // nobody reads more
    if (m_notes.size() < kMostNotes && std::ranges::find(m_notes, sentence) == m_notes.end())
        m_notes.push_back(sentence);
}

bool StyleRows::comeBack(StyleSource& source) {
    m_source = &source;
    const bool stands = m_reads.compare(source);
    if (!stands)
        std::erase_if(m_made, [&](const auto& made) { return !m_reads.stand(made.second.reads); });
    return stands;
}

const StructRecord* StyleRows::read(const RowRef& row) {
    const StyleTable& table = m_source->table(row.table);
    const StructRecord* found = table.find(KorOdbcKey(row.key));
    m_reads.note(row, table, found);
    return found;
}

void StyleRows::readAgain(const RowReads::Numbers& reads, const std::vector<std::string>& notes) {
    m_reads.note(reads);
    if (m_work)
        for (const std::string& sentence : notes)
            m_work->note(sentence);
}

std::vector<std::int32_t> StyleRows::partsOf(StyleSource& source, eTableType table, const Column& column,
                                             std::int32_t key) {
    std::vector<std::int32_t> keys;
    if (key > 0)
        for (const Referrer& referrer : source.referrersOf(column.target, KorOdbcKey(key)))
            if (referrer.table->type == table && referrer.column == &column)
                keys.push_back(referrer.key);
    return keys;
}

void StyleRows::noteOutside(eTableType table, std::int32_t key, std::function<bool()> isAsItWas) {
    m_reads.note({typeid(isAsItWas).hash_code(), static_cast<std::size_t>(table), key},
                 [isAsItWas = std::move(isAsItWas)](StyleSource&) {
                     return std::vector<std::int32_t>{isAsItWas() ? 1 : 0};
                 },
                 {1});
}

double StyleRows::numericDefault(const char* name, double otherwise) {
    const auto* found = static_cast<const StructNumericDefault*>(
        m_source->table(tableOf<StructNumericDefault>).find(KorString(name)));
    m_reads.note(
        {std::hash<std::string_view>{}(name), tableOf<StructNumericDefault>, 0},
        [name](StyleSource& source) {
            const StructRecord* row = source.table(tableOf<StructNumericDefault>).find(KorString(name));
            return row ? std::vector{row->key} : std::vector<std::int32_t>();
        },
        found ? std::vector{found->key} : std::vector<std::int32_t>());
    return found ? row<StructNumericDefault>(found->key)->value : otherwise;
}

void StyleRows::note(const KorString& sentence) {
    if (m_work)
        m_work->note(sentence.toStdString());
}

ProvenanceStep StyleRows::step(eTableType table, std::int32_t key,
                               std::initializer_list<std::string_view> columns) const {
    ProvenanceStep step{m_source->id(), {table, key}, {}};
    for (const std::string_view name : columns)
        if (const Column* column = findTable(table)->column(name);
            KorAssert::check(column != nullptr, "provenance names a column that there is"))
            step.columns.push_back(column->number);
    return step;
}

void StyleRows::noteMissing(eTableType table, std::int32_t key) {
    note(KorString::format(translated("There is no %s with the key %d, so what it says is not shown."),
                           {findTable(table)->rowName(), std::to_string(key)}));
}

ProvenancePtr nearer(const ProvenanceStep& step, const ProvenancePtr& rest) {
    Provenance all = {step};
    if (rest)
        all.insert(all.end(), rest->begin(), rest->end());
    return std::make_shared<const Provenance>(std::move(all));
}
