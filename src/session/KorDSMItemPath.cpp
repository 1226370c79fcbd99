#include "session/KorDSMItemPath.h"

#include "session/KorDSMItemSource.h"

#include <algorithm>

namespace KorDSMItemPath {

std::vector<KorDSMDatabaseItem*> itemsTo(KorDSMDatabaseItem& item) {
    std::vector<KorDSMDatabaseItem*> items;
    for (KorDSMDatabaseItem* step = &item; step; step = step->parent())
        items.push_back(step);
    std::ranges::reverse(items);
    return items;
}

KorArray<KorString> textsTo(KorDSMDatabaseItem& item) {
    KorArray<KorString> texts;
    for (const KorDSMDatabaseItem* step : itemsTo(item))
        texts.append(step->getDisplayName());
    return texts;
}

KorDsmSectionItem* sectionOf(KorDSMDatabaseItem& item) {
    return dynamic_cast<KorDsmSectionItem*>(itemsTo(item).front());
}

KorDSMDatabaseItem* groupOf(KorDSMDatabaseItem& item) {
    KorDSMDatabaseItem* step = &item;
    while (step && !KorDSMDefines::isGroupType(step->type()))
        step = step->parent();
    return step;
}

KorDsmAddInContentItem* addInOf(KorDSMDatabaseItem& item) {
    if (auto* database = dynamic_cast<KorDsmDatabaseContentItem*>(&item))
        return database->children().isEmpty()
                   ? nullptr
                   : dynamic_cast<KorDsmAddInContentItem*>(database->children()[0]);
    return dynamic_cast<KorDsmAddInContentItem*>(item.ancestor(KorDSMDefines::kAddInContent));
}

KorDsmAddInContentItem* findAddIn(KorDsmSectionItem& section, SourceId source) {
    for (KorDSMDatabaseItem* database : section.children())
        for (KorDSMDatabaseItem* addIn : database->children())
            if (KorDSMItemSource::sourceOf(addIn) == source)
                return dynamic_cast<KorDsmAddInContentItem*>(addIn);
    return nullptr;
}

} // namespace KorDSMItemPath
