#pragma once

#include "data/StyleSource.h"
#include "drawing/Primitive.h"
#include "records/TableDeclarations.h"

#include <map>
#include <set>
#include <string>
#include <typeindex>

/// The records of one source, as a drawing reads them, and what is wrong with them.
class StyleRows {
public:
    explicit StyleRows(StyleSource& source) : m_source(source) {}

    /// The row, or null where the key is 0 or below. A key of no row is noted.
    template <typename R>
    const R* row(std::int32_t key) {
        if (key <= 0)
            return nullptr;
        const auto* found = static_cast<const R*>(m_source.table(tableOf<R>).find(KorOdbcKey(key)));
        if (!found)
            noteMissing(tableOf<R>, key);
        return found;
    }
    /// All rows that `isMeant`, in the order of their keys.
    template <typename R, typename Predicate>
    std::vector<const R*> rows(Predicate isMeant) {
        std::vector<const R*> found;
        const RowArray& all = m_source.table(tableOf<R>).rows();
        for (int i = 0; i < all.size(); ++i)
            if (const auto& record = static_cast<const R&>(all.at(i)); isMeant(record))
                found.push_back(&record);
        return found;
    }
    /// Rows that point to an owner by this column, by their order column and then their key.
    template <typename R>
    std::vector<const R*> parts(std::int32_t R::*owner, std::int32_t key, std::int32_t R::*order) {
        auto found = rows<R>([&](const R& record) { return key > 0 && record.*owner == key; });
        std::ranges::stable_sort(found, {}, [&](const R* record) { return record->*order; });
        return found;
    }
    /// What is made of the row with this key, and of those that it leads to: made once.
    template <typename T, typename Make>
    const T& once(std::int32_t key, Make make) {
        std::shared_ptr<const void>& made = m_made[{typeid(T), key}];
        if (!made)
            made = std::make_shared<const T>(make());
        return *static_cast<const T*>(made.get());
    }
    /// A numeric default of the database; `otherwise` where there is none.
    double numericDefault(const char* name, double otherwise);

    /// A step of provenance: the record, and its columns of these names.
    template <typename R>
    ProvenanceStep step(const R& record, std::initializer_list<std::string_view> columns) const {
        return step(tableOf<R>, record.key, columns);
    }

    /// Notes a sentence, once.
    void note(const KorString& sentence);
    const std::vector<std::string>& notes() const { return m_notes; }

private:
    ProvenanceStep step(eTableType table, std::int32_t key,
                        std::initializer_list<std::string_view> columns) const;
    void noteMissing(eTableType table, std::int32_t key);

    StyleSource& m_source;
    std::map<std::pair<std::type_index, std::int32_t>, std::shared_ptr<const void>> m_made;
    std::set<std::string> m_noted;
    std::vector<std::string> m_notes;
};

/// What is already said, with one more step before or behind it.
ProvenancePtr nearer(const ProvenanceStep& step, const ProvenancePtr& rest);
