#include "app/Completion.h"

#include "app/ArgumentTypes.h"
#include "app/StoredNames.h"
#include "records/TableSchema.h"
#include "services/KorResources.h"
#include "session/KorDSMSampleParts.h"
#include "session/KorDSMValueText.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace {

/// Where in the command line the last word stands.
struct Place {
    const CLI::App* command = nullptr;
    const CLI::Option* argument = nullptr; ///< whose value it is; null where there is none
    std::vector<std::string> values;       ///< of the positional arguments before
    std::string data;                      ///< value of --data
    std::string source;                    ///< and of --source

    /// The value of the positional argument of this name, or empty.
    std::string valueOf(const std::string& name) const {
        std::size_t number = 0;
        for (const CLI::Option* option : command->get_options())
            if (option->get_positional() && number < values.size()) {
                if (option->get_name() == name)
                    return values[number];
                ++number;
            }
        return {};
    }
};

// In the command, or in those that it belongs to.
const CLI::Option* findOption(const CLI::App* command, const std::string& name) {
    for (; command; command = command->get_parent())
        if (const CLI::Option* option = command->get_option_no_throw(name))
            return option;
    return nullptr;
}

const CLI::App* findCommand(const CLI::App& app, const std::string& name) {
    const std::vector<const CLI::App*> commands = app.get_subcommands({});
    const auto found = std::ranges::find(commands, name, [](const CLI::App* c) { return c->get_name(); });
    return found == commands.end() ? nullptr : *found;
}

const CLI::Option* positional(const CLI::App& command, std::size_t number) {
    const CLI::Option* last = nullptr;
    for (const CLI::Option* option : command.get_options())
        if (option->get_positional()) {
            last = option;
            if (number-- == 0)
                return option;
        }
    return last && last->get_items_expected_max() > 1 ? last : nullptr; // such as several files
}

Place placeIn(const CLI::App& app, const std::vector<std::string>& words) {
    Place place;
    place.command = &app;
    for (std::size_t i = 1; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (word.starts_with("-")) {
            const std::string name = word.substr(0, word.find('='));
            const CLI::Option* option = findOption(place.command, name);
            if (!option || !argumentType(*option))
                continue;
            const bool isNext = name == word;
            if (isNext && ++i + 1 == words.size()) {
                place.argument = option;
                return place;
            }
            const std::string value = isNext ? words[i] : word.substr(name.size() + 1);
            if (name == "--data" || name == "--source")
                (name == "--data" ? place.data : place.source) = value;
        } else if (const CLI::App* command =
                       place.values.empty() ? findCommand(*place.command, word) : nullptr) {
            place.command = command;
        } else {
            place.values.push_back(word);
        }
    }
    place.argument = positional(*place.command, place.values.size());
    return place;
}

// The table whose columns the arguments mean: for entries of a list that of the parts.
const TableSchema* tableOf(const Place& place) {
    const TableSchema* table = findTable(place.valueOf("KIND"));
    if (table && place.command->get_parent()->get_name() == "entry")
        for (const TableSchema& parts : allTables())
            for (const Column& column : parts.columns)
                if (column.role == eReferenceRole::kPartOf && column.target == table->type)
                    return &parts;
    return table;
}

struct ColumnOfTable {
    const TableSchema* table;
    const Column* column;
};

// "set" takes those, too, by which another row files the record.
std::vector<ColumnOfTable> columnsIn(const Place& place) {
    const TableSchema* table = tableOf(place);
    std::vector<ColumnOfTable> columns;
    if (!table)
        return columns;
    for (const Column& column : table->columns)
        columns.push_back({table, &column});
    if (place.command->get_name() != "set" || place.command->get_parent()->get_name() == "entry")
        return columns;
    for (const TableSchema& other : allTables())
        if (std::ranges::any_of(other.columns, [table](const Column& column) {
                return column.role == eReferenceRole::kIdentifies && column.target == table->type;
            }))
            for (const Column& column : other.columns)
                if (column.role == eReferenceRole::kFiledUnder)
                    columns.push_back({&other, &column});
    return columns;
}

using Names = std::vector<std::string>;

Names columnsOf(const Place& place, const char* behind) {
    Names names;
    for (const auto& [table, column] : columnsIn(place))
        names.push_back(column->name + behind + "\t" + table->columnName(*column));
    return names;
}

Names kinds() {
    Names names;
    for (const TableSchema& table : allTables())
        names.push_back(table.kindName() + "\t" + table.rowName());
    return names;
}

