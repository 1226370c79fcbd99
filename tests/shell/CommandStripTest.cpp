#include "shell/CommandStrip.h"

#include "controls/KorButtonGroup.h"
#include "model/KorDSMBusy.h"
#include "shell/ModuleResources.h"
#include "support/FreshProcess.h"

#include <QAction>
#include <QApplication>

namespace {

class CommandStripTest : public FreshProcess {
protected:
    CommandStripTest() {
        ModuleResources::setUp({});
        CommandStates all;
        all.enabled.fill(true);
        strip.emplace(buttons);
        strip->enable(all);
    }
    void giveActions() {
        for (const ItemCommandRow& row : kItemCommandRows)
            strip->on(row.command, [this, command = row.command] { done = command; });
    }
    std::optional<eItemCommand> triggered(eItemCommand command) {
        done.reset();
        strip->trigger(command);
        return done;
    }

    QWidget window;
    KorButtonGroup buttons{&window};
    std::optional<CommandStrip> strip;
    std::optional<eItemCommand> done;
};

} // namespace

TEST_F(CommandStripTest, EachRowIsAButtonAKeyAndAMenuEntryThatDoTheSame) {
    EXPECT_FALSE(strip->isComplete());
    giveActions();
    EXPECT_TRUE(strip->isComplete());
    for (const ItemCommandRow& row : kItemCommandRows) {
        const auto place = static_cast<int>(row.command);
        EXPECT_EQ(buttons.buttonId(place), row.button);
        const QAction* action = strip->actions()[static_cast<std::size_t>(place)];
        EXPECT_EQ(action->shortcut().toString(QKeySequence::PortableText).toStdString(), row.key);
        EXPECT_EQ(triggered(row.command), row.command);
    }
    strip->enable({});
    EXPECT_EQ(triggered(eItemCommand::kHelp), std::nullopt);
}

TEST_F(CommandStripTest, WhatIsPressedWhileSomethingIsBusyIsDoneAfterIt) {
    giveActions();
    {
        const KorDSMBusy busy;
        EXPECT_EQ(triggered(eItemCommand::kCopy), std::nullopt);
    }
    QApplication::processEvents();
    EXPECT_EQ(done, eItemCommand::kCopy);
}
