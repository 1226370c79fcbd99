#include "drawing/PartReader.h"

#include "base/Translation.h"
#include "data/text/TextFields.h"
#include "drawing/ProfileOutline.h"

#include <array>
#include <numbers>

namespace {

template <typename T>
struct Word {
    const char* word;
    T value;
};

constexpr std::array<Word<eObjectType>, 12> kTypes = {{
    {"profile", eObjectType::kProfile},
    {"plate", eObjectType::kPlate},
    {"bolt", eObjectType::kBolt},
    {"weld", eObjectType::kWeld},
    {"hole", eObjectType::kHole},
    {"assembly", eObjectType::kAssembly},
    {"grid", eObjectType::kGrid},
    {"level", eObjectType::kLevel},
    {"anchor", eObjectType::kAnchor},
    {"grating", eObjectType::kGrating},
    {"cut", eObjectType::kCut},
    {"rail", eObjectType::kRail},
}};

constexpr std::array<Word<eObjectRole>, 7> kRoles = {{
    {"any", eObjectRole::kAny},
    {"main", eObjectRole::kMain},
    {"secondary", eObjectRole::kSecondary},
    {"fitting", eObjectRole::kFitting},
    {"neighbour", eObjectRole::kNeighbour},
    {"shop", eObjectRole::kShop},
    {"site", eObjectRole::kSite},
}};

constexpr std::array<Word<int>, 6> kAreas = {
    {{"whole", 0}, {"ends", 1}, {"connection", 2}, {"node", 3}, {"storey", 4}, {"bay", 5}}};

// Properties that qualifiers ask for and that are written in the file as they are.
constexpr std::array<const char*, 10> kProperties = {
    "family", "thickness", "purpose", "diameter", "location", "size", "shape", "kind", "direction", "bent"};
// Variables of labels that an object can have values of its own for.
constexpr std::array<const char*, 8> kValues = {"mark",     "description", "profile", "material",
                                                "quantity", "weight",      "finish",  "number"};

constexpr double kSteel = 7.85e-6; // kg per cubic millimetre

template <typename List>
auto findWord(const List& words, const std::string& word) {
    return std::ranges::find_if(words, [&](const auto& known) { return word == known.word; });
}

double areaOf(const Outline& outline) {
    double area = 0;
    for (const Outline::Piece& piece : outline.pieces) {
        double sum = 0;
        for (std::size_t i = 0; i < piece.corners.size(); ++i)
            sum += cross(piece.corners[i], piece.corners[(i + 1) % piece.corners.size()]) / 2;
        area += &piece == &outline.pieces.front() ? std::abs(sum) : -std::abs(sum);
    }
    return area;
}

std::string inTenths(double value) {
    return TextFields::number(std::round(value * 10) / 10);
}

// As a text of a part gives a length.
std::string lengthText(double value) {
    return "{" + TextFields::number(value) + "}";
}

void setNumber(PartObject& object, const char* property, double value) {
    object.properties[property] = {TextFields::number(value), value};
}

// A strip of one thickness along a line, on its left.
Outline stripAlong(const std::vector<Vec3>& line, double thickness) {
    Outline::Piece piece;
    std::vector<Vec2> left;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const Vec2 p = {line[i].x, line[i].y};
        const auto side = [&](std::size_t from) {
            const Vec2 d = Vec2{line[from + 1].x, line[from + 1].y} - Vec2{line[from].x, line[from].y};
            return Vec2{-d.v, d.u} * (1 / std::max(d.length(), 1e-9));
        };
        const Vec2 a = side(i == 0 ? 0 : i - 1);
        const Vec2 b = side(i + 1 == line.size() ? i - 1 : i);
        const double share = 1 + a.u * b.u + a.v * b.v;
        piece.corners.push_back(p);
        left.push_back(p + (a + b) * (thickness / std::max(share, 0.1)));
    }
    piece.corners.insert(piece.corners.end(), left.rbegin(), left.rend());
    return {{piece}};
}

