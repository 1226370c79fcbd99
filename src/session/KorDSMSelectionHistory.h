#pragma once

#include "session/KorDSMPlace.h"

#include <functional>
#include <optional>
#include <vector>

/// The selections made in the four trees, in order, with a current position. It lives as long as the editor
/// is open; places whose items are gone are passed over, never removed: they count again when the items are
/// back.
class KorDSMSelectionHistory {
public:
    /// Says whether a place has an item now.
    using Exists = std::function<bool(const KorDSMPlace& place)>;

    /// Appends a selection and makes it current. When the position is not at the end, the place there is
    /// appended again first, so that leaving the middle of the history loses nothing.
    void record(const KorDSMPlace& place);

    /// Whether a step would lead anywhere.
    bool canGoBack(const Exists& exists) const { return next(-1, exists) >= 0; }
    bool canGoForward(const Exists& exists) const { return next(1, exists) >= 0; }
    /// Moves back or forward past places without an item and past the starting one. Returns the place to
    /// show, or nothing, and stays, when there is no other.
    std::optional<KorDSMPlace> goBack(const Exists& exists) { return step(-1, exists); }
    std::optional<KorDSMPlace> goForward(const Exists& exists) { return step(1, exists); }

    /// See `KorDSMPlace::renumber`.
    void renumber(SourceId source, const std::map<RowRef, std::int32_t>& newKeys) {
        for (KorDSMPlace& place : m_places)
            place.renumber(source, newKeys);
    }

    int position() const { return m_position; }
    const std::vector<KorDSMPlace>& places() const { return m_places; }

private:
    int next(int direction, const Exists& exists) const;
    std::optional<KorDSMPlace> step(int direction, const Exists& exists);

    std::vector<KorDSMPlace> m_places;
    int m_position = -1;
};
