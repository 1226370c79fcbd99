#include "data/StyleDatabases.h"
#include "shell/EditorFixture.h"

#include "controls/KorButtonGroupMenu.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorMnemonics.h"
#include "controls/VELComboTree.h"
#include "shell/PreviewPane.h"

#include <QComboBox>
#include <QFileDialog>
#include <QMenu>
#include <QTabBar>

#include <random>

namespace {

// How long and how often the editor is used; more of both finds what a short run misses.
int setting(const char* name, int usual) {
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : usual;
}

// Uses the editor without a plan: whatever comes after whatever, each thing has to find the others in order.
// The internal checks of the program report what is not, and fail the test.
class RandomUse : public EditorFixture, public testing::WithParamInterface<int> {
protected:
    RandomUse() : m_random(static_cast<unsigned>(GetParam())) {
        KorLayoutStore::write("PreviewShown", GetParam() % 2 == 0 ? "1" : "0");
        keepAnswering();
    }

    // A timer of its own each time: what an answer opens is answered while the answer is still under way.
    void keepAnswering() {
        QTimer::singleShot(0, &m_answering, [this] {
            keepAnswering();
            answerWhatIsOpen();
        });
    }

    int below(int limit) {
        return limit > 0 ? static_cast<int>(m_random() % static_cast<unsigned>(limit)) : 0;
    }

    // Dialogs that open on the way are answered both ways, with their own fields used before; menus likewise.
    void answerWhatIsOpen() {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
            return chooseFrom(*menu);
        if (QWidget* popup = QApplication::activePopupWidget()) {
            popup->close();
            return;
        }
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || modal == m_dialog.get())
            return;
        if (auto* files = qobject_cast<QFileDialog*>(modal))
            return files->reject();
        if (below(3) == 0)
            return useSomeControlOf(*modal);
        QList<QPushButton*> buttons;
        for (auto* button : modal->findChildren<QPushButton*>())
            if (button->isVisible() && button->isEnabled())
                buttons << button;
        if (buttons.isEmpty() || below(4) == 0)
            QTest::keyClick(modal, Qt::Key_Escape);
        else
            buttons[below(static_cast<int>(buttons.size()))]->click();
    }

    void chooseFrom(QMenu& menu) {
        QList<QAction*> actions;
        for (QAction* action : menu.actions())
            if (action->isEnabled() && !action->isSeparator() && !action->menu())
                actions << action;
        QAction* chosen =
            actions.isEmpty() || below(3) == 0 ? nullptr : actions[below(static_cast<int>(actions.size()))];
        menu.close();
        if (chosen &&
            KorMnemonics::plain(chosen->text()) != KorMnemonics::plain(control<QPushButton>(1098)->text()))
            chosen->trigger();
    }

    KorTreeHandle someEntry() {
        // Mostly where something can be changed.
        KorTreeHandle root = tree().getRoot();
        if (!root)
            return nullptr;
        KorTreeHandle entry = root;
        if (KorDSMDialogFactory::getDSMDataStructure().getShowFullTree() && below(4))
            entry = child(root, "User");
        for (int depth = below(6); depth > 0 && entry; --depth) {
            tree().expand(entry);
            if (tree().childCount(entry) == 0)
                break;
            KorTreeHandle next = tree().getChildItem(entry);
            for (int skip = below(tree().childCount(entry)); skip > 0; --skip)
                next = tree().getNextSiblingItem(next);
            entry = next;
        }
        return entry;
    }

    void useSomeControlOf(QWidget& window) {
        QWidgetList controls;
        for (QWidget* candidate : window.findChildren<QWidget*>())
            if (candidate->isVisible() && candidate->isEnabled() && candidate->focusPolicy() != Qt::NoFocus)
                controls << candidate;
        if (controls.isEmpty())
            return;
        QWidget* chosen = controls[below(static_cast<int>(controls.size()))];
        chosen->setFocus();
        if (auto* button = qobject_cast<QAbstractButton*>(chosen))
            return button->click();
        if (qobject_cast<QLineEdit*>(chosen))
            QTest::keyClicks(chosen, below(2) ? "12" : "x");
        QTest::keyClick(chosen, below(2) ? Qt::Key_Down : Qt::Key_Up);
    }

    // New, copy, rename, delete, export, import: all but those that end the editor or show help.
    void useSomeCommand() {
        constexpr int kCommands[] = {1029, 1033, 1034, 1035, 1037, 1039};
        QToolButton* chosen = control<KorButtonGroup>(1011)->button(kCommands[below(6)]);
        if (chosen->isEnabled())
            chosen->click();
    }

    void navigate() {
        constexpr int kButtons[] = {1042, 1041, 1040};
        QToolButton* chosen = control<KorButtonGroup>(1012)->button(kButtons[below(3)]);
        if (chosen->isEnabled())
            chosen->click();
    }

