#include "operations/KorOdbcGUI.h"

#include "data/StyleDatabases.h"
int KorOdbcGUI::switchKordoDetailsCurrent(const KorAddInId& addIn) {
    return addIn.number >= 0 && StyleDatabases::current().source(SourceId::addIn(addIn.number)) ? 1 : 0;
}

int KorOdbcGUI::getDetailMaster(long styleKey, StructDetailMaster& record) {
    StyleSource* source = StyleDatabases::current().here();
    if (!source)
        return 0;
    const KorOdbcKey style(static_cast<std::int32_t>(styleKey));
    for (const Referrer& referrer : source->referrersOf(kTableDetailStyle, style))
        if (referrer.column->role == eReferenceRole::kIdentifies)
            return StyleReads::read(KorOdbcKey(referrer.key), record);
    return 0;
}

int KorOdbcGUI::getDetailMaster(long detailKey, long number, StructDetailMaster& record) {
    KorArray<StructDetailMaster> found;
    StyleReads::select(found, [&](const StructDetailMaster& row) {
        return row.detailKey == detailKey && row.number == number;
    });
    if (found.isEmpty())
        return 0;
    record = found[0];
    return 1;
}

int KorOdbcGUI::getDetViewCalloutTitleTemplate(const KorString& request, KorString& title) {
    StructDetViewRequest record;
    const int result = StyleReads::read(request, record);
    if (result == 1)
        title = record.calloutTitleTemplate;
    return result;
}

int KorOdbcGUI::getDetViewUsedForCutsAndCallouts(const KorString& request, int& used) {
    StructDetViewRequest record;
    const int result = StyleReads::read(request, record);
    if (result == 1)
        used = record.usedForCutsAndCallouts;
    return result;
}

int KorOdbcGUI::getGeomRestrictionBitmapId(const KorOdbcKey& key, int& bitmap) {
    StructDetVwDimGeomRestrictions restriction;
    StructBitmap picture;
    if (StyleReads::read(key, restriction) != 1 ||
        StyleReads::read(KorOdbcKey(restriction.bitmapKey), picture) != 1)
        return 0;
    bitmap = picture.resource;
    return 1;
}

int KorOdbcGUI::getTokens(const KorString& text, const KorString& delimiter, KorArray<KorString>& tokens) {
    tokens.clear();
    std::string_view rest = text.view();
    while (!rest.empty()) {
        const auto at = delimiter.isEmpty() ? std::string_view::npos : rest.find(delimiter.view());
        if (at != 0)
            tokens.append(KorString(rest.substr(0, at)));
        rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + delimiter.size());
    }
    return tokens.length();
}

bool KorOdbcGUI::canBeShared(eTableType table) {
    const TableSchema* schema = findTable(table);
    return schema && schema->canBeShared;
}

bool KorOdbcGUI::isShared(eTableType table, const KorOdbcKey& key) {
    return StyleDatabases::current().ownerCount(table, key) > 1;
}

bool KorOdbcGUI::isUsed(eTableType table, const KorOdbcKey& key) {
    StyleDatabases& databases = StyleDatabases::current();
    return !databases.users(table, key).empty() || (databases.here() && !databases.here()->complete());
}
