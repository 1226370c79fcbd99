#include "services/CKorHelp.h"

#include "base/EditorSession.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/Prompts.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <utility>

namespace fs = std::filesystem;

namespace {
constexpr int kPageMissing = 8;

struct HelpViewer {
    CKorHelp::Viewer show;
};

std::string readWhole(const fs::path& page) {
    std::ifstream in(page, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// What stands between these marks, from the place on; the place moves behind it, or to the end.
KorString between(const std::string& page, const char* begin, const char* end, std::size_t& from) {
    const std::size_t first = page.find(begin, from);
    const std::size_t last = first == std::string::npos ? first : page.find(end, first);
    from = last;
    if (last == std::string::npos)
        return {};
    const std::size_t text = first + std::strlen(begin);
    return KorString(page.substr(text, last - text)).replaced("&amp;", "&").replaced("&nbsp;", " ");
}

std::vector<fs::path> foldersOfHelp() {
    std::error_code ignored;
    std::vector<fs::path> folders;
    for (const fs::directory_entry& entry : fs::directory_iterator(KorResources::folder() / "help", ignored))
        if (entry.path().filename() == Prompts::language())
            folders.insert(folders.begin(), entry.path());
        else if (entry.is_directory(ignored))
            folders.push_back(entry.path());
    return folders;
}
} // namespace

void CKorHelp::setViewer(Viewer viewer) {
    EditorSession::currentPart<HelpViewer>().show = std::move(viewer);
}

fs::path CKorHelp::pageOf(const KorString& topic) {
    std::error_code ignored;
    for (const std::string& language : {Prompts::language(), std::string("en")}) {
        fs::path page = KorResources::folder() / "help" / language / (topic.toStdString() + ".html");
        if (fs::exists(page, ignored))
            return page;
    }
    return {};
}

std::vector<CKorHelp::Topic> CKorHelp::topics() {
    std::map<std::string, Topic> topics;
    std::error_code ignored;
    for (const fs::path& folder : foldersOfHelp())
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
            if (entry.path().extension() != ".html")
                continue;
            const std::string page = readWhole(entry.path());
            Topic& topic = topics[entry.path().stem().string()];
            topic.name = entry.path().stem().string();
            std::size_t at = 0;
            const KorString title = between(page, "<title>", "</title>", at);
            (topic.title.isEmpty() ? topic.title : topic.others.emplace_back()) = title;
            while (at != std::string::npos)
                if (KorString heading = between(page, "<h2>", "</h2>", at); !heading.isEmpty())
                    topic.others.push_back(std::move(heading));
        }
    std::vector<Topic> all;
    for (auto& [name, topic] : topics)
        all.push_back(std::move(topic));
    return all;
}

bool CKorHelp::showTopic(const KorString& topic) {
    const std::string name = topic.toStdString();
    const std::size_t mark = std::min(name.find('#'), name.size());
    const fs::path page = pageOf(name.substr(0, mark));
    if (page.empty()) {
        KorHostReport::add(kPageMissing, topic, (KorResources::folder() / "help").string());
        return false;
    }
    if (const Viewer& show = EditorSession::currentPart<HelpViewer>().show)
        show(page, mark < name.size() ? KorString(name.substr(mark + 1)) : KorString());
    return true;
}
