#include "ZOL/Framework/Management/PropertyManager.h"

#include <memory>
#include <new>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "SlotProbe.h"
#include "WideText.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"

using namespace std::string_literals;
using support::wide;
using ZOL::Framework::Framework;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;

namespace {

using Unit = WideString::value_type;

static_assert(sizeof(Unit) == 2 && std::is_same_v<WideString, std::basic_string<Unit>>);
static_assert(sizeof(PropertyManager) == sizeof(void*), "it has no data");
static_assert(std::is_abstract_v<PropertyManager>);
static_assert(std::has_virtual_destructor_v<PropertyManager>);
static_assert(std::is_same_v<decltype(Framework::propertyManager()), PropertyManager*>);
static_assert(std::is_same_v<decltype(&PropertyManager::readProperty),
                             const WideString& (PropertyManager::*)(const WideString&) const>);
static_assert(std::is_same_v<decltype(&PropertyManager::hasProperty),
                             bool (PropertyManager::*)(const WideString&) const>);
static_assert(std::is_same_v<decltype(&PropertyManager::setProperty),
                             void (PropertyManager::*)(const WideString&, const WideString&)>);
static_assert(std::is_same_v<decltype(&PropertyManager::clearProperty),
                             void (PropertyManager::*)(const WideString&)>);

// Longer than the small-string buffer.
const std::string longText = "a text that is longer than what a string holds within itself";

/// Clears afterwards what the test has set, so that the tests can share a process.
class Properties : public testing::Test {
protected:
    ~Properties() override {
        for (const WideString& name : names_) {
            if (store.hasProperty(name)) {
                store.clearProperty(name);
            }
        }
    }

    void set(const WideString& name, const WideString& value) {
        names_.insert(name);
        store.setProperty(name, value);
    }
    void set(const std::string& name, const std::string& value) { set(wide(name), wide(value)); }

    bool has(const std::string& name) const { return store.hasProperty(wide(name)); }
    void clear(const std::string& name) { store.clearProperty(wide(name)); }

    /// By copy, to compare.
    WideString read(const std::string& name) const { return store.readProperty(wide(name)); }

    /// The messages of the two failures.
    std::string readFailure(const WideString& name) const {
        return failure([&] { store.readProperty(name); });
    }
    std::string clearFailure(const WideString& name) {
        return failure([&] { store.clearProperty(name); });
    }

    PropertyManager& store = *Framework::propertyManager();

private:
    template <typename Operation>
    static std::string failure(Operation operation) {
        try {
            operation();
        } catch (const FrameworkException& error) {
            return error.message();
        }
        return "nothing was thrown";
    }

    std::set<WideString> names_;
};

TEST_F(Properties, AreInOneStoreThatEveryCallReturns) {
    ASSERT_NE(Framework::propertyManager(), nullptr);
    EXPECT_EQ(Framework::propertyManager(), Framework::propertyManager());
    EXPECT_EQ(Framework::propertyManager(), &store);
}

TEST_F(Properties, AreStillThereWhenTheStoreIsRequestedAgain) {
    set("name", longText);
    EXPECT_EQ(Framework::propertyManager()->readProperty(wide("name")), wide(longText));
}

TEST_F(Properties, OfANameThatWasNeverSetAreNotThere) {
    EXPECT_FALSE(has("nobody's"));
    EXPECT_EQ(readFailure(wide("nobody's")), "Trying to read unexistent property: nobody's");
    EXPECT_EQ(clearFailure(wide("nobody's")), "Trying to clear an unexistent property: nobody's");
    EXPECT_FALSE(has("nobody's")) << "asking does not set";
}

TEST_F(Properties, AreReadAsTheyWereSet) {
    set("name", "value");
    EXPECT_TRUE(has("name"));
    EXPECT_EQ(read("name"), wide("value"));
    EXPECT_EQ(read("name"), wide("value")) << "reading takes nothing away";
    EXPECT_TRUE(has("name"));
}

TEST_F(Properties, HoldAnyUnitsInNameAndValue) {
    WideString every;
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        every += static_cast<Unit>(unit);
    }
    set(every, every);
    EXPECT_TRUE(store.hasProperty(every));
    EXPECT_EQ(store.readProperty(every), every);
    EXPECT_FALSE(store.hasProperty(every.substr(1)));
    EXPECT_FALSE(store.hasProperty(every.substr(0, every.size() - 1)));
}

