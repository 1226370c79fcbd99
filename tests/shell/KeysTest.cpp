#include "controls/KorMFCGridCtrl.h"
#include "controls/KorMnemonics.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "shell/EditorFixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QWindow>

namespace {

// The tasks of the help, without a mouse: keys go to the window that would get them.
class TasksByKeys : public EditorFixture {
protected:
    QWidget& active() {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* modal = QApplication::activeModalWidget();
        return popup ? *popup : modal ? *modal : *m_dialog;
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        if (!QApplication::activePopupWidget())
            active().activateWindow(); // offscreen, a closed dialog does not hand the activation back
        const QPointer<QWidget> window = &active();
        QTest::keyClick(window->windowHandle(), static_cast<Qt::Key>(key), modifiers);
        QApplication::processEvents();
        // A letter presses a button for a moment.
        while (window &&
               std::ranges::any_of(window->findChildren<QAbstractButton*>(), &QAbstractButton::isDown))
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void type(const char* text) {
        for (; *text; ++text)
            QTest::keyClick(active().windowHandle(), *text);
        QApplication::processEvents();
    }
    // Alt and the letter of what is called so.
    void alt(const QString& caption) {
        for (const QWidget* widget : active().findChildren<QWidget*>()) {
            const QString text =
                widget->property(qobject_cast<const QGroupBox*>(widget) ? "title" : "text").toString();
            const QKeySequence letter = QKeySequence::mnemonic(text);
            if (widget->isVisible() && !letter.isEmpty() && KorMnemonics::plain(text).startsWith(caption))
                return key(letter[0].key(), Qt::AltModifier);
        }
        ADD_FAILURE() << "no letter leads to " << caption.toStdString();
    }
    // An entry of the menu that the menu key opens where the focus is, by its letter.
    void choose(const char* command) {
        QTimer::singleShot(0, m_dialog.get(), [this, command] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction* action : menu->actions())
                if (KorMnemonics::plain(action->text()) == command && action->isEnabled())
                    return key(QKeySequence::mnemonic(action->text())[0].key());
            menu->close();
            ADD_FAILURE() << "no command " << command;
        });
        key(Qt::Key_Menu);
    }
    // The next dialog of that class is answered by these keys.
    template <typename Dialog = QDialog>
    void answer(std::function<void()> keys) {
        whenShown<Dialog>([keys = std::move(keys)](Dialog&) { keys(); });
    }
    void answerByName(const char* name) {
        answer([this, name] {
            type(name);
            key(Qt::Key_Return);
        });
    }
    void find(const char* name) {
        key(Qt::Key_F, Qt::ControlModifier);
        key(Qt::Key_A, Qt::ControlModifier);
        type(name);
        key(Qt::Key_Return);
        ASSERT_EQ(selected(), name);
    }
    template <typename T = QWidget>
    T* focused() {
        return qobject_cast<T*>(QApplication::focusWidget());
    }
};

} // namespace

TEST_F(TasksByKeys, AStyleIsFoundCopiedChangedFiledElsewhereRenamedStoredAndDeleted) {
    open();
    find("HB post 1:15");
    answerByName("Mine");
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(selected(), "Mine") << "make a style like another one";
    alt("Description");
    ASSERT_NE(focused<QLineEdit>(), nullptr);
    const QString before = focused<QLineEdit>()->text();
    key(Qt::Key_A, Qt::ControlModifier);
    type("seventeen");
    key(Qt::Key_Return);
    EXPECT_EQ(focused<QLineEdit>()->text(), "seventeen") << "change a value";
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(focused<QLineEdit>()->text(), before) << "take steps back";
    alt("Category");
    ASSERT_NE(focused<QComboBox>(), nullptr);
    const QString filed = focused<QComboBox>()->currentText();
    key(Qt::Key_Down);
    ASSERT_NE(focused<QComboBox>(), nullptr) << "the style moved away under the field that has the focus";
    EXPECT_NE(focused<QComboBox>()->currentText(), filed) << "move to another category";
    answerByName("Ours");
    key(Qt::Key_F2);
    EXPECT_EQ(selected(), "Ours") << "rename";
    alt("Apply");
    EXPECT_FALSE(isPending()) << "store";
    key(Qt::Key_F6);
    answer([this] { alt("Yes"); });
    key(Qt::Key_Delete);
    EXPECT_NE(selected(), "Ours") << "delete";
}

TEST_F(TasksByKeys, AListIsEditedAndWhatSeveralUseIsChangedOnTheWay) {
    open();
    const Path map = {"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"};
    tree().expand(select(map));
    const std::size_t entries = inView("HB workshop").size();
    ASSERT_GT(entries, 0u);
    auto& grid = *page()->findChild<KorMFCGridCtrl*>();
    grid.setFocus();
    grid.setCurrentIndex(grid.model()->index(0, 1));
    answer<KorDSMDialogConfirmation>([this] {
        alt("Don't ask");
        key(Qt::Key_Return);
    });
    const auto isInGrid = [&] { return m_dialog->focusWidget() == &grid; };
    key(Qt::Key_F2);
    EXPECT_TRUE(grid.isEditing());
    type("HB holes");
    key(Qt::Key_Return);
    EXPECT_FALSE(KorDSMDialogFactory::getDSMDataStructure().getShowWarning());
    EXPECT_EQ(grid.model()->index(0, 1).data().toString(), "HB holes");
    EXPECT_TRUE(isInGrid()) << "after the question";
    key(Qt::Key_Insert);
    EXPECT_EQ(inView("HB workshop").size(), entries + 1) << "the map stays open";
    EXPECT_EQ(selected(), "HB workshop");
    EXPECT_TRUE(isInGrid());
    key(Qt::Key_Up, Qt::AltModifier);
    key(Qt::Key_Delete);
    EXPECT_EQ(inView("HB workshop").size(), entries);
}
