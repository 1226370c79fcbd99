#pragma once

#include "drawing/Label.h"

/// The figures of the labels of a view.
class LabelFigures {
public:
    /// Lines are drawn with this pen.
    explicit LabelFigures(Pen pen) : m_pen(std::move(pen)) {}

    /// Adds a label at its place, with its leader, frame and symbol. `isOnSite`: what it tells of is done
    /// there.
    void add(Label& label, Vec2 middle, bool isOnSite);

    Primitives all;

private:
    void line(const Label& label, std::vector<Vec2> points);
    void addLeader(const Label& label, Vec2 middle);

    Pen m_pen;
};
