#include "ZOL/Framework/GenericLogger/LogStream.h"

#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CountingBackend.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Testing/LogMatchers.h"

using namespace ZOL::Framework::GenericLogger;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct Point {
    int x;
    int y;
};

std::ostream& operator<<(std::ostream& stream, const Point& point) {
    return stream << "(" << point.x << ", " << point.y << ")";
}

/// Can be inserted as a temporary only.
struct Temporary {
    int number;
};

std::ostream& operator<<(std::ostream& stream, Temporary&& temporary) {
    return stream << temporary.number;
}

struct Fields {
    static const int declaredOnly = 17;
    unsigned small : 3;
    int negative : 5;
    LoggingLevel level : 7;
};

constexpr const char* name = "LogStreams";

class LogStreams : public testing::Test {
protected:
    // The CapturedLog opens all levels.
    LogStreams() { log->minLogLevel(LOG_LEVEL_DEFAULT); }

    static testing::Matcher<const ZOL::Testing::CapturedMessage&> message(LoggingLevel level,
                                                                          const char* text) {
        return ZOL::Testing::IsMessage(level, name, text);
    }

    ZOL::Testing::CapturedLog captured;
    Logger* log = Logger::getLogger(name);
};

TEST_F(LogStreams, EachAccessorLogsAtItsLevel) {
    log->trace("t");
    log->debug("d");
    log->info("i");
    log->warning("w");
    log->error("e");
    log->fatal("f");
    log->log(static_cast<LoggingLevel>(35), "l");
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_TRACE, "t"), message(LOG_LEVEL_DEBUG, "d"),
                                      message(LOG_LEVEL_INFO, "i"), message(LOG_LEVEL_WARNING, "w"),
                                      message(LOG_LEVEL_ERROR, "e"), message(LOG_LEVEL_FATAL, "f"),
                                      message(static_cast<LoggingLevel>(35), "l")));
}

TEST_F(LogStreams, TheTextArgumentIsEmptyByDefault) {
    log->trace();
    log->debug();
    log->info();
    log->warning();
    log->error();
    log->fatal();
    log->log(LOG_LEVEL_INFO);
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_TRACE, ""), message(LOG_LEVEL_DEBUG, ""),
                                      message(LOG_LEVEL_INFO, ""), message(LOG_LEVEL_WARNING, ""),
                                      message(LOG_LEVEL_ERROR, ""), message(LOG_LEVEL_FATAL, ""),
                                      message(LOG_LEVEL_INFO, "")));
}

TEST_F(LogStreams, AnAccessorDoesNotAskForTheMinimumLevel) {
    log->minLogLevel(LOG_LEVEL_FATAL);
    log->trace("all the same");
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_TRACE, "all the same")));
}

TEST_F(LogStreams, TheLineIsLoggedAtTheEndOfTheStatement) {
    {
        LogStream line = log->info("begun");
        line << ", not yet out";
        EXPECT_THAT(captured, IsEmpty());
    }
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "begun, not yet out")));
}

TEST_F(LogStreams, PiecesFollowTheTextArgumentInOrder) {
    log->info("x=") << 1 << ' ' << 2.5 << " " << true << " " << std::string("text") << " "
                    << static_cast<const void*>(nullptr) << " " << Point{3, 4} << Temporary{5};
    std::ostringstream expected;
    expected << "x=1 2.5 1 text "
             << static_cast<const void*>(nullptr) // standard libraries differ in it
             << " (3, 4)5";
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, expected.str().c_str())));
}

TEST_F(LogStreams, ThePublicStreamTakesInsertionsToo) {
    log->trace().stream_ << "x=" << std::hex << 255 << Point{1, 2};
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_TRACE, "x=ff(1, 2)")));
}

