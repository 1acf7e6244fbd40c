// Host, modules and plug-in share one counter, one object, one property and one heap, also when
// they are built differently.

#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "WideText.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Framework/StringHolder.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;
using support::wide;
using ZOL::Framework::Framework;
using ZOL::Framework::StringHolder;
using ZOL::Framework::Counting::Counter;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::GenericLogger::Logger;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

// Longer than the small-string buffer.
constexpr const char* longText = "a text that is longer than what a string holds within itself";

/// Modules and the objects that they registered remain until the process ends.
const DLLHolder& a() {
    static const DLLHolder holder("ModuleA", "");
    return holder;
}

const DLLHolder& b() {
    static const DLLHolder holder("ModuleB", "");
    return holder;
}

/// The plug-in does its part at each load.
void loadPlugin() {
    Logger::loadBackend("Sharing");
}

using CatchesByRoot = bool(void (*)(), const char*);

class OneOwner : public testing::Test {
protected:
    ~OneOwner() override {
        for (const char* const name : {"Sharing.question", "Sharing.answer", "OneOwner.property"}) {
            if (store.hasProperty(wide(name))) {
                store.clearProperty(wide(name));
            }
        }
    }

    PropertyManager& store = *Framework::propertyManager();
};

TEST_F(OneOwner, AllCountOnOneCounter) {
    const char* const name = "Sharing.counter";
    Counter& counter = Counter::counter(name);
    counter.reset();
    int (*const nextFromA)(const char*) = a().resolve<int(const char*)>("nextFromA");
    int (*const nextFromB)(const char*) = b().resolve<int(const char*)>("nextFromB");

    EXPECT_EQ(nextFromA(name), 0);
    EXPECT_EQ(nextFromB(name), 1);
    EXPECT_EQ(counter.next(), 2);
    loadPlugin();
    EXPECT_EQ(nextFromA(name), 4);
    EXPECT_EQ(nextFromB(name), 5);
    counter.reset();
    EXPECT_EQ(nextFromB(name), 0);
}

TEST_F(OneOwner, AllGetTheFirstRegisteredObject) {
    void* (*const objectFromA)(const char*) = a().resolve<void*(const char*)>("objectFromA");
    void* (*const knownInB)(const char*) = b().resolve<void*(const char*)>("knownInB");
    static int hostsObject = 0;
    const auto hostsFactory = [] {
        return static_cast<void*>(&hostsObject);
    };

    EXPECT_EQ(knownInB("OneOwner.A's object"), nullptr);
    void* const object = objectFromA("OneOwner.A's object");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(knownInB("OneOwner.A's object"), object);
    EXPECT_EQ(MemoryManager::registerObject("OneOwner.A's object", hostsFactory), object);

    MemoryManager::registerObject("OneOwner.host's object", hostsFactory);
    EXPECT_EQ(objectFromA("OneOwner.host's object"), &hostsObject);
    EXPECT_EQ(knownInB("OneOwner.host's object"), &hostsObject);

    loadPlugin();
    const void* const pluginsObject = MemoryManager::findObject("Sharing.object");
    ASSERT_NE(pluginsObject, nullptr);
    EXPECT_STREQ(static_cast<const char*>(pluginsObject), "the plug-in's object");
    EXPECT_EQ(objectFromA("Sharing.object"), pluginsObject);
    EXPECT_EQ(knownInB("Sharing.object"), pluginsObject);
}

TEST_F(OneOwner, AllSeeOneProperty) {
    const auto setFromA =
        a().resolve<void(const WideString*, const WideString*)>("setPropertyFromA");
    const auto propertyInB = b().resolve<const WideString*(const WideString*)>("propertyInB");
    const WideString name = wide("OneOwner.property");
    const WideString value = wide(longText);

    setFromA(&name, &value);
    EXPECT_EQ(store.readProperty(name), value);
    EXPECT_EQ(propertyInB(&name), &store.readProperty(name)) << "the stored value itself";

    // The host replaces and clears what A has set and B has seen.
    store.setProperty(name, wide("the host's"));
    EXPECT_EQ(*propertyInB(&name), wide("the host's"));
    store.clearProperty(name);
    EXPECT_THROW(propertyInB(&name), FrameworkException);
}

TEST_F(OneOwner, ThePluginReadsAndSetsTheHostsProperties) {
    store.setProperty(wide("Sharing.question"), wide("A question of the host."));
    loadPlugin();
    EXPECT_EQ(store.readProperty(wide("Sharing.answer")),
              wide("A question of the host. Answered."));
}

