#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorListCtrl.h"
#include "controls/VELComboTree.h"
#include "controls/VELComboTreePopup.h"
#include "shell/StyleThumbnails.h"

#include <QMenu>

namespace {

const std::vector<const char*> kCategory = {"User", "Hallberg: posts and beams"};

// The small drawings in lists.
class Thumbnails : public EditorFixture {
protected:
    Thumbnails() {
        open();
        KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    }
    KorListCtrl& list() { return *control<KorListCtrl>(1003); }
    static StyleThumbnails& made() { return StyleThumbnails::ofSession(); }
    static void settle() {
        EXPECT_TRUE(QTest::qWaitFor([] {
            QApplication::processEvents();
            return !made().isWorking();
        }));
    }
    // What is to be seen in the place of a row's icon.
    QImage pictureOf(const char* name) {
        for (int row = 0; row < list().getItemCount(); ++row)
            if (list().getItemText(row, 0) == KorString(name))
                return made()
                    .picture(StyleThumbnails::subjectOf(list().getItemData(row).as<KorDSMDatabaseItem>()), 1)
                    .toImage();
        return {};
    }
    int inSight() {
        int rows = 0;
        while (rows < list().getItemCount() &&
               list().visualRect(list().model()->index(rows, 0)).top() < list().viewport()->height())
            ++rows;
        return rows;
    }
    void showThem(bool shown) {
        QAction* option = nullptr; // the last of the check items
        for (QAction* action : control<KorButtonGroupMenu>(1233)->checkMenu()->actions())
            option = action->isCheckable() ? action : option;
        EXPECT_EQ(option->isChecked(), !shown);
        option->trigger();
    }
};

} // namespace

TEST_F(Thumbnails, AreMadeAnewWhereWhatTheyShowChanged) {
    select(kCategory);
    settle();
    ASSERT_EQ(made().drawings(), 3);
    const QImage post = pictureOf("HB post 1:15");
    const QImage beam = pictureOf("HB beam 1:15");
    EXPECT_EQ(post.size(), KorThumbnails::kSize);
    EXPECT_FALSE(post == beam);

    changePosition();
    select(kCategory);
    settle();
    EXPECT_EQ(made().drawings(), 4) << "the others do not read what was changed";
    EXPECT_FALSE(pictureOf("HB post 1:15") == post);
    EXPECT_TRUE(pictureOf("HB beam 1:15") == beam);
    press(Qt::Key_Z, Qt::ControlModifier);
    select(kCategory);
    settle();
    EXPECT_TRUE(pictureOf("HB post 1:15") == post);
    EXPECT_FALSE(isPending());
}

TEST_F(Thumbnails, AreMadeOneByOneAndOnlyOfRowsInSight) {
    select({"Standard", "General", "Beams"});
    list().setMaximumHeight(90);
    settle();
    const int few = 4; // around them

    ASSERT_LT(inSight() + few, list().getItemCount());
    EXPECT_EQ(made().drawings(), inSight() + few);

    // Whoever goes on does not wait for those that are still to be made.
    select({"Standard", "General", "Columns"});
    QApplication::sendPostedEvents();
    list().viewport()->repaint();
    const int before = made().drawings();
    QApplication::processEvents();
    EXPECT_LE(made().drawings(), before + 1);
    EXPECT_TRUE(made().isWorking());
    select(kStyle);
    settle();
    EXPECT_LE(made().drawings(), before + 1);
}

TEST_F(Thumbnails, AreLeftOutWhereTheUserWantsNone) {
    select(kCategory);
    settle();
    const auto height = [this] { return list().visualRect(list().model()->index(0, 0)).height(); };
    EXPECT_GE(height(), KorThumbnails::kSize.height());
    showThem(false);
    EXPECT_LT(height(), KorThumbnails::kSize.height());
    close();
    open();
    select(kCategory);
    settle();
    EXPECT_LT(height(), KorThumbnails::kSize.height()) << "that is remembered";
    EXPECT_EQ(made().drawings(), 3);
    showThem(true);
    settle();
    EXPECT_EQ(made().drawings(), 3) << "nothing changed since";
    EXPECT_GE(height(), KorThumbnails::kSize.height());
}

TEST_F(Thumbnails, ShowViewsWhereOneIsChosen) {
    select(kView);
    showTab(0);
    settle();
    const int before = made().drawings();
    auto* views = page()->findChild<VELComboTree*>();
    ASSERT_NE(views, nullptr);
    views->showPopup();
    auto* tree = views->findChild<VELComboTreePopup*>()->findChild<KorTreeCtrl*>();
    tree->expandAll();
    settle();
    EXPECT_GT(made().drawings(), before + 2);
    EXPECT_GE(tree->visualRect(tree->model()->index(0, 0)).height(), KorThumbnails::kSize.height());
    views->hidePopup();
}
