#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sources/logger.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_logger.hpp>
#include <boost/smart_ptr/make_shared.hpp>

#include "Peer.h"

namespace {

using namespace benchmarks;
namespace expressions = boost::log::expressions;
namespace sinks = boost::log::sinks;
namespace sources = boost::log::sources;

ByteCounter& counter() {
    static ByteCounter counter;
    return counter;
}

class DiscardingBackend final : public sinks::basic_sink_backend<sinks::synchronized_feeding> {
public:
    void consume(const boost::log::record_view& record) {
        ByteCounter& target = counter();
        // Reading the text of a record takes time that must not be measured.
        if (target.isCounting) {
            target.bytes += record[expressions::smessage]->size();
        }
    }
};

constexpr int debug = 1;
constexpr int info = 2;

/// Adds the sink, which takes a lock. The library drops a record early only if it has a filter, so
/// the rows about levels set one while they run.
void addSink() {
    static const auto sink = [] {
        auto made = boost::make_shared<sinks::synchronous_sink<DiscardingBackend>>(
            boost::make_shared<DiscardingBackend>());
        boost::log::core::get()->add_sink(made);
        return made;
    }();
}

void prepareText() {
    addSink();
}

void prepareLevels() {
    addSink();
    boost::log::core::get()->set_filter(expressions::attr<int>("Severity") >= info);
}

void finishLevels() {
    boost::log::core::get()->reset_filter();
}

// One source for each thread: the library's sources without a lock are meant for that.

void runText(std::size_t n) {
    sources::logger source;
    for (std::size_t i = 0; i < n; ++i) {
        BOOST_LOG(source) << fortyCharacters;
    }
}

void runLine(std::size_t n) {
    sources::logger source;
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        BOOST_LOG(source) << lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word;
    }
}

void runAsked(std::size_t n) {
    sources::severity_logger<int> source;
    for (std::size_t i = 0; i < n; ++i) {
        const boost::log::record record =
            source.open_record(boost::log::keywords::severity = debug);
        keep(!record);
    }
}

void runOffLine(std::size_t n) {
    sources::severity_logger<int> source;
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        BOOST_LOG_SEV(source, debug)
            << lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word;
    }
}

constexpr const char* subject = "Boost.Log";

constexpr Row rows[] = {
    {plainText, Role::Peer, subject, runText, prepareText, nullptr, delivered<runText, counter>},
    {plainTextTwoThreads, Role::Peer, subject, onTwoThreads<runText>, prepareText, nullptr,
     delivered<onTwoThreads<runText>, counter>},
    {typedLine, Role::Peer, subject, runLine, prepareText, nullptr, delivered<runLine, counter>},
    {levelAsked, Role::Peer, subject, runAsked, prepareLevels, finishLevels},
    {levelOffLine, Role::Peer, subject, runOffLine, prepareLevels, finishLevels,
     delivered<runOffLine, counter>},
};

} // namespace

Rows benchmarkRows() {
    return rowsOf(rows);
}
