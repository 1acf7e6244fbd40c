#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "SimulatedRegistry.h"
#include "Thrown.h"
#include "ZOL/RegistryAccess/Registry.h"

namespace support {

using Lines = SimulatedRegistry::Lines;

/// A test with a registry of its own. At its end, no handle may be open, and none may have been
/// used or closed that was not open.
class RegistryTest : public testing::Test {
protected:
    void TearDown() override;

    /// The node of a key below the current user, made if it is not there; k1, if it is the first.
    /// What this called is not among the calls to take.
    ZOL::RegistryAccess::Registry node(const std::string& path = "node");

    SimulatedRegistry platform;
};

/// A test with the node of the key "node" below the current user, which is k1.
class NodeTest : public RegistryTest {
protected:
    NodeTest();

    void TearDown() override;

    RegistryKey& key;
    std::unique_ptr<ZOL::RegistryAccess::Registry> own;
};

} // namespace support
