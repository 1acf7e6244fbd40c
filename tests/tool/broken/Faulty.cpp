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

using Maker = std::function<LoggerBackend*()>;

Maker inLog(const FunctionChannel::Function& function) {
    return [function] {
        return new FunctionBackend(
            [channel = new FunctionChannel(function)](const char*) { return channel; });
    };
}

Maker inCreateChannel(const FunctionBackend::Function& function) {
    return [function] {
        return new FunctionBackend(function);
    };
}

/// Runs the function in createBackend, with a good back end.
Maker inCreateBackend(const std::function<void(LoggerBackend*)>& function) {
    return [function] {
        auto* const backend = new BackendWith<Channel>;
        function(backend);
        return backend;
    };
}

/// Returns the object in place of a back end.
Maker object(void* (*make)()) {
    return [make] {
        return static_cast<LoggerBackend*>(make());
    };
}

const std::map<std::string, Maker>& faults() {
    static Channel& good = *new Channel;
    static const auto& faults = *new const std::map<std::string, Maker>{
        {"unknown-level", inLog(&crashAtUnknownLevel)},
        {"small-buffer", inLog(&copyToSmallBuffer)},
        {"reads-too-far", inLog(&copyTooMuch)},
        {"writes-text", inLog(&writeIntoText)},
        {"keeps-text", inLog(&compareWithLastText)},
        {"one-thread", inLog(&countInThread)},
        {"exits-in-log", inLog([](LoggingLevel level, const char*) {
             if (level == LOG_LEVEL_FATAL) {
                 std::exit(0);
             }
         })},
        {"throws-in-log", inLog([](LoggingLevel, const char* text) {
             if (*text == '\0') {
                 throw std::invalid_argument("nothing to write");
             }
         })},
        {"logs-in-log", inLog([](LoggingLevel, const char*) {
             Logger::getLogger("talking")->info("one message written");
         })},
        {"dead-lock", inLog([](LoggingLevel, const char*) {
             std::thread([] { Logger::getLogger("worker")->info("written"); }).join();
         })},
        {"uninstalls-itself",
         inLog([](LoggingLevel, const char*) { Logger::uninstallBackend(createBackend()); })},
        {"slow", inLog([](LoggingLevel, const char*) {
             static int count = 0;
             constexpr int rarely = 20;
             if (++count % rarely == 0) {
                 sleepNoticeably();
             }
         })},
        {"slow-at-fatal", inLog([](LoggingLevel level, const char*) {
             if (level == LOG_LEVEL_FATAL) {
                 sleepNoticeably();
             }
         })},
        {"leaves-files-open",
         inLog([](LoggingLevel, const char*) { (void)std::fopen("messages.log", "a"); })},
        {"writes-to-output", inLog([](LoggingLevel, const char* text) { std::puts(text); })},
        {"throws-at-installation", inCreateChannel([](const char*) -> LoggingChannel* {
             throw std::runtime_error("the disk is gone");
         })},
        {"throws-number", inCreateChannel([](const char* name) -> LoggingChannel* {
             return *name != '\0' ? &good : throw 42;
         })},
        {"silent-later", inCreateChannel([](const char* name) -> LoggingChannel* {
             static auto& names = *new std::set<std::string>;
             return names.insert(name).second ? &good : nullptr;
         })},
        {"keeps-name", inCreateChannel([](const char* name) { return new NamedChannel(name); })},
        {"recursive", inCreateChannel([](const char*) { return new RecursiveChannel; })},
        {"other-channel-class", inCreateChannel([](const char* name) {
             return std::strstr(name, ".new") != nullptr ? channelOfStranger() : &good;
         })},
        {"hangs-at-entry", inCreateBackend([](LoggerBackend*) { sleepForAnHour(); })},
        {"exits-at-entry", inCreateBackend([](LoggerBackend*) { std::exit(3); })},
        {"no-object", object([]() -> void* { return new Numbers; })},
        {"other-class", object([]() -> void* { return new Stranger; })},
        {"other-base", object([]() -> void* { return new SecondBase; })},
        {"local-object", object(&localObject)},
        {"ends-too-early", object([]() -> void* {
             static OwningBackend backend;
             return &backend;
         })},
        {"installs-itself",
         inCreateBackend([](LoggerBackend* made) { Logger::installBackend(made); })},
        {"changes-folder", inCreateBackend([](LoggerBackend*) {
             std::filesystem::current_path(std::filesystem::temp_directory_path());
         })},
        {"changes-locale",
         inCreateBackend([](LoggerBackend*) { std::setlocale(LC_ALL, "C.UTF-8"); })},
        {"cuts-exit-short",
         inCreateBackend([](LoggerBackend*) { std::atexit([] { std::_Exit(0); }); })},
        {"crashes-at-exit", inCreateBackend([](LoggerBackend*) { ending.crashes = true; })},
        {"hangs-at-exit", inCreateBackend([](LoggerBackend*) { ending.hangs = true; })},
    };
    return faults;
}

} // namespace

extern "C" LoggerBackend* createBackend() {
    static const std::string& fault = *new std::string(chosenFault());
    if (fault == "another-each-time") {
        return new BackendWith<Channel>;
    }
    static volatile int count = 0;
    messageCount = &count;
    static LoggerBackend* const backend = faults().at(fault)();
    return backend;
}
