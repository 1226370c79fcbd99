#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using Edges = std::map<std::string, std::set<std::string>>;

// Known to every room above them.
const std::set<std::string> kGround = {"base", "records", "services"};

Edges readEdges() {
    std::ifstream page(fs::path(SOURCE_DIR) / "ARCHITECTURE.md");
    const std::regex edge(R"(^(\w+)\s+->\s*([\w ]*)$)");
    Edges edges;
    for (std::string line; std::getline(page, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, edge))
            continue;
        std::istringstream rooms(match[2]);
        for (std::string room; rooms >> room;)
            edges[match[1]].insert(room);
        edges[match[1]].insert(match[1]);
        if (!kGround.contains(match[1]))
            edges[match[1]].insert(kGround.begin(), kGround.end());
    }
    return edges;
}

std::string roomOf(const fs::path& file) {
    const fs::path relative = fs::relative(file, fs::path(SOURCE_DIR) / "src");
    auto part = relative.begin();
    return (*part == "host" ? *++part : *part).string();
}

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

// All types of messages, by name.
std::vector<std::string> messages() {
    const std::string text = contentOf(fs::path(SOURCE_DIR) / "src/model/KorDSMMessages.h");
    const std::regex type(R"(struct (Dsm\w+) : KorNumberedMessage)");
    std::vector<std::string> names;
    for (std::sregex_iterator it(text.begin(), text.end(), type), end; it != end; ++it)
        names.push_back((*it)[1]);
    return names;
}

} // namespace

TEST(House, EveryMessageHasASenderAndAReceiver) {
    const std::vector<std::string> names = messages();
    ASSERT_GT(names.size(), 10u);
    std::string sources;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_DIR) / "src"))
        if (entry.is_regular_file() && entry.path().filename() != "KorDSMMessages.h")
            sources += contentOf(entry.path());
    for (const std::string& name : names) {
        // A sender makes a message, by a variable or in place.
        EXPECT_TRUE(std::regex_search(sources, std::regex(name + R"( \w+;|)" + name + R"(\(\))"))) << name;
        EXPECT_TRUE(std::regex_search(sources, std::regex("receive<" + name + ">"))) << name;
    }
}

TEST(House, RoomsIncludeOnlyAlongTheListedEdges) {
    const Edges edges = readEdges();
    ASSERT_EQ(edges.size(), 12u);
    const std::regex include(R"(^\s*#include\s*["<]([^">]+)[">])");
    const std::set<std::string> withWindows = {"controls", "dialogs", "pages", "shell", "app"};
    Edges used;
    int seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_DIR) / "src")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
            continue;
        const std::string room = roomOf(entry.path());
        ASSERT_TRUE(edges.contains(room)) << entry.path();
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (!std::regex_search(line, match, include))
                continue;
            ++seen;
            const std::string header = match[1];
            const std::string target = header.substr(0, header.find('/'));
            used[room].insert(target);
            if (edges.contains(target) && header.find('/') != std::string::npos) {
                EXPECT_TRUE(edges.at(room).contains(target)) << entry.path() << " includes " << header;
            }
            if (header.starts_with("Q")) {
                EXPECT_TRUE(withWindows.contains(room)) << entry.path() << " includes " << header;
            }
        }
    }
    EXPECT_GT(seen, 100);
    for (const auto& [room, targets] : edges)
        for (const std::string& target : targets)
            EXPECT_TRUE(target == room || kGround.contains(target) || used[room].contains(target))
                << "nothing needs " << room << " -> " << target;
}
