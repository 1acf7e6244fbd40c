// zol-backend-check: says in plain words what is right and wrong with a back-end plug-in.

#include <exception>
#include <filesystem>
#include <iostream>

#include "ExitCode.h"
#include "FileChecks.h"
#include "LiveChecks.h"
#include "Options.h"
#include "PluginFile.h"
#include "Report.h"
#include "TrialProcess.h"

namespace {

using namespace backendcheck;

int check(const Options& options) {
    Report report;
    const PluginFile plugin = findPlugin(options.name, options.folder);
    report.add({"file-name", plugin.file.empty() ? Result::Wrong : Result::Ok, plugin.text});
    if (!plugin.file.empty() && checkFile(plugin.file, report)) {
        checkLive(options, plugin.file, report);
    }
    if (options.strict) {
        report.beStrict();
    }
    report.complete();
    if (options.json) {
        report.writeJson(std::cout, options.name, plugin.file);
    } else {
        report.writeLines(std::cout, options.name);
    }
    return report.isWrong() ? exitWrong : exitGood;
}

} // namespace

int main(int count, char** arguments) {
    try {
        const Options options = optionsOf(count, arguments);
        return options.journal.empty() ? check(options) : tryPlugin(options);
    } catch (const std::exception& error) {
        std::cerr << "zol-backend-check: " << error.what() << '\n';
        return exitCannotCheck;
    }
}
