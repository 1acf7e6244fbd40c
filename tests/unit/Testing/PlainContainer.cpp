#include "PlainContainer.h"

#include <algorithm>
#include <iterator>

#if defined(GTEST_API_)
#error "GoogleTest is included"
#endif

namespace PlainContainer {

using ZOL::Testing::CapturedLog;
using ZOL::Testing::CapturedMessage;

std::vector<std::string> textsOf(const CapturedLog& log, const std::string& logger) {
    std::vector<std::string> texts;
    for (const CapturedMessage& message : log) {
        if (message.logger == logger) {
            texts.push_back(message.text);
        }
    }
    return texts;
}

std::vector<std::string> reversedTexts(const CapturedLog& log) {
    std::vector<std::string> texts;
    std::transform(std::make_reverse_iterator(log.end()), std::make_reverse_iterator(log.begin()),
                   std::back_inserter(texts),
                   [](const CapturedMessage& message) { return message.text; });
    return texts;
}

} // namespace PlainContainer
