#include "session/SampleSession.h"

#include "session/KorDSMDimensionSettings.h"
#include "session/KorDSMUndo.h"

#include <algorithm>

// What new dimensions and titles of a source start from.

namespace {

using eGroup = KorDSMDimensionSettings::eGroup;

class DimensionSettings : public SampleSession {
protected:
    static std::size_t at(const KorDSMDimensionSettings& settings, eGroup group, const char* name) {
        const auto& all = settings.settings();
        const auto it = std::ranges::find_if(
            all, [&](const auto& setting) { return setting.group == group && setting.name == name; });
        EXPECT_NE(it, all.end()) << name;
        return static_cast<std::size_t>(it - all.begin());
    }
    int rows(eTableType table) { return databases.source(SourceId::user())->table(table).rows().size(); }
};

} // namespace

TEST_F(DimensionSettings, AreStoredAsOneStepWhichTakesBackAll) {
    KorDSMDimensionSettings settings(SourceId::user());
    EXPECT_EQ(settings.whyReadOnly(), KorString());
    EXPECT_FALSE(settings.isChanged());
    const std::size_t distance = at(settings, eGroup::kDefaults, "C40_DimLineDistance");
    const KorString before = settings.settings()[distance].text;
    EXPECT_FALSE(settings.change(distance, "eight"));
    EXPECT_EQ(settings.settings()[distance].text, before) << "what is no number changes nothing";
    ASSERT_TRUE(settings.change(distance, "9.5"));
    const std::size_t bold = at(settings, eGroup::kTitles, "TitleBold");
    ASSERT_TRUE(settings.change(bold, settings.settings()[bold].choices[1]));
    ASSERT_TRUE(settings.add(eGroup::kTextSizes, "4.25"));
    EXPECT_FALSE(settings.add(eGroup::kTextSizes, "4.25")) << "it is there already";
    EXPECT_FALSE(settings.add(eGroup::kScales, "-1"));
    ASSERT_TRUE(settings.add(eGroup::kScales, "1:17"));
    settings.remove(at(settings, eGroup::kTextSizes, "7"));
    ASSERT_TRUE(settings.change(at(settings, eGroup::kTextSizes, "5"), "5.5"));
    const int sizes = rows(kTableTextSize);
    const int scales = rows(kTableScale);
    ASSERT_TRUE(settings.store());
    EXPECT_EQ(row<StructNumericDefault>(SourceId::user(), "C40_DimLineDistance")->value, 9.5);
    EXPECT_EQ(row<StructCreationDefault>(SourceId::user(), "TitleBold")->value, KorString("1"));
    EXPECT_EQ(row<StructTextSize>(SourceId::user(), "7"), nullptr);
    EXPECT_EQ(row<StructTextSize>(SourceId::user(), "5.5")->size, 5.5) << "it is called as it is";
    EXPECT_EQ(rows(kTableTextSize), sizes) << "one came, one went";
    EXPECT_EQ(rows(kTableScale), scales + 1);

    KorDSMDimensionSettings again(SourceId::user());
    ASSERT_TRUE(again.canReset(at(again, eGroup::kDefaults, "C40_DimLineDistance")));
    again.reset(at(again, eGroup::kDefaults, "C40_DimLineDistance"));
    EXPECT_EQ(again.settings()[at(again, eGroup::kDefaults, "C40_DimLineDistance")].text, before);
    KorDSMUndo::undo();
    EXPECT_EQ(KorDSMUndo::stepCount(), 0U);
    EXPECT_FALSE(KorDSMDimensionSettings(SourceId::standard()).whyReadOnly().isEmpty());
}
