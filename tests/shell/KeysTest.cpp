#include "controls/KorMFCGridCtrl.h"
#include "controls/KorMnemonics.h"
#include "dialogs/KorDSMDialogAddView.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "dialogs/KorDSMDialogDeepCopy.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "shell/EditorFixture.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QSettings>
#include <QWindow>

namespace {

// The tasks of the help, without a mouse: keys go to the window that would get them.
class TasksByKeys : public EditorFixture {
protected:
    // The toolkit's file dialog remembers there how it was left.
    TasksByKeys() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(m_folder.file("toolkit")));
    }
    QWidget& active() {
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* modal = QApplication::activeModalWidget();
        return popup ? *popup : modal ? *modal : *m_dialog;
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        if (!QApplication::activePopupWidget())
            active().activateWindow(); // offscreen, a closed dialog does not hand the activation back
        const QPointer<QWidget> window = &active();
        const auto pressed = [&window] {
            QWidgetList down;
            for (auto* button : window->findChildren<QAbstractButton*>())
                if (button->isDown())
                    down << button;
            return down;
        };
        const QWidgetList before = pressed(); // the file dialog shows so what is on
        QTest::keyClick(window->windowHandle(), static_cast<Qt::Key>(key), modifiers);
        QApplication::processEvents();
        // A letter presses a button for a moment.
        while (window &&
               std::ranges::any_of(pressed(), [&](auto* button) { return !before.contains(button); }))
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    void type(const char* text) {
        for (; *text; ++text)
            QTest::keyClick(active().windowHandle(), *text);
        QApplication::processEvents();
    }
    // Alt and the letter of what is called so, but for a colon.
    void alt(const QString& caption) {
        for (const QWidget* widget : active().findChildren<QWidget*>()) {
            const QString text =
                widget->property(qobject_cast<const QGroupBox*>(widget) ? "title" : "text").toString();
            const QKeySequence letter = QKeySequence::mnemonic(text);
            if (widget->isVisible() && !letter.isEmpty() &&
                KorMnemonics::plain(text).section(u':', 0, 0) == caption)
                return key(letter[0].key(), Qt::AltModifier);
        }
        ADD_FAILURE() << "no letter leads to " << caption.toStdString();
    }
    // The menu that a key opens where the focus is, and what is done in it.
    void openMenu(int opener, Qt::KeyboardModifiers modifiers, std::function<void(QMenu&)> act) {
        QTimer wait;
        bool isOpen = false;
        QObject::connect(&wait, &QTimer::timeout, &wait, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            wait.stop();
            isOpen = true;
            act(*menu);
        });
        wait.start();
        key(opener, modifiers);
        EXPECT_TRUE(isOpen);
    }
    // An entry of the menu of the right mouse button, by its letter.
    void choose(const char* command) {
        openMenu(Qt::Key_F10, Qt::ShiftModifier, [this, command](QMenu& menu) {
            for (const QAction* action : menu.actions())
                if (KorMnemonics::plain(action->text()) == command && action->isEnabled())
                    return key(QKeySequence::mnemonic(action->text())[0].key());
            menu.close();
            ADD_FAILURE() << "no command " << command;
        });
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
    void answerFile(const std::string& file) {
        answer<QFileDialog>([this, file] {
            alt("File name");
            key(Qt::Key_A, Qt::ControlModifier);
            type(file.c_str());
            // The first one may close the list of names that go on like this.
            for (int i = 0; i < 3 && qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); ++i)
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
    std::string parentOfSelected() {
        return tree().getItemText(tree().getParentItem(tree().selectedItem())).toStdString();
    }
    void goUpTo(const char* name) {
        for (int level = 0; level < 5 && selected() != name; ++level)
            key(Qt::Key_Up, Qt::AltModifier);
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
        alt("Don't ask any more");
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

TEST_F(TasksByKeys, DefinitionsAndCategoriesAreMade) {
    open();
    find("HB beam 1:15");
    answer<KorDSMDialogNewItemWithGroup>([this] {
        type("Ours");
        alt("Category");
        key(Qt::Key_Down);
        key(Qt::Key_Return);
    });
    key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(selected(), "Ours");
    EXPECT_EQ(parentOfSelected(), "Hallberg: railings") << "the next category";
    key(Qt::Key_Left);
    answerByName("Our category");
    choose("New category…");
    EXPECT_EQ(selected(), "Our category");
}

TEST_F(TasksByKeys, AStyleGetsViewsInAnotherOrderAndLosesThemAgain) {
    open();
    find("HB beam 1:15");
    const std::vector<std::string> before = inView("HB beam 1:15");
    answer<KorDSMDialogAddView>([this] {
        alt("A new view");
        alt("Name");
        key(Qt::Key_A, Qt::ControlModifier);
        type("Ours");
        key(Qt::Key_Return);
    });
    choose("Add view…");
    EXPECT_EQ(selected(), "Ours");
    EXPECT_EQ(inView("HB beam 1:15").back(), "Ours");
    choose("Move view up");
    EXPECT_EQ(inView("HB beam 1:15").at(before.size() - 1), "Ours");
    choose("Remove view from the style");
    EXPECT_EQ(inView("HB beam 1:15"), before);
    key(Qt::Key_Left);
    answer<KorDSMDialogAddView>([this] {
        alt("View");
        for (int i = 0; i < 3; ++i)
            key(Qt::Key_Down);
        key(Qt::Key_Return);
    });
    choose("Add view…");
    EXPECT_EQ(inView("HB beam 1:15").size(), before.size() + 1);
}

TEST_F(TasksByKeys, WhoUsesAViewIsListedAndGoneTo) {
    open();
    tree().expand(select(kStyle));
    find("HB post 1:15");
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), "HB front");
    choose("Where used…");
    const auto list = [this] { return m_dialog->findChild<KorDSMDialogWhereUsed*>(); };
    ASSERT_NE(list(), nullptr);
    m_dialog->findChild<KorDSMDialogWhereUsed*>()->activateWindow();
    QTest::keyClick(list()->windowHandle(), Qt::Key_Down);
    QTest::keyClick(list()->windowHandle(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(selected(), "HB beam 1:15");
    EXPECT_TRUE(list() && list()->isVisible()) << "for the next one";
    QTest::keyClick(list()->windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(list() && list()->isVisible());
}

TEST_F(TasksByKeys, StylesOfTheMakerBecomeOnesOwn) {
    open();
    find("Assembly, general");
    answer<KorDSMDialogDeepCopy>([this] { alt("Copy"); });
    key(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(selected(), "Assembly, general");
    EXPECT_TRUE(isPending());
    goUpTo("User");
    answer<KorDSMDialogDeepCopy>([this] {
        key(Qt::Key_Home);
        key(Qt::Key_Space);
        alt("Copy");
    });
    const int before = m_databases->source(SourceId::user())->table(kTableDetailStyle).rows().size();
    key(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_GT(m_databases->source(SourceId::user())->table(kTableDetailStyle).rows().size(), before);
}

TEST_F(TasksByKeys, PartsWithoutAnOwnerAreRemoved) {
    storeElsewhere("user.dsdb", "UPDATE repr_map_entry SET repr_map = 999 WHERE key = "
                                "(SELECT min(key) FROM repr_map_entry)");
    open();
    find("HB beam 1:15");
    goUpTo("User");
    answer<QMessageBox>([this] { alt("Yes"); });
    choose("Compact database…");
    EXPECT_TRUE(isPending());
}

TEST_F(TasksByKeys, StylesGoIntoAFile) {
    open();
    const std::string file = m_folder.file("to another office.dsdb");
    find("HB post 1:15");
    answerFile(file);
    answer<QMessageBox>([this] { key(Qt::Key_Return); });
    key(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(TasksByKeys, SeveralStepsAreTakenBackAtOnce) {
    open();
    find("HB post 1:15");
    const auto count = [this] {
        return m_databases->source(SourceId::user())->table(kTableDetailStyle).rows().size();
    };
    const int before = count();
    for (const char* name : {"One", "Two", "Three"}) {
        answerByName(name);
        key(Qt::Key_D, Qt::ControlModifier);
    }
    const QWidget* undo = control<KorButtonGroup>(1211)->button(1);
    for (int stop = 0; stop < 40 && QApplication::focusWidget() != undo; ++stop)
        key(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), undo);
    openMenu(Qt::Key_Down, Qt::AltModifier, [this](QMenu& menu) {
        EXPECT_EQ(menu.actions().size(), 3);
        key(Qt::Key_Down);
        if (menu.activeAction() == menu.actions().first())
            key(Qt::Key_Down);
        key(Qt::Key_Return);
    });
    EXPECT_EQ(count(), before + 1);
}
