// Checks "libraries" to "install": everything up to the installed back end.

#include "Environment.h"
#include "Text.h"
#include "steps/ObjectFault.h"
#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackend;

namespace {

/// A framework of another release is reported by the check "framework" already.
bool isFramework(const std::string& library) {
    return lower(library).compare(0, 13, "zol_framework") == 0;
}

void reportMissing(CheckSession& session, const LoadedLibrary& library) {
    std::vector<std::string> others;
    for (const std::string& missing : library.missingLibraries) {
        if (!isFramework(missing)) {
            others.push_back(missing);
        }
    }
    if (!others.empty()) {
        session.report(
            "libraries", Result::Wrong,
            "not found: " + listed(others) +
                "\nthey must be in the folder of the plug-in or in the search path of the host");
    }
    if (!library.missingLibraries.empty()) {
        return;
    }
    session.report("libraries", Result::Ok, "all required libraries are found");
    if (library.missingSymbols.empty()) {
        session.report("symbols", Result::Ok, "all required symbols are found");
    } else {
        session.report("symbols", Result::Wrong,
                       "undefined: " + listed(library.missingSymbols) +
                           "\nlink the libraries that define them");
    }
}

/// Overwrites the stack that earlier calls used: a local variable of createBackend must not pass
/// for an object that is still there.
void poisonFreedStack() {
    volatile char area[65536];
    for (volatile char& c : area) {
        c = '\x5A';
    }
}

} // namespace

bool loadsLibrary(CheckSession& session) {
    const std::filesystem::path file = std::filesystem::u8path(session.options().file);
    LoadedLibrary library;
    session.beginCheck("load");
    const std::string exception = session.exceptionFrom(
        "loading it, its static initialisers included", [&] { library = loadPlugin(file); });
    reportMissing(session, library);
    if (!library.missingLibraries.empty() || !library.missingSymbols.empty()) {
        return false;
    }
    if (!exception.empty()) {
        return session.report(Result::Wrong, exception + " came out of its static initialisers");
    }
    if (!library.error.empty()) {
        return session.report(Result::Wrong, "it cannot be loaded: " + library.error);
    }
    std::error_code ignored;
    if (!std::filesystem::equivalent(library.file, file, ignored)) {
        return session.report(Result::Wrong, "the loader finds another file of that name first: " +
                                                 library.file.u8string() +
                                                 "\ngive the back end a name of its own");
    }
    return session.report(Result::Ok, "it can be loaded");
}

bool createsBackend(CheckSession& session) {
    session.beginCheck("create");
    const std::string exception = session.exceptionFrom("createBackend", [&] {
        session.backend = Logger::loadBackend(nameForLoader(session.options().name).c_str());
    });
    if (!exception.empty()) {
        return session.report(Result::Wrong,
                              exception + " came out of createBackend, and reaches the host");
    }
    if (session.backend == nullptr) {
        return session.report(Result::Wrong,
                              "createBackend returned null: no back end is installed\nif that "
                              "depends on a property, set it with --set");
    }
    session.report(Result::Ok, "createBackend returned an object");
    session.beginCheck("object");
    session.beginStep("the use of what createBackend returned: it has no virtual table, "
                      "was destroyed, or is a local variable");
    void (*const volatile poison)() = &poisonFreedStack; // volatile: must not be inlined
    poison();
    const std::string fault = objectFault(session.backend);
    if (!fault.empty()) {
        return session.report(Result::Wrong,
                              "what createBackend returned " + fault +
                                  "\nit must be a LoggerBackend that lives as long as the process");
    }
    return session.report(Result::Ok, goodBackend);
}

void tryTwice(CheckSession& session) {
    const LoggerBackend* second = nullptr;
    session.beginCheck("twice");
    const std::string exception = session.exceptionFrom("createBackend for the second time", [&] {
        second = Logger::loadBackend(nameForLoader(session.options().name).c_str());
    });
    if (!exception.empty()) {
        session.report(Result::Note, exception + " came out of the second call of createBackend");
    } else if (second == nullptr) {
        session.report(Result::Note, "a second load returns null");
    } else if (second == session.backend) {
        session.report(Result::Ok, "a second load returns the same object");
    } else {
        session.report(Result::Note,
                       "a second load returns another object: a host can install the back end "
                       "twice, and each message is then written twice");
    }
}

bool installs(CheckSession& session) {
    session.beginCheck("install");
    session.beginStep("installing the checker's own back end");
    Logger::installBackend(&session.probe());
    (void)session.logger();
    const std::string exception =
        session.exceptionFrom("being installed, with createChannel for each logger",
                              [&] { Logger::installBackend(session.backend); });
    if (!exception.empty()) {
        return session.report(Result::Wrong,
                              exception +
                                  " came out of installBackend\nit comes from createChannel, or "
                                  "the back end has installed itself already");
    }
    return session.report(Result::Ok, "it can be installed");
}

} // namespace backendcheck
