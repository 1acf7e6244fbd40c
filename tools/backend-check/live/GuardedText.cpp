#include "live/GuardedText.h"

#include <array>
#include <atomic>
#include <cstring>

#include "live/ThisProcess.h"

namespace backendcheck {

namespace {

// Atomic members in a fixed array: a crash may interrupt any change of them.
struct Area {
    std::atomic<const char*> begin{nullptr};
    std::atomic<const char*> end{nullptr};
    std::atomic<bool> isGone{false};
};
std::array<Area, 512> areas;
std::atomic<std::size_t> made{0};

} // namespace

GuardedText::GuardedText(std::string_view text) : number_(made++ % areas.size()) {
    const std::size_t page = pageSize();
    size_ = (text.size() + page) / page * page; // with the zero
    pages_ = newPages(size_ + page);
    char* const begin = pages_ + size_ - text.size() - 1;
    std::memcpy(begin, text.data(), text.size());
    begin[text.size()] = '\0';
    text_ = begin;
    makeReadOnly(pages_, size_);
    makeUnreadable(pages_ + size_, page);
    areas[number_].isGone = false;
    areas[number_].end = pages_ + size_ + page;
    areas[number_].begin = pages_;
}

GuardedText::~GuardedText() {
    areas[number_].isGone = true;
    makeUnreadable(pages_, size_);
}

const char* faultAt(const void* address, bool isWrite) {
    for (const Area& area : areas) {
        const char* const begin = area.begin;
        if (begin == nullptr || address < begin || address >= area.end) {
            continue;
        }
        if (area.isGone) {
            return "it uses a name or text that was valid only during an earlier call: copy what "
                   "is kept";
        }
        return isWrite ? "it writes into the name or text that was passed to it"
                       : "it reads beyond the end of the name or text that was passed to it";
    }
    return nullptr;
}

} // namespace backendcheck
