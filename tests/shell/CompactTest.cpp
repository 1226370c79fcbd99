#include "controls/KorMnemonics.h"
#include "data/StyleDatabases.h"
#include "operations/KorOdbcMan.h"
#include "session/KorDSMUndo.h"
#include "shell/EditorFixture.h"

#include <QAction>
#include <QMenu>

namespace {

constexpr const char* kCommand = "Compact database…";

class CompactTest : public EditorFixture {
protected:
    void SetUp() override {
        KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
        storeElsewhere("user.dsdb", "UPDATE repr_map_entry SET repr_map = 999 WHERE key IN "
                                    "(SELECT key FROM repr_map_entry ORDER BY key LIMIT 2)");
        m_entries = std::stoi(entries());
    }
    std::string entries() { return stored("user.dsdb", "SELECT count(*) FROM repr_map_entry"); }

    /// Opens the context menu of the selected entry, presses the command if the menu has it, and answers the
    /// message that comes up. Returns the text of that message; empty without the command.
    std::string chooseCommand(QMessageBox::StandardButton answer) {
        std::string text;
        QTimer::singleShot(0, m_dialog.get(), [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            menu->close();
            for (QAction* action : menu->actions()) {
                if (KorMnemonics::plain(action->text()) != kCommand)
                    continue;
                answerNext([&](QWidget* modal) {
                    auto* box = qobject_cast<QMessageBox*>(modal);
                    text = box->text().toStdString();
                    box->button(answer)->click();
                });
                action->trigger();
            }
        });
        Q_EMIT tree().contextMenuRequested(tree().selectedItem(), m_dialog->pos());
        return text;
    }

    int m_entries = 0;
};

TEST_F(CompactTest, TheUserSourceOffersIt) {
    open();
    select({"Standard"});
    EXPECT_EQ(chooseCommand(QMessageBox::Ok), "") << "it may not be changed";
    select({"User"});
    EXPECT_EQ(chooseCommand(QMessageBox::No),
              "In \"user.dsdb\" there are 2 parts whose owner does not exist. Remove them?");
    EXPECT_FALSE(KorDSMUndo::canUndo() || button(3)->isEnabled());
    chooseCommand(QMessageBox::Yes);
    EXPECT_EQ(KorDSMUndo::undoSteps(9), std::vector<KorString>{"Compacting"});
    EXPECT_TRUE(button(3)->isEnabled());
    EXPECT_EQ(chooseCommand(QMessageBox::Ok),
              "\"user.dsdb\" has no parts without an owner; there is nothing to remove.");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(button(3)->isEnabled());
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    click(button(1));
    EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getUpdateStatus(),
              KorDSMDataStructure::kReloadRequested);
    EXPECT_FALSE(KorOdbcCompactDetailsTables::m_bCompactPerformed);
    m_databases.reset();
    EXPECT_EQ(std::stoi(entries()), m_entries - 2);
}

TEST_F(CompactTest, WhatIsDroppedDoesNotMakeALaterOkReload) {
    open();
    select({"User"});
    chooseCommand(QMessageBox::Yes);
    close();
    EXPECT_FALSE(KorDSMUndo::canUndo());
    open();
    click(button(1));
    EXPECT_EQ(KorDSMDialogFactory::getDSMDataStructure().getUpdateStatus(), KorDSMDataStructure::kUpToDate);
    EXPECT_EQ(std::stoi(entries()), m_entries);
}

TEST_F(CompactTest, NothingIsRemovedFromASourceThatIsNotWhole) {
    storeElsewhere("user.dsdb", "ALTER TABLE repr_map RENAME TO elsewhere");
    m_databases = std::make_unique<StyleDatabases>();
    std::ignore = m_databases->openFile(SourceId::user(), path("user.dsdb"), false);
    open();
    select({"User"});
    const std::string text = chooseCommand(QMessageBox::Ok);
    EXPECT_NE(text.find("is not done"), std::string::npos) << text;
    EXPECT_FALSE(KorDSMUndo::canUndo());
}

} // namespace
