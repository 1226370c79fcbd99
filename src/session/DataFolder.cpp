#include "session/DataFolder.h"

#include "base/Translation.h"
#include "data/StyleDatabases.h"
#include "data/store/LeftDatabases.h"
#include "data/text/TextForm.h"
#include "services/AddInManager.h"
#include "services/KOSettings.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"

namespace fs = std::filesystem;

namespace {

// A database without styles, with the lists that their choices offer.
Result<> makeUserDatabase(const fs::path& file) {
    return buildDatabase((KorResources::folder() / "samples" / "lists").string(), file.string());
}

} // namespace

bool DataFolder::isAnyOpen() {
    return !StyleDatabases::current().sources().empty();
}

void DataFolder::open() {
    KOSettings& settings = KOSettings::getInstance();
    settings.setPathData(m_folder);
    bool ownerMode = false;
    settings.readBool(KOSettings::getKeyDSM(), "OwnerMode", ownerMode);
    StyleDatabases::current().setOwnerMode(ownerMode);

    std::error_code error;
    if (m_folder.is_relative()) {
        m_complete = false;
        tell(KorString::format(
            translated("The working folder does not exist any more, so the data folder \"%s\" "
                       "cannot be found from there; give --data a whole path."),
            {m_folder.string()}));
    } else if (fs::is_directory(m_folder, error)) {
        takeReports();
        AddInManager::getInstance().scan(m_folder);
        m_complete = !takeReports();
        openSource(SourceId::standard(), m_folder / "standard.dsdb");
        for (const KorAddIn& addIn : AddInManager::getInstance().addIns())
            openSource(SourceId::addIn(addIn.id().number), addIn.database());
        openUserDatabase(m_folder / "user.dsdb");
    } else {
        m_complete = false;
        tell(KorString::format(
            translated("There is no data folder \"%s\"; name another one with --data, or make one "
                       "with sample databases by \"detailstyles samples\"."),
            {m_folder.string()}));
    }
    takeReports();
}

bool DataFolder::takeReports() {
    const std::vector<KorString> sentences = KorHostReport::take();
    m_problems.insert(m_problems.end(), sentences.begin(), sentences.end());
    return !sentences.empty();
}

void DataFolder::openSource(SourceId id, const fs::path& file) {
    StyleDatabases& databases = StyleDatabases::current();
    const bool writable = databases.isOwnerMode() || id == SourceId::user();
    const Result<> result = databases.openFile(id, file.string(), !writable);
    if (!result)
        tell(result.error);
    m_complete = m_complete && databases.source(id);
}

void DataFolder::openUserDatabase(const fs::path& file) {
    std::error_code error;
    const bool isThere = fs::exists(fs::symlink_status(file, error));
    const Result<> made = isThere ? Result<>() : makeUserDatabase(file);
    removeLeftDatabases(m_folder.string());
    if (made || fs::exists(file, error)) { // another start may have made it meanwhile
        openSource(SourceId::user(), file);
        return;
    }
    m_complete = false;
    tell(made.error);
}
