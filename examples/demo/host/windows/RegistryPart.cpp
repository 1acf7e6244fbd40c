#include "host/RegistryPart.h"

#include <stdexcept>
#include <string>

#include "ZOL/RegistryAccess/Registry.h"
#include "host/windows/DemoKey.h"
#include "host/windows/ErrorShow.h"
#include "host/windows/KeyPath.h"
#include "host/windows/ReportTree.h"
#include "host/windows/TreeListing.h"

using ZOL::RegistryAccess::Registry;

namespace Demo {

namespace {

/// A registry error is no standard exception; the rest of the host knows only those.
[[noreturn]] void throwFailure(const std::string& what,
                               const Registry::GenericRegistryError& error) {
    throw std::runtime_error("cannot " + what + ": " + error.what());
}

KeyPath filledFromReport(DemoKey& key, const Options& options, const RunReport& report) {
    Registry tree = key.node().createSubKey("tree");
    fillFromReport(tree, options, report);
    return key.below("tree");
}

void exportTree(std::ostream& out, const KeyPath& from, const KeyPath& to, const DemoKey& key) {
    const Registry source = Registry::open(from.root, from.path);
    if (key.isIn(source)) {
        throw std::runtime_error("cannot export " + from.text() + ": the copy would lie in it");
    }
    Registry copy = Registry::create(to.root, to.path);
    try {
        copy.copyFrom(source);
    } catch (const Registry::GenericRegistryError& error) {
        throwFailure("export " + from.text() + " completely", error); // one bad key is enough
    }

    const std::size_t keys = countKeysBelow(source);
    const std::size_t copiedKeys = countKeysBelow(copy);
    out << "  from  " << from.text() << ", " << keys << " keys below it\n"
        << "  to    " << to.text() << ", " << copiedKeys << " keys below it\n";
    printTree(out, copy);
    if (copiedKeys != keys) {
        throw std::runtime_error("not all keys were exported");
    }
}

} // namespace

RegistryPart::RegistryPart(const Options& options) : options_(options) {
    if (options_.registryKey != nullptr) {
        const KeyPath key = parseKeyPath(options_.registryKey);
        try {
            Registry::open(key.root, key.path);
        } catch (const Registry::GenericRegistryError& error) {
            throwFailure("open " + key.text(), error);
        }
    }
}

void RegistryPart::run(std::ostream& out, const RunReport& report) const {
    try {
        DemoKey key;
        out << "\nRegistry tree, exported:\n";
        const KeyPath from = options_.registryKey != nullptr
                                 ? parseKeyPath(options_.registryKey)
                                 : filledFromReport(key, options_, report);
        exportTree(out, from, key.below("export"), key);
        out << "Registry errors, one of each kind:\n";
        showErrors(out, key);
    } catch (const Registry::GenericRegistryError& error) {
        throwFailure("work in the registry", error);
    }
}

} // namespace Demo
