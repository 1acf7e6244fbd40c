// Compiled once for each library, to measure how long that takes. LIBRARY_<NAME> chooses the
// library; without it, the source is empty.

#if defined(LIBRARY_ZOL)
#include "ZOL/Framework/GenericLogger/Logger.h"
#define LOGGER auto* const logger = ZOL::Framework::GenericLogger::Logger::getLogger("compile")
#define LINE(text) logger->info(text " ") << number << ' ' << measure << ' ' << word
#elif defined(LIBRARY_SPDLOG)
#include <spdlog/spdlog.h>
#define LINE(text) spdlog::info(text " {} {} {}", number, measure, word)
#elif defined(LIBRARY_LOG4CPLUS)
#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>
#define LOGGER const log4cplus::Logger logger = log4cplus::Logger::getInstance("compile")
#define LINE(text) LOG4CPLUS_INFO(logger, text " " << number << ' ' << measure << ' ' << word)
#elif defined(LIBRARY_BOOST_LOG)
#include <boost/log/trivial.hpp>
#define LINE(text) BOOST_LOG_TRIVIAL(info) << text " " << number << ' ' << measure << ' ' << word
#elif defined(LIBRARY_LOG4CXX)
#include <log4cxx/logger.h>
#define LOGGER const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("compile")
#define LINE(text) LOG4CXX_INFO(logger, text " " << number << ' ' << measure << ' ' << word)
#elif defined(LIBRARY_GLOG)
#include <glog/logging.h>
#define LINE(text) LOG(INFO) << text " " << number << ' ' << measure << ' ' << word
#endif

#if defined(LINE)
#if !defined(LOGGER)
#define LOGGER static_cast<void>(0)
#endif

#include <string>

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    LOGGER;
    LINE("line one");
    LINE("line two");
    LINE("line three");
    LINE("line four");
    LINE("line five");
    LINE("line six");
    LINE("line seven");
    LINE("line eight");
    LINE("line nine");
    LINE("line ten");
}
#else
void tenLines();

void tenLines() {}
#endif
