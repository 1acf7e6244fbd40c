// The table of named objects: registerObject and findObject.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/Management/MemoryManager.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;
using MemoryManager::findObject;
using MemoryManager::registerObject;

namespace {

using Factory = void* (*)();
static_assert(std::is_same_v<decltype(&registerObject), void* (*)(const char*, Factory)>);
static_assert(std::is_same_v<decltype(&findObject), void* (*)(const char*)>);

std::atomic<int> factoryCalls = 0;
int objects[2] = {};

void* makeFirst() {
    ++factoryCalls;
    return &objects[0];
}

void* makeSecond() {
    ++factoryCalls;
    return &objects[1];
}

void* makeNull() {
    ++factoryCalls;
    return nullptr;
}

/// Each call makes another object.
void* makeAnother() {
    static int made[100] = {};
    return &made[factoryCalls++];
}

/// Objects cannot be removed from the table, so each test has its own names.
class ObjectTable : public testing::Test {
protected:
    ObjectTable() { factoryCalls = 0; }

    /// How often factories ran since the last time.
    static int calls() { return factoryCalls.exchange(0); }

    /// Another thread gets through, so the lock is free.
    static void expectLockIsFree() {
        std::thread([] { findObject("ObjectTable.no such name"); }).join();
    }
};

TEST_F(ObjectTable, FindsNoObjectOfAnUnregisteredName) {
    EXPECT_EQ(findObject("ObjectTable.nobody's"), nullptr);
    EXPECT_EQ(findObject("ObjectTable.nobody's"), nullptr) << "looking does not register";
    EXPECT_EQ(registerObject("ObjectTable.nobody's", makeFirst), &objects[0]);
}

TEST_F(ObjectTable, RunsTheFactoryOnceAndGivesItsObjectToAll) {
    EXPECT_EQ(registerObject("ObjectTable.first", makeFirst), &objects[0]);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(registerObject("ObjectTable.first", makeFirst), &objects[0]);
    EXPECT_EQ(findObject("ObjectTable.first"), &objects[0]);
    EXPECT_EQ(calls(), 0);
}

TEST_F(ObjectTable, KeepsTheObjectOfTheFirstFactory) {
    EXPECT_EQ(registerObject("ObjectTable.kept", makeFirst), &objects[0]);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(registerObject("ObjectTable.kept", makeSecond), &objects[0]);
    EXPECT_EQ(registerObject("ObjectTable.kept", makeNull), &objects[0]);
    EXPECT_EQ(calls(), 0) << "a later factory is not called";
    EXPECT_EQ(findObject("ObjectTable.kept"), &objects[0]);
}

TEST_F(ObjectTable, MayHoldOneObjectUnderTwoNames) {
    EXPECT_EQ(registerObject("ObjectTable.name", makeFirst), &objects[0]);
    EXPECT_EQ(registerObject("ObjectTable.other name", makeFirst), &objects[0]);
    EXPECT_EQ(calls(), 2);
}

TEST_F(ObjectTable, HasCaseSensitiveNames) {
    EXPECT_EQ(registerObject("a", makeFirst), &objects[0]);
    EXPECT_EQ(findObject("A"), nullptr);
    EXPECT_EQ(registerObject("A", makeSecond), &objects[1]);
    EXPECT_EQ(findObject("a"), &objects[0]);
    EXPECT_EQ(findObject("A"), &objects[1]);
}

TEST_F(ObjectTable, ComparesNamesByteByByteAndByLength) {
    const std::vector<const char*> names = {"n", "n ", " n", "nn", "n\x7F", "n\xE9", "n\xC9"};
    std::vector<void*> made;
    for (const char* const name : names) {
        EXPECT_EQ(findObject(name), nullptr) << name;
        made.push_back(registerObject(name, makeAnother));
    }
    EXPECT_EQ(calls(), static_cast<int>(names.size()));
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(findObject(names[i]), made[i]) << names[i];
    }
}

TEST_F(ObjectTable, TakesTheEmptyName) {
    EXPECT_EQ(findObject(""), nullptr);
    EXPECT_EQ(registerObject("", makeFirst), &objects[0]);
    EXPECT_EQ(findObject(""), &objects[0]);
    EXPECT_EQ(registerObject("", makeSecond), &objects[0]);
    EXPECT_EQ(findObject(" "), nullptr);
}

TEST_F(ObjectTable, KeepsACopyOfTheName) {
    std::string name = "ObjectTable.a name that is longer than a short string";
    registerObject(name.c_str(), makeFirst);
    name[0] = 'X';
    EXPECT_EQ(findObject(name.c_str()), nullptr);
    EXPECT_EQ(findObject("ObjectTable.a name that is longer than a short string"), &objects[0]);
}

TEST_F(ObjectTable, NeverLooksIntoAnObject) {
    const Factory madeOfANumber = [] {
        const std::uintptr_t number = 1;
        void* noAddress = nullptr;
        std::memcpy(&noAddress, &number, sizeof(noAddress));
        return noAddress;
    };
    void* const object = registerObject("ObjectTable.opaque", madeOfANumber);
    EXPECT_EQ(object, madeOfANumber());
    EXPECT_EQ(findObject("ObjectTable.opaque"), object);
}

TEST_F(ObjectTable, KeepsTheNullOfAFactory) {
    const char* const name = "ObjectTable.null";
    EXPECT_EQ(registerObject(name, makeNull), nullptr);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(findObject(name), nullptr);

    // Each later caller's factory runs, and its object is that caller's alone.
    EXPECT_EQ(registerObject(name, makeFirst), &objects[0]);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(findObject(name), nullptr);
    EXPECT_EQ(registerObject(name, makeSecond), &objects[1]);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(findObject(name), nullptr);

    void* const third = registerObject(name, makeAnother);
    void* const fourth = registerObject(name, makeAnother);
    EXPECT_NE(third, fourth);
    EXPECT_EQ(calls(), 2) << "it goes on running on every call";
    EXPECT_EQ(registerObject(name, makeNull), nullptr);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(findObject(name), nullptr);
}

