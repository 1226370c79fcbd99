#include "app/CommandLine.h"

#include "app/ArgumentTypes.h"
#include "app/CommandDeclarations.h"
#include "app/CommitReport.h"
#include "app/Console.h"
#include "app/DesktopKeyring.h"
#include "app/HelpLanguage.h"
#include "app/ProgramStart.h"
#include "app/RequestCommand.h"
#include "app/SourceChoice.h"
#include "app/WordLists.h"
#include "app/WrongUsage.h"
#include "base/Translation.h"
#include "base/Utf8.h"
#include "data/store/DatabaseName.h"
#include "data/store/LockWait.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "session/DataFolder.h"
#include "session/KorDSMSampleParts.h"
#include "shell/DataFolderPlace.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>

void addJson(CLI::App* command, bool& json) {
    command->add_flag("--json", json, translatable("Print JSON for other programs"));
}

void addRow(CLI::App* command, RowOptions& row, const char* sourceHelp,
            const std::function<bool(const TableSchema&)>& isMeant) {
    command
        ->add_option("KIND", row.kind,
                     translatable("What the record is, such as detail-style or view-request"))
        ->required();
    command->add_option("NAME", row.name, translatable("Its name, or its key as [KEY] where it has none"))
        ->required();
    command->add_option("--source", row.source, sourceHelp);
    command->footer(WordLists::kinds(isMeant));
}

namespace {

void addPicture(CLI::App* command, PictureOptions& picture, const char* help) {
    auto* screenshot = command->add_option("--screenshot", picture.file, help)->check(refuseEmpty);
    command->add_flag("--overwrite", picture.overwrite, translatable("Replace the file where there is one"))
        ->needs(screenshot);
    command
        ->add_option("--size", picture.size, translatable("Size of the picture in pixels, such as 1280x800"))
        ->needs(screenshot)
        ->check([](const std::string& size) {
            int width = 0;
            int height = 0;
            char rest = 0;
            const bool read = std::sscanf(size.c_str(), "%dx%d%c", &width, &height, &rest) == 2;
            constexpr int kMost = 8000; // more would not fit into memory on a screen of high resolution
            return read && std::clamp(width, 1, kMost) == width && std::clamp(height, 1, kMost) == height
                       ? std::string()
                       : translated("must be WIDTHxHEIGHT, such as 1280x800, and 8000x8000 at most")
                             .toStdString();
        });
}

// A mistyped command is no file.
void refuseUnlessFile(const std::string& text) {
    std::error_code error;
    if (text.find_first_of("./") == std::string::npos && !std::filesystem::exists(text, error))
        throw CLI::ExtrasError({text});
}

void addFile(CLI::App& command, Wanted& wanted) {
    command
        .add_option("FILE", wanted.edit.file,
                    translatable("A style database to show beside the others, to look at and to copy from"))
        ->check([](const std::string& text) {
            refuseUnlessFile(text);
            return refuseEmpty(text);
        });
}

void addEdit(CLI::App& app, Wanted& wanted) {
    CLI::App* command = app.add_subcommand("edit", translatable("Open the editor (the default)"));
    addFile(*command, wanted);
    // Without a command the file is the program's own argument; what another command has too much is none.
    addFile(app, wanted);
    app.callback([&app, command, &wanted] {
        if (!wanted.edit.file.empty() && !app.get_subcommands().empty() && !command->parsed())
            throw CLI::ExtrasError({wanted.edit.file});
    });
    CLI::Option* style = command
                             ->add_option("--style", wanted.edit.style.name,
                                          translatable("Open with this detail style selected"))
                             ->check(refuseEmpty);
    command
        ->add_option("--source", wanted.edit.style.source,
                     translatable("Where the style is: standard, user, or an add-in"))
        ->needs(style);
    addPicture(command, wanted.edit.picture,
               translatable("Paint the open editor into this PNG file instead"));
}

void addRequest(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<RequestOptions>();
    CLI::App* command = app.add_subcommand(
        "request", translatable("Choose a view request in a dialog and print its key and source"));
    command->callback([&wanted, options] {
        wanted.window = [options](WindowStart& start, DataFolder& folder) {
            return chooseRequest(start, folder, *options);
        };
        wanted.picture = &options->picture;
    });
    command
        ->add_option("--key", options->key, translatable("Open with the view request of this key selected"))
        ->check([](const std::string& text) {
            int key = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), key);
            return error == std::errc() && end == text.data() + text.size() && key > 0
                       ? std::string()
                       : translated("must be the key of a view request, such as 12").toStdString();
        });
    command
        ->add_option("--source", options->source,
                     translatable("Choose in this source alone: standard, user, or an add-in"))
        ->check(refuseEmpty);
    addPicture(command, options->picture, translatable("Paint the open dialog into this PNG file instead"));
    addJson(command, options->json);
}

