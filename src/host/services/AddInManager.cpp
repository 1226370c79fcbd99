#include "services/AddInManager.h"

#include "services/KorHostReport.h"
#include "services/KorTextFile.h"

#include <algorithm>

namespace fs = std::filesystem;

AddInManager& AddInManager::getInstance() {
    static AddInManager manager;
    return manager;
}

void AddInManager::scan(const fs::path& dataFolder) {
    m_addIns.clear();
    std::vector<fs::path> folders;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(dataFolder / "addins", error))
        if (entry.is_directory(error))
            folders.push_back(entry.path());
    std::ranges::sort(folders);
    for (const fs::path& folder : folders) {
        KorAddIn addIn;
        addIn.m_id = {folder.filename().string(), static_cast<int>(m_addIns.size())};
        if (read(folder, addIn))
            m_addIns.push_back(std::move(addIn));
    }
}

bool AddInManager::read(const fs::path& folder, KorAddIn& addIn) const {
    std::vector<KorString> lines;
    if (!KorTextFile::readLines(folder / "addin.ini", lines)) {
        KorHostReport::add(KorString::format(
            "The add-in folder %s has no readable addin.ini; the add-in is left out. Install it again.",
            {folder.string()}));
        return false;
    }
    for (const KorString& line : lines) {
        const auto equals = line.view().find('=');
        if (equals == std::string_view::npos)
            continue;
        const KorString name = KorString(line.view().substr(0, equals)).trimmed();
        const KorString value = KorString(line.view().substr(equals + 1)).trimmed();
        if (name == "name")
            addIn.m_info.name = value;
        else if (name == "country")
            addIn.m_info.country = value;
        else if (name == "icon" && !value.isEmpty())
            addIn.m_icon = folder / value.toStdString();
    }
    if (addIn.m_info.name.isEmpty())
        addIn.m_info.name = addIn.m_id.id;
    addIn.m_database = folder / "styles.dsdb";
    std::error_code error;
    if (fs::exists(addIn.m_database, error))
        return true;
    KorHostReport::add(KorString::format(
        "The add-in %s has no database %s; it is left out. Install the add-in again.",
        {addIn.m_info.name, addIn.m_database.string()}));
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
