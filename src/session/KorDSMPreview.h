#pragma once

#include "drawing/Governed.h"
#include "drawing/LiveDrawing.h"
#include "drawing/MapExplanation.h"
#include "picture/PicturePage.h"
#include "session/FieldPlace.h"
#include "session/KorDSMPreviewSubject.h"
#include "session/KorDSMSampleParts.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>

/// The drawing of a sample part that is shown while a record is edited: of the style that the record belongs
/// to, as it would be with what is pending and what is being typed. It writes nothing, and draws nothing
/// unless it is asked to.
class KorDSMPreview {
public:
    /// The folders of the sample parts, and of line type files without a path.
    KorDSMPreview(const std::filesystem::path& parts, std::filesystem::path support);
    ~KorDSMPreview();

    /// The preview that is shown in the current session, with a drawing; null for none.
    static KorDSMPreview* shown();

    KorDSMSampleParts& parts() { return *m_parts; }
    const KorDSMPreviewSubject& subject() const { return m_subject; }
    KorString styleName() const;
    /// The name of the part of which the style is drawn: chosen for the style, or suiting it.
    const std::string& partName() const { return m_partName; }
    /// The part itself; null where there is none.
    const SamplePart* part() const { return m_part.get(); }
    /// The style that is shown is drawn of this part from the next update on.
    void choosePart(const std::string& name);

    /// Draws what belongs to the item, with what is being typed into this field. Returns whether the drawing
    /// is another one.
    bool update(const KorDSMDatabaseItem* item, const std::optional<FieldPlace>& typed);
    /// Draws nothing, and forgets what was drawn; what was chosen stays.
    void rest();
    /// Looks at a part for one more style of the source, so that its drawing is there sooner when it is
    /// selected: first for those that follow the style that is shown. Returns whether there are more.
    bool lookAhead();

    /// The drawing of the last update; null where there is none.
    const std::shared_ptr<const Drawing>& drawing() const { return m_drawing; }
    /// The same style and part as the database has it stored; what is left out on trial is left out of it,
    /// too. Null where there is none.
    std::shared_ptr<const Drawing> drawStored() const;
    bool isPending() const;
    /// Why what is drawn, or what is stored, has nothing to be seen, in one sentence.
    KorString whyBlank(bool stored) const;
    /// What is drawn, or what is stored, as a page for a file or paper: the drawing alone, or with all that
    /// the style says in words. Without either there is none.
    std::optional<PicturePage> pageOf(bool stored, bool sheet) const;

    /// The primitives that a cell of the source has a say in, by their places.
    Governed::Places governedBy(const RowRef& row, int column) const;
    /// Those that show one of these objects of the part.
    Governed::Places placesOf(const std::vector<int>& objects) const;
    /// Where the record acts on the sheet.
    Box2 boxOf(const RowRef& row) const;
    /// Why the cell governs nothing, in one sentence.
    KorString whyNothing(const RowRef& row, int column);
    /// The name of another part of which the drawing would have something that the cell governs, that which
    /// suits the style before all others; empty where there is none. Draws them.
    std::string partThatShows(const RowRef& row, int column);

    /// What made a primitive what it is, nearest first.
    struct Maker {
        RowRef row;
        std::vector<int> columns; ///< that had a say
        KorString text;           ///< kind, name and columns
    };
    std::vector<Maker> makersOf(std::size_t place) const;

    /// What the entries of a map do with the objects that the style selects of the part.
    std::vector<EntryCount> countsOf(std::int32_t map) const;
    /// What the qualifiers of a set of the source say of the objects of the part.
    std::vector<QualifierCount> countsOfSet(std::int32_t set) const;
    struct Picked {
        std::int64_t sure = 0;
        std::int64_t unknown = 0; ///< more that it may pick
        std::int64_t all = 0;     ///< objects of the part
    };
    /// How many objects of the part a qualifier set of the source picks.
    Picked pickedBy(std::int32_t set) const;

    /// Leaves an entry of a map out on trial, or no more. Nothing of that is stored, and it ends with the
    /// first update for an item that neither is the map nor lies below it.
    void leaveOut(std::int32_t entry, bool out);
    bool isLeftOut(std::int32_t entry) const { return m_leftOut.contains(entry); }
    const std::set<std::int32_t>& leftOut() const { return m_leftOut; }
    /// What is left out, in one sentence; empty where nothing is.
    KorString trialText() const;
    /// To be told when something was left out, or is no more.
    void whenLeftOut(std::function<void()> tell) { m_tell = std::move(tell); }

    /// Why an entry of the map decides how an object looks, or does not.
    struct Reason {
        RowRef row; ///< the entry; the map of what none of them decides
        bool decides = false;
        KorString text;
        std::vector<int> columns = {}; ///< that it is a matter of; none: the row as a whole
    };
    /// For the object that a primitive shows, all entries of the map that decided, and what does where none
    /// of them does; nothing where no map did.
    std::vector<Reason> reasonsFor(std::size_t place) const;

private:
    const Primitive* primitiveAt(std::size_t place) const;
    StyleSource* source() const;
    DrawingRequest request() const;
    DrawingRequest requestOnTrial() const;
    Reason reasonOfRest(const Primitive& primitive, RowRef map) const;
    void endTrialsOutside(const KorDSMDatabaseItem* item);

    std::shared_ptr<KorDSMSampleParts> m_parts;
    std::filesystem::path m_support;
    KorDSMPreviewSubject m_subject;
    std::string m_partName;
    std::shared_ptr<const SamplePart> m_part;
    std::map<std::pair<SourceId, std::int32_t>, std::string> m_chosen; // by style
    SourceId m_aheadIn = {};
    std::vector<std::int32_t> m_ahead; // styles of that source, the next one is the last
    std::unique_ptr<LiveDrawing> m_live;
    std::shared_ptr<const Drawing> m_drawing;
    Governed m_governed;
    std::set<std::int32_t> m_leftOut; // of that source, also while the preview is hidden:
    SourceId m_leftOutIn;
    std::function<void()> m_tell;
};
