#include "session/KorDSMListContents.h"

#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMFamilies.h"
#include "model/items/KorDsmAddInContentItem.h"
#include "services/Prompts.h"
#include "session/KorDSMItemCommands.h"
#include "session/KorDSMValueText.h"

using namespace KorDSMDefines;

namespace {

constexpr int kColumnName = 310;
constexpr int kColumnEntries = 311;
constexpr int kNothingFiled = 832;

bool isCategory(const KorDSMDatabaseItem& item) {
    const KorDSMFamily* family = KorDSMFamilies::of(item.type());
    return family && family->isCategory;
}

// A database with a single content node shows what is in that, as the trees do.
const KorDSMDatabaseItem& shownContent(const KorDSMDatabaseItem& item) {
    const bool isSingle = item.type() == kDatabaseContent && item.children().length() == 1;
    return isSingle ? *item.children()[0] : item;
}

KorString count(const KorDSMDatabaseItem& item) {
    return KorString::format("%d", {KorString::number(shownContent(item).childCount())});
}

// What the first column lists, in the words of the table where the children are records.
KorString nameTitle(const KorDSMDatabaseItem& item) {
    if (isCategory(item))
        return Prompts::ups(33703);
    for (const KorDSMDatabaseItem* child : item.children())
        if (const TableSchema* table = findTable(child->tableType()))
            return KorDSMValueText::tableCaption(*table);
    return Prompts::dsm(kColumnName);
}

// What to do first where nothing is: in a group, or in this section of the database.
KorString firstStepIn(const KorDSMDatabaseItem& item) {
    if (isGroupType(item.type()) || item.type() == kViewRequestCategory)
        return Prompts::dsm(kNothingFiled);
    const KorDSMDatabaseItem* above = &item;
    while (above->parent())
        above = above->parent();
    const auto* section = dynamic_cast<const KorDsmSectionItem*>(above);
    // Who chooses a view sees views alone under the heading of styles.
    const bool isOfEditor =
        section && KorDSMDialogFactory::getDSMDataStructure().getSection(section->section()) == section;
    return isOfEditor ? Prompts::dsm(KorDSMFamilies::section(section->section()).emptyPrompt) : KorString();
}

} // namespace

KorDSMListContents KorDSMListContents::of(const KorDSMDatabaseItem& node) {
    const KorDSMDatabaseItem& item = shownContent(node);
    KorDSMListContents contents;
    contents.titles = {nameTitle(item),
                       isCategory(item) ? Prompts::ups(33704) : Prompts::dsm(kColumnEntries)};
    contents.numeric = {false, true};
    // Only what is filed in levels has numbers; records of the other families know theirs when opened.
    const bool withNumbers = isSectionType(item.type()) || item.type() == kDatabaseContent ||
                             item.type() == kAddInContent || isCategory(item);
    if (!withNumbers) {
        contents.titles.pop_back();
        contents.numeric.pop_back();
    }
    for (KorDSMDatabaseItem* child : item.children()) {
        Row row;
        row.texts.push_back(child->getDisplayName());
        if (withNumbers)
            row.texts.push_back(count(*child));
        const auto* addIn = dynamic_cast<const KorDsmAddInContentItem*>(child);
        row.icon = addIn && addIn->imageIndex() >= 0 ? addIn->imageIndex() : child->icon();
        row.item = child;
        contents.rows.push_back(std::move(row));
    }
    if (contents.rows.empty() && KorDSMItemCommands::whyNotWritable(item).isEmpty())
        contents.whenEmpty = firstStepIn(item);
    return contents;
}
