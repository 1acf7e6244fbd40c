#pragma once

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace backendcheck {

class CutShort : public std::runtime_error {
public:
    CutShort() : std::runtime_error("a part of it is missing") {}
};

/// The content of a file that may end anywhere.
class Bytes {
public:
    explicit Bytes(std::string content) : content_(std::move(content)) {}

    std::size_t size() const { return content_.size(); }

    bool beginsWith(std::string_view text) const {
        return content_.compare(0, text.size(), text) == 0;
    }
    bool has(std::string_view text) const { return content_.find(text) != std::string::npos; }

    /// Throws CutShort, as the following does.
    template <typename Value>
    Value at(std::size_t offset) const {
        need(offset, sizeof(Value));
        Value value;
        std::memcpy(&value, content_.data() + offset, sizeof(Value));
        return value;
    }

    /// The zero-terminated text that begins there.
    std::string textAt(std::size_t offset) const {
        need(offset, 1);
        const std::size_t end = content_.find('\0', offset);
        if (end == std::string::npos) {
            throw CutShort();
        }
        return content_.substr(offset, end - offset);
    }

    void need(std::size_t offset, std::size_t size) const {
        if (offset > content_.size() || size > content_.size() - offset) {
            throw CutShort();
        }
    }

private:
    std::string content_;
};

} // namespace backendcheck
