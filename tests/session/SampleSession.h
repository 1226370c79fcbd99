#pragma once

#include "base/KorAssert.h"
#include "data/StyleDatabases.h"
#include "data/text/SampleData.h"
#include "model/KorDSMDependencies.h"
#include "model/KorDSMMessages.h"
#include "model/items/KorDsmItems.h"
#include "operations/KorDSNManager.h"
#include "operations/KorODBCDetStyle.h"
#include "services/AddInManager.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMItemPath.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMWhereUsed.h"
#include "support/FreshProcess.h"
#include "support/OtherProgram.h"

#include <set>

inline void PrintTo(const KorString& text, std::ostream* out) {
    *out << text.view();
}

/// The sample databases in a folder of their own, loaded as when the editor opens, with a message target that
/// counts and a user who agrees to every write.
class SampleSession : public FreshProcess, public KorMessageTarget {
protected:
    SampleSession() {
        EXPECT_EQ(buildSampleData(SOURCE_DIR "/resources", folder.path().string()).error, "");
        EXPECT_EQ(databases.openFile(SourceId::standard(), file("standard.dsdb"), true).error, "");
        EXPECT_EQ(databases.openFile(SourceId::user(), file("user.dsdb"), false).error, "");
        KorDSMSectionLoader().loadDataStructure(structure);
        KorDSMMainWindow::add(this);
        KorDSMGuardedWrite::addAskFunction(this, [this](eTableType, const KorOdbcKey&) { return answer; });
        KorAssert::setSink(
            [this](const char* expression, const char*, int) { assertions.push_back(expression); });
    }
    ~SampleSession() override {
        KorDSMMainWindow::remove(this);
        KorDSMGuardedWrite::removeAskFunction(this);
        KorAssert::setSink({});
        structure.emptyDataStructure();
    }

    void onMessage(const KorMessage& message) override {
        writes += message.number == DsmDataChanged::kNumber;
        if (message.number == DsmSetEntryText::kNumber)
            shownNames.push_back(static_cast<const DsmSetEntryText&>(message).text);
    }

    std::string file(const std::string& name) const { return (folder.path() / name).string(); }

    template <typename R>
    const R* row(SourceId id, const KorString& name) {
        return static_cast<const R*>(databases.source(id)->table(tableOf<R>).find(name));
    }
    /// The item of a filed record or of a group.
    template <typename R>
    KorDSMDatabaseItem& item(SourceId id, const KorString& name) {
        KorDSMDatabaseItem* found =
            KorDSMWhereUsed::findItem(structure, id, {tableOf<R>, row<R>(id, name)->key});
        EXPECT_NE(found, nullptr) << name.c_str();
        return *found;
    }
    /// Makes the item's children, as opening its entry does.
    KorDSMItemList expand(KorDSMDatabaseItem& item) {
        const SourceId source = KorDSMItemSource::sourceOf(&item);
        const KorDSNRequest request(source.dsn, source.index);
        KorDSMDependencies::createChildren(item);
        return item.children();
    }
    /// Attaches item data as the tree does, so that equal items know each other.
    void bind(KorDSMDatabaseItem& item) {
        structure.appendAddedItemData(std::make_unique<KorDSMTreeItemData>(item));
    }

    /// Installs add-ins that hold what the User database holds, each called "Made for " and its name, in the
    /// place of those that come with the samples; `change` alters the last one's. Loads everything anew.
    void installAddIns(std::initializer_list<const char*> names, const char* change = "") {
        std::filesystem::remove_all(folder.path() / "addins");
        for (const std::string name : names) {
            folder.write("addins/" + name + "/addin.ini", "name = Made for " + name);
            std::filesystem::copy(file("user.dsdb"), file("addins/" + name + "/styles.dsdb"));
        }
        OtherProgram(file(std::string("addins/") + *(names.end() - 1) + "/styles.dsdb")).run(change);
        AddInManager::getInstance().scan(folder.path());
        for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
            EXPECT_EQ(
                databases.openFile(SourceId::addIn(addIn.id().number), addIn.database().string(), true).error,
                "");
        structure.emptyDataStructure();
        KorDSMSectionLoader().loadDataStructure(structure);
    }

    TempFolder folder;
    StyleDatabases databases;
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    int answer = KorDSMGuardedWrite::kWrite;
    int writes = 0;
    std::vector<KorString> shownNames;
    std::vector<std::string> assertions;
};
