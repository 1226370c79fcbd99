#include "session/SourceSettings.h"

#include "base/Translation.h"
#include "services/KorTextFile.h"

SourceSettings::SourceSettings(const std::filesystem::path& folder) : m_file(folder / "sources.ini") {
    std::error_code none;
    std::vector<KorString> lines;
    if (!std::filesystem::exists(m_file, none))
        return;
    if (!KorTextFile::readLines(m_file, lines)) {
        m_problems.push_back(KorString::format(translated("The file \"%s\", which says where databases are, "
                                                          "cannot be read; correct it or move it away."),
                                               {m_file.string()}));
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
        if (section.empty())
            m_problems.push_back(sentence);
        else
            m_places[section].error = sentence.toStdString();
        return;
    }
    const std::string value = KorString(line.view().substr(equals + 1)).trimmed().toStdString();
    Place& place = m_places[section];
    if (!place.error.empty())
        return;
    if (key == "file") {
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
