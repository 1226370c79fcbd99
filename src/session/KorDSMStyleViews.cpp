#include "session/KorDSMStyleViews.h"

#include "operations/KorOdbcMan.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMTwins.h"

namespace KorDSMStyleViews {

namespace {

KorDSMViewList listOf(const KorDsmDetailStyleItem& style) {
    return {KorDSMItemSource::sourceOf(&style), style.recordKey()};
}

// The row of a view in that list; 0 for the style itself, behind which something is added at the end.
std::int32_t rowOf(const KorDSMDatabaseItem& item, const KorDsmDetailStyleItem& style) {
    const int slot = slotOf(item);
    return slot < 0 ? 0 : listOf(style).keyOfSlot(slot);
}

// Does a command on the list of the item's style, if it has one.
template <typename Command>
std::vector<KorDSMRowChange> onList(KorDSMDatabaseItem& item, KorString* error, Command command) {
    KorDsmDetailStyleItem* style = styleOf(item);
    if (!style)
        return {};
    KorDSMViewList list = listOf(*style);
    KorDSMEditedList::Outcome outcome = command(list, rowOf(item, *style));
    if (error && !outcome.isTold)
        *error = KorString(outcome.error);
    if (!outcome.changes.empty())
        KorDSMTwins::recordWritten(*style);
    return std::move(outcome.changes);
}

} // namespace

KorDsmDetailStyleItem* styleOf(KorDSMDatabaseItem& item) {
    if (auto* style = dynamic_cast<KorDsmDetailStyleItem*>(&item))
        return style;
    return dynamic_cast<KorDsmDetailStyleItem*>(item.parent());
}

bool canChange(KorDSMDatabaseItem& item) {
    return styleOf(item) && KorOdbcMan::getEditableStatus();
}

int slotOf(const KorDSMDatabaseItem& view) {
    const auto* style = dynamic_cast<const KorDsmDetailStyleItem*>(view.parent());
    if (!style)
        return -1;
    // A style can show one view twice: which of its slots is meant, the items before this one tell.
    int before = 0;
    for (const KorDSMDatabaseItem* sibling : style->children()) {
        if (sibling == &view)
            break;
        before += sibling->recordKey() == view.recordKey();
    }
    const StructDetailStyle& record = style->getRecord();
    for (int slot = 0; slot < record.getLengthItems(); ++slot)
        if (record.getViewRequestAt(slot) == view.recordKey() && before-- == 0)
            return slot;
    return -1;
}

KorString whyFull(KorDSMDatabaseItem& item) {
    const KorDsmDetailStyleItem* style = styleOf(item);
    return style ? listOf(*style).whyFull(1) : KorString();
}

std::vector<KorDSMRowChange> add(KorDSMDatabaseItem& item, const KorDSMViewList::Wish& wish,
                                 KorString& error) {
    return onList(item, &error,
                  [&](KorDSMViewList& list, std::int32_t row) { return list.addView(row, wish); });
}

std::vector<KorDSMRowChange> removeView(KorDSMDatabaseItem& view) {
    if (slotOf(view) < 0)
        return {};
    return onList(view, nullptr, [](KorDSMViewList& list, std::int32_t row) { return list.remove({row}); });
}

bool canMove(const KorDSMDatabaseItem& view, int step) {
    if (slotOf(view) < 0)
        return false;
    const auto& style = static_cast<const KorDsmDetailStyleItem&>(*view.parent());
    const std::ptrdiff_t row = std::ptrdiff_t{rowOf(view, style)} + step;
    return row >= 1 && row <= std::ssize(listOf(style).keys());
}

std::vector<KorDSMRowChange> moveView(KorDSMDatabaseItem& view, int step) {
    if (!canMove(view, step))
        return {};
    return onList(view, nullptr,
                  [step](KorDSMViewList& list, std::int32_t row) { return list.moveBy({row}, step); });
}

} // namespace KorDSMStyleViews
