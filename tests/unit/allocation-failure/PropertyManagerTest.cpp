#include "FreshProcess.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using support::inFreshProcess;
using ZOL::Framework::Framework;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;

namespace {

WideString wide(const std::string& text) {
    return {text.begin(), text.end()};
}

class PropertyManagerOutOfMemory : public support::OutOfMemory {
protected:
    static PropertyManager& store() { return *Framework::propertyManager(); }

    static WideString uniqueWideName() { return wide(uniqueName()); }

    const WideString longValue = wide(support::longText);
};
ZOL_INSTANTIATE_OUT_OF_MEMORY(PropertyManagerOutOfMemory);

TEST_P(PropertyManagerOutOfMemory, TheFirstUseOfTheStoreNeedsNone) {
    inFreshProcess([this] {
        PropertyManager* first = nullptr;
        const Outcome outcome = attempt(1, [&] { first = Framework::propertyManager(); });
        EXPECT_FALSE(outcome.failed);
        EXPECT_NE(first, nullptr);
        EXPECT_EQ(Framework::propertyManager(), first);
        first->setProperty(wide("name"), longValue);
        EXPECT_EQ(first->readProperty(wide("name")), longValue);
    });
}

TEST_P(PropertyManagerOutOfMemory, ANewPropertyThatFailsIsAbsentAndTheOthersAreAsBefore) {
    const WideString other = uniqueWideName();
    store().setProperty(other, longValue);
    const WideString& otherValue = store().readProperty(other);
    const WideString name = uniqueWideName();
    EXPECT_EQ(sweep([&] { store().setProperty(name, longValue); },
                    [&] {
                        EXPECT_FALSE(store().hasProperty(name));
                        EXPECT_EQ(&store().readProperty(other), &otherValue);
                        EXPECT_EQ(otherValue, longValue);
                    }),
              3U)
        << "entry, name and value";
    EXPECT_EQ(store().readProperty(name), longValue);
}

TEST_P(PropertyManagerOutOfMemory, AFailedReplacementAlsoRemovesTheOldEntry) {
    const WideString other = uniqueWideName();
    store().setProperty(other, longValue);
    const WideString name = uniqueWideName();
    store().setProperty(name, longValue);
    const WideString newValue = longValue + longValue;
    constexpr std::ptrdiff_t blocksOfAnEntry = 3;
    EXPECT_EQ(sweep([&] { store().setProperty(name, newValue); },
                    [&] {
                        EXPECT_FALSE(store().hasProperty(name));
                        EXPECT_EQ(store().readProperty(other), longValue);
                        store().setProperty(name, longValue);
                    },
                    -blocksOfAnEntry),
              3U);
    EXPECT_EQ(store().readProperty(name), newValue);
}

TEST_P(PropertyManagerOutOfMemory, ReadingWhatIsAbsentGivesBadAllocInPlaceOfItsException) {
    const WideString other = uniqueWideName();
    store().setProperty(other, longValue);
    const WideString name = uniqueWideName();
    bool refused = false;
    EXPECT_GE(sweep(
                  [&] {
                      try {
                          store().readProperty(name);
                      } catch (const FrameworkException&) {
                          refused = true;
                      }
                  },
                  [&] {
                      EXPECT_FALSE(refused);
                      EXPECT_FALSE(store().hasProperty(name));
                      EXPECT_EQ(store().readProperty(other), longValue);
                  }),
              3U);
    EXPECT_TRUE(refused);
}

TEST_P(PropertyManagerOutOfMemory, ClearingWhatIsAbsentGivesBadAllocInPlaceOfItsException) {
    const WideString other = uniqueWideName();
    store().setProperty(other, longValue);
    const WideString name = uniqueWideName();
    bool refused = false;
    EXPECT_GE(sweep(
                  [&] {
                      try {
                          store().clearProperty(name);
                      } catch (const FrameworkException&) {
                          refused = true;
                      }
                  },
                  [&] {
                      EXPECT_FALSE(refused);
                      EXPECT_FALSE(store().hasProperty(name));
                      EXPECT_EQ(store().readProperty(other), longValue);
                  }),
              3U);
    EXPECT_TRUE(refused);
}

TEST_P(PropertyManagerOutOfMemory, SearchingReadingAndClearingWhatIsThereNeedNone) {
    const WideString name = uniqueWideName();
    const WideString absent = uniqueWideName();
    store().setProperty(name, longValue);
    EXPECT_EQ(allocationsOf([&] {
                  store().hasProperty(name);
                  store().hasProperty(absent);
                  store().readProperty(name);
                  store().clearProperty(name);
              }),
              0U);
    EXPECT_FALSE(store().hasProperty(name));
}

} // namespace
