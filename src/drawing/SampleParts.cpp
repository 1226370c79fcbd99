#include "drawing/SampleParts.h"

#include "base/TextLines.h"
#include "base/Translation.h"
#include "drawing/PartReader.h"

#include <fstream>

namespace {

constexpr const char* kEnding = ".part";

Result<> wrongLine(const std::filesystem::path& file, std::size_t line, const std::string& what) {
    return Result<>::failure(KorString::format(translated("Line %d of the sample part \"%s\" is wrong: %s"),
                                               {std::to_string(line), file.filename().string(), what}));
}

} // namespace

Result<SamplePart> SampleParts::readFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return Result<>::failure(
            KorString::format(translated("The sample part \"%s\" cannot be read."), {file.string()}));
    PartReader reader;
    TextLines lines(stream);
    std::size_t number = 0;
    constexpr std::size_t kMostLines = 5000;
    for (std::string line; lines.next(line);) {
        std::string wrong;
        PartStatement statement = PartStatement::read(line, wrong);
        if (++number > kMostLines)
            wrong = translated("A part has 5000 lines at most.").toStdString();
        if (wrong.empty())
            wrong = reader.take(statement);
        if (!wrong.empty())
            return wrongLine(file, number, wrong);
    }
    std::size_t statement = 0;
    if (const std::string wrong = reader.finish(statement); !wrong.empty())
        return wrongLine(file, statement + 1, wrong);
    return std::move(reader.part);
}

std::vector<std::string> SampleParts::names(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        if (entry.path().extension() == kEnding)
            names.push_back(entry.path().stem().string());
    std::ranges::sort(names);
    return names;
}

Result<SamplePart> SampleParts::read(const std::filesystem::path& folder, const std::string& name) {
    const auto folded = [](const std::string& text) { return KorString(text).lowered(); };
    const std::vector<std::string> known = names(folder);
    auto file = std::ranges::find(known, name);
    if (file == known.end())
        file = std::ranges::find(known, folded(name), folded);
    if (file != known.end())
        return readFile(folder / (*file + kEnding));
    for (const std::string& other : known)
        if (Result<SamplePart> part = readFile(folder / (other + kEnding));
            part && folded(part.value.name) == folded(name))
            return part;
    std::string list;
    for (const std::string& other : known)
        list += (list.empty() ? "" : ", ") + other;
    return Result<>::failure(
        KorString::format(translated("There is no sample part \"%s\"; there are: %s."), {name, list}));
}
