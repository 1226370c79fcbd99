#pragma once

#include "drawing/HiddenLines.h"
#include "drawing/SamplePart.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

class StyleSource;

/// The sample parts that pictures of styles can be made of. Their files are read when they are first asked
/// for, and once.
class KorDSMSampleParts {
public:
    explicit KorDSMSampleParts(std::filesystem::path folder) : m_folder(std::move(folder)) {}
    /// Those that all share who draw in the current session, never null. They are read anew for who asks when
    /// the files are others than before.
    static std::shared_ptr<KorDSMSampleParts> ofSession(const std::filesystem::path& folder);

    struct Entry {
        std::string name; ///< of the file, by which the command line knows the part
        std::shared_ptr<const SamplePart> part;
        std::shared_ptr<SeenLines> seen; ///< of it, in all drawings
    };
    /// The names of all files, read or not, in their order.
    std::vector<std::string> names() const;
    /// Those that can be read, in the order of their files.
    const std::vector<Entry>& all();
    /// The part of this name; null where there is none.
    const Entry* find(const std::string& name);
    /// One sentence for each file that cannot be read.
    const std::vector<std::string>& problems();

    /// The name of the part that suits a style best, as `suitingPart` says. Empty where there are no parts.
    std::string suiting(StyleSource& source, std::int32_t style);

private:
    void read();

    std::filesystem::path m_folder;
    std::optional<std::vector<Entry>> m_all;
    std::vector<std::string> m_problems;
};
