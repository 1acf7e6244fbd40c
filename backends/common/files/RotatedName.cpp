#include "files/RotatedName.h"

#include <charconv>
#include <tuple>

#include <spdlog/details/os.h>
#include <spdlog/fmt/fmt.h>

namespace ZOL::Backends {

namespace {

constexpr int secondsPerDay = 24 * 60 * 60;
constexpr int maxAscii = 0x7F;
/// Of files that earlier versions kept. A higher number is somebody's year or date.
constexpr unsigned long maxNumber = 1000;

struct Date {
    int year;
    int month;
    int day;
};

bool isLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int daysOfMonth(int year, int month) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return days[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

bool exists(const Date& date) {
    return date.year >= 1970 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
           date.day <= daysOfMonth(date.year, date.month);
}

/// When the day begins in UTC. The C library of Windows has another function for it than others.
std::time_t utcOf(const Date& date) {
    long long days = date.day - 1;
    for (int year = 1970; year < date.year; ++year) {
        days += isLeapYear(year) ? 366 : 365;
    }
    for (int month = 1; month < date.month; ++month) {
        days += daysOfMonth(date.year, month);
    }
    return static_cast<std::time_t>(days * secondsPerDay);
}

/// Takes what a name consists of from its begin.
class NameReader {
public:
    explicit NameReader(std::string_view text) : text_(text) {}

    bool isAtEnd() const { return text_.empty(); }

    bool skip(std::string_view expected) {
        if (text_.substr(0, expected.size()) != expected) {
            return false;
        }
        text_.remove_prefix(expected.size());
        return true;
    }

    /// Exactly so many digits.
    std::optional<int> digits(std::size_t count) {
        int number = 0;
        if (text_.size() < count || text_.front() == '-') {
            return std::nullopt;
        }
        const char* const end = text_.data() + count;
        const auto [rest, error] = std::from_chars(text_.data(), end, number);
        if (error != std::errc() || rest != end) {
            return std::nullopt;
        }
        text_.remove_prefix(count);
        return number;
    }

    /// A number from 1 on, without zeros in front.
    std::optional<unsigned long> number() {
        unsigned long number = 0;
        const auto [rest, error] =
            std::from_chars(text_.data(), text_.data() + text_.size(), number);
        if (error != std::errc() || text_.front() == '0') {
            return std::nullopt;
        }
        text_.remove_prefix(static_cast<std::size_t>(rest - text_.data()));
        return number;
    }

    std::optional<Date> date(std::string_view separator) {
        const auto year = digits(4);
        if (!year || !skip(separator)) {
            return std::nullopt;
        }
        const auto month = digits(2);
        if (!month || !skip(separator)) {
            return std::nullopt;
        }
        const auto day = digits(2);
        if (!day || !exists({*year, *month, *day})) {
            return std::nullopt;
        }
        return Date{*year, *month, *day};
    }

    /// Seconds since midnight, of HHMMSS.
    std::optional<int> timeOfDay() {
        const auto hour = digits(2);
        const auto minute = digits(2);
        const auto second = digits(2);
        if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) {
            return std::nullopt;
        }
        return (*hour * 60 + *minute) * 60 + *second;
    }

private:
    std::string_view text_;
};

/// Reads what follows the stem of the live file, without the extension.
std::optional<RotatedName> parseMiddle(std::string_view text) {
    RotatedName name;
    NameReader reader(text);
    if (reader.skip("_")) {
        const auto day = reader.date("-");
        if (!day) {
            return std::nullopt;
        }
        name.day = text.substr(1, std::string_view("YYYY-MM-DD").size());
        name.time = utcOf(*day);
        if (reader.isAtEnd()) {
            return name;
        }
    }
    if (!reader.skip(".")) {
        return std::nullopt;
    }
    NameReader numberReader = reader;
    const auto number = numberReader.number();
    if (number && *number <= maxNumber && numberReader.isAtEnd() && name.day.empty()) {
        name.number = *number;
        return name;
    }
    const auto date = reader.date("");
    if (!date || !reader.skip("T")) {
        return std::nullopt;
    }
    const auto seconds = reader.timeOfDay();
    if (!seconds || !reader.skip("Z.")) {
        return std::nullopt;
    }
    const auto counter = reader.digits(3);
    if (!counter || !reader.isAtEnd()) {
        return std::nullopt;
    }
    name.time = utcOf(*date) + *seconds;
    name.counter = static_cast<unsigned>(*counter);
    return name;
}

// In the system's own form: a name that is no valid text cannot be converted.
using Native = std::filesystem::path::string_type;

std::optional<RotatedName> parseUncompressed(const Native& text,
                                             const std::filesystem::path& live) {
    const Native stem = live.stem().native();
    const Native extension = live.extension().native();
    if (text.size() <= stem.size() + extension.size() || text.compare(0, stem.size(), stem) != 0 ||
        text.compare(text.size() - extension.size(), Native::npos, extension) != 0) {
        return std::nullopt;
    }
    const Native middle = text.substr(stem.size(), text.size() - stem.size() - extension.size());
    std::string ascii;
    for (const Native::value_type unit : middle) {
        if (unit <= 0 || unit > maxAscii) {
            return std::nullopt;
        }
        ascii += static_cast<char>(unit);
    }
    return parseMiddle(ascii);
}

} // namespace

std::filesystem::path RotatedName::pathOf(const std::filesystem::path& live) const {
    const std::tm utc = spdlog::details::os::gmtime(time);
    std::filesystem::path path = live.parent_path() / live.stem();
    path += fmt::format("{}{}.{:04}{:02}{:02}T{:02}{:02}{:02}Z.{:03}", day.empty() ? "" : "_", day,
                        utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min,
                        utc.tm_sec, counter);
    path += live.extension();
    if (isCompressed) {
        path += compressedExtension;
    }
    return path;
}

std::optional<RotatedName> RotatedName::parse(const std::filesystem::path& name,
                                              const std::filesystem::path& live) {
    std::optional<RotatedName> result = parseUncompressed(name.native(), live);
    if (!result && name.extension() == compressedExtension) {
        result = parseUncompressed(name.stem().native(), live);
        if (result) {
            result->isCompressed = true;
        }
    }
    return result;
}

bool RotatedName::isOlderThan(const RotatedName& other) const noexcept {
    if (number != other.number) {
        return number > other.number;
    }
    return std::tie(time, counter, day, isCompressed) <
           std::tie(other.time, other.counter, other.day, other.isCompressed);
}

} // namespace ZOL::Backends
