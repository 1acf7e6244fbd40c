// The virtual tables, seen from a client that is compiled apart from the module.

#include <array>
#include <cstddef>
#include <cstring>
#include <map>
#include <new>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "Goldens.h"
#include "ModuleExports.h"
#include "SlotProbe.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using support::SlotProbe;
using surface::readable;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;
using namespace ZOL::Framework::GenericLogger;

namespace {

/// The slot of a virtual function. In this ABI a pointer to a virtual member holds the byte offset
/// in the table, plus one.
template <typename Member>
std::size_t slotOf(Member member) {
    std::array<std::size_t, 2> parts{};
    static_assert(sizeof(member) == sizeof(parts));
    std::memcpy(parts.data(), &member, sizeof(parts));
    if (parts[0] % 2 != 1) {
        throw std::logic_error("not a virtual function");
    }
    return (parts[0] - 1) / sizeof(void*);
}

/// The number of slots of the class: a function that a derived class adds follows them.
template <typename Contract>
std::size_t slotCount() {
    class Extended : public Contract {
    public:
        using Contract::Contract;
        virtual void added() = 0;
    };
    return slotOf(&Extended::added);
}

int destroyed = 0;
int deleted = 0;

/// Counts what its destructor's slots do.
template <typename Implemented>
class Mortal final : public Implemented {
public:
    using Implemented::Implemented;
    ~Mortal() override { ++destroyed; }
    static void operator delete(void*) { ++deleted; }
};

template <typename Implemented, typename... Arguments>
std::string destructorIn(std::size_t slot, Arguments... arguments) {
    alignas(Mortal<Implemented>) std::array<std::byte, sizeof(Mortal<Implemented>)> storage{};
    auto* const object = new (storage.data()) Mortal<Implemented>(arguments...);
    destroyed = 0;
    deleted = 0;
    SlotProbe(object).at<void(void*)>(slot)(object);
    if (destroyed != 1) {
        return "not the destructor";
    }
    return deleted == 0 ? "destructor, complete object" : "destructor, deleting";
}

/// A line for each slot: the two destructors by their effect, the other functions by name.
template <typename Contract, typename Implemented, typename... Arguments>
std::vector<std::string> slotsOf(const std::map<std::size_t, const char*>& operations,
                                 Arguments... arguments) {
    std::vector<std::string> lines;
    for (std::size_t slot = 0; slot < slotCount<Contract>(); ++slot) {
        std::string what = "an unnamed function";
        if (const auto named = operations.find(slot); named != operations.end()) {
            what = named->second;
        } else if (slot < support::firstSlotAfterDestructor) {
            what = destructorIn<Implemented>(slot, arguments...);
        }
        lines.push_back(readable(typeid(Contract).name()) + " slot " + std::to_string(slot) + ": " +
                        what);
    }
    return lines;
}

class Channel : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char*) override {}
};

class Backend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return nullptr; }
};

class Store : public PropertyManager {
public:
    const WideString& readProperty(const WideString& name) const override { return name; }
    bool hasProperty(const WideString&) const override { return false; }
    void setProperty(const WideString&, const WideString&) override {}
    void clearProperty(const WideString&) override {}
};

} // namespace

std::vector<std::string> surface::currentSlots() {
    std::vector<std::string> lines;
    const auto add = [&lines](const std::vector<std::string>& more) {
        lines.insert(lines.end(), more.begin(), more.end());
    };
    add(slotsOf<FrameworkException, FrameworkException>({}));
    add(slotsOf<LoggingChannel, Channel>(
        {{slotOf(&LoggingChannel::release), "release"}, {slotOf(&LoggingChannel::log), "log"}}));
    add(slotsOf<LoggerBackend, Backend>(
        {{slotOf(&LoggerBackend::createChannel), "createChannel"}}));
    add(slotsOf<LoggerException, LoggerException>(
        {{slotOf(&LoggerException::message), "message"}, {slotOf(&LoggerException::what), "what"}},
        "file", 1));
    add(slotsOf<LoggerBackendLoadError, LoggerBackendLoadError>(
        {{slotOf(&LoggerBackendLoadError::message), "message"},
         {slotOf(&LoggerBackendLoadError::what), "what"}},
        "message", "file", 1));
    add(slotsOf<PropertyManager, Store>(
        {{slotOf(&PropertyManager::readProperty), "readProperty"},
         {slotOf(&PropertyManager::hasProperty), "hasProperty"},
         {slotOf(&PropertyManager::setProperty), "setProperty"},
         {slotOf(&PropertyManager::clearProperty), "clearProperty"}}));
    return lines;
}
