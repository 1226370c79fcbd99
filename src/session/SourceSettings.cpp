#include "session/SourceSettings.h"

#include "base/Translation.h"
#include "data/store/odbc/OdbcDriverLog.h"
#include "services/KorTextFile.h"
#include "session/KorDSMPasswords.h"

#include <algorithm>

namespace {

KorString unreadable(const std::filesystem::path& file) {
    return KorString::format(translated("The file \"%s\", which says where databases are, cannot be read; "
                                        "correct it or move it away."),
                             {file.string()});
}

} // namespace

SourceSettings::SourceSettings(const std::filesystem::path& folder) : m_file(folder / "sources.ini") {
    std::error_code none;
    std::vector<KorString> lines;
    if (!std::filesystem::exists(m_file, none))
        return;
    if (!KorTextFile::readLines(m_file, lines)) {
        m_problems.push_back(unreadable(m_file));
        return;
    }
    std::string section;
    int number = 0;
    for (const KorString& each : lines) {
        const KorString line = each.trimmed();
        ++number;
        if (line.isEmpty() || line.view().front() == '#' || line.view().front() == ';')
            continue;
        if (line.view().front() == '[' && line.view().back() == ']')
            section = KorString(line.view().substr(1, line.size() - 2)).trimmed().lowered().toStdString();
        else
            take(section, line, number);
    }
}

void SourceSettings::take(const std::string& section, const KorString& line, int number) {
    const std::size_t equals = line.view().find('=');
    const KorString key = KorString(line.view().substr(0, std::min(equals, line.size()))).trimmed().lowered();
    const bool isKnown = key == "connection" || key == "file";
    if (section.empty() || equals == std::string_view::npos || !isKnown) {
        const KorString sentence =
            KorString::format(translated("Line %s of \"%s\" is not understood; write [SOURCE], and below it "
                                         "connection=... or file=...."),
                              {KorString::number(std::int64_t{number}), m_file.string()});
        if (!section.empty())
            m_places[section] = {{}, {}, sentence.toStdString()};
        else if (m_problems.empty()) // of a file that is something else one line says all
            m_problems.push_back(sentence);
        return;
    }
    const std::string value = KorString(line.view().substr(equals + 1)).trimmed().toStdString();
    Place& place = m_places[section];
    if (!place.error.empty())
        return;
    if (m_texts.contains(section)) {
        const KorString twice = KorString::format(
            translated("Line %s of \"%s\" says a second time where \"%s\" is; leave one of the lines."),
            {KorString::number(std::int64_t{number}), m_file.string(), section});
        place = {{}, {}, twice.toStdString()};
        return;
    }
    const bool isConnection = ServerAddress::isConnection(value);
    if (!ServerAddress::holdsPassword(value))
        m_texts[section] = value;
    if (key == "file" && !isConnection) {
        place = {m_file.parent_path() / value, {}, {}};
        return;
    }
    Result<ServerAddress> address = ServerAddress::parse(value, "\"" + m_file.string() + "\"");
    place = {{}, std::move(address.value), std::move(address.error)};
}

SourceSettings::Place SourceSettings::placeOf(const std::string& source,
                                              const std::filesystem::path& file) const {
    const auto found = m_places.find(KorString(source).lowered().toStdString());
    return found == m_places.end() ? Place{file, {}, {}} : found->second;
}

std::set<std::string> SourceSettings::sources() const {
    std::set<std::string> names;
    for (const auto& [name, place] : m_places)
        names.insert(name);
    return names;
}

bool SourceSettings::hasServers() const {
    return std::ranges::any_of(m_places, [](const auto& each) { return !each.second.server.name.empty(); });
}

std::string SourceSettings::textOf(const std::string& source) const {
    const auto found = m_texts.find(KorString(source).lowered().toStdString());
    return found == m_texts.end() ? std::string() : found->second;
}

namespace {

std::string sectionIn(const KorString& line) {
    const std::string_view text = line.view();
    return text.size() > 1 && text.front() == '[' && text.back() == ']'
               ? KorString(text.substr(1, text.size() - 2)).trimmed().lowered().toStdString()
               : std::string();
}

bool saysWhere(const KorString& line) {
    const KorString key = KorString(line.view().substr(0, line.view().find('='))).trimmed().lowered();
    return key == "connection" || key == "file";
}

std::string lineOf(const std::string& text) {
    return (ServerAddress::isConnection(text) ? "connection = " : "file = ") + text + "\n";
}

} // namespace

Result<> SourceSettings::write(const std::filesystem::path& folder,
                               const std::map<std::string, std::string>& texts) {
    const std::filesystem::path file = folder / "sources.ini";
    std::error_code none;
    std::vector<KorString> lines;
    if (std::filesystem::exists(file, none) && !KorTextFile::readLines(file, lines))
        return Result<>::failure(unreadable(file));
    std::string before;
    std::map<std::string, std::string> left = texts;
    std::string written;
    std::string section;
    for (const KorString& line : lines) {
        before += line.toStdString() + "\n";
        if (const std::string begun = sectionIn(line.trimmed()); !begun.empty())
            section = begun;
        else if (texts.contains(section) && saysWhere(line.trimmed()))
            continue;
        written += line.toStdString() + "\n";
        if (const auto text = left.find(section); text != left.end()) {
            written += text->second.empty() ? std::string() : lineOf(text->second);
            left.erase(text);
        }
    }
    for (const auto& [source, text] : left)
        if (!text.empty())
            written += "[" + source + "]\n" + lineOf(text);
    return written == before ? Result<>{} : KorTextFile::replace(file, written);
}

SourceSettings::Checked SourceSettings::check(const ServerAddress& address) {
    const OpenedServer opened = KorDSMPasswords::current().open(address, OdbcStore::eMode::kWrite);
    if (!opened.store)
        return {Result<>{opened.error}, opened.line.isRefusal()};
    if (std::string tooNew = opened.store->whyTooNew(); !tooNew.empty())
        return {Result<>{std::move(tooNew)}};
    const KorString outcome =
        KorString::format(opened.store->isReadOnly() ? translated("\"%s\" can be read, but not changed.")
                                                     : translated("\"%s\" can be read and changed."),
                          {address.name});
    const std::string hint = hintAtDriverLog(address);
    return {hint.empty() ? outcome : KorString::format("%s %s", {outcome, hint})};
}
