#include "drawing/LabelText.h"

#include "data/text/TextFields.h"
#include "services/KorUnitsManager.h"

namespace {

std::string wordsOf(const LabelRun& run, const LabelText::Values& values) {
    if (run.kind == LabelRun::kText)
        return run.text.toStdString();
    const std::string name = run.text.toStdString();
    return values(name).value_or("{" + name + "}");
}

bool isInInches(StyleRows& rows) {
    return rows.numericDefault("C01_DistanceUnit", 0) == 1.0;
}

} // namespace

Primitives LabelText::lay(const KorString& label, const LabelStyle& defaults, const Values& values,
                          const Pen& pen, Primitive::ePurpose purpose, const ProvenancePtr& provenance) {
    const LabelReading reading = LabelFormat::parse(label, defaults);
    LabelRuns runs = reading.runs;
    if (reading.outcome > LabelReading::kPlain) // shown as it is stored
        runs = {{LabelRun::kText, label, defaults}};
    Primitives texts;
    std::size_t lineStart = 0;
    double u = 0;
    double top = 0;
    const auto endLine = [&](double fallback) {
        double height = texts.size() == lineStart ? fallback : 0;
        for (std::size_t i = lineStart; i < texts.size(); ++i)
            height = std::max(height, texts[i].style.size);
        for (std::size_t i = lineStart; i < texts.size(); ++i)
            texts[i].points[0].v = top - height;
        top -= height * 1.5;
        lineStart = texts.size();
        u = 0;
    };
    for (const LabelRun& run : runs) {
        if (run.kind == LabelRun::kLineBreak) {
            endLine(run.style.size);
            continue;
        }
        Primitive text;
        text.kind = Primitive::kText;
        text.purpose = purpose;
        text.text = wordsOf(run, values);
        text.style = run.style;
        if (text.style.font.isEmpty())
            text.style.font = defaults.font;
        text.pen = pen;
        text.pen.color = run.style.color;
        text.provenance = provenance;
        const double whole = text.textWidth();
        const std::size_t blanks = std::min(text.text.find_first_not_of(' '), text.text.size());
        text.text.erase(0, blanks); // programs that show pictures drop them
        text.points = {{u + whole - text.textWidth(), 0}};
        u += whole;
        if (!text.text.empty())
            texts.push_back(std::move(text));
    }
    endLine(0);
    return texts;
}

std::string LabelText::plain(const KorString& label, const Values& values) {
    LabelReading reading = LabelFormat::parse(label, {});
    if (reading.outcome == LabelReading::kPlain)
        if (LabelReading marked = LabelFormat::parse(KorString("{L1}") + label, {});
            marked.outcome == LabelReading::kLabel)
            reading = std::move(marked);
    std::string text;
    for (const LabelRun& run : reading.runs)
        text += run.kind == LabelRun::kLineBreak ? " " : wordsOf(run, values);
    return text;
}

std::string LabelText::number(double value, int places) {
    const double power = std::pow(10, places);
    return TextFields::number(std::round(value * power) / power);
}

double LabelText::rounded(double millimetres, StyleRows& rows) {
    const double least = isInInches(rows) ? 25.4 / 16 : 1;
    return std::floor(millimetres / least + 0.5 + 1e-6) * least; // halves up, whatever the last digit
}

std::string LabelText::length(double millimetres, StyleRows& rows) {
    const double shown = rounded(std::abs(millimetres), rows);
    return isInInches(rows)
               ? KorUnitsManager::imperial().format(shown, KorUnitsManager::kLength).toStdString()
               : number(shown, 0);
}

std::string LabelText::withLengths(const std::string& text, StyleRows& rows) {
    std::string words;
    std::size_t from = 0;
    while (from < text.size()) {
        const std::size_t open = std::min(text.find('{', from), text.size());
        const std::size_t close = text.find('}', open);
        words += text.substr(from, open - from);
        if (close == std::string::npos)
            return words + text.substr(open);
        const bool isHeight = text[open + 1] == '+' || text[open + 1] == '-';
        const std::size_t digits = open + (isHeight ? 2 : 1);
        const auto number = TextFields::toReal(text.substr(digits, close - digits));
        words += !number    ? text.substr(open, close + 1 - open)
                 : isHeight ? height(text[open + 1] == '-' ? -*number : *number, rows)
                            : length(*number, rows);
        from = close + 1;
    }
    return words;
}

std::string LabelText::height(double millimetres, StyleRows& rows) {
    const bool isZero = length(millimetres, rows) == length(0, rows); // which is never below
    const std::string sign = millimetres >= 0 || isZero ? "+" : "-";
    if (isInInches(rows))
        return sign + length(millimetres, rows);
    std::string words = number(std::round(std::abs(millimetres)) / 1000, 3);
    if (words.find('.') == std::string::npos)
        words += ".";
    words.append(3 - std::min<std::size_t>(3, words.size() - words.find('.') - 1), '0');
    return sign + words;
}

std::string LabelText::scale(double factor, StyleRows& rows) {
    constexpr int kMetric = 1;
    constexpr int kImperial = 2;
    const int unit = isInInches(rows) ? kImperial : kMetric;
    for (const StructScale* scale : rows.rows<StructScale>([](const StructScale&) { return true; }))
        if (scale->unitType == unit && std::abs(scale->factor - factor) < 1e-9 * factor)
            return scale->name.toStdString();
    return factor >= 1 ? number(factor, 2) + ":1" : "1:" + number(1 / factor, 2);
}