TEST_F(OneOwner, AllFreeOneAnothersBlocks) {
    void* (*const blockFromA)(std::size_t) = a().resolve<void*(std::size_t)>("blockFromA");
    void (*const freeInA)(void*) = a().resolve<void(void*)>("freeInA");
    void* (*const resizedInB)(void*, std::size_t) =
        b().resolve<void*(void*, std::size_t)>("resizedInB");
    void (*const freeInB)(void*) = b().resolve<void(void*)>("freeInB");

    freeInA(MemoryManager::allocate(100));
    freeInB(blockFromA(100));

    constexpr char content[] = "fifteen letters";
    auto* block = static_cast<char*>(blockFromA(sizeof(content)));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, content, sizeof(content));
    block = static_cast<char*>(resizedInB(block, 100000));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(block, content);
    MemoryManager::deallocate(block);
}

TEST_F(OneOwner, HostAndPluginFreeEachOthersBlocks) {
    static void* exchanged = nullptr;
    MemoryManager::registerObject("Sharing.block", [] { return static_cast<void*>(&exchanged); });
    exchanged = MemoryManager::allocate(100);
    loadPlugin();
    ASSERT_NE(exchanged, nullptr);
    EXPECT_STREQ(static_cast<const char*>(exchanged), "the plug-in's block");
    MemoryManager::deallocate(exchanged);
    exchanged = nullptr;
}

TEST_F(OneOwner, TextsPassBetweenHostAndModules) {
    const auto appendInA = a().resolve<void(StringHolder*, const char*)>("appendInA");
    const auto holderFromB = b().resolve<StringHolder*(const char*)>("holderFromB");
    const auto deleteInB = b().resolve<void(StringHolder*)>("deleteInB");

    StringHolder* const ofB = holderFromB("made in B, ");
    appendInA(ofB, longText);
    const StringHolder copy(*ofB);
    *ofB = "the host's";
    EXPECT_STREQ(ofB->c_str(), "the host's");
    deleteInB(ofB);
    EXPECT_EQ(copy.c_str(), std::string("made in B, ") + longText);

    StringHolder own("made in the host, ");
    appendInA(&own, "and longer than what a string holds within itself by A");
    EXPECT_STREQ(own.c_str(),
                 "made in the host, and longer than what a string holds within itself by A");
}

void readMissingProperty() {
    Framework::propertyManager()->readProperty(wide("missing"));
}

constexpr const char* missingToRead = "Trying to read unexistent property: missing";
constexpr const char* missingToClear = "Trying to clear an unexistent property: missing";

/// The message of the function's exception, caught by its root class.
template <typename Function>
std::string caughtByRoot(Function function) {
    try {
        function();
    } catch (const FrameworkException& error) {
        return error.message();
    }
    return "nothing was thrown";
}

TEST_F(OneOwner, AllCatchByItsRootWhatTheFrameworkThrows) {
    const WideString missing = wide("missing");
    EXPECT_EQ(caughtByRoot(readMissingProperty), missingToRead);
    EXPECT_TRUE(a().resolve<CatchesByRoot>("catchesByRootInA")(readMissingProperty, missingToRead));
    EXPECT_TRUE(b().resolve<bool(const WideString*, const char*)>("catchesMissingPropertyInB")(
        &missing, missingToClear));

    loadPlugin();
    EXPECT_EQ(store.readProperty(wide("Sharing.answer")),
              wide("Trying to read unexistent property: Sharing.question"));
}

TEST_F(OneOwner, TheHostCatchesByItsRootWhatComesThroughAModule) {
    const auto propertyInB = b().resolve<const WideString*(const WideString*)>("propertyInB");
    const WideString missing = wide("missing");
    EXPECT_EQ(caughtByRoot([&] { propertyInB(&missing); }), missingToRead);
}

TEST_F(OneOwner, HostAndModulesCatchByTheRootWhatAnotherModuleThrows) {
    void (*const throwRoot)() = b().resolve<void()>("throwRootFromB");
    void (*const throwDerived)() = b().resolve<void()>("throwDerivedFromB");
    EXPECT_EQ(caughtByRoot(throwRoot), "of the root's class");
    EXPECT_EQ(caughtByRoot(throwDerived), "of a class of B's");

    CatchesByRoot* const catchesInA = a().resolve<CatchesByRoot>("catchesByRootInA");
    EXPECT_TRUE(catchesInA(throwRoot, "of the root's class"));
    EXPECT_TRUE(catchesInA(throwDerived, "of a class of B's"));
    EXPECT_TRUE(catchesInA([] { throw FrameworkException("the host's"); }, "the host's"));
}

} // namespace
