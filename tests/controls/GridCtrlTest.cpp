#include "controls/KorComboBox.h"
#include "controls/KorMFCGridCtrl.h"
#include "support/Widgets.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>

namespace {

class GridCtrl : public testing::Test {
protected:
    GridCtrl() {
        grid.insertColumn("Name");
        grid.insertColumn("On", KorMFCGridCtrl::eCheck);
        grid.insertColumn("Kind", KorMFCGridCtrl::eCombo);
        grid.insertColumn("Number", KorMFCGridCtrl::eReadOnly);
        grid.setColumnChoices(2, {"beam", "column"});
        grid.addRow({"first", "1", "beam", "1"});
        grid.addRow({"second", "0", "column", "2"});
        grid.resize(500, 300);
        showActive(grid);
        QObject::connect(&grid, &KorMFCGridCtrl::cellEdited, &grid,
                         [this](int row, int column) { edited.emplace_back(row, column); });
    }

    KorMFCGridCtrl grid;
    std::vector<std::pair<int, int>> edited;
};

} // namespace

TEST_F(GridCtrl, FittedColumnsHaveRoomForTheWordsOfTheirCaptionsWhichWrap) {
    grid.insertColumn("Annotation strategy");
    int wrapped = 0;
    QObject::connect(&grid, &KorMFCGridCtrl::captionsWrapped, &grid, [&] { ++wrapped; });
    const QHeaderView& captions = *grid.horizontalHeader();
    const int oneLine = captions.sizeHint().height();
    const auto fitted = [&](int width) {
        grid.resize(width, 300);
        QApplication::processEvents();
        grid.fitColumns();
        EXPECT_EQ(captions.length(), grid.viewport()->width());
        EXPECT_GE(grid.columnWidth(4),
                  captions.fontMetrics().horizontalAdvance(QStringLiteral("Annotation")));
    };
    fitted(900);
    const int number = grid.columnWidth(3);
    EXPECT_EQ(captions.height(), oneLine);
    wrapped = 0;
    fitted(340);
    EXPECT_EQ(grid.columnWidth(3), number) << "what can only be read does not grow";
    EXPECT_GT(captions.height(), oneLine);
    EXPECT_EQ(wrapped, 1);
}

TEST_F(GridCtrl, ATextThatIsCutIsToldUnderThePointer) {
    const QString text = QStringLiteral("a name that has no room in its cell, however wide that may be here");
    const auto told = [this] {
        const QPoint place = grid.visualItemRect(grid.item(0, 0)).center();
        QHelpEvent rests(QEvent::ToolTip, place, grid.viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid.viewport(), &rests);
        return QToolTip::text();
    };
    EXPECT_EQ(told(), QString()) << "it can be read in the cell";
    grid.item(0, 0)->setText(text);
    EXPECT_EQ(told(), text);
    grid.item(0, 0)->setToolTip("more");
    EXPECT_EQ(told(), QStringLiteral("more"));
    QToolTip::hideText();
}

TEST_F(GridCtrl, CellsAreEditedInPlace) {
    grid.setCurrentCell(0, 0);
    QTest::keyClick(&grid, Qt::Key_Return);
    auto* editor = grid.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "new");
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(grid.getCellText(0, 0), KorString("new"));

    QTest::keyClick(&grid, Qt::Key_F2);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    editor = grid.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "left open");
    grid.commitEdit();
    EXPECT_EQ(grid.getCellText(0, 0), KorString("left open"));

    grid.setCurrentCell(1, 1);
    QTest::keyClick(&grid, Qt::Key_Space);
    EXPECT_TRUE(grid.isCellChecked(1, 1));

    grid.setCurrentCell(1, 2);
    QTest::keyClick(&grid, Qt::Key_F2);
    auto* combo = grid.findChild<KorComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->currentText(), QStringLiteral("column"));
    QTest::keyClick(combo, Qt::Key_Up);
    EXPECT_EQ(grid.getCellText(1, 2), KorString("beam"));

    EXPECT_EQ(edited, (std::vector<std::pair<int, int>>{{0, 0}, {0, 0}, {1, 1}, {1, 2}}));
    edited.clear();
    grid.setCellText(0, 0, "by the program");
    grid.setCellCheck(0, 1, false);
    EXPECT_TRUE(edited.empty());
}