Vec3 axisIn(PartStatement& statement, const char* name, const Vec3& otherwise) {
    const std::string text = statement.has(name) ? statement.text(name) : std::string();
    for (const auto& [word, axis] : {Word<Vec3>{"x", {1, 0, 0}},
                                     {"y", {0, 1, 0}},
                                     {"z", {0, 0, 1}},
                                     {"-x", {-1, 0, 0}},
                                     {"-y", {0, -1, 0}},
                                     {"-z", {0, 0, -1}}})
        if (text == word)
            return axis;
    const Vec3 axis = text.empty() ? otherwise : statement.point(name);
    if (axis.length() == 0)
        statement.fault(
            KorString::format(translated("\"%s\" must be a direction such as z or 1,0,1."), {name})
                .toStdString());
    return axis.length() == 0 ? Vec3{1, 0, 0} : axis.unit();
}

} // namespace

std::string PartReader::take(PartStatement& statement) {
    if (!statement.keyword().empty()) {
        const auto type = findWord(kTypes, statement.keyword());
        if (type != kTypes.end())
            takeObject(statement, type->value);
        else
            takeHeader(statement);
    }
    ++m_statement;
    return statement.keyword().empty() ? std::string() : statement.findings();
}

void PartReader::takeHeader(PartStatement& statement) {
    const std::vector<std::string>& words = statement.words();
    const std::string& keyword = statement.keyword();
    if (keyword == "part" && words.size() == 1)
        part.name = words[0];
    else if (keyword == "category" && !words.empty())
        part.categories = words;
    else if (keyword == "suits" && !words.empty())
        part.styles = words;
    else if (keyword == "value" && words.size() == 2)
        part.values[words[0]] = words[1];
    else if (const auto area = words.empty() ? kAreas.end() : findWord(kAreas, words[0]);
             keyword == "area" && words.size() == 1 && area != kAreas.end()) {
        part.areas[area->value].add(statement.point("from"));
        part.areas[area->value].add(statement.point("to"));
    } else {
        statement.fault(
            KorString::format(translated("\"%s\" is not known here, or lacks something."), {keyword})
                .toStdString());
    }
}

void PartReader::describe(PartStatement& statement, PartObject& object) const {
    for (const char* property : kProperties)
        if (statement.has(property)) {
            const std::string text = statement.text(property);
            object.properties[property] = {text, numberIn(text)};
        }
    for (const char* value : kValues)
        if (statement.has(value))
            object.values[value] = statement.text(value);
    object.properties["name"] = {object.name, numberIn(object.name)};
    object.values["name"] = object.name;
    object.in = statement.list("in");
    const std::string role = statement.text("role");
    const auto known = findWord(kRoles, role.empty() ? "any" : role);
    if (known == kRoles.end())
        statement.fault(KorString::format(translated("\"%s\" is no role that an object can have."), {role})
                            .toStdString());
    else
        object.role = known->value;
}

void PartReader::takeObject(PartStatement& statement, eObjectType type) {
    using Shape = void (PartReader::*)(PartStatement&, PartObject&, Plan&) const;
    PartObject object;
    Plan plan;
    object.type = type;
    plan.statement = m_statement;
    if (statement.words().size() != 1)
        statement.fault(
            translated("An object has one name, in quotation marks where it has blanks.").toStdString());
    else
        object.name = statement.words()[0];
    describe(statement, object);
    const auto shape = [type]() -> Shape {
        switch (type) {
        case eObjectType::kProfile:
            return &PartReader::shapeProfile;
        case eObjectType::kPlate:
        case eObjectType::kGrating:
            return &PartReader::shapePlate;
        case eObjectType::kBolt:
        case eObjectType::kAnchor:
        case eObjectType::kHole:
            return &PartReader::shapeRound;
        case eObjectType::kCut:
            return &PartReader::shapeCut;
        default:
            return &PartReader::shapeLines;
        }
    }();
    (this->*shape)(statement, object, plan);
    addCopies(statement, object, plan);
}

