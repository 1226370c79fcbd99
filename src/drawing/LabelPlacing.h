#pragma once

#include "drawing/LeaderWay.h"
#include "picture/Primitive.h"

#include <optional>

/// A label that wants a place.
struct WantedLabel {
    std::vector<Vec2> anchors; ///< what it may point to, the best one first; at least one
    Vec2 size;
    double distance = 8; ///< from its anchor where nothing is in the way
    double farthest = 60;
    int side = 0; ///< tried first: 0 nearest, 1 left, 2 right, 3 above, 4 below
    bool mayCover = false;
    std::optional<LeaderShape> leader = LeaderShape{}; ///< none: it has none
};

/// Places labels one after the other, so that they keep clear of each other, of leaders and of lines, and
/// their leaders cross as little as possible.
class LabelPlacing {
public:
    struct Place {
        Vec2 middle;
        Vec2 anchor; ///< that its leader goes to
    };

    /// What labels keep clear of: its lines and texts.
    explicit LabelPlacing(const Primitives& lines);

    /// One that finds no free place within reach stays near, and covers something.
    Place place(const WantedLabel& label);
    /// Whether so many lines and labels are in the way that places were no longer sought for all.
    bool gaveUp() const { return m_effort >= kMostEffort; }
    /// Takes a place that was found otherwise.
    void take(Vec2 middle, Vec2 size);
    /// Others keep clear of this leader.
    void takeLeader(Vec2 middle, Vec2 anchor) { m_leaders.emplace_back(middle, anchor); }
    /// Whether a label would cover another one.
    bool coversLabel(const Box2& box) const;
    /// Whether a line of the drawing passes a label there, or comes so near to it.
    bool coversLine(const Box2& box, double clear = 0) const;
    /// Of several anchors the one whose leader from a label crosses least.
    Vec2 bestAnchor(const LeaderShape& leader, Vec2 middle, Vec2 size,
                    const std::vector<Vec2>& anchors) const;

private:
    using Line = std::pair<Vec2, Vec2>;

    double leaderCost(const LeaderShape& leader, const Box2& box, Vec2 anchor) const;

    std::vector<Line> m_lines;
    std::vector<Line> m_leaders;
    std::vector<Box2> m_taken;

    // What damaged records make of labels can be in each other's way without end.
    static constexpr std::size_t kMostEffort = 4'000'000;
    std::size_t m_effort = 0; // boxes and lines looked at
};
