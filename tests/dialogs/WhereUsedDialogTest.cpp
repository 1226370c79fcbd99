#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "dialogs/UserDataFixture.h"
#include "support/OtherProgram.h"

#include <QLabel>
#include <QToolButton>

namespace {

class WhereUsedDialog : public UserDataFixture {
protected:
    WhereUsedDialog() {
        rails = databases.here()->table(kTableQualifierSet).find("HB rails")->key;
        usages = KorDSMWhereUsed::usagesOf(SourceId::user(), {kTableQualifierSet, rails});
    }

    std::int32_t rails = 0;
    std::vector<KorDSMUsage> usages;
};

} // namespace

TEST_F(WhereUsedDialog, GoesToWhatIsClickedOrEntered) {
    ASSERT_GE(usages.size(), 2u);
    KorDSMDialogWhereUsed dialog("HB rails", SourceId::user(), {kTableQualifierSet, rails}, nullptr);
    std::vector<KorString> chosen;
    QObject::connect(&dialog, &KorDSMDialogWhereUsed::usageChosen, &dialog,
                     [&](const KorDSMUsage& usage) { chosen.push_back(usage.name); });
    showActive(dialog);
    auto* list = KorControls::find<KorListCtrl>(&dialog, 2351);
    EXPECT_EQ(list->getItemCount(), static_cast<int>(usages.size()));
    EXPECT_EQ(dialog.windowTitle(), "Where \"HB rails\" is used");
    list->sortByColumn(0, Qt::DescendingOrder);
    clickRow(*list, 0);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(chosen.size(), 1u) << "looking is not going";
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(chosen, (std::vector<KorString>{list->getItemText(0, 0), list->getItemText(1, 0)}));
    EXPECT_TRUE(dialog.isVisible()) << "it stays open";
}

TEST_F(WhereUsedDialog, UsersOfANamesakeAreToldAsSuch) {
    TempFolder other;
    ASSERT_EQ(buildSampleData(SOURCE_DIR "/resources", other.path().string()).error, "");
    ASSERT_EQ(databases.openFile(SourceId::addIn(0), (other.path() / "user.dsdb").string(), true).error, "");
    using Dialog = KorDSMDialogWhereUsed;
    const auto own = static_cast<int>(usages.size());
    const RowRef row{kTableQualifierSet, rails};
    Dialog alone("HB rails", SourceId::user(), row, nullptr, Dialog::eUsers::kOfRecordAlone);
    EXPECT_EQ(KorControls::find<KorListCtrl>(&alone, 2351)->getItemCount(), own);
    Dialog all("HB rails", SourceId::user(), row, nullptr);
    auto* list = KorControls::find<KorListCtrl>(&all, 2351);
    ASSERT_EQ(list->getItemCount(), own * 2);
    EXPECT_EQ(list->getItemText(own - 1, 3), "User");
    EXPECT_NE(list->getItemText(own, 3).view().find("its own record of this name"), std::string_view::npos);
}

TEST_F(WhereUsedDialog, LooksAgainWhenTheUserComesBack) {
    KorDSMDialogWhereUsed dialog("HB rails", SourceId::user(), {kTableQualifierSet, rails}, nullptr);
    showActive(dialog);
    auto* list = KorControls::find<KorListCtrl>(&dialog, 2351);
    QDialog editor;
    showActive(editor);
    const Referrer user = databases.here()->referrersOf(kTableQualifierSet, KorOdbcKey(rails)).front();
    ASSERT_EQ(databases.setCell(user.table->type, KorOdbcKey(user.key), user.column->number, std::int64_t{0}),
              WriteResult::kWritten);
    EXPECT_EQ(list->getItemCount(), static_cast<int>(usages.size()));
    showActive(dialog);
    EXPECT_EQ(list->getItemCount(), static_cast<int>(usages.size()) - 1);
}

TEST_F(WhereUsedDialog, SaysWhenNothingUsesTheRecord) {
    KorDSMDialogWhereUsed dialog("HB members", SourceId::user(), {kTableQualifierSet, 4711}, nullptr);
    showActive(dialog);
    EXPECT_TRUE(KorControls::find<QLabel>(&dialog, 2352)->isVisible());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(WhereUsedDialog, SaysThatMoreMayUseTheRecordWhereADatabaseCouldNotBeReadWhole) {
    OtherProgram((folder.path() / "user.dsdb").string()).run("UPDATE detail_style SET description = 'new'");
    KorDSMDialogWhereUsed dialog("HB rails", SourceId::user(), {kTableQualifierSet, rails}, nullptr);
    showActive(dialog);
    auto* label = KorControls::find<QLabel>(&dialog, 2352);
    EXPECT_TRUE(label->isVisible());
    EXPECT_TRUE(label->text().contains("user.dsdb") && label->text().startsWith("More records may use it"))
        << label->text().toStdString();
    EXPECT_EQ(KorControls::find<KorListCtrl>(&dialog, 2351)->getItemCount(), static_cast<int>(usages.size()));
    KorDSMDialogInUse refusal("Still in use.", usages, nullptr);
    EXPECT_TRUE(KorControls::find<QToolButton>(&refusal, 2356)->text().contains("at least"));
    KorDSMDialogConfirmation question(kTableQualifierSet, KorOdbcKey(rails), nullptr);
    EXPECT_TRUE(KorControls::find<QToolButton>(&question, 1241)->toolTip().contains("user.dsdb"));
}

TEST_F(WhereUsedDialog, TheRefusalUnfoldsTheListAndClosesToGoThere) {
    KorDSMDialogInUse dialog("Still in use.", usages, nullptr);
    showActive(dialog);
    auto* list = KorControls::find<KorListCtrl>(&dialog, 2357);
    EXPECT_FALSE(list->isVisible());
    QTest::mouseClick(KorControls::find<QToolButton>(&dialog, 2356), Qt::LeftButton);
    ASSERT_TRUE(list->isVisible());
    clickRow(*list, 1);
    EXPECT_FALSE(dialog.isVisible());
    ASSERT_TRUE(dialog.chosen().has_value());
    EXPECT_EQ(dialog.chosen()->name, usages[1].name);
}

TEST_F(WhereUsedDialog, TheConfirmationShowsTheListUntilItIsFoldedAway) {
    KorDSMDialogConfirmation dialog(kTableQualifierSet, KorOdbcKey(rails), nullptr);
    showActive(dialog);
    auto* list = KorControls::find<KorListCtrl>(&dialog, 1242);
    auto* button = KorControls::find<QToolButton>(&dialog, 1241);
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(list->getItemCount(), static_cast<int>(usages.size()));
    clickRow(*list, 0);
    EXPECT_TRUE(dialog.isVisible()) << "the question still wants its answer";
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_FALSE(list->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(list->isVisible());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}
