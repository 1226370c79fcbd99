#pragma once

#include "base/LinetypePattern.h"

#include <filesystem>
#include <memory>
#include <string_view>
#include <unordered_map>

/// One line type as a file defines it.
struct LinetypeDefinition {
    KorString name;
    KorString description;
    LinetypePattern pattern;
};

using LinetypeDefinitionPtr = std::shared_ptr<const LinetypeDefinition>;

/// What a line type file (".lin") holds. A definition is a line "*NAME,description" and its pattern on the
/// next line; a pattern can go on over further lines. Comments begin with a semicolon. Names are compared
/// without regard to case, and of several definitions of one name the last counts, at the place of the first:
/// the section for the user's own at the end of a file goes before the rest.
class LinetypeFile {
public:
    enum eOutcome {
        kRead,        ///< at least one line type was found
        kUnreadable,  ///< there is no such file, or it may not be read
        kNoPlainFile, ///< a folder or a device
        kNoLinetypes, ///< empty, or something else than line types
    };
    static constexpr std::size_t kMostDefinitions = 100'000;

    /// Reads a file. Never fails: what cannot be understood is left out and counted.
    static LinetypeFile read(const std::filesystem::path& file);
    /// The same, remembered for the next call as long as the file stays as it is.
    static std::shared_ptr<const LinetypeFile> shared(const std::filesystem::path& file);
    /// The path of a file as records and settings store it, with backslashes. An empty folder means that
    /// `name` is a whole path.
    static std::filesystem::path pathOf(const KorString& folder, const KorString& name);
    /// Folder and name of such a path, joined by `joined` again. A bare name has an empty folder; that of a
    /// file in the root is the separator itself.
    static std::pair<KorString, KorString> split(const KorString& path);
    static KorString joined(const KorString& folder, const KorString& name);
    /// Whether two folders are the same, written in whatever case and with or without a separator at the end.
    static bool isSameFolder(const KorString& a, const KorString& b);

    eOutcome outcome() const { return m_outcome; }
    /// In the order of the file.
    const std::vector<LinetypeDefinitionPtr>& definitions() const { return m_definitions; }
    /// The definition of that name, or null.
    LinetypeDefinitionPtr find(const KorString& name) const;
    /// How many definitions were left out: damaged or cut, and repeated ones.
    int damaged() const { return m_damaged; }
    int repeated() const { return m_repeated; }
    /// Whether the file has more than is read of one file.
    bool isCutShort() const { return m_cutShort; }

private:
    class Collector;

    bool add(LinetypeDefinition definition);

    eOutcome m_outcome = kUnreadable;
    std::vector<LinetypeDefinitionPtr> m_definitions;
    std::unordered_map<KorString, std::size_t> m_index; // by name in lower case
    int m_damaged = 0;
    int m_repeated = 0;
    bool m_cutShort = false;
};
