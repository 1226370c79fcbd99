#pragma once

#include "app/RowChoice.h"
#include "session/KorDSMEditedList.h"

#include <memory>
#include <optional>

/// The list of one record that the "entry" commands edit: its parts, or the views of a detail style. Places
/// count from 0. Operations that change something return why they did not, for the user; empty when they did.
class EntryList {
public:
    struct Entry {
        RowRef row;     ///< the part, or the view
        KorString name; ///< its own, or that of the view
        KorString text; ///< what stands in its first column
    };

    /// The list of a record of the current source; null where records of the kind have none.
    static std::unique_ptr<EntryList> of(const RowChoice& owner);
    /// Whether records of the kind have a list.
    static bool isFor(const TableSchema& kind);
    /// The kinds of records that have one, with commas.
    static KorString owners();

    explicit EntryList(std::unique_ptr<KorDSMEditedList> list) : m_list(std::move(list)) {}

    std::vector<Entry> entries() const;
    /// The table of the columns below.
    const TableSchema& table() const { return m_list->table(); }
    /// The columns that entries have; the first one is what a value without a column means.
    std::vector<const Column*> columns() const;
    /// Whether an entry can stand without a value in its first column.
    bool canBeEmpty() const { return m_list->canBeEmpty(); }
    /// Whether entries have an order; otherwise they stand as they were made, and cannot be moved.
    bool isOrdered() const { return m_list->isOrdered(); }

    /// Puts an entry in; its first column has the value where one is given.
    KorString add(std::size_t place, const std::optional<KorString>& first);
    KorString remove(std::size_t place);
    KorString move(std::size_t from, std::size_t to);
    KorString set(std::size_t place, const Column& column, const KorString& value);

    /// The place that a user names: 1 for the first one, or its name, or what its first column says. Nothing,
    /// with a sentence for the user, where there is none or several.
    std::optional<std::size_t> find(const KorString& named, KorString& error) const;

private:
    std::int32_t keyAt(std::size_t place) const { return m_list->keys()[place]; }
    KorString whyListed(const Column& column, const KorString& value, std::int32_t exceptKey) const;

    std::unique_ptr<KorDSMEditedList> m_list;
};