void addList(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ListOptions>();
    CLI::App* command = addCommand(app, wanted, "list", translatable("List records"), &listCommand, options);
    command->add_option("--source", options->source,
                        translatable("standard, user, or an add-in; by default all of them"));
    command->add_option("--kind", options->kind, translatable("Which records"))->capture_default_str();
    command->footer(WordLists::kindsWithCaptions());
    addJson(command, options->json);
}

void addShow(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App* command = addCommand(app, wanted, "show", translatable("Show one record with all its values"),
                                   &showCommand, options);
    addRow(command, options->row,
           translatable(
               "standard, user, or an add-in; by default the first of user, standard, add-ins that has it"));
    addJson(command, options->json);
}

void addExport(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App* command =
        addCommand(app, wanted, "export", translatable("Export detail styles into a file of their own"),
                   &exportCommand, options);
    command->add_option("STYLE", options->style, translatable("Name of the detail style"))->required();
    command->add_option("FILE", options->file, translatable("Database file to make"))
        ->required()
        ->check(refuseEmpty);
    command
        ->add_option("--also", options->others,
                     translatable("Another detail style for the same file; can be repeated"))
        ->expected(1)
        ->take_all()
        ->check(refuseEmpty);
    command->add_option("--source", options->source, translatable("standard, user, or an add-in"));
    command->add_flag("--overwrite", options->overwrite, translatable("Replace the file where there is one"));
}

void addDrawing(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<DrawingOptions>();
    CLI::App* command = addCommand(app, wanted, "picture",
                                   translatable("Draw a sample part as a detail style says, schematically"),
                                   &pictureCommand, options);
    command->add_option("STYLE", options->row.name, translatable("Name of the detail style"))->required();
    command
        ->add_option("--out", options->file,
                     translatable("File to make, with a name that ends in .svg, .png or .pdf"))
        ->required()
        ->check(refuseEmpty);
    const std::vector<std::string> parts = KorDSMSampleParts(KorResources::folder() / "parts").names();
    if (!parts.empty())
        command->footer(WordLists::of(translated("PART is one of:"), parts));
    command
        ->add_option("--part", options->part,
                     translatable("Name of the sample part; by default the one that suits the style"))
        ->check(refuseEmpty);
    command
        ->add_option("--view", options->view,
                     translatable("Name of the one view of the style that is wanted; by default all"))
        ->check(refuseEmpty);
    command
        ->add_option(
            "--highlight", options->highlight,
            translatable("Point out what a column of a record governs: its kind, its name, the column"))
        ->type_size(3)
        ->expected(1);
    command->add_flag("--sheet", options->sheet,
                      translatable("With the views and their scales, and what the style says in words"));
    command->add_option("--source", options->row.source, translatable("standard, user, or an add-in"));
    command->add_flag("--overwrite", options->overwrite, translatable("Replace the file where there is one"));
    addJson(command, options->json);
}

void addImport(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App* command = addCommand(app, wanted, "import", translatable("Import detail styles of a file"),
                                   &importCommand, options);
    command->add_option("FILE", options->file, translatable("File that was exported"))->required();
    command
        ->add_option("--style", options->styles,
                     translatable("Import this detail style alone; can be repeated"))
        ->expected(1)
        ->take_all()
        ->check(refuseEmpty);
    command->add_option("--to", options->to,
                        translatable("Where they come: standard, user, or an add-in; by default user"));
    command
        ->add_option(
            "--same-name", options->sameName,
            translatable("What is done with a record whose name another one has there: both, mine or "
                         "replace; by default both are kept"))
        ->check([](const std::string& word) {
            return word == "both" || word == "mine" || word == "replace"
                       ? std::string()
                       : translated("must be both, mine or replace").toStdString();
        });
    command->add_flag("--dry-run", options->dryRun, translatable("Only say what would be done"));
    addJson(command, options->json);
}

void addCheck(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* command = addCommand(app, wanted, "check",
                                   translatable("Look for damage, dangling references and unused records"),
                                   &checkCommand, options);
    command->add_option("FILE", options->files,
                        translatable("Database files; by default those of the data folder"));
    command->parse_complete_callback([&wanted, options] { wanted.opensFolder = options->files.empty(); });
    addJson(command, options->json);
}

void addCompact(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<CompactOptions>();
    CLI::App* command = addCommand(app, wanted, "compact",
                                   translatable("Remove the parts of records that do not exist any more"),
                                   &compactCommand, options);
    command->add_option("--source", options->source,
                        translatable("standard, user, or an add-in; by default user"));
    command->add_flag("--dry-run", options->dryRun, translatable("Only say what would be removed"));
}

