#include "base/Translation.h"
#include "services/CKorHelp.h"
#include "services/KOSettings.h"
#include "services/OtherWordings.h"
#include "services/ServicesTestSupport.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;

class PromptsTest : public ServicesTest {};

std::vector<std::string> linesOf(const fs::path& file) {
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        if (!line.empty() && line.front() != '#')
            lines.push_back(line);
    return lines;
}

// The sources of a room, or all, by their names.
std::map<std::string, std::string> sourcesOf(const fs::path& room = {}) {
    std::map<std::string, std::string> sources;
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_DIR) / "src" / room))
        if (entry.is_regular_file())
            sources[entry.path()] = bytesOf(entry.path());
    return sources;
}

// Every match of the pattern in the text.
std::vector<std::smatch> matchesIn(const std::string& text, const std::regex& pattern) {
    return {std::sregex_iterator(text.begin(), text.end(), pattern), {}};
}

// The places for arguments of a sentence, in order.
std::string placesIn(const std::string& sentence) {
    const std::regex place("%[sd%]");
    std::string found;
    for (const std::smatch& match : matchesIn(sentence, place))
        found += match.str();
    return found;
}

// The texts of a shipped file with the places for arguments that each has, in order.
std::map<std::string, std::string> placesOf(const std::string& language) {
    std::map<std::string, std::string> places;
    for (const std::string& line : linesOf(fs::path(SOURCE_DIR) / "resources/prompts" / (language + ".tsv")))
        places[line.substr(0, line.find('\t', line.find('\t') + 1))] = placesIn(line);
    return places;
}

// What an escape of C++ or of a text file stands for.
std::string unescaped(std::string text) {
    for (std::size_t at = 0; (at = text.find('\\', at)) != std::string::npos; ++at) {
        text.erase(at, 1);
        text[at] = text[at] == 'n' ? '\n' : text[at];
    }
    return text;
}

