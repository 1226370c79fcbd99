#pragma once

#include "drawing/Label.h"
#include "drawing/LabelPlacing.h"

/// Labels of the second arranger: in rows above or below a view, or in columns at its sides.
class LabelRows {
public:
    /// `view` is the box of all that is drawn, `part` that of the edges.
    LabelRows(const Box2& view, const Box2& part) : m_view(view), m_part(part) {}

    /// Whether the label goes to a row or column, which is not too far for its leader.
    bool takes(const Label& label) const;
    /// Of several places on an object the one from which the way out is shortest. The label has a control.
    Vec2 outermost(const Label& label) const;

    struct Place {
        Label* label;
        Vec2 middle;
    };
    /// Takes places for those labels that it takes, and gives them the anchors that suit these.
    std::vector<Place> lineUp(std::vector<Label>& labels, LabelPlacing& placing) const;

private:
    double away(Vec2 p, int side) const;
    int sideOf(const Label& label) const;
    Vec2 besides(const Label& label, int side, double along) const;
    Box2 boxOn(const Label& label, int side, double at) const;

    Box2 m_view;
    Box2 m_part;
};
