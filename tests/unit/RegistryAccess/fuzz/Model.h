#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "RegistryTree.h"

namespace fuzz {

/// A simple model of the operations of nodes. It counts the platform calls to know which one fails.
class Model {
public:
    explicit Model(std::size_t keyLimit) : keyLimit_(keyLimit) {}

    /// An open key, shared by nodes.
    class Cell {
    public:
        Cell(Model& model, support::RegistryKey::Pointer key);
        Cell(const Cell&) = delete;
        Cell& operator=(const Cell&) = delete;
        ~Cell();

        const support::RegistryKey::Pointer key;

    private:
        Model& model_;
    };

    struct Node {
        std::string name = "NOT INITIALIZED!";
        std::shared_ptr<Cell> cell;
    };

    /// What an operation throws: "class line".
    struct Failure {
        std::string summary;
    };

    Node open(const std::string& path);
    Node create(const std::string& path);
    bool hasSubKey(const Node& node, const std::string& name);
    Node openSubKey(const Node& node, const std::string& name);
    Node createSubKey(const Node& node, const std::string& name);
    void deleteSubKey(const Node& node, const std::string& name);
    bool hasValue(const Node& node, const std::string& name);
    std::string getStringValue(const Node& node, const std::string& name);
    std::int32_t getIntValue(const Node& node, const std::string& name);
    void updateStringValue(const Node& node, const std::string& name, const std::string& value);
    void updateIntValue(const Node& node, const std::string& name, std::int32_t value);
    void deleteValue(const Node& node, const std::string& name);
    std::vector<Node> getSubKeys(const Node& node);
    void copyValuesFrom(const Node& node, const Node& other);
    void copyFrom(const Node& node, const Node& other);

    /// The n-th call from now fails with this code; with n 0, none.
    void failAt(std::size_t n, LONG code);

    std::size_t openCells() const { return openCells_; }

    /// How often a key was closed that a failed call left, less those taken before.
    std::size_t takeClosesOfNothing();

    support::RegistryKey tree;

private:
    /// The answer of a call on this key: 0, or why it fails.
    LONG call(const support::RegistryKey& key);

    LONG callOpen(support::RegistryKey& parent, const std::string& path,
                  std::shared_ptr<Cell>& cell);
    LONG callCreate(support::RegistryKey& parent, const std::string& path,
                    std::shared_ptr<Cell>& cell);
    LONG callEnumValue(const Node& node, std::size_t index);

    /// Throws what a place throws for this result, if it is one that fails.
    static void check(LONG result, const char* denied, const char* other);
    static void check(LONG result, const char* denied, const char* noMoreItems, const char* other);
    static void checkOpen(const Node& node, int line);

    std::size_t keyLimit_;
    std::size_t callsUntilFailure_ = 0;
    LONG failure_ = 0;
    std::size_t openCells_ = 0;
    std::size_t closesOfNothing_ = 0;
};

} // namespace fuzz
