#pragma once

#include "app/RowChoice.h"

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

    virtual ~EntryList() = default;

    virtual std::vector<Entry> entries() const = 0;
    /// The table of the columns below.
    virtual const TableSchema& table() const = 0;
    /// The columns that entries have; the first one is what a value without a column means.
    virtual std::vector<const Column*> columns() const = 0;
    /// Whether an entry can stand without a value in its first column.
    virtual bool canBeEmpty() const = 0;
    /// Whether entries have an order; otherwise they stand as they were made, and cannot be moved.
    virtual bool isOrdered() const = 0;

    /// Puts an entry in; its first column has the value where one is given.
    virtual KorString add(std::size_t place, const std::optional<KorString>& first) = 0;
    virtual KorString remove(std::size_t place) = 0;
    virtual KorString move(std::size_t from, std::size_t to) = 0;
    virtual KorString set(std::size_t place, const Column& column, const KorString& value) = 0;

    /// The place that a user names: 1 for the first one, or its name, or what its first column says. Nothing,
    /// with a sentence for the user, where there is none or several.
    std::optional<std::size_t> find(const KorString& named, KorString& error) const;
};
