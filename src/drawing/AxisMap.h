#pragma once

#include <utility>
#include <vector>

/// One direction of a view: from millimetres of the model to those on the sheet, without the stretches that
/// are cut out.
class AxisMap {
public:
    AxisMap() = default;
    /// `cuts` are ascending and do not touch; each leaves a gap of `gap` millimetres on the sheet.
    AxisMap(double scale, std::vector<std::pair<double, double>> cuts, double gap)
        : m_scale(scale), m_gap(gap), m_cuts(std::move(cuts)) {}

    /// Where a place comes to lie. What is cut out comes to lie in the gap.
    double at(double model) const {
        double removed = 0;
        for (const auto& [from, to] : m_cuts) {
            if (model >= to) {
                removed += (to - from) * m_scale - m_gap;
                continue;
            }
            if (model > from)
                removed += ((to - from) * m_scale - m_gap) * (model - from) / (to - from);
            break;
        }
        return model * m_scale - removed;
    }
    const std::vector<std::pair<double, double>>& cuts() const { return m_cuts; }
    double gap() const { return m_gap; }
    double scale() const { return m_scale; }

private:
    double m_scale = 1;
    double m_gap = 0;
    std::vector<std::pair<double, double>> m_cuts;
};
