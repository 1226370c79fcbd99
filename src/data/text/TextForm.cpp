#include "data/text/TextForm.h"

#include "data/store/SqliteCreation.h"
#include "data/text/TextFormReader.h"
#include "data/text/TextFormWriter.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> filesOf(const fs::path& path) {
    std::error_code error;
    if (!fs::is_directory(path, error))
        return {path};
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(path, error))
        if (entry.path().extension() == ".txt")
            files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

} // namespace

StoreResult readTextForm(const std::string& path, TableRows& rows) {
    const std::vector<fs::path> files = filesOf(path);
    if (files.empty())
        return StoreResult::failure("The folder \"" + path +
                                    "\" holds no definitions (*.txt); choose another one.");
    TextFormReader reader(rows);
    for (const fs::path& file : files)
        if (const StoreResult result = reader.readFile(file.string()); !result)
            return result;
    return reader.resolveReferences();
}

StoreResult writeTextForm(const TableRows& rows, const std::string& file) {
    std::ofstream stream(file, std::ios::binary);
    stream << TextFormWriter(rows).text();
    stream.close();
    if (!stream)
        return StoreResult::failure("The file \"" + file +
                                    "\" cannot be written; check the folder's permissions "
                                    "and free space.");
    return {};
}

StoreResult buildDatabase(const std::string& textFolder, const std::string& targetFile) {
    TableRows rows;
    StoreResult result = readTextForm(textFolder, rows);
    if (!result)
        return result;
    SqliteCreation creation(targetFile, SqliteCreation::eTarget::kMustBeNew);
    result = creation.make([&](StyleStore& store) { return rows.appendTo(store); });
    return result ? creation.publish() : result;
}
