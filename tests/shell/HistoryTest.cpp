#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorLineEdit.h"
#include "controls/VELComboTree.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "pages/PageHead.h"

#include <QMenu>

// Back, forward, and where undo leads.

namespace {

const std::vector<const char*> kRailings = {"User", "Hallberg: railings"};
constexpr int kBack = 1042;
constexpr int kForward = 1041;

class History : public EditorFixture {
protected:
    void go(int button) { click(control<KorButtonGroup>(1012)->button(button)); }
    bool canGo(int button) { return control<KorButtonGroup>(1012)->isButtonEnabled(button); }
    void toggleOption(int index) {
        control<KorButtonGroupMenu>(1233)->menuButton()->menu()->actions()[index]->trigger();
    }
};

} // namespace

TEST_F(History, OutlastsWhatRebuildsTheTrees) {
    open();
    select(kStyle);
    select(kView);
    const auto expectStepsToWork = [this] {
        const std::size_t places = m_dialog->history().places().size();
        ASSERT_EQ(selected(), "HB front");
        ASSERT_TRUE(canGo(kBack));
        EXPECT_FALSE(canGo(kForward));
        go(kBack);
        EXPECT_EQ(selected(), "HB post 1:15");
        EXPECT_TRUE(page()->isVisible());
        ASSERT_TRUE(canGo(kForward));
        go(kForward);
        EXPECT_EQ(selected(), "HB front");
        EXPECT_EQ(m_dialog->history().places().size(), places);
    };
    toggleOption(1);
    expectStepsToWork();
    toggleOption(0);
    expectStepsToWork();
    // A tree of one source changes to that of the place.
    ASSERT_TRUE(control<VELComboTree>(1200)->selectPath("Standard"));
    Q_EMIT control<VELComboTree>(1200)->entrySelected(control<VELComboTree>(1200)->selectedEntry());
    go(kBack);
    EXPECT_EQ(selected(), "HB post 1:15");
    go(kForward);
    toggleOption(0);
    expectStepsToWork();

    const std::string file = (m_folder.path() / "railing.dsdb").string();
    const SourceId standard = SourceId::standard();
    const std::int32_t style = m_databases->source(standard)->table(kTableDetailStyle).rows().at(0).key;
    ASSERT_EQ(
        KorODBCDetailStyleExports::exportDetail(0, style, standard.dsn, standard.index, KorString(file)),
        KorODBCDetailStyleExports::kDone);
    QString said;
    readNextMessage(said);
    importFile(file, [](KorDSMDialogImport& dialog) { click(KorControls::find(&dialog, 1)); });
    EXPECT_FALSE(said.isEmpty());
    select(kStyle);
    select(kView);
    expectStepsToWork();
    m_dialog->activateWindow();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(StyleDatabases::current().pending().isEmpty());
    select(kView);
    expectStepsToWork();
}

TEST_F(History, OutlastsWhatAnotherProgramStored) {
    open();
    select(kRailings);
    select(kStyle);
    select(kView);
    // Renamed there, it is the same place.
    storeElsewhere("user.dsdb", "UPDATE detail_style SET name='HB post 1:16' WHERE name='HB post 1:15'");
    const std::size_t places = m_dialog->history().places().size();
    comeBack();
    EXPECT_EQ(selected(), "HB front");
    EXPECT_EQ(m_dialog->history().places().size(), places);
    go(kBack);
    EXPECT_EQ(selected(), "HB post 1:16");
    EXPECT_TRUE(page()->isVisible());
    go(kForward);
    EXPECT_EQ(selected(), "HB front");
    // Deleted there, it is passed over.
    storeElsewhere("user.dsdb", "DELETE FROM detail_master WHERE name='HB post 1:15';"
                                "DELETE FROM detail_style WHERE name='HB post 1:16'");
    comeBack();
    go(kBack);
    EXPECT_EQ(selected(), "Hallberg: railings");
    EXPECT_FALSE(canGo(kForward)) << "everything after it is gone";
}

