#include "pages/PartListColumns.h"

#include "operations/CurrentRows.h"
#include "pages/ValuePictures.h"
#include "records/OwnWords.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

#include <map>

std::optional<SelectionFills::eFill> PartListColumns::treeFor(const Column& column) {
    static const std::map<eTableType, SelectionFills::eFill> trees = {
        {kTableQualifierSet, SelectionFills::kQualifierSets},
        {kTableAnnotationStrategy, SelectionFills::kAnnotationStrategies},
        {kTableDimRequest, SelectionFills::kDimRequests},
        {kTableViewRequest, SelectionFills::kViewRequests},
    };
    const auto tree = trees.find(column.isReference() ? column.target : kNoTable);
    return tree == trees.end() ? std::nullopt : std::optional(tree->second);
}

KorString PartListColumns::headOf(eTableType parts) {
    static const std::map<eTableType, int> heads = {
        {kTableReprMapEntry, 579}, {kTableDimStrategyItem, 586}, {kTableDetailStyle, 773}};
    const auto head = heads.find(parts);
    return head == heads.end() ? KorDSMValueText::tableCaption(*findTable(parts))
                               : Prompts::dsm(head->second);
}

KorMFCGridCtrl::EKind PartListColumns::kindOf(const Column& column) {
    if (column.kind == eColumnKind::kFlag)
        return KorMFCGridCtrl::eCheck;
    if (column.isChosen())
        return KorMFCGridCtrl::eCombo;
    return column.isText() ? KorMFCGridCtrl::eText : KorMFCGridCtrl::eNumber;
}

PartListColumns::Choices PartListColumns::choicesOf(const TableSchema& table, const Column& column) {
    Choices choices;
    if (!column.isReference()) {
        choices.names = KorDSMValueText::valueNames(table, column);
        for (const std::int32_t value : KorDSMValueText::valuesOf(column))
            choices.pictures.push_back(ValuePictures::of(table, column, std::int64_t{value}));
        return choices;
    }
    const TableSchema& targets = *findTable(column.target);
    const bool hasPictures = !ValuePictures::sizeFor(table, column).isEmpty();
    choices = {{KorDSMValueText::nothing()}, {QIcon()}};
    for (const StructRecord* target : CurrentRows::byName(column.target)) {
        choices.names.push_back(OwnWords::nameOf(column.target, *target));
        choices.pictures.push_back(hasPictures ? ValuePictures::ofRow(targets, *target) : QIcon());
    }
    return choices;
}
