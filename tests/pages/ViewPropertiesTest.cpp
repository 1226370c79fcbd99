#include "controls/KorListCtrl.h"
#include "controls/VELComboTree.h"
#include "pages/KorDSMPageViewCategories.h"
#include "pages/KorDSMPageViewProperties.h"
#include "pages/PageFixture.h"
#include "services/KorHostReport.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"

namespace {

constexpr int kScales = 2300;

class ViewProperties : public PageFixture {
protected:
    std::string scale() {
        return control<VELComboTree>(kScales).getSelectedPath().replaced("\x1f", "/").toStdString();
    }
    std::vector<int> checkedRadios() {
        std::vector<int> found;
        for (const int radio : {1255, 1256, 1257, 1258, 1262, 1263})
            if (isChecked(radio))
                found.push_back(radio);
        return found;
    }
    int picture() { return control<KorInfoCtrl>(1253).pictureId(); }
    void press(int id) { control<QAbstractButton>(id).click(); } // the compass is hidden here
};

TEST_F(ViewProperties, EachControlShowsItsOwnColumn) {
    auto& view = item<KorDsmViewRequestItem>("HB site elevation");
    const char* mode = "Only if it differs from the opposite view";
    arrange(view, 5, std::int64_t{row<StructDetViewSelectMode>(mode).key});
    arrange(view, 11, std::int64_t{row<StructDetViewArrangeDirection>("Above").key});
    arrange(view, 14, std::int64_t{row<StructDetailProcessScaleOverride>("Fit to the sheet").key});
    arrange(view, 16, std::int64_t{1});
    open<KorDSMPageViewProperties>(view);
    EXPECT_EQ(scale(), "General arrangement/1:100");
    EXPECT_EQ(textOf(1097) + "|" + textOf(1024) + "|" + textOf(1022),
              std::string("Above|Fit to the sheet|") + mode);
    EXPECT_TRUE(isChecked(1250));
    type(2022, "Elevation \"100 %\"");
    EXPECT_TRUE(wroteOnly(view, 17, KorString("Elevation \"100 %\"")));
}

// Words that every database has are stored in English and chosen in the program's language.
TEST_F(ViewProperties, WordsAreChosenInTheLanguageOfTheProgram) {
    Prompts::load(SOURCE_DIR "/resources/prompts", "de");
    auto& view = item<KorDsmViewRequestItem>("HB site elevation");
    arrange(view, 11, std::int64_t{row<StructDetViewArrangeDirection>("Above").key});
    open<KorDSMPageViewProperties>(view);
    EXPECT_EQ(textOf(1097), "Darüber");
    EXPECT_EQ(scale(), "Übersichten/1:100");
    choose(1097, "Rechts");
    EXPECT_TRUE(wroteOnly(view, 11, std::int64_t{row<StructDetViewArrangeDirection>("To the right").key}));
    const Column& direction = *findTable(kTableViewRequest)->column(11);
    for (const char* text : {"Rechts", "To the right"})
        EXPECT_EQ(KorDSMValueText::parse(*findTable(kTableViewRequest), direction, text).value,
                  CellValue(std::int64_t{row<StructDetViewArrangeDirection>("To the right").key}));
    Prompts::load(SOURCE_DIR "/resources/prompts", "en");
}

// A scale that is in no list is still legible, and headings are no scales.
TEST_F(ViewProperties, ScalesStandBelowTheirHeadings) {
    auto& view = item<KorDsmViewRequestItem>("HB site elevation");
    arrange(view, 10, 1.0 / 7.0);
    open<KorDSMPageViewProperties>(view);
    auto& scales = control<VELComboTree>(kScales);
    EXPECT_EQ(scale(), "");
    EXPECT_EQ(scales.placeholderText(), "1:7");
    KorUnitsManager::setDecimalMark(',');
    arrange(view, 10, 1.0 / 15.5);
    show(view);
    EXPECT_EQ(scales.placeholderText(), "1:15,5");
    KorUnitsManager::setDecimalMark('.');
    EXPECT_TRUE(control(2022).toolTip().contains(QStringLiteral("\n{view}  View\n")));
    EXPECT_EQ(scales.childCount(nullptr), 3);
    EXPECT_FALSE(scales.getChildAt(nullptr, 0)->selectable);
    QTest::keyClick(&scales, Qt::Key_Down);
    EXPECT_TRUE(wroteOnly(view, 10, 2.0));
    EXPECT_EQ(scale(), "Details/2:1");
    EXPECT_EQ(textOf(kScales), "2:1");
}

// How stored codes are shown does not mirror how they are composed: 4 and 8 look odd, and must.
TEST_F(ViewProperties, TheCompassShowsItsCodesAsItAlwaysHas) {
    auto& view = item<KorDsmViewRequestItem>("HB site plan");
    open<KorDSMPageViewProperties>(view);
    EXPECT_FALSE(isShown(1252));
    const std::vector<int> radios[] = {
        {}, {1255, 1262}, {1256, 1262}, {1257, 1262}, {1263}, {1255, 1263}, {1256, 1263}, {1257, 1263}, {}};
    for (int code = 0; code <= 8; ++code) {
        arrange(view, 12, std::int64_t{code});
        show(view);
        EXPECT_EQ(isChecked(1252), code != 0) << code;
        EXPECT_EQ(checkedRadios(), radios[code]) << code;
        EXPECT_EQ(picture(), code >= 4 ? 1107 : 1093) << code;
        EXPECT_EQ(isEnabled(1258), code != 0) << code;
    }
}

TEST_F(ViewProperties, TheCompassIsComposedOfPositionAndRepresentation) {
    auto& view = item<KorDsmViewRequestItem>("HB site plan");
    arrange(view, 12, std::int64_t{8});
    open<KorDSMPageViewProperties>(view);
    press(1256);
    EXPECT_TRUE(wroteOnly(view, 12, std::int64_t{6})) << "the symbol that is stored stays";
    takeBack(view);
    press(1263);
    EXPECT_TRUE(wroteNothing()) << "no position is shown";
    press(1256);
    press(1262);
    EXPECT_EQ(view.getRecord().compassKey, 2);
    EXPECT_EQ(picture(), 1093);
    press(1263);
    press(1258);
    EXPECT_EQ(view.getRecord().compassKey, 8);
    EXPECT_EQ(picture(), 1107);
    press(1252);
    EXPECT_EQ(view.getRecord().compassKey, 0);
    EXPECT_TRUE(checkedRadios().empty());
    EXPECT_FALSE(isEnabled(1255));
    press(1252);
    EXPECT_EQ(view.getRecord().compassKey, 1);
    EXPECT_EQ(checkedRadios(), (std::vector<int>{1255, 1262}));
    EXPECT_TRUE(isEnabled(1255));
}

class ViewCategories : public PageFixture {
protected:
    KorListCtrl& list() { return control<KorListCtrl>(1011); }
    void clickCell(int row, int column) {
        const QRect cell = list().visualRect(list().model()->index(row, column));
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 10, cell.center().y()));
    }
    std::vector<bool> checked() {
        std::vector<bool> boxes;
        for (int i = 0; i < list().getItemCount(); ++i)
            boxes.push_back(list().isChecked(i));
        return boxes;
    }
};

