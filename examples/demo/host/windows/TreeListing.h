#pragma once

#include <cstddef>
#include <ostream>

#include "ZOL/RegistryAccess/Registry.h"

namespace Demo {

/// One line for each key of the tree, indented by its depth, with those of its values whose names
/// the demo knows; the first lines only of a large tree.
void printTree(std::ostream& out, const ZOL::RegistryAccess::Registry& node);

/// How many keys are below the node, at any depth.
std::size_t countKeysBelow(const ZOL::RegistryAccess::Registry& node);

} // namespace Demo
