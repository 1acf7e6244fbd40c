#include <ostream>
#include <string>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/log/attributes/clock.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_file_backend.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/sources/severity_channel_logger.hpp>
#include <boost/log/support/date_time.hpp>
#include <boost/smart_ptr/make_shared.hpp>

#include "FilePeer.h"

namespace {

using namespace benchmarks;
namespace expressions = boost::log::expressions;
namespace keywords = boost::log::keywords;
namespace sinks = boost::log::sinks;

using FileSink = sinks::synchronous_sink<sinks::text_file_backend>;

enum class Severity { Info };

std::ostream& operator<<(std::ostream& stream, Severity) {
    return stream << "INFO";
}

boost::shared_ptr<FileSink> sink;

void open(const char* path, bool isFlushed) {
    sink = boost::make_shared<FileSink>(boost::make_shared<sinks::text_file_backend>(
        keywords::file_name = path, keywords::rotation_size = fileRotationBytes,
        keywords::auto_flush = isFlushed));
    // The library has no milliseconds: %f is microseconds.
    sink->set_formatter(expressions::stream
                        << expressions::format_date_time<boost::posix_time::ptime>(
                               "TimeStamp", "%Y-%m-%d %H:%M:%S.%f")
                        << ' ' << expressions::attr<Severity>("Severity") << " ["
                        << expressions::attr<std::string>("Channel") << "] "
                        << expressions::smessage);
    boost::log::core::get()->add_global_attribute("TimeStamp",
                                                  boost::log::attributes::local_clock());
    boost::log::core::get()->add_sink(sink);
}

void close() {
    boost::log::core::get()->remove_sink(sink);
    sink.reset();
}

/// One source for each thread: the library's sources without a lock are meant for that.
struct BoostLog {
    boost::log::sources::severity_channel_logger<Severity> source{keywords::channel =
                                                                      std::string(fileLogger)};

    void logText() { BOOST_LOG_SEV(source, Severity::Info) << fortyCharacters; }
};

} // namespace

void benchmarkFileSubject(FileSubject& subject) {
    subject = {open, logTimed<BoostLog>, close};
}
