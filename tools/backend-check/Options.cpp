#include "Options.h"

#include <algorithm>
#include <cstdlib>
#include <exception>

#include <CLI/CLI.hpp>

#include "Report.h"
#include "Text.h"

namespace backendcheck {

namespace {

constexpr const char* about =
    "Loads a back-end plug-in as a host would, and reports what is right and wrong with it.\n"
    "The plug-in is tried in processes of its own, in an empty folder that is removed afterwards.\n"
    "Exit code: 0 good, 1 something is wrong, 2 it cannot be checked.\n";

std::pair<std::string, std::string> propertyOf(const std::string& setting) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw CLI::ValidationError("--set", "\"" + setting + "\" is not PROPERTY=VALUE");
    }
    try {
        (void)wideOf<std::u16string>(setting);
    } catch (const std::exception&) {
        throw CLI::ValidationError("--set", "\"" + setting + "\" is not UTF-8");
    }
    return {setting.substr(0, equals), setting.substr(equals + 1)};
}

} // namespace

Options optionsOf(std::vector<std::string> arguments) {
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
        "the folder of the plug-in; by default the folders that a host's loader searches");
    app.add_option("--set", settings, "sets a property before the plug-in is loaded")
        ->type_name("PROPERTY=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_option("--logger", options.logger,
                   "the beginning of the names of all loggers that are tried: for a back end that "
                   "serves only some")
        ->capture_default_str();
    app.add_option("--folder", options.workFolder,
                   "the current folder of the plug-in, in place of an empty one");
    app.add_option("--timeout", options.timeout, "seconds that each step may take")
        ->check(CLI::Range(1, maxTimeout))
        ->capture_default_str();
    app.add_flag("--json", options.json, "writes the report as one JSON document");
    app.add_flag("--strict", options.strict, "reports notes as faults");
    // For the child process: without a group, the help does not list them.
    app.add_option("--record", options.record)->group("");
    app.add_option("--file", options.file)->group("");
    app.add_option("--skip", options.skipped)->group("")->delimiter(',');

    try {
        std::reverse(arguments.begin(), arguments.end()); // as CLI11 expects a vector
        app.parse(std::move(arguments));
        if (options.name.empty()) {
            throw CLI::ValidationError("name", "is empty: give the base name of a back end");
        }
        for (const std::string& setting : settings) {
            options.properties.push_back(propertyOf(setting));
        }
    } catch (const CLI::ParseError& end) {
        std::exit(app.exit(end) == 0 ? exitGood : exitCannotCheck);
    }
    return options;
}

} // namespace backendcheck
