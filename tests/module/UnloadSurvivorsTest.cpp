// What survives the unload unchanged: loggers with their caches, channels, back ends and named
// objects.

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ModuleClient.h"
#include "UnloadTrace.h"
#include "WideText.h"

using support::frameworkIsLoaded;
using support::ModuleClient;
using support::wide;
using ZOL::Framework::Management::WideString;
namespace UnloadTrace = support::UnloadTrace;

namespace {

constexpr const char* ofLoggers = "loggers";

std::vector<std::string> calls;

void witness(const char* call) {
    calls.emplace_back(call);
}

/// Counts its destructions and holds a text.
class Object {
public:
    ~Object() { ++destroyed; }

    static void* make() { return theOne = new Object; }

    static Object* theOne;
    static int destroyed;

    const std::string text = "the text of a named object, on the heap";
};

Object* Object::theOne = nullptr;
int Object::destroyed = 0;

class UnloadSurvivors : public testing::Test {
protected:
    UnloadSurvivors() {
        calls.clear();
        Object::destroyed = 0;
    }
};

bool holds(const std::map<const void*, std::string>& blocks, const std::string& text) {
    return std::any_of(blocks.begin(), blocks.end(), [&](const auto& block) {
        return block.second.find(text) != std::string::npos;
    });
}

TEST_F(UnloadSurvivors, ChannelsAndBackEndsInUseAreNotCalledAtTheUnload) {
    {
        const ModuleClient client;
        client.logTo("cached", "from the cache");
        client.makeLogger("connected");
        client.installWatched(witness);
        client.logTo("connected", "live");
        ASSERT_EQ(calls,
                  (std::vector<std::string>{"cached", "from the cache", "connected", "live"}));
        calls.clear();
    }
    ASSERT_FALSE(frameworkIsLoaded());
    EXPECT_EQ(calls, std::vector<std::string>());
}

TEST_F(UnloadSurvivors, CachedMessagesAreNotDeliveredAtTheUnload) {
    {
        const ModuleClient client;
        client.installWatched(witness);
        client.makeLogger("logger");
        client.uninstall(); // which leaves the logger its channel
        calls.clear();
        client.logTo("logger", "waits");
    }
    ASSERT_FALSE(frameworkIsLoaded());
    EXPECT_EQ(calls, std::vector<std::string>());
}

TEST_F(UnloadSurvivors, LoggersKeepEveryByteOfTheirNamesChannelsAndCachedMessages) {
    // Short, so that they lie within the blocks that are seen on every platform.
    const std::string name = "kept name";
    const std::string message = "kept message";
    std::map<const void*, std::string> before;
    {
        const ModuleClient client;
        UnloadTrace::attach();
        UnloadTrace::forget();
        UnloadTrace::tag(ofLoggers);
        client.logTo("connected", "delivered");
        client.install();
        client.logTo("connected", "live");
        client.uninstall();
        client.logTo("connected", "waits again");
        client.logTo(name.c_str(), message.c_str());
        before = UnloadTrace::contents(ofLoggers);
        // The tag stays set during the unload, so that every freed block is seen.
    }
    UnloadTrace::tag(nullptr);
    ASSERT_FALSE(frameworkIsLoaded());
    const std::map<const void*, std::string> after = UnloadTrace::contents(ofLoggers);

    // Of each logger the object, its private block, its cache, and of one its channels.
    EXPECT_EQ(after.size(), 2 * 3U + 1U);
    EXPECT_TRUE(holds(after, name));
    EXPECT_TRUE(holds(after, message));
    EXPECT_TRUE(holds(after, "waits again"));
    for (const auto& [address, bytes] : after) {
        EXPECT_EQ(bytes, before[address]) << "a block of " << bytes.size() << " bytes";
    }
    UnloadTrace::freeBlocks(ofLoggers);
}

TEST_F(UnloadSurvivors, NamedObjectsAreUnchanged) {
    {
        const ModuleClient client;
        ASSERT_EQ(client.objectOf("object", Object::make), Object::theOne);
    }
    ASSERT_FALSE(frameworkIsLoaded());
    EXPECT_EQ(Object::destroyed, 0);
    EXPECT_EQ(Object::theOne->text, "the text of a named object, on the heap");
    delete Object::theOne;
}

TEST_F(UnloadSurvivors, AReloadStartsEmptyAndAcceptsTheSurvivorsAgain) {
    const WideString property = wide("property");
    {
        const ModuleClient client;
        client.nextOf("counter");
        client.objectOf("object", Object::make);
        client.properties()->setProperty(property, property);
        client.logTo("logger", "of the first load");
        client.installWatched(witness);
        client.logTo("logger", "live");
        client.uninstall();
    }
    ASSERT_FALSE(frameworkIsLoaded());
    calls.clear();

    const ModuleClient client;
    EXPECT_EQ(client.nextOf("counter"), 0);
    EXPECT_FALSE(client.properties()->hasProperty(property));
    EXPECT_EQ(client.knownObject("object"), nullptr);
    EXPECT_EQ(client.objectOf("object", [] { return static_cast<void*>(Object::theOne); }),
              Object::theOne);
    EXPECT_EQ(client.knownObject("object"), Object::theOne);
    EXPECT_EQ(Object::destroyed, 0);

    client.logTo("logger", "of the second load");
    EXPECT_EQ(calls, std::vector<std::string>()) << "the first load's back end is forgotten";
    client.installWatched(witness);
    EXPECT_EQ(calls, (std::vector<std::string>{"logger", "of the second load"}));
    delete Object::theOne;
}

} // namespace
