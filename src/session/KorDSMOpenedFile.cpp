#include "session/KorDSMOpenedFile.h"

#include "data/StyleDatabases.h"
#include "model/KorDSMDialogFactory.h"
#include "services/AddInManager.h"
#include "session/KorDSMReload.h"
#include "session/KorDSMStartSelection.h"

namespace fs = std::filesystem;

namespace KorDSMOpenedFile {

Result<SourceId> open(const fs::path& file) {
    StyleDatabases& databases = StyleDatabases::current();
    std::error_code error;
    for (const SourceId id : databases.sources())
        if (fs::equivalent(databases.source(id)->store().name(), file, error))
            return id;
    AddInManager& addIns = AddInManager::getInstance();
    const SourceId id = SourceId::addIn(static_cast<int>(addIns.addIns().size()));
    const Result<> opened = databases.openFile(id, file.string(), true);
    if (!databases.source(id))
        return Result<>::failure(opened.error);
    addIns.addFile(file);
    return id;
}

void select(SourceId source) {
    reloadDataStructure(KorDSMDialogFactory::getDSMDataStructure());
    KorDSMStartSelection::selectFirst(source);
}

} // namespace KorDSMOpenedFile
