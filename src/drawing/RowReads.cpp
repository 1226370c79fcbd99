#include "drawing/RowReads.h"

namespace {

std::uint64_t placeOf(const RowRef& row) {
    return static_cast<std::uint64_t>(row.table) << 32 | static_cast<std::uint32_t>(row.key);
}

} // namespace

RowReads::Scope::~Scope() {
    m_reads.m_scope = m_outer;
    if (m_outer)
        for (const int number : m_numbers)
            m_outer->add(number);
}

void RowReads::Scope::add(int number) {
    const auto index = static_cast<std::size_t>(number);
    if (m_has.size() <= index)
        m_has.resize(index * 2 + 64);
    if (m_has[index])
        return;
    m_has[index] = true;
    m_numbers.push_back(number);
}

int RowReads::add(Read read) {
    if (m_free.empty()) {
        m_reads.push_back(std::move(read));
        return static_cast<int>(m_reads.size()) - 1;
    }
    const int number = m_free.back();
    m_free.pop_back();
    m_reads[static_cast<std::size_t>(number)] = std::move(read);
    return number;
}

void RowReads::note(const RowRef& row, const StyleTable& table, const StructRecord* record) {
    const auto [known, isNew] = m_rows.try_emplace(placeOf(row));
    if (isNew) {
        Read read;
        read.row = row;
        if (record)
            read.copy = table.rows().copyOf(record);
        known->second = add(std::move(read));
    }
    if (m_scope)
        m_scope->add(known->second);
}

void RowReads::note(const SearchName& name, const Search& search, std::vector<std::int32_t> found) {
    const auto [known, isNew] = m_searches.try_emplace(name);
    if (isNew) {
        Read read;
        read.name = name;
        read.search = search;
        read.found = std::move(found);
        known->second = add(std::move(read));
    }
    if (m_scope)
        m_scope->add(known->second);
}

void RowReads::note(const Numbers& numbers) {
    if (m_scope)
        for (const int number : numbers)
            m_scope->add(number);
}

bool RowReads::isAsItWas(const Read& read, StyleSource& source) const {
    if (read.search)
        return read.search(source) == read.found;
    const StyleTable& table = source.table(read.row.table);
    const StructRecord* record = table.find(KorOdbcKey(read.row.key));
    return record && read.copy ? table.rows().equal(*record, *read.copy) : !record && !read.copy;
}

bool RowReads::compare(StyleSource& source) {
    bool all = true;
    for (Read& read : m_reads) {
        if (!read.stands || isAsItWas(read, source))
            continue;
        all = false;
        read.stands = false;
        if (read.search)
            m_searches.erase(read.name);
        else
            m_rows.erase(placeOf(read.row));
    }
    return all;
}

bool RowReads::stand(const Numbers& numbers) const {
    return std::ranges::all_of(numbers,
                               [&](int number) { return m_reads[static_cast<std::size_t>(number)].stands; });
}

void RowReads::reuse() {
    m_free.clear();
    for (std::size_t i = 0; i < m_reads.size(); ++i)
        if (!m_reads[i].stands)
            m_free.push_back(static_cast<int>(i));
}
