#include "controls/KorControls.h"
#include "controls/KorTemplates.h"
#include "controls/linetype/CKorlinetypelistctrl.h"
#include "dialogs/KorDSMDialogLoadLinetype.h"
#include "services/Prompts.h"
#include "support/TempFolder.h"
#include "support/Widgets.h"
#include "templates/Templates.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>
#include <QTimer>

namespace {

class LoadLinetype : public testing::Test {
protected:
    LoadLinetype() {
        EXPECT_TRUE(Prompts::load(SOURCE_DIR "/resources/prompts", "en"));
        KorTemplates::setFactory(Templates::setUp);
        dialog = std::make_unique<KorDSMDialogLoadLinetype>(nullptr);
        folder.write("Support/a.lin", "*HIDDEN,x\nA,5,-2\n*DOTTED,x\nA,0,-2\n");
        folder.write("Other/b.lin", "*FENCE,x\nA,5,-2\n*BAD,x\nA,x\n");
    }

    KorString stored(const char* name) {
        return KorString((folder.path() / name).string()).replaced("/", "\\");
    }
    void show(const KorString& directory, const KorString& defaultDirectory, const char* file = "a.lin") {
        dialog->setDirectory(directory);
        dialog->setDefaultDirectory(defaultDirectory);
        dialog->setFileName(file);
        showActive(*dialog);
    }
    CKorlinetypelistctrl& list() { return *KorControls::find<CKorlinetypelistctrl>(dialog.get(), 1268); }
    QLineEdit& fileName() { return *KorControls::find<QLineEdit>(dialog.get(), 1063); }
    void click(int id) { QTest::mouseClick(KorControls::find(dialog.get(), id), Qt::LeftButton); }
    void pick(int row) { clickRow(list(), row); }
    /// "File...", and what the user does with the file dialog: an empty path cancels it.
    void chooseFile(const std::filesystem::path& file) {
        QTimer::singleShot(0, qApp, [file] {
            auto* files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(files);
            EXPECT_EQ(files->nameFilters(), QStringList{QStringLiteral("Linetype files (*.lin)")});
            if (file.empty())
                return files->reject();
            auto* name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            name->setText(QString::fromStdString(file.string()));
            QTest::keyClick(name, Qt::Key_Return);
        });
        click(1062);
    }

    TempFolder folder;
    std::unique_ptr<KorDSMDialogLoadLinetype> dialog;
};

} // namespace

TEST_F(LoadLinetype, NothingPickedNothingHappens) {
    dialog->setSelectedLinetype(L"left over");
    show(stored("Support"), stored("Support"));
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Load linetypes"));
    EXPECT_EQ(fileName().text(), QStringLiteral("a.lin"));
    EXPECT_EQ(list().count(), 2);
    EXPECT_TRUE(dialog->selectedLinetype().isEmpty());
    click(1);
    EXPECT_TRUE(dialog->isVisible());
    pick(1);
    click(2);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_TRUE(dialog->fileReference().isEmpty());
}

TEST_F(LoadLinetype, AFileOfTheDefaultFolderIsReturnedByName) {
    std::string upper = stored("Support").toStdString();
    std::ranges::transform(upper, upper.begin(), ::toupper);
    upper += '\\'; // settings can end in a separator
    show(stored("Support"), KorString(upper));
    fileName().setText(QStringLiteral("typed.lin"));
    pick(1);
    click(1);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->selectedLinetype(), "HIDDEN");
    EXPECT_EQ(dialog->fileReference(), "a.lin") << "what was typed counts later";
    EXPECT_EQ(dialog->fileName(), "typed.lin");
}

TEST_F(LoadLinetype, AFileChosenElsewhereIsReturnedWithItsPath) {
    show(stored("Support"), stored("Support"));
    chooseFile({});
    EXPECT_EQ(list().count(), 2);
    pick(0);
    chooseFile(folder.path() / "Other/b.lin");
    EXPECT_EQ(fileName().text(), QStringLiteral("b.lin"));
    EXPECT_EQ(dialog->directory(), stored("Other"));
    EXPECT_EQ(list().count(), 1);
    EXPECT_TRUE(dialog->selectedLinetype().isEmpty()) << "what the file does not have cannot be picked";
    EXPECT_TRUE(
        KorControls::find<QLabel>(dialog.get(), 1269)->text().contains(QStringLiteral("left out: 1")));
    pick(0);
    click(1);
    EXPECT_EQ(dialog->selectedLinetype(), "FENCE");
    EXPECT_EQ(dialog->fileReference(), stored("Other") + "\\b.lin");
}

TEST_F(LoadLinetype, ADoubleClickPicksAndCloses) {
    show(stored("Support"), stored("Support"));
    pick(0);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                       list().visualRect(list().currentIndex()).center());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->selectedLinetype(), "DOTTED");
}

TEST_F(LoadLinetype, AFileThatIsNoneLeavesTheListEmpty) {
    show(stored("Support"), stored("Support"), "absent.lin");
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(list().message().toStdString().find("absent.lin cannot be read") != std::string::npos);
    click(1);
    EXPECT_TRUE(dialog->isVisible());
}
