#include <string>

#include <spdlog/spdlog.h>

void tenLines(int number, double measure, const std::string& word);

void tenLines(int number, double measure, const std::string& word) {
    spdlog::info("line one {} {} {}", number, measure, word);
    spdlog::info("line two {} {} {}", number, measure, word);
    spdlog::info("line three {} {} {}", number, measure, word);
    spdlog::info("line four {} {} {}", number, measure, word);
    spdlog::info("line five {} {} {}", number, measure, word);
    spdlog::info("line six {} {} {}", number, measure, word);
    spdlog::info("line seven {} {} {}", number, measure, word);
    spdlog::info("line eight {} {} {}", number, measure, word);
    spdlog::info("line nine {} {} {}", number, measure, word);
    spdlog::info("line ten {} {} {}", number, measure, word);
}
