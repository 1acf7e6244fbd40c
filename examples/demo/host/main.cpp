// DemoHost [--backend NAME] [--alert-level LEVEL] [--registry KEY] FILE: loads the modules
// DemoReader and DemoAuditor at run time, and shows that they and the host share loggers, counters,
// an object and settings. On Windows it then exports a tree of the registry, that of KEY or one
// that it fills from what it found.

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"
#include "host/Options.h"
#include "host/RegistryPart.h"
#include "host/Run.h"
#include "host/Summary.h"

using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::GenericLogger::LoggerException;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

int fail(std::string_view reason) {
    const std::string_view firstLine = reason.substr(0, reason.find('\n'));
    std::cerr << "DemoHost: " << firstLine << '\n';
    return EXIT_FAILURE;
}

void checkSharing(const Demo::RunReport& report) {
    for (const Demo::ComparisonGroup& group : Demo::compare(report.views)) {
        for (const Demo::Comparison& row : group.rows) {
            if (!row.passed) {
                throw std::runtime_error(
                    std::string("host and modules do not share alike, see the summary: ") +
                    group.title);
            }
        }
    }
    if (!report.backend.installed) {
        throw std::runtime_error("the back end was not installed any more at the end");
    }
    const std::size_t messages = report.readerMessages.all + report.auditorMessages.all;
    // A counter has 32 bits and wraps.
    if (static_cast<std::uint32_t>(report.views.byHost.messages.value) !=
        static_cast<std::uint32_t>(messages)) {
        throw std::runtime_error("the modules did not count every message");
    }
}

} // namespace

int main(int argc, char** argv) {
    // Out here, because what a module throws takes the module's code until it is dealt with.
    const DLLHolder readerLibrary("DemoReader", "");
    const DLLHolder auditorLibrary("DemoAuditor", "");
    try {
        const Demo::Options options = Demo::parseOptions(argc, argv);
        const Demo::RegistryPart registryPart(options);
        const Demo::RunReport report = Demo::run(options, readerLibrary, auditorLibrary);
        Demo::printSummary(std::cout, options, report);
        registryPart.run(std::cout, report);
        if (!std::cout.flush()) {
            throw std::runtime_error("cannot write the summary to standard output");
        }
        checkSharing(report);
        return EXIT_SUCCESS;
    } catch (const std::exception& exception) {
        return fail(exception.what());
    } catch (const FrameworkException& exception) {
        return fail(exception.message());
    } catch (const LoggerException& exception) {
        return fail(exception.message());
    }
}
