#include "controls/KorMFCGridCtrl.h"
#include "data/StyleDatabases.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "services/KOSettings.h"
#include "session/KorDSMUndo.h"
#include "shell/EditorFixture.h"
#include "support/FullDisk.h"

#include <fstream>

// What the editor offers after a crash.

namespace {

constexpr int kUpperLeft = 1038;

class Recovery : public EditorFixture {
protected:
    Recovery() { KorDSMDialogFactory::options().recoversChanges = true; }

    /// Leaves one change as a process that is killed does: nobody drops or stores it.
    void crashWithAChange() {
        open();
        changePosition();
        ASSERT_EQ(files(), 1);
        m_dialog.reset();
        m_databases.reset();
        ASSERT_EQ(files(), 1);
    }
    int files() const { return files(settingsFile().parent_path()); }
    static int files(const std::filesystem::path& folder) {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            count += entry.path().filename().string().starts_with("recovery-") ? 1 : 0;
        return count;
    }
    /// What a kill at this moment leaves: the files of the running program are its own.
    void keepFiles() {
        m_kept.clear();
        for (const auto& entry : std::filesystem::directory_iterator(settingsFile().parent_path()))
            if (entry.path().filename().string().starts_with("recovery-"))
                m_kept.emplace_back(entry.path(), bytesOf(entry.path()));
    }
    /// Ends the program, and goes on as if it had been killed at that moment.
    void killedThen() {
        m_dialog.reset();
        m_databases.reset();
        ASSERT_EQ(m_kept.size(), 1U);
        for (const auto& entry : std::filesystem::directory_iterator(settingsFile().parent_path()))
            if (entry.path().filename().string().starts_with("recovery-"))
                std::filesystem::remove(entry.path());
        writeBytes(m_kept[0].first, m_kept[0].second);
    }
    /// Keeps the files while the list of conflicts is open, and answers it by all of mine.
    void keepFilesInList() {
        whenShown<KorDSMDialogConflicts>([this](KorDSMDialogConflicts& dialog) {
            keepFiles();
            dialog.reject();
        });
    }
    /// Answers the boxes that come while the editor opens, by the buttons of these texts, and notes what they
    /// said.
    void openAndAnswer(std::vector<const char*> answers) {
        m_said.clear();
        QTimer clock;
        QObject::connect(&clock, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal || answers.empty())
                return;
            m_said << textOf(*modal);
            for (auto* button : modal->findChildren<QPushButton*>())
                if (button->isVisible() && button->text() == answers.front()) {
                    answers.erase(answers.begin());
                    return button->click();
                }
            ADD_FAILURE() << "no button " << answers.front();
            modal->close();
        });
        clock.start(0);
        open();
        EXPECT_TRUE(answers.empty());
    }
    static QString textOf(const QWidget& modal) {
        if (auto* box = qobject_cast<const QMessageBox*>(&modal))
            return box->text() + "\n" + box->informativeText();
        QStringList cells;
        auto* grid = modal.findChild<KorMFCGridCtrl*>();
        for (int column = 0; grid && column < grid->columnCount(); ++column)
            cells << grid->item(0, column)->text();
        return cells.join(" | ");
    }
    static std::size_t pendingCommands() { return StyleDatabases::current().pending().undoable(9).size(); }

    QStringList m_said;
    std::vector<std::pair<std::filesystem::path, std::string>> m_kept;
};

constexpr const char* kQuestion =
    R"(Detail style "HB post 1:15" | Title position | Above main view | Below detail | Upper left)";
constexpr const char* kTheirs = "UPDATE detail_style SET title_position=6 WHERE name='HB post 1:15'";

} // namespace

TEST_F(Recovery, ThatTheLastChangeIsCutOffIsToldBesideWhatIsOffered) {
    crashWithAChange();
    keepFiles();
    for (const char* noChange : {"storing\t1", "begin\t\t12"}) {
        writeBytes(m_kept[0].first, m_kept[0].second + noChange);
        openAndAnswer({"&Later"});
        EXPECT_FALSE(m_said.join(' ').contains("breaks off")) << noChange;
    }
    writeBytes(m_kept[0].first, m_kept[0].second + "cell\t1");
    openAndAnswer({"&Bring back", "OK"});
    EXPECT_TRUE(m_said.join(' ').contains("breaks off in the middle")) << m_said.join('\n').toStdString();
    EXPECT_EQ(pendingCommands(), 1U);
}

