#pragma once

#include "controls/KorButtonGroup.h"
#include "controls/KorControls.h"
#include "controls/KorTabCtrl.h"
#include "data/StyleDatabases.h"
#include "dialogs/KorDSMDialogImport.h"
#include "model/KorDSMDialogFactory.h"
#include "session/KorDSMSelectionHistory.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMPageRegistry.h"
#include "shell/KorDSMSectionTree.h"
#include "support/FreshProcess.h"
#include "support/OtherProgram.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

/// The editor on a copy of the sample databases, with settings of its own.
class EditorFixture : public FreshProcess {
protected:
    using Path = std::vector<const char*>;

    // Numbers of the buttons at the bottom, of item commands, and of two places of a title.
    static constexpr int kOk = 1, kCancel = 2, kApply = 3, kUse = 1098;
    static constexpr int kNew = 1029, kCopy = 1033, kDelete = 1035, kExport = 1037, kImport = 1039;
    static constexpr int kAboveMainView = 1033, kBelowDetail = 1035;
    // A style with its title above the main view, its first view, and where its place is stored.
    inline static const Path kStyle = {"User", "Hallberg: posts and beams", "HB post 1:15"};
    inline static const Path kView = {"User", "Hallberg: posts and beams", "HB post 1:15", "HB front"};
    static constexpr const char* kPosition =
        "SELECT title_position FROM detail_style WHERE name='HB post 1:15'";

    EditorFixture();
    ~EditorFixture() override;

    /// Opens the window on the databases; what was open before is closed by Cancel.
    KorDSMMainDialog& open();
    void close();

    /// Walks down the tree by entry texts, from the root's children on, and selects the last one.
    KorTreeHandle select(const Path& path);
    KorTreeHandle child(KorTreeHandle parent, const char* text);
    /// The texts below the entry of a text that the tree shows, as far as they are shown themselves.
    std::vector<std::string> inView(const char* text);
    KorTreeCtrl& tree() { return *m_dialog->currentTree().control(); }

    template <typename T>
    T* control(int id) {
        return KorControls::find<T>(m_dialog.get(), id);
    }
    template <typename T>
    T* pageControl(int id) {
        return KorControls::find<T>(page(), id);
    }
    KorTabPage* page() { return control<KorTabCtrl>(1002)->currentPage(); }
    void showTab(int index);
    static void click(QWidget* widget);
    /// A key of the window, where the focus is. Offscreen, a closed dialog does not hand the activation back.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    QPushButton* button(int id) { return control<QPushButton>(id); }
    void command(int id) { click(control<KorButtonGroup>(1011)->button(id)); }
    /// The text of the selected entry; empty without one.
    std::string selected();
    static bool isPending() { return !StyleDatabases::current().pending().isEmpty(); }
    /// Makes one change: the title of the style goes below the detail.
    void changePosition();
    /// Comes back to the window from another program.
    void comeBack();
    /// Chooses a command of the context menu that comes up next, where it is there and on.
    void chooseInMenu(const char* command);
    /// Answers the next modal dialog by a click on its button with this number or text.
    void answerNext(std::function<void(QWidget*)> answer);
    void answerYes();
    /// Types a name into the dialog that asks for one, and presses OK.
    static void typeName(QWidget* modal, const char* name, int field = 1015);
    /// Names a file in the file dialog that is open, and closes it by OK.
    static void nameFile(QWidget* dialog, const std::string& file);
    /// Imports the file as `answer` says in the dialog that comes up for it.
    void importFile(const std::string& file, std::function<void(KorDSMDialogImport&)> answer);
    /// Answers the next modal dialog of that class, once it is there.
    template <typename Dialog>
    static void whenShown(std::function<void(Dialog&)> answer) {
        auto* wait = new QTimer(QApplication::instance());
        QObject::connect(wait, &QTimer::timeout, wait, [wait, answer = std::move(answer)] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            wait->stop();
            wait->deleteLater();
            answer(*dialog);
        });
        wait->start();
    }
    /// Reads the message that comes up next, and closes it.
    static void readNextMessage(QString& said);

    /// A value in a database file, read by other means while the editor has no connection open.
    std::string stored(const char* file, const std::string& sql);
    /// Changes a database file as another program does, with a connection of its own.
    void storeElsewhere(const char* file, const std::string& sql) { OtherProgram(path(file)).run(sql); }
    std::string path(const std::string& file) const { return m_folder.file(m_data + "/" + file); }

    TempFolder m_folder;
    std::string m_data = "data"; ///< folder that the window is opened on
    std::unique_ptr<StyleDatabases> m_databases;
    std::unique_ptr<KorDSMMainDialog> m_dialog;
    std::vector<std::string> m_failedChecks; ///< internal checks that failed; a test expects none
    int m_result = -1;
};
