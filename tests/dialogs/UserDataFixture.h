#pragma once

#include "controls/KorTemplates.h"
#include "data/KorDSNManager.h"
#include "data/text/SampleData.h"
#include "services/Prompts.h"
#include "support/TempFolder.h"
#include "templates/Templates.h"

#include <QDialog>
#include <QTest>

#include <gtest/gtest.h>

/// Dialogs on a copy of the sample databases; the User database is current.
class UserDataFixture : public testing::Test {
protected:
    UserDataFixture() {
        EXPECT_TRUE(Prompts::load(SOURCE_DIR "/resources/prompts", "en"));
        KorTemplates::setFactory(Templates::setUp);
        EXPECT_EQ(buildSampleData(SOURCE_DIR "/resources", folder.path().string()).error, "");
        EXPECT_EQ(databases.openFile(SourceId::user(), (folder.path() / "user.dsdb").string(), false).error,
                  "");
        databases.setCurrentSource(SourceId::user());
    }

    static void show(QDialog& dialog) {
        dialog.show();
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    TempFolder folder;
    StyleDatabases databases;
};
