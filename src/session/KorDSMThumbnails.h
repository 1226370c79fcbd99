#pragma once

#include "drawing/LiveDrawing.h"
#include "records/KorDSNDefinitions.h"
#include "records/RowRef.h"
#include "session/KorDSMSampleParts.h"

#include <list>
#include <map>
#include <memory>
#include <optional>

class KorDSMDatabaseItem;

/// Drawings for small pictures of detail styles, and of single views, each of the sample part that suits it.
/// It knows of those that were drawn last whether they still hold.
class KorDSMThumbnails {
public:
    struct Subject {
        SourceId source = {};
        RowRef row = {};

        auto operator<=>(const Subject&) const = default;
    };

    /// The folders of the sample parts, and of line type files without a path.
    KorDSMThumbnails(const std::filesystem::path& parts, std::filesystem::path support);

    /// What a picture of the item would show; nothing for an item that has none.
    static std::optional<Subject> subjectOf(const KorDSMDatabaseItem& item);

    /// The drawing as the records are now; nothing where it is as it was when it was asked for last. Without
    /// primitives where the record is not there any more.
    std::optional<Drawing> draw(const Subject& subject);
    /// The next one asked for of this is drawn, whatever is known.
    void forget(const Subject& subject);
    /// Reads one of the tables of which drawings of the source are made, where one is not in memory yet.
    /// Returns whether it did.
    static bool readOneTable(SourceId source);

private:
    struct Wanted {
        DrawingRequest request;
        std::string part;

        bool operator==(const Wanted&) const = default;
    };
    struct Kept {
        Subject subject;
        Wanted wanted;
        std::unique_ptr<LiveDrawing> live; // without its drawing
    };

    Wanted wantedOf(StyleSource& source, const RowRef& row);
    Kept& keep(const Subject& subject);

    std::shared_ptr<KorDSMSampleParts> m_parts;
    std::filesystem::path m_support;
    std::list<Kept> m_kept; // the one that was asked for last is the first
    std::map<Subject, std::list<Kept>::iterator> m_places;
};
