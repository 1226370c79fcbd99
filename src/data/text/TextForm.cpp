#include "data/text/TextForm.h"

#include "data/store/SqliteCreation.h"
#include "data/text/TextFormReader.h"

Result<> readTextForm(const std::string& path, TableRows& rows) {
    TextFormReader reader(rows);
    Result<> result = reader.read(path);
    return result ? reader.resolveReferences() : result;
}

Result<> buildDatabase(const std::string& textFolder, const std::string& targetFile) {
    TableRows rows;
    Result<> result = readTextForm(textFolder, rows);
    if (!result)
        return result;
    SqliteCreation creation(targetFile, SqliteCreation::eTarget::kMustBeNew);
    result = creation.make([&](StyleStore& store) { return rows.appendTo(store); });
    return result ? creation.publish() : result;
}