TEST_F(Properties, MayHaveTheEmptyName) {
    EXPECT_FALSE(has(""));
    set("", "value of the empty name");
    EXPECT_TRUE(has(""));
    EXPECT_EQ(read(""), wide("value of the empty name"));
    EXPECT_FALSE(has(" "));
    EXPECT_FALSE(has("\0"s));
    clear("");
    EXPECT_FALSE(has(""));
}

TEST_F(Properties, OfTheEmptyNameAreReportedByTheWordsAloneWithTheirBlank) {
    EXPECT_EQ(readFailure(WideString()), "Trying to read unexistent property: ");
    EXPECT_EQ(clearFailure(WideString()), "Trying to clear an unexistent property: ");
}

TEST_F(Properties, MayHaveAnEmptyValue) {
    set("name", "");
    EXPECT_TRUE(has("name"));
    EXPECT_EQ(read("name"), WideString());
    clear("name");
    EXPECT_FALSE(has("name"));
}

TEST_F(Properties, SetTwiceAreOneEntryWithTheSecondValue) {
    set("name", "first");
    set("name", longText);
    EXPECT_EQ(read("name"), wide(longText));
    clear("name");
    EXPECT_FALSE(has("name")) << "one call clears it";
    EXPECT_EQ(readFailure(wide("name")), "Trying to read unexistent property: name");
}

TEST_F(Properties, SetToTheValueTheyHaveKeepIt) {
    set("name", longText);
    set("name", longText);
    EXPECT_EQ(read("name"), wide(longText));
    clear("name");
    EXPECT_FALSE(has("name"));
}

TEST_F(Properties, ClearedTwiceAreReportedTheSecondTime) {
    set("name", "value");
    EXPECT_NO_THROW(clear("name"));
    EXPECT_EQ(clearFailure(wide("name")), "Trying to clear an unexistent property: name");
}

TEST_F(Properties, ClearedAndReadAreReportedAsNotThereToRead) {
    set("name", "value");
    clear("name");
    EXPECT_EQ(readFailure(wide("name")), "Trying to read unexistent property: name");
}

TEST_F(Properties, MayBeSetAgainAfterTheyWereCleared) {
    set("name", "before");
    clear("name");
    set("name", "after");
    EXPECT_EQ(read("name"), wide("after"));
}

TEST_F(Properties, HaveCaseSensitiveNames) {
    set("name", "lower");
    EXPECT_FALSE(has("Name"));
    EXPECT_EQ(readFailure(wide("Name")), "Trying to read unexistent property: Name");
    set("Name", "upper");
    EXPECT_EQ(read("name"), wide("lower"));
    EXPECT_EQ(read("Name"), wide("upper"));
    clear("name");
    EXPECT_EQ(read("Name"), wide("upper"));

    // Beyond ASCII too.
    set("\xE9", "lower");
    EXPECT_FALSE(has("\xC9"));
}

TEST_F(Properties, HaveNamesThatAreNotTrimmed) {
    set("name", "value");
    EXPECT_FALSE(has(" name"));
    EXPECT_FALSE(has("name "));
    EXPECT_FALSE(has("nam"));
    EXPECT_FALSE(has("names"));
}

TEST_F(Properties, WhoseNamesDifferAfterAZeroUnitAreTwo) {
    set("name\0a"s, "a");
    EXPECT_FALSE(has("name\0b"s));
    EXPECT_FALSE(has("name"));
    EXPECT_FALSE(has("name\0"s));
    set("name\0b"s, "b");
    set("name", "none");
    EXPECT_EQ(read("name\0a"s), wide("a"));
    EXPECT_EQ(read("name\0b"s), wide("b"));
    EXPECT_EQ(read("name"), wide("none"));
    clear("name\0a"s);
    EXPECT_FALSE(has("name\0a"s));
    EXPECT_TRUE(has("name\0b"s));
    EXPECT_TRUE(has("name"));
}

