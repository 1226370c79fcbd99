#include "dialogs/KorDSMDialogSources.h"

#include "controls/KorControls.h"
#include "controls/KorTemplates.h"
#include "session/SourceSettings.h"
#include "support/FreshProcess.h"
#include "support/TempFolder.h"
#include "templates/Templates.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

class SourcesDialog : public FreshProcess {
protected:
    SourcesDialog() { KorTemplates::setFactory(Templates::setUp); }
    std::string text() {
        std::ostringstream all;
        all << std::ifstream(m_folder.file("sources.ini")).rdbuf();
        return all.str();
    }

    TempFolder m_folder;
};

} // namespace

TEST_F(SourcesDialog, TestsConnectionsAndWritesDownWhatWasChangedAlone) {
    std::ofstream(m_folder.file("sources.ini"))
        << "# of the office\n[standard]\nfile = there.dsdb\n; to come\n[other]\nfile = x\n";
    KorDSMDialogSources dialog(m_folder.path(), nullptr);
    dialog.show();
    auto* standard = KorControls::find<QLineEdit>(&dialog, KorDSMDialogSources::kFirstField);
    auto* user = KorControls::find<QLineEdit>(&dialog, KorDSMDialogSources::kFirstField + 1);
    auto* test = KorControls::find<QPushButton>(&dialog, KorDSMDialogSources::kFirstTest + 1);
    auto* outcome = KorControls::find<QLabel>(&dialog, KorDSMDialogSources::kOutcome);
    EXPECT_EQ(standard->text(), "there.dsdb");
    EXPECT_FALSE(test->isEnabled()) << "a file of the folder has no connection";
    user->setText("Driver=Nosuch;Server=x;Schema=y;PWD=secret");
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible() && outcome->text().contains("password"));
    EXPECT_EQ(text().find("secret"), std::string::npos);
    user->setText("Driver=Nosuch;Server=x;Schema=y");
    QTest::mouseClick(test, Qt::LeftButton);
    EXPECT_TRUE(outcome->text().contains("driver is missing")) << outcome->text().toStdString();
    standard->clear();
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(text(), "# of the office\n[standard]\n; to come\n[other]\nfile = x\n[user]\nconnection = "
                      "Driver=Nosuch;Server=x;Schema=y\n");
    const SourceSettings settings(m_folder.path());
    EXPECT_EQ(settings.placeOf("user", "").server.schema, "y");
}

TEST_F(SourcesDialog, NeitherShowsAPasswordNorReplacesWhatItDidNotRead) {
    const std::string secret = "[user]\nfile = UID=a;PWD=secret;Server=x\n";
    std::ofstream(m_folder.file("sources.ini")) << secret;
    KorDSMDialogSources dialog(m_folder.path(), nullptr);
    auto* user = KorControls::find<QLineEdit>(&dialog, KorDSMDialogSources::kFirstField + 1);
    EXPECT_EQ(user->text(), "");
    dialog.accept();
    EXPECT_EQ(text(), secret) << "nothing was changed";
    std::filesystem::remove(m_folder.file("sources.ini"));
    std::filesystem::create_directory(m_folder.file("sources.ini"));
    user->setText("there.dsdb");
    dialog.show();
    const auto* outcome = KorControls::find<QLabel>(&dialog, KorDSMDialogSources::kOutcome);
    dialog.accept();
    EXPECT_TRUE(outcome->text().contains("There is no file")) << "it may be mistyped";
    dialog.accept();
    EXPECT_TRUE(outcome->text().contains("sources.ini")) << outcome->text().toStdString();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(std::filesystem::is_directory(m_folder.file("sources.ini")));
    EXPECT_FALSE(std::filesystem::exists(m_folder.file("there.dsdb")));
    std::filesystem::remove(m_folder.file("sources.ini"));
    dialog.accept();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(std::filesystem::exists(m_folder.file("there.dsdb")));
}
