#include "base/LabelFormat.h"
#include "support/RandomLabels.h"

#include <gtest/gtest.h>

namespace {

const LabelStyle kDefaults{"Arial", 3.5, 3, false, false, false};

LabelRun run(LabelRun::eKind kind, const char* text, const LabelStyle& style = kDefaults) {
    return {kind, text, style};
}

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
    RandomLabels maker(4711);
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
