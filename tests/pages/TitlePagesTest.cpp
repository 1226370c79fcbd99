#include "pages/KorDSMPageDetailStylesProperties.h"
#include "pages/PageFixture.h"

namespace {

constexpr int kColumnTitlePosition = 6;

class TitlePages : public PageFixture {};

// A click on a position writes it once and shows its picture's place; the same click again writes nothing.
TEST_F(TitlePages, AClickOnAPositionWritesItOnce) {
    auto& style = item<KorDsmDetailStyleItem>();
    arrange(style, kColumnTitlePosition, 3);
    open<KorDSMPageDetailStylesProperties>(style);
    EXPECT_TRUE(isChecked(1033));
    click(1033);
    EXPECT_TRUE(wroteNothing());
    click(1036);
    click(1036);
    EXPECT_TRUE(wroteOnly(style, kColumnTitlePosition, 1));
    EXPECT_EQ(told<DsmDataChanged>(), 1);
    takeBack(style);
    EXPECT_TRUE(isChecked(1033));
}

} // namespace