TEST_F(GridCtrl, AClickOnTheArrowOfACellOpensItsList) {
    const QRect cell = grid.visualItemRect(grid.item(1, 2));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, {cell.right() - 6, cell.center().y()});
    auto* combo = grid.findChild<KorComboBox*>();
    ASSERT_NE(combo, nullptr);
    EXPECT_TRUE(combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_Up);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    EXPECT_EQ(grid.getCellText(1, 2), "beam");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(grid.selectedRow(), 1);
    EXPECT_FALSE(grid.isEditing()) << "beside the arrow a click selects";
}

TEST_F(GridCtrl, OfTheRadioCellsOfARowOneIsChosen) {
    grid.setRowCount(0);
    grid.insertColumn("Here", KorMFCGridCtrl::eRadio);
    grid.insertColumn("There", KorMFCGridCtrl::eRadio);
    for (const char* name : {"first", "second", "told"})
        grid.addRow({name, "0", "beam", "1", "here", "there"});
    grid.setCellEnabled(2, 4, false);
    grid.setCellEnabled(2, 5, false);
    const auto chosen = [this](int row) {
        return std::pair(grid.isCellChecked(row, 4), grid.isCellChecked(row, 5));
    };
    using Chosen = std::pair<bool, bool>;
    grid.setCellCheck(0, 4, true);
    grid.setCellCheck(0, 5, true);
    EXPECT_EQ(chosen(0), Chosen(false, true));
    EXPECT_TRUE(edited.empty());

    grid.setCurrentCell(0, 5);
    QTest::keyClick(&grid, Qt::Key_Space);
    EXPECT_EQ(chosen(0), Chosen(false, true)) << "what is chosen stays";
    QTest::keyClick(&grid, Qt::Key_Left);
    EXPECT_EQ(chosen(0), Chosen(true, false));
    QTest::keyClick(&grid, Qt::Key_Left);
    EXPECT_EQ(grid.currentColumn(), 3) << "beside the marks the key only moves";
    const QRect text = grid.visualItemRect(grid.item(1, 5));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, text.center());
    EXPECT_EQ(chosen(1), Chosen(false, true));
    EXPECT_EQ(edited, (std::vector<std::pair<int, int>>{{0, 4}, {1, 5}}));

    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualItemRect(grid.item(2, 4)).center());
    QTest::keyClick(&grid, Qt::Key_Right);
    QTest::keyClick(&grid, Qt::Key_Space);
    EXPECT_EQ(chosen(2), Chosen(false, false)) << "a plain text";
    EXPECT_EQ(grid.getCellText(2, 4), KorString("here"));
}

TEST_F(GridCtrl, ADisabledGridChangesNothing) {
    int deleted = -1;
    QObject::connect(&grid, &KorMFCGridCtrl::deletePressed, &grid, [&](int row) { deleted = row; });
    grid.setCurrentCell(1, 1);
    grid.enableWindow(false);
    QTest::keyClick(&grid, Qt::Key_Space);
    QTest::keyClick(&grid, Qt::Key_Delete);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(1, 1)).topLeft() + QPoint(10, 12));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {},
                       grid.visualRect(grid.model()->index(0, 0)).center());
    EXPECT_EQ(grid.findChild<QLineEdit*>(), nullptr);
    EXPECT_TRUE(edited.empty());
    EXPECT_EQ(deleted, -1);
    grid.enableWindow(true);
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_EQ(deleted, 0);
}

TEST(GridCtrlWidths, TheLastColumnTakesTheRest) {
    KorMFCGridCtrl grid;
    for (const char* title : {"a", "b", "c"})
        grid.insertColumn(title);
    grid.setFrameStyle(QFrame::NoFrame);
    grid.setColumnWidths({30, 30, 40});
    grid.resize(501, 200);
    grid.show();
    EXPECT_EQ(grid.viewport()->width(), 501);
    EXPECT_EQ(grid.columnWidth(0), 150);
    EXPECT_EQ(grid.columnWidth(1), 150);
    EXPECT_EQ(grid.columnWidth(2), 201);
    grid.setColumnWidths({10, 20, 30});
    EXPECT_EQ(grid.columnWidth(2), 150) << "far from the edge a share is a share";
}
