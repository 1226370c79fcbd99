#include "app/StoredNames.h"

#include "data/store/SqliteStore.h"
#include "records/OwnWords.h"
#include "services/AddInManager.h"
#include "services/KorHostReport.h"
#include "session/SourceSettings.h"
#include "shell/DataFolderPlace.h"

#include <algorithm>
#include <utility>

StoredNames::StoredNames(const std::string& data) : m_folder(locateDataFolder(data)) {}

std::vector<std::pair<std::string, std::filesystem::path>> StoredNames::files() const {
    const SourceSettings settings(m_folder);
    std::vector<std::pair<std::string, std::filesystem::path>> files = {
        {"standard", m_folder / "standard.dsdb"}, {"user", m_folder / "user.dsdb"}};
    AddInManager::getInstance().scan(m_folder, settings.sources());
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        files.emplace_back(addIn.id().id.toStdString(), addIn.database());
    KorHostReport::take(); // a report has no place in the middle of typing
    for (auto& [name, file] : files)
        file = settings.placeOf(name, file).file;
    return files;
}

std::vector<std::string> StoredNames::sources() const {
    std::vector<std::string> names;
    for (const auto& [name, file] : files())
        names.push_back(name);
    return names;
}

std::vector<std::string> StoredNames::records(const TableSchema& table, const std::string& source) const {
    LockWait::setLimit({});
    TableSchema named = table; // the other columns of a large table would take as long as all this may
    std::erase_if(named.columns, [](const Column& column) { return column.name != "name"; });
    std::vector<std::string> names;
    for (const auto& [name, file] : files()) {
        if (file.empty() || (!source.empty() && source != name)) // nobody waits for a server while typing
            continue;
        OpenedStore opened =
            SqliteStore::open(file.string(), SqliteStore::eMode::kRead, SqliteStore::eCheck::kNone);
        if (!opened.store)
            continue;
        const std::unique_ptr<RowArray> rows = named.makeRows();
        std::vector<ReadProblem> problems;
        static_cast<void>(opened.store->readTable(named, *rows, problems));
        for (int i = 0; i < rows->size(); ++i)
            if (std::string text = OwnWords::nameOf(table.type, rows->at(i)).toStdString();
                !text.empty() && text.find_first_of("\t\n") == std::string::npos)
                names.push_back(std::move(text));
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}
