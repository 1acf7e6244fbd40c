#include <string>

#include <log4cplus/logger.h>
#include <log4cplus/loggingmacros.h>

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    const log4cplus::Logger logger = log4cplus::Logger::getInstance("compile");
    LOG4CPLUS_INFO(logger, "line one " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line two " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line three " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line four " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line five " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line six " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line seven " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line eight " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line nine " << number << ' ' << measure << ' ' << word);
    LOG4CPLUS_INFO(logger, "line ten " << number << ' ' << measure << ' ' << word);
}
