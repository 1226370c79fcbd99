#include "data/StyleDatabases.h"
#include "data/store/SqliteStore.h"

Result<> StyleDatabases::openFile(SourceId id, const std::string& path, bool readOnly) {
    OpenedStore opened =
        SqliteStore::open(path, readOnly ? SqliteStore::eMode::kRead : SqliteStore::eMode::kWrite);
    if (opened.store)
        addSource(id, std::move(opened.store));
    else
        closeSource(id);
    return {opened.error};
}
