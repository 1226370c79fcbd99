#include "app/Manual.h"

#include "app/ArgumentTypes.h"
#include "app/ManualText.h"
#include "base/Translation.h"

#include <CLI/CLI.hpp>

namespace {

bool isHelp(const CLI::Option& option) {
    return option.get_name() == "--help" || option.get_name() == "--version";
}

std::string written(const CLI::Option& option) {
    const ArgumentType* type = argumentType(option);
    return type && !type->shown.empty() ? option.get_name() + " " + type->shown : option.get_name();
}

std::string inBrackets(const CLI::Option& option) {
    const bool isMore =
        option.get_expected_max() > 1 || option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
    const std::string text = written(option);
    return (option.get_required() ? text : "[" + text + "]") + (isMore ? "..." : "");
}

std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    std::vector<const CLI::App*> commands;
    for (const CLI::App* command : app.get_subcommands({}))
        if (!command->get_group().empty()) // others serve the program itself
            commands.push_back(command);
    return commands;
}

std::string fullName(const CLI::App& command) {
    const CLI::App* parent = command.get_parent();
    return parent && parent->get_parent() ? parent->get_name() + " " + command.get_name()
                                          : command.get_name();
}

// Commands that do something themselves, those of a group one by one.
std::vector<const CLI::App*> leavesOf(const CLI::App& app) {
    std::vector<const CLI::App*> leaves;
    for (const CLI::App* command : commandsOf(app)) {
        const std::vector<const CLI::App*> below = leavesOf(*command);
        if (below.empty())
            leaves.push_back(command);
        leaves.insert(leaves.end(), below.begin(), below.end());
    }
    return leaves;
}

void writeOptions(ManualText& page, const CLI::App& app, bool withHelp) {
    for (const CLI::Option* option : app.get_options())
        if (withHelp || !isHelp(*option))
            page.entry(written(*option), KorString(option->get_description()));
}

} // namespace

std::string Manual::synopsis(const CLI::App& command) {
    std::string text = fullName(command);
    for (const bool positional : {true, false})
        for (const CLI::Option* option : command.get_options())
            if (option->get_positional() == positional && !isHelp(*option))
                text += " " + inBrackets(*option);
    return text;
}

std::string Manual::programPage(const CLI::App& app) {
    ManualText page("DETAILSTYLES", 1, "detailstyles", translated("edit the styles of steel drawings"));
    page.section(translated("SYNOPSIS"));
    page.paragraph("detailstyles [--data DIR] [FILE]");
    page.paragraph(KorString::format("detailstyles [--data DIR] %s", {translated("COMMAND ARGUMENT...")}));
    page.section(translated("DESCRIPTION"));
    page.paragraph(app.get_description());
    page.paragraph(
        translated("Without a command the editor is opened. Sources are standard, user, and add-ins by their "
                   "folder or name. Values are read and shown as the editor shows them; of several records "
                   "with one name one is named by its key, as [KEY]."));
    page.section(translated("OPTIONS"));
    writeOptions(page, app, true);
    page.section(translated("COMMANDS"));
    for (const CLI::App* command : leavesOf(app)) {
        page.subsection(synopsis(*command));
        page.paragraph(command->get_description());
        writeOptions(page, *command, false);
    }
    page.section(translated("EXIT STATUS"));
    page.paragraph(app.get_footer());
    page.section(translated("ENVIRONMENT"));
    page.entry("LC_ALL, LC_MESSAGES, LANG",
               translated("The language of texts; the setting Language comes before them."));
    page.entry("XDG_DATA_HOME, XDG_DATA_DIRS",
               translated("Where the folder detailstyles with the databases is looked for."));
    page.entry("XDG_CONFIG_HOME", translated("Where the folder detailstyles with the settings is."));
    page.entry("DETAILSTYLES_RESOURCES", translated("Where the program's own files are, if not beside it."));
    page.section(translated("FILES"));
    page.entry("standard.dsdb", translated("The maker's detail styles, read-only."));
    page.entry("user.dsdb", translated("The user's own."));
    page.entry("addins/NAME/styles.dsdb",
               translated("Those of an add-in, read-only; addin.ini beside it names it."));
    page.section(translated("EXAMPLES"));
    page.example("detailstyles list --source user\n"
                 "detailstyles set detail-style \"HB beam 1:15\" title_position \"Below detail\"\n"
                 "detailstyles list --kind view-request --json | jq -r '.[].name'\n"
                 "detailstyles copy detail-style \"Column base\" \"Our base\" --dry-run");
    page.section(translated("SEE ALSO"));
    page.paragraph("dsdb(5)");
    return page.text();
}

std::string Manual::commandTable(const CLI::App& app) {
    const auto cell = [](std::string text) {
        for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2)
            text.insert(at, "\\");
        return text;
    };
    std::string table = "| command | what it does |\n|---|---|\n";
    for (const CLI::App* command : leavesOf(app))
        table += "| `" + cell(synopsis(*command)) + "` | " + cell(command->get_description()) + " |\n";
    return table;
}
