#include "base/FileFailure.h"

#include "base/Translation.h"

Result<> fileNotWritten(const std::filesystem::path& file, const std::error_code& error) {
    return Result<>::failure(KorString::format(
        translated("The file \"%s\" could not be written (%s); check the permissions and the free space."),
        {file.string(), error.message()}));
}
