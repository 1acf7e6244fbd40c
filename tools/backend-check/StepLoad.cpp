#include "Dependencies.h"
#include "ObjectFault.h"
#include "Place.h"
#include "Steps.h"
#include "Thrown.h"
#include "Words.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::GenericLogger::LoggerBackend;

namespace {

constexpr std::size_t backendSlots = 3; // destructor, destructor, createChannel

bool isFramework(const std::string& library) {
    return lower(library).compare(0, 13, "zol_framework") == 0;
}

/// False if the loader is going to refuse the plug-in.
void tellMissing(Trial& trial, const Missing& missing) {
    // A framework of another release is told of already.
    std::vector<std::string> libraries;
    for (const std::string& library : missing.libraries) {
        if (!isFramework(library)) {
            libraries.push_back(library);
        }
    }
    if (!libraries.empty()) {
        trial.find("libraries", Result::Wrong,
                   "not found: " + listed(libraries) +
                       "\na host needs them beside the plug-in or in its search path");
    } else if (missing.libraries.empty()) {
        trial.find("libraries", Result::Ok, "every library that it needs is found");
    }
    if (!missing.symbols.empty() && missing.libraries.empty()) {
        trial.find("symbols", Result::Wrong,
                   "left undefined: " + listed(missing.symbols) +
                       "\nlink the libraries that define them; hosts do not");
    } else if (missing.libraries.empty()) {
        trial.find("symbols", Result::Ok, "nothing is left undefined");
    }
}

} // namespace

bool loadsLibrary(Trial& trial) {
    const std::filesystem::path file = trial.options().file;
    Missing missing;
    if (trial.isWanted("libraries")) {
        trial.at("libraries", "looking for the libraries that it needs");
        missing = missingFor(file);
        tellMissing(trial, missing);
    }
    trial.at("load", "loading it, its static initialisers included");
    std::string error;
    void* entryPoint = nullptr;
    try {
        entryPoint = loadedEntryPoint(file.filename().string(), error);
    } catch (...) {
        trial.find("load", Result::Wrong,
                   thrownException() + " came out of its static initialisers");
        return false;
    }
    if (entryPoint == nullptr) {
        if (missing.libraries.empty() && missing.symbols.empty()) {
            trial.find("load", Result::Wrong, "it cannot be loaded: " + error);
        }
        return false;
    }
    std::error_code ignored;
    const std::filesystem::path loaded = fileWith(entryPoint);
    if (std::filesystem::equivalent(loaded, file, ignored)) {
        trial.find("load", Result::Ok, "it can be loaded");
        return true;
    }
    trial.find("load", Result::Wrong,
               "another file of that name comes first: " + loaded.string() +
                   "\ngive the back end a name of its own");
    return false;
}

bool createsBackend(Trial& trial) {
    const std::string& name = trial.options().name;
    trial.at("create", "createBackend");
    try {
        trial.backend = Logger::loadBackend(name.c_str());
    } catch (...) {
        trial.find("create", Result::Wrong,
                   thrownException() + " came out of createBackend, and goes to the host");
        return false;
    }
    if (trial.backend == nullptr) {
        trial.find("create", Result::Wrong,
                   "createBackend returned null: it offers nothing, and nothing is installed\nif "
                   "that depends on a property, give it with --set");
        return false;
    }
    trial.find("create", Result::Ok, "createBackend returned an object");
    trial.at("object", "looking at what createBackend returned");
    const std::string fault = objectFault(trial.backend, typeid(LoggerBackend), backendSlots);
    if (!fault.empty()) {
        trial.find("object", Result::Wrong,
                   "what createBackend returned " + fault +
                       "\nit must be a LoggerBackend that lives as long as the process");
        return false;
    }
    trial.find("object", Result::Ok, "the object is a LoggerBackend");
    return true;
}

bool installs(Trial& trial) {
    const std::string& name = trial.options().name;
    if (trial.isWanted("twice")) {
        trial.at("twice", "createBackend for the second time");
        try {
            const LoggerBackend* const second = Logger::loadBackend(name.c_str());
            if (second == trial.backend) {
                trial.find("twice", Result::Ok, "a second load gives the same object");
            } else if (second == nullptr) {
                trial.find("twice", Result::Note, "a second load gives null");
            } else {
                trial.find("twice", Result::Note,
                           "a second load gives another object: nothing keeps a host from "
                           "installing the back end twice, and each message would come out twice");
            }
        } catch (...) {
            trial.find("twice", Result::Note,
                       thrownException() + " came out of the second call of createBackend");
        }
    }

    trial.at("install", "installing the checker's own back end");
    Logger::installBackend(&trial.witness());
    (void)trial.logger();
    trial.at("install", "being installed, with createChannel for each logger that there is");
    try {
        Logger::installBackend(trial.backend);
    } catch (...) {
        trial.find("install", Result::Wrong,
                   thrownException() +
                       " came out of installBackend\nit comes from createChannel, or the back end "
                       "has installed itself already");
        return false;
    }
    trial.find("install", Result::Ok, "it can be installed");
    return true;
}

} // namespace backendcheck
