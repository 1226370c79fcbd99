#include "services/KOSettings.h"

#include "services/KorHostReport.h"
#include "services/KorTextFile.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <utility>

namespace fs = std::filesystem;

namespace {

constexpr int kCannotRead = 1;
constexpr int kNoSetting = 2;
constexpr int kCannotWrite = 3;
constexpr int kWrongValue = 4;
constexpr int kUnknownName = 940;
constexpr int kTooLarge = 489;
constexpr std::uintmax_t kLargestFile = 1U << 20; // each write reads and writes all of it
constexpr std::string_view kRubbishMark = "# not a setting: ";

fs::path defaultFile() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config)
        return fs::path(config) / "detailstyles" / "settings.ini";
    const char* home = std::getenv("HOME");
    return home && *home ? fs::path(home) / ".config" / "detailstyles" / "settings.ini" : fs::path();
}

bool isTooLarge(const fs::path& file) {
    std::error_code error;
    return fs::is_regular_file(file, error) && fs::file_size(file, error) > kLargestFile && !error;
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
    m_lines.clear();
    m_reportedNames.clear();
    m_unreadable = m_writeFailed = false;
    m_keepsFile = m_file.empty(); // there is no home for settings
    std::error_code ignored;
    if (!fs::exists(m_file, ignored))
        return;
    std::vector<KorString> texts;
    m_unreadable = !KorTextFile::readLines(m_file, texts, kLargestFile);
    if (m_unreadable)
        KorHostReport::add(isTooLarge(m_file) ? kTooLarge : kCannotRead, m_file.string());
    else if (const std::vector<int> rubbish = takeLines(texts); !rubbish.empty())
        KorHostReport::add(kNoSetting, m_file.string(), KorTextFile::lineList(rubbish));
}

std::vector<int> KOSettings::takeLines(const std::vector<KorString>& texts) {
    m_lines.clear();
    std::vector<int> rubbish;
    KorString key;
    for (const KorString& text : texts) {
        const KorString trimmed = text.trimmed();
        const std::string_view view = trimmed.view();
        Line line{text, key, {}, {}};
        const auto equals = view.find('=');
        if (view.size() > 2 && view.front() == '[' && view.back() == ']') {
            line.key = key = KorString(view.substr(1, view.size() - 2)).trimmed();
        } else if (view.empty() || view.front() == '#' || view.front() == ';') {
        } else if (key.isEmpty() || equals == std::string_view::npos || equals == 0) {
            rubbish.push_back(static_cast<int>(m_lines.size()) + 1);
            line.text = KorString(kRubbishMark) + text;
        } else {
            line.name = KorString(view.substr(0, equals)).trimmed();
            line.value = KorString(view.substr(equals + 1)).trimmed();
        }
        m_lines.push_back(std::move(line));
    }
    return rubbish;
}

const KOSettings::Line* KOSettings::find(const KorString& key, const KorString& name) const {
    // The last one counts, as in other programs.
    const auto it = std::find_if(m_lines.rbegin(), m_lines.rend(),
                                 [&](const Line& line) { return line.name == name && line.key == key; });
    return it == m_lines.rend() ? nullptr : &*it;
}

bool KOSettings::readString(const KorString& key, const KorString& name, KorString& out) const {
    const Line* line = find(key, name);
    if (line)
        out = line->value;
    return line != nullptr;
}

bool KOSettings::readBool(const KorString& key, const KorString& name, bool& out) const {
    KorString text;
    if (!readString(key, name, text))
        return false;
    const KorString word = text.lowered();
    const bool yes = word == "true" || word == "1" || word == "yes" || word == "on";
    if (!yes && word != "false" && word != "0" && word != "no" && word != "off") {
        reportValue(name, text);
        return false;
    }
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
    if (result.ec != std::errc() || result.ptr != end) {
        reportValue(name, text);
        return false;
    }
    out = value;
    return true;
}

void KOSettings::reportValue(const KorString& name, const KorString& value) const {
    if (m_reportedNames.insert(name).second)
        KorHostReport::add(kWrongValue, name, m_file.string(), value);
}

void KOSettings::reportOthers(const KorString& key, const std::vector<KorString>& known) const {
    KorString list;
    for (const KorString& name : known)
        list = list + (list.isEmpty() ? "" : ", ") + name;
    for (const Line& line : m_lines)
        if (line.key == key && !line.name.isEmpty() && std::ranges::find(known, line.name) == known.end())
            KorHostReport::add(kUnknownName, line.name, m_file.string(), list);
}

void KOSettings::writeString(const KorString& key, const KorString& name, const KorString& value) {
    const KorString oneLine = value.replaced("\r", " ").replaced("\n", " ").trimmed();
    if (const Line* line = find(key, name); line && line->value == oneLine)
        return;
    takeWhatOthersWrote();
    set(key, name, oneLine);
    store();
}

void KOSettings::writeBool(const KorString& key, const KorString& name, bool value) {
    writeString(key, name, value ? "true" : "false");
}

void KOSettings::writeInt(const KorString& key, const KorString& name, int value) {
    writeString(key, name, KorString::number(value));
}

void KOSettings::set(const KorString& key, const KorString& name, const KorString& value) {
    const Line line{name + KorString(" = ") + value, key, name, value};
    if (const Line* present = find(key, name)) {
        const auto place = m_lines.begin() + (present - m_lines.data());
        const KorString before = present->text;
        *place = line;
        if (m_reportedNames.erase(name) > 0)
            m_lines.insert(place, {KorString(kRubbishMark) + before, key, {}, {}});
        return;
    }
    const auto inSection = [&](const Line& other) {
        return other.key == key && !other.text.trimmed().isEmpty();
    };
    const auto last = std::find_if(m_lines.rbegin(), m_lines.rend(), inSection);
    if (last != m_lines.rend()) {
        m_lines.insert(last.base(), line);
        return;
    }
    if (m_lines.empty())
        m_lines.push_back({"# Settings of the detail styles manager", {}, {}, {}});
    m_lines.push_back({{}, {}, {}, {}});
    m_lines.push_back({KorString("[") + key + KorString("]"), key, {}, {}});
    m_lines.push_back(line);
}

void KOSettings::takeWhatOthersWrote() {
    std::vector<KorString> texts;
    if (!m_unreadable && !m_writeFailed && !m_keepsFile &&
        KorTextFile::readLines(m_file, texts, kLargestFile))
        takeLines(texts);
}

void KOSettings::store() {
    if (m_unreadable || m_keepsFile)
        return;
    std::string text;
    for (const Line& line : m_lines)
        text.append(line.text.view()).append("\n");
    const bool failedBefore = std::exchange(m_writeFailed, !KorTextFile::replace(m_file, text).ok());
    if (m_writeFailed && !failedBefore)
        KorHostReport::add(kCannotWrite, m_file.string());
}

void KOSettings::setPathData(const fs::path& folder) {
    m_dataFolder = folder;
    m_dataPath = KorString(folder.string()).replaced("/", "\\");
    if (m_dataPath.view().ends_with('\\'))
        m_dataPath = KorString(m_dataPath.view().substr(0, m_dataPath.size() - 1));
}
