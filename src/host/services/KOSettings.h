#pragma once

#include "base/KorString.h"

#include <filesystem>
#include <set>
#include <vector>

/// The host's settings store: named values under keys, kept in a readable file of sections and
/// "name = value" lines, `detailstyles/settings.ini` in the user's configuration folder. A write is stored
/// at once and leaves every other line of the file as it stands, also what another program wrote there
/// meanwhile. A file that cannot be read or written is reported once; settings then live in memory.
class KOSettings {
public:
    static KOSettings& getInstance();

    /// The key under which the detail styles manager keeps its settings.
    static KorString getKeyDSM() { return "DetailStylesManager"; }

    /// Read a value. Return whether it exists and can be read as this type; otherwise `out` is untouched,
    /// and a value of another type is reported once.
    bool readBool(const KorString& key, const KorString& name, bool& out) const;
    bool readInt(const KorString& key, const KorString& name, int& out) const;
    bool readString(const KorString& key, const KorString& name, KorString& out) const;

    /// Reports once that a value, which was read as a text, cannot be used.
    void refuse(const KorString& name, const KorString& value) const { reportValue(name, value); }
    /// Reports the names under a key that are none of these: they do nothing.
    void reportOthers(const KorString& key, const std::vector<KorString>& known) const;

    void writeBool(const KorString& key, const KorString& name, bool value);
    void writeInt(const KorString& key, const KorString& name, int value);
    /// Line breaks become blanks; blanks at both ends are not kept.
    void writeString(const KorString& key, const KorString& name, const KorString& value);

    /// The data path, with backslashes and without one at its end. Line type files lie in its
    /// "\Shared\Support".
    KorString getPathData() const { return m_dataPath; }
    void setPathData(const std::filesystem::path& folder);
    /// The data path as the file system has it.
    const std::filesystem::path& dataFolder() const { return m_dataFolder; }

    /// Reads another file, forgetting everything read before. A missing file means no settings. Lines that
    /// are no settings are reported and ignored; the next write turns them into comments. A value that was
    /// reported stays as a comment when another one is written in its place.
    void useFile(const std::filesystem::path& file);
    const std::filesystem::path& file() const { return m_file; }
    /// From now on what is written holds for this process alone.
    void keepFileUnchanged() { m_keepsFile = true; }

private:
    struct Line {
        KorString text; // as it stands in the file
        KorString key;  // the section it stands in
        KorString name; // empty: a comment, a section's head or a blank line
        KorString value;
    };

    KOSettings();
    /// Returns the numbers of the lines that are no settings.
    std::vector<int> takeLines(const std::vector<KorString>& texts);
    const Line* find(const KorString& key, const KorString& name) const;
    void set(const KorString& key, const KorString& name, const KorString& value);
    void takeWhatOthersWrote();
    void store();
    void reportValue(const KorString& name, const KorString& value) const;

    std::filesystem::path m_file;
    std::filesystem::path m_dataFolder;
    KorString m_dataPath;
    std::vector<Line> m_lines;
    bool m_unreadable = false; ///< never replace what could not be read
    bool m_writeFailed = false;
    bool m_keepsFile = false;
    mutable std::set<KorString> m_reportedNames;
};
