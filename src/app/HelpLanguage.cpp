#include "app/HelpLanguage.h"

#include "base/Translation.h"

#include <CLI/CLI.hpp>

#include <regex>

namespace {

// What the library words itself: headings, marks, its own two options, ...
constexpr const char* kLabels[] = {
    translatable("Usage"),
    translatable("OPTIONS"),
    translatable("SUBCOMMAND"),
    translatable("Positionals"),
    translatable("Options"),
    translatable("Subcommands"),
    translatable("TEXT"),
    translatable("REQUIRED"),
    translatable("Needs"),
    translatable("Print this help message and exit"),
    translatable("Display program version information and exit"),
};
// ... and the faults that this command line can meet.
constexpr const char* kFaults[] = {
    translatable("The following argument was not expected: %s"),
    translatable("The following arguments were not expected: %s"),
    translatable("%s: %s required %s missing"),
    translatable("%s: At Most %s required but received %s"),
    translatable("%s is required"),
    translatable("%s requires %s"),
    translatable("Could not convert: %s = %s"),
};

KorString inLanguage(const std::string& fault) {
    for (const char* pattern : kFaults) {
        const KorString expression = KorString(pattern).replaced("%s", R"(([\s\S]*))");
        std::smatch found;
        if (std::regex_match(fault, found, std::regex(expression.toStdString())))
            return KorString::format(translated(pattern), {found.str(1), found.str(2), found.str(3)});
    }
    return KorString(fault);
}

std::string sentencesOf(const CLI::App*, const CLI::Error& fault) {
    const KorString advice = translated("Run with --help for more information.");
    return KorString::format("%s\n%s\n", {inLanguage(fault.what()), advice}).toStdString();
}

} // namespace

void putIntoLanguage(CLI::App& app) {
    for (const char* label : kLabels)
        app.get_formatter()->label(label, translated(label).toStdString());
    app.failure_message(&sentencesOf);
    app.description(translated(app.get_description()).toStdString());
    app.group(translated(app.get_group()).toStdString());
    app.footer(translated(app.get_footer()).toStdString());
    for (CLI::Option* option : app.get_options()) {
        option->description(translated(option->get_description()).toStdString());
        option->group(translated(option->get_group()).toStdString());
    }
    for (CLI::App* command : app.get_subcommands({}))
        putIntoLanguage(*command);
}
