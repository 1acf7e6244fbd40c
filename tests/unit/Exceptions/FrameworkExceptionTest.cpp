#include "ZOL/Framework/Exceptions/FrameworkException.h"

#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include <gtest/gtest.h>

#include "SlotProbe.h"
#include "WideText.h"

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using ZOL::Framework::Exceptions::FrameworkException;

namespace {

static_assert(sizeof(FrameworkException) == 2 * sizeof(void*),
              "the virtual table and one pointer, and nothing else");
static_assert(alignof(FrameworkException) == alignof(void*));
static_assert(std::has_virtual_destructor_v<FrameworkException>);
static_assert(!std::is_base_of_v<std::exception, FrameworkException>);
static_assert(std::is_convertible_v<const char*, FrameworkException>);

using Assigned =
    decltype(std::declval<FrameworkException&>() = std::declval<const FrameworkException&>());
static_assert(std::is_same_v<Assigned, const FrameworkException&>, "not to be assigned to");
static_assert(
    std::is_same_v<decltype(std::declval<const FrameworkException&>().message()), const char*>);

// Longer than the small-string buffer.
constexpr const char* longText = "a message that is longer than what a string holds within itself";

/// The exception's string object; the pointer to it follows the pointer to the virtual table.
const void* heldString(const FrameworkException& error) {
    const void* members[2] = {};
    std::memcpy(&members, static_cast<const void*>(&error), sizeof(members));
    return members[1];
}

/// Throws the framework's own UnexistentProperty.
void readMissingProperty() {
    ZOL::Framework::Framework::propertyManager()->readProperty(support::wide("no such property"));
}

constexpr const char* missingPropertyText = "Trying to read unexistent property: no such property";

/// Itanium's name of the class, which the framework keeps to itself.
#if defined(_MSC_VER)
constexpr const char* unexistentProperty = "class ZOL::Framework::Exceptions::UnexistentProperty";
#else
constexpr const char* unexistentProperty = "N3ZOL9Framework10Exceptions18UnexistentPropertyE";
#endif

TEST(FrameworkExceptions, ByDefaultHaveAnEmptyMessageAndNotNull) {
    const FrameworkException error;
    ASSERT_NE(error.message(), nullptr);
    EXPECT_STREQ(error.message(), "");
    EXPECT_STREQ(FrameworkException("").message(), "");
}

TEST(FrameworkExceptions, CopyTheMessageUpToItsFirstZero) {
    char text[] = {'a', 'b', '\0', 'c', '\0'};
    std::string other = longText;
    const FrameworkException error(text);
    const FrameworkException longError(other.c_str());
    EXPECT_NE(error.message(), text);
    text[0] = 'X';
    other[0] = 'X';
    EXPECT_STREQ(error.message(), "ab");
    EXPECT_STREQ(longError.message(), longText);
}

TEST(FrameworkExceptions, EachHasAStringOfItsOwn) {
    const FrameworkException source(longText);
    const auto copy = std::make_unique<FrameworkException>(source);
    FrameworkException assigned;
    assigned = source;
    EXPECT_NE(heldString(*copy), heldString(source));
    EXPECT_NE(heldString(assigned), heldString(source));
    EXPECT_NE(heldString(assigned), heldString(*copy));
    EXPECT_STREQ(copy->message(), longText);
    EXPECT_STREQ(assigned.message(), longText);
}

TEST(FrameworkExceptions, AreNeverEmptiedByAMove) {
    FrameworkException source(longText);
    const FrameworkException made(static_cast<FrameworkException&&>(source));
    EXPECT_STREQ(source.message(), longText);
    FrameworkException assigned;
    assigned = static_cast<FrameworkException&&>(source);
    EXPECT_STREQ(source.message(), longText);
    EXPECT_STREQ(made.message(), longText);
    EXPECT_STREQ(assigned.message(), longText);
}

TEST(FrameworkExceptions, ACopyOutlivesItsSource) {
    for (const char* const text : {"short", longText}) {
        auto source = std::make_unique<FrameworkException>(text);
        const FrameworkException copy(*source);
        source.reset();
        EXPECT_STREQ(copy.message(), text);
    }
}

TEST(FrameworkExceptions, ACaughtCopyStaysValidAfterTheThrownObjectIsDestroyed) {
    FrameworkException kept;
    try {
        throw FrameworkException(longText);
    } catch (const FrameworkException& error) {
        kept = error;
    }
    EXPECT_STREQ(kept.message(), longText);

    std::unique_ptr<FrameworkException> copy;
    try {
        readMissingProperty();
    } catch (const FrameworkException& error) {
        copy = std::make_unique<FrameworkException>(error);
    }
    ASSERT_NE(copy, nullptr);
    EXPECT_STREQ(copy->message(), missingPropertyText);
}

TEST(FrameworkExceptions, AssigningOneToItselfKeepsTheMessage) {
    for (const char* const text : {"", "short", longText}) {
        FrameworkException error(text);
        const FrameworkException& itself = error;
        EXPECT_EQ(&(error = itself), &error);
        EXPECT_STREQ(error.message(), text);
    }
}

TEST(FrameworkExceptions, AfterAnAssignmentTheOtherMayChangeAndBeDestroyed) {
    FrameworkException error("before");
    auto other = std::make_unique<FrameworkException>(longText);
    EXPECT_EQ(&(error = *other), &error);
    EXPECT_STREQ(other->message(), longText);
    *other = FrameworkException("changed");
    EXPECT_STREQ(error.message(), longText);
    other.reset();
    EXPECT_STREQ(error.message(), longText);
}

TEST(FrameworkExceptions, AssignmentAllocatesTheNewStringBeforeItFreesTheOld) {
    // Both strings exist at the same time, so their addresses differ; in the opposite order the
    // heap would reuse the address, at the latest after a few times.
    FrameworkException error("one");
    const FrameworkException other("two");
    for (int i = 0; i < 100; ++i) {
        const void* const before = heldString(error);
        error = other;
        ASSERT_NE(heldString(error), before);
    }
    EXPECT_STREQ(error.message(), "two");
}

TEST(FrameworkExceptions, AreCaughtByTheRootAndNotAsAStandardException) {
    const auto caughtAs = [](void (*thrower)()) -> std::string {
        try {
            thrower();
        } catch (const std::exception&) {
            return "std::exception";
        } catch (const FrameworkException& error) {
            return error.message();
        }
        return "nothing";
    };
    EXPECT_EQ(caughtAs([] { throw FrameworkException("the root"); }), "the root");
    EXPECT_EQ(caughtAs(readMissingProperty), missingPropertyText);
}

TEST(FrameworkExceptions, AMissingPropertyThrowsItsOwnClassThatAddsOnlyItsType) {
    try {
        readMissingProperty();
        FAIL() << "nothing was thrown";
    } catch (const FrameworkException& error) {
        EXPECT_STREQ(typeid(error).name(), unexistentProperty);
        EXPECT_STREQ(error.message(), missingPropertyText);
        EXPECT_NE(heldString(error), nullptr);
    }
}

TEST(FrameworkExceptions, KeepTheirClassWhenTheyAreAssignedTheRoot) {
    try {
        readMissingProperty();
        FAIL() << "nothing was thrown";
    } catch (FrameworkException& error) {
        error = FrameworkException("taken over");
        EXPECT_STREQ(typeid(error).name(), unexistentProperty);
        EXPECT_STREQ(error.message(), "taken over");
    }
}

TEST(FrameworkExceptions, TheRootStaysTheRootWhenItIsAssignedAnotherClass) {
    FrameworkException root;
    try {
        readMissingProperty();
    } catch (const FrameworkException& error) {
        root = error;
    }
    EXPECT_EQ(typeid(root), typeid(FrameworkException));
    EXPECT_STREQ(root.message(), missingPropertyText);
}

/// What a module may derive from the root.
class ModulesError : public FrameworkException {
public:
    explicit ModulesError(int* destroyed) : FrameworkException(longText), destroyed_(destroyed) {}
    ModulesError(const ModulesError&) = default;
    ~ModulesError() override { ++*destroyed_; }

    virtual int firstOfItsOwn() const { return 42; }

private:
    int* destroyed_;
};

TEST(FrameworkExceptions, ADerivedOneIsDestroyedThroughTheRoot) {
    int destroyed = 0;
    std::unique_ptr<FrameworkException> error = std::make_unique<ModulesError>(&destroyed);
    EXPECT_STREQ(error->message(), longText);
    error.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(FrameworkExceptions, HaveNothingVirtualButTheDestructor) {
    int destroyed = 0;
    const ModulesError error(&destroyed);
    // A derived class's slots follow all slots of the root.
    EXPECT_EQ(support::SlotProbe(&error).at<int(const ModulesError*)>(
                  support::firstSlotAfterDestructor)(&error),
              42);
}

TEST(FrameworkExceptions, HaveTheDestructorInTheFirstSlot) {
    int destroyed = 0;
    alignas(ModulesError) unsigned char storage[sizeof(ModulesError)];
    auto* const error = new (storage) ModulesError(&destroyed);
    support::destroyThroughSlot(error);
    EXPECT_EQ(destroyed, 1);

    auto* const onHeap = new ModulesError(&destroyed);
    support::deleteThroughSlot(onHeap);
    EXPECT_EQ(destroyed, 2);
}

} // namespace
