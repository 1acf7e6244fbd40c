#include "Pattern.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <utility>

#include <spdlog/details/os.h>
#include <spdlog/fmt/fmt.h>
#include <spdlog/pattern_formatter.h>
#include <utf8.h>

#include "Levels.h"
#include "Process.h"
#include "SyslogPriority.h"

namespace ZOL::Backends {

namespace {

constexpr std::string_view flags = "aAbBcCdDeEfFhHiIlLmMnNoOpPrRStTuvVWxXyYz%^$";
/// Of these, the ones whose text is the same for all messages of a second.
constexpr std::string_view flagsOfASecond = "aAbBcCdDEhHImMNprRSTWxXYz%";
constexpr int userFacility = 1 << 3;

bool isContinuationByte(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// One flag of a pattern: '%', perhaps an alignment, a width and '!', and a letter.
struct Flag {
    std::string_view text;
    bool isKnown;
    bool isOfASecond; ///< whether messages of the same second have the same text there
};

/// Removes the flag that a pattern begins with.
Flag takeFlag(std::string_view& pattern) {
    std::size_t size = 1;
    const auto next = [pattern, &size] {
        return size < pattern.size() ? pattern[size] : '\0';
    };
    const auto isDigit = [&next] {
        return next() >= '0' && next() <= '9';
    };
    if (next() == '-' || next() == '=') {
        ++size;
    }
    if (isDigit()) {
        while (isDigit()) {
            ++size;
        }
        if (next() == '!') {
            ++size;
        }
    }
    const bool isKnown = flags.find(next()) != std::string_view::npos;
    const bool isOfASecond = !isKnown || flagsOfASecond.find(next()) != std::string_view::npos;
    do {
        ++size;
    } while (size < pattern.size() && isContinuationByte(pattern[size]));
    const std::string_view text = pattern.substr(0, size);
    pattern.remove_prefix(text.size());
    return {text, isKnown, isOfASecond};
}

/// Calls a function for the text before each flag, and another one for the flag.
template <typename OnText, typename OnFlag>
void forEachPart(std::string_view pattern, OnText onText, OnFlag onFlag) {
    while (!pattern.empty()) {
        const std::string_view text = pattern.substr(0, pattern.find('%'));
        onText(text);
        pattern.remove_prefix(text.size());
        if (!pattern.empty()) {
            onFlag(takeFlag(pattern));
        }
    }
}

/// A part of a pattern, with unknown flags as plain text.
struct PatternPart {
    std::string text;
    bool isOfASecond;
};

/// The parts of a pattern, alternately of a second and of a message.
std::vector<PatternPart> splitPattern(std::string_view pattern) {
    std::vector<PatternPart> parts;
    const auto add = [&parts](std::string_view prefix, std::string_view text, bool isOfASecond) {
        if (parts.empty() || parts.back().isOfASecond != isOfASecond) {
            parts.push_back({{}, isOfASecond});
        }
        parts.back().text.append(prefix).append(text);
    };
    forEachPart(
        pattern,
        [&add, &parts](std::string_view text) {
            if (!text.empty()) {
                add("", text, parts.empty() || parts.back().isOfASecond);
            }
        },
        [&add](const Flag& flag) { add(flag.isKnown ? "" : "%", flag.text, flag.isOfASecond); });
    return parts;
}

/// Aligns or truncates what has been appended since begin. Counts characters, not bytes.
void pad(const spdlog::details::padding_info& padding, std::size_t begin,
         spdlog::memory_buf_t& line) {
    using Side = spdlog::details::padding_info::pad_side;
    const auto size = static_cast<std::size_t>(
        std::count_if(line.data() + begin, line.data() + line.size(),
                      [](char byte) { return !isContinuationByte(byte); }));
    if (size >= padding.width_) {
        if (padding.truncate_ && size > padding.width_) {
            const char* end = line.data() + begin;
            ::utf8::unchecked::advance(end, padding.width_);
            line.resize(static_cast<std::size_t>(end - line.data()));
        }
        return;
    }
    const std::size_t blanks = padding.width_ - size;
    const std::size_t before = padding.side_ == Side::left     ? blanks
                               : padding.side_ == Side::center ? blanks / 2
                                                               : 0;
    const std::size_t end = line.size();
    line.resize(end + blanks);
    char* const text = line.data() + begin;
    std::fill(line.data() + end, line.data() + line.size(), ' ');
    std::rotate(text, line.data() + end, line.data() + end + before);
}

/// A flag of this library.
class OwnFlag final : public spdlog::custom_flag_formatter {
public:
    using Append = std::function<void(const spdlog::details::log_msg&, spdlog::memory_buf_t&)>;

    explicit OwnFlag(Append append) : append_(std::move(append)) {}

    void format(const spdlog::details::log_msg& message, const std::tm&,
                spdlog::memory_buf_t& line) override {
        const std::size_t begin = line.size();
        append_(message, line);
        if (padinfo_.enabled()) {
            pad(padinfo_, begin, line);
        }
    }

    std::unique_ptr<spdlog::custom_flag_formatter> clone() const override {
        return std::make_unique<OwnFlag>(append_);
    }

private:
    Append append_;
};

void append(spdlog::memory_buf_t& line, std::string_view text) {
    line.append(text.data(), text.data() + text.size());
}

void append(spdlog::memory_buf_t& line, std::size_t number) {
    const fmt::format_int digits(number);
    line.append(digits.data(), digits.data() + digits.size());
}

/// Appends the difference of local time and UTC, such as +05:30. spdlog's own flag has the offset
/// of up to ten seconds ago and, on Windows, that of local time for UTC also.
class UtcOffset {
public:
    explicit UtcOffset(spdlog::pattern_time_type timeType) : timeType_(timeType) {}

    void operator()(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) {
        const std::time_t time = spdlog::log_clock::to_time_t(message.time);
        if (time != time_) {
            minutes_ = minutesAt(time);
            time_ = time;
        }
        const int minutes = std::abs(minutes_);
        fmt::format_to(std::back_inserter(line), "{}{:02}:{:02}", minutes_ < 0 ? '-' : '+',
                       minutes / 60, minutes % 60);
    }

private:
    int minutesAt(std::time_t time) const {
        if (timeType_ == spdlog::pattern_time_type::utc) {
            return 0;
        }
        const std::tm local = spdlog::details::os::localtime(time);
        const std::tm utc = spdlog::details::os::gmtime(time);
        const int days = local.tm_year != utc.tm_year ? local.tm_year - utc.tm_year
                                                      : local.tm_yday - utc.tm_yday;
        return (days * 24 + local.tm_hour - utc.tm_hour) * 60 + local.tm_min - utc.tm_min;
    }

    spdlog::pattern_time_type timeType_;
    std::time_t time_ = -1;
    int minutes_ = 0;
};

std::unique_ptr<spdlog::formatter> makePartFormatter(const std::string& pattern,
                                                     spdlog::pattern_time_type timeType,
                                                     const Record& record) {
    using Message = spdlog::details::log_msg;
    using Line = spdlog::memory_buf_t;
    auto formatter = std::make_unique<spdlog::pattern_formatter>("", timeType, "");
    const auto add = [&formatter](char flag, const OwnFlag::Append& append) {
        formatter->add_flag<OwnFlag>(flag, append);
    };
    add('v', [&record](const Message&, Line& line) { append(line, record.line); });
    add('V', [&record](const Message&, Line& line) { append(line, record.text); });
    add('n', [&record](const Message&, Line& line) { append(line, record.logger); });
    add('l', [&record](const Message&, Line& line) { append(line, levelName(record.level)); });
    add('L', [&record](const Message&, Line& line) {
        append(line, levelName(record.level).substr(0, 1));
    });
    add('y', [](const Message& message, Line& line) {
        append(line, static_cast<std::size_t>(userFacility | syslogPriority(message.level)));
    });
    add('t', [](const Message&, Line& line) {
        // Not that of the message: spdlog stores it, and a child process after fork has another.
        append(line, spdlog::details::os::_thread_id());
    });
    add('N', [name = programName()](const Message&, Line& line) { append(line, name); });
    add('W', [name = hostName()](const Message&, Line& line) { append(line, name); });
    add('z', UtcOffset(timeType));
    formatter->set_pattern(pattern);
    return formatter;
}

/// Formats the parts of a pattern one after the other. Those that are the same for all messages of
/// a second are formatted once a second: they are most of a time stamp, and its costly part.
class LineFormatter final : public spdlog::formatter {
public:
    explicit LineFormatter(std::string lineEnd) : lineEnd_(std::move(lineEnd)) {}

    void add(bool isOfASecond, std::unique_ptr<spdlog::formatter> partFormatter) {
        parts_.push_back({isOfASecond, std::move(partFormatter), {}});
    }

    void format(const spdlog::details::log_msg& message, spdlog::memory_buf_t& line) override {
        const auto second = std::chrono::floor<std::chrono::seconds>(message.time);
        if (second != second_) {
            formatSecond(message);
            second_ = second;
        }
        for (const Part& part : parts_) {
            if (part.isOfASecond) {
                append(line, part.text);
            } else {
                part.formatter->format(message, line);
            }
        }
        append(line, lineEnd_);
    }

    std::unique_ptr<spdlog::formatter> clone() const override {
        auto copy = std::make_unique<LineFormatter>(lineEnd_);
        for (const Part& part : parts_) {
            copy->add(part.isOfASecond, part.formatter->clone());
        }
        return copy;
    }

private:
    using Second = std::chrono::time_point<spdlog::log_clock, std::chrono::seconds>;

    struct Part {
        bool isOfASecond;
        std::unique_ptr<spdlog::formatter> formatter;
        std::string text; ///< of the present second
    };

    /// If it throws, the texts of the parts may be of different seconds, and the next call formats
    /// them again.
    void formatSecond(const spdlog::details::log_msg& message) {
        second_ = Second::min();
        for (Part& part : parts_) {
            if (part.isOfASecond) {
                spdlog::memory_buf_t text;
                part.formatter->format(message, text);
                part.text.assign(text.data(), text.size());
            }
        }
    }

    std::string lineEnd_;
    std::vector<Part> parts_;
    Second second_ = Second::min();
};

} // namespace

std::string_view knownFlags() {
    return flags;
}

std::vector<std::string> unknownFlags(std::string_view pattern) {
    std::vector<std::string> unknown;
    forEachPart(
        pattern, [](std::string_view) {},
        [&unknown](const Flag& flag) {
            if (!flag.isKnown &&
                std::find(unknown.begin(), unknown.end(), flag.text) == unknown.end()) {
                unknown.emplace_back(flag.text);
            }
        });
    return unknown;
}

std::unique_ptr<spdlog::formatter> makeFormatter(std::string_view pattern,
                                                 spdlog::pattern_time_type timeType,
                                                 const std::string& lineEnd, const Record& record) {
    auto formatter = std::make_unique<LineFormatter>(lineEnd);
    for (const PatternPart& part : splitPattern(pattern)) {
        formatter->add(part.isOfASecond, makePartFormatter(part.text, timeType, record));
    }
    return formatter;
}

} // namespace ZOL::Backends
