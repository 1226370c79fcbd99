#include "shell/EditorFixture.h"

#include "model/KorDSMDialogFactory.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QTimer>

#include <fstream>
#include <random>
#include <sstream>

namespace {

// Uses the editor without a plan: whatever comes after whatever, each thing has to find the others in order.
// The internal checks of the program report what is not, and fail the test.
class RandomUse : public EditorFixture {
protected:
    RandomUse() {
        // Dialogs and menus that open on the way are cancelled.
        QObject::connect(&m_canceller, &QTimer::timeout, [this] {
            if (QWidget* menu = QApplication::activePopupWidget()) {
                menu->close();
                return;
            }
            QWidget* modal = QApplication::activeModalWidget();
            if (modal && modal != m_dialog.get())
                QTest::keyClick(modal, Qt::Key_Escape);
        });
        m_canceller.start();
    }

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    void selectSomething() {
        // Mostly where something can be changed.
        KorTreeHandle entry = below(4) ? child(tree().getRoot(), "User") : tree().getRoot();
        for (int depth = below(6); depth > 0; --depth) {
            tree().expand(entry);
            if (tree().childCount(entry) == 0)
                break;
            KorTreeHandle child = tree().getChildItem(entry);
            for (int skip = below(tree().childCount(entry)); skip > 0; --skip)
                child = tree().getNextSiblingItem(child);
            entry = child;
        }
        tree().selectItem(entry);
    }

    void useSomeControl() {
        QWidgetList controls;
        for (QWidget* candidate : page() ? page()->findChildren<QWidget*>() : QWidgetList())
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

    void step() {
        switch (below(12)) {
        case 0:
        case 1:
            return selectSomething();
        case 2: {
            auto* tabs = control<KorTabCtrl>(1002)->findChild<QTabBar*>();
            return tabs->setCurrentIndex(below(tabs->count() + 1));
        }
        case 3:
            return press(Qt::Key_Z, below(2) ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        case 4:
            return control<QLineEdit>(1210)->setText(below(2) ? "hb" : "");
        case 5:
            if (below(4) == 0)
                m_dialog->switchSection(static_cast<KorDSMDefines::eViewSections>(below(4)));
            return;
        default:
            return useSomeControl();
        }
    }

    std::string fileBytes() {
        std::ostringstream bytes;
        bytes << std::ifstream(path("user.dsdb"), std::ios::binary).rdbuf();
        return bytes.str();
    }

    std::mt19937 m_random; // always the same sequence
    QTimer m_canceller;
};

} // namespace

TEST_F(RandomUse, HoldsTogetherAndIsTakenBackWhole) {
    const std::string before = fileBytes();
    open();
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    std::size_t written = 0;
    for (int i = 0; i < 2500; ++i) {
        step();
        QApplication::processEvents();
        ASSERT_TRUE(m_dialog->isVisible()) << "step " << i;
        ASSERT_TRUE(m_failedChecks.empty()) << "step " << i << ": " << m_failedChecks.front();
        written = std::max(written, StyleDatabases::current().pending().steps().size());
    }
    EXPECT_GT(written, 50U);
    control<KorTabCtrl>(1002)->finishCurrentPage();
    m_dialog->setFocus();
    for (std::size_t i = 0; i < 2 * written && !StyleDatabases::current().pending().isEmpty(); ++i)
        press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(StyleDatabases::current().pending().isEmpty());
    click(button(1));
    m_databases.reset();
    EXPECT_EQ(fileBytes(), before) << "what was taken back writes nothing";
}
