#pragma once

#include "drawing/DrawnView.h"

/// Views on their sheet. It keeps what stands where it stood, so that only what changed costs anything.
class SheetLayout {
public:
    using Views = std::vector<std::shared_ptr<const DrawnView>>;

    /// Titles and places the views, none of which is empty, and makes of them the views and the sheet of the
    /// drawing, which is that of the last call.
    void lay(DrawingContext& context, const Views& views, Drawing& drawing);
    /// Of each view of the drawing whether the last call made it anew.
    const std::vector<bool>& changed() const { return m_changed; }

private:
    struct Laid {
        std::shared_ptr<const DrawnView> view;
        ViewPicture titled; ///< its titles and marks alone, and the box of all
        Vec2 moved;

        bool operator==(const Laid& o) const {
            return view == o.view && moved == o.moved && titled.letter == o.titled.letter &&
                   titled.primitives == o.titled.primitives;
        }
        ViewPicture picture() const;
    };

    std::vector<Laid> m_laid;
    std::vector<bool> m_changed;
};