struct FactoryFailure {
    std::string text;
};

TEST_F(ObjectTable, StoresNothingOfAFactoryThatThrows) {
    const char* const name = "ObjectTable.thrown";
    const Factory throwing = []() -> void* {
        ++factoryCalls;
        throw FactoryFailure{"no object today"};
    };
    for (int i = 0; i < 2; ++i) {
        try {
            registerObject(name, throwing);
            FAIL() << "nothing was thrown";
        } catch (const FactoryFailure& failure) {
            EXPECT_EQ(failure.text, "no object today") << "it arrives unchanged";
        }
        EXPECT_EQ(calls(), 1) << "at every try";
        expectLockIsFree();
        EXPECT_EQ(findObject(name), nullptr);
    }
    // A null would have been kept, had the name been stored.
    EXPECT_EQ(registerObject(name, makeFirst), &objects[0]);
    EXPECT_EQ(calls(), 1);
    EXPECT_EQ(findObject(name), &objects[0]);
}

TEST_F(ObjectTable, PropagatesEveryExceptionOfAFactory) {
    EXPECT_THROW(registerObject("ObjectTable.number", []() -> void* { throw 42; }), int);
    EXPECT_THROW(
        registerObject("ObjectTable.standard", []() -> void* { throw std::runtime_error("text"); }),
        std::runtime_error);
    expectLockIsFree();
    EXPECT_EQ(findObject("ObjectTable.number"), nullptr);
    EXPECT_EQ(findObject("ObjectTable.standard"), nullptr);
}

TEST_F(ObjectTable, AThrowingFactoryAfterANullLeavesTheNull) {
    const char* const name = "ObjectTable.null and thrown";
    registerObject(name, makeNull);
    EXPECT_THROW(registerObject(name, []() -> void* { throw FactoryFailure{"text"}; }),
                 FactoryFailure);
    EXPECT_EQ(registerObject(name, makeFirst), &objects[0]);
    EXPECT_EQ(findObject(name), nullptr);
}

// The factory below stays inside, with the lock held, until the others had time to get past it.

std::atomic<bool> factoryEntered = false;
std::atomic<int> returned = 0;
int returnedDuringFactory = 0;

void* makeSlowly() {
    ++factoryCalls;
    factoryEntered = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    returnedDuringFactory = returned;
    return &objects[0];
}

/// Calls made by other threads while a factory runs, that came back before it was done.
template <typename... Calls>
int returnedWhileAFactoryRuns(const char* name, Calls... others) {
    factoryEntered = false;
    returned = 0;
    returnedDuringFactory = -1;
    std::vector<std::thread> threads;
    threads.emplace_back([name] { registerObject(name, makeSlowly); });
    while (!factoryEntered) {
        std::this_thread::yield();
    }
    (threads.emplace_back([others] {
        others();
        ++returned;
    }),
     ...);
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(returned, static_cast<int>(sizeof...(others)));
    return returnedDuringFactory;
}

TEST_F(ObjectTable, ASlowFactoryBlocksCallsWithEveryName) {
    registerObject("ObjectTable.there already", makeSecond);
    const int early = returnedWhileAFactoryRuns(
        "ObjectTable.slow", [] { EXPECT_EQ(findObject("ObjectTable.unknown"), nullptr); },
        [] { EXPECT_EQ(findObject("ObjectTable.there already"), &objects[1]); },
        [] { EXPECT_EQ(registerObject("ObjectTable.there already", makeFirst), &objects[1]); },
        [] { EXPECT_EQ(registerObject("ObjectTable.new one", makeSecond), &objects[1]); });
    EXPECT_EQ(early, 0);
    EXPECT_EQ(findObject("ObjectTable.slow"), &objects[0]);
}

TEST_F(ObjectTable, ACallDuringTheFactoryGetsItsObject) {
    const int early = returnedWhileAFactoryRuns(
        "ObjectTable.awaited", [] { EXPECT_EQ(findObject("ObjectTable.awaited"), &objects[0]); },
        [] { EXPECT_EQ(registerObject("ObjectTable.awaited", makeSecond), &objects[0]); });
    EXPECT_EQ(early, 0);
    EXPECT_EQ(calls(), 1);
}

TEST_F(ObjectTable, RunsTheFactoryOnItsCallersThread) {
    static std::thread::id factoryThread;
    registerObject("ObjectTable.thread", []() -> void* {
        factoryThread = std::this_thread::get_id();
        return &objects[0];
    });
    EXPECT_EQ(factoryThread, std::this_thread::get_id());
}

TEST_F(ObjectTable, RunsOneFactoryHoweverManyThreadsAskAtOnce) {
    constexpr std::size_t threadCount = 8;
    for (int round = 0; round < 20; ++round) {
        const std::string name = "ObjectTable.race " + std::to_string(round);
        std::atomic<std::size_t> ready = 0;
        std::vector<void*> got(threadCount);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (void*& object : got) {
            threads.emplace_back([&] {
                ++ready;
                while (ready < threadCount) {
                    std::this_thread::yield();
                }
                object = registerObject(name.c_str(), [] {
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
                    return makeAnother();
                });
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(calls(), 1) << "round " << round;
        EXPECT_EQ(got, std::vector<void*>(threadCount, findObject(name.c_str())));
    }
}

} // namespace
