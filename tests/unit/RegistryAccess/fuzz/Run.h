#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Model.h"
#include "OperationInput.h"
#include "SimulatedRegistry.h"
#include "ZOL/RegistryAccess/Registry.h"

namespace fuzz {

/// Performs one sequence of operations on nodes and on the model.
class Run {
public:
    explicit Run(OperationInput input);

    /// At the first difference prints the operations so far and aborts.
    void execute();

private:
    /// A node and what the model has in its place.
    struct Slot {
        std::unique_ptr<ZOL::RegistryAccess::Registry> node =
            std::make_unique<ZOL::RegistryAccess::Registry>();
        Model::Node modelled;

        bool isOpen() const { return modelled.cell != nullptr; }
    };

    void step();
    void makeNode(std::size_t kind);
    void readOrWrite(std::size_t kind);
    void listSubKeys();
    void copyNode();
    void assignNode();
    void placeValue();

    Slot& slot() { return slots_[input_.below(slots_.size())]; }
    void put(Slot& slot, const ZOL::RegistryAccess::Registry& node, Model::Node modelled);

    /// Runs both, sometimes with a failing platform call, and compares the results.
    void compare(const std::string& what, const std::function<std::string()>& real,
                 const std::function<std::string()>& modelled);
    void compareState();
    void check(const std::string& what, const std::string& real, const std::string& expected);

    OperationInput input_;
    support::SimulatedRegistry platform_;
    Model model_;
    std::array<Slot, 4> slots_;
    std::vector<void*> lostCells_; // leaked by an assignment
    std::vector<Model::Node> lostNodes_;
    std::vector<std::string> trace_;
};

} // namespace fuzz
