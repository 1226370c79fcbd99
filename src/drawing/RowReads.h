#pragma once

#include "data/StyleSource.h"
#include "records/RowRef.h"

#include <functional>
#include <unordered_map>

/// What was read of a source, and how it was: rows, and searches for rows. Each has a number. It keeps
/// copies, so that whatever becomes of the source it can tell what changed.
class RowReads {
public:
    /// Numbers of what one piece of work read, each once.
    using Numbers = std::vector<int>;
    /// What a search finds in a source: keys, in its order.
    using Search = std::function<std::vector<std::int32_t>(StyleSource&)>;
    /// What tells searches apart: a type, and two numbers.
    using SearchName = std::tuple<std::size_t, std::size_t, std::int32_t>;

    /// While one lives, what is noted belongs to it, and to those that it lies in. The innermost one is
    /// asked.
    class Scope {
    public:
        explicit Scope(RowReads& reads) : m_reads(reads), m_outer(reads.m_scope) { reads.m_scope = this; }
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

        const Numbers& numbers() const { return m_numbers; }
        void add(int number);

    private:
        RowReads& m_reads;
        Scope* m_outer;
        Numbers m_numbers;
        std::vector<bool> m_has;
    };

    /// A row was read; null: there is none.
    void note(const RowRef& row, const StyleTable& table, const StructRecord* record);
    /// A search found these keys; the rows themselves are noted by whoever reads them.
    void note(const SearchName& name, const Search& search, std::vector<std::int32_t> found);
    /// All of this was read, too.
    void note(const Numbers& numbers);

    /// Looks which of all that was read the source still has as it was. Returns whether all of it. What has
    /// changed is forgotten, and its number does not stand any more.
    bool compare(StyleSource& source);
    bool stand(const Numbers& numbers) const;
    /// Numbers that do not stand are given anew: to be called when nobody keeps them.
    void reuse();

private:
    struct Read {
        RowRef row;
        std::shared_ptr<const StructRecord> copy;
        SearchName name;
        Search search; ///< empty: it is a row
        std::vector<std::int32_t> found;
        bool stands = true;
    };
    struct NameHash {
        std::size_t operator()(const SearchName& name) const {
            const auto& [type, first, second] = name;
            return (type * 31 + first) * 0x9E3779B97F4A7C15ULL + static_cast<std::size_t>(second);
        }
    };

    int add(Read read);
    bool isAsItWas(const Read& read, StyleSource& source) const;

    std::vector<Read> m_reads;
    std::vector<int> m_free;
    std::unordered_map<std::uint64_t, int> m_rows;
    std::unordered_map<SearchName, int, NameHash> m_searches;
    Scope* m_scope = nullptr;
};
