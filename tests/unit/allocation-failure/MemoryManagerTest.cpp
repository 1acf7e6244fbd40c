#include "OutOfMemory.h"

#include "ZOL/Framework/Management/MemoryManager.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace {

int factoryCalls = 0;
int theObject = 0;

void* makeObject() {
    ++factoryCalls;
    return &theObject;
}

void* makeAnother() {
    static int another = 0;
    return &another;
}

class MemoryManagerOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(MemoryManagerOutOfMemory);

TEST_P(MemoryManagerOutOfMemory, ARegistrationThatFailsStoresNothingAndTheFactoryRunsAgain) {
    const std::string name = uniqueName();
    const std::string known = uniqueName();
    void* const knownObject = MemoryManager::registerObject(known.c_str(), makeAnother);
    void* registered = nullptr;
    factoryCalls = 0;
    int callsBefore = 0;
    int lost = 0;
    EXPECT_GE(sweep(
                  [&] {
                      callsBefore = factoryCalls;
                      registered = MemoryManager::registerObject(name.c_str(), makeObject);
                  },
                  [&] {
                      EXPECT_EQ(registered, nullptr);
                      lost += factoryCalls - callsBefore;
                      onAnotherThread([&] {
                          EXPECT_EQ(MemoryManager::findObject(name.c_str()), nullptr);
                          EXPECT_EQ(MemoryManager::findObject(known.c_str()), knownObject);
                      });
                  }),
              3U)
        << "the name to search for, the entry and its key";
    EXPECT_GE(lost, 2) << "those that the table could not take";
    EXPECT_EQ(factoryCalls, callsBefore + 1);
    EXPECT_EQ(registered, &theObject);
    EXPECT_EQ(MemoryManager::findObject(name.c_str()), &theObject);
}

TEST_P(MemoryManagerOutOfMemory, ARegistrationThatFailsBeforeTheFactoryDoesNotRunIt) {
    const std::string name = uniqueName();
    factoryCalls = 0;
    const Outcome outcome =
        attempt(1, [&] { MemoryManager::registerObject(name.c_str(), makeObject); });
    EXPECT_TRUE(outcome.threwBadAlloc);
    EXPECT_EQ(factoryCalls, 0);
}

TEST_P(MemoryManagerOutOfMemory, ASearchThatFailsLeavesTheLockFree) {
    const std::string name = uniqueName();
    void* const object = MemoryManager::registerObject(name.c_str(), makeAnother);
    void* found = nullptr;
    EXPECT_EQ(sweep([&] { found = MemoryManager::findObject(name.c_str()); },
                    [&] {
                        onAnotherThread(
                            [&] { EXPECT_EQ(MemoryManager::findObject(name.c_str()), object); });
                    }),
              1U);
    EXPECT_EQ(found, object);
}

} // namespace
