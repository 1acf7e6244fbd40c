// TwoModulesHost FILE: loads two modules, has one read the file and the other one check it, and
// compares what all three get from the framework. Log lines go to standard error, the summary to
// standard output. The exit code is 1 after a failure or a difference, 2 after a wrong command
// line.

#include <exception>
#include <iomanip>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

#include "Modules.h"
#include "WatchedBackend.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;
using namespace ZOL::Framework::GenericLogger;
using namespace TwoModules;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr int linesBeforeBackend = 5; // a logger's cache holds 101 messages

LoggerBackend& loadConsole() {
    try {
        if (LoggerBackend* const console = Logger::loadBackend("Console")) {
            return *console;
        }
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string("cannot load the back end Console: ") + error.what());
    }
    throw std::runtime_error("Console offers no back end");
}

template <typename Value>
using Member = Value View::*;

/// What the three see, row by row.
class Comparison {
public:
    Comparison(const View& host, const View& reader, const View& auditor)
        : host_(host), reader_(reader), auditor_(auditor) {
        std::cout << std::left << std::setw(28) << "" << std::setw(18) << "host" << std::setw(18)
                  << "reader" << std::setw(18) << "auditor" << '\n';
    }

    template <typename Value>
    void row(const char* name, Member<Value> seen) {
        const bool same = host_.*seen == reader_.*seen && host_.*seen == auditor_.*seen;
        print(name, seen, same ? "same" : "DIFFERENT", same);
    }

    void rowOfOne(const char* name, Member<int> seen) {
        const bool one = host_.*seen + reader_.*seen + auditor_.*seen == 1;
        print(name, seen, one ? "made once" : "NOT MADE ONCE", one);
    }

    bool passed() const { return passed_; }

private:
    template <typename Value>
    void print(const char* name, Member<Value> seen, const char* verdict, bool passed) {
        std::cout << std::setw(28) << name << std::setw(18) << host_.*seen << std::setw(18)
                  << reader_.*seen << std::setw(18) << auditor_.*seen << verdict << '\n';
        passed_ = passed_ && passed;
    }

    View host_;
    View reader_;
    View auditor_;
    bool passed_ = true;
};

bool compare(const View& host, const View& reader, const View& auditor) {
    Comparison comparison(host, reader, auditor);
    comparison.row("logger example.reader", &View::readerLogger);
    comparison.row("logger example.auditor", &View::auditorLogger);
    comparison.row("counter example.messages", &View::messageCounter);
    comparison.row("  value", &View::messages);
    comparison.row("counter example.alerts", &View::alertCounter);
    comparison.row("  value", &View::alerts);
    comparison.row("object example.position", &View::position);
    comparison.rowOfOne("  made", &View::positionsMade);
    comparison.row("property example.alert word", &View::alertWord);
    comparison.row("property example.line end", &View::lineEnd);
    comparison.row("heap", &View::allocate);
    return comparison.passed();
}

void run(const char* path, const DLLHolder& reader, const DLLHolder& auditor) {
    auto* const readLine = reader.resolve<decltype(TwoModules::readLine)>("readLine");
    auto* const checkLine = auditor.resolve<decltype(TwoModules::checkLine)>("checkLine");
    int messages = 0;
    const auto processLine = [&] {
        const char* const line = readLine();
        if (line != nullptr) {
            messages += 1 + checkLine(line);
        }
        return line != nullptr;
    };

    setProperty(alertWordProperty, "remove");
    reader.resolve<decltype(openFile)>("openFile")(path);
    for (int i = 0; i < linesBeforeBackend; ++i) {
        processLine();
    }
    std::cout << messages << " messages wait for a back end" << std::endl;

    WatchedBackend console(loadConsole());
    Logger::installBackend(&console); // the messages come out here
    std::cout << "Console is installed" << std::endl;
    while (processLine()) {
    }

    using Block = std::unique_ptr<char, decltype(&MemoryManager::deallocate)>;
    const Block result(auditor.resolve<decltype(auditResult)>("auditResult")(),
                       &MemoryManager::deallocate);
    std::cout << "Result: " << (result ? result.get() : "no memory") << '\n';
    for (const auto& [logger, channel] : console.channels()) {
        std::cout << logger << (channel != nullptr ? " has a channel" : " has no channel")
                  << " of Console\n";
    }
    const View view = viewOfThisModule();
    const bool same = compare(view, reader.resolve<decltype(viewOfReader)>("viewOfReader")(),
                              auditor.resolve<decltype(viewOfAuditor)>("viewOfAuditor")());

    if (!std::cout.flush()) {
        throw std::runtime_error("cannot write to standard output");
    }
    if (!same) {
        throw std::runtime_error("host and modules do not share everything");
    }
    if (view.messages != messages) {
        throw std::runtime_error("the modules did not count every message");
    }
    if (!console.isInstalled()) {
        throw std::runtime_error("Console was not installed at the end");
    }
}

int fail(const std::string& reason) {
    std::cerr << "TwoModulesHost: " << reason.substr(0, reason.find('\n')) << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: TwoModulesHost FILE\n";
        return 2;
    }
    // Outside of the try block: a module's exception needs the module's code until it is handled.
    const DLLHolder reader("TwoModulesReader", "");
    const DLLHolder auditor("TwoModulesAuditor", "");
    try {
        run(argv[1], reader, auditor);
        return 0;
    } catch (const std::exception& exception) {
        return fail(exception.what());
    } catch (const FrameworkException& exception) {
        return fail(exception.message());
    } catch (const LoggerException& exception) {
        return fail(exception.message());
    }
}
