#pragma once

#include <cstddef>
#include <deque>
#include <iterator>
#include <mutex>
#include <ostream>

#include "ZOL/Framework/Export.h"
#include "ZOL/Testing/CapturedMessage.h"
#include "ZOL/Testing/detail/CaptureBackend.h"

namespace ZOL::Testing {

/// Receives every message that any module of the process logs, on any thread, from its construction
/// to its destruction, in the order of the log. For tests:
///
///     CapturedLog captured;
///     placeOrder();
///     EXPECT_EQ(captured[0].text, "sold out");
///
/// The first one of a module installs a back end that stays installed until the process ends. That
/// one also receives the messages that loggers have cached until then. As long as a CapturedLog
/// exists, all loggers are open for all levels; the destructor of the last one restores the minimum
/// levels. Each of several CapturedLogs receives every message.
///
/// Any thread may call any operation, also while others log. A reference to a message is valid
/// until clear or the destructor is called. The object is constructed and destroyed in one module,
/// and not by a back end or channel.
class CapturedLog {
public:
    class const_iterator;
    using value_type = CapturedMessage;
    using const_reference = const CapturedMessage&;
    using reference = const_reference;
    using iterator = const_iterator;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;

    /// Throws what Logger::installBackend and Logger::getLogger throw, and std::bad_alloc. The
    /// minimum levels are then as before.
    ZOL_FRAMEWORK_HIDDEN CapturedLog()
        : mutex_(detail::OnePerModule<detail::CaptureBackend>::get().mutex()) {
        detail::OnePerModule<detail::CaptureBackend>::get().start(messages_);
    }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;
    ZOL_FRAMEWORK_HIDDEN ~CapturedLog() {
        detail::OnePerModule<detail::CaptureBackend>::get().stop(messages_);
    }

    /// The number of messages until now.
    std::size_t size() const {
        const std::lock_guard<std::mutex> lock(mutex_);
        return messages_.size();
    }
    bool empty() const { return size() == 0; }

    /// The index must be less than size().
    const CapturedMessage& operator[](std::size_t index) const {
        const std::lock_guard<std::mutex> lock(mutex_);
        return messages_[index];
    }

    /// An iterator is valid as long as its message exists. Messages that are logged later follow
    /// after an earlier end().
    const_iterator begin() const;
    const_iterator end() const;

    /// Drops the messages received until now.
    void clear() {
        const std::lock_guard<std::mutex> lock(mutex_);
        messages_.clear();
    }

private:
    std::mutex& mutex_;
    std::deque<CapturedMessage> messages_; // new messages do not move the others
};

/// The position of a message.
class CapturedLog::const_iterator {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = CapturedMessage;
    using difference_type = std::ptrdiff_t;
    using pointer = const CapturedMessage*;
    using reference = const CapturedMessage&;

    const_iterator() = default;

    reference operator*() const { return (*log_)[index_]; }
    pointer operator->() const { return &**this; }
    reference operator[](difference_type offset) const { return *(*this + offset); }

    const_iterator& operator+=(difference_type offset) {
        index_ = static_cast<std::size_t>(static_cast<difference_type>(index_) + offset);
        return *this;
    }
    const_iterator& operator-=(difference_type offset) { return *this += -offset; }
    const_iterator& operator++() { return *this += 1; }
    const_iterator& operator--() { return *this -= 1; }
    const_iterator operator++(int) {
        const const_iterator before = *this;
        ++*this;
        return before;
    }
    const_iterator operator--(int) {
        const const_iterator before = *this;
        --*this;
        return before;
    }

    friend const_iterator operator+(const_iterator iterator, difference_type offset) {
        return iterator += offset;
    }
    friend const_iterator operator+(difference_type offset, const_iterator iterator) {
        return iterator += offset;
    }
    friend const_iterator operator-(const_iterator iterator, difference_type offset) {
        return iterator -= offset;
    }
    friend difference_type operator-(const const_iterator& left, const const_iterator& right) {
        return static_cast<difference_type>(left.index_) -
               static_cast<difference_type>(right.index_);
    }

    friend bool operator==(const const_iterator& left, const const_iterator& right) {
        return left.index_ == right.index_;
    }
    friend bool operator!=(const const_iterator& left, const const_iterator& right) {
        return left.index_ != right.index_;
    }
    friend bool operator<(const const_iterator& left, const const_iterator& right) {
        return left.index_ < right.index_;
    }
    friend bool operator>(const const_iterator& left, const const_iterator& right) {
        return left.index_ > right.index_;
    }
    friend bool operator<=(const const_iterator& left, const const_iterator& right) {
        return left.index_ <= right.index_;
    }
    friend bool operator>=(const const_iterator& left, const const_iterator& right) {
        return left.index_ >= right.index_;
    }

private:
    friend class CapturedLog;

    const_iterator(const CapturedLog& log, std::size_t index) : log_(&log), index_(index) {}

    const CapturedLog* log_ = nullptr;
    std::size_t index_ = 0;
};

inline CapturedLog::const_iterator CapturedLog::begin() const {
    return {*this, 0};
}

inline CapturedLog::const_iterator CapturedLog::end() const {
    return {*this, size()};
}

/// Writes the number of messages, then each in a line of its own. Of very many, writes the first
/// and the last hundred.
inline void PrintTo(const CapturedLog& log, std::ostream* out) {
    constexpr std::size_t shownAtEachEnd = 100;
    const std::size_t count = log.size(); // does not grow meanwhile
    if (count == 0) {
        *out << "no messages";
        return;
    }
    *out << count << (count == 1 ? " message:\n" : " messages:\n");
    for (std::size_t index = 0; index < count; ++index) {
        if (count > 2 * shownAtEachEnd && index == shownAtEachEnd) {
            index = count - shownAtEachEnd;
            *out << "    ... " << index - shownAtEachEnd << " more ...\n";
        }
        *out << "    ";
        PrintTo(log[index], out);
        *out << '\n'; // also after the last one: GoogleTest continues with the type
    }
}

} // namespace ZOL::Testing
