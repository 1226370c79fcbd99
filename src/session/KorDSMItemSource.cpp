#include "session/KorDSMItemSource.h"

#include "model/items/KorDsmAddInContentItem.h"
#include "operations/KorOdbcMan.h"

namespace {

// The index alone tells the source.
SourceId sourceOfIndex(int index) {
    switch (index) {
    case KorDSNDefinitions::kStandardIndex:
        return SourceId::standard();
    case KorDSNDefinitions::kUserIndex:
        return SourceId::user();
    default:
        return {KorDSNDefinitions::kAddIn, static_cast<eIndex>(index)};
    }
}

} // namespace

SourceId KorDSMItemSource::sourceOf(const KorDSMDatabaseItem* item) {
    if (!item)
        return SourceId::user();
    SourceId source;
    for (; item; item = item->parent()) {
        if (const auto* addIn = dynamic_cast<const KorDsmAddInContentItem*>(item))
            source.index = addIn->index();
        else if (const auto* database = dynamic_cast<const KorDsmDatabaseContentItem*>(item))
            source.dsn = database->database();
        else if (const auto* request = dynamic_cast<const KorDsmAddInRequestItem*>(item))
            source = sourceOfIndex(request->addInIndex());
    }
    if (source.dsn == KorDSNDefinitions::kLast)
        return source;
    if (source.index == KorDSNDefinitions::kNone)
        source.index = source.dsn == KorDSNDefinitions::kStandard ? KorDSNDefinitions::kStandardIndex
                                                                  : KorDSNDefinitions::kUserIndex;
    if (source.index >= KorDSNDefinitions::kFirstAddIn)
        source.dsn = KorDSNDefinitions::kAddIn;
    return source;
}

bool KorDSMItemSource::select(const KorDSMDatabaseItem* item) {
    const SourceId source = sourceOf(item);
    if (source.dsn == KorDSNDefinitions::kLast)
        return false;
    m_request.reset();
    makeCurrent(source);
    m_request = std::make_unique<KorDSNRequest>(source.dsn, source.index);
    m_selected = source;
    return true;
}

SourceId KorDSMItemSource::current() {
    return {KorOdbcMan::getCurrentDSN(), KorOdbcMan::getCurrentAddIn()};
}

void KorDSMItemSource::makeCurrent(SourceId source) {
    KorOdbcMan::setCurrentDSN(source.dsn);
    KorOdbcMan::setCurrentAddIn(source.index);
}
