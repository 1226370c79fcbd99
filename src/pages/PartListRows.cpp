#include "pages/PartListRows.h"

#include "model/KorDSMFamilies.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <algorithm>

std::vector<const Column*> PartListRows::columnsToShow() const {
    std::vector<const Column*> shown = list->cells();
    if (list->hasNames() && KorDSMFamilies::of(list->recordTable()))
        shown.insert(shown.begin(), list->table().column(1));
    const std::vector<const Column*> details = list->details();
    shown.insert(shown.end(), details.begin(), details.end());
    return shown;
}

const Column* PartListRows::columnAt(int place) const {
    return place >= 0 && place < std::ssize(columns) ? columns[static_cast<std::size_t>(place)] : nullptr;
}

bool PartListRows::isDetail(const Column& column) const {
    const std::vector<const Column*> details = list->details();
    return std::ranges::find(details, &column) != details.end();
}

KorString PartListRows::captionOf(const Column& column) const {
    constexpr int kView = 774;
    if (isDetail(column))
        return KorDSMValueText::captionWithUnit(*findTable(list->recordTable()), column);
    return list->hasNames() ? KorDSMValueText::captionWithUnit(list->table(), column) : Prompts::dsm(kView);
}

KorDSMEditedList::Keys PartListRows::keysAt(const std::vector<int>& rows) const {
    KorDSMEditedList::Keys found;
    for (const int row : rows)
        if (row < std::ssize(keys))
            found.push_back(keyAt(row));
    return found;
}

std::int32_t PartListRows::referenceAt(int row, const Column& column) const {
    return static_cast<std::int32_t>(std::get<std::int64_t>(list->value(keyAt(row), column)));
}

std::vector<KorString> PartListRows::textsOf(std::int32_t key) const {
    std::vector<KorString> texts;
    for (const Column* column : columns)
        texts.push_back(column->kind == eColumnKind::kFlag
                            ? KorString(list->value(key, *column) != CellValue(std::int64_t{0}) ? "1" : "0")
                            : list->text(key, *column));
    return texts;
}
