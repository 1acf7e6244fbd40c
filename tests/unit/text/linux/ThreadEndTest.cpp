// A thread that ends while a text is inserted. The C library unwinds its stack, and terminates the
// process if a handler on the way does not rethrow.

#include <ostream>

#include <pthread.h>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/detail/TextStream.h"

using ZOL::Framework::GenericLogger::detail::TextStream;

namespace {

struct EndingThread {};

std::ostream& operator<<(std::ostream& stream, const EndingThread&) {
    stream << "end";
    pthread_exit(nullptr);
}

void* insertUntilTheEnd(void* text) {
    *static_cast<TextStream*>(text) << "before " << EndingThread() << " after";
    return text;
}

TEST(TextStreams, LetAThreadEndDuringAnInsertion) {
    TextStream text;
    pthread_t thread = {};
    ASSERT_EQ(pthread_create(&thread, nullptr, insertUntilTheEnd, &text), 0);
    void* result = &text;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(text.view(), "before end");
}

} // namespace
