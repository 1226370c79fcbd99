#include "session/KorDSMServers.h"

#include "base/EditorSession.h"
#include "base/Translation.h"
#include "data/RowUsers.h"
#include "data/StyleDatabases.h"
#include "session/KorDSMWhereUsed.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <map>
#include <set>
#include <utility>

namespace {

/// What was heard last.
struct Heard {
    std::map<SourceId, ServerNews> news;
    std::map<SourceId, std::time_t> silent; ///< since when nothing can be read
};

Heard& heard() {
    return EditorSession::currentPart<Heard>();
}

bool isSilent(const ServerNews& news) {
    return news.state == ServerNews::eState::kNoAnswer || news.state == ServerNews::eState::kLost;
}

// Why what is shown may be of an earlier time, with that; null where it is what is stored.
const char* troubleOf(SourceId id, const ServerNews& news) {
    const StyleSource* source = StyleDatabases::current().source(id);
    if (!source)
        return nullptr;
    return isSilent(news)         ? translatable("No answer since %s, the time of what is shown: \"%s\"")
           : source->isOutdated() ? translatable("Cannot be read since %s, the time of what is shown: \"%s\"")
                                  : nullptr;
}

KorString timeOfDay(std::time_t moment) {
    std::tm time{};
    std::array<char, 8> text{};
    localtime_r(&moment, &time);
    std::strftime(text.data(), text.size(), "%H:%M", &time);
    return KorString(text.data());
}

KorString joined(const std::set<std::string>& names) {
    KorString all;
    for (const std::string& name : names)
        all = all.isEmpty() ? KorString(name) : KorString::format("%s, %s", {all, name});
    return all;
}

} // namespace

bool KorDSMServers::areThere() {
    StyleDatabases& databases = StyleDatabases::current();
    return std::ranges::any_of(databases.sources(),
                               [&](SourceId id) { return databases.source(id)->store().isOnServer(); });
}

bool KorDSMServers::look() {
    StyleDatabases& databases = StyleDatabases::current();
    heard().news = databases.glance();
    std::erase_if(heard().silent, [](const auto& each) { return !heard().news.contains(each.first); });
    for (const auto& [id, news] : heard().news)
        if (troubleOf(id, news))
            heard().silent.try_emplace(id, std::time(nullptr));
        else
            heard().silent.erase(id);
    return std::ranges::any_of(heard().news, [](const auto& each) {
        return each.second.state == ServerNews::eState::kChanged ||
               each.second.state == ServerNews::eState::kBack;
    });
}

KorString KorDSMServers::trouble() {
    std::map<std::pair<std::string, std::string>, std::set<std::string>> sources; // mostly it is one server
    for (const auto& [id, since] : heard().silent)
        if (const char* trouble = troubleOf(id, heard().news[id]))
            sources[{translated(trouble).toStdString(), timeOfDay(since).toStdString()}].insert(
                KorDSMWhereUsed::sourceName(id).toStdString());
    KorString all;
    for (const auto& [what, names] : sources) {
        const KorString sentence = KorString::format(what.first, {what.second, joined(names)});
        all = all.isEmpty() ? sentence : KorString::format("%s\n%s", {all, sentence});
    }
    return all;
}

KorString KorDSMServers::colleagues() {
    KorString all;
    for (const auto& [id, news] : heard().news) {
        std::set<std::string> names;
        for (const Colleague& colleague : news.colleagues)
            names.insert(colleague.user);
        if (names.empty())
            continue;
        const KorString here = KorString::format("%s (%s)", {joined(names), KorDSMWhereUsed::sourceName(id)});
        all = all.isEmpty() ? here : KorString::format("%s; %s", {all, here});
    }
    return all.isEmpty() ? all : KorString::format(translated("Also here: %s"), {all});
}

KorString KorDSMServers::editorsOf(SourceId id, RowRef row) {
    StyleSource* source = StyleDatabases::current().source(id);
    const auto found = heard().news.find(id);
    if (!source || found == heard().news.end())
        return {};
    std::set<std::string> names;
    for (const Colleague& colleague : found->second.colleagues)
        for (const RowRef changed : colleague.pending)
            if (changed == row || wholeOf(*source, changed) == row)
                names.insert(colleague.user);
    return names.empty() ? KorString()
                         : KorString::format(translated("Being changed by %s"), {joined(names)});
}
