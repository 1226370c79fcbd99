#include "base/LinetypeFile.h"
#include "base/EditorSession.h"

#include "base/TextLines.h"

#include <algorithm>
#include <fstream>
#include <map>

namespace fs = std::filesystem;

namespace {

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\f\v\x1A"); // old editors end a file with 1A
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\f\v\x1A") - first + 1);
}

bool beginsPattern(std::string_view line) {
    return line.size() > 1 && (line[0] == 'A' || line[0] == 'a') && trimmed(line.substr(1)).starts_with(',');
}

bool isOpen(std::string_view pattern) {
    if (pattern.ends_with(','))
        return true;
    const bool inQuotes = std::ranges::count(pattern, '"') % 2 != 0;
    return inQuotes || pattern.rfind('[') + 1 > pattern.rfind(']') + 1; // npos + 1 is 0
}

bool canGoOn(std::string_view line) {
    return std::string_view("0123456789+-.,[").find(line.front()) != std::string_view::npos;
}

} // namespace

/// Puts definitions together from lines.
class LinetypeFile::Collector {
public:
    explicit Collector(LinetypeFile& file) : m_file(file) {}

    /// Returns false when nothing more is taken.
    bool takeLine(std::string_view text) {
        const std::string_view line = trimmed(text);
        if (line.empty() || line.front() == ';')
            return true;
        if (line.front() == '*')
            return finish() && begin(line.substr(1));
        if (m_begun)
            takePart(line);
        return true;
    }

    bool finish() {
        if (!m_begun)
            return true;
        m_begun = false;
        auto pattern = LinetypePatterns::parse(m_pattern);
        if (!pattern || m_definition.name.isEmpty()) {
            ++m_file.m_damaged;
            return true;
        }
        m_definition.pattern = std::move(*pattern);
        return m_file.add(std::move(m_definition));
    }

private:
    bool begin(std::string_view header) {
        const std::size_t comma = std::min(header.find(','), header.size());
        m_definition = {};
        m_definition.name = KorString(trimmed(header.substr(0, comma)));
        m_description = trimmed(header.substr(std::min(comma + 1, header.size())));
        m_definition.description = KorString(m_description);
        m_pattern.clear();
        m_begun = true;
        return true;
    }

    void takePart(std::string_view line) {
        if (m_pattern.size() + line.size() > TextLines::kLongestLine)
            return;
        if (m_pattern.empty() && !beginsPattern(line)) {
            m_description += ' ';
            m_description += line;
            m_definition.description = KorString(m_description);
        } else if (m_pattern.empty() || isOpen(m_pattern)) {
            m_pattern += line;
        } else if (canGoOn(line)) {
            if (line.front() != ',')
                m_pattern += ',';
            m_pattern += line;
        }
    }

    LinetypeFile& m_file;
    LinetypeDefinition m_definition;
    std::string m_description;
    std::string m_pattern;
    bool m_begun = false;
};

LinetypeFile LinetypeFile::read(const fs::path& path) {
    LinetypeFile file;
    std::error_code error;
    if (!fs::is_regular_file(path, error)) { // before opening: a pipe would never open
        file.m_outcome = fs::exists(path, error) ? kNoPlainFile : kUnreadable;
        return file;
    }
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return file;
    TextLines lines(stream);
    Collector collector(file);
    bool wantsMore = true;
    for (std::string line; wantsMore && lines.next(line);)
        wantsMore = collector.takeLine(line);
    if (wantsMore)
        wantsMore = collector.finish();
    file.m_cutShort = !wantsMore || lines.stoppedAtLimit() || lines.isBinary();
    file.m_outcome = file.m_definitions.empty() ? kNoLinetypes : kRead;
    return file;
}

bool LinetypeFile::add(LinetypeDefinition definition) {
    const KorString name = definition.name.lowered();
    const auto known = m_index.find(name);
    if (known == m_index.end() && m_definitions.size() == kMostDefinitions)
        return false;
    auto added = std::make_shared<const LinetypeDefinition>(std::move(definition));
    if (known != m_index.end()) {
        m_definitions[known->second] = std::move(added);
        ++m_repeated;
        return true;
    }
    m_index.emplace(name, m_definitions.size());
    m_definitions.push_back(std::move(added));
    return true;
}

LinetypeDefinitionPtr LinetypeFile::find(const KorString& name) const {
    const auto it = m_index.find(name.lowered());
    return it == m_index.end() ? nullptr : m_definitions[it->second];
}

namespace {

struct KnownLinetypeFiles {
    struct Known {
        fs::file_time_type time;
        std::uintmax_t size;
        std::shared_ptr<const LinetypeFile> file;
    };
    std::map<fs::path, Known> byPath;
};

} // namespace

std::shared_ptr<const LinetypeFile> LinetypeFile::shared(const fs::path& path) {
    constexpr std::size_t kMostFiles = 8;
    auto& known = EditorSession::currentPart<KnownLinetypeFiles>().byPath;
    std::error_code timeError;
    std::error_code sizeError;
    const auto time = fs::last_write_time(path, timeError);
    const auto size = fs::file_size(path, sizeError);
    const auto it = known.find(path);
    const bool stands = !timeError && !sizeError;
    if (stands && it != known.end() && it->second.time == time && it->second.size == size)
        return it->second.file;
    auto file = std::make_shared<const LinetypeFile>(read(path));
    if (known.size() >= kMostFiles)
        known.clear();
    if (stands)
        known[path] = {time, size, file};
    return file;
}

fs::path LinetypeFile::pathOf(const KorString& folder, const KorString& name) {
    return fs::path(joined(folder, name).replaced("\\", "/").toStdString());
}

std::pair<KorString, KorString> LinetypeFile::split(const KorString& path) {
    const std::string_view text = path.view();
    const std::size_t separator = text.rfind('\\');
    if (separator == std::string_view::npos)
        return {{}, path};
    return {KorString(text.substr(0, std::max<std::size_t>(separator, 1))),
            KorString(text.substr(separator + 1))};
}

KorString LinetypeFile::joined(const KorString& folder, const KorString& name) {
    return folder.isEmpty() || folder.view().ends_with('\\') ? folder + name : folder + "\\" + name;
}

bool LinetypeFile::isSameFolder(const KorString& a, const KorString& b) {
    const KorString left = joined(a.replaced("/", "\\"), {}).lowered();
    return left == joined(b.replaced("/", "\\"), {}).lowered();
}
