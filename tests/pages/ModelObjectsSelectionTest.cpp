#include "pages/KorDSMPageModelObjectsSelection.h"
#include "pages/PageFixture.h"

#include <QLabel>

namespace {

constexpr int kColumnName = 1;
constexpr int kColumnStrategy = 4;
constexpr int kFirst = 2310;
constexpr int kLast = 2320;

class ModelObjectsSelection : public PageFixture {
protected:
    void openPage() { open<KorDSMPageModelObjectsSelection>(style); }
    StyleTable& strategies() { return databases.here()->table(kTableSelectionStrategy); }
    std::int32_t keyAt(int index) { return strategies().rows().at(index).key; }
    /// The button that is down, or 0.
    int chosen() {
        int radio = 0;
        for (int id = kFirst; id <= kLast; ++id)
            if (isChecked(id)) {
                EXPECT_EQ(radio, 0);
                radio = id;
            }
        return radio;
    }
    void keepOnly(int count) {
        while (strategies().rows().size() > count)
            databases.remove(kTableSelectionStrategy, KorOdbcKey(keyAt(count)));
        databases.pending().forget(databases.currentSource(), kTableSelectionStrategy);
    }

    KorDsmDetailStyleItem& style = item<KorDsmDetailStyleItem>("HB erection plan");
};

// The n-th strategy stands at the n-th number; the eleventh is below the others of the overviews.
TEST_F(ModelObjectsSelection, EachStrategyHasItsButtonAndIsWrittenByItsKey) {
    openPage();
    EXPECT_EQ(textOf(kFirst), "Whole model");
    EXPECT_EQ(textOf(kLast), "Foundations and anchors");
    EXPECT_LT(control(2314).mapTo(&page(), QPoint()).y(), control(kLast).mapTo(&page(), QPoint()).y());
    EXPECT_LT(control(kLast).mapTo(&page(), QPoint()).y(), control(1242).mapTo(&page(), QPoint()).y());
    for (int id = kFirst; id <= kLast; ++id) {
        arrange(style, kColumnStrategy, std::int64_t{0});
        show(style);
        EXPECT_EQ(chosen(), 0);
        click(id);
        EXPECT_EQ(chosen(), id);
        EXPECT_TRUE(wroteOnly(style, kColumnStrategy, std::int64_t{keyAt(id - kFirst)}));
        EXPECT_EQ(style.getRecord().objectSelectionStrategy, keyAt(id - kFirst));
        const long changes = told<DsmDataChanged>() + told<DsmSetModified>();
        click(id);
        EXPECT_EQ(told<DsmDataChanged>() + told<DsmSetModified>(), changes) << "it is chosen already";
        takeBack(style);
    }
    arrange(style, kColumnStrategy, std::int64_t{keyAt(7)});
    show(style);
    EXPECT_EQ(chosen(), kFirst + 7);
}

TEST_F(ModelObjectsSelection, ButtonsWithoutAStrategyAreHidden) {
    keepOnly(4);
    arrange(style, kColumnStrategy, std::int64_t{9999});
    openPage();
    EXPECT_EQ(chosen(), 0);
    for (int id = kFirst; id <= kLast; ++id)
        EXPECT_EQ(isShown(id), id < kFirst + 4) << id;
    EXPECT_TRUE(isShown(1242) && isShown(1243));
}

// Names may be used twice, hold ampersands, or be gone by the time of the click.
TEST_F(ModelObjectsSelection, UnusualNamesAreShownAndFound) {
    for (const int index : {2, 3})
        store(kTableSelectionStrategy, keyAt(index), kColumnName, KorString("Nuts & bolts"));
    arrange(style, kColumnStrategy, std::int64_t{keyAt(3)});
    openPage();
    EXPECT_EQ(chosen(), kFirst + 2);
    EXPECT_EQ(textOf(kFirst + 2), "Nuts && bolts");
    click(kFirst + 3);
    EXPECT_TRUE(wroteOnly(style, kColumnStrategy, std::int64_t{keyAt(2)}));
    takeBack(style);
    keepOnly(4);
    click(kFirst + 9);
    EXPECT_TRUE(wroteNothing());
}

} // namespace
