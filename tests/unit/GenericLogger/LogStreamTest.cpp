#include "ZOL/Framework/GenericLogger/LogStream.h"

#include <iomanip>
#include <ostream>
#include <string>

#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::Journal;

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

class LogStreams : public support::LoggerFixture {
protected:
    void SetUp() override {
        installBackend("A");
        log = logger();
    }

    Logger* log = nullptr;
};

TEST_F(LogStreams, EachAccessorLogsAtItsLevel) {
    log->trace("t");
    log->debug("d");
    log->info("i");
    log->warning("w");
    log->error("e");
    log->fatal("f");
    log->log(static_cast<LoggingLevel>(35), "l");
    EXPECT_EQ(journal, (Journal{line("A", 10, "t"), line("A", 20, "d"), line("A", 30, "i"),
                                line("A", 40, "w"), line("A", 50, "e"), line("A", 60, "f"),
                                line("A", 35, "l")}));
}

TEST_F(LogStreams, TheTextArgumentIsEmptyByDefault) {
    log->trace();
    log->debug();
    log->info();
    log->warning();
    log->error();
    log->fatal();
    log->log(LOG_LEVEL_INFO);
    EXPECT_EQ(journal,
              (Journal{line("A", 10, ""), line("A", 20, ""), line("A", 30, ""), line("A", 40, ""),
                       line("A", 50, ""), line("A", 60, ""), line("A", 30, "")}));
}

TEST_F(LogStreams, AnAccessorDoesNotAskForTheMinimumLevel) {
    log->minLogLevel(LOG_LEVEL_FATAL);
    log->trace("all the same");
    EXPECT_EQ(journal, Journal{line("A", 10, "all the same")});
}

TEST_F(LogStreams, TheLineIsLoggedAtTheEndOfTheStatement) {
    {
        LogStream line = log->info("begun");
        line << ", not yet out";
        EXPECT_TRUE(journal.empty());
    }
    EXPECT_EQ(journal, Journal{line("A", 30, "begun, not yet out")});
}

TEST_F(LogStreams, PiecesFollowTheTextArgumentInOrder) {
    log->info("x=") << 1 << ' ' << 2.5 << " " << true << " " << std::string("text") << " "
                    << static_cast<const void*>(nullptr) << " " << Point{3, 4} << Temporary{5};
    EXPECT_EQ(journal, Journal{line("A", 30, "x=1 2.5 1 text 0 (3, 4)5")});
}

TEST_F(LogStreams, ThePublicStreamTakesInsertionsToo) {
    log->trace().stream_ << "x=" << std::hex << 255 << Point{1, 2};
    EXPECT_EQ(journal, Journal{line("A", 10, "x=ff(1, 2)")});
}

TEST_F(LogStreams, BitFieldsAndConstantsWithoutADefinitionAreInsertedLikeAnyNumber) {
    const Fields fields = {5, -9, LOG_LEVEL_INFO};
    log->info() << fields.small << ' ' << fields.negative << ' ' << fields.level << ' '
                << Fields::declaredOnly;
    log->info().stream_ << fields.level << Fields::declaredOnly;
    EXPECT_EQ(journal, (Journal{line("A", 30, "5 -9 30 17"), line("A", 30, "3017")}));
}

TEST_F(LogStreams, ManipulatorsWorkAndStayInEffect) {
    log->info() << std::hex << std::showbase << 255 << " " << 16 << std::dec << " " << std::setw(4)
                << std::setfill('0') << 7 << std::boolalpha << " " << true << std::endl
                << std::flush;
    EXPECT_EQ(journal, Journal{line("A", 30, "0xff 0x10 0007 true\n")});
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
    EXPECT_EQ(journal, (Journal{line("A", 30, "one ...7"), line("A", 30, "one ...7")}));
}

TEST_F(LogStreams, ALineEndsAtAZeroCharacter) {
    log->info() << "seen" << '\0' << "not seen";
    EXPECT_EQ(journal, Journal{line("A", 30, "seen")});
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
    EXPECT_EQ(journal, Journal{line("A", 30, "abc")});
}

TEST_F(LogStreams, ACopyKeepsTheLevel) {
    {
        const LogStream source = log->fatal("text");
        const LogStream copy(source); // NOLINT(performance-unnecessary-copy-initialization)
    }
    EXPECT_EQ(journal, Journal{line("A", 60, "text")});
}

TEST_F(LogStreams, ACopyOutlivesItsSource) {
    LogStream* source = new LogStream(log, LOG_LEVEL_INFO, "text");
    {
        const LogStream copy(*source);
        delete source;
        EXPECT_TRUE(journal.empty());
    }
    EXPECT_EQ(journal, Journal{line("A", 30, "text")});
}

