#pragma once

#include "records/TableSchema.h"

#include <algorithm>
#include <array>

/// Describes one table column by column. Each call adds the column of that number, with the record member
/// that holds it; a table starts with its run name as column 1. A table of a later version of the schema than
/// the first says so by `since`, and all of its columns are of that version.
template <typename R>
class TableBuilder {
public:
    TableBuilder(std::vector<TableSchema>& tables, std::string name, int since = 1) : m_tables(tables) {
        TableSchema table;
        table.since = since;
        table.type = tableOf<R>;
        table.name = std::move(name);
        table.commitsWith = tableOf<R>;
        table.makeRows = [] { return std::make_unique<TypedRowArray<R>>(); };
        m_tables.push_back(std::move(table));
        text(1, "name", &R::name);
    }

    template <typename C>
    TableBuilder& text(int number, const char* name, KorString C::*member) {
        return add(number, name, eColumnKind::kText, member);
    }
    template <typename C>
    TableBuilder& integer(int number, const char* name, std::int32_t C::*member, int minimum, int maximum) {
        add(number, name, eColumnKind::kInteger, member);
        return range(minimum, maximum);
    }
    template <typename C>
    TableBuilder& integer(int number, const char* name, std::int32_t C::*member) {
        return add(number, name, eColumnKind::kInteger, member);
    }
    /// An integer whose values 0, 1, ... have names.
    template <typename C>
    TableBuilder& choice(int number, const char* name, std::int32_t C::*member,
                         std::vector<std::string> names) {
        integer(number, name, member, 0, static_cast<int>(names.size()) - 1);
        return named(0, std::move(names));
    }
    /// The values `first`, `first` + 1, ... of the column that was added last are chosen by these names.
    TableBuilder& named(std::int32_t first, std::vector<std::string> names) {
        for (std::string& name : names)
            m_tables.back().columns.back().valueNames.push_back({first++, std::move(name)});
        return *this;
    }
    /// The number is no amount in the column that was added last, but has this meaning.
    TableBuilder& meaning(std::int32_t value, const char* name) {
        m_tables.back().columns.back().specialValues.push_back({value, name});
        return *this;
    }
    /// A drawing colour.
    template <typename C>
    TableBuilder& color(int number, const char* name, std::int32_t C::*member) {
        integer(number, name, member, 0, 256);
        m_tables.back().columns.back().isColor = true;
        return *this;
    }
    template <typename C>
    TableBuilder& flag(int number, const char* name, std::int32_t C::*member) {
        add(number, name, eColumnKind::kFlag, member);
        return range(0, 1);
    }
    template <typename C>
    TableBuilder& real(int number, const char* name, double C::*member) {
        return add(number, name, eColumnKind::kReal, member);
    }
    /// A length in millimetres, not below `minimum`.
    template <typename C>
    TableBuilder& length(int number, const char* name, double C::*member, double minimum = 0.0) {
        add(number, name, eColumnKind::kLength, member);
        constexpr double kLongest = 1e8; // 100 km
        return range(minimum, kLongest);
    }
    template <typename C>
    TableBuilder& scale(int number, const char* name, double C::*member) {
        return add(number, name, eColumnKind::kScale, member);
    }
    template <typename C>
    TableBuilder& uses(int number, const char* name, std::int32_t C::*member, eTableType target) {
        return reference(number, name, member, target, eReferenceRole::kUses);
    }
    template <typename C>
    TableBuilder& partOf(int number, const char* name, std::int32_t C::*member, eTableType target) {
        return reference(number, name, member, target, eReferenceRole::kPartOf);
    }
    template <typename C>
    TableBuilder& filedUnder(int number, const char* name, std::int32_t C::*member, eTableType target) {
        return reference(number, name, member, target, eReferenceRole::kFiledUnder);
    }
    template <typename C>
    TableBuilder& identifies(int number, const char* name, std::int32_t C::*member, eTableType target) {
        return reference(number, name, member, target, eReferenceRole::kIdentifies);
    }
    /// Slots of one kind: the columns `number`, `number` + 1, ... named `name`_1, `name`_2, ...
    template <typename C, std::size_t N>
    TableBuilder& slots(int number, const char* name, std::array<std::int32_t, N> C::*member,
                        eTableType target) {
        const std::size_t first = offsetOf(member);
        for (std::size_t i = 0; i < N; ++i) {
            Column& column = append(number + static_cast<int>(i), name + ("_" + std::to_string(i + 1)),
                                    eColumnKind::kReference, first + i * sizeof(std::int32_t));
            column.target = target;
            column.slot = static_cast<int>(i);
        }
        return *this;
    }
    /// The column that was added last, or all slots of that kind, appeared in this version of the schema.
    TableBuilder& since(int version) {
        std::vector<Column>& columns = m_tables.back().columns;
        const int first = columns.back().number - std::max(columns.back().slot, 0);
        for (Column& column : columns)
            if (column.number >= first)
                column.since = version;
        return *this;
    }
    /// A row may have several owners, so that writing it concerns all of them.
    TableBuilder& shareable() {
        m_tables.back().canBeShared = true;
        return *this;
    }
    /// The table takes part in the commit of another table type.
    TableBuilder& committedWith(eTableType owner) {
        m_tables.back().commitsWith = owner;
        return *this;
    }

private:
    template <typename M, typename C>
    static std::size_t offsetOf(M C::*member) {
        static const R probe{};
        return static_cast<std::size_t>(
            reinterpret_cast<const char*>(&(probe.*member)) -
            reinterpret_cast<const char*>(static_cast<const StructRecord*>(&probe)));
    }

    Column& append(int number, std::string name, eColumnKind kind, std::size_t offset) {
        Column& column = m_tables.back().columns.emplace_back();
        column.number = number;
        column.name = std::move(name);
        column.kind = kind;
        column.offset = offset;
        column.since = m_tables.back().since;
        return column;
    }

    template <typename M, typename C>
    TableBuilder& add(int number, const char* name, eColumnKind kind, M C::*member) {
        append(number, name, kind, offsetOf(member));
        return *this;
    }

    template <typename C>
    TableBuilder& reference(int number, const char* name, std::int32_t C::*member, eTableType target,
                            eReferenceRole role) {
        add(number, name, eColumnKind::kReference, member);
        m_tables.back().columns.back().target = target;
        m_tables.back().columns.back().role = role;
        return *this;
    }

    TableBuilder& range(double minimum, double maximum) {
        m_tables.back().columns.back().minimum = minimum;
        m_tables.back().columns.back().maximum = maximum;
        return *this;
    }

    std::vector<TableSchema>& m_tables;
};