TEST_F(Properties, HoldZeroUnitsInTheirValues) {
    set("name", "a\0b\0"s);
    EXPECT_EQ(read("name"), wide("a\0b\0"s));
}

TEST_F(Properties, AreReportedUpToTheNamesFirstZeroUnit) {
    EXPECT_EQ(readFailure(wide("name\0a"s)), "Trying to read unexistent property: name");
    EXPECT_EQ(clearFailure(wide("name\0a"s)), "Trying to clear an unexistent property: name");
    EXPECT_EQ(readFailure(wide("\0a"s)), "Trying to read unexistent property: ");
    EXPECT_EQ(clearFailure(wide("\0a"s)), "Trying to clear an unexistent property: ");
}

TEST_F(Properties, AreReportedWithTheWholeOfALongName) {
    std::string name;
    for (int i = 0; i < 1000; ++i) {
        name += longText;
    }
    EXPECT_EQ(readFailure(wide(name)), "Trying to read unexistent property: " + name);
    EXPECT_EQ(clearFailure(wide(name)), "Trying to clear an unexistent property: " + name);
}

TEST_F(Properties, AreReportedWithUnitsUpTo255AsSingleBytes) {
    EXPECT_EQ(readFailure(wide("\xE9\xFF")), "Trying to read unexistent property: \xE9\xFF");
    EXPECT_EQ(clearFailure(wide("\xE9\xFF")), "Trying to clear an unexistent property: \xE9\xFF");

    std::string bytes;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(readFailure(wide(bytes)), "Trying to read unexistent property: " + bytes);
    EXPECT_EQ(clearFailure(wide(bytes)), "Trying to clear an unexistent property: " + bytes);
}

TEST_F(Properties, AreReportedByAnEmptyTextIfAUnitIsAbove255) {
    for (const unsigned int unit : {0x0100U, 0x0141U, 0x20ACU, 0xD800U, 0xFFFFU}) {
        const WideString odd(1, static_cast<Unit>(unit));
        for (const WideString& name :
             {odd, odd + wide("name"), wide("name") + odd, wide("name") + odd + wide("\0a"s)}) {
            EXPECT_EQ(readFailure(name), "") << std::hex << unit;
            EXPECT_EQ(clearFailure(name), "") << std::hex << unit;
        }
    }
}

TEST_F(Properties, AreReportedInFullIfTheUnitAbove255FollowsAZeroUnit) {
    const WideString name = wide("name\0"s) + static_cast<Unit>(0x0100);
    EXPECT_EQ(readFailure(name), "Trying to read unexistent property: name");
    EXPECT_EQ(clearFailure(name), "Trying to clear an unexistent property: name");
}

TEST_F(Properties, WithANameThatNoMessageShowsAreOrdinaryOnes) {
    const WideString name(2, static_cast<Unit>(0x0100));
    set(name, wide("value"));
    EXPECT_EQ(store.readProperty(name), wide("value"));
    EXPECT_FALSE(store.hasProperty(name.substr(1)));
    store.clearProperty(name);
    EXPECT_FALSE(store.hasProperty(name));
}

TEST_F(Properties, AreAllStillThereAfterAFailure) {
    set("a", "1");
    set("c", "3");
    readFailure(wide("b"));
    clearFailure(wide("b"));
    readFailure(WideString(1, static_cast<Unit>(0x0100)));
    clearFailure(WideString(1, static_cast<Unit>(0x0100)));
    EXPECT_EQ(read("a"), wide("1"));
    EXPECT_EQ(read("c"), wide("3"));
    EXPECT_FALSE(has("b"));
    EXPECT_FALSE(store.hasProperty(WideString(1, static_cast<Unit>(0x0100))));
}

TEST_F(Properties, StayAtTheirAddressWhileOtherNamesAreSetAndCleared) {
    for (const std::string& value : {"short"s, longText}) {
        set("kept", value);
        const WideString& kept = store.readProperty(wide("kept"));
        for (int round = 0; round < 2; ++round) {
            for (int i = 0; i < 500; ++i) {
                set("other " + std::to_string(i), longText);
            }
            for (int i = 0; i < 500; ++i) {
                clear("other " + std::to_string(i));
            }
        }
        readFailure(wide("other 1"));
        clearFailure(wide("other 1"));
        EXPECT_EQ(kept, wide(value));
        EXPECT_EQ(&store.readProperty(wide("kept")), &kept);
    }
}

