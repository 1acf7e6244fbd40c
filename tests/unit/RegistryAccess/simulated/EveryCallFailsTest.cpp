// Each operation, with each of its platform calls returning each of these result codes.

#include <random>
#include <tuple>

#include "Operations.h"
#include "RegistryTest.h"
#include "ThrowSiteTable.h"

using support::Condition;
using support::Lines;
using support::Operation;
using support::summaryOf;
using support::thrownBy;
using support::ThrowSite;
using ZOL::RegistryAccess::Registry;

namespace {

/// Any code that has no meaning of its own here; another one in each run.
LONG randomCode() {
    static const LONG code = [] {
        std::random_device device;
        return std::uniform_int_distribution<LONG>(1000, 0x7fffffff)(device);
    }();
    return code;
}

/// The operation whose throw sites apply to a call that another operation makes through it.
std::string ownerOf(const std::string& operation, const std::string& function) {
    if (operation == "getSubKeys" || operation == "copyFrom") {
        if (function == "RegEnumKeyA") {
            return "getSubKeys";
        }
        if (function == "RegOpenKeyA") {
            return "openSubKey";
        }
        if (function == "RegCreateKeyA") {
            return "createSubKey";
        }
        return "copyValuesFrom";
    }
    return operation;
}

std::string expectedFor(const std::string& operation, const std::string& function, LONG code) {
    const std::string owner = ownerOf(operation, function);
    const bool isTheEnd = function == "RegEnumKeyA" && code == ERROR_NO_MORE_ITEMS;
    if (isTheEnd || function == "RegCloseKey" || owner == "hasSubKey" || owner == "hasValue" ||
        owner == "copyValuesFrom") {
        return "nothing";
    }
    const ThrowSite* site = nullptr;
    if (code == ERROR_ACCESS_DENIED) {
        site = support::findThrowSite(owner, function, Condition::Denied);
    } else if (code == ERROR_NO_MORE_ITEMS) {
        site = support::findThrowSite(owner, function, Condition::NoMoreItems);
    }
    if (site == nullptr) {
        site = support::findThrowSite(owner, function, Condition::OtherResult);
    }
    return site->errorClass + " " + std::to_string(site->line);
}

using Parameter = std::tuple<std::string, LONG>;

constexpr LONG anyCode = -1;

class EveryCall : public support::RegistryTest, public testing::WithParamInterface<Parameter> {
protected:
    EveryCall() : operation(support::operationNamed(std::get<0>(GetParam()))) {}

    static LONG code() {
        const LONG given = std::get<1>(GetParam());
        return given == anyCode ? randomCode() : given;
    }

    /// The operation's calls if none fails.
    Lines callsOfSuccess() {
        resetTree();
        Registry own = node();
        Registry other = node("other");
        operation.run(own, other);
        return platform.takeCalls();
    }

    void resetTree() {
        for (const char* const path : {"node", "other", "new"}) {
            platform.user().erase(path);
        }
        support::arrange(platform);
    }

    const Operation& operation;
};

std::vector<std::string> names() {
    std::vector<std::string> all;
    for (const Operation& operation : support::operations()) {
        all.push_back(operation.name);
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryCall,
                         testing::Combine(testing::ValuesIn(names()),
                                          testing::Values(ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED,
                                                          ERROR_INVALID_HANDLE,
                                                          ERROR_INVALID_PARAMETER, ERROR_MORE_DATA,
                                                          ERROR_NO_MORE_ITEMS, anyCode)),
                         [](const auto& instance) {
                             const LONG code = std::get<1>(instance.param);
                             return std::get<0>(instance.param) +
                                    (code == anyCode ? "AnyCode" : "Code" + std::to_string(code));
                         });

TEST_P(EveryCall, ThrowsTheErrorOfItsThrowSiteIfItFails) {
    const Lines calls = callsOfSuccess();
    ASSERT_GT(calls.size(), 0U);
    for (std::size_t n = 1; n <= calls.size(); ++n) {
        const std::string function = calls[n - 1].substr(0, calls[n - 1].find('('));
        resetTree();
        Registry own = node();
        Registry other = node("other");
        platform.answer(n, code());
        EXPECT_EQ(summaryOf(thrownBy([&] { operation.run(own, other); })),
                  expectedFor(operation.name, function, code()))
            << "call " << n << ", " << calls[n - 1] << ", is answered with " << code();
        EXPECT_EQ(platform.openHandles(), 2U) << "after the failure of call " << n;
        if (operation.name != "hasSubKey") { // which closes what it did not open
            EXPECT_EQ(platform.takeMisuses(), Lines());
        }
        platform.takeMisuses();
        platform.answerTruly();
    }
}

TEST_P(EveryCall, IsTheLastIfItFailsUnlessItClosesAKeyOrEndsAnEnumeration) {
    const Lines calls = callsOfSuccess();
    for (std::size_t n = 1; n <= calls.size(); ++n) {
        const std::string function = calls[n - 1].substr(0, calls[n - 1].find('('));
        resetTree();
        Registry own = node();
        Registry other = node("other");
        const std::size_t before = platform.calls();
        platform.answer(n, code());
        if (thrownBy([&] { operation.run(own, other); }).errorClass.empty()) {
            platform.takeMisuses();
            platform.answerTruly();
            continue;
        }
        const Lines made = platform.takeCalls();
        ASSERT_GE(made.size(), n);
        for (std::size_t i = n; i < made.size(); ++i) {
            EXPECT_EQ(made[i].substr(0, 12), "RegCloseKey(") << "no second attempt";
        }
        EXPECT_EQ(platform.calls(), before + made.size());
        platform.answerTruly();
    }
}

TEST_P(EveryCall, LeavesTheNodesAsTheyWereIfItFails) {
    const std::size_t calls = callsOfSuccess().size();
    for (std::size_t n = 1; n <= calls; ++n) {
        resetTree();
        Registry own = node();
        Registry other = node("other");
        platform.answer(n, code());
        thrownBy([&] { operation.run(own, other); });
        platform.answerTruly();
        platform.takeMisuses();
        EXPECT_EQ(own.getName(), "node");
        EXPECT_EQ(other.getName(), "other");
        EXPECT_EQ(summaryOf(thrownBy([&] { own.createSubKey("usable"); })), "nothing");
        EXPECT_EQ(summaryOf(thrownBy([&] { other.createSubKey("usable"); })), "nothing");
    }
}

} // namespace
