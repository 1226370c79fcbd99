#pragma once

#include "session/KorDSMEditedList.h"

/// The parts of one record. What it shows of them comes from the declaration of their table: all columns but
/// the name, the reference to the whole, and the order. After each command an order is 1, 2, ... without gap
/// or tie.
class KorDSMPartList final : public KorDSMEditedList {
public:
    /// `parts` has a column by which its rows are parts of rows of the whole's table.
    KorDSMPartList(SourceId source, RowRef whole, eTableType parts);

    /// The tables whose rows are listed as parts of rows of this table.
    static std::vector<eTableType> listedParts(eTableType whole);

    std::vector<const Column*> cells() const override;
    bool hasNames() const override { return true; }
    bool canBeEmpty() const override { return true; }
    bool isOrdered() const override { return m_order != nullptr; }
    /// Of equal orders the older row first.
    Keys keys() const override;
    Cell cell(std::int32_t key, const Column& column) const override;
    RowRef record(std::int32_t key) const override { return {table().type, key}; }
    eTableType recordTable() const override { return table().type; }
    const StructRecord* row(std::int32_t key) const;

private:
    KorString numberedName(std::size_t number) const;
    WriteResult insertRows(std::size_t place, const std::vector<NewRow>& rows, Keys& made) override;
    WriteResult copyRows(const Keys& rows, std::size_t place, Keys& made) override;
    WriteResult removeRows(const Keys& rows) override;
    WriteResult arrange(const Keys& order) override;
    WriteResult insert(std::size_t place, const std::vector<std::shared_ptr<StructRecord>>& records,
                       Keys& made);

    const Column* m_owner = nullptr;
    const Column* m_order = nullptr;
};
