#include <string>

#include "ZOL/Framework/GenericLogger/Logger.h"

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    auto* const logger = ZOL::Framework::GenericLogger::Logger::getLogger("compile");
    logger->info("line one ") << number << ' ' << measure << ' ' << word;
    logger->info("line two ") << number << ' ' << measure << ' ' << word;
    logger->info("line three ") << number << ' ' << measure << ' ' << word;
    logger->info("line four ") << number << ' ' << measure << ' ' << word;
    logger->info("line five ") << number << ' ' << measure << ' ' << word;
    logger->info("line six ") << number << ' ' << measure << ' ' << word;
    logger->info("line seven ") << number << ' ' << measure << ' ' << word;
    logger->info("line eight ") << number << ' ' << measure << ' ' << word;
    logger->info("line nine ") << number << ' ' << measure << ' ' << word;
    logger->info("line ten ") << number << ' ' << measure << ' ' << word;
}
