#include "session/KorDSMStyleViews.h"

#include "operations/KorDetStructureUtilities.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"
#include "session/ItemCommandParts.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMRecordCommands.h"
#include "session/KorDSMTwins.h"
#include "session/PendingGroup.h"

#include <algorithm>

namespace KorDSMStyleViews {

namespace {

constexpr int kViewsOf = 248; // "change of the views of "%s""

Views withoutGaps(const StructDetailStyle& style) {
    Views views;
    for (const std::int32_t key : style.viewRequests)
        if (key > 0)
            views.push_back(key);
    return views;
}

Views viewsOf(const KorDsmDetailStyleItem& style) {
    return withoutGaps(style.getRecord());
}

const StructDetailStyle& styleAt(SourceId source, std::int32_t key) {
    return static_cast<const StructDetailStyle&>(
        *StyleDatabases::current().source(source)->table(kTableDetailStyle).find(KorOdbcKey(key)));
}

// The place of a view in that order.
int placeOf(const KorDSMDatabaseItem& view, const KorDsmDetailStyleItem& style) {
    const auto& slots = style.getRecord().viewRequests;
    const int slot = slotOf(view);
    return slot < 0 ? -1
                    : static_cast<int>(std::count_if(slots.begin(), slots.begin() + slot,
                                                     [](std::int32_t key) { return key > 0; }));
}

std::vector<KorDSMRowChange> write(KorDsmDetailStyleItem& style, const Views& views) {
    const ItemCommandParts::SourceRequest source(style);
    const auto changes = setViews(KorDSMItemSource::sourceOf(&style), style.recordKey(), views);
    if (!changes.empty())
        KorDSMTwins::recordWritten(style);
    return changes;
}

} // namespace

Views viewsOf(SourceId source, std::int32_t style) {
    return withoutGaps(styleAt(source, style));
}

std::size_t mostViews() {
    return StructDetailStyle().viewRequests.size();
}

// All slots that change, or none.
std::vector<KorDSMRowChange> setViews(SourceId source, std::int32_t style, const Views& views) {
    const KorDSNRequest request(source.dsn, source.index);
    const auto before = styleAt(source, style).viewRequests;
    const TableSchema& table = *findTable(kTableDetailStyle);
    KorDSMRowChange change{source, {kTableDetailStyle, style}, {}, {}, {}};
    PendingGroup group(ItemCommandParts::label(kViewsOf, styleAt(source, style).name));
    for (std::size_t slot = 0; slot < before.size(); ++slot) {
        const std::int32_t key = slot < views.size() ? views[slot] : 0;
        if (key == before[slot])
            continue;
        const int column = KorOdbcMan::m_numberOfColumns[kTableDetailStyle] + static_cast<int>(slot);
        if (!KorDSMGuardedWrite::setField(kTableDetailStyle, KorOdbcKey(style), column, std::int64_t{key})
                 .isStored()) {
            group.takeBack();
            return {};
        }
        change.columns.push_back(table.column(column));
    }
    if (change.columns.empty())
        return {};
    return {change};
}

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

std::vector<KorString> candidates() {
    KorArray<KorString> names;
    KorOdbcGUI::getDetViewRequestList(names);
    std::vector<KorString> sorted(names.begin(), names.end());
    std::ranges::sort(sorted, KorDetStructureUtilities::isNameBefore);
    return sorted;
}

bool hasRoom(const KorDsmDetailStyleItem& style) {
    return viewsOf(style).size() < mostViews();
}

std::vector<KorDSMRowChange> addView(KorDSMDatabaseItem& item, const KorString& name) {
    KorDsmDetailStyleItem* style = styleOf(item);
    StructDetViewRequest view;
    if (!style || !hasRoom(*style) || KorOdbcGUI::getDetViewRequest(name, view) != 1)
        return {};
    Views views = viewsOf(*style);
    const int place = placeOf(item, *style);
    views.insert(place < 0 ? views.end() : views.begin() + place + 1, view.key);
    return write(*style, views);
}

std::vector<KorDSMRowChange> addNewView(KorDSMDatabaseItem& item, const KorString& name, KorString& error) {
    const ItemCommandParts::SourceRequest source(item);
    PendingGroup group({});
    const auto made =
        KorDSMRecordCommands::create(KorDSMItemSource::sourceOf(&item), kTableViewRequest, name, 0);
    error = KorString(made.error);
    if (!made.isStored() || addView(item, name).empty()) {
        group.takeBack();
        return {};
    }
    return KorDSMUndo::changesSince(group.begin());
}

std::vector<KorDSMRowChange> removeView(KorDSMDatabaseItem& view) {
    if (slotOf(view) < 0)
        return {};
    KorDsmDetailStyleItem& style = *styleOf(view);
    Views views = viewsOf(style);
    views.erase(views.begin() + placeOf(view, style));
    return write(style, views);
}

bool canMove(const KorDSMDatabaseItem& view, int step) {
    if (slotOf(view) < 0)
        return false;
    const auto& style = static_cast<const KorDsmDetailStyleItem&>(*view.parent());
    const int place = placeOf(view, style) + step;
    return place >= 0 && place < static_cast<int>(viewsOf(style).size());
}

std::vector<KorDSMRowChange> moveView(KorDSMDatabaseItem& view, int step) {
    if (!canMove(view, step))
        return {};
    KorDsmDetailStyleItem& style = *styleOf(view);
    Views views = viewsOf(style);
    const int place = placeOf(view, style);
    std::iter_swap(views.begin() + place, views.begin() + place + step);
    return write(style, views);
}

} // namespace KorDSMStyleViews
