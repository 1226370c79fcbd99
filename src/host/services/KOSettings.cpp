#include "services/KOSettings.h"

#include "services/KorHostReport.h"
#include "services/KorTextFile.h"

#include <charconv>
#include <cstdlib>

namespace fs = std::filesystem;

namespace {

fs::path defaultFile() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config)
        return fs::path(config) / "detailstyles" / "settings.ini";
    const char* home = std::getenv("HOME");
    return fs::path(home ? home : ".") / ".config" / "detailstyles" / "settings.ini";
}

} // namespace

KOSettings& KOSettings::getInstance() {
    static KOSettings settings;
    return settings;
}

KOSettings::KOSettings() {
    useFile(defaultFile());
}

void KOSettings::useFile(const fs::path& file) {
    m_file = file;
    m_values.clear();
    m_rubbish.clear();
    read();
}

void KOSettings::read() {
    std::vector<KorString> lines;
    std::error_code ignored;
    if (!fs::exists(m_file, ignored))
        return;
    if (!KorTextFile::readLines(m_file, lines)) {
        KorHostReport::add(KorString::format(
            "The settings file %s cannot be read; the program uses its defaults. Check the file's permissions.",
            {m_file.string()}));
        return;
    }
    KorString section;
    for (std::size_t i = 0; i < lines.size(); ++i)
        takeLine(lines[i], static_cast<int>(i) + 1, section);
}

void KOSettings::takeLine(const KorString& line, int number, KorString& section) {
    const KorString text = line.trimmed();
    const std::string_view view = text.view();
    if (view.empty() || view.front() == '#' || view.front() == ';') {
        if (view.starts_with("# not a setting: "))
            m_rubbish.push_back(KorString(view.substr(17)));
        return;
    }
    if (view.front() == '[' && view.back() == ']') {
        section = KorString(view.substr(1, view.size() - 2));
        return;
    }
    const auto equals = view.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        KorHostReport::add(KorString::format(
            "The settings file %s holds something that is no setting in line %d; it is ignored. Mend the "
            "line or delete it.",
            {m_file.string(), KorString::number(number)}));
        m_rubbish.push_back(text);
        return;
    }
    m_values[section][KorString(view.substr(0, equals)).trimmed()] = KorString(view.substr(equals + 1)).trimmed();
}

bool KOSettings::readString(const KorString& key, const KorString& name, KorString& out) const {
    const auto section = m_values.find(key);
    if (section == m_values.end())
        return false;
    const auto value = section->second.find(name);
    if (value == section->second.end())
        return false;
    out = value->second;
    return true;
}

bool KOSettings::readBool(const KorString& key, const KorString& name, bool& out) const {
    KorString text;
    if (!readString(key, name, text))
        return false;
    const KorString word = text.lowered();
    const bool yes = word == "true" || word == "1" || word == "yes";
    if (!yes && word != "false" && word != "0" && word != "no")
        return false;
    out = yes;
    return true;
}

bool KOSettings::readInt(const KorString& key, const KorString& name, int& out) const {
    KorString text;
    if (!readString(key, name, text))
        return false;
    int value = 0;
    const char* end = text.c_str() + text.size();
    const auto result = std::from_chars(text.c_str(), end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return false;
    out = value;
    return true;
}

void KOSettings::writeString(const KorString& key, const KorString& name, const KorString& value) {
    KorString& present = m_values[key][name];
    if (present == value && !value.isEmpty())
        return;
    // A value is one line.
    present = value.replaced("\r", " ").replaced("\n", " ");
    store();
}

void KOSettings::writeBool(const KorString& key, const KorString& name, bool value) {
    writeString(key, name, value ? "true" : "false");
}

void KOSettings::writeInt(const KorString& key, const KorString& name, int value) {
    writeString(key, name, KorString::number(value));
}

void KOSettings::store() {
    std::string text = "# Settings of the detail styles manager\n";
    for (const KorString& line : m_rubbish)
        text.append("# not a setting: ").append(line.view()).append("\n");
    for (const auto& [section, values] : m_values) {
        text.append("\n[").append(section.view()).append("]\n");
        for (const auto& [name, value] : values)
            text.append(name.view()).append(" = ").append(value.view()).append("\n");
    }
    if (!KorTextFile::replace(m_file, text))
        KorHostReport::add(KorString::format(
            "The settings file %s cannot be written; changed settings last until the program ends. Check "
            "that its folder exists and may be written.",
            {m_file.string()}));
}

void KOSettings::setPathData(const fs::path& folder) {
    m_dataFolder = folder;
    m_dataPath = KorString(folder.string()).replaced("/", "\\");
}