void PartReader::shapeProfile(PartStatement& statement, PartObject& object, Plan& plan) const {
    object.start = statement.point("from");
    object.end = statement.point("to");
    const Vec3 axis = object.end - object.start;
    plan.length = axis.length();
    if (plan.length <= 0)
        statement.fault(translated("\"from\" and \"to\" must be two different points.").toStdString());
    object.axis = axis.unit();
    const bool upright = std::abs(object.axis.z) > 0.99;
    const Vec3 up = axisIn(statement, "up", upright ? Vec3{-1, 0, 0} : Vec3{0, 0, 1});
    const Vec3 y = cross(up, object.axis).unit();
    object.frame = {object.start, object.axis, y, cross(object.axis, y)};
    plan.frame = {object.start, y, object.frame.z, object.axis};
    plan.slopeFrom = statement.number("slopefrom", 0);
    plan.slopeTo = statement.number("slopeto", 0);
    if (statement.has("slopefrom") || statement.has("slopeto")) // across the height, so it must be x
        plan.frame = {object.start, object.frame.z, y, object.axis};
    const std::vector<double> measures = statement.numbers("section");
    plan.outline = profileOutline(object.properties["family"].text, measures);
    if (plan.outline.pieces.empty())
        statement.fault(translated("The section does not fit the family.").toStdString());
    if (statement.has("slopefrom") || statement.has("slopeto"))
        for (Outline::Piece& piece : plan.outline.pieces)
            for (Vec2& corner : piece.corners)
                corner = {corner.v, corner.u};
    setNumber(object, "length", plan.length);
    setNumber(object, "inclination",
              std::round(std::asin(std::min(1.0, std::abs(object.axis.z))) * 18000 / std::numbers::pi) / 100);
    object.values["length"] = lengthText(plan.length);
    object.values.emplace("weight", inTenths(areaOf(plan.outline) * plan.length * kSteel));
}

void PartReader::shapePlate(PartStatement& statement, PartObject& object, Plan& plan) const {
    const std::string plane = statement.has("plane") ? statement.text("plane") : "xz";
    const Vec3 x = axisIn(statement, "right", plane == "yz" ? Vec3{0, 1, 0} : Vec3{1, 0, 0});
    const Vec3 y = axisIn(statement, "up", plane == "xy" ? Vec3{0, 1, 0} : Vec3{0, 0, 1});
    if (plane != "xy" && plane != "xz" && plane != "yz")
        statement.fault(translated("\"plane\" must be xy, xz or yz.").toStdString());
    object.start = statement.point("at");
    plan.frame = {object.start, x, y, cross(x, y)};
    plan.length = statement.number("thickness", 0);
    if (statement.has("folded")) {
        plan.outline = stripAlong(statement.points("folded"), statement.size("thickness"));
        plan.length = statement.size("width");
        object.properties["bent"] = {"1", 1};
        const std::vector<Vec3> line = statement.points("folded");
        for (std::size_t i = 1; i + 1 < line.size(); ++i)
            object.paths.push_back({plan.frame.out({line[i].x, line[i].y, 0}),
                                    plan.frame.out({line[i].x, line[i].y, plan.length})});
    } else if (statement.has("outline")) {
        Outline::Piece piece;
        for (const Vec3& corner : statement.points("outline"))
            piece.corners.push_back({corner.x, corner.y});
        if (piece.corners.size() < 3)
            statement.fault(translated("An outline has three corners at least.").toStdString());
        plan.outline.pieces = {piece};
    } else {
        const Vec3 size = statement.point("size");
        if (size.x <= 0 || size.y <= 0)
            statement.fault(translated("A plate has a size, such as 200,300, or an outline.").toStdString());
        plan.outline = Outline::rectangle({}, {size.x, size.y});
    }
    if (plan.length <= 0)
        statement.fault(translated("\"thickness\" must be given and be above 0.").toStdString());
    object.properties.emplace("bent", PropertyValue{"0", 0});
    object.axis = x;
    object.end = object.start + x * 1;
    // A plate lies before who looks at its front as it stands on the sheet: x to the right, y up.
    object.frame = {object.start, x, cross(y, x), y};
    if (statement.has("folded"))
        object.frame = {object.start, x, y * -1, cross(y, x)};
    object.values.emplace("weight", inTenths(areaOf(plan.outline) * plan.length * kSteel));
}