TEST_F(Recovery, WhatACrashLeftIsOfferedAndBroughtBackAsPendingChanges) {
    crashWithAChange();
    openAndAnswer({"&Later"});
    ASSERT_EQ(m_said.size(), 1);
    EXPECT_TRUE(m_said[0].contains("1 change was stored, which was made on")) << m_said[0].toStdString();
    EXPECT_TRUE(m_said[0].contains("HB post 1:15")) << m_said[0].toStdString();
    EXPECT_EQ(pendingCommands(), 0U);
    EXPECT_EQ(files(), 1);
    openAndAnswer({"&Bring back"});
    EXPECT_EQ(files(), 1) << "that of this process";
    EXPECT_EQ(pendingCommands(), 1U);
    EXPECT_TRUE(button(kApply)->isEnabled());
    select(kStyle);
    showTab(1);
    EXPECT_TRUE(pageControl<QRadioButton>(kBelowDetail)->isChecked());
    EXPECT_EQ(KorDSMUndo::undoText(), "Undo change of Title position of \"HB post 1:15\"");
    click(button(kApply));
    EXPECT_EQ(files(), 0);
    openAndAnswer({});
    close();
    m_databases.reset();
    EXPECT_EQ(stored("user.dsdb", kPosition), "4");
}

TEST_F(Recovery, WhatIsThrownAwayOrOfADamagedFileIsNotOfferedAgain) {
    crashWithAChange();
    openAndAnswer({"&Throw away"});
    EXPECT_EQ(pendingCommands(), 0U);
    EXPECT_EQ(files(), 0);
    close();
    std::ofstream(settingsFile().parent_path() / "recovery-1") << "something else\n";
    openAndAnswer({"OK"});
    ASSERT_EQ(m_said.size(), 1);
    EXPECT_TRUE(m_said[0].contains("recovery-1")) << m_said[0].toStdString();
    EXPECT_EQ(files(), 1) << "kept";
}

TEST_F(Recovery, AKillWhileTheListIsOpenLeavesTheSameQuestion) {
    open();
    changePosition();
    storeElsewhere("user.dsdb", kTheirs);
    keepFilesInList();
    click(button(kApply));
    EXPECT_TRUE(isPending()) << "it was answered by mine";
    for (int again = 0; again < 2; ++again) {
        killedThen();
        keepFilesInList(); // comes before the answer by a button
        openAndAnswer({"&Bring back"});
        EXPECT_TRUE(isPending());
        EXPECT_EQ(files(), 1) << "exactly one copy";
    }
    killedThen();
    openAndAnswer({"&Bring back", "All that is &stored", "OK"});
    ASSERT_EQ(m_said.size(), 3);
    EXPECT_EQ(m_said[1].toStdString(), kQuestion);
    EXPECT_FALSE(isPending() || button(kApply)->isEnabled());
    EXPECT_EQ(files(), 0);
}

TEST_F(Recovery, WhatAListOnlyTellsIsToldAgainAfterAKill) {
    open();
    changePosition();
    storeElsewhere("user.dsdb", "DELETE FROM detail_style WHERE name='HB post 1:15'");
    keepFilesInList();
    click(button(kApply));
    EXPECT_EQ(files(), 0) << "it was told";
    killedThen();
    openAndAnswer({"&Bring back", "OK"});
    ASSERT_EQ(m_said.size(), 2);
    EXPECT_TRUE(m_said[1].contains("was deleted")) << m_said[1].toStdString();
    EXPECT_EQ(files(), 0);
}

