#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "RegistryTest.h"

namespace support {

/// One operation of a node, such that it makes all the calls that it can make and succeeds where
/// arrange was called before.
struct Operation {
    std::string name;
    std::function<void(ZOL::RegistryAccess::Registry& node, ZOL::RegistryAccess::Registry& other)>
        run;
};

/// Its form in test names.
inline void PrintTo(const Operation& operation, std::ostream* stream) {
    *stream << operation.name;
}

/// All operations of a node that reach the platform.
const std::vector<Operation>& operations();

/// Those that a node without a key refuses: all but open and create, and hasSubKey, which looks
/// for none.
std::vector<Operation> checkedOperations();

const Operation& operationNamed(const std::string& name);

/// Fills the key of the node of the operations, and that of the other one; both lie below the
/// current user: "node" and "other".
void arrange(SimulatedRegistry& platform);

} // namespace support
