#include "services/KorUnitsManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

class UnitsTest : public testing::Test {
protected:
    void TearDown() override { KorUnitsManager::setDecimalMark('.'); }

    static double mm(const KorUnitsManager& units, const char* text, int kind = KorUnitsManager::kLength) {
        return units.parse(text, kind).value_or(-999.0);
    }
    const KorUnitsManager& m_metric = KorUnitsManager::metric();
    const KorUnitsManager& m_imperial = KorUnitsManager::imperial();
};

TEST_F(UnitsTest, AFootIsExactAndThousandsMarksAreNoDecimalMarks) {
    EXPECT_EQ(m_imperial.parse("10'-0\"", KorUnitsManager::kLength), 3048.0);
    EXPECT_EQ(m_imperial.parse("1'", KorUnitsManager::kLength), 304.8);
    for (const auto& [mark, other, own] : {std::tuple('.', "1,000", "1.000"), {',', "1.000", "1,000"}}) {
        KorUnitsManager::setDecimalMark(mark);
        EXPECT_FALSE(m_metric.parse(other, KorUnitsManager::kLength)) << other;
        EXPECT_FALSE(m_metric.parse(other, KorUnitsManager::kPlain)) << other;
        EXPECT_EQ(m_metric.parse(own, KorUnitsManager::kLength), 1.0);
        // None of these can be thousands.
        for (const auto& [text, value] :
             {std::pair("0.125", 0.125), {".125", 0.125}, {"012.345", 12.345}, {"1234.567", 1234.567}})
            for (const char typedMark : {'.', ','}) {
                std::string typed = text;
                std::ranges::replace(typed, '.', typedMark);
                EXPECT_EQ(m_metric.parse(typed, KorUnitsManager::kLength), value) << typed;
            }
        for (const char* thousands : {"999", "12", "1"})
            EXPECT_FALSE(m_metric.parse(thousands + std::string(mark == '.' ? ",125" : ".125"),
                                        KorUnitsManager::kPlain));
    }
}

} // namespace

TEST_F(UnitsTest, LengthsAreReadAsPeopleTypeThem) {
    struct Case {
        const char* text;
        double metric;
        double imperial;
    };
    const Case cases[] = {
        {"12.5", 12.5, 317.5},
        {" -12,5 ", -12.5, -317.5},
        {"+3", 3, 76.2},
        {"12 mm", 12, 12},
        {"1.5m", 1500, 1500},
        {"2 CM", 20, 20},
        {"1'-2 1/2\"", 368.3, 368.3},
        {"1' 2 1/2", 368.3, 368.3},
        {"1'2.5\"", 368.3, 368.3},
        {"1 ft 2 in", 355.6, 355.6},
        {"-1'-6\"", -457.2, -457.2},
        {"3/4\"", 19.05, 19.05},
        {"3/8", 0.375, 9.525},
        {"1 1/2'", 457.2, 457.2},
        {"6″", 152.4, 152.4},
        {"2’-3”", 685.8, 685.8},
        {"0'-0\"", 0, 0},
    };
    for (const Case& c : cases) {
        EXPECT_NEAR(mm(m_metric, c.text), c.metric, 1e-9) << c.text;
        EXPECT_NEAR(mm(m_imperial, c.text), c.imperial, 1e-9) << c.text;
    }
    EXPECT_EQ(mm(m_metric, "3.5", KorUnitsManager::kPaper), 3.5);
    EXPECT_NEAR(mm(m_imperial, "3/32", KorUnitsManager::kPaper), 2.38125, 1e-9);
    EXPECT_EQ(mm(m_imperial, "45 °", KorUnitsManager::kPlain), 45);
}

TEST_F(UnitsTest, WhatIsNoLengthIsRefused) {
    const std::string huge(400, '9');
    for (const char* text : {"", " ", "abc", "1.2.3", "1.234,5", "1e5", "--1", "12 x", "5 - 3", "1 2", "1'-",
                             "1' 2'", "1' 20mm", "1/0", "1/2/3", "inf", "nan", "1'-2\" 3", huge.c_str()}) {
        EXPECT_FALSE(m_metric.parse(text, KorUnitsManager::kLength)) << text;
        EXPECT_FALSE(m_imperial.parse(text, KorUnitsManager::kLength)) << text;
    }
    for (const char* text : {"1'", "2 mm", "1/2", "nan", ""})
        EXPECT_FALSE(m_metric.parse(text, KorUnitsManager::kPlain)) << text;
    EXPECT_TRUE(m_metric.format(std::numeric_limits<double>::infinity(), KorUnitsManager::kLength).isEmpty());
    EXPECT_TRUE(m_imperial.format(std::nan(""), KorUnitsManager::kLength).isEmpty());
}

TEST_F(UnitsTest, LengthsAreShownAsTheDatabasePrintsThem) {
    EXPECT_EQ(m_metric.format(12.5, KorUnitsManager::kLength), "12.5");
    EXPECT_EQ(m_metric.format(0.1 + 0.2, KorUnitsManager::kLength), "0.3");
    EXPECT_EQ(m_metric.format(-0.0, KorUnitsManager::kLength), "0");
    EXPECT_EQ(m_metric.format(1234567.875, KorUnitsManager::kLength), "1234567.875");
    EXPECT_EQ(m_imperial.format(368.3, KorUnitsManager::kLength), "1'-2 1/2\"");
    EXPECT_EQ(m_imperial.format(-12.7, KorUnitsManager::kLength), "-1/2\"");
    EXPECT_EQ(m_imperial.format(609.6, KorUnitsManager::kLength), "2'-0\"");
    EXPECT_EQ(m_imperial.format(0, KorUnitsManager::kLength), "0\"");
    EXPECT_EQ(m_imperial.format(2.54, KorUnitsManager::kLength), "0.1\"");
    KorUnitsManager::setDecimalMark(',');
    EXPECT_EQ(m_metric.format(12.5, KorUnitsManager::kLength), "12,5");
    EXPECT_EQ(m_imperial.format(2.54, KorUnitsManager::kLength), "0,1\"");
}

TEST_F(UnitsTest, AnUnchangedTextChangesNoValue) {
    for (const char mark : {'.', ','}) {
        KorUnitsManager::setDecimalMark(mark);
        for (const int kind : {KorUnitsManager::kPlain, KorUnitsManager::kPaper, KorUnitsManager::kLength})
            for (const double value :
                 {0.0, 1.0, -1.0, 0.01, 0.125, 2.5, 3.3, 12.7, 304.8, 999.999, 1e-4, 1234567.89, 7e6})
                EXPECT_EQ(m_metric.parse(m_metric.format(value, kind), kind), value);
        for (int sixtyFourths = -2000; sixtyFourths < 2000; sixtyFourths += 7) {
            const double value = sixtyFourths / 64.0 * 25.4;
            const KorString text = m_imperial.format(value, KorUnitsManager::kLength);
            EXPECT_NEAR(mm(m_imperial, text.c_str()), value, 1e-12 * std::abs(value) + 1e-12) << text.c_str();
        }
        for (const double value : {10.0, 3.3, 1e-5, 123456.789}) {
            const KorString text = m_imperial.format(value, KorUnitsManager::kLength);
            EXPECT_NEAR(mm(m_imperial, text.c_str()), value, 5e-12 * value) << text.c_str();
            EXPECT_EQ(m_imperial.format(mm(m_imperial, text.c_str()), KorUnitsManager::kLength), text);
        }
    }
}
