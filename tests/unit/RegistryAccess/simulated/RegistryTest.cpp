#include "RegistryTest.h"

using ZOL::RegistryAccess::Registry;

namespace support {

void RegistryTest::TearDown() {
    EXPECT_EQ(platform.openHandles(), 0U);
    EXPECT_EQ(platform.takeMisuses(), Lines());
}

Registry RegistryTest::node(const std::string& path) {
    Registry made = Registry::create(HKEY_CURRENT_USER, path);
    platform.takeCalls();
    return made;
}

NodeTest::NodeTest()
    : key(*platform.user().make("node")), own(std::make_unique<Registry>(node())) {}

void NodeTest::TearDown() {
    own.reset();
    RegistryTest::TearDown();
}

} // namespace support
