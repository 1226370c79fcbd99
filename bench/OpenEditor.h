#pragma once

#include "GeneratedStandard.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMDialogFactory.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMSectionTree.h"

#include <QApplication>
#include <QTimer>

#include <filesystem>

// The editor's window on the generated Standard, as benchmarks of the window need it.

// Counts what is read from the database while the editor is at work.
class CountingStore final : public StyleStore {
public:
    explicit CountingStore(std::unique_ptr<StyleStore> store) : m_store(std::move(store)) {}

    static inline int reads = 0;

    const std::string& name() const override { return m_store->name(); }
    bool isReadOnly() const override { return m_store->isReadOnly(); }
    std::string whyReadOnly() const override { return m_store->whyReadOnly(); }
    Result<> readTable(const TableSchema& table, RowArray& rows,
                       std::vector<ReadProblem>& problems) override {
        ++reads;
        return m_store->readTable(table, rows, problems);
    }
    Result<> beginRead(std::int64_t& state) override { return m_store->beginRead(state); }
    void endRead() override { m_store->endRead(); }
    std::vector<std::string> integrityFindings() override { return m_store->integrityFindings(); }
    Result<> begin() override { return m_store->begin(); }
    Result<> apply(const TableChange& change, std::vector<StoreConflict>& conflicts) override {
        return m_store->apply(change, conflicts);
    }
    std::uint32_t markOfChange() override { return m_store->markOfChange(); }
    bool holdsMark(std::uint32_t mark) override { return m_store->holdsMark(mark); }
    Result<> commit() override { return m_store->commit(); }
    void rollback() override { m_store->rollback(); }
    bool changedOutside() override { return m_store->changedOutside(); }
    Result<> reopen() override { return m_store->reopen(); }
    void acknowledge() override { m_store->acknowledge(); }

private:
    std::unique_ptr<StyleStore> m_store;
};

inline KorDSMDataStructure& structure() {
    return KorDSMDialogFactory::getDSMDataStructure();
}

inline std::unique_ptr<StyleDatabases>
openDatabases(const std::string& standard = GeneratedStandard::file()) {
    auto databases = std::make_unique<StyleDatabases>();
    databases->addSource(
        SourceId::standard(),
        std::make_unique<CountingStore>(SqliteStore::open(standard, SqliteStore::eMode::kRead).store));
    structure().emptyDataStructure();
    for (int section = 0; section < KorDSMDefines::kNumberOfSections; ++section)
        structure().getSelectedPath(static_cast<KorDSMDefines::eViewSections>(section)).clear();
    return databases;
}

inline void load() {
    KorDSMSectionLoader().loadDataStructure(structure());
}

inline void paint(QWidget& window) {
    window.resize(1280, 760);
    window.show();
    QApplication::processEvents();
    window.grab();
}

// Until all is read that the window reads ahead while the hand rests.
inline void rest(const QWidget& window) {
    for (const auto* ahead = window.findChild<QTimer*>("readAhead"); ahead && ahead->isActive();)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// An editor on the generated Standard, with the first category open.
struct OpenEditor {
    explicit OpenEditor(const std::string& standard = GeneratedStandard::file())
        : databases(openDatabases(standard)) {
        load();
        dialog = std::make_unique<KorDSMMainDialog>(nullptr);
        dialog->OnInitDialog();
        paint(*dialog);
        rest(*dialog);
        KorTreeHandle database = tree().getChildItem(tree().getRoot());
        tree().expand(database);
        category = tree().getChildItem(database);
    }

    KorTreeCtrl& tree() { return *dialog->currentTree().control(); }

    std::unique_ptr<StyleDatabases> databases;
    std::unique_ptr<KorDSMMainDialog> dialog;
    KorTreeHandle category = nullptr;
};

// A database that may be written, as the User source, with an editor on it.
struct WritableEditor {
    WritableEditor() : databases(openDatabases()) {
        std::filesystem::copy_file(GeneratedStandard::file(), file,
                                   std::filesystem::copy_options::overwrite_existing);
        static_cast<void>(databases->openFile(SourceId::user(), file.string(), false));
        load();
        dialog = std::make_unique<KorDSMMainDialog>(nullptr);
        dialog->OnInitDialog();
        paint(*dialog);
        rest(*dialog);
        KorTreeCtrl& tree = *dialog->currentTree().control();
        KorTreeHandle entry = tree.getNextSiblingItem(tree.getChildItem(tree.getRoot()));
        for (int level = 0; level < 3; ++level) {
            tree.selectItem(entry);
            if (level == 2)
                break;
            tree.expand(entry);
            entry = tree.getChildItem(entry);
        }
        style = KorDSMSectionTree::itemOf(tree.selectedItem());
        QApplication::processEvents();
    }
    ~WritableEditor() {
        dialog.reset();
        databases.reset();
        std::filesystem::remove(file);
    }

    std::filesystem::path file = std::filesystem::temp_directory_path() / "detailstyles-bench-writable.dsdb";
    std::unique_ptr<StyleDatabases> databases;
    std::unique_ptr<KorDSMMainDialog> dialog;
    KorDSMDatabaseItem* style = nullptr;
};
