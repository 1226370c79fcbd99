#include "shell/EditorFixture.h"

#include "controls/KorComboBitmap.h"
#include "controls/VELComboTree.h"
#include "operations/KorOdbcGUI.h"

// Where new records are filed and shown.

namespace {

constexpr int kGroups = 2306;

const std::vector<const char*> kSetBelowPoints = {
    "User",     "Hallberg: posts and beams", "HB post 1:15", "HB front",
    "HB chain", "HB holes, running",         "HB start",     "HB main profile"};

} // namespace

TEST_F(EditorFixture, ASetMadeBelowDimensionPointsIsFiledInTheGroupChosenAndShownThere) {
    for (const bool fullTree : {true, false}) {
        open();
        KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
        structure.setTargetDatabase(KorDSMDefines::kViewQualifiers, SourceId::standard().dsn);
        structure.setTargetAddIn(KorDSMDefines::kViewQualifiers, SourceId::standard().index);
        const std::vector<const char*> inUser(kSetBelowPoints.begin() + 1, kSetBelowPoints.end());
        select(kSetBelowPoints);
        if (!fullTree) {
            structure.setShowFullTree(false);
            close();
            open();
            select(inUser);
        }
        QString proposed;
        answerNext([&proposed](QWidget* modal) {
            auto* groups = KorControls::find<KorComboBitmap>(modal, kGroups);
            proposed = groups->currentText();
            groups->setFocus();
            QTest::keyClick(groups, Qt::Key_Down);
            typeName(modal, "HB site profile", 2304);
        });
        command(kNew);
        EXPECT_EQ(proposed, "Hallberg: workshop") << "where the selected set is filed";
        const KorDSMDatabaseItem* made = KorDSMSectionTree::itemOf(tree().selectedItem());
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(structure.getSelectedSection(), KorDSMDefines::kViewQualifiers);
        EXPECT_EQ(made->getDisplayName().view(), "HB site profile");
        EXPECT_EQ(made->parent()->getDisplayName().view(), "Hallberg: site");
        EXPECT_TRUE(page() && page()->getData().as<KorDSMDatabaseItem>() == made);
        close();
        EXPECT_FALSE(isPending());
    }
}
