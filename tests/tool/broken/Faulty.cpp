// A plug-in with the one fault that the property Faulty.fault names.

#include <array>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "Parts.h"

using ZOL::Framework::Framework;
using ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL;
using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::Management::WideString;

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();

namespace {

std::string chosenFault() {
    const std::string name = "Faulty.fault";
    const WideString& value =
        Framework::propertyManager()->readProperty(WideString(name.begin(), name.end()));
    std::string fault;
    for (const auto c : value) {
        fault += static_cast<char>(c);
    }
    return fault;
}

void sleepForAnHour() {
    std::this_thread::sleep_for(std::chrono::hours(1));
}

void sleepNoticeably() {
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
}

// What has no fault is never destroyed: loggers use it while the process ends.

// Faults of log.

/// Runs the function in place of log.
class FunctionChannel : public Channel {
public:
    using Function = std::function<void(LoggingLevel level, const char* text)>;
    explicit FunctionChannel(Function function) : function_(std::move(function)) {}
    void log(LoggingLevel level, const char* text) override { function_(level, text); }

private:
    Function function_;
};

void crashAtUnknownLevel(LoggingLevel level, const char*) {
    static const std::array<const char*, 7> names = {"none", "trace", "debug", "info",
                                                     "warn", "error", "fatal"};
    [[maybe_unused]] const volatile char initial = names.data()[level / 10][0];
}

void copyToSmallBuffer(LoggingLevel, const char* text) {
    volatile char copy[512];
    volatile char* end = copy;
    while ((*end = *text) != '\0') {
        ++end;
        ++text;
    }
}

void copyTooMuch(LoggingLevel, const char* text) {
    volatile char copy[512];
    for (volatile char& c : copy) {
        c = *text++;
    }
}

void writeIntoText(LoggingLevel, const char* text) {
    if (char* const space = std::strchr(const_cast<char*>(text), ' ')) {
        *space = '\0';
    }
}

/// Compares with the last text, of which it has kept the pointer. Not with one of another thread,
/// whose stack may be gone: any later message could show the fault then.
void compareWithLastText(LoggingLevel, const char* text) {
    static std::thread::id lastThread;
    static const char* last = "";
    static volatile int repeated = 0;
    const std::thread::id thread = std::this_thread::get_id();
    repeated = repeated + (thread == lastThread && std::strcmp(last, text) == 0 ? 1 : 0);
    lastThread = thread;
    last = text;
}

thread_local volatile int* messageCount = nullptr; // null in all threads but the creating one

void countInThread(LoggingLevel, const char*) {
    *messageCount = *messageCount + 1;
}

/// Calls its own log without end, unseen by the framework.
class RecursiveChannel : public Channel {
public:
    void log(LoggingLevel level, const char* text) override {
        volatile char area[256];
        area[0] = *text;
        self_->log(level, text);
        area[1] = area[0];
    }

private:
    LoggingChannel* volatile self_ = this;
};

const std::map<std::string, FunctionChannel::Function>& logFaults() {
    static const auto& faults = *new const std::map<std::string, FunctionChannel::Function>{
        {"unknown-level", &crashAtUnknownLevel},
        {"small-buffer", &copyToSmallBuffer},
        {"reads-too-far", &copyTooMuch},
        {"writes-text", &writeIntoText},
        {"keeps-text", &compareWithLastText},
        {"one-thread", &countInThread},
        {"exits-in-log",
         [](LoggingLevel level, const char*) {
             if (level == LOG_LEVEL_FATAL) {
                 std::exit(0);
             }
         }},
        {"throws-in-log",
         [](LoggingLevel, const char* text) {
             if (*text == '\0') {
                 throw std::invalid_argument("nothing to write");
             }
         }},
        {"logs-in-log",
         [](LoggingLevel, const char*) {
             Logger::getLogger("talking")->info("one message written");
         }},
        {"dead-lock",
         [](LoggingLevel, const char*) {
             std::thread([] { Logger::getLogger("worker")->info("written"); }).join();
         }},
        {"uninstalls-itself",
         [](LoggingLevel, const char*) {
             Logger::uninstallBackend(createBackend());
         }},
        {"slow",
         [](LoggingLevel, const char*) {
             static int count = 0;
             constexpr int rarely = 20;
             if (++count % rarely == 0) {
                 sleepNoticeably();
             }
         }},
        {"slow-at-fatal",
         [](LoggingLevel level, const char*) {
             if (level == LOG_LEVEL_FATAL) {
                 sleepNoticeably();
             }
         }},
        {"leaves-files-open",
         [](LoggingLevel, const char*) {
             (void)std::fopen("messages.log", "a");
         }},
        {"writes-to-output",
         [](LoggingLevel, const char* text) {
             std::puts(text);
         }},
    };
    return faults;
}

// Faults of createChannel.

/// Runs the function in place of createChannel.
class FunctionBackend : public LoggerBackend {
public:
    using Function = std::function<LoggingChannel*(const char* name)>;
    explicit FunctionBackend(Function function) : function_(std::move(function)) {}
    LoggingChannel* createChannel(const char* name) override { return function_(name); }

private:
    Function function_;
};

/// Keeps the pointer to the logger's name.
class NamedChannel : public Channel {
public:
    explicit NamedChannel(const char* name) : name_(name) {}
    void log(LoggingLevel, const char*) override { length_ = length_ + std::strlen(name_); }

private:
    const char* name_;
    volatile std::size_t length_ = 0;
};

LoggingChannel* channelOfStranger();

const std::map<std::string, FunctionBackend::Function>& channelFaults() {
    static Channel& good = *new Channel;
    static const auto& faults = *new const std::map<std::string, FunctionBackend::Function>{
        {"throws-at-installation",
         [](const char*) -> LoggingChannel* {
             throw std::runtime_error("the disk is gone");
         }},
        {"throws-number",
         [](const char* name) -> LoggingChannel* {
             return *name != '\0' ? &good : throw 42;
         }},
        {"silent-later",
         [](const char* name) -> LoggingChannel* {
             static auto& names = *new std::set<std::string>;
             return names.insert(name).second ? &good : nullptr;
         }},
        {"keeps-name",
         [](const char* name) {
             return new NamedChannel(name);
         }},
        {"recursive",
         [](const char*) {
             return new RecursiveChannel;
         }},
        {"other-channel-class",
         [](const char* name) {
             return std::strstr(name, ".new") != nullptr ? channelOfStranger() : &good;
         }},
    };
    return faults;
}

// Faults of what createBackend returns.

struct Numbers {
    long first = 1;
    long second = 2;
};

class Stranger {
public:
    virtual ~Stranger() = default;
    virtual void work() {}
    virtual void rest() {}
};

LoggingChannel* channelOfStranger() {
    return static_cast<LoggingChannel*>(static_cast<void*>(new Stranger));
}

class Counting {
public:
    virtual ~Counting() = default;
    virtual int count() { return 0; }
};

/// The back end is not the first base.
class SecondBase : public Counting, public BackendWith<Channel> {};

/// Destroys its channel when the process ends, while loggers still use it.
class OwningBackend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return channel_.get(); }

