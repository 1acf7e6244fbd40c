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

ByteCounter discarded;

class DiscardBackend final : public sinks::basic_sink_backend<sinks::synchronized_feeding> {
public:
    void consume(const boost::log::record_view& record) {
        // Reading the text of a record takes time that must not be measured.
        if (discarded.isCounting) {
            discarded.add(record[expressions::smessage]->size());
        }
    }
};

constexpr int debug = 1;
constexpr int info = 2;

/// Adds the sink, which takes a lock.
void addSink() {
    static const auto sink = [] {
        auto made = boost::make_shared<sinks::synchronous_sink<DiscardBackend>>(
            boost::make_shared<DiscardBackend>());
        boost::log::core::get()->add_sink(made);
        return made;
    }();
}

/// The library drops a record early only if it has a filter. Only the rows about levels set one.
void setFilter() {
    addSink();
    boost::log::core::get()->set_filter(expressions::attr<int>("Severity") >= info);
}

void resetFilter() {
    boost::log::core::get()->reset_filter();
}

// One source for each thread: the library's sources without a lock are meant for that.

struct PlainSource {
    sources::logger source;
    const std::string& word = lineWord();

    void logText() { BOOST_LOG(source) << fortyCharacters; }
    void logLine(int number) {
        BOOST_LOG(source) << lineStart << number << ' ' << lineNumber << ' ' << word;
    }

    static ByteCounter& counter() { return discarded; }
};

struct SeveritySource {
    sources::severity_logger<int> source;
    const std::string& word = lineWord();

    bool isDebugActive() {
        const boost::log::record record =
            source.open_record(boost::log::keywords::severity = debug);
        return !!record;
    }
    void logDebugLine(int number) {
        BOOST_LOG_SEV(source, debug) << lineStart << number << ' ' << lineNumber << ' ' << word;
    }

    static ByteCounter& counter() { return discarded; }
};

} // namespace

void benchmarkRows(std::vector<Row>& rows) {
    const SubjectRows<PlainSource> plain = {Role::Peer, "Boost.Log", addSink};
    const SubjectRows<SeveritySource> filtered = {Role::Peer, "Boost.Log", setFilter, resetFilter};
    rows = {plain.text(), plain.textOnTwoThreads(), plain.line(), filtered.level(),
            filtered.debugLine()};
}
