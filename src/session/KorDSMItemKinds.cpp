#include "session/KorDSMItemKinds.h"

#include "data/StyleDatabases.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorOdbcGUI.h"
#include "operations/KorOdbcMan.h"

#include <algorithm>

namespace {

using namespace KorDSMDefines;

template <typename Item>
int appendRecord(KorDSMDatabaseItem& item, const KorString& name) {
    auto& record = static_cast<Item&>(item).getRecord();
    record.setRunBezeichnung(name);
    auto& current = KorOdbcMan::currentRecord<typename Item::Record>();
    current = record;
    const int result = KorOdbcMan::appendNewRecord(item.tableType(), 1, KorOdbcMan::kThisRow);
    if (result == WriteResult::kWritten)
        record = current;
    return result;
}

const KorDSMItemKind kKinds[] = {
    {kDetailStyle, kDetailStyleCategory, appendRecord<KorDsmDetailStyleItem>, nullptr, {}},
    {kDetailStyleCategory, kNoType, nullptr, nullptr, {}},
    {kAnnotationStrategy,
     kAnnotationGroup,
     appendRecord<KorDsmAnnotationStrategyItem>,
     KorOdbcGUI::findAnnotationStrategy,
     {kReprMap, kReprMapRule}},
    {kAnnotationGroup, kNoType, nullptr, nullptr, {}},
    {kDimRequest,
     kDimRequestGroup,
     appendRecord<KorDsmDimRequestItem>,
     KorOdbcGUI::findDimensionRequest,
     {kViewDimensioning, kPointSelection}},
    {kDimRequestGroup, kNoType, nullptr, nullptr, {}},
    {kQualifierSet,
     kQualifierSetGroup,
     appendRecord<KorDsmQualifierSetItem>,
     KorOdbcGUI::findQualifierSet,
     {kReprMap, kPointSelection, kReprMapRule}},
    {kQualifierSetGroup, kNoType, nullptr, nullptr, {}},
};

} // namespace

const KorDSMItemKind* findItemKind(eItemType type) {
    const auto* kind = std::ranges::find(kKinds, type, &KorDSMItemKind::type);
    return kind == std::end(kKinds) ? nullptr : kind;
}

const Column* filingColumn(eTableType type) {
    const TableSchema* table = findTable(type);
    for (const Column& column : table->columns)
        if (column.isReference() && column.role == eReferenceRole::kFiledUnder)
            return &column;
    return nullptr;
}