TEST_F(Properties, AreCopiesOfTheArguments) {
    for (const std::string& text : {"text"s, longText}) {
        auto name = std::make_unique<WideString>(wide(text));
        auto value = std::make_unique<WideString>(wide("value of " + text));
        set(*name, *value);
        name->front() = static_cast<Unit>('X');
        value->front() = static_cast<Unit>('X');
        EXPECT_FALSE(store.hasProperty(*name));
        EXPECT_EQ(read(text), wide("value of " + text));
        name.reset();
        value.reset();
        EXPECT_EQ(read(text), wide("value of " + text));
    }
}

TEST_F(Properties, MayTakeTheirValueFromAnotherProperty) {
    set("source", longText);
    set(wide("target"), store.readProperty(wide("source")));
    EXPECT_NE(&store.readProperty(wide("target")), &store.readProperty(wide("source")));
    clear("source");
    EXPECT_EQ(read("target"), wide(longText));
}

TEST_F(Properties, MayHaveTheirNameForAValue) {
    const WideString text = wide(longText);
    set(text, text);
    EXPECT_EQ(store.readProperty(text), text);
}

TEST_F(Properties, AreReachedThroughTheSlotsInThisOrder) {
    using support::firstSlotAfterDestructor;
    const support::SlotProbe slots(&store);
    const WideString name = wide("through the slots");
    const WideString value = wide(longText);
    const auto read = slots.at<const WideString&(const PropertyManager*, const WideString&)>(
        firstSlotAfterDestructor);
    const auto has =
        slots.at<bool(const PropertyManager*, const WideString&)>(firstSlotAfterDestructor + 1);
    const auto set = slots.at<void(PropertyManager*, const WideString&, const WideString&)>(
        firstSlotAfterDestructor + 2);
    const auto clear =
        slots.at<void(PropertyManager*, const WideString&)>(firstSlotAfterDestructor + 3);

    EXPECT_FALSE(has(&store, name));
    set(&store, name, value);
    EXPECT_TRUE(has(&store, name));
    EXPECT_EQ(&read(&store, name), &store.readProperty(name));
    EXPECT_EQ(read(&store, name), value);
    clear(&store, name);
    EXPECT_FALSE(store.hasProperty(name));
    EXPECT_THROW(read(&store, name), FrameworkException);
    EXPECT_THROW(clear(&store, name), FrameworkException);
}

/// Another implementation, to see what the abstract class itself has.
class OtherStore : public PropertyManager {
public:
    explicit OtherStore(int* destroyed) : destroyed_(destroyed) {}
    OtherStore(const OtherStore&) = delete;
    OtherStore& operator=(const OtherStore&) = delete;
    ~OtherStore() override { ++*destroyed_; }

    const WideString& readProperty(const WideString&) const override { return value_; }
    bool hasProperty(const WideString&) const override { return false; }
    void setProperty(const WideString&, const WideString&) override {}
    void clearProperty(const WideString&) override {}
    virtual int firstOfItsOwn() const { return 42; }

private:
    int* destroyed_;
    WideString value_;
};

TEST_F(Properties, HaveNoFurtherSlots) {
    int destroyed = 0;
    const OtherStore other(&destroyed);
    // A derived class's slots follow the destructor and the four operations.
    EXPECT_EQ(support::SlotProbe(&other).at<int(const OtherStore*)>(
                  support::firstSlotAfterDestructor + 4)(&other),
              42);
}

TEST_F(Properties, HaveTheDestructorOfTheirStoreInTheFirstSlot) {
    int destroyed = 0;
    alignas(OtherStore) unsigned char storage[sizeof(OtherStore)];
    auto* const other = new (storage) OtherStore(&destroyed);
    support::destroyThroughSlot(other);
    EXPECT_EQ(destroyed, 1);

    auto* const onHeap = new OtherStore(&destroyed);
    support::deleteThroughSlot(onHeap);
    EXPECT_EQ(destroyed, 2);
}

} // namespace
