#pragma once

#include "drawing/DrawingRequest.h"
#include "drawing/HiddenLines.h"
#include "picture/Primitive.h"

class StyleSource;

/// The drawing that a style makes of a sample part, which follows the style's records. It writes nothing and
/// keeps no pointer into a source: whatever becomes of that, the next update is right.
class LiveDrawing {
public:
    /// `seen` is that of another drawing of the same part, which makes this one faster.
    LiveDrawing(std::shared_ptr<const SamplePart> part, DrawingRequest request,
                std::shared_ptr<SeenLines> seen = nullptr);
    ~LiveDrawing();

    /// The drawing as the records are now, with pending changes: what `drawStyle` gives. Only views that read
    /// something that changed since the last update are drawn anew. Valid until the next update.
    const Drawing& update(StyleSource& source);
    /// The drawing of the last update; without views before the first one.
    const Drawing& drawing() const;

    /// Whether the last update changed anything.
    bool hasChanged() const;
    /// Whether the last update changed this view, or the place where it stands; by its index in the drawing.
    bool hasChanged(std::size_t view) const;

    /// Whether all that the last update read is still so. After a no the next update draws all anew.
    bool isAsItWas(StyleSource& source);
    /// Gives the drawing away and keeps only what was read for it, for who wants to know whether it still
    /// holds: there is no update after that without a no of `isAsItWas`.
    Drawing take();

    const DrawingRequest& request() const { return m_request; }
    const SamplePart& part() const { return *m_part; }
    const std::shared_ptr<SeenLines>& seen() const { return m_seen; }
    /// Entries of maps that are left out on trial from the next update on; nothing of that is stored.
    void setEntriesOff(std::set<std::int32_t> entries) { m_request.entriesOff = std::move(entries); }

private:
    struct Kept;

    std::shared_ptr<const SamplePart> m_part;
    DrawingRequest m_request;
    std::shared_ptr<SeenLines> m_seen;
    std::unique_ptr<Kept> m_kept;
};
