#include "data/text/SampleData.h"

#include "base/FileFailure.h"
#include "base/Translation.h"
#include "data/store/StoreFault.h"
#include "data/text/TextForm.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

Result<> makeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    return error ? Result<>::failure(
                       KorString::format(translated("The folder \"%s\" could not be written (%s); check the "
                                                    "permissions and the free space."),
                                         {folder.string(), error.message()}))
                 : Result<>();
}

// A pipe or a folder under the name of a database would pass for one that is there.
Result<> buildMissing(const fs::path& text, const fs::path& database) {
    std::error_code error;
    if (fs::exists(database, error))
        return fs::is_regular_file(database, error) ? Result<>()
                                                    : faultResult(eStoreFault::kNoFile, database.string());
    const Result<> result = buildDatabase(text.string(), database.string());
    // Another program that starts at the same time may have made it meanwhile.
    return !result && fs::exists(database, error) ? Result<>() : result;
}

// By way of another name, so that nobody meets half a file.
Result<> copyMissing(const fs::path& from, const fs::path& to) {
    std::error_code error;
    if (fs::exists(to, error))
        return {};
    fs::path part = to;
    part += ".new";
    fs::copy_file(from, part, fs::copy_options::overwrite_existing, error);
    if (!error)
        fs::rename(part, to, error);
    return error ? fileNotWritten(to, error) : Result<>();
}

Result<> copyFiles(const fs::path& from, const fs::path& to) {
    Result<> result = makeFolder(to);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(from, error))
        if (result && entry.is_regular_file(error))
            result = copyMissing(entry.path(), to / entry.path().filename());
    return result;
}

// The database comes first: a folder counts as an add-in as soon as its description lies in it.
Result<> buildAddIn(const fs::path& from, const fs::path& to) {
    Result<> result = makeFolder(to);
    if (result)
        result = buildMissing(from / "styles", to / "styles.dsdb");
    return result ? copyFiles(from, to) : result;
}

} // namespace

Result<> buildSampleData(const std::string& resourceFolder, const std::string& dataFolder) {
    const fs::path samples = fs::path(resourceFolder) / "samples";
    const fs::path data = dataFolder;
    std::error_code error;
    if (!fs::is_directory(samples, error))
        return Result<>::failure(KorString::format(
            translated("The folder \"%s\" with the definitions to begin with is missing; install "
                       "the program again."),
            {samples.string()}));
    Result<> result = makeFolder(data);
    if (result)
        result = buildMissing(samples / "standard", data / "standard.dsdb");
    if (result)
        result = buildMissing(samples / "user", data / "user.dsdb");
    for (const auto& entry : fs::directory_iterator(samples / "addins", error))
        if (result && entry.is_directory(error))
            result = buildAddIn(entry.path(), data / "addins" / entry.path().filename());
    return result ? copyFiles(samples / "Shared" / "Support", data / "Shared" / "Support") : result;
}
