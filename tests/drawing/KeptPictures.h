#pragma once

#include "picture/PicturePage.h"
#include "picture/SvgWriter.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

/// What the sample styles were last agreed to make of the sample parts: of each pair a number that changes
/// with its picture, and of each style the picture of the part that suits it, as a text in tenths of
/// millimetres. The pictures of the other pairs would be too much to keep with the code: a run that finds
/// nothing changed leaves them to the next one on the machine.
class KeptPictures {
public:
    explicit KeptPictures(const std::filesystem::path& folder) : m_folder(folder) {
        std::ifstream numbers(folder / "numbers.txt");
        for (std::string name, number; std::getline(numbers, name, '\t') && std::getline(numbers, number);)
            m_numbers[name] = number;
        m_pictures = read(folder / "pictures.txt");
        for (auto& [name, text] : read(own() / "agreed.txt"))
            if (const auto agreed = m_numbers.find(name);
                agreed != m_numbers.end() && agreed->second == std::to_string(fnv(text)))
                m_pictures[name] = std::move(text);
    }

    void add(const std::string& name, const Drawing& drawing, bool keepsPicture) {
        const std::string text = textOf(drawing, 0);
        const std::string number = std::to_string(fnv(text));
        m_now[name] = number;
        m_textsNow[name] = text;
        if (keepsPicture)
            m_picturesNow[name] = textOf(drawing, 1.2);
        const auto before = m_numbers.find(name);
        if (before != m_numbers.end() && before->second == number)
            return;
        m_changed.push_back(name);
        constexpr std::size_t kMost = 60; // of one page
        if (m_changed.size() <= kMost)
            m_page << "<h2>" << name << "</h2><table><tr><th>before<th>now<tr><td>" << svgBefore(name)
                   << "</td><td>" << svgOf(pageOf(drawing)).substr(39) << "</td></tr></table>\n";
    }
    /// The pairs whose picture is another one than was kept, in the order in which they were added.
    const std::vector<std::string>& changed() const { return m_changed; }
    /// Writes before and after side by side; returns the file.
    std::filesystem::path writePage() const {
        std::filesystem::create_directories(own());
        std::ofstream(own() / "changed.html")
            << "<!DOCTYPE html><meta charset=\"utf-8\"><title>Drawings that changed</title>"
               "<style>svg{width:46vw;height:auto;border:1px solid #888}td{vertical-align:top}</style>\n"
            << m_page.str();
        return own() / "changed.html";
    }
    void keep() const {
        std::filesystem::create_directories(m_folder);
        std::ofstream numbers(m_folder / "numbers.txt");
        for (const auto& [name, number] : m_now)
            numbers << name << '\t' << number << '\n';
        write(m_folder / "pictures.txt", m_picturesNow);
        leaveToNextRun();
    }
    void leaveToNextRun() const {
        std::filesystem::create_directories(own());
        write(own() / "agreed.txt", m_textsNow);
    }

private:
    using Texts = std::map<std::string, std::string>;

    static std::filesystem::path own() {
        return std::filesystem::temp_directory_path() / "detailstyles-drawings";
    }
    static Texts read(const std::filesystem::path& file) {
        Texts texts;
        std::ifstream in(file);
        for (std::string line, name; std::getline(in, line);)
            if (line.starts_with("= "))
                texts[name = line.substr(2)];
            else
                texts[name] += line + "\n";
        return texts;
    }
    static void write(const std::filesystem::path& file, const Texts& texts) {
        std::ofstream out(file);
        for (const auto& [name, text] : texts)
            out << "= " << name << '\n' << text;
    }
    static std::uint64_t fnv(const std::string& text) {
        std::uint64_t hash = 1469598103934665603U;
        for (const char c : text)
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
        return hash;
    }
    // Halves are rounded up, also where another compiler's last digit differs.
    static long tenths(double value) { return static_cast<long>(std::floor(value * 10 + 0.5 + 1e-5)); }

    // Lines that are shorter than `least` millimetres, such as those of small round things, are left out.
    static std::string textOf(const Drawing& drawing, double least) {
        std::ostringstream out;
        std::string last;
        for (const Primitive* p : drawing.all()) {
            const bool isText = p->kind == Primitive::kText;
            if (p->kind == Primitive::kLine && p->points.size() == 2 &&
                (p->points[1] - p->points[0]).length() < least)
                continue;
            std::ostringstream pen;
            pen << (isText ? p->style.color : p->pen.color) << ' '
                << std::lround((isText ? p->style.size : p->pen.weight) * 100) << ' ' << p->style.bold;
            for (const double dash : p->pen.dashes())
                pen << ' ' << tenths(dash);
            if (pen.str() != last)
                out << "P " << (last = pen.str()) << '\n';
            out << "LAFT"[p->kind];
            Vec2 before;
            for (const Vec2 point : p->points) {
                out << ' ' << tenths(point.u) - tenths(before.u) << ' ' << tenths(point.v) - tenths(before.v);
                before = point;
            }
            if (p->kind == Primitive::kArc)
                out << ' ' << tenths(p->radius) << ' ' << tenths(p->from) << ' ' << tenths(p->to);
            if (isText)
                out << ' ' << tenths(p->turned) << ' ' << p->text;
            out << '\n';
        }
        return out.str();
    }

    std::string svgBefore(const std::string& name) const {
        const auto found = m_pictures.find(name);
        if (found == m_pictures.end())
            return "no picture of before is kept";
        Drawing drawing;
        Primitive pen;
        std::istringstream lines(found->second);
        for (std::string line; std::getline(lines, line);) {
            std::istringstream in(line.substr(1));
            std::vector<double> numbers;
            const std::size_t wanted = line[0] == 'T' ? 3 : 100000;
            for (double number = 0; numbers.size() < wanted && in >> number;)
                numbers.push_back(number / 10);
            Primitive p = pen;
            p.kind = static_cast<Primitive::eKind>(std::string("LAFT").find(line[0]) & 3);
            if (line[0] == 'P') {
                pen = {};
                pen.pen.color = pen.style.color = static_cast<int>(std::lround(numbers[0] * 10));
                pen.pen.weight = pen.style.size = numbers[1] / 10;
                pen.style.bold = numbers[2] > 0;
                LinetypeDefinition dashed;
                for (std::size_t i = 3; i < numbers.size(); ++i) {
                    dashed.pattern.emplace_back();
                    dashed.pattern.back().kind = i % 2 ? LinetypeElement::kDash : LinetypeElement::kGap;
                    dashed.pattern.back().length = numbers[i];
                }
                if (numbers.size() > 3)
                    pen.pen.linetype = std::make_shared<const LinetypeDefinition>(std::move(dashed));
                continue;
            }
            const std::size_t points =
                p.kind == Primitive::kArc || p.kind == Primitive::kText ? 2 : numbers.size();
            Vec2 at;
            for (std::size_t i = 0; i + 1 < points; i += 2)
                p.points.push_back(at = at + Vec2{numbers[i], numbers[i + 1]});
            if (p.kind == Primitive::kArc) {
                p.radius = numbers[2];
                p.from = numbers[3];
                p.to = numbers[4];
            }
            if (p.kind == Primitive::kText) {
                p.turned = numbers[2];
                std::getline(in >> std::ws, p.text);
            }
            drawing.sheet.push_back(std::move(p));
        }
        return svgOf(pageOf(drawing)).substr(39);
    }

    std::filesystem::path m_folder;
    Texts m_numbers;
    Texts m_pictures; ///< of before
    Texts m_now;
    Texts m_textsNow;
    Texts m_picturesNow;
    std::vector<std::string> m_changed;
    std::ostringstream m_page;
};
