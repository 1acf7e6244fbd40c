// A plug-in with the one fault that the property Faulty.fault names.

#include <array>
#include <cfenv>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"

#include "Parts.h"
#include "Platform.h"

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

/// Throws if the property Faulty.text is not the name of a town and two ideographs.
void requireText() {
    const std::string name = "Faulty.text";
    const WideString& value =
        Framework::propertyManager()->readProperty(WideString(name.begin(), name.end()));
    const std::u16string expected = u"M\u00FCller \u65E5\u672C \U0001F600";
    if (std::u16string(value.begin(), value.end()) != expected) {
        throw std::runtime_error("the text is spoilt");
    }
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

void copyText(volatile char* to, const char* from) {
    while ((*to = *from) != '\0') {
        ++to;
        ++from;
    }
}
/// volatile: not inlined, so that its own variables are not beyond the end of the buffer.
void (*const volatile copyTextElsewhere)(volatile char* to, const char* from) = &copyText;

void copyToSmallBuffer(LoggingLevel, const char* text) {
    volatile char copy[512];
    copyTextElsewhere(copy, text);
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

// NOLINTBEGIN(clang-analyzer-unix.Malloc): the fault
void leak(std::size_t size) {
    void* volatile leaked = std::malloc(size + 1);
    (void)leaked;
}

void leakEnlarged(std::size_t size) {
    void* volatile leaked = std::realloc(std::malloc(1), size);
    (void)leaked;
}
// NOLINTEND(clang-analyzer-unix.Malloc)

void require(bool condition) {
    if (!condition) {
        throw std::logic_error("an allocation function does not work");
    }
}

/// No fault: uses the functions that the tool may replace.
void useAllocations() {
    constexpr std::size_t large = std::size_t{64} << 20U;
    char* block = static_cast<char*>(std::calloc(3, 5));
    for (int i = 0; i < 15; ++i) {
        require(block[i] == '\0');
        block[i] = static_cast<char>('a' + i);
    }
    block = static_cast<char*>(std::realloc(block, large));
    require(std::memcmp(block, "abcdefghijklmno", 15) == 0);
    block = static_cast<char*>(std::realloc(block, 4));
    require(std::memcmp(block, "abcd", 4) == 0);
    std::free(block);
    std::free(nullptr);

    struct alignas(64) Aligned {
        char data[64];
    };
    const auto aligned = std::make_unique<std::array<Aligned, 3>>();
    require(reinterpret_cast<std::uintptr_t>(aligned.get()) % alignof(Aligned) == 0);
    void* volatile const tooLarge = std::malloc(static_cast<std::size_t>(-1) / 2);
    require(tooLarge == nullptr);
    void* const empty = std::malloc(0);
    require(empty != nullptr);
    std::free(empty);
}

/// Keeps the text in a queue that nothing empties.
void queueText(std::size_t maxTexts, const char* text) {
    static auto& queue = *new std::deque<std::string>;
    if (queue.size() < maxTexts) {
        queue.emplace_back(text);
    }
}

/// No fault: a thread empties the queue after a while.
void queueForWorker(LoggingLevel, const char* text) {
    static auto& mutex = *new std::mutex;
    static auto& queue = *new std::vector<std::string>;
    static std::once_flag first;
    std::call_once(first, [] {
        std::thread([] {
            while (true) {
                sleepNoticeably();
                std::vector<std::string> texts;
                const std::lock_guard<std::mutex> lock(mutex);
                texts.swap(queue);
            }
        }).detach();
    });
    // At the end of the process, Windows may have ended the thread while it held the lock.
    const std::unique_lock<std::mutex> lock(mutex, std::try_to_lock);
    if (lock) {
        queue.emplace_back(text);
    }
}

// Faults of createChannel.

/// Uses its own memory, as a channel with a file or name does.
class CountingChannel : public Channel {
public:
    void log(LoggingLevel, const char*) override { ++*count_; }

private:
    std::unique_ptr<int> count_ = std::make_unique<int>(0);
};

/// Runs the function in place of createChannel.
class FunctionBackend : public LoggerBackend {
public:
    using Function = std::function<LoggingChannel*(const char* name)>;
    explicit FunctionBackend(Function function) : function_(std::move(function)) {}
    LoggingChannel* createChannel(const char* name) override { return function_(name); }

private:
    Function function_;
};

/// Destroys the channel that it created before, which another logger uses.
LoggingChannel* replaceChannel(const char*) {
    static std::unique_ptr<CountingChannel>& last = *new std::unique_ptr<CountingChannel>;
    last = std::make_unique<CountingChannel>();
    return last.get();
}

/// No fault: destroys the channel that it created before for the same logger.
LoggingChannel* replaceChannelOfName(const char* name) {
    static auto& channels = *new std::map<std::string, std::unique_ptr<CountingChannel>>;
    std::unique_ptr<CountingChannel>& channel = channels[name];
    channel = std::make_unique<CountingChannel>();
    return channel.get();
}

/// Sleeps for each new name.
LoggingChannel* createSlowly(const char* name) {
    static auto& channels = *new std::map<std::string, Channel>;
    if (channels.count(name) == 0) {
        sleepNoticeably();
    }
    return &channels[name];
}

LoggingChannel* openFile(const char*) {
    static Channel& channel = *new Channel;
    openForever("channel.log");
    return &channel;
}

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
        {"slow-first", inLog([](LoggingLevel, const char*) {
             static std::once_flag first;
             std::call_once(first, &sleepNoticeably);
         })},
        {"slow-first-of-each", inCreateChannel([](const char* name) -> LoggingChannel* {
             static auto& names = *new std::set<std::string>;
             if (!names.insert(name).second) {
                 return &good;
             }
             return new FunctionChannel(
                 [first = std::make_shared<std::once_flag>()](LoggingLevel, const char*) {
                     std::call_once(*first, &sleepNoticeably);
                 });
         })},
        {"slow-channel", inCreateChannel(&createSlowly)},
        {"leaks-bytes", inLog([](LoggingLevel, const char*) { leak(100); })},
        {"leaks-little", inLog([](LoggingLevel, const char*) { leak(8); })},
        {"leaks-enlarged", inLog([](LoggingLevel, const char*) { leakEnlarged(100); })},
        {"leaks-mebibyte", inLog([](LoggingLevel, const char*) { leak(std::size_t{1} << 20U); })},
        {"leaks-long-texts", inLog([](LoggingLevel, const char* text) {
             constexpr std::size_t bufferSize = 4096;
             const std::size_t size = std::strlen(text);
             leak(size > bufferSize ? size : 0);
         })},
        {"queues-forever",
         inLog([](LoggingLevel, const char* text) { queueText(std::size_t{1} << 30U, text); })},
        {"bounded-queue", inLog([](LoggingLevel, const char* text) { queueText(1500, text); })},
        {"delayed-queue", inLog(&queueForWorker)},
        {"maps-memory", inLog([](LoggingLevel, const char* text) {
             constexpr std::size_t size = std::size_t{256} << 10U;
             if (std::strlen(text) >= size) {
                 std::memset(mapMemory(size), 1, size);
             }
         })},
        {"leaves-thread", inCreateChannel([](const char* name) {
             // Not at the end of the process, when Windows creates no threads.
             if (std::strstr(name, ".new") != nullptr) {
                 std::thread(&sleepForAnHour).detach();
             }
             return &good;
         })},
        {"leaves-thread-of-message", inLog([](LoggingLevel, const char* text) {
             // Only for some messages: more threads need more memory than a process has.
             static int count = 0;
             constexpr int enough = 150;
             constexpr std::size_t length = 1000;
             if (std::strlen(text) == length && ++count <= enough) {
                 std::thread(&sleepForAnHour).detach();
             }
         })},
        {"opens-file-again", inCreateChannel(&openFile)},
        {"replaces-any-channel", inCreateChannel(&replaceChannel)},
        {"replaces-channel", inCreateChannel(&replaceChannelOfName)},
        {"writes-to-freed", inLog([](LoggingLevel, const char*) {
             static int* volatile freed = nullptr;
             if (freed == nullptr) {
                 int* volatile const block = new int[16];
                 delete[] block;
                 freed = block;
             }
             freed[4] = 1; // NOLINT(clang-analyzer-cplusplus.NewDelete): the fault
         })},
        {"allocates", inLog([](LoggingLevel, const char*) { useAllocations(); })},
        {"frees-twice", inLog([](LoggingLevel, const char*) {
             void* volatile const block = std::malloc(16);
             std::free(block);
             void* volatile const same = block;
             std::free(same); // NOLINT(clang-analyzer-unix.Malloc): the fault
         })},
        {"replaces-handler",
         inLog([](LoggingLevel, const char*) { std::signal(SIGTERM, [](int) {}); })},
        {"replaces-crash-handler",
         inLog([](LoggingLevel, const char*) { std::signal(SIGSEGV, [](int) {}); })},
        {"blocks-signal", inLog([](LoggingLevel, const char*) { blockSignal(); })},
        {"changes-umask", inLog([](LoggingLevel, const char*) { changeUmask(); })},
        {"changes-rounding",
         inLog([](LoggingLevel, const char*) { std::fesetround(FE_DOWNWARD); })},
        {"replaces-standard-error",
         inLog([](LoggingLevel, const char*) { replaceStandardError(); })},
        {"complains-and-crashes",
         [] {
             std::fputs("Faulty: there is no \x1B collector\n", stderr);
             return inLog(&crashAtUnknownLevel)();
         }},
        {"complains-often", inLog([](LoggingLevel, const char*) {
             static int count = 0;
             std::fprintf(stderr, "complaint %d %s\n", ++count, std::string(1000, 'x').c_str());
         })},
        {"expects-property", inCreateBackend([](LoggerBackend*) { requireText(); })},
        {"leaves-files-open",
         inLog([](LoggingLevel, const char*) { openForever("messages.log"); })},
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
        {"throws-in-thread", inLog([](LoggingLevel, const char*) {
             std::thread([] { throw std::runtime_error("no collector"); }).join();
         })},
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
