#include "pages/ClippingLists.h"

#include "controls/KorQt.h"
#include "model/CurrentUnits.h"
#include "operations/CurrentRows.h"
#include "operations/KorDetStructureUtilities.h"
#include "operations/KorODBCDetStyle.h"
#include "operations/KorOdbcGUI.h"
#include "pages/ValuePictures.h"
#include "records/OwnWords.h"
#include "services/Prompts.h"

#include <QComboBox>

#include <algorithm>

namespace {

constexpr int kUseDefaultPrompt = 14101;
constexpr int kNoClippingPrompt = 450;
constexpr double kDefaultGap = -1.0;
constexpr int kColumnType = 7; // of the clipping strategy

QString lengthText(double value) {
    return toQt(getUnitsOfCurrentDatabase().format(value, KorUnitsManager::kLength));
}

} // namespace

KorString ClippingLists::useDefault() {
    return Prompts::ups(kUseDefaultPrompt);
}

void ClippingLists::fillStrategies(QComboBox& combo) {
    combo.clear();
    combo.addItem(toQt(Prompts::dsm(kNoClippingPrompt)), kNoClipping);
    for (const StructRecord* strategy : CurrentRows::byName(kTableLengthClip))
        combo.addItem(toQt(strategy->name), strategy->key);
}

void ClippingLists::selectStrategy(QComboBox& combo, int key) {
    combo.setCurrentIndex(combo.findData(key));
}

void ClippingLists::fillGaps(QComboBox& combo) {
    KorArray<StructClippingGap> gaps;
    KorOdbcGUI::getClippingGapTable(gaps);
    combo.clear();
    for (const StructClippingGap& row : gaps)
        combo.addItem(row.gap == kDefaultGap ? toQt(useDefault()) : lengthText(row.gap), row.key);
}

void ClippingLists::showGap(QComboBox& combo, double gap) {
    StructClippingGap row;
    const bool known = KorODBCClippingGap::getClippingGapByValue(gap, row) == 1;
    // A gap that the table does not offer is shown all the same, as the text of a combo without a choice.
    combo.setPlaceholderText(lengthText(gap));
    combo.setCurrentIndex(known ? combo.findData(row.key) : -1);
}

std::optional<double> ClippingLists::selectedGap(const QComboBox& combo) {
    StructClippingGap row;
    if (combo.currentIndex() < 0 ||
        KorODBCClippingGap::getClippingGapByKey(KorOdbcKey(combo.currentData().toInt()), row) != 1)
        return std::nullopt;
    double gap = row.gap;
    if (gap == kDefaultGap && kor_odbc_getDefault("C40_ClipLineDistance", gap) != 1)
        return std::nullopt;
    return gap;
}

void ClippingLists::fillTypes(QComboBox& combo) {
    KorArray<KorString> names;
    KorOdbcGUI::getClippingTypeList(names);
    const TableSchema& types = *findTable(kTableClippingType);
    combo.clear();
    combo.addItem(toQt(useDefault()), kDefaultKey);
    for (const KorString& name : names) {
        StructClippingType type;
        const bool found = KorODBCClippingType::getClippingType(name, type) == 1;
        combo.addItem(found ? ValuePictures::ofRow(types, type) : QIcon(),
                      toQt(OwnWords::nameOf(kTableClippingType, name)), found ? type.key : kDefaultKey);
    }
    combo.setIconSize(ValuePictures::sizeFor(*findTable(kTableLengthClip),
                                             *findTable(kTableLengthClip)->column(kColumnType)));
}
