#pragma once

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <thread>

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/detail/FileName.h"
#include "ZOL/Framework/GenericLogger/detail/StatementState.h"
#include "ZOL/Framework/GenericLogger/detail/TextStream.h"
#include "ZOL/Framework/GenericLogger/detail/ThreadToken.h"

namespace ZOL::Framework::detail {

/// A condition of ZOL_CHECK that was false, and the text that the program adds.
class ZOL_FRAMEWORK_HIDDEN CheckFailure : public GenericLogger::detail::TextStream {
public:
    CheckFailure(const char* condition, const char* file, int line) noexcept
        : condition_(condition), file_(GenericLogger::detail::fileName(file)), line_(line) {}
    CheckFailure(const CheckFailure&) = delete;
    CheckFailure& operator=(const CheckFailure&) = delete;

    /// Makes an lvalue of the temporary object.
    TextStream& text() noexcept { return *this; }

    /// Ends the process if the text throws.
    ~CheckFailure() {
        // The compiler must not know that this never returns: it would find no way from here to the
        // handler of the exception and remove both, so that the message would be missing.
        const volatile bool isFatal = true;
        if (isFatal) {
            end();
        }
    }

    /// Writes to standard error, to the crisis log and to the logger, in the order of how reliable
    /// they are, and ignores their failures. Then aborts.
    [[noreturn]] ZOL_FRAMEWORK_NOINLINE void end() {
        writeToStandardError();
        if (isNested()) {
            std::abort();
        }
        abortAfterTimeout();
        try {
            TextStream message;
            compose(message);
            writeToCrisisLog(message.c_str());
            GenericLogger::Logger::getLogger(loggerName)->fatal(message.c_str());
        } catch (...) { // NOLINT(bugprone-empty-catch): standard error has the message
        }
        std::abort();
    }

private:
    static constexpr const char* loggerName = "zol.check";
    /// A logger waits without limit for its lock and for its channels. The process ends after this
    /// time in any case.
    static constexpr std::chrono::seconds loggingTimeout{5};

    void compose(TextStream& message) const {
        message << file_ << ':' << line_ << ": check failed: " << condition_;
        if (!view().empty()) {
            message << ": " << view();
        }
    }

    // Allocates nothing.
    void writeToStandardError() const {
        const std::string_view text = view();
        std::fprintf(stderr, "%.*s:%d: check failed: %s%s%.*s\n", static_cast<int>(file_.size()),
                     file_.data(), line_, condition_, text.empty() ? "" : ": ",
                     static_cast<int>(text.size()), text.data());
        std::fflush(stderr);
    }

    static void writeToCrisisLog(const char* text) {
        try {
            CrisisLogging::CrisisLogger::instance().log(text);
        } catch (...) { // NOLINT(bugprone-empty-catch): another process may have the file open
        }
    }

    // A channel or a back end may check something itself.
    static bool isNested() {
        using GenericLogger::detail::ThreadToken;
        auto& failing = ZOL_DETAIL_STATEMENT_STATE(std::atomic<ThreadToken>);
        const ThreadToken thread = GenericLogger::detail::thisThread();
        ThreadToken other = 0;
        return !failing.compare_exchange_strong(other, thread) && other == thread;
    }

    static void abortAfterTimeout() {
        try {
            std::thread([] {
                std::this_thread::sleep_for(loggingTimeout);
                std::abort();
            }).detach();
        } catch (...) { // NOLINT(bugprone-empty-catch): without the thread there is no timeout
        }
    }

    const char* condition_;
    std::string_view file_;
    int line_;
};

/// What ZOL_CHECK does after the text is complete.
struct CheckEnd {
    [[noreturn]] void operator&(GenericLogger::detail::TextStream& failure) const {
        static_cast<CheckFailure&>(failure).end();
    }
};

} // namespace ZOL::Framework::detail