void addSamples(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<SamplesOptions>();
    CLI::App* command =
        addCommand(app, wanted, "samples", translatable("Build the sample databases where they are absent"),
                   &samplesCommand, options);
    command->add_option("DIR", options->folder,
                        translatable("Folder to build them in; by default the data folder"));
    command->parse_complete_callback([&wanted] { wanted.opensFolder = false; });
}

void declare(CLI::App& app, Wanted& wanted) {
    app.description(translatable("Manages the detail styles of steel drawings in their databases."));
    app.set_version_flag("--version", &versionText);
    app.add_option("--data", wanted.data,
                   translatable("Folder with the style databases; by default the desktop's data folders"))
        ->take_last();
    app.require_subcommand(0, 1);
    app.fallthrough();
    app.footer(translatable("Exit codes: 0 done, 1 could not, or a database could not be read whole, or "
                            "check found more than notes, 2 wrong usage."));
    addEdit(app, wanted);
    addRequest(app, wanted);
    addList(app, wanted);
    addShow(app, wanted);
    declareChanges(app, wanted);
    addExport(app, wanted);
    addDrawing(app, wanted);
    addImport(app, wanted);
    addCheck(app, wanted);
    addCompact(app, wanted);
    addSamples(app, wanted);
    declareServers(app, wanted);
    declareMachinery(app, wanted);
    nameArguments(app);
}

bool areTextsClean(int argc, char** argv) {
    return std::all_of(argv, argv + argc, [](const char* text) { return isCleanUtf8(text); });
}

// Says once of each database that is waited for that it is.
LockWait::Ask tellOfLocks() {
    return [told = std::set<std::string>()](const std::string& file,
                                            std::chrono::milliseconds waited) mutable {
        if (waited >= LockWait::kWordless && told.insert(file).second)
            Console::complain(KorString::format(
                isServerName(file)
                    ? translated("Waiting for an answer of \"%s\"; Ctrl+C gives up.")
                    : translated("Waiting for \"%s\", which another program has locked; Ctrl+C gives up."),
                {file}));
        return true;
    };
}

// Who names other sources alone does not miss the Standard.
bool mayUseStandard(const CLI::App& app) {
    const CLI::App* command = &app;
    while (!command->get_subcommands().empty())
        command = command->get_subcommands().front();
    const auto isStandard = [command](const char* name) {
        const CLI::Option* option = command->get_option_no_throw(name);
        return option && option->count() > 0 &&
               KorString(option->results().back()).lowered() == SourceChoice::nameOf(SourceId::standard());
    };
    const CLI::Option* source = command->get_option_no_throw("--source");
    return !source || source->count() == 0 || isStandard("--source") || isStandard("--to");
}

int run(char** argv, const Wanted& wanted) {
    LockWait::setAsk(tellOfLocks());
    KorDSMPasswords::current().setKeyring(std::make_unique<DesktopKeyring>());
    DataFolder folder(locateDataFolder(wanted.data));
    WindowStart start(argv);
    const bool opensWindow = wanted.opensFolder && !wanted.command && wanted.picture->file.empty();
    if (opensWindow && !wanted.window && leaveToAnother(start, folder, wanted.edit))
        return Console::finish() ? kExitDone : kExitFailed;
    if (opensWindow)
        start.open(folder);
    else if (wanted.opensFolder)
        folder.open();
    else
        folder.takeReports();
    for (const KorString& problem : folder.problems())
        if (!wanted.command || wanted.usesStandard || problem != folder.noStandard())
            Console::complain(problem);
    const int code = wanted.command  ? judgedAnew([&] { return wanted.command(folder); })
                     : wanted.window ? wanted.window(start, folder)
                                     : openEditor(start, folder, wanted.edit);
    std::ranges::for_each(KorHostReport::take(), &Console::complain);
    return Console::finish() ? code : kExitFailed;
}

} // namespace

int runCommandLine(int argc, char** argv) {
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow is an error like a full disk
    startServices();
    CLI::App app;
    Wanted wanted;
    declare(app, wanted);
    putIntoLanguage(app);
    if (!areTextsClean(argc, argv)) {
        Console::complain(translated("The command line is no UTF-8 text; set the terminal to UTF-8."));
        return kExitUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream text;
        if (const KorString wrong = wrongUsage(app, {argv + 1, argv + argc}, error); !wrong.isEmpty()) {
            Console::complain(wrong);
            return kExitUsage;
        }
        const int code = app.exit(error, text, std::cerr) == 0 ? kExitDone : kExitUsage;
        Console::sayAsItIs(text.str());
        return Console::finish() ? code : kExitFailed;
    }
    wanted.usesStandard = mayUseStandard(app);
    return run(argv, wanted);
}