TEST_F(LogStreams, BitFieldsAndConstantsWithoutADefinitionAreInsertedLikeAnyNumber) {
    const Fields fields = {5, -9, LOG_LEVEL_INFO};
    log->info() << fields.small << ' ' << fields.negative << ' ' << fields.level << ' '
                << Fields::declaredOnly;
    log->info().stream_ << fields.level << Fields::declaredOnly;
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "5 -9 30 17"),
                                      message(LOG_LEVEL_INFO, "3017")));
}

TEST_F(LogStreams, ManipulatorsWorkAndStayInEffect) {
    log->info() << std::hex << std::showbase << 255 << " " << 16 << std::dec << " " << std::setw(4)
                << std::setfill('0') << 7 << std::boolalpha << " " << true << std::endl
                << std::flush;
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "0xff 0x10 0007 true\n")));
}

TEST_F(LogStreams, ManipulatorsOfEveryKindOfStreamWork) {
    const auto onStream = [](std::ostream& stream) -> std::ostream& {
        return stream << "one ";
    };
    const auto onCharacters = [](std::ios& stream) -> std::ios& {
        stream.fill('.');
        return stream;
    };
    const auto onFlags = [](std::ios_base& stream) -> std::ios_base& {
        stream.width(4);
        return stream;
    };
    log->info() << +onStream << +onCharacters << +onFlags << 7;
    log->info().stream_ << +onStream << +onCharacters << +onFlags << 7;
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "one ...7"),
                                      message(LOG_LEVEL_INFO, "one ...7")));
}

TEST_F(LogStreams, ALineEndsAtAZeroCharacter) {
    log->info() << "seen" << '\0' << "not seen";
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "seen")));
}

TEST_F(LogStreams, OfAChainOfCopiesTheLastOneLogsOnce) {
    {
        LogStream first = log->info("a");
        LogStream second(first);
        second << "b";
        LogStream third(second);
        third << "c";
        first << "lost";
        second << "lost";
    }
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "abc")));
}

TEST_F(LogStreams, ACopyKeepsTheLevel) {
    {
        const LogStream source = log->fatal("text");
        const LogStream copy(source); // NOLINT(performance-unnecessary-copy-initialization)
    }
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_FATAL, "text")));
}

TEST_F(LogStreams, ACopyOutlivesItsSource) {
    LogStream* source = new LogStream(log, LOG_LEVEL_INFO, "text");
    {
        const LogStream copy(*source);
        delete source;
        EXPECT_THAT(captured, IsEmpty());
    }
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "text")));
}

TEST_F(LogStreams, ACopyOfAStreamThatGaveItsTextAwayLogsNothing) {
    {
        const LogStream first = log->info("once");
        const LogStream second(first); // NOLINT(performance-unnecessary-copy-initialization)
        const LogStream third(first);  // NOLINT(performance-unnecessary-copy-initialization)
    }
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "once")));
}

TEST_F(LogStreams, AtLevel0NothingIsLoggedAndNothingIsCached) {
    log->log(LOG_LEVEL_NONE, "nothing");
    static support::CountingBackend other;
    const support::Installed installed(other); // would flush a cache
    EXPECT_THAT(captured, IsEmpty());
}

TEST_F(LogStreams, BelowLevel0LinesAreLogged) {
    log->log(static_cast<LoggingLevel>(-1), "text");
    EXPECT_THAT(captured, ElementsAre(message(static_cast<LoggingLevel>(-1), "text")));
}

TEST_F(LogStreams, ALineWhoseArgumentThrewIsLoggedUpToThatArgument) {
    const auto argument = []() -> int {
        throw 7;
    };
    EXPECT_THROW(log->info("as far as ") << "this" << argument(), int);
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "as far as this")));
}

TEST_F(LogStreams, ALineWithAFailedInsertionIsLoggedWithWhatWasWritten) {
    log->info("half ") << [](std::ostream& stream) -> std::ostream& {
        stream << "written";
        stream.setstate(std::ios_base::badbit);
        return stream << "not written";
    } << " and more";
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "half written and more")));
}

