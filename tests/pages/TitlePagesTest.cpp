#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "pages/KorDSMPageCutViewTitleProperties.h"
#include "pages/KorDSMPageDetailStylesProperties.h"
#include "pages/PageFixture.h"
#include "services/KorExchangeUtilities.h"
#include "services/Prompts.h"

#include <QTextEdit>
#include <QToolTip>

namespace {

constexpr int kDesigner = 1012;
constexpr int kColumnPosition = 6;
constexpr int kColumnCutPosition = 8;

/// Both pages of one style, the detail's first.
class TitlePages : public PageFixture {
protected:
    void openBoth() { open<KorDSMPageDetailStylesProperties, KorDSMPageCutViewTitleProperties>(style); }
    VELLabelDesignerCtrlWrap& designer() { return control<VELLabelDesignerCtrlWrap>(kDesigner); }
    QTextEdit& field() { return *designer().findChild<QTextEdit*>(); }
    void typeTitle(const char* letters) {
        field().setFocus();
        QTest::keyClick(&field(), Qt::Key_End, Qt::ControlModifier);
        QTest::keyClicks(&field(), letters);
    }

    KorDsmDetailStyleItem& style = item<KorDsmDetailStyleItem>("HB beam 1:15");
};

TEST_F(TitlePages, APositionIsWrittenOnceAndExplainedByItsPicture) {
    constexpr std::array<std::array<int, 3>, 8> kPositions = {{{0, 1040, 1106},
                                                               {1, 1036, 1083},
                                                               {2, 1034, 1085},
                                                               {3, 1033, 1084},
                                                               {4, 1035, 1102},
                                                               {5, 1037, 1105},
                                                               {6, 1038, 1103},
                                                               {7, 1039, 1104}}};
    openBoth();
    EXPECT_TRUE(isChecked(1033));
    click(1033);
    EXPECT_TRUE(wroteNothing());
    for (const auto& [value, radio, picture] : kPositions) {
        click(radio);
        click(radio);
        EXPECT_EQ(control<KorInfoCtrl>(1013).pictureId(), picture);
        EXPECT_EQ(style.getRecord().titlePosition, value);
        EXPECT_TRUE(value == 3 ? wroteNothing() : wroteOnly(style, kColumnPosition, std::int64_t{value}));
        takeBack(style);
    }
    EXPECT_EQ(told<DsmDataChanged>(), 7);

    turnTo(1);
    EXPECT_TRUE(isChecked(2025));
    click(2025);
    EXPECT_TRUE(wroteNothing());
    click(2026);
    EXPECT_TRUE(wroteOnly(style, kColumnCutPosition, std::int64_t{1}));
}

// Older databases hold positions that no button stands for: shown as the usual one, and left alone.
TEST_F(TitlePages, AnUnknownPositionIsShownAsTheUsualOneAndKept) {
    arrange(style, kColumnPosition, std::int64_t{9});
    arrange(style, kColumnCutPosition, std::int64_t{2});
    openBoth();
    EXPECT_TRUE(isChecked(1033));
    turnTo(1);
    EXPECT_TRUE(isChecked(2025));
    turnTo(0);
    EXPECT_TRUE(wroteNothing());
    click(1033);
    EXPECT_TRUE(wroteOnly(style, kColumnPosition, std::int64_t{3}));
}

TEST_F(TitlePages, ATitleThatIsAgainWhatItWasIsNotWritten) {
    openBoth();
    typeTitle("Z");
    EXPECT_GE(told<DsmSetModified>(), 1);
    QTest::keyClick(&field(), Qt::Key_Backspace);
    leave();
    EXPECT_TRUE(wroteNothing());
}

TEST_F(TitlePages, TextSizesNameTheUnitOfTheDatabase) {
    openBoth();
    const auto sizes = [this] {
        QStringList texts;
        for (const QComboBox* combo : designer().findChildren<QComboBox*>())
            for (int i = 0; i < combo->count() && combo->accessibleName() == toQt(Prompts::dsm(503)); ++i)
                texts << combo->itemText(i);
        return texts.join('|').toStdString();
    };
    EXPECT_EQ(sizes(), "1.8 mm|2.5 mm|3.5 mm|5 mm|7 mm|10 mm");
    store(kTableNumericDefault, row<StructNumericDefault>("C01_DistanceUnit").key, 2, 1.0);
    show(style);
    EXPECT_EQ(sizes(), "0.071\"|0.098\"|0.138\"|0.197\"|0.276\"|0.394\"");
}

TEST_F(TitlePages, TheHostSaysOnWhichBackgroundTitlesAreDrawn) {
    int status = 0;
    constexpr int kBlue = 0x203040;
    KorExchangeUtilities::getNamedQueue("DETAILSTYLESMANAGERNEW", status, 0).push("LDBKCOLOR", double{kBlue});
    openBoth();
    EXPECT_EQ(field().palette().color(QPalette::Base), QColor(QRgb{kBlue}));
}

// The designer speaks the user's language and is explained where its page has a word to say.
TEST_F(TitlePages, TheDesignerHasItsTextsAndItsTooltip) {
    Prompts::load(SOURCE_DIR "/resources/prompts", "de");
    openBoth();
    VELTooltipRequest request;
    request.mousePoint = designer().mapToGlobal(QPoint(5, 5));
    Q_EMIT designer().tooltipRequested(request);
    EXPECT_EQ(request.text, toQt(Prompts::getPrompt("UPS", 33826)));
    EXPECT_EQ(request.toolOwner, &designer());
    EXPECT_TRUE(request.toolRect.contains(request.mousePoint));
    VELTooltipRequest outside;
    outside.mousePoint = designer().mapToGlobal(QPoint(-5, 5));
    Q_EMIT designer().tooltipRequested(outside);
    EXPECT_TRUE(outside.text.isEmpty());

    QStringList texts;
    for (const QWidget* part : designer().findChildren<QWidget*>())
        texts << part->accessibleName() << part->property("text").toString() << part->toolTip();
    for (const int prompt : {500, 501, 503, 505, 508, 525})
        EXPECT_TRUE(texts.contains(toQt(Prompts::getPrompt("DSM", prompt)))) << prompt;

    turnTo(1);
    VELTooltipRequest unanswered;
    unanswered.mousePoint = designer().mapToGlobal(QPoint(5, 5));
    Q_EMIT designer().tooltipRequested(unanswered);
    EXPECT_TRUE(unanswered.text.isEmpty());
}

} // namespace
