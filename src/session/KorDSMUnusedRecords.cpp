#include "session/KorDSMUnusedRecords.h"

#include "data/RowUsers.h"
#include "model/KorDSMFamilies.h"
#include "model/KorDSMItemPlacing.h"
#include "operations/KorDSNManager.h"
#include "session/KorDSMItemPath.h"

#include <vector>

namespace KorDSMUnusedRecords {

namespace {

constexpr std::size_t kMostSteps = 100;

bool canStandAlone(eTableType table) {
    const KorDSMFamily* family = KorDSMFamilies::of(table);
    return family && family->make && family->namePrompt != 0 && !family->isGroup() && !family->bringsChildren;
}

const StructRecord* find(SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    return source && findTable(row.table) ? source->table(row.table).find(KorOdbcKey(row.key)) : nullptr;
}

} // namespace

KorDSMDatabaseItem* itemOf(KorDSMDataStructure& structure, SourceId source, RowRef row) {
    const StructRecord* record = canStandAlone(row.table) ? find(source, row) : nullptr;
    KorDsmAddInContentItem* content =
        record ? KorDSMItemPath::findAddIn(*structure.getSection(KorDSMDefines::kViewDetailStyles), source)
               : nullptr;
    if (!content)
        return nullptr;
    if (KorDSMDatabaseItem* shown = KorDSMItemPlacing::findChild(*content, row))
        return shown;
    const KorDSNRequest request(source.dsn, source.index);
    return &content->addChild(KorDSMFamilies::makeItem(*KorDSMFamilies::of(row.table), *record));
}

KorString nameOf(SourceId source, RowRef row) {
    StyleSource* open = StyleDatabases::current().source(source);
    const StructRecord* record = open && find(source, row) ? find(source, wholeOf(*open, row)) : nullptr;
    return record ? record->name : KorString();
}

KorDSMDatabaseItem* editorOf(KorDSMDataStructure& structure, SourceId source, RowRef row) {
    StyleSource* open = StyleDatabases::current().source(source);
    if (!open || !find(source, row))
        return nullptr;
    std::vector<RowRef> rows{wholeOf(*open, row)};
    for (std::size_t i = 0; i < rows.size() && i < kMostSteps; ++i) {
        if (KorDSMDatabaseItem* item = itemOf(structure, source, rows[i]))
            return item;
        for (const RowUser& user : usersInItsSource(StyleDatabases::current(), source, rows[i]))
            rows.push_back(user.row);
    }
    return nullptr;
}

} // namespace KorDSMUnusedRecords