TEST_F(LogStreams, ANullTextIsLoggedAsNull) {
    const char* const null = nullptr;
    log->info(null) << null << ' ' << std::setw(7) << null;
    ZOL_LOG(log, LOG_LEVEL_FATAL) << null;
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "(null)(null)  (null)"),
                                      message(LOG_LEVEL_FATAL, "(null)")));
}

TEST_F(LogStreams, AnInsertionThatSetsOnlyFailbitThrowsNothingAndTheLineIsLogged) {
    log->info("as far as ") << [](std::ostream& stream) -> std::ostream& {
        stream << "this";
        stream.setstate(std::ios_base::failbit);
        return stream;
    };
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_INFO, "as far as this")));
}

TEST_F(LogStreams, TheGateLetsActiveLevelsThrough) {
    ZOL_LOG(log, LOG_LEVEL_ERROR) << "x=" << 1;
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_ERROR, "x=1")));
}

TEST_F(LogStreams, TheGateEvaluatesNothingOfALineWhoseLevelIsInactive) {
    int evaluated = 0;
    ZOL_LOG(log, LOG_LEVEL_INFO) << ++evaluated;
    EXPECT_EQ(evaluated, 0);
    EXPECT_THAT(captured, IsEmpty());
}

TEST_F(LogStreams, TheGateAsksTheLoggersOwnMinimum) {
    log->minLogLevel(LOG_LEVEL_DEBUG);
    ZOL_LOG(log, LOG_LEVEL_DEBUG) << "on";
    ZOL_LOG(log, LOG_LEVEL_TRACE) << "off";
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_DEBUG, "on")));
}

TEST_F(LogStreams, TheGateEvaluatesItsOwnArgumentsOnce) {
    int loggers = 0;
    int levels = 0;
    ZOL_LOG((++loggers, log), (++levels, LOG_LEVEL_FATAL)) << "text";
    EXPECT_EQ(loggers, 1);
    EXPECT_EQ(levels, 1);
    EXPECT_THAT(captured, SizeIs(1));
}

// The build reports shadowed names: the gates must have different ones, also on one line.
TEST_F(LogStreams, ALineMayContainAnotherOne) {
    ZOL_LOG(log, LOG_LEVEL_FATAL) << "outer, " << [this] {
        ZOL_LOG(log, LOG_LEVEL_ERROR) << "inner";
        return 1;
    }();
    // clang-format off
    ZOL_LOG(log, LOG_LEVEL_FATAL) << [&] { ZOL_LOG(log, LOG_LEVEL_ERROR) << "same line"; return 2; }();
    // clang-format on
    EXPECT_THAT(captured,
                ElementsAre(message(LOG_LEVEL_ERROR, "inner"), message(LOG_LEVEL_FATAL, "outer, 1"),
                            message(LOG_LEVEL_ERROR, "same line"), message(LOG_LEVEL_FATAL, "2")));
}

namespace user::ZOL {

void logAnError(Logger* logger, const char* text) {
    ZOL_LOG(logger, LOG_LEVEL_ERROR) << text;
}

} // namespace user::ZOL

TEST_F(LogStreams, TheGateWorksInANamespaceOfTheSameName) {
    user::ZOL::logAnError(log, "text");
    EXPECT_THAT(captured, ElementsAre(message(LOG_LEVEL_ERROR, "text")));
}

TEST_F(LogStreams, TheGateIsOneStatementAlsoBetweenIfAndElse) {
    // NOLINTBEGIN(readability-braces-around-statements): the lack of braces is what is tested
    bool elseTaken = false;
    if (!captured.empty())
        ZOL_LOG(log, LOG_LEVEL_FATAL) << "not here";
    else
        elseTaken = true;
    EXPECT_TRUE(elseTaken);

    for (int i = 0; i < 2; ++i)
        ZOL_LOG(log, LOG_LEVEL_FATAL) << i;
    // NOLINTEND(readability-braces-around-statements)
    EXPECT_THAT(captured,
                ElementsAre(message(LOG_LEVEL_FATAL, "0"), message(LOG_LEVEL_FATAL, "1")));
}

} // namespace
