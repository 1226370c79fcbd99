#pragma once

#include "base/KorString.h"

#include <filesystem>
#include <map>
#include <vector>

/// The host's settings store: named values under keys, kept in a readable file of sections and
/// "name = value" lines, `detailstyles/settings.ini` in the user's configuration folder. A write is stored
/// at once; a file that cannot be written leaves the settings in memory and is reported once.
class KOSettings {
public:
    static KOSettings& getInstance();

    /// The key under which the detail styles manager keeps its settings.
    static KorString getKeyDSM() { return "DetailStylesManager"; }

    /// Read a value. Return whether it exists and can be read as this type; otherwise `out` is untouched.
    bool readBool(const KorString& key, const KorString& name, bool& out) const;
    bool readInt(const KorString& key, const KorString& name, int& out) const;
    bool readString(const KorString& key, const KorString& name, KorString& out) const;

    void writeBool(const KorString& key, const KorString& name, bool value);
    void writeInt(const KorString& key, const KorString& name, int value);
    void writeString(const KorString& key, const KorString& name, const KorString& value);

    /// The data path, with backslashes and without one at its end. Line type files lie in its
    /// "\Shared\Support".
    KorString getPathData() const { return m_dataPath; }
    void setPathData(const std::filesystem::path& folder);
    /// The data path as the file system has it.
    const std::filesystem::path& dataFolder() const { return m_dataFolder; }

    /// Reads another file, forgetting everything read before. A missing file means no settings. Lines that
    /// are no settings are reported once, kept in the file, and otherwise ignored.
    void useFile(const std::filesystem::path& file);
    const std::filesystem::path& file() const { return m_file; }

private:
    KOSettings();
    void read();
    void store();
    void takeLine(const KorString& line, int number, KorString& section);

    std::filesystem::path m_file;
    std::filesystem::path m_dataFolder;
    KorString m_dataPath;
    std::map<KorString, std::map<KorString, KorString>> m_values;
    std::vector<KorString> m_rubbish; // lines that are no settings, written back as comments
};
