#pragma once

#include "model/KorDSMDataStructure.h"
#include "records/RowRef.h"

#include <map>
#include <vector>

/// Where an item stands, in terms that outlast the item: it is found again after the trees were filled
/// anew or the databases loaded anew, whatever the record is called then.
class KorDSMPlace {
public:
    KorDSMPlace() = default;
    /// The place of an item that lies in a section, below the section's node.
    explicit KorDSMPlace(const KorDSMDatabaseItem& item);

    KorDSMDefines::eViewSections section() const { return m_section; }

    /// Whether the item is there, as far as that is known without reading or making items.
    bool isStillThere(KorDSMDataStructure& structure) const;
    /// The item that stands there now; loads content and makes children on the way. Null when there is none.
    KorDSMDatabaseItem* find(KorDSMDataStructure& structure) const;

    /// To be told of rows of a source that have other keys now, by their old ones, so that the place does not
    /// become that of a stranger who got such a key.
    void renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys);

    bool operator==(const KorDSMPlace&) const = default;

private:
    struct Step {
        KorDSMDefines::eItemType type = KorDSMDefines::kNoType;
        RowRef row;         // without a table for items without a record
        int occurrence = 0; // among siblings that show the same row

        bool operator==(const Step&) const = default;
    };

    static Step stepTo(const KorDSMDatabaseItem& item);
    static KorDSMDatabaseItem* follow(const KorDSMDatabaseItem& item, const Step& step);

    KorDSMDefines::eViewSections m_section = KorDSMDefines::kViewDetailStyles;
    KorDSMDefines::eItemType m_node = KorDSMDefines::kNoType; // of a database or an add-in itself
    SourceId m_source;
    RowRef m_filed;            // the category, group or filed record at or above the item
    std::vector<Step> m_steps; // from there down to the item
};
