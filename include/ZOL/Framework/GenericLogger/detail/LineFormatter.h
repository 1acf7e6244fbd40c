#pragma once

#include <cstddef>
#include <ios>
#include <ostream>
#include <streambuf>

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/detail/LineBuffer.h"

namespace ZOL::Framework::GenericLogger::detail {

/// A std::ostream in the classic locale that appends to a line. A failed insertion sets its state
/// and throws nothing, except std::bad_alloc if there is no memory for the line.
class LineFormatter {
public:
    explicit LineFormatter(LineBuffer& line) : sink_(line, stream_), stream_(&sink_) {
        stream_.imbue(std::locale::classic());
    }

    ZOL_FRAMEWORK_NOINLINE ~LineFormatter() {}

    /// Returns the stream in a state that accepts insertions, also after one that failed.
    std::ostream& stream() {
        if (!stream_.good()) {
            stream_.clear();
            stream_.exceptions(std::ios_base::goodbit);
        }
        return stream_;
    }

private:
    class Sink final : public std::streambuf {
    public:
        Sink(LineBuffer& line, std::ostream& stream) : line_(line), stream_(stream) {}

    private:
        int_type overflow(int_type character) override {
            if (!traits_type::eq_int_type(character, traits_type::eof())) {
                const char one = traits_type::to_char_type(character);
                append(&one, 1);
            }
            return traits_type::not_eof(character);
        }

        std::streamsize xsputn(const char* text, std::streamsize size) override {
            append(text, static_cast<std::size_t>(size));
            return size;
        }

        ZOL_FRAMEWORK_NOINLINE void append(const char* text, std::size_t size) {
            try {
                line_.append(text, size);
            } catch (...) {
                // The stream that called catches the exception. It rethrows it only if its mask
                // contains badbit.
                if (stream_.good()) {
                    stream_.exceptions(std::ios_base::badbit);
                }
                throw;
            }
        }

        LineBuffer& line_;
        std::ostream& stream_;
    };

    Sink sink_;
    std::ostream stream_;
};

} // namespace ZOL::Framework::GenericLogger::detail
