// zol-backend-check: checks a back-end plug-in and reports what is right and wrong with it.

#include <exception>
#include <filesystem>
#include <iostream>

#include "Checks.h"
#include "Environment.h"
#include "Options.h"
#include "Report.h"

namespace {

using namespace backendcheck;

int check(const Options& options) {
    Report report;
    const std::filesystem::path file =
        findPlugin(options.name, std::filesystem::u8path(options.folder), report);
    if (!file.empty() && checkFile(file, report)) {
        checkLive(options, file, report);
    }
    report.complete(options.strict);
    if (options.json) {
        report.writeJson(std::cout, options.name, file);
    } else {
        report.writeLines(std::cout, options.name);
    }
    return report.isWrong() ? exitWrong : exitGood;
}

} // namespace

int main(int count, char** arguments) {
    try {
        const Options options = optionsOf(programArguments(count, arguments));
        return options.record.empty() ? check(options) : tryPlugin(options);
    } catch (const std::exception& error) {
        std::cerr << "zol-backend-check: " << error.what() << '\n';
        return exitCannotCheck;
    }
}
