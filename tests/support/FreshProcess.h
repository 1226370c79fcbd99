#pragma once

#include "base/EditorSession.h"
#include "model/KorDSMDialogFactory.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorOdbcMan.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"
#include "support/LockWaiting.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

/// Base of the fixtures above the data layer: a session of the test's own, and whatever else the process
/// keeps as at its start, with settings of the test's own and the program's own texts in English.
class FreshProcess : public testing::Test {
protected:
    FreshProcess() {
        KorResources::setFolder(SOURCE_DIR "/resources");
        EXPECT_TRUE(Prompts::load(KorResources::folder() / "prompts", "en"));
        KOSettings::getInstance().useFile(settingsFile());
        KOSettings::getInstance().setPathData({});
        KorUnitsManager::setDecimalMark('.');
        KorOdbcMan::m_DSMNewReloadInfo = 0;
        KorOdbcMan::m_DSMReloadInfo = 0;
        KorOdbcMan::m_DSMResetDetViewRequestCache = 0;
        KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
        KorDetailTableDependencies::m_bDeepCopyCanceledByUser = false;
        KorDSMDialogFactory::moduleHandle = {};
        KorDSMDataStructure::m_bApplyWasPressed = false;
        for (const TableSchema& table : allTables()) {
            const auto rows = table.makeRows();
            rows->assign(KorOdbcMan::currentRecord(table.type), *rows->copyOf(nullptr));
        }
        int status = 0;
        for (const char* queue : {"DETAILSTYLESMANAGERNEW", "REQUESTDIALOG"})
            KorExchangeUtilities::getNamedQueue(queue, status, 0).clear();
        KorHostReport::take();
    }

    EditorSession& session() { return m_session; }
    /// The settings file of the test.
    std::filesystem::path settingsFile() const { return m_settings.path() / "settings.ini"; }

private:
    TempFolder m_settings;
    EditorSession m_session;
    LockWaiting m_waiting;
};
