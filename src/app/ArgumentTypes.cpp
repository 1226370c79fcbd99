#include "app/ArgumentTypes.h"

#include "base/Translation.h"

#include <CLI/CLI.hpp>

namespace {

const std::vector<ArgumentType>& types() {
    static const std::vector<ArgumentType> list = {
        {"KIND", "", eArgument::kKind},
        {"NAME", "", eArgument::kRecord},
        {"STYLE", "", eArgument::kStyle},
        {"COLUMN", "", eArgument::kColumn},
        {"VALUE", "", eArgument::kValue},
        {"FILE", "", eArgument::kFile},
        {"DIR", "", eArgument::kFolder},
        {"FROM", "", eArgument::kFile},
        {"TO", "", eArgument::kFile},
        {"WHERE", ""},
        {"NEWNAME", ""},
        {"ENTRY", ""},
        {"PLACE", ""},
        {"--data", "DIR", eArgument::kFolder},
        {"--source", "SOURCE", eArgument::kSource},
        {"--to", "SOURCE", eArgument::kSource},
        {"--kind", "KIND", eArgument::kKind},
        {"--style", "STYLE", eArgument::kStyle},
        {"--also", "STYLE", eArgument::kStyle},
        {"--view", "VIEW", eArgument::kView},
        {"--part", "PART", eArgument::kPart},
        {"--in", "GROUP"},
        {"--value", "COLUMN=VALUE", eArgument::kAssignment},
        {"--same-name", "both|mine|replace", eArgument::kWord},
        {"--out", "FILE", eArgument::kFile},
        {"--screenshot", "FILE", eArgument::kFile},
        {"--size", "WxH"},
        {"--highlight", "KIND NAME COLUMN"},
        {"--key", "KEY"},
        {"--at", "PLACE"},
    };
    return list;
}

} // namespace

const ArgumentType* argumentType(const CLI::Option& option) {
    static const ArgumentType text{"", "TEXT"};
    if (option.get_items_expected_max() == 0)
        return nullptr;
    const auto found = std::find_if(types().begin(), types().end(), [&option](const ArgumentType& type) {
        return type.name == option.get_name();
    });
    return found == types().end() ? &text : &*found;
}

std::string refuseEmpty(const std::string& text) {
    return text.empty() ? translated("must not be empty").toStdString() : std::string();
}

void nameArguments(CLI::App& app) {
    for (CLI::Option* option : app.get_options())
        if (const ArgumentType* type = argumentType(*option)) {
            option->type_name(type->shown);
            if (type->what == eArgument::kFolder || type->what == eArgument::kSource)
                option->check(refuseEmpty);
        }
    for (CLI::App* command : app.get_subcommands({}))
        nameArguments(*command);
}
