#include "base/Translation.h"
#include "drawing/PartReader.h"

#include <numbers>

namespace {

// The part of an outline below, or above, a height.
Outline beyond(const Outline& outline, double height, bool below) {
    Outline rest;
    for (const Outline::Piece& piece : outline.pieces) {
        Outline::Piece kept;
        for (std::size_t i = 0; i < piece.corners.size(); ++i) {
            const Vec2 a = piece.corners[i];
            const Vec2 b = piece.corners[(i + 1) % piece.corners.size()];
            const bool hasA = below ? a.v <= height : a.v >= height;
            const bool hasB = below ? b.v <= height : b.v >= height;
            if (hasA) {
                kept.corners.push_back(a);
                kept.smooth.push_back(piece.isSmooth(i));
            }
            if (hasA != hasB) {
                kept.corners.push_back(a + (b - a) * ((height - a.v) / (b.v - a.v)));
                kept.smooth.push_back(false);
            }
        }
        if (kept.corners.size() > 2)
            rest.pieces.push_back(kept);
    }
    return rest;
}

Outline hexagon(double acrossFlats) {
    Outline::Piece piece;
    for (int i = 0; i < 6; ++i) {
        const double angle = std::numbers::pi * (i + 0.5) / 3;
        piece.corners.push_back(Vec2{std::cos(angle), std::sin(angle)} * (acrossFlats / std::sqrt(3.0)));
    }
    return {{piece}};
}

Box3 boxOf(const PartObject& object) {
    Box3 box = object.solid.box();
    for (const Loop3& path : object.paths)
        std::ranges::for_each(path, [&](const Vec3& p) { box.add(p); });
    std::ranges::for_each(object.centres, [&](const Vec3& p) { box.add(p); });
    return box;
}

} // namespace

std::string PartReader::finish(std::size_t& line) {
    m_cuts.resize(part.objects.size());
    for (const eObjectType wanted : {eObjectType::kCut, eObjectType::kProfile, eObjectType::kHole})
        for (std::size_t i = 0; i < part.objects.size(); ++i) {
            PartObject& object = part.objects[i];
            const bool isSpecial = object.type == eObjectType::kCut || object.type == eObjectType::kHole;
            if (wanted == eObjectType::kProfile ? isSpecial : object.type != wanted)
                continue;
            line = m_plans[i].statement;
            std::string wrong;
            if (wanted == eObjectType::kCut)
                wrong = cutInto(i);
            else if (wanted == eObjectType::kHole)
                wrong = drillInto(object, m_plans[i]);
            else
                build(object, m_plans[i]);
            if (!wrong.empty())
                return wrong;
        }
    for (PartObject& object : part.objects)
        object.box = boxOf(object);
    line = 0;
    if (part.name.empty() || part.objects.empty())
        return translated("The part has no name or no objects.").toStdString();
    return {};
}

std::string PartReader::cutInto(std::size_t number) {
    bool found = false;
    PartObject& cut = part.objects[number];
    const Plan& plan = m_plans[number];
    for (std::size_t i = 0; i < part.objects.size(); ++i) {
        PartObject& object = part.objects[i];
        if (object.type != eObjectType::kProfile || std::ranges::find(cut.in, object.name) == cut.in.end())
            continue;
        if (m_plans[i].slopeFrom != 0 || m_plans[i].slopeTo != 0)
            return translated("A profile with sloping ends cannot have other cuts.").toStdString();
        found = true;
        m_cuts[i].push_back(number);
        double half = 0;
        for (const Vec2 corner : m_plans[i].outline.pieces[0].corners)
            half = std::max(half, corner.v);
        const double sign = plan.below ? -1 : 1;
        const double x = plan.atEnd ? m_plans[i].length - plan.length : plan.length;
        const double tip = plan.atEnd ? m_plans[i].length : 0;
        cut.start = object.frame.out({tip, 0, sign * (half - plan.depth)});
        cut.end = object.frame.out({x, 0, sign * half});
        cut.centres = {cut.start, object.frame.out({x, 0, sign * (half - plan.depth)}), cut.end};
        cut.axis = object.axis;
    }
    if (!found)
        return translated("There is no profile of this name to be cut.").toStdString();
    return {};
}

std::string PartReader::drillInto(PartObject& hole, const Plan& plan) {
    for (const Vec3& centre : hole.centres) {
        bool hit = false;
        for (PartObject& object : part.objects)
            if (std::ranges::find(hole.in, object.name) != hole.in.end())
                hit =
                    object.solid.drill({centre, hole.axis, hole.diameter, plan.reach, plan.slot, plan.along},
                                       hole.solid) ||
                    hit;
        if (!hit)
            return translated("The hole hits no face of what it is in.").toStdString();
    }
    return {};
}

void PartReader::build(PartObject& object, const Plan& plan) {
    if (object.type == eObjectType::kBolt || object.type == eObjectType::kAnchor) {
        const double d = object.diameter;
        for (const Vec3& centre : object.centres) {
            const Frame frame = Frame::along(centre, object.axis);
            const Outline shank = {{Outline::circle({}, d / 2)}};
            if (object.type == eObjectType::kBolt)
                object.solid.addPrism(hexagon(1.5 * d), frame, -0.65 * d, 0);
            object.solid.addPrism(shank, frame, 0, plan.length + 1.2 * d);
            object.solid.addPrism(hexagon(1.5 * d), frame, plan.length, plan.length + 0.8 * d);
        }
        return;
    }
    if (plan.outline.pieces.empty() || object.type == eObjectType::kRail)
        return;
    // Where there are cuts the profile is made of stretches, each with what the cuts leave of the section.
    std::vector<double> stops = {0, plan.length};
    const std::vector<std::size_t>& cuts = m_cuts[static_cast<std::size_t>(&object - part.objects.data())];
    for (const std::size_t cut : cuts)
        stops.push_back(m_plans[cut].atEnd ? plan.length - m_plans[cut].length : m_plans[cut].length);
    std::ranges::sort(stops);
    double half = 0;
    for (const Vec2 corner : plan.outline.pieces[0].corners)
        half = std::max(half, corner.v);
    for (std::size_t i = 1; i < stops.size(); ++i) {
        if (stops[i] - stops[i - 1] < 1e-3)
            continue;
        Outline section = plan.outline;
        const double middle = (stops[i] + stops[i - 1]) / 2;
        for (const std::size_t number : cuts) {
            const Plan& cut = m_plans[number];
            if (cut.atEnd ? middle > plan.length - cut.length : middle < cut.length)
                section = beyond(section, cut.below ? -half + cut.depth : half - cut.depth, !cut.below);
        }
        object.solid.addPrism(section, plan.frame, stops[i - 1], stops[i], i == 1 ? plan.slopeFrom : 0,
                              i + 1 == stops.size() ? plan.slopeTo : 0);
    }
    object.solid.joinPlanes();
}
