#include "Text.h"
#include "file/LibrarySearch.h"
#include "live/CurrentException.h"
#include "live/Loader.h"
#include "live/ObjectFault.h"
#include "steps/Steps.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackend;

namespace {

constexpr std::size_t backendSlots = 3; // destructor, destructor, createChannel

bool isFramework(const std::string& library) {
    return lower(library).compare(0, 13, "zol_framework") == 0;
}

/// False if the loader is going to refuse the plug-in.
void tellMissing(CheckSession& session, const Missing& missing) {
    // A framework of another release is told of already.
    std::vector<std::string> libraries;
    for (const std::string& library : missing.libraries) {
        if (!isFramework(library)) {
            libraries.push_back(library);
        }
    }
    if (!libraries.empty()) {
        session.report("libraries", Result::Wrong,
                       "not found: " + listed(libraries) +
                           "\na host needs them beside the plug-in or in its search path");
    } else if (missing.libraries.empty()) {
        session.report("libraries", Result::Ok, "every library that it needs is found");
    }
    if (!missing.symbols.empty() && missing.libraries.empty()) {
        session.report("symbols", Result::Wrong,
                       "left undefined: " + listed(missing.symbols) +
                           "\nlink the libraries that define them; hosts do not");
    } else if (missing.libraries.empty()) {
        session.report("symbols", Result::Ok, "nothing is left undefined");
    }
}

} // namespace

bool loadsLibrary(CheckSession& session) {
    const std::filesystem::path file = session.options().file;
    Missing missing;
    if (session.isWanted("libraries")) {
        session.beginStep("libraries", "looking for the libraries that it needs");
        missing = missingFor(file);
        tellMissing(session, missing);
    }
    session.beginStep("load", "loading it, its static initialisers included");
    std::string error;
    void* entryPoint = nullptr;
    try {
        entryPoint = loadedEntryPoint(file.filename().string(), error);
    } catch (...) {
        session.report("load", Result::Wrong,
                       thrownException() + " came out of its static initialisers");
        return false;
    }
    if (entryPoint == nullptr) {
        if (missing.libraries.empty() && missing.symbols.empty()) {
            session.report("load", Result::Wrong, "it cannot be loaded: " + error);
        }
        return false;
    }
    std::error_code ignored;
    const std::filesystem::path loaded = fileWith(entryPoint);
    if (std::filesystem::equivalent(loaded, file, ignored)) {
        session.report("load", Result::Ok, "it can be loaded");
        return true;
    }
    session.report("load", Result::Wrong,
                   "another file of that name comes first: " + loaded.string() +
                       "\ngive the back end a name of its own");
    return false;
}

bool createsBackend(CheckSession& session) {
    const std::string& name = session.options().name;
    session.beginStep("create", "createBackend");
    try {
        session.backend = Logger::loadBackend(name.c_str());
    } catch (...) {
        session.report("create", Result::Wrong,
                       thrownException() + " came out of createBackend, and goes to the host");
        return false;
    }
    if (session.backend == nullptr) {
        session.report(
            "create", Result::Wrong,
            "createBackend returned null: it offers nothing, and nothing is installed\nif "
            "that depends on a property, give it with --set");
        return false;
    }
    session.report("create", Result::Ok, "createBackend returned an object");
    session.beginStep("object", "looking at what createBackend returned");
    const std::string fault = objectFault(session.backend, typeid(LoggerBackend), backendSlots);
    if (!fault.empty()) {
        session.report("object", Result::Wrong,
                       "what createBackend returned " + fault +
                           "\nit must be a LoggerBackend that lives as long as the process");
        return false;
    }
    session.report("object", Result::Ok, "the object is a LoggerBackend");
    return true;
}

bool installs(CheckSession& session) {
    const std::string& name = session.options().name;
    if (session.isWanted("twice")) {
        session.beginStep("twice", "createBackend for the second time");
        try {
            const LoggerBackend* const second = Logger::loadBackend(name.c_str());
            if (second == session.backend) {
                session.report("twice", Result::Ok, "a second load gives the same object");
            } else if (second == nullptr) {
                session.report("twice", Result::Note, "a second load gives null");
            } else {
                session.report(
                    "twice", Result::Note,
                    "a second load gives another object: nothing keeps a host from "
                    "installing the back end twice, and each message would come out twice");
            }
        } catch (...) {
            session.report("twice", Result::Note,
                           thrownException() + " came out of the second call of createBackend");
        }
    }

    session.beginStep("install", "installing the checker's own back end");
    Logger::installBackend(&session.probe());
    (void)session.logger();
    session.beginStep("install",
                      "being installed, with createChannel for each logger that there is");
    try {
        Logger::installBackend(session.backend);
    } catch (...) {
        session.report(
            "install", Result::Wrong,
            thrownException() +
                " came out of installBackend\nit comes from createChannel, or the back end "
                "has installed itself already");
        return false;
    }
    session.report("install", Result::Ok, "it can be installed");
    return true;
}

} // namespace backendcheck