private:
    std::unique_ptr<Channel> channel_ = std::make_unique<Channel>();
};

/// The compiler must not see where the pointer comes from.
void* hidden(void* pointer) {
    void* volatile result = pointer;
    return result;
}

void* localObject() {
    BackendWith<Channel> local;
    return hidden(&local); // NOLINT(clang-analyzer-core.StackAddressEscape): the fault
}

const std::map<std::string, std::function<void*()>>& objectFaults() {
    static const auto& faults = *new const std::map<std::string, std::function<void*()>>{
        {"hangs-at-entry",
         [] {
             sleepForAnHour();
             return nullptr;
         }},
        {"exits-at-entry",
         []() -> void* {
             std::exit(3);
         }},
        {"no-object",
         []() -> void* {
             return new Numbers;
         }},
        {"other-class",
         []() -> void* {
             return new Stranger;
         }},
        {"other-base",
         []() -> void* {
             return new SecondBase;
         }},
        {"local-object", &localObject},
        {"another-each-time",
         []() -> void* {
             return new BackendWith<Channel>;
         }},
        {"ends-too-early",
         []() -> void* {
             static OwningBackend backend;
             return &backend;
         }},
    };
    return faults;
}

// Faults of a good back end's surroundings, when it is created and when the process ends.

const std::map<std::string, std::function<void(LoggerBackend*)>>& processFaults() {
    static const auto& faults =
        *new const std::map<std::string, std::function<void(LoggerBackend*)>>{
            {"installs-itself",
             [](LoggerBackend* made) {
                 Logger::installBackend(made);
             }},
            {"changes-folder",
             [](LoggerBackend*) {
                 std::filesystem::current_path(std::filesystem::temp_directory_path());
             }},
            {"changes-locale",
             [](LoggerBackend*) {
                 std::setlocale(LC_ALL, "C.UTF-8");
             }},
            {"cuts-exit-short",
             [](LoggerBackend*) {
                 std::atexit([] { std::_Exit(0); });
             }},
            // The destructor of the last object, below, is the fault.
            {"crashes-at-exit",
             [](LoggerBackend*) {
             }},
            {"hangs-at-exit",
             [](LoggerBackend*) {
             }},
        };
    return faults;
}

volatile int* volatile nowhere = nullptr;

struct Ending {
    bool crashes = false;
    bool hangs = false;
    ~Ending() {
        if (crashes) {
            *nowhere = 1;
        } else if (hangs) {
            sleepForAnHour();
        }
    }
} ending;

LoggerBackend* makeBackend(const std::string& fault) {
    if (const auto found = logFaults().find(fault); found != logFaults().end()) {
        static auto& channel = *new FunctionChannel(found->second);
        return new FunctionBackend([](const char*) { return &channel; });
    }
    if (const auto found = channelFaults().find(fault); found != channelFaults().end()) {
        return new FunctionBackend(found->second);
    }
    auto* const backend = new BackendWith<Channel>;
    processFaults().at(fault)(backend);
    ending.crashes = fault == "crashes-at-exit";
    ending.hangs = fault == "hangs-at-exit";
    return backend;
}

} // namespace

extern "C" LoggerBackend* createBackend() {
    static const std::string& fault = *new std::string(chosenFault());
    if (const auto found = objectFaults().find(fault); found != objectFaults().end()) {
        return static_cast<LoggerBackend*>(found->second());
    }
    static volatile int count = 0;
    messageCount = &count;
    static LoggerBackend* const backend = makeBackend(fault);
    return backend;
}