TEST_F(Recovery, WhatWasBroughtBackIsNamedAndTakenBackStepByStep) {
    open();
    changePosition();
    click(pageControl<QRadioButton>(kUpperLeft));
    m_databases->setCurrentSource(SourceId::user());
    StructDetBaseCategory category;
    category.name = "Mine";
    ASSERT_EQ(m_databases->append(tableOf<StructDetBaseCategory>, category), WriteResult::kWritten);
    category.number = 77;
    ASSERT_EQ(m_databases->store(tableOf<StructDetBaseCategory>, category), WriteResult::kWritten);
    const std::vector<KorString> steps = KorDSMUndo::undoSteps(9);
    ASSERT_EQ(steps.size(), 4U);
    m_dialog.reset();
    m_databases.reset();
    storeElsewhere("user.dsdb", "INSERT INTO base_category(\"key\", name) VALUES (" +
                                    std::to_string(category.key) + ", 'Theirs')");
    openAndAnswer({"&Bring back"});
    EXPECT_EQ(KorDSMUndo::undoSteps(9), steps);
    const auto& categories = m_databases->source(SourceId::user())->table(tableOf<StructDetBaseCategory>);
    const auto mine = [&] { return static_cast<const StructDetBaseCategory*>(categories.find("Mine")); };
    ASSERT_NE(mine(), nullptr);
    EXPECT_EQ(mine()->number, 77);
    press(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_NE(mine(), nullptr);
    EXPECT_NE(mine()->number, 77);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(mine(), nullptr);
    press(Qt::Key_Z, Qt::ControlModifier);
    KorDSMDialogFactory::options().asksBeforeLeaving = true;
    QString said;
    whenShown<QMessageBox>([&said](QMessageBox& box) {
        said = box.text() + box.informativeText();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    click(button(kCancel));
    KorDSMDialogFactory::options().asksBeforeLeaving = false;
    EXPECT_TRUE(said.startsWith("One change") && said.contains("HB post 1:15")) << said.toStdString();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(isPending());
    EXPECT_EQ(files(), 0);
}

TEST_F(Recovery, AHostThatDoesNotWantItFindsAndLeavesNothing) {
    crashWithAChange();
    KorDSMDialogFactory::options().recoversChanges = false;
    openAndAnswer({});
    changePosition();
    EXPECT_EQ(files(), 1) << "that of the crash";
    KorDSMDialogFactory::options().recoversChanges = true;
    KorDSMDialogFactory::options().recoveryFolder = KorString((m_folder.path() / "host").string());
    openAndAnswer({});
    changePosition();
    EXPECT_EQ(files(m_folder.path() / "host"), 1);
    KorDSMDialogFactory::options().recoversChanges = false;
    KorDSMMainDialog another(nullptr);
    another.OnInitDialog();
    EXPECT_EQ(files(m_folder.path() / "host"), 0);
}

TEST_F(Recovery, OnAFullDiskTheOnlyCopyStaysAndTheUserHearsOfItAtOnce) {
    crashWithAChange();
    {
        const FullDisk full;
        openAndAnswer({"&Bring back", "OK"});
        ASSERT_EQ(m_said.size(), 2);
        EXPECT_TRUE(m_said[1].contains("cannot be written")) << m_said[1].toStdString();
        EXPECT_EQ(pendingCommands(), 1U);
    }
    m_dialog.reset();
    m_databases.reset();
    EXPECT_EQ(files(), 1);
    openAndAnswer({"&Bring back"});
    EXPECT_EQ(files(), 1) << "that of this process";
    const FullDisk full;
    QString said;
    whenShown<QMessageBox>([&said](QMessageBox& box) {
        said = box.informativeText();
        box.close();
    });
    select(kStyle);
    showTab(1);
    click(pageControl<QRadioButton>(kUpperLeft));
    QApplication::processEvents();
    EXPECT_TRUE(said.contains("cannot be written")) << said.toStdString();
}

TEST_F(Recovery, ADatabaseThatIsGoneOrOnlyReadIsNamedAndItsChangesStay) {
    crashWithAChange();
    m_databases = std::make_unique<StyleDatabases>();
    ASSERT_TRUE(m_databases->openFile(SourceId::standard(), path("standard.dsdb"), true));
    ASSERT_TRUE(m_databases->openFile(SourceId::user(), path("user.dsdb"), true));
    openAndAnswer({"OK"});
    ASSERT_EQ(m_said.size(), 1);
    EXPECT_TRUE(m_said[0].contains("can only be read now")) << m_said[0].toStdString();
    EXPECT_EQ(files(), 1);
    close();
    m_databases->closeSource(SourceId::user());
    std::filesystem::remove(path("user.dsdb"));
    openAndAnswer({"OK"});
    ASSERT_EQ(m_said.size(), 1);
    EXPECT_TRUE(m_said[0].contains("is not there any more")) << m_said[0].toStdString();
    EXPECT_EQ(files(), 1);
    m_dialog.reset();
    m_databases.reset();
    openAndAnswer({"&Bring back", "OK"});
    ASSERT_EQ(m_said.size(), 2);
    EXPECT_TRUE(m_said[1].startsWith("Detail style \"HB post 1:15\"") && m_said[1].contains("was deleted"))
        << m_said[1].toStdString();
    EXPECT_TRUE(m_said[0].contains("is another file now")) << m_said[0].toStdString();
    EXPECT_TRUE(m_said[0].contains("\"Detail style [")) << m_said[0].toStdString();
    EXPECT_EQ(pendingCommands(), 0U);
}
