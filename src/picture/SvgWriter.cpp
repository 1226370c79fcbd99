#include "picture/SvgWriter.h"

#include "picture/PaperColor.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace {

std::string number(double value) {
    constexpr double kParts = 1000;
    char buffer[32];
    const double rounded = std::round(value * kParts) / kParts + 0.0; // never "-0"
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, rounded).ptr};
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

std::string named(const PaperColor::Rgb& rgb) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", rgb.red & 255, rgb.green & 255, rgb.blue & 255);
    return text;
}

std::string colorOnPaper(int color) {
    return named(PaperColor::of(color, PaperColor::eGround::kPaper));
}

class Writer {
public:
    explicit Writer(const Box2& box) : m_box(box) {}

    // What is pointed out has a pale band around it, below all lines.
    void surround(const Primitive& primitive) {
        std::vector<Vec2> points = primitive.points;
        if (primitive.kind == Primitive::kText) {
            const Box2 box = primitive.box();
            points = {box.low, {box.high.u, box.low.v}, box.high, {box.low.u, box.high.v}, box.low};
        }
        const std::string shape = primitive.kind == Primitive::kArc ? arcOf(primitive) : pathOf(points);
        const PaperColor::Rgb pale = PaperColor::paleHighlight(PaperColor::eGround::kPaper);
        band(shape, PaperColor::highlight(PaperColor::eGround::kPaper), 2.4);
        band(shape, pale, 2.0);
    }

    void add(const Primitive& primitive, bool highlighted) {
        const bool isText = primitive.kind == Primitive::kText;
        const std::string color = highlighted
                                      ? named(PaperColor::highlight(PaperColor::eGround::kPaper))
                                      : colorOnPaper(isText ? primitive.style.color : primitive.pen.color);
        switch (primitive.kind) {
        case Primitive::kLine:
            stroke(primitive, pathOf(primitive.points), color);
            break;
        case Primitive::kFill:
            text +=
                "<path d=\"" + pathOf(primitive.points) + "Z\" fill=\"" + color + "\" stroke=\"none\"/>\n";
            break;
        case Primitive::kArc:
            stroke(primitive, arcOf(primitive), color);
            break;
        case Primitive::kText:
            addText(primitive, color);
            break;
        }
    }

    std::string text;

private:
    std::string at(Vec2 p) const { return number(p.u - m_box.low.u) + "," + number(m_box.high.v - p.v); }

    void stroke(const Primitive& primitive, const std::string& shape, const std::string& color) {
        text += "<path d=\"" + shape + "\" stroke=\"" + color + "\" stroke-width=\"" +
                number(primitive.pen.weight) + "\"" + dashes(primitive.pen) + "/>\n";
    }

    void band(const std::string& shape, const PaperColor::Rgb& color, double width) {
        text += "<path d=\"" + shape + "\" stroke=\"" + named(color) + "\" stroke-width=\"" + number(width) +
                "\"/>\n";
    }

    static std::string dashes(const Pen& pen) {
        std::string list;
        for (const double length : pen.dashes())
            list += (list.empty() ? "" : " ") + number(length);
        return list.empty() ? list : " stroke-dasharray=\"" + list + "\"";
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

    void addText(const Primitive& primitive, const std::string& color) {
        const LabelStyle& style = primitive.style;
        const std::string place = at(primitive.points[0]);
        const auto comma = place.find(',');
        text += "<text x=\"" + place.substr(0, comma) + "\" y=\"" + place.substr(comma + 1) +
                "\" font-family=\"" + escaped(style.font.isEmpty() ? "Arial" : style.font.toStdString()) +
                ", sans-serif\" font-size=\"" + number(style.size / Primitive::kCapitals) +
                "\" textLength=\"" + number(primitive.textWidth()) +
                "\" lengthAdjust=\"spacingAndGlyphs\" fill=\"" + color + "\"";
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

std::string svgOf(const PicturePage& page) {
    const std::string width = number(page.box.width());
    const std::string height = number(page.box.height());
    Writer writer(page.box);
    for (const std::size_t index : page.highlighted)
        writer.surround(page.primitives[index]);
    std::vector<bool> isHighlighted(page.primitives.size());
    for (const std::size_t index : page.highlighted)
        isHighlighted[index] = true;
    for (std::size_t i = 0; i < page.primitives.size(); ++i)
        writer.add(page.primitives[i], isHighlighted[i]);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
           width + "mm\" height=\"" + height + "mm\" viewBox=\"0 0 " + width + " " + height + "\">\n<title>" +
           escaped(page.title) + "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" +
           "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n" + writer.text +
           "</g>\n</svg>\n";
}
