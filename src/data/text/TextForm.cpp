#include "data/text/TextForm.h"

#include "base/Translation.h"
#include "data/store/SqliteCreation.h"
#include "data/text/TextFormReader.h"
#include "data/text/TextFormWriter.h"

#include <fstream>

Result<> readTextForm(const std::string& path, TableRows& rows) {
    TextFormReader reader(rows);
    const Result<> result = reader.read(path);
    return result ? reader.resolveReferences() : result;
}

Result<> writeTextForm(const TableRows& rows, const std::string& file) {
    std::ofstream stream(file, std::ios::binary);
    stream << TextFormWriter(rows).text();
    stream.close();
    if (!stream)
        return Result<>::failure(KorString::format(
            translated("The file \"%s\" cannot be written; check the folder's permissions and free space."),
            {file}));
    return {};
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
