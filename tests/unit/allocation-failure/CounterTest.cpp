#include "OutOfMemory.h"

#include "ZOL/Framework/Counting/Counter.h"

using ZOL::Framework::Counting::Counter;

namespace {

class CounterOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(CounterOutOfMemory);

TEST_P(CounterOutOfMemory, ANewCounterThatFailsLeavesTheTableAsItWas) {
    const std::string known = uniqueName();
    Counter& other = Counter::counter(known.c_str());
    other.next();
    const std::string name = uniqueName();
    Counter* made = nullptr;
    EXPECT_EQ(sweep([&] { made = &Counter::counter(name.c_str()); },
                    [&] {
                        EXPECT_EQ(made, nullptr);
                        EXPECT_EQ(&Counter::counter(known.c_str()), &other);
                    }),
              3U)
        << "name, counter and entry";
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->next(), 0);
    EXPECT_EQ(&Counter::counter(name.c_str()), made);
    EXPECT_EQ(other.next(), 1);
}

TEST_P(CounterOutOfMemory, AFailedSearchLeavesAKnownCounterUsable) {
    const std::string name = uniqueName();
    Counter& counter = Counter::counter(name.c_str());
    counter.next();
    Counter* found = nullptr;
    EXPECT_LE(sweep([&] { found = &Counter::counter(name.c_str()); }), 1U);
    EXPECT_EQ(found, &counter);
    EXPECT_EQ(counter.next(), 1);
}

TEST_P(CounterOutOfMemory, CountingNeedsNone) {
    Counter& counter = Counter::counter(uniqueName().c_str());
    Counter& other = Counter::counter(uniqueName().c_str());
    EXPECT_EQ(allocationsOf([&] {
                  counter.next();
                  other = counter;
                  counter.reset();
              }),
              0U);
    EXPECT_EQ(other.next(), 1);
}

} // namespace