TEST_F(LogStreams, ACopyOfAStreamThatGaveItsTextAwayLogsNothing) {
    {
        const LogStream first = log->info("once");
        const LogStream second(first); // NOLINT(performance-unnecessary-copy-initialization)
        const LogStream third(first);  // NOLINT(performance-unnecessary-copy-initialization)
    }
    EXPECT_EQ(journal, Journal{line("A", 30, "once")});
}

TEST_F(LogStreams, AtLevel0NothingIsLoggedAndNothingIsCached) {
    log->log(LOG_LEVEL_NONE, "nothing");
    installBackend("B"); // would flush a cache
    EXPECT_TRUE(journal.empty());
}

TEST_F(LogStreams, BelowLevel0LinesAreLogged) {
    log->log(static_cast<LoggingLevel>(-1), "text");
    EXPECT_EQ(journal, Journal{line("A", -1, "text")});
}

TEST_F(LogStreams, ALineWhoseArgumentThrewIsLoggedUpToThatArgument) {
    const auto argument = []() -> int {
        throw 7;
    };
    EXPECT_THROW(log->info("as far as ") << "this" << argument(), int);
    EXPECT_EQ(journal, Journal{line("A", 30, "as far as this")});
}

TEST_F(LogStreams, ALineWithAFailedInsertionIsLoggedWithWhatWasWritten) {
    log->info("half ") << [](std::ostream& stream) -> std::ostream& {
        stream << "written";
        stream.setstate(std::ios_base::badbit);
        return stream << "not written";
    } << " and more";
    EXPECT_EQ(journal, Journal{line("A", 30, "half written and more")});
}

TEST_F(LogStreams, ANullTextIsLoggedAsNull) {
    const char* const null = nullptr;
    log->info(null) << null << ' ' << std::setw(7) << null;
    ZOL_LOG(log, LOG_LEVEL_FATAL) << null;
    EXPECT_EQ(journal, (Journal{line("A", 30, "(null)(null)  (null)"), line("A", 60, "(null)")}));
}

TEST_F(LogStreams, AnInsertionThatSetsOnlyFailbitThrowsNothingAndTheLineIsLogged) {
    log->info("as far as ") << [](std::ostream& stream) -> std::ostream& {
        stream << "this";
        stream.setstate(std::ios_base::failbit);
        return stream;
    };
    EXPECT_EQ(journal, Journal{line("A", 30, "as far as this")});
}

TEST_F(LogStreams, TheGateLetsActiveLevelsThrough) {
    ZOL_LOG(log, LOG_LEVEL_ERROR) << "x=" << 1;
    EXPECT_EQ(journal, Journal{line("A", 50, "x=1")});
}

TEST_F(LogStreams, TheGateEvaluatesNothingOfALineWhoseLevelIsInactive) {
    int evaluated = 0;
    ZOL_LOG(log, LOG_LEVEL_INFO) << ++evaluated;
    EXPECT_EQ(evaluated, 0);
    EXPECT_TRUE(journal.empty());
}

TEST_F(LogStreams, TheGateAsksTheLoggersOwnMinimum) {
    log->minLogLevel(LOG_LEVEL_DEBUG);
    ZOL_LOG(log, LOG_LEVEL_DEBUG) << "on";
    ZOL_LOG(log, LOG_LEVEL_TRACE) << "off";
    EXPECT_EQ(journal, Journal{line("A", 20, "on")});
}

TEST_F(LogStreams, TheGateEvaluatesItsOwnArgumentsOnce) {
    int loggers = 0;
    int levels = 0;
    ZOL_LOG((++loggers, log), (++levels, LOG_LEVEL_FATAL)) << "text";
    EXPECT_EQ(loggers, 1);
    EXPECT_EQ(levels, 1);
    EXPECT_EQ(journal.size(), 1U);
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
    EXPECT_EQ(journal, (Journal{line("A", 50, "inner"), line("A", 60, "outer, 1"),
                                line("A", 50, "same line"), line("A", 60, "2")}));
}

namespace user::ZOL {

void logAnError(Logger* logger, const char* text) {
    ZOL_LOG(logger, LOG_LEVEL_ERROR) << text;
}

} // namespace user::ZOL

TEST_F(LogStreams, TheGateWorksInANamespaceOfTheSameName) {
    user::ZOL::logAnError(log, "text");
    EXPECT_EQ(journal, Journal{line("A", 50, "text")});
}

TEST_F(LogStreams, TheGateIsOneStatementAlsoBetweenIfAndElse) {
    // NOLINTBEGIN(readability-braces-around-statements): the lack of braces is what is tested
    bool elseTaken = false;
    if (!journal.empty())
        ZOL_LOG(log, LOG_LEVEL_FATAL) << "not here";
    else
        elseTaken = true;
    EXPECT_TRUE(elseTaken);

    for (int i = 0; i < 2; ++i)
        ZOL_LOG(log, LOG_LEVEL_FATAL) << i;
    // NOLINTEND(readability-braces-around-statements)
    EXPECT_EQ(journal, (Journal{line("A", 60, "0"), line("A", 60, "1")}));
}

} // namespace
