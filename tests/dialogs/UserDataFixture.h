#pragma once

#include "controls/KorTemplates.h"
#include "data/KorDSNManager.h"
#include "data/text/SampleData.h"
#include "support/FreshProcess.h"
#include "templates/Templates.h"

#include <QDialog>
#include <QTest>

/// Dialogs on a copy of the sample databases; the User database is current.
class UserDataFixture : public FreshProcess {
protected:
    UserDataFixture() {
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