void PartReader::shapeRound(PartStatement& statement, PartObject& object, Plan& plan) const {
    const Vec3 at = statement.point("at");
    object.axis = axisIn(statement, "axis", {0, 1, 0});
    object.diameter = object.properties["diameter"].number.value_or(0);
    if (object.diameter <= 0)
        statement.fault(translated("\"diameter\" must be given and be above 0.").toStdString());
    if (object.type == eObjectType::kHole) {
        plan.slot = statement.number("slot", 0);
        plan.along = axisIn(statement, "along", {1, 0, 0});
        plan.reach = statement.number("reach", plan.reach);
        object.properties.emplace("shape", PropertyValue{plan.slot > 0 ? "slot" : "round", {}});
    } else {
        plan.length = statement.size(object.type == eObjectType::kAnchor ? "length" : "grip");
        // Of an anchor all of the rod, with what stands out above the nut.
        const double embedded = statement.number("embedded", 0);
        object.values["length"] =
            lengthText(embedded > 0 ? embedded + plan.length + 1.2 * object.diameter : plan.length);
    }
    const auto across = static_cast<int>(statement.number("columns", 1));
    const auto down = static_cast<int>(statement.number("rows", 1));
    const Vec3 gauge = statement.point("gauge");
    const Vec3 pitch = statement.point("pitch");
    constexpr int kMost = 200;
    if (across < 1 || down < 1 || across > kMost || down > kMost)
        statement.fault(translated("There are 1 to 200 rows and columns.").toStdString());
    else
        for (int row = 0; row < down; ++row)
            for (int column = 0; column < across; ++column)
                object.centres.push_back(at + gauge * column + pitch * row);
    object.start = object.end = at;
    object.values.emplace("quantity", std::to_string(object.centres.size()));
}

void PartReader::shapeCut(PartStatement& statement, PartObject&, Plan& plan) const {
    const std::string end = statement.text("end");
    const std::string side = statement.text("side");
    if ((end != "start" && end != "end") || (side != "top" && side != "bottom"))
        statement.fault(translated("A cut is at the start or end, and at the top or bottom.").toStdString());
    plan.atEnd = end == "end";
    plan.below = side == "bottom";
    plan.length = statement.size("length");
    plan.depth = statement.size("depth");
}

void PartReader::shapeLines(PartStatement& statement, PartObject& object, Plan& plan) const {
    if (object.type == eObjectType::kAssembly)
        return;
    const std::vector<Vec3> path = statement.points("path");
    if (path.size() < 2) {
        statement.fault(translated("\"path\" must have two points at least.").toStdString());
        return;
    }
    object.start = path.front();
    object.end = path.back();
    object.axis = (object.end - object.start).unit();
    if (object.type != eObjectType::kRail) {
        object.paths = {path};
        return;
    }
    object.diameter = statement.size("diameter");
    object.properties["diameter"] = {inTenths(object.diameter), object.diameter};
    plan.outline = {{Outline::circle({}, object.diameter / 2)}};
    const double wall = statement.number("wall", 0);
    if (wall > 0 && wall < object.diameter / 2)
        plan.outline.pieces.push_back(Outline::circle({}, object.diameter / 2 - wall));
    double length = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        const double way = (path[i] - path[i - 1]).length();
        object.solid.addPrism(plan.outline, Frame::along(path[i - 1], path[i] - path[i - 1]), 0, way);
        length += way;
    }
    object.values["length"] = lengthText(length);
}

void PartReader::addCopies(PartStatement& statement, const PartObject& object, const Plan& plan) {
    const auto count = static_cast<int>(statement.number("repeat", 1));
    const Vec3 step = statement.point("step");
    constexpr int kMost = 500;
    if (count < 1 || count > kMost || (count > 1 && step.length() == 0)) {
        statement.fault(translated("\"repeat\" is 1 to 500, with a \"step\" other than 0.").toStdString());
        return;
    }
    for (int i = 0; i < count; ++i) {
        const auto moved = [&](Vec3& p) { p = p + step * i; };
        PartObject copy = object;
        Plan own = plan;
        for (Vec3* p : {&copy.frame.origin, &copy.start, &copy.end, &own.frame.origin})
            moved(*p);
        std::ranges::for_each(copy.centres, moved);
        for (Loop3& path : copy.paths)
            std::ranges::for_each(path, moved);
        for (Face& face : copy.solid.faces)
            for (Loop3& loop : face.loops)
                std::ranges::for_each(loop, moved);
        for (Edge& edge : copy.solid.edges) {
            moved(edge.a);
            moved(edge.b);
        }
        for (Circle3& circle : copy.solid.circles)
            moved(circle.centre);
        part.objects.push_back(std::move(copy));
        m_plans.push_back(own);
    }
}
