#include "pages/KorDSMPageCompassPosition.h"
#include "pages/PageFixture.h"

#include <array>

namespace {

constexpr int kColumnCompass = 12;
constexpr int kColumnOverviews = 13;
constexpr int kCompass = 1252;
constexpr int kArrowPicture = 1093;
constexpr int kSymbolPicture = 1107;
constexpr std::array kChoices = {1255, 1256, 1257, 1258, 1262, 1263};

class CompassPosition : public PageFixture {
protected:
    void openWith(int code) {
        arrange(view, kColumnCompass, std::int64_t{code});
        open<KorDSMPageCompassPosition>(view);
    }
    std::vector<int> checked() {
        std::vector<int> radios;
        std::ranges::copy_if(kChoices, std::back_inserter(radios),
                             [this](int radio) { return isChecked(radio); });
        return radios;
    }
    bool choicesEnabled() {
        const long enabled = std::ranges::count_if(kChoices, [this](int radio) { return isEnabled(radio); });
        EXPECT_TRUE(enabled == 0 || enabled == std::ssize(kChoices));
        return enabled > 0;
    }
    int picture() { return control<KorInfoCtrl>(1253).pictureId(); }

    KorDsmViewRequestItem& view = item<KorDsmViewRequestItem>("HB railing panel");
};

using Radios = std::vector<int>;

TEST_F(CompassPosition, EveryCodeShowsItsCornerAndRepresentation) {
    openWith(0);
    EXPECT_EQ(checked(), Radios());
    EXPECT_FALSE(isChecked(kCompass) || choicesEnabled());
    for (int code = 1; code <= 8; ++code) {
        arrange(view, kColumnCompass, std::int64_t{code});
        show(view);
        EXPECT_EQ(checked(), (Radios{1255 + (code - 1) % 4, code <= 4 ? 1262 : 1263})) << code;
        EXPECT_EQ(picture(), code <= 4 ? kArrowPicture : kSymbolPicture);
        EXPECT_TRUE(isChecked(kCompass) && choicesEnabled());
    }
    // Below 0 there is no corner to show, but the box shows that something is stored.
    arrange(view, kColumnCompass, std::int64_t{-1});
    show(view);
    EXPECT_EQ(checked(), Radios());
    EXPECT_TRUE(isChecked(kCompass));
    EXPECT_EQ(picture(), kArrowPicture);
    EXPECT_TRUE(wroteNothing());
}

TEST_F(CompassPosition, TurningTheCompassOnAndOffLeavesTheOverviewCorner) {
    arrange(view, kColumnOverviews, std::int64_t{2});
    openWith(0);
    click(kCompass);
    EXPECT_TRUE(wroteOnly(view, kColumnCompass, std::int64_t{1}));
    EXPECT_EQ(checked(), (Radios{1255, 1262}));
    EXPECT_TRUE(choicesEnabled());
    takeBack(view);
    arrange(view, kColumnCompass, std::int64_t{7});
    show(view);
    click(kCompass);
    EXPECT_TRUE(wroteOnly(view, kColumnCompass, std::int64_t{0}));
    EXPECT_EQ(checked(), Radios());
    EXPECT_FALSE(choicesEnabled());
    EXPECT_EQ(picture(), kArrowPicture);
    EXPECT_FALSE(isEnabled(1253)) << "the picture is only hinted at";
    EXPECT_TRUE(isChecked(1277));
}

// A corner keeps the representation, a representation the corner, and all items of the view follow.
TEST_F(CompassPosition, CornerAndRepresentationAreWrittenTogether) {
    auto& twin = item<KorDsmViewRequestItem>("HB railing panel");
    view.linkEqualItem(twin);
    openWith(6);
    click(1258);
    EXPECT_TRUE(wroteOnly(view, kColumnCompass, std::int64_t{8}));
    EXPECT_EQ(twin.getRecord().compassKey, 8);
    takeBack(view);
    click(1262);
    EXPECT_TRUE(wroteOnly(view, kColumnCompass, std::int64_t{2}));
    EXPECT_EQ(picture(), kArrowPicture);
    takeBack(view);
    click(1276);
    EXPECT_TRUE(wroteOnly(view, kColumnOverviews, std::int64_t{1}));
    EXPECT_EQ(twin.getRecord().compassInOverviews, 1);
}

// Corner and representation are two groups: what is chosen in one stays when the other is used, and a second
// click on what is chosen is no change.
TEST_F(CompassPosition, AClickOrKeyInOneGroupLeavesTheOther) {
    openWith(2);
    click(1256);
    click(1262);
    EXPECT_EQ(checked(), (Radios{1256, 1262}));
    EXPECT_TRUE(wroteNothing() && m_asked.empty());
    click(1258);
    EXPECT_EQ(checked(), (Radios{1258, 1262}));
    EXPECT_TRUE(wroteOnly(view, kColumnCompass, std::int64_t{4}));
    takeBack(view);
    control<>(1262).setFocus();
    QTest::keyClick(&control<>(1262), Qt::Key_Up);
    QTest::keyClick(&control<>(1262), Qt::Key_Right);
    EXPECT_EQ(checked(), (Radios{1256, 1263}));
    EXPECT_TRUE(wroteOnly(view, kColumnCompass, std::int64_t{6}));
}

// A view of several styles is not changed for all of them unless the user says so.
TEST_F(CompassPosition, ADeclinedChangeStaysUnwrittenUntilTheNextLoad) {
    m_answer = KorDSMGuardedWrite::kDecline;
    openWith(3);
    click(1258);
    click(1276);
    ASSERT_EQ(m_asked.size(), 2U);
    EXPECT_EQ(m_asked[0].second, view.recordKey());
    EXPECT_TRUE(wroteNothing());
    EXPECT_EQ(view.getRecord().compassKey, 3);
    EXPECT_TRUE(isChecked(1258));
    EXPECT_EQ(KorFieldNote::textOf(&control(1258)), QStringLiteral("Not stored"));
    click(1257);
    EXPECT_EQ(m_asked.size(), 2U) << "that is stored already";
    EXPECT_EQ(KorFieldNote::textOf(&control(1258)), QString());
    click(1258);
    show(view);
    EXPECT_EQ(KorFieldNote::textOf(&control(1258)), QString());
    EXPECT_EQ(checked(), (Radios{1257, 1262}));
}

} // namespace
