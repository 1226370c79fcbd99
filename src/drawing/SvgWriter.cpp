#include "drawing/SvgWriter.h"

#include "drawing/LabelText.h"

#include <array>
#include <cstdio>
#include <numbers>

namespace {

constexpr double kMargin = 5; // mm around the drawing

std::string number(double value) {
    const std::string text = LabelText::number(value, 3);
    return text == "-0" ? "0" : text;
}

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text)
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    return out;
}

class Writer {
public:
    explicit Writer(const Box2& box) : m_box(box) {}

    std::string at(Vec2 p) const { return number(p.u - m_box.low.u) + "," + number(m_box.high.v - p.v); }

    void stroke(const Primitive& primitive, const std::string& shape) {
        text += "<path d=\"" + shape + "\" stroke=\"" + colorOnPaper(primitive.pen.color) +
                "\" stroke-width=\"" + number(primitive.pen.weight) + "\"" + dashes(primitive.pen) + "/>\n";
    }

    void add(const Primitive& primitive) {
        switch (primitive.kind) {
        case Primitive::kLine:
            stroke(primitive, pathOf(primitive.points));
            break;
        case Primitive::kFill:
            text += "<path d=\"" + pathOf(primitive.points) + "Z\" fill=\"" +
                    colorOnPaper(primitive.pen.color) + "\" stroke=\"none\"/>\n";
            break;
        case Primitive::kArc:
            stroke(primitive, arcOf(primitive));
            break;
        case Primitive::kText:
            addText(primitive);
            break;
        }
    }

    std::string text;

private:
    static std::string dashes(const Pen& pen) {
        if (!pen.linetype)
            return {};
        std::vector<double> lengths; // dash and gap in turn, beginning with a dash
        for (const LinetypeElement& element : pen.linetype->pattern) {
            const bool isGap = element.kind == LinetypeElement::kGap;
            if (element.kind == LinetypeElement::kShape || element.kind == LinetypeElement::kText)
                continue;
            const double length = element.kind == LinetypeElement::kDot ? 0.1 : element.length;
            if (lengths.size() % 2 == (isGap ? 1u : 0u))
                lengths.push_back(length * pen.patternScale);
            else if (!lengths.empty())
                lengths.back() += length * pen.patternScale;
        }
        if (lengths.size() < 2)
            return {};
        if (lengths.size() % 2)
            lengths.push_back(0);
        std::string list;
        for (const double length : lengths)
            list += (list.empty() ? "" : " ") + number(length);
        return " stroke-dasharray=\"" + list + "\"";
    }

    std::string pathOf(const std::vector<Vec2>& points) const {
        std::string path;
        for (const Vec2 p : points)
            path += (path.empty() ? "M" : "L") + at(p);
        return path;
    }

    std::string arcOf(const Primitive& arc) const {
        const auto point = [&](double degrees) {
            const double angle = degrees * std::numbers::pi / 180;
            return arc.points[0] + Vec2{std::cos(angle), std::sin(angle)} * arc.radius;
        };
        const std::string radius = number(arc.radius);
        const bool isFull = arc.to - arc.from >= 360;
        const double to = isFull ? arc.from + 180 : arc.to;
        const auto piece = [&](double end, bool large) {
            return "A" + radius + "," + radius + " 0 " + (large ? "1" : "0") + " 0 " + at(point(end));
        };
        std::string path = "M" + at(point(arc.from)) + piece(to, to - arc.from > 180);
        return isFull ? path + piece(arc.from + 360, false) : path;
    }

    void addText(const Primitive& primitive) {
        const LabelStyle& style = primitive.style;
        const double kCapitals = 0.716; // height of capitals in parts of the font size
        const std::string place = at(primitive.points[0]);
        const auto comma = place.find(',');
        text += "<text x=\"" + place.substr(0, comma) + "\" y=\"" + place.substr(comma + 1) +
                "\" font-family=\"" + escaped(style.font.isEmpty() ? "Arial" : style.font.toStdString()) +
                ", sans-serif\" font-size=\"" + number(style.size / kCapitals) + "\" textLength=\"" +
                number(primitive.textWidth()) + "\" lengthAdjust=\"spacingAndGlyphs\" fill=\"" +
                colorOnPaper(style.color) + "\"";
        if (style.bold)
            text += " font-weight=\"bold\"";
        if (style.italic)
            text += " font-style=\"italic\"";
        if (style.underline)
            text += " text-decoration=\"underline\"";
        if (primitive.turned != 0)
            text += " transform=\"rotate(" + number(-primitive.turned) + " " + place.substr(0, comma) + " " +
                    place.substr(comma + 1) + ")\"";
        text += " stroke=\"none\" xml:space=\"preserve\">" + escaped(primitive.text) + "</text>\n";
    }

    Box2 m_box;
};

} // namespace

std::string colorOnPaper(int color) {
    constexpr std::array<const char*, 10> kNamed = {"#000000", "#c00000", "#a08000", "#008000", "#008080",
                                                    "#0000c0", "#a000a0", "#000000", "#606060", "#909090"};
    if (color >= 0 && color < static_cast<int>(kNamed.size()))
        return kNamed[static_cast<std::size_t>(color)];
    if (color >= 250 || color < 0)
        return "#404040";
    // 10 to 249: a wheel of hues, each in five shades.
    const double hue = (color - 10) / 10 * 15.0;
    const double value = 0.75 - (color % 10) / 2 * 0.12;
    const auto part = [&](double shift) {
        const double place = std::fmod(hue + shift, 360.0) / 60;
        const double level = std::clamp(std::abs(place - 3) - 1, 0.0, 1.0);
        return static_cast<int>(std::lround(value * level * 255));
    };
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", part(0), part(240), part(120));
    return text;
}

std::string svgOf(const Drawing& drawing, const std::string& schematic) {
    Box2 box = drawing.box();
    if (box.isEmpty())
        box.add(Vec2{});
    Primitive note;
    note.kind = Primitive::kText;
    note.text = schematic;
    note.style = {"Arial", 2.5, 8};
    note.points = {box.low - Vec2{0, 6}};
    box.add(note.box());
    box.low = box.low - Vec2{kMargin, kMargin};
    box.high = box.high + Vec2{kMargin, kMargin};
    const std::string width = number(box.width());
    const std::string height = number(box.height());
    Writer writer(box);
    for (const Primitive* primitive : drawing.all())
        writer.add(*primitive);
    writer.add(note);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           width + "mm\" height=\"" + height + "mm\" viewBox=\"0 0 " + width + " " + height + "\">\n<title>" +
           escaped(drawing.style + ", " + drawing.part) +
           "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" +
           "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" + writer.text +
           "</g>\n</svg>\n";
}