Names wordsIn(const std::string& choice) {
    Names words;
    for (std::size_t from = 0; from <= choice.size();) {
        const std::size_t to = std::min(choice.find('|', from), choice.size());
        words.push_back(choice.substr(from, to - from));
        from = to + 1;
    }
    return words;
}

Names valuesOf(const Place& place, const std::string& columnName) {
    const std::vector<ColumnOfTable> columns = columnsIn(place);
    const auto found =
        std::ranges::find(columns, columnName, [](const auto& each) { return each.column->name; });
    if (found == columns.end())
        return {};
    if (found->column->isReference())
        return StoredNames(place.data).records(*findTable(found->column->target), place.source);
    Names words;
    for (const KorString& name : KorDSMValueText::valueNames(*found->table, *found->column))
        words.push_back(name.toStdString());
    return words;
}

Names assignments(const Place& place, const std::string& typed) {
    const std::size_t equals = typed.find('=');
    if (equals == std::string::npos)
        return columnsOf(place, "=");
    Names values = valuesOf(place, typed.substr(0, equals));
    for (std::string& value : values)
        value.insert(0, typed, 0, equals + 1);
    return values;
}

Names valuesFor(const Place& place, const ArgumentType& type, const std::string& typed) {
    const StoredNames stored(place.data);
    switch (type.what) {
    case eArgument::kText:
        return {};
    case eArgument::kKind:
        return kinds();
    case eArgument::kRecord:
        if (const TableSchema* table = findTable(place.valueOf("KIND")))
            return stored.records(*table, place.source);
        return {};
    case eArgument::kColumn:
        return columnsOf(place, "");
    case eArgument::kValue:
        return valuesOf(place, place.valueOf("COLUMN"));
    case eArgument::kAssignment:
        return assignments(place, typed);
    case eArgument::kSource:
        return stored.sources();
    case eArgument::kStyle:
        return stored.records(*findTable(kTableDetailStyle), place.source);
    case eArgument::kView:
        return stored.records(*findTable(kTableViewRequest), place.source);
    case eArgument::kPart:
        return KorDSMSampleParts(KorResources::folder() / "parts").names();
    case eArgument::kFile:
        return {"\tfiles"};
    case eArgument::kFolder:
        return {"\tfolders"};
    case eArgument::kWord:
        return wordsIn(type.shown);
    }
    return {};
}

Names optionsOf(const CLI::App* command) {
    Names names;
    for (; command; command = command->get_parent())
        for (const CLI::Option* option : command->get_options())
            if (!option->get_positional() && (option->get_name() != "--help" || !command->get_parent()))
                names.push_back(option->get_name() + "\t" + option->get_description());
    return names;
}

Names commandsOf(const CLI::App& app) {
    Names names;
    for (const CLI::App* command : app.get_subcommands({}))
        if (!command->get_group().empty())
            names.push_back(command->get_name() + "\t" + command->get_description());
    return names;
}

} // namespace

std::vector<std::string> Completion::wordsOf(const std::string& line) {
    std::vector<std::string> words;
    std::optional<std::string> word;
    char quote = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quote == 0 && (c == ' ' || c == '\t')) {
            if (word)
                words.push_back(*std::exchange(word, std::nullopt));
            continue;
        }
        std::string& current = word ? *word : word.emplace();
        if (c == quote)
            quote = 0;
        else if (quote == 0 && (c == '"' || c == '\''))
            quote = c;
        else if (c == '\\' && quote != '\'' && i + 1 < line.size())
            current += line[++i];
        else if (c == '~' && quote == 0 && current.empty() && std::getenv("HOME"))
            current += std::getenv("HOME");
        else
            current += c;
    }
    words.push_back(word.value_or(""));
    return words;
}

std::string Completion::candidates(const CLI::App& app, const std::string& line) {
    const std::vector<std::string> words = wordsOf(line);
    const std::string& typed = words.back();
    const Place place = placeIn(app, words);
    const bool isValue = place.argument && !place.argument->get_positional();
    Names names;
    if (!isValue && typed.starts_with("-")) {
        names = optionsOf(place.command);
    } else {
        if (!isValue && place.values.empty())
            names = commandsOf(*place.command);
        if (place.argument)
            std::ranges::move(valuesFor(place, *argumentType(*place.argument), typed),
                              std::back_inserter(names));
    }
    std::string text;
    for (const std::string& name : names)
        if (name.starts_with(typed) || name.starts_with("\t"))
            text += name + "\n";
    return text;
}
