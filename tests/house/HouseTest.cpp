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
const std::set<std::string> kGround = {"base", "records", "services", "picture"};

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

std::string unitOf(const fs::path& file) {
    return fs::relative(file, fs::path(SOURCE_DIR)).replace_extension().generic_string();
}

std::vector<fs::path> sourceFiles() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_DIR) / "src"))
        if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
            files.push_back(entry.path());
    return files;
}

std::string withoutTemplateArguments(std::string text) {
    const std::regex innermost("<[^<>]*>");
    while (text.find('<') != std::string::npos && std::regex_search(text, innermost))
        text = std::regex_replace(text, innermost, "");
    return text;
}

// The variable that a line declares and that can change and is there once; empty for other lines.
std::string globalIn(std::string line) {
    // Names of namespaces are not indented; what is static, but no function, ends or begins with its value.
    static const std::regex kAtNamespace(
        R"(^(?!using|struct|class|enum|namespace|return|template|extern|typedef|friend|static_assert|case|Q_)"
        R"(|public|private|protected|default)(?:inline |static |thread_local )*[A-Za-z_][\w:<>,*& \[\]]*?[ *&])"
        R"((?:\w+::)*(\w+)(?:\[\w*\])*(?: =.*|\{.*|);?$)");
    static const std::regex kStatic(
        R"(^\s*(?:[A-Z_]+ )?(?:inline |thread_local )*static (?:inline |thread_local )*[\w:<>,*& ()]+?[ *&])"
        R"((\w+)(?:\[\w*\])*(?: =|\{|;))");
    const bool mayBeStatic = line.find(" static ") != std::string::npos;
    if (line.empty() ||
        (!mayBeStatic && std::string_view(" }#/").find(line.front()) != std::string_view::npos))
        return {};
    line = withoutTemplateArguments(line.substr(0, line.find("//")));
    line.erase(line.find_last_not_of(' ') + 1);
    std::smatch match;
    if (line.ends_with(") {") || line.find("constexpr") != std::string::npos ||
        line.find("operator") != std::string::npos ||
        !std::regex_search(line, match, mayBeStatic ? kStatic : kAtNamespace))
        return {};
    const std::string type = line.substr(0, line.find(" = "));
    const bool isConstant =
        std::regex_search(type, std::regex(R"(\bconst\b)")) &&
        (type.find('*') == std::string::npos || std::regex_search(type, std::regex(R"(\* ?const\b)")));
    return isConstant ? std::string() : match[1].str();
}

// What the page lists as global, as "unit name".
std::set<std::string> listedGlobals() {
    std::ifstream page(fs::path(SOURCE_DIR) / "ARCHITECTURE.md");
    const std::regex row(R"(^\| `(src/[\w/]+)` \| ((?:`\w+`,? ?)+) \| .+ \|$)");
    const std::regex quoted("`(\\w+)`");
    std::set<std::string> globals;
    for (std::string line; std::getline(page, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, row))
            continue;
        const std::string names = match[2];
        for (std::sregex_iterator it(names.begin(), names.end(), quoted), end; it != end; ++it)
            globals.insert(match[1].str() + " " + (*it)[1].str());
    }
    return globals;
}

// The units, files of one name, that a unit includes.
using Includes = std::map<std::string, std::set<std::string>>;

Includes includedUnits() {
    const std::regex include(R"(^#include "([^"]+)\.h")");
    Includes included;
    for (const fs::path& file : sourceFiles()) {
        std::ifstream stream(file);
        for (std::string line; std::getline(stream, line);) {
            std::smatch match;
            if (!std::regex_search(line, match, include))
                continue;
            const std::string header = match[1];
            for (const char* root : {"src/", "src/host/"})
                if (const std::string unit = root + header;
                    fs::exists(fs::path(SOURCE_DIR) / (unit + ".h")) && unit != unitOf(file))
                    included[unitOf(file)].insert(unit);
        }
    }
    return included;
}

// The way from `unit` back to `target`, in words; empty when there is none.
std::string wayTo(const Includes& included, const std::string& unit, const std::string& target,
                  std::set<std::string>& seen) {
    const auto found = included.find(unit);
    if (found == included.end())
        return {};
    for (const std::string& next : found->second) {
        if (next == target)
            return unit + " -> " + next;
        if (!seen.insert(next).second)
            continue;
        if (const std::string way = wayTo(included, next, target, seen); !way.empty())
            return unit + " -> " + way;
    }
    return {};
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
    ASSERT_EQ(edges.size(), 14u);
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

TEST(House, WhatIsGlobalIsListedWithItsReason) {
    EXPECT_EQ(globalIn("KorDSMPage* g_currentPage = nullptr;"), "g_currentPage");
    EXPECT_EQ(globalIn("std::map<int, const char*> names;"), "names");
    EXPECT_EQ(globalIn("std::function<void(int)> g_told;"), "g_told");
    EXPECT_EQ(globalIn("const char* language = \"en\";"), "language");
    EXPECT_EQ(globalIn("    static Store texts;"), "texts");
    EXPECT_EQ(globalIn("    static const std::vector<TableSchema*> tables = declareAll();"), "");
    EXPECT_EQ(globalIn("    static AddInManager& getInstance();"), "");
    std::set<std::string> found;
    for (const fs::path& file : sourceFiles()) {
        std::ifstream stream(file);
        for (std::string line; std::getline(stream, line);)
            if (const std::string name = globalIn(line); !name.empty())
                found.insert(unitOf(file) + " " + name);
    }
    const std::set<std::string> listed = listedGlobals();
    EXPECT_GT(listed.size(), 10u);
    for (const std::string& global : found)
        EXPECT_TRUE(listed.contains(global)) << global << " belongs into a part of the session";
    for (const std::string& global : listed)
        EXPECT_TRUE(found.contains(global)) << global << " is gone";
}

TEST(House, NoFileIncludesOneThatIncludesItsSister) {
    const Includes included = includedUnits();
    ASSERT_GT(included.size(), 100u);
    for (const auto& [unit, others] : included) {
        std::set<std::string> seen;
        EXPECT_EQ(wayTo(included, unit, unit, seen), "");
    }
}
