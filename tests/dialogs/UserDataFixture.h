#pragma once

#include "controls/KorTemplates.h"
#include "data/StyleDatabases.h"
#include "data/text/SampleData.h"
#include "operations/KorDSNManager.h"
#include "support/FreshProcess.h"
#include "support/Widgets.h"
#include "templates/Templates.h"

/// Dialogs on a copy of the sample databases; the User database is current.
class UserDataFixture : public FreshProcess {
protected:
    UserDataFixture() {
        KorTemplates::setFactory(Templates::setUp);
        EXPECT_EQ(buildSampleData(SOURCE_DIR "/resources", folder.path().string()).error, "");
        EXPECT_EQ(databases.openFile(SourceId::user(), folder.file("user.dsdb"), false).error, "");
        databases.setCurrentSource(SourceId::user());
    }

    TempFolder folder;
    StyleDatabases databases;
};
