#pragma once

#include "base/KorString.h"

#include <optional>

class QComboBox;

/// The lists of the clipping page: what the boxes for strategy, gap and type offer. Each entry carries the
/// key of its row.
namespace ClippingLists {

constexpr int kDefaultKey = -1; ///< carried by the entry for the default type
constexpr int kNoClipping = 0;  ///< carried by the entry for no strategy

/// What stands for the default in the boxes and on the page.
KorString useDefault();

/// All strategies as people sort names, after an entry for none.
void fillStrategies(QComboBox& combo);
/// Selects the entry of the key, none where there is no such strategy.
void selectStrategy(QComboBox& combo, int key);

/// The gaps of the table, in its order.
void fillGaps(QComboBox& combo);
/// Shows a gap, also one that the table does not offer.
void showGap(QComboBox& combo, double gap);
/// The gap of the selected entry in millimetres, that of the database's defaults where the default is
/// selected; nothing without a selection.
std::optional<double> selectedGap(const QComboBox& combo);

/// All types in the order of their table, after the default.
void fillTypes(QComboBox& combo);

} // namespace ClippingLists