TEST_F(ViewCategories, AClickOnABoxFilesTheView) {
    auto& view = item<KorDsmViewRequestItem>("HB railing post");
    open<KorDSMPageViewCategories>(view);
    ASSERT_EQ(list().getItemText(1, 1), KorString("Hallberg: railings"));
    EXPECT_EQ(checked(), (std::vector<bool>{false, true, false}));
    clickCell(0, 1);
    EXPECT_TRUE(wroteNothing());
    clickCell(0, 0);
    EXPECT_EQ(checked(), (std::vector<bool>{true, true, false}));
    ASSERT_EQ(steps().size(), 1u);
    EXPECT_EQ(steps()[0]->table, kTableViewRequestCategory);
    EXPECT_EQ(steps()[0]->action, PendingStep::eAction::kAppend);
    QTest::keyClick(&list(), Qt::Key_Down);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(checked(), (std::vector<bool>{true, false, false}));
    ASSERT_EQ(steps().size(), 2u);
    EXPECT_EQ(steps()[1]->action, PendingStep::eAction::kDelete);
    EXPECT_EQ(told<DsmDataChanged>(), 2);
    EXPECT_EQ(told<DsmCategoriesChanged>(), 2);
    EXPECT_EQ(told<DsmMarkOtherPages>(), 2);
    show(view);
    EXPECT_EQ(checked(), (std::vector<bool>{true, false, false}));

    StructDetViewRequestCategory last;
    last.key = std::numeric_limits<std::int32_t>::max();
    databases.here()->insert(kTableViewRequestCategory, last);
    clickCell(2, 0);
    EXPECT_EQ(checked(), (std::vector<bool>{true, false, false})) << "no key is left, so it is filed nowhere";
    EXPECT_EQ(steps().size(), 2u);
    EXPECT_EQ(told<DsmDataChanged>(), 2);
    const std::vector<KorString> said = KorHostReport::take();
    ASSERT_EQ(said.size(), 1u) << "why it is not";
    EXPECT_NE(said[0].toStdString().find("2147483647"), std::string::npos) << said[0].c_str();
}

} // namespace