TEST_F(History, PassesOverWhatIsDeletedUntilItIsBack) {
    open();
    select(kRailings);
    select(kStyle);
    answerNext([](QWidget* modal) { typeName(modal, "HB post 1:20"); });
    command(kCopy);
    ASSERT_EQ(selected(), "HB post 1:20");
    answerNext([](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->text().contains("HB post 1:20"));
        click(box->button(QMessageBox::Yes));
    });
    command(kDelete);
    ASSERT_NE(selected(), "HB post 1:20");
    select(kRailings);
    go(kBack);
    while (canGo(kBack) && selected() != "HB post 1:15")
        go(kBack);
    EXPECT_EQ(selected(), "HB post 1:15");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selected(), "HB post 1:20");
    go(kBack);
    EXPECT_EQ(selected(), "HB post 1:15");
    // Renamed, it is the same place.
    answerNext([](QWidget* modal) { typeName(modal, "HB post 1:16"); });
    press(Qt::Key_F2);
    select(kRailings);
    go(kBack);
    EXPECT_EQ(selected(), "HB post 1:16");
}

TEST_F(History, UndoAndRedoLeadToWhatTheyChanged) {
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    changePosition();
    const int where = page()->templateId();
    showTab(0);
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    select({"User", "Hallberg: workshop", "HB holes"});
    answerNext([](QWidget* modal) { typeName(modal, "HB bores"); });
    press(Qt::Key_F2);
    select({"Standard"});
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selected(), "HB holes");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selected(), "HB post 1:15");
    EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getSelectedSection(),
              KorDSMDefines::kViewDetailStyles);
    EXPECT_TRUE(page()->isVisible());
    EXPECT_EQ(page()->templateId(), where) << "the page where it was done";
    showTab(0);
    select(kRailings);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selected(), "HB post 1:15");
    EXPECT_EQ(page()->templateId(), where);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(selected(), "HB bores");
    // What undo takes away leads to where it was.
    answerNext([](QWidget* modal) { typeName(modal, "HB slots"); });
    command(kCopy);
    select({"Standard"});
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(selected(), "Hallberg: workshop");
}

TEST_F(History, UndoLeadsToThePlaceOfARecordThatStandsInSeveral) {
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    const KorTreeHandle here =
        select({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"});
    auto* name = page()->findChild<PageHead*>()->findChild<KorLineEdit*>();
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, "HB shop");
    QTest::keyClick(name, Qt::Key_Return);
    select({"User", "Hallberg: posts and beams", "HB beam 1:15"});
    const KorTreeHandle style = tree().selectedItem();
    tree().expandBranch(style);
    for (KorTreeHandle view = tree().getChildItem(style); view; view = tree().getNextSiblingItem(view))
        for (KorTreeHandle child = tree().getChildItem(view); child; child = tree().getNextSiblingItem(child))
            if (tree().getItemText(child) == "HB shop")
                tree().selectItem(child);
    ASSERT_EQ(selected(), "HB shop");
    ASSERT_NE(tree().selectedItem(), here);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(tree().selectedItem(), here);
    EXPECT_EQ(selected(), "HB workshop");
}

TEST_F(History, ASectionShowsTheGroupThatItRemembersInItsCombo) {
    open();
    select(kStyle);
    toggleOption(0);
    m_dialog->switchSection(KorDSMDefines::kViewQualifiers);
    m_dialog->switchSection(KorDSMDefines::kViewDetailStyles);
    const KorString path = KorString("User") + VELComboTree::GetPathDelimiter() + "Hallberg: posts and beams";
    EXPECT_EQ(control<VELComboTree>(1200)->getSelectedPath().view(), path.view());
}

TEST_F(History, NeverTakesAForeignRecordForOneThatHadItsKey) {
    open();
    select(kStyle);
    answerNext([](QWidget* modal) { typeName(modal, "Mine"); });
    command(kCopy);
    ASSERT_EQ(selected(), "Mine");
    storeElsewhere("user.dsdb",
                   "INSERT INTO detail_style (key, name) SELECT max(key) + 1, 'Theirs' FROM detail_style;"
                   "INSERT INTO detail_master (key, name, detail_key, number, style, category) "
                   "SELECT max(key) + 1, 'Theirs', 1, 99, (SELECT max(key) FROM detail_style), "
                   "(SELECT category FROM detail_master WHERE name='HB post 1:15') FROM detail_master");
    comeBack();
    EXPECT_EQ(selected(), "Mine");
    select(kStyle);
    go(kBack);
    EXPECT_EQ(selected(), "Mine");
}
