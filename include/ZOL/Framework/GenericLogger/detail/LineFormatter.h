#pragma once

#include <ios>
#include <ostream>
#include <streambuf>

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/detail/LineBuffer.h"

namespace ZOL::Framework::GenericLogger::detail {

/// A std::ostream in the classic locale that appends to a line.
class LineFormatter {
public:
    explicit LineFormatter(LineBuffer& line) : sink_(line), stream_(&sink_) {
        stream_.imbue(std::locale::classic());
        // Rethrows std::bad_alloc, which a std::ostream catches by default.
        stream_.exceptions(std::ios_base::badbit);
    }

    ZOL_FRAMEWORK_NOINLINE ~LineFormatter() {}
    std::ostream& stream() { return stream_; }
    bool isBad() const { return stream_.bad(); }

private:
    class Sink final : public std::streambuf {
    public:
        explicit Sink(LineBuffer& line) : line_(line) {}

    private:
        int_type overflow(int_type character) override {
            if (!traits_type::eq_int_type(character, traits_type::eof())) {
                const char one = traits_type::to_char_type(character);
                line_.append(&one, 1);
            }
            return traits_type::not_eof(character);
        }

        std::streamsize xsputn(const char* text, std::streamsize size) override {
            line_.append(text, static_cast<std::size_t>(size));
            return size;
        }

        LineBuffer& line_;
    };

    Sink sink_;
    std::ostream stream_;
};

} // namespace ZOL::Framework::GenericLogger::detail
