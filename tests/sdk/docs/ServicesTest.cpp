// The examples of the services' pages, each with what the page says of it.

#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include <gtest/gtest.h>

#include "CrisisLogSandbox.h"
#include "FreshProcess.h"
#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"

#include "usings.inc"

namespace {

TEST(Services, StringHolder) {
#include "string_holder.inc"
    EXPECT_EQ(own, "left and rightleft and right");
    EXPECT_STREQ(copy.c_str(), "left");
}

TEST(Services, FrameworkException) {
#include "framework_exception.inc"
    EXPECT_STREQ(kept.message(), "out of paper");
}

TEST(Services, LoggerException) {
#include "logger_exception.inc"
    EXPECT_EQ(text, "Cannot install a NULL backend!");
}

TEST(Services, Heap) {
#include "heap.inc"
    EXPECT_EQ(numbers[9], 42);
    MemoryManager::deallocate(numbers);
}

TEST(Services, NamedObjects) {
#include "named_objects.inc"
    EXPECT_EQ(first, second);
    EXPECT_EQ(first, found);
    EXPECT_EQ(*static_cast<int*>(found), 5);
    EXPECT_EQ(MemoryManager::findObject("Shop.stock"), nullptr);
}

TEST(Services, Counter) {
#include "counter.inc"
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(orders.next(), 0);
    EXPECT_EQ(Counting::Counter::counter("shop.returns").next(), 2);
}

TEST(Services, PropertyStore) {
#include "property_store.inc"
    EXPECT_EQ(currency, wide("EUR"));
    EXPECT_EQ(store->readProperty(wide("shop.country")), wide("AT"));
}

TEST(Services, RandomNumbers) {
#include "random_numbers.inc"
    EXPECT_GE(dice, 1);
    EXPECT_LE(dice, 6);
    EXPECT_EQ(first, 42);
    EXPECT_EQ(second, 43);
}

/// The content, with each number as a 0.
std::string shapeOf(const char* path) {
    std::ifstream file(path, std::ios_base::binary);
    std::string shape;
    for (char character = 0; file.get(character);) {
        const bool isDigit = character >= '0' && character <= '9';
        if (!isDigit) {
            shape += character;
        } else if (shape.empty() || shape.back() != '0') {
            shape += '0';
        }
    }
    return shape;
}

TEST(Services, CrisisLog) {
    std::optional<support::CrisisLogSandbox> place;
    if (!support::isFreshProcess()) {
        place.emplace();
    }
    // On Windows the file cannot be read before the writer has ended.
    support::inFreshProcess([] {
#include "crisis_log.inc"
    });
    if (place.has_value()) {
        EXPECT_EQ(shapeOf(support::CrisisLogSandbox::path),
                  std::string("0:0:0.0 - no back end can be loaded") +
                      support::CrisisLogSandbox::lineEnd);
    }
}

} // namespace
