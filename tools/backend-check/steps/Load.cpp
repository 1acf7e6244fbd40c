// Checks "libraries" to "install": everything up to the installed back end.

#include "Text.h"
#include "live/CrashHandler.h"
#include "live/Loader.h"
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
        session.report("libraries", Result::Wrong,
                       "not found: " + listed(others) +
                           "\na host needs them beside the plug-in or in its search path");
    }
    if (!library.missingLibraries.empty()) {
        return;
    }
    session.report("libraries", Result::Ok, "every library that it needs is found");
    if (library.missingSymbols.empty()) {
        session.report("symbols", Result::Ok, "nothing is left undefined");
    } else {
        session.report("symbols", Result::Wrong,
                       "left undefined: " + listed(library.missingSymbols) +
                           "\nlink the libraries that define them; hosts do not");
    }
}

/// Overwrites the stack that earlier calls used: a local variable of createBackend must not pass
/// for an object that is still there.
[[gnu::noinline]] void poisonFreedStack() {
    volatile char area[65536];
    for (volatile char& c : area) {
        c = '\x5A';
    }
}

} // namespace

bool loadsLibrary(CheckSession& session) {
    const std::filesystem::path file = session.options().file;
    session.beginStep("load", "loading it, its static initialisers included");
    LoadedLibrary library;
    try {
        library = loadPlugin(file);
    } catch (...) {
        const std::string what = describeCurrentException();
        reportMissing(session, library);
        session.report("load", Result::Wrong, what + " came out of its static initialisers");
        return false;
    }
    reportMissing(session, library);
    if (!library.missingLibraries.empty() || !library.missingSymbols.empty()) {
        return false;
    }
    if (!library.error.empty()) {
        session.report("load", Result::Wrong, "it cannot be loaded: " + library.error);
        return false;
    }
    std::error_code ignored;
    if (!std::filesystem::equivalent(library.file, file, ignored)) {
        session.report("load", Result::Wrong,
                       "another file of that name comes first: " + library.file.string() +
                           "\ngive the back end a name of its own");
        return false;
    }
    session.report("load", Result::Ok, "it can be loaded");
    return true;
}

bool createsBackend(CheckSession& session) {
    session.beginStep("create", "createBackend");
    try {
        session.backend = Logger::loadBackend(session.options().name.c_str());
    } catch (...) {
        session.report("create", Result::Wrong,
                       describeCurrentException() +
                           " came out of createBackend, and goes to the host");
        return false;
    }
    if (session.backend == nullptr) {
        session.report("create", Result::Wrong,
                       "createBackend returned null: it offers nothing, and nothing is "
                       "installed\nif that depends on a property, give it with --set");
        return false;
    }
    session.report("create", Result::Ok, "createBackend returned an object");
    session.beginStep("object", "the use of what createBackend returned: it has no virtual table, "
                                "was destroyed, or is a local variable");
    poisonFreedStack();
    const std::string fault = objectFault(session.backend);
    if (!fault.empty()) {
        session.report("object", Result::Wrong,
                       "what createBackend returned " + fault +
                           "\nit must be a LoggerBackend that lives as long as the process");
        return false;
    }
    session.report("object", Result::Ok, "the object is a LoggerBackend");
    return true;
}

void tryTwice(CheckSession& session) {
    session.beginStep("twice", "createBackend for the second time");
    try {
        const LoggerBackend* const second = Logger::loadBackend(session.options().name.c_str());
        if (second == session.backend) {
            session.report("twice", Result::Ok, "a second load gives the same object");
        } else if (second == nullptr) {
            session.report("twice", Result::Note, "a second load gives null");
        } else {
            session.report("twice", Result::Note,
                           "a second load gives another object: nothing keeps a host from "
                           "installing the back end twice, and each message would come out twice");
        }
    } catch (...) {
        session.report("twice", Result::Note,
                       describeCurrentException() +
                           " came out of the second call of createBackend");
    }
}

bool installs(CheckSession& session) {
    session.beginStep("install", "installing the checker's own back end");
    Logger::installBackend(&session.probe());
    (void)session.logger();
    session.beginStep("install",
                      "being installed, with createChannel for each logger that there is");
    try {
        Logger::installBackend(session.backend);
    } catch (...) {
        session.report("install", Result::Wrong,
                       describeCurrentException() +
                           " came out of installBackend\nit comes from createChannel, or the back "
                           "end has installed itself already");
        return false;
    }
    session.report("install", Result::Ok, "it can be installed");
    return true;
}

} // namespace backendcheck
