#pragma once

#include "drawing/RowReads.h"
#include "picture/Primitive.h"
#include "records/TableDeclarations.h"

#include <map>
#include <set>
#include <string>
#include <typeindex>

/// The records of one source, as a drawing reads them, and what is wrong with them. It knows what was read,
/// and what each piece of work read.
class StyleRows {
public:
    explicit StyleRows(StyleSource& source) : m_source(&source) {}

    /// What a piece of work read and noted while this lives.
    class Work {
    public:
        explicit Work(StyleRows& rows);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

        const RowReads::Numbers& reads() const { return m_reads.numbers(); }
        /// One sentence for each thing, in the order in which it was met.
        const std::vector<std::string>& notes() const { return m_notes; }

    private:
        friend class StyleRows;
        void note(const std::string& sentence);

        StyleRows& m_rows;
        Work* m_outer;
        RowReads::Scope m_reads;
        std::vector<std::string> m_notes;
    };

    /// Reads from this source from now on, which may be the same one later. What was made of rows that are
    /// not as they were is forgotten. Returns whether all is as it was.
    bool comeBack(StyleSource& source);
    /// Whether all that a piece of work read is as it was when the source was last come back to.
    bool stand(const RowReads::Numbers& reads) const { return m_reads.stand(reads); }
    /// Keeps nothing that was made of rows, only what was read.
    void forgetMade() { m_made.clear(); }
    /// To be called when nobody keeps reads that do not stand.
    void forgetChanged() { m_reads.reuse(); }

    /// What another piece of work read and noted counts as read and noted here.
    void readAgain(const RowReads::Numbers& reads, const std::vector<std::string>& notes);

    /// The row, or null where the key is 0 or below. A key of no row is noted.
    template <typename R>
    const R* row(std::int32_t key) {
        if (key <= 0)
            return nullptr;
        const StructRecord* found = read({tableOf<R>, key});
        if (!found)
            noteMissing(tableOf<R>, key);
        return static_cast<const R*>(found);
    }
    /// All rows that are meant, in the order of their keys. `isMeant` knows nothing but the row.
    template <typename R, typename Predicate>
    std::vector<const R*> rows(Predicate isMeant) {
        static_assert(std::is_empty_v<Predicate>, "searches are told apart by their types");
        return search<R>({typeid(Predicate).hash_code(), tableOf<R>, 0}, [isMeant](StyleSource& source) {
            std::vector<std::int32_t> keys;
            const RowArray& all = source.table(tableOf<R>).rows();
            for (int i = 0; i < all.size(); ++i)
                if (isMeant(static_cast<const R&>(all.at(i))))
                    keys.push_back(all.at(i).key);
            return keys;
        });
    }
    /// Rows that point to an owner by this column, by their order column and then their key.
    template <typename R>
    std::vector<const R*> parts(std::int32_t R::*owner, std::int32_t key, std::int32_t R::*order) {
        const Column& column = columnOf(owner);
        auto found = search<R>({column.number, tableOf<R>, key}, [key, &column](StyleSource& source) {
            return partsOf(source, tableOf<R>, column, key);
        });
        std::ranges::stable_sort(found, {}, [&](const R* record) { return record->*order; });
        return found;
    }
    /// What is made of the row with this key, and of those that it leads to: made once. It keeps no pointer
    /// to a row.
    template <typename T, typename Make>
    const T& once(std::int32_t key, Make make) {
        const std::pair<std::type_index, std::int32_t> name = {typeid(T), key};
        auto known = m_made.find(name);
        if (known == m_made.end()) {
            const Work work(*this);
            auto value = std::make_shared<const T>(make());
            known = m_made.insert_or_assign(name, Made{std::move(value), work.reads(), work.notes()}).first;
        } else {
            readAgain(known->second.reads, known->second.notes);
        }
        return *static_cast<const T*>(known->second.value.get());
    }
    /// Something outside of the source was read for this row; `isAsItWas` tells later whether it still is.
    void noteOutside(eTableType table, std::int32_t key, std::function<bool()> isAsItWas);
    /// A numeric default of the database; `otherwise` where there is none.
    double numericDefault(const char* name, double otherwise);

    /// A step of provenance: the record, and its columns of these names.
    template <typename R>
    ProvenanceStep step(const R& record, std::initializer_list<std::string_view> columns) const {
        return step(tableOf<R>, record.key, columns);
    }

    /// Notes a sentence, once in each piece of work.
    void note(const KorString& sentence);

private:
    struct Made {
        std::shared_ptr<const void> value;
        RowReads::Numbers reads;
        std::vector<std::string> notes;
    };

    template <typename R>
    static const Column& columnOf(std::int32_t R::*member) {
        static const R record;
        const auto offset = static_cast<std::size_t>(reinterpret_cast<const char*>(&(record.*member)) -
                                                     reinterpret_cast<const char*>(&record));
        return *std::ranges::find(findTable(tableOf<R>)->columns, offset, &Column::offset);
    }
    static std::vector<std::int32_t> partsOf(StyleSource& source, eTableType table, const Column& column,
                                             std::int32_t key);
    template <typename R>
    std::vector<const R*> search(const RowReads::SearchName& name, const RowReads::Search& find) {
        std::vector<const R*> found;
        std::vector<std::int32_t> keys = find(*m_source);
        for (const std::int32_t key : keys)
            if (const StructRecord* record = read({tableOf<R>, key}))
                found.push_back(static_cast<const R*>(record));
        m_reads.note(name, find, std::move(keys));
        return found;
    }
    const StructRecord* read(const RowRef& row);
    ProvenanceStep step(eTableType table, std::int32_t key,
                        std::initializer_list<std::string_view> columns) const;
    void noteMissing(eTableType table, std::int32_t key);

    StyleSource* m_source;
    RowReads m_reads;
    Work* m_work = nullptr;
    std::map<std::pair<std::type_index, std::int32_t>, Made> m_made;
};

/// What is already said, with one more step before or behind it.
ProvenancePtr nearer(const ProvenanceStep& step, const ProvenancePtr& rest);
