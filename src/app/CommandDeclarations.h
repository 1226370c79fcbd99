#pragma once

#include "app/EditCommand.h"
#include "records/TableSchema.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <string>

/// What the command line asks for: the data folder, and what to do with it once it is open.
struct Wanted {
    std::string data;
    EditOptions edit;
    std::function<int(DataFolder&)> command;
    std::function<int(WindowStart&, DataFolder&)> window; ///< where neither is set the editor is opened
    const PictureOptions* picture = &edit.picture;        ///< of the window
    bool opensFolder = true;
    bool usesStandard = true; ///< a Standard that is not there is told
};

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

void addJson(CLI::App* command, bool& json);
/// KIND, NAME and --source. The help names the kinds that are meant; without a function all of them.
void addRow(CLI::App* command, RowOptions& row, const char* sourceHelp,
            const std::function<bool(const TableSchema&)>& isMeant = {});

/// The commands that change, make, copy, rename and delete records, and edit their lists.
void declareChanges(CLI::App& app, Wanted& wanted);
/// Those that look after databases on servers, and copy whole databases.
void declareServers(CLI::App& app, Wanted& wanted);
/// Commands that help does not list: packages and shells call them for the manual and for completion.
void declareMachinery(CLI::App& app, Wanted& wanted);
/// The versions of the program, of the schema and of the libraries, one a line.
std::string versionText();
