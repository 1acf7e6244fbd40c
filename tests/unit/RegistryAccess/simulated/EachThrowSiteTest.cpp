// Each place that throws: its class, line, message, file and text.

#include "NodeCell.h"
#include "Operations.h"
#include "RegistryTest.h"
#include "ThrowSiteTable.h"

using support::Condition;
using support::Lines;
using support::Thrown;
using support::thrownBy;
using support::ThrowSite;
using ZOL::RegistryAccess::Registry;

namespace {

class EachThrowSite : public support::RegistryTest, public testing::WithParamInterface<ThrowSite> {
protected:
    /// Makes the operation of the site fail there.
    void run() {
        const ThrowSite& site = GetParam();
        support::arrange(platform);
        Registry without;
        if (site.condition == Condition::NoHandle) {
            support::operationNamed(site.operation).run(without, without);
            return;
        }
        Registry own = node();
        Registry other = node("other");
        if (site.condition == Condition::WrongType) {
            own.getIntValue("short");
            return;
        }
        platform.answer(site.function, 1, code());
        support::operationNamed(site.operation).run(own, other);
    }

    static LONG code() {
        switch (GetParam().condition) {
        case Condition::Denied:
            return ERROR_ACCESS_DENIED;
        case Condition::NoMoreItems:
            return ERROR_NO_MORE_ITEMS;
        default:
            return 1234;
        }
    }

    EachThrowSite() { platform.user().make("node")->setValue("short", REG_SZ, "abc"); }
};
INSTANTIATE_TEST_SUITE_P(Line, EachThrowSite, testing::ValuesIn(support::throwSites()),
                         [](const auto& instance) { return std::to_string(instance.param.line); });

TEST_P(EachThrowSite, ThrowsItsClassWithItsLineMessageAndFile) {
    const Thrown thrown = thrownBy([this] { run(); });
    EXPECT_EQ(thrown.errorClass, GetParam().errorClass);
    EXPECT_EQ(thrown.line, GetParam().line);
    EXPECT_EQ(thrown.message, GetParam().message);
    EXPECT_EQ(thrown.file, "src\\..\\src\\ZOL\\RegistryAccess\\Registry");
}

TEST_P(EachThrowSite, DescribesItselfWithTheNameOfItsClass) {
    EXPECT_EQ(thrownBy([this] { run(); }).what,
              "class ZOL::RegistryAccess::Registry::" + GetParam().errorClass +
                  "' (src\\..\\src\\ZOL\\RegistryAccess\\Registry:" +
                  std::to_string(GetParam().line) + "): " + GetParam().message);
}

TEST_P(EachThrowSite, IsCaughtAsTheRootOfTheFamily) {
    EXPECT_THROW(run(), Registry::GenericRegistryError);
}

TEST(ThrowSites, AreThirtyEightWithALineOfTheirOwnEach) {
    int before = 0;
    for (const ThrowSite& site : support::throwSites()) {
        EXPECT_GT(site.line, before);
        before = site.line;
    }
    EXPECT_EQ(support::throwSites().size(), 38U);
}

} // namespace