// Every sentence that the sources mark, with its file.
std::map<std::string, std::string> sentencesOfTheSources() {
    const std::regex marked(R"re(\btransla(?:ted|table)\(\s*((?:"(?:[^"\\\n]|\\.)*"\s*)+))re");
    const std::regex literal(R"re("((?:[^"\\\n]|\\.)*)")re");
    std::map<std::string, std::string> sentences;
    for (const auto& [name, text] : sourcesOf())
        for (const std::smatch& match : matchesIn(text, marked)) {
            std::string sentence;
            const std::string pieces = match[1];
            for (const std::smatch& piece : matchesIn(pieces, literal))
                sentence += piece[1];
            sentences.emplace(unescaped(sentence), name);
        }
    // Sample parts are called so in their files.
    for (const auto& file : std::filesystem::directory_iterator(KorResources::folder() / "parts"))
        for (const std::string& line : linesOf(file.path()))
            if (line.starts_with("part \""))
                sentences.emplace(line.substr(6, line.rfind('"') - 6), file.path().string());
    // What every database has to choose from; scales and line types are known by their names.
    for (const auto& file :
         std::filesystem::directory_iterator(KorResources::folder() / "samples/vocabulary")) {
        std::string section;
        std::string before;
        for (const std::string& line :
             file.is_directory() ? std::vector<std::string>() : linesOf(file.path())) {
            section = line.starts_with('[') ? line : section;
            const bool isRow = line.find('|') != std::string::npos && !before.starts_with('[');
            if (isRow && section != "[scale]" && section != "[linetype]")
                sentences.emplace(line.substr(0, line.find_last_not_of(' ', line.find('|') - 1) + 1),
                                  section);
            before = line;
        }
    }
    return sentences;
}

} // namespace

TEST_F(PromptsTest, EverySentenceOfTheSourcesIsThereInGermanAndNoOther) {
    std::map<std::string, std::string> sources = sentencesOfTheSources();
    EXPECT_GT(sources.size(), 150u);
    for (const std::string& line : linesOf(KorResources::folder() / "prompts/de.sentences.tsv")) {
        const std::string english = unescaped(line.substr(0, line.find('\t')));
        EXPECT_EQ(sources.erase(english), 1u) << "no source says: " << english;
        EXPECT_EQ(placesIn(english), placesIn(line.substr(line.find('\t')))) << english;
    }
    for (const auto& [sentence, source] : sources)
        ADD_FAILURE() << source << " has no German: " << sentence;
}

TEST_F(PromptsTest, AdviceToRestoreAFileIsTheSameInBothLanguagesAndNeverThatOfAReadError) {
    int advising = 0;
    for (const std::string& line : linesOf(KorResources::folder() / "prompts/de.sentences.tsv")) {
        const std::string english = line.substr(0, line.find('\t'));
        const bool advises = mentions(english, "restore");
        EXPECT_EQ(advises, mentions(line.substr(english.size()), "wieder her")) << english;
        EXPECT_FALSE(advises && (mentions(english, "not be read") || mentions(english, "cannot be read")))
            << english;
        advising += advises;
    }
    EXPECT_GT(advising, 5);
    for (const char* language : {"en.tsv", "de.tsv"})
        for (const std::string& line : linesOf(KorResources::folder() / "prompts" / language))
            EXPECT_FALSE(mentions(line, "restore") || mentions(line, "wieder her")) << line;
}

TEST_F(PromptsTest, SentencesComeInTheLanguageOfTheProgramOrAsTheyStand) {
    m_folder.write("en.tsv", "TAB\t0\tDetail style\n");
    m_folder.write("nl.tsv", "TAB\t0\tDetailstijl\n");
    m_folder.write("nl.sentences.tsv", "no \\\\\\n%s\tgeen \\\\\\n%s\nno tab\nyes\t\n");
    Prompts::load(m_folder.path(), "nl");
    EXPECT_EQ(translated("no \\\n%s"), "geen \\\n%s");
    EXPECT_EQ(translated("yes"), "yes");
    EXPECT_EQ(term("TAB", 0, "detail style"), "Detailstijl");
    EXPECT_EQ(term("TAB", 1, "view"), "view");
    const std::string damaged = onlySentence();
    EXPECT_TRUE(mentions(damaged, "nl.sentences.tsv") && mentions(damaged, "2, 3")) << damaged;
    Prompts::load(m_folder.path(), "en");
    EXPECT_EQ(translated("no \\\n%s"), "no \\\n%s");
    EXPECT_EQ(term("TAB", 0, "style"), "detail style");
}

TEST_F(PromptsTest, TheShippedLanguagesHaveTheSameTextsWithTheSameArguments) {
    const auto english = placesOf("en");
    EXPECT_GT(english.size(), 190u);
    EXPECT_EQ(english, placesOf("de"));
    for (const char* language : {"en", "de"})
        EXPECT_TRUE(Prompts::load(KorResources::folder() / "prompts", language));
    EXPECT_EQ(Prompts::getPrompt("UPS", 33741), "Abbrechen");
    EXPECT_TRUE(KorHostReport::take().empty()) << "no damaged line, none twice";
}

TEST_F(PromptsTest, EveryTextThatTheProgramNamesIsThere) {
    // Numbers of texts stand in tables and constants too; nothing else in the sources is in these ranges.
    const std::regex number(R"re(\b(14101|19\d{3}|2[12]\d{3}|33[5-9]\d\d|450\d\d|45100)\b)re");
    int seen = 0;
    for (const char* room : {"model", "session", "dialogs", "pages", "shell"})
        for (const auto& [name, text] : sourcesOf(room))
            for (const std::smatch& match : matchesIn(text, number)) {
                ++seen;
                EXPECT_TRUE(Prompts::has(match.str()[0] == '4' ? "GUI" : "UPS", std::stoi(match.str())))
                    << name << ": " << match.str();
            }
    EXPECT_GT(seen, 10);
}

TEST_F(PromptsTest, EveryTextOfTheModuleThatTheProgramNamesIsThere) {
    // The number stands in the call, or in a constant of the same file.
    const std::regex call(R"re(Prompts::(?:dsm\(|counted\()(\w+)[,)])re");
    int seen = 0;
    for (const auto& [name, text] : sourcesOf())
        for (const std::smatch& match : matchesIn(text, call)) {
            std::smatch constant;
            std::string number = match.str(1);
            if (std::regex_search(text, constant, std::regex("constexpr int " + number + " = (\\d+);")))
                number = constant.str(1);
            if (!std::isdigit(static_cast<unsigned char>(number.front())))
                continue;
            ++seen;
            EXPECT_TRUE(Prompts::has("DSM", std::stoi(number))) << name << ": " << match.str();
        }
    EXPECT_GT(seen, 30);
}

TEST_F(PromptsTest, EscapesStandForLineBreaksTabsAndBackslashes) {
    m_folder.write("en.tsv", "\xEF\xBB\xBF# a note\r\nUPS\t1\tone\\ntwo\\tthree\\\\n\r\n");
    Prompts::load(m_folder.path(), "en");
    EXPECT_EQ(Prompts::getPrompt("UPS", 1), "one\ntwo\tthree\\n");
}

TEST_F(PromptsTest, DamagedAndMissingLinesAreReportedAndTheRestIsUsed) {
    m_folder.write("en.tsv",
                   "UPS\t1\tone\nUPS 2 two\nUPS\tx\tthree\n\nUPS\t4\tfour\nUPS\t1\tagain\nUPS\t5\t\n");
    EXPECT_TRUE(Prompts::load(m_folder.path(), "en"));
    EXPECT_EQ(Prompts::getPrompt("UPS", 1), "one");
    EXPECT_EQ(Prompts::getPrompt("UPS", 4), "four");
    const std::string damaged = onlySentence();
    EXPECT_TRUE(mentions(damaged, (m_folder.path() / "en.tsv").string()) && mentions(damaged, "2, 3, 6, 7"))
        << damaged;

    EXPECT_EQ(Prompts::getPrompt("UPS", 2), "UPS 2");
    EXPECT_TRUE(KorHostReport::take().empty()) << "the damaged line is what was told of";
}

TEST_F(PromptsTest, AThousandBrokenOrMissingLinesAreOneMessage) {
    for (const std::string line : {"no text\n", ""}) {
        std::string lines = "UPS\t1\tone\n";
        for (int i = 0; i < 1000; ++i)
            lines += line;
        m_folder.write("en.tsv", lines);
        EXPECT_TRUE(Prompts::load(m_folder.path(), "en"));
        for (int i = 2; i < 1000; ++i)
            EXPECT_EQ(Prompts::getPrompt("UPS", i), KorString("UPS ") + KorString::number(i));
        const std::string told = onlySentence();
        EXPECT_TRUE(mentions(told, "en.tsv") && mentions(told, line.empty() ? "UPS 2" : "2, 3, 4, 5, 6, ..."))
            << told;
    }
}

TEST_F(PromptsTest, WhatALanguageLacksIsShownInEnglish) {
    m_folder.write("en.tsv", "UPS\t1\tone\nUPS\t2\ttwo\n");
    const fs::path dutch = m_folder.write("nl.tsv", "UPS\t1\teen\n");
    m_folder.write("nl.sentences.tsv", "");
    EXPECT_TRUE(Prompts::load(m_folder.path(), "nl"));
    EXPECT_EQ(Prompts::getPrompt("UPS", 1), "een");
    EXPECT_EQ(Prompts::getPrompt("UPS", 2), "two");
    const std::string sentence = onlySentence();
    EXPECT_TRUE(mentions(sentence, "UPS 2") && mentions(sentence, dutch.string())) << sentence;

    fs::remove(m_folder.path() / "en.tsv");
    fs::remove(dutch);
    EXPECT_FALSE(Prompts::load(m_folder.path(), "en"));
    EXPECT_EQ(Prompts::getPrompt("UPS", 1), "UPS 1");
    EXPECT_TRUE(mentions(onlySentence(), (m_folder.path() / "en.tsv").string()));
}

TEST_F(PromptsTest, TheSettingChoosesTheLanguageBeforeTheEnvironment) {
    m_folder.write("en.tsv", "UPS\t1\tone\n");
    m_folder.write("de.tsv", "UPS\t1\teins\n");
    KOSettings::getInstance().useFile(m_folder.path() / "settings.ini");
    setenv("LC_ALL", "de_AT.UTF-8", 1);
    EXPECT_EQ(Prompts::chooseLanguage(m_folder.path()), "de");
    KOSettings::getInstance().writeString(KOSettings::getKeyDSM(), "Language", "en");
    EXPECT_EQ(Prompts::chooseLanguage(m_folder.path()), "en");
    KOSettings::getInstance().writeString(KOSettings::getKeyDSM(), "Language", "tlh");
    setenv("LC_ALL", "C", 1);
    EXPECT_EQ(Prompts::chooseLanguage(m_folder.path()), "en") << "neither is there";
    unsetenv("LC_ALL");
    m_folder.write("more.ini", "[DetailStylesManager]\nLangage = de\n[Layout]\nFrame = 1\n");
    KorHostReport::take();
    KOSettings::getInstance().useFile(m_folder.path() / "more.ini");
    KOSettings::getInstance().reportOthers("DetailStylesManager", {"Language", "OwnerMode"});
    Prompts::load(KorResources::folder() / "prompts", "en");
    const std::string told = onlySentence();
    EXPECT_TRUE(mentions(told, "\"Langage\"") && mentions(told, "Language, OwnerMode")) << told;
}

TEST_F(PromptsTest, ATextHasTheFormThatGoesWithItsNumber) {
    m_folder.write("en.tsv", "RULE\t1\tone-other\nDSM\t1\t%s style|%s styles\n");
    m_folder.write("pl.tsv", "RULE\t1\tpolish\nDSM\t1\tstyl|style|stylów\n");
    m_folder.write("ja.tsv", "RULE\t1\tother\nDSM\t1\tsutairu\n");
    for (const char* name : {"pl.sentences.tsv", "ja.sentences.tsv"})
        m_folder.write(name, "");
    const std::vector<std::tuple<const char*, int, const char*>> forms = {
        {"en", 0, "%s styles"}, {"en", 1, "%s style"}, {"en", 21, "%s styles"}, {"pl", 1, "styl"},
        {"pl", 22, "style"},    {"pl", 12, "stylów"},  {"pl", 5, "stylów"},     {"ja", 1, "sutairu"},
    };
    for (const auto& [language, many, form] : forms) {
        Prompts::load(m_folder.path(), language);
        EXPECT_EQ(Prompts::counted(1, many), form) << language << ' ' << many;
    }
}

// What a translator adds is found without a change of the code: texts, sentences, help, and the rule of its
// numbers.
TEST_F(PromptsTest, AThirdLanguageComesWithItsFilesAlone) {
    m_folder.write("prompts/en.tsv", "RULE\t1\tone-other\nUPS\t1\tApply\nDSM\t1\t%s style|%s styles\n");
    m_folder.write("prompts/fr.tsv",
                   "RULE\t1\tzero-one-other\nUPS\t1\tAppliquer\nDSM\t1\tun style|des styles\n");
    m_folder.write("prompts/fr.sentences.tsv", "Nothing is open.\tRien n'est ouvert.\n");
    m_folder.write("prompts/fr.notes.tsv", "no texts");
    m_folder.write("help/en/_topic.html", "<title>One</title><h2>Two &amp; three</h2>");
    m_folder.write("help/fr/_topic.html", "<title>Un</title>");
    KorResources::setFolder(m_folder.path());
    KOSettings::getInstance().useFile(m_folder.path() / "settings.ini");
    const fs::path prompts = m_folder.path() / "prompts";
    EXPECT_EQ(Prompts::languages(prompts), (std::vector<std::string>{"en", "fr"}));
    KOSettings::getInstance().writeString(KOSettings::getKeyDSM(), Prompts::kLanguageSetting, "fr");
    EXPECT_EQ(Prompts::chooseLanguage(prompts), "fr");
    ASSERT_TRUE(Prompts::load(prompts, "fr"));
    EXPECT_EQ(Prompts::ups(1), "Appliquer");
    EXPECT_EQ(Prompts::counted(1, 0), "un style");
    EXPECT_EQ(translated("Nothing is open."), "Rien n'est ouvert.");
    EXPECT_EQ(CKorHelp::pageOf("_topic"), m_folder.path() / "help/fr/_topic.html");
    ASSERT_EQ(CKorHelp::topics().size(), 1u);
    EXPECT_EQ(CKorHelp::topics()[0].title, "Un");
    EXPECT_EQ(CKorHelp::topics()[0].others, (std::vector<KorString>{"One", "Two & three"}));
    EXPECT_EQ(OtherWordings().of("Appliquer"), std::vector<KorString>{"Apply"});
    KOSettings::getInstance().writeString(KOSettings::getKeyDSM(), Prompts::kLanguageSetting, "");
    EXPECT_EQ(Prompts::chooseLanguage(prompts), Prompts::systemLanguage(prompts));
}

TEST_F(PromptsTest, HelpComesInTheLanguageOfTheProgramOrInEnglish) {
    m_folder.write("help/en/_topic.html", "");
    m_folder.write("help/de/_topic.html", "");
    m_folder.write("help/en/_only.html", "");
    Prompts::load(KorResources::folder() / "prompts", "de");
    KorResources::setFolder(m_folder.path());
    fs::path shown;
    KorString place;
    CKorHelp::setViewer([&](const fs::path& page, const KorString& name) {
        shown = page;
        place = name;
    });
    EXPECT_TRUE(CKorHelp::showTopic("_topic"));
    EXPECT_EQ(shown, m_folder.path() / "help/de/_topic.html");
    EXPECT_TRUE(CKorHelp::showTopic("_only"));
    EXPECT_EQ(shown, m_folder.path() / "help/en/_only.html");
    EXPECT_TRUE(CKorHelp::showTopic("_topic#there"));
    EXPECT_EQ(shown, m_folder.path() / "help/de/_topic.html");
    EXPECT_EQ(place, "there");
    EXPECT_FALSE(CKorHelp::showTopic("_none"));
    EXPECT_TRUE(mentions(onlySentence(), "_none"));
    CKorHelp::setViewer({});
}

TEST_F(PromptsTest, TheShippedHelpIsWholeInBothLanguages) {
    const std::regex link(R"re((?:href|src)="([^"#]*))re");
    int pages = 0;
    for (const auto& entry : fs::directory_iterator(KorResources::folder() / "help" / "en")) {
        for (const char* language : {"en", "de"}) {
            const fs::path folder = KorResources::folder() / "help" / language;
            const std::string text = bytesOf(folder / entry.path().filename());
            EXPECT_TRUE(mentions(text, "<title>")) << language << entry.path().filename();
            for (const std::smatch& match : matchesIn(text, link))
                EXPECT_TRUE(fs::exists(folder / match.str(1))) << entry.path() << " leads to " << match[1];
        }
        ++pages;
    }
    EXPECT_GE(pages, 16);
    std::vector<std::string> topics{"_Drawing_Style_Manager", "_korDisplayDetailStyles",
                                    "_KorDSMViewRequestDialog"};
    for (const auto& entry : fs::directory_iterator(SOURCE_DIR "/src/dialogs"))
        if (const std::string name = entry.path().stem().string();
            name.starts_with("KorDSMDialog") && name != "KorDSMDialog")
            topics.push_back("_" + name);
    EXPECT_GE(topics.size(), 15u);
    for (const std::string& topic : topics)
        EXPECT_FALSE(CKorHelp::pageOf(topic).empty()) << topic;
    std::set<std::string> titles;
    for (const CKorHelp::Topic& topic : CKorHelp::topics())
        EXPECT_TRUE(titles.insert(topic.title.toStdString()).second) << topic.title.view();
}
