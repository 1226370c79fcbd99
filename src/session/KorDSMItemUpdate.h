#pragma once

#include "model/KorDSMDataStructure.h"
#include "session/KorDSMUndo.h"

#include <memory>
#include <vector>

/// Brings the items of the data structure in line with rows that changed behind their backs: after undo and
/// redo, and after another program changed a database.
class KorDSMItemUpdate {
public:
    /// What is then to be done in the window. Entries of children that were dropped are gone already, by the
    /// messages of their items.
    struct Changes {
        /// No longer in the structure; their entries are still there. Remove those while these live.
        std::vector<std::unique_ptr<KorDSMDatabaseItem>> removed;
        std::vector<KorDSMDatabaseItem*> added;   ///< in the structure, without entries
        std::vector<KorDSMDatabaseItem*> moved;   ///< below another parent than their entries
        std::vector<KorDSMDatabaseItem*> changed; ///< their records have other values: a page that shows one
                                                  ///< loads it again
        /// So much changed that loading the sections anew is quicker; nothing was brought in line.
        bool reload = false;
    };

    static Changes follow(KorDSMDataStructure& structure, const std::vector<KorDSMRowChange>& changes);

private:
    explicit KorDSMItemUpdate(KorDSMDataStructure& structure) : m_structure(structure) {}

    void followRow(const KorDSMRowChange& change);
    void followChanged(const KorDSMRowChange& change, const StructRecord& row);
    void followDeleted(const KorDSMRowChange& change);
    void followMaster(const KorDSMRowChange& change);
    void followPart(const KorDSMRowChange& change);
    void file(SourceId source, RowRef row);
    void fileMembers(SourceId source, RowRef group);
    void fileUnder(KorDSMDatabaseItem& group, SourceId source, RowRef row);
    void takeOut(KorDSMDatabaseItem& item);
    void dropChildren(KorDSMDatabaseItem& item);
    void forgetWhatIsGone();
    std::vector<KorDSMDatabaseItem*> itemsOf(SourceId source, RowRef row);

    KorDSMDataStructure& m_structure;
    Changes m_outcome;
};
