#include "Options.h"

#include <cstdlib>

#include <CLI/CLI.hpp>

#include "Report.h"

namespace backendcheck {

namespace {

constexpr const char* about =
    "Loads a back-end plug-in as a host would, and says what is right and wrong with it.\n"
    "The plug-in is tried in processes of its own, in an empty folder that is removed afterwards.\n"
    "Exit code: 0 good, 1 something is wrong, 2 it cannot be checked.\n";

std::pair<std::string, std::string> propertyOf(const std::string& setting) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CLI::ValidationError("--set", "\"" + setting + "\" is not PROPERTY=VALUE");
    }
    return {setting.substr(0, equals), setting.substr(equals + 1)};
}

} // namespace

Options optionsOf(int count, char** arguments) {
    Options options;
    std::vector<std::string> settings;
    constexpr int maxTimeout = 3600;

    CLI::App app(about);
    app.name("zol-backend-check");
    app.allow_windows_style_options(false); // "/folder" is a folder
    app.set_version_flag("--version", ZOL_VERSION);
    app.add_option("name", options.name,
                   "the back end's base name, as in Logger::installBackend(\"NAME\")")
        ->required();
    app.add_option(
        "dir", options.folder,
        "where the plug-in lies; without it, it is looked for where a host would find it");
    app.add_option("--set", settings, "sets a property before the plug-in is loaded")
        ->type_name("PROPERTY=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--logger", options.logger,
                   "begins the names of all loggers that are tried: for a back end that serves "
                   "only some")
        ->capture_default_str();
    app.add_option("--folder", options.workFolder,
                   "the current folder of the plug-in, in place of an empty one");
    app.add_option("--timeout", options.timeout, "seconds that each step may take")
        ->check(CLI::Range(1, maxTimeout))
        ->capture_default_str();
    app.add_flag("--json", options.json, "writes the report as one JSON document");
    app.add_flag("--strict", options.strict, "takes notes for faults");
    // For the child process: without a group, the help does not list them.
    app.add_option("--record", options.record)->group("");
    app.add_option("--file", options.file)->group("");
    app.add_option("--skip", options.skipped)->group("")->delimiter(',');

    try {
        app.parse(count, arguments);
        for (const std::string& setting : settings) {
            options.properties.push_back(propertyOf(setting));
        }
    } catch (const CLI::ParseError& end) {
        std::exit(app.exit(end) == 0 ? exitGood : exitCannotCheck);
    }
    return options;
}

} // namespace backendcheck
