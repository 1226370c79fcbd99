#include "app/ArgumentTypes.h"
#include "app/CommandDeclarations.h"
#include "app/Commands.h"
#include "app/EntryList.h"
#include "base/Translation.h"
#include "data/RowClosure.h"
#include "session/KorDSMRecordCommands.h"

namespace {

constexpr const char* kSourceHelp = translatable("standard, user, or an add-in; by default user");

bool isMade(const TableSchema& table) {
    return KorDSMRecordCommands::isMade(table.type);
}

bool standsAlone(const TableSchema& table) {
    return !belongsToOthers(table);
}

void addHow(CLI::App* command, ChangeOptions& how, bool canBeShared) {
    if (canBeShared)
        command->add_flag("--shared", how.shared,
                          translatable("Change the record although several others use it"));
    command->add_flag("--dry-run", how.dryRun, translatable("Only say what would be done"));
    addJson(command, how.json);
}

void addSet(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<SetOptions>();
    CLI::App* command =
        addCommand(app, wanted, "set", translatable("Change one value of a record"), &setCommand, options);
    addRow(command, options->row, kSourceHelp);
    command->add_option("COLUMN", options->column, translatable("The column, as \"show\" names it"))
        ->required();
    command
        ->add_option(
            "VALUE", options->value,
            translatable("The value as it is shown: a length in the database's unit, a scale such as 1:15, "
                         "another record by its name, yes or no"))
        ->required();
    addHow(command, options->how, true);
}

void addNew(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<NewOptions>();
    CLI::App* command =
        addCommand(app, wanted, "new", translatable("Make a record with the defaults of its kind"),
                   &newCommand, options);
    addRow(command, options->row, kSourceHelp, &isMade);
    command->add_option("--in", options->group, translatable("The category or group in which it is filed"))
        ->check(refuseEmpty);
    command
        ->add_option("--value", options->values,
                     translatable("Set one of its values, as COLUMN=VALUE; can be repeated"))
        ->expected(1)
        ->take_all();
    addHow(command, options->how, false);
}

void addCopy(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<CopyOptions>();
    CLI::App* command = addCommand(app, wanted, "copy", translatable("Copy a record under a new name"),
                                   &copyCommand, options);
    addRow(command, options->row,
           translatable(
               "standard, user, or an add-in; by default the first of user, standard, add-ins that has it"),
           &standsAlone);
    command->add_option("NEWNAME", options->newName, translatable("The name of the copy"))->required();
    command->add_flag(
        "--deep", options->deep,
        translatable("Within one source: copy along all that it uses, so that the copy shares nothing"));
    command->add_option(
        "--to", options->to,
        translatable("Source of the copy, by default user; into another source comes all that "
                     "the record uses and that is not there yet"));
    addHow(command, options->how, false);
}

void addRename(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<RenameOptions>();
    CLI::App* command = addCommand(app, wanted, "rename", translatable("Give a record another name"),
                                   &renameCommand, options);
    addRow(command, options->row, kSourceHelp, &standsAlone);
    command->add_option("NEWNAME", options->newName, translatable("Its new name"))->required();
    addHow(command, options->how, true);
}

void addDelete(CLI::App& app, Wanted& wanted) {
    const auto options = std::make_shared<DeleteOptions>();
    CLI::App* command = addCommand(app, wanted, "delete", translatable("Delete a record that nothing uses"),
                                   &deleteCommand, options);
    addRow(command, options->row, kSourceHelp, &standsAlone);
    addHow(command, options->how, false);
}

CLI::App* addEntryCommand(CLI::App& entry, Wanted& wanted, const char* name, const char* help,
                          const std::shared_ptr<EntryOptions>& options) {
    CLI::App* command = addCommand(entry, wanted, name, help, &entryCommand, options);
    addRow(command, options->owner, kSourceHelp, &EntryList::isFor);
    if (options->action != eEntryAction::kAdd)
        command
            ->add_option("ENTRY", options->entry, translatable("Its place in the list, from 1, or its name"))
            ->required();
    addHow(command, options->how, true);
    return command;
}

void addEntry(CLI::App& app, Wanted& wanted) {
    const auto optionsFor = [](eEntryAction action) {
        auto options = std::make_shared<EntryOptions>();
        options->action = action;
        return options;
    };
    CLI::App* entry = app.add_subcommand(
        "entry", translatable("Edit the list of a record: entries of a map, qualifiers of a set, dimensions, "
                              "views of a detail style, categories of a view"));
    entry->require_subcommand(1);
    entry->fallthrough();

    auto options = optionsFor(eEntryAction::kAdd);
    CLI::App* add =
        addEntryCommand(*entry, wanted, "add", translatable("Put an entry into the list"), options);
    add->add_option(
           "--value", options->values,
           translatable("Set one of its values, as COLUMN=VALUE, or as VALUE of its first column; can "
                        "be repeated"))
        ->expected(1)
        ->take_all();
    add->add_option("--at", options->place, translatable("Its place, from 1; by default the end"))
        ->check(refuseEmpty);

    addEntryCommand(*entry, wanted, "remove", translatable("Take an entry out of the list"),
                    optionsFor(eEntryAction::kRemove));

    options = optionsFor(eEntryAction::kMove);
    CLI::App* move =
        addEntryCommand(*entry, wanted, "move", translatable("Move an entry to another place"), options);
    move->add_option("PLACE", options->place, translatable("The place that it is to have, from 1"))
        ->required();

    options = optionsFor(eEntryAction::kSet);
    CLI::App* set =
        addEntryCommand(*entry, wanted, "set", translatable("Change one value of an entry"), options);
    set->add_option("COLUMN", options->column, translatable("The column, as \"show\" names it"))->required();
    set->add_option("VALUE", options->value, translatable("The value, as \"set\" takes it"))->required();
}

} // namespace

void declareChanges(CLI::App& app, Wanted& wanted) {
    addSet(app, wanted);
    addNew(app, wanted);
    addCopy(app, wanted);
    addRename(app, wanted);
    addDelete(app, wanted);
    addEntry(app, wanted);
}
