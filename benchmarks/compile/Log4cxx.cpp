#include <string>

#include <log4cxx/logger.h>

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("compile");
    LOG4CXX_INFO(logger, "line one " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line two " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line three " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line four " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line five " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line six " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line seven " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line eight " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line nine " << number << ' ' << measure << ' ' << word);
    LOG4CXX_INFO(logger, "line ten " << number << ' ' << measure << ' ' << word);
}
