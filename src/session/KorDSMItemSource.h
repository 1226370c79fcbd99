#pragma once

#include "model/items/KorDSMDatabaseItem.h"
#include "operations/KorDSNManager.h"

#include <memory>

/// Makes the source of the selected item current in the data-access layer, and keeps it current until another
/// item is selected.
class KorDSMItemSource {
public:
    /// The source that an item lies in: add-in content above it gives the index, database content the
    /// database; a node of the view request dialog gives both. Without an item it is the User database. An
    /// item below neither has no source (dsn 17).
    static SourceId sourceOf(const KorDSMDatabaseItem* item);

    /// Makes the item's source current. Returns false, and changes nothing, for an item without a source.
    bool select(const KorDSMDatabaseItem* item);

    /// The source that is current, whoever made it so.
    static SourceId current();
    static void makeCurrent(SourceId source);

    SourceId selected() const { return m_selected; }
    void release() { m_request.reset(); }

private:
    std::unique_ptr<KorDSNRequest> m_request;
    SourceId m_selected;
};
