#include "services/AddInManager.h"

#include "base/EditorSession.h"
#include "services/KorHostReport.h"
#include "services/KorTextFile.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

constexpr int kNoDescription = 5;
constexpr int kNoDatabase = 6;
constexpr int kFolderUnreadable = 7;
constexpr int kNoDatabaseButJournal = 492;

} // namespace

AddInManager& AddInManager::getInstance() {
    return EditorSession::currentPart<AddInManager>();
}

void AddInManager::scan(const fs::path& dataFolder, const std::set<std::string>& elsewhere) {
    m_addIns.clear();
    const fs::path place = dataFolder / "addins";
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator it(place, error), end; !error && it != end; it.increment(error))
        if (std::error_code ignored;
            it->is_directory(ignored) && !it->path().filename().string().starts_with('.'))
            folders.push_back(it->path());
    if (error && error != std::errc::no_such_file_or_directory)
        KorHostReport::add(kFolderUnreadable, place.string());
    std::ranges::sort(folders);
    for (const fs::path& folder : folders) {
        KorAddIn addIn;
        addIn.m_id = {folder.filename().string(), static_cast<int>(m_addIns.size())};
        if (read(folder, addIn, elsewhere))
            m_addIns.push_back(std::move(addIn));
    }
}

void AddInManager::addFile(const fs::path& database) {
    KorAddIn addIn;
    addIn.m_id = {database.string(), static_cast<int>(m_addIns.size())};
    addIn.m_info.name = database.filename().string();
    addIn.m_database = database;
    m_addIns.push_back(std::move(addIn));
}

bool AddInManager::read(const fs::path& folder, KorAddIn& addIn,
                        const std::set<std::string>& elsewhere) const {
    std::vector<KorString> lines;
    if (!KorTextFile::readLines(folder / "addin.ini", lines)) {
        KorHostReport::add(kNoDescription, folder.string());
        return false;
    }
    std::error_code ignored;
    for (const KorString& line : lines) {
        const auto equals = line.view().find('=');
        if (equals == std::string_view::npos)
            continue;
        const KorString name = KorString(line.view().substr(0, equals)).trimmed().lowered();
        const KorString value = KorString(line.view().substr(equals + 1)).trimmed();
        const fs::path file = folder / value.toStdString();
        if (name == "name")
            addIn.m_info.name = value;
        else if (name == "country")
            addIn.m_info.country = value;
        else if (name == "icon" && fs::is_regular_file(file, ignored))
            addIn.m_icon = file;
    }
    if (addIn.m_info.name.isEmpty())
        addIn.m_info.name = addIn.m_id.id;
    addIn.m_database = folder / "styles.dsdb";
    if (fs::exists(addIn.m_database, ignored) ||
        elsewhere.contains(KorString(addIn.m_id.id).lowered().toStdString()))
        return true;
    // It would change a database that is put there anew.
    const std::string journal = addIn.m_database.string() + "-journal";
    KorHostReport::add(fs::exists(journal, ignored) ? kNoDatabaseButJournal : kNoDatabase, addIn.m_info.name,
                       addIn.m_database.string(), journal);
    return false;
}

const KorAddIn& AddInManager::getAddIn(const KorAddInId& id) const {
    static const KorAddIn none;
    const auto it = std::ranges::find(m_addIns, id.id, [](const KorAddIn& addIn) { return addIn.id().id; });
    return it == m_addIns.end() ? none : *it;
}

AddInManagerInterface& AddInManagerInterface::getInstance() {
    static AddInManagerInterface interface;
    return interface;
}

void AddInManagerInterface::getInstalledAddIns(KorArray<KorAddInId>& ids) const {
    ids.clear();
    for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
        ids.append(addIn.id());
}

KorAddInInfo AddInManagerInterface::getInstalledCountryAddInInfo(const KorAddInId& id) const {
    return AddInManager::getInstance().getAddIn(id).info();
}