    void chooseSource() {
        VELComboTree* combo = nullptr;
        for (auto* candidate : control<VELComboTree>(1200)->parentWidget()->findChildren<VELComboTree*>(
                 Qt::FindDirectChildrenOnly))
            if (candidate->isVisible() && candidate->isEnabled())
                combo = candidate;
        if (!combo)
            return;
        combo->setFocus();
        for (int steps = 1 + below(6); steps > 0; --steps)
            QTest::keyClick(combo, below(2) ? Qt::Key_Down : Qt::Key_Up);
    }

    // What another program stores comes in when the window is activated.
    void changeOutside() {
        storeElsewhere("user.dsdb", "UPDATE detail_style SET title_position=" + std::to_string(below(8)) +
                                        ", description='seen " + std::to_string(below(100)) +
                                        "' WHERE name LIKE 'HB p%'");
        QEvent activation(QEvent::WindowActivate);
        QApplication::sendEvent(m_dialog.get(), &activation);
    }

    void step() {
        switch (below(24)) {
        case 0:
        case 1:
        case 2:
            if (KorTreeHandle entry = someEntry())
                tree().selectItem(entry);
            return;
        case 3: {
            auto* tabs = control<KorTabCtrl>(1002)->findChild<QTabBar*>();
            return tabs->setCurrentIndex(below(tabs->count() + 1));
        }
        case 4:
        case 5:
            return press(Qt::Key_Z, below(2) ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        case 6:
            return control<QLineEdit>(1210)->setText(below(2) ? "hb" : "");
        case 7:
            if (below(4) == 0)
                m_dialog->switchSection(static_cast<KorDSMDefines::eViewSections>(below(4)));
            return;
        case 8:
        case 9:
            return useSomeCommand();
        case 10:
            return navigate();
        case 11:
            if (below(10) == 0)
                control<KorButtonGroupMenu>(1233)->menuButton()->menu()->actions()[below(3)]->trigger();
            return;
        case 12:
            return chooseSource();
        case 13: {
            KorTreeHandle from = someEntry();
            KorTreeHandle to = someEntry();
            if (from && to)
                Q_EMIT tree().dropRequested(from, to);
            return;
        }
        case 14:
            if (KorTreeHandle entry = someEntry())
                Q_EMIT tree().contextMenuRequested(entry, QPoint(10, 10));
            return;
        case 15:
            if (m_changesOutside && below(8) == 0)
                changeOutside();
            return;
        case 16:
            if (auto* pane = m_dialog->findChild<PreviewPane*>(); pane->isVisible())
                useSomeControlOf(*pane);
            return;
        default:
            if (page())
                useSomeControlOf(*page());
        }
    }

    /// Uses the editor; returns the highest number of pending steps on the way.
    std::size_t useEditor(int steps) {
        std::size_t written = 0;
        for (int i = 0; i < steps && !HasFatalFailure(); ++i) {
            step();
            QApplication::processEvents();
            EXPECT_TRUE(m_dialog->isVisible()) << "step " << i;
            EXPECT_TRUE(m_failedChecks.empty()) << "step " << i << ": " << m_failedChecks.front();
            if (HasFailure())
                break;
            written = std::max(written, StyleDatabases::current().pending().steps().size());
        }
        return written;
    }

    std::mt19937 m_random; // the same sequence for the same seed
    QObject m_answering;   // the answers end with the test
    bool m_changesOutside = false;
};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUse, testing::Range(1, 1 + setting("RANDOM_USE_SEEDS", 2)));

} // namespace

TEST_P(RandomUse, HoldsTogetherAndIsTakenBackWhole) {
    const std::string before = bytesOf(path("user.dsdb"));
    open();
    const std::size_t written = useEditor(setting("RANDOM_USE_STEPS", 1200));
    ASSERT_FALSE(HasFailure());
    EXPECT_GT(written, 0U);
    control<KorTabCtrl>(1002)->finishCurrentPage();
    m_dialog->setFocus();
    StyleDatabases& databases = StyleDatabases::current();
    for (std::size_t i = 0; i < 2 * written && !databases.pending().isEmpty(); ++i)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(databases.pending().isEmpty());
    click(button(1));
    m_databases.reset();
    EXPECT_EQ(bytesOf(path("user.dsdb")), before) << "what was taken back writes nothing";
}

TEST_P(RandomUse, HoldsTogetherBesideAnotherProgram) {
    m_changesOutside = true;
    open();
    // Only a modal window looks around when it is activated, as one does that a host runs.
    m_dialog->hide();
    m_dialog->setModal(true);
    m_dialog->show();
    useEditor(setting("RANDOM_USE_STEPS", 1200));
    ASSERT_FALSE(HasFailure());
    close();
    EXPECT_FALSE(isPending());
}
