#pragma once

#include "records/StyleRecords.h"
#include "session/KorDSMEditedList.h"

/// The views of a detail style, which stand in its view slots. A row's key is its place, from 1. Only slots
/// that get another view are written; empty ones close up.
class KorDSMViewList final : public KorDSMEditedList {
public:
    /// Keys of views in their order, without the empty slots between them.
    using Views = std::vector<std::int32_t>;

    /// The style must exist.
    KorDSMViewList(SourceId source, std::int32_t style);

    /// The key of the row that stands in a slot, which counts from 0.
    std::int32_t keyOfSlot(int slot) const;
    Views views() const;

    /// Which view is to be added.
    struct Wish {
        enum class eWhat : std::uint8_t { kExisting, kCopy, kNew };

        eWhat what = eWhat::kExisting;
        std::int32_t view = 0; ///< the one to be added or copied
        KorString name = {};   ///< of the copy or the new one
    };
    /// Adds it behind the row `after`, at the end where there is no such row; with a view that is made for
    /// this as one step.
    Outcome addView(std::int32_t after, const Wish& wish);

    std::vector<const Column*> cells() const override;
    std::vector<const Column*> details() const override;
    bool hasNames() const override { return false; }
    bool canBeEmpty() const override { return false; }
    bool isOrdered() const override { return true; }
    KorString whyFull(std::size_t more) const override;
    Keys keys() const override;
    Cell cell(std::int32_t key, const Column& column) const override;
    RowRef record(std::int32_t key) const override;
    eTableType recordTable() const override { return kTableViewRequest; }

private:
    /// Null where others deleted it.
    const StructDetailStyle* listedStyle() const;
    WriteResult write(const Views& views) const;
    WriteResult insertRows(std::size_t place, const std::vector<NewRow>& rows, Keys& made) override;
    /// Each copied row gets a copy of its view: the same view twice in one style is of no use.
    WriteResult copyRows(const Keys& rows, std::size_t place, Keys& made) override;
    WriteResult removeRows(const Keys& rows) override;
    WriteResult arrange(const Keys& order) override;
};
