#pragma once

#include "data/StyleDatabases.h"
#include "model/KorDSMDialogFactory.h"
#include "operations/KorDetailTableDependencies.h"
#include "operations/KorODBCDetailStyleExports.h"
#include "operations/KorOdbcMan.h"
#include "services/AddInManager.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/KorUnitsManager.h"
#include "services/Prompts.h"
#include "support/LockWaiting.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

/// Base of the fixtures above the data layer: whatever the process keeps is as at its start, with settings of
/// the test's own and the program's own texts in English.
class FreshProcess : public testing::Test {
protected:
    FreshProcess() { begin(); }

    /// The settings file of the test.
    std::filesystem::path settingsFile() const { return m_settings.path() / "settings.ini"; }

private:
    void begin() const {
        KorResources::setFolder(SOURCE_DIR "/resources");
        EXPECT_TRUE(Prompts::load(KorResources::folder() / "prompts", "en"));
        KOSettings::getInstance().useFile(settingsFile());
        KOSettings::getInstance().setPathData({});
        AddInManager::getInstance().scan(m_settings.path());
        KorUnitsManager::setDecimalMark('.');
        KorOdbcMan::m_DSMNewReloadInfo = 0;
        KorOdbcMan::m_DSMReloadInfo = 0;
        KorOdbcMan::m_DSMResetDetViewRequestCache = 0;
        KorOdbcCompactDetailsTables::m_bCompactPerformed = false;
        KorODBCDetailStyleExports::EnableAdvancedDeepCopyMode(0);
        KorDetailTableDependencies::m_bDeepCopyCanceledByUser = false;
        KorDSMDialogFactory::moduleHandle = {};
        KorDSMDialogFactory::asksBeforeLeaving = false;
        KorDSMDialogFactory::recoversChanges = false;
        KorDSMDialogFactory::recoveryFolder = {};
        closeDatabases();
        emptyStructure();
        int status = 0;
        for (const char* queue : {"DETAILSTYLESMANAGERNEW", "REQUESTDIALOG"})
            KorExchangeUtilities::getNamedQueue(queue, status, 0).clear();
        KorHostReport::take();
    }

    static void closeDatabases() {
        StyleDatabases& databases = StyleDatabases::current();
        databases.pending().dismissObserver();
        for (const SourceId& source : databases.sources())
            databases.closeSource(source);
        databases.setCurrentSource(SourceId::standard());
        databases.setOwnerMode(false);
        for (const TableSchema& table : allTables()) {
            const auto rows = table.makeRows();
            rows->assign(KorOdbcMan::currentRecord(table.type), *rows->copyOf(nullptr));
        }
    }

    static void emptyStructure() {
        KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
        structure.emptyDataStructure();
        structure.initDataStructure();
        structure.setSelectedSection(KorDSMDefines::kViewDetailStyles);
        for (int section = 0; section < KorDSMDefines::kNumberOfSections; ++section)
            structure.getSelectedPath(static_cast<KorDSMDefines::eViewSections>(section)).clear();
        structure.setShowFullTree(true);
        structure.setUseFullExpand(true);
        structure.setShowWarning(true);
        KorDSMDataStructure::m_bApplyWasPressed = false;
    }

    LockWaiting m_waiting;
    TempFolder m_settings;
};
