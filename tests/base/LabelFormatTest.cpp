#include "base/LabelFormat.h"

#include <gtest/gtest.h>

#include <random>

namespace {

const LabelStyle kDefaults{"Arial", 3.5, 3, false, false, false};

LabelRun run(LabelRun::eKind kind, const char* text, const LabelStyle& style = kDefaults) {
    return {kind, text, style};
}

// Labels of all shapes, made of few ingredients so that neighbours often agree in some attribute.
class LabelMaker {
public:
    explicit LabelMaker(unsigned seed) : m_random(seed) {}

    LabelRuns make() {
        LabelRuns runs;
        for (int i = below(12); i > 0; --i)
            LabelFormat::append(runs, {LabelRun::eKind(below(3)), {}, style()});
        LabelRuns filled;
        for (LabelRun& run : runs)
            LabelFormat::append(filled, fill(run));
        return filled;
    }

private:
    int below(int n) { return std::uniform_int_distribution<>(0, n - 1)(m_random); }
    template <typename T>
    T pick(std::initializer_list<T> items) {
        return items.begin()[below(int(items.size()))];
    }
    LabelStyle style() {
        return {pick({"Arial", "Odd;{%3B}%25", "Größe"}),
                pick({3.5, 7.0, 0.1 + 0.2, 1e-7, 2.5e11}),
                pick({0, 3, 256}),
                below(2) == 1,
                below(2) == 1,
                below(4) == 1};
    }
    LabelRun fill(LabelRun run) {
        if (run.kind == LabelRun::kText)
            run.text = pick({"a", "{", "}}", "{name}", " \t ", "Ø 12 – Träger", "{L1}", "=;%", "br"});
        if (run.kind == LabelRun::kVariable)
            run.text = pick({"name", "future_value", "x.y-2"});
        return run;
    }

    std::mt19937 m_random;
};

LabelReading::eOutcome outcomeOf(const char* text) {
    return LabelFormat::parse(text, kDefaults).outcome;
}

} // namespace

TEST(LabelFormat, ReadsTextVariablesBreaksAndFormats) {
    LabelStyle big = kDefaults;
    big.size = 7;
    big.bold = true;
    const KorString text = "{L1}{size=7;b=1}{name} {number}{size=3.5;b=0}{br}Scale {scale} {{x}}";
    const LabelReading reading = LabelFormat::parse(text, kDefaults);
    EXPECT_EQ(reading.outcome, LabelReading::kLabel);
    EXPECT_EQ(reading.runs, (LabelRuns{run(LabelRun::kVariable, "name", big), run(LabelRun::kText, " ", big),
                                       run(LabelRun::kVariable, "number", big), run(LabelRun::kLineBreak, ""),
                                       run(LabelRun::kText, "Scale "), run(LabelRun::kVariable, "scale"),
                                       run(LabelRun::kText, " {x}")}));
    EXPECT_EQ(LabelFormat::write(reading.runs, kDefaults), text);
}

TEST(LabelFormat, ReadsBackExactlyWhatItWrote) {
    LabelMaker maker(4711);
    for (int i = 0; i < 3000; ++i) {
        const LabelRuns runs = maker.make();
        const KorString text = LabelFormat::write(runs, kDefaults);
        const LabelReading reading = LabelFormat::parse(text, kDefaults);
        ASSERT_EQ(reading.outcome, LabelReading::kLabel) << text.c_str();
        ASSERT_EQ(reading.runs, runs) << text.c_str();
        ASSERT_EQ(LabelFormat::write(reading.runs, kDefaults), text);
    }
}

TEST(LabelFormat, WritesTheShortestForm) {
    const auto canonical = [](const char* text) {
        return LabelFormat::write(LabelFormat::parse(text, kDefaults).runs, kDefaults);
    };
    EXPECT_EQ(canonical("{L1}{font=Arial;size=3.50}a{b=1}{u=1}{b=0}b{i=1}"), "{L1}a{u=1}b");
    EXPECT_EQ(canonical("{L1}{u=1;color=5;font=Arial Narrow;size=5}a"),
              "{L1}{font=Arial Narrow;size=5;color=5;u=1}a");
    EXPECT_EQ(canonical("one\r\ntwo {x}"), "{L1}one{br}two {{x}}");
    EXPECT_EQ(canonical("{L1}"), "");
    EXPECT_EQ(
        LabelFormat::write({run(LabelRun::kVariable, "br"), run(LabelRun::kVariable, "a b")}, kDefaults),
        "{L1}bra b");
}

TEST(LabelFormat, TellsPlainTextsAndWhatItDoesNotUnderstand) {
    for (const char* plain : {"Detail", "{name}", "a {L1}", "{L}", "{Lx1}", " {L2}", "}"})
        EXPECT_EQ(outcomeOf(plain), LabelReading::kPlain) << plain;
    for (const char* other : {"{L2}{name}", "{L10}", "{L01}a"})
        EXPECT_EQ(outcomeOf(other), LabelReading::kOtherVersion) << other;
    for (const char* bad :
         {"{L1}{",           "{L1}}",           "{L1}{}",       "{L1}a}b",        "{L1}{na me}",
          "{L1}{size=}",     "{L1}{size=-1}",   "{L1}{size=0}", "{L1}{size=3,5}", "{L1}{size=inf}",
          "{L1}{color=257}", "{L1}{color=1.5}", "{L1}{b=2}",    "{L1}{b=1;}",     "{L1}{font=}",
          "{L1}{weight=1}",  "{L1}{a{b}}",      "{L1}{L1}",     "{L1}{b=1",       "{L1}{Name=x}"})
        EXPECT_EQ(outcomeOf(bad), LabelReading::kNotUnderstood) << bad;
    const LabelReading bad = LabelFormat::parse("{L1}ab{x}{y z}", kDefaults);
    EXPECT_EQ(bad.position, 9u);
    EXPECT_TRUE(bad.runs.empty());
}
