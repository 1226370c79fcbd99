#include "app/CommandLine.h"

#include "app/Console.h"
#include "app/EditCommand.h"
#include "app/ProgramStart.h"
#include "base/Utf8.h"
#include "services/KorHostReport.h"
#include "shell/DataFolder.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

/// What the command line asks for: the data folder, and what to do with it once it is open.
struct Wanted {
    std::string data;
    EditOptions edit;
    std::function<int(DataFolder&)> command;
    bool opensFolder = true;
};

std::string kindList() {
    std::string text = "KIND is one of:";
    std::size_t column = 200;
    for (const TableSchema& table : allTables()) {
        const std::string name = table.kindName();
        column += name.size() + 1;
        if (column > 78) {
            text += "\n ";
            column = name.size() + 2;
        }
        text += " " + name;
    }
    return text;
}

/// A command with options of its own, which live as long as the command line is read.
template <typename Options>
CLI::App* addCommand(CLI::App& app, Wanted& wanted, const char* name, const char* help,
                     int (*run)(DataFolder&, const Options&), std::shared_ptr<Options> options) {
    CLI::App* command = app.add_subcommand(name, help);
    command->callback([&wanted, run, options] {
        wanted.command = [run, options](DataFolder& folder) { return run(folder, *options); };
    });
    return command;
}

void addJson(CLI::App* command, bool& json) {
    command->add_flag("--json", json, "Print JSON for other programs");
}

void addRow(CLI::App* command, RowOptions& row, const char* sourceHelp) {
    command->add_option("KIND", row.kind, "What the record is, such as detail-style or view-request")
        ->required();
    command->add_option("NAME", row.name, "Its name, or its key as [KEY] where it has none")->required();
    command->add_option("--source", row.source, sourceHelp);
    command->footer(kindList());
}

void addEdit(CLI::App& app, Wanted& wanted) {
    CLI::App* command = app.add_subcommand("edit", "Open the editor (the default)");
    CLI::Option* style =
        command->add_option("--style", wanted.edit.style.name, "Open with this detail style selected");
    command
        ->add_option("--source", wanted.edit.style.source, "Where the style is: standard, user, or an add-in")
        ->needs(style);
    auto* screenshot = command->add_option("--screenshot", wanted.edit.screenshot,
                                           "Paint the open editor into this PNG file instead");
    command->add_option("--size", wanted.edit.size, "Size of the picture in pixels, such as 1280x800")
        ->needs(screenshot)
        ->check([](const std::string& size) {
            int width = 0;
            int height = 0;
            char rest = 0;
            const bool read = std::sscanf(size.c_str(), "%dx%d%c", &width, &height, &rest) == 2;
            return read && width > 0 && height > 0 ? std::string() : "must be WIDTHxHEIGHT, such as 1280x800";
        });
}

void addList(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ListOptions>();
    CLI::App* command = addCommand(app, wanted, "list", "List records", &listCommand, options);
    command->add_option("--source", options->source, "standard, user, or an add-in; all of them without");
    command->add_option("--kind", options->kind, "Which records")->capture_default_str();
    command->footer(kindList());
    addJson(command, options->json);
}

void addShow(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App* command =
        addCommand(app, wanted, "show", "Show one record with all its values", &showCommand, options);
    addRow(command, options->row,
           "standard, user, or an add-in; the first of user, standard, add-ins that has it without");
    addJson(command, options->json);
}

void addSet(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<SetOptions>();
    CLI::App* command = addCommand(app, wanted, "set", "Change one value of a record", &setCommand, options);
    addRow(command, options->row, "user without");
    command->add_option("COLUMN", options->column, "The column, as \"show\" names it")->required();
    command
        ->add_option("VALUE", options->value,
                     "The value as it is shown: a length in the database's unit, another record by its name, "
                     "yes or no")
        ->required();
    command->add_flag("--shared", options->shared, "Change the record although several others use it");
}

void addExport(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* command = addCommand(app, wanted, "export", "Export a detail style into a file of its own",
                                   &exportCommand, options);
    command->add_option("STYLE", options->row.name, "Name of the detail style")->required();
    command->add_option("FILE", options->file, "Database file to make")->required();
    command->add_option("--source", options->row.source, "standard, user, or an add-in");
    command->add_flag("--overwrite", options->overwrite, "Replace the file where there is one");
}

void addImport(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App* command =
        addCommand(app, wanted, "import", "Import the detail styles of a file into the User database",
                   &importCommand, options);
    command->add_option("FILE", options->file, "File that was exported")->required();
    addJson(command, options->json);
}

void addCheck(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* command =
        addCommand(app, wanted, "check", "Look for damage, dangling references and unused records",
                   &checkCommand, options);
    command->add_option("FILE", options->files, "Database files; those of the data folder without");
    command->parse_complete_callback([&wanted, options] { wanted.opensFolder = options->files.empty(); });
    addJson(command, options->json);
}

void addSamples(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<SamplesOptions>();
    CLI::App* command = addCommand(app, wanted, "samples", "Build the sample databases where they are absent",
                                   &samplesCommand, options);
    command->add_option("DIR", options->folder, "Folder to build them in; the data folder without");
    command->parse_complete_callback([&wanted] { wanted.opensFolder = false; });
}

void declare(CLI::App& app, Wanted& wanted) {
    app.description("Manages the detail styles of steel drawings in their databases.");
    app.set_version_flag("--version", std::string(DETAILSTYLES_VERSION));
    app.add_option("--data", wanted.data,
                   "Folder with the style databases; the desktop's data folders without")
        ->take_last();
    app.require_subcommand(0, 1);
    app.fallthrough();
    app.footer("Exit codes: 0 done, 1 could not or found something, 2 wrong usage.");
    addEdit(app, wanted);
    addList(app, wanted);
    addShow(app, wanted);
    addSet(app, wanted);
    addExport(app, wanted);
    addImport(app, wanted);
    addCheck(app, wanted);
    addSamples(app, wanted);
}

bool areTextsClean(int argc, char** argv) {
    return std::all_of(argv, argv + argc, [](const char* text) { return isCleanUtf8(text); });
}

int run(char** argv, const Wanted& wanted) {
    startServices();
    DataFolder folder(DataFolder::locate(wanted.data));
    if (wanted.opensFolder)
        folder.open();
    else
        folder.takeReports();
    std::ranges::for_each(folder.problems(), &Console::complain);
    const int code = wanted.command ? wanted.command(folder) : openEditor(argv, folder, wanted.edit);
    std::ranges::for_each(KorHostReport::take(), &Console::complain);
    return code;
}

} // namespace

int runCommandLine(int argc, char** argv) {
    CLI::App app;
    Wanted wanted;
    declare(app, wanted);
    if (!areTextsClean(argc, argv)) {
        Console::complain("The command line is no UTF-8 text; set the terminal to UTF-8.");
        return kExitUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitDone : kExitUsage;
    }
    return run(argv, wanted);
}
