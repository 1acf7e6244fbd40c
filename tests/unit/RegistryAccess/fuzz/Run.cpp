#include "Run.h"

#include <cstdlib>
#include <iostream>
#include <utility>

#include "NodeCell.h"
#include "ShowText.h"
#include "Thrown.h"

using support::RegistryKey;
using ZOL::RegistryAccess::Registry;

namespace fuzz {

namespace {

constexpr std::size_t mostKeys = 40;

std::string shorten(const std::string& text) {
    constexpr std::size_t most = 40;
    return text.size() > most ? support::printable(text.substr(0, most)) + "...(" +
                                    std::to_string(text.size()) + ")"
                              : support::printable(text);
}

std::string join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

} // namespace

Run::Run(OperationInput input) : input_(input), model_(mostKeys) {
    platform_.limitKeys(mostKeys);
}

void Run::execute() {
    while (!input_.isEmpty()) {
        step();
        compareState();
    }
    for (Slot& each : slots_) {
        each.node.reset();
        each.modelled = {};
    }
    check("handles that assignments keep", std::to_string(platform_.openHandles()),
          std::to_string(model_.openCells()));
    for (void* const cell : lostCells_) {
        support::releaseReference(cell);
    }
    check("handles at the end", std::to_string(platform_.openHandles()), "0");
    check("the tree", join(platform_.user().listing()), join(model_.tree.listing()));
    lostNodes_.clear();
}

void Run::step() {
    const std::size_t kind = input_.below(18);
    if (kind < 4) {
        makeNode(kind);
    } else if (kind < 13) {
        readOrWrite(kind);
    } else if (kind == 13) {
        listSubKeys();
    } else if (kind == 14) {
        copyNode();
    } else if (kind == 15) {
        assignNode();
    } else if (kind == 16) {
        placeValue();
    } else {
        put(slot(), Registry(), {});
    }
}

void Run::put(Slot& slot, const Registry& node, Model::Node modelled) {
    // A node without a key must not be copied.
    slot.node =
        modelled.cell == nullptr ? std::make_unique<Registry>() : std::make_unique<Registry>(node);
    slot.modelled = std::move(modelled);
}

void Run::makeNode(std::size_t kind) {
    Slot& from = slot();
    Slot& to = slot();
    const std::string path = input_.keyPath();
    std::unique_ptr<Registry> node;
    Model::Node modelled;
    static const std::array<std::string, 4> names = {"open", "create", "openSubKey",
                                                     "createSubKey"};
    compare(
        names[kind] + " " + shorten(path),
        [&] {
            switch (kind) {
            case 0:
                node.reset(new Registry(Registry::open(HKEY_CURRENT_USER, path)));
                break;
            case 1:
                node.reset(new Registry(Registry::create(HKEY_CURRENT_USER, path)));
                break;
            case 2:
                node.reset(new Registry(from.node->openSubKey(path)));
                break;
            default:
                node.reset(new Registry(from.node->createSubKey(path)));
            }
            return node->getName();
        },
        [&] {
            switch (kind) {
            case 0:
                modelled = model_.open(path);
                break;
            case 1:
                modelled = model_.create(path);
                break;
            case 2:
                modelled = model_.openSubKey(from.modelled, path);
                break;
            default:
                modelled = model_.createSubKey(from.modelled, path);
            }
            return modelled.name;
        });
    if (node != nullptr) {
        put(to, *node, modelled);
    }
}

void Run::readOrWrite(std::size_t kind) {
    Slot& on = slot();
    Slot& other = slot();
    const std::string name = kind < 6 ? input_.keyPath() : input_.valueName();
    const std::string data = input_.data();
    const std::int32_t number = input_.value<std::int32_t>();
    Registry& node = *on.node;
    const Model::Node& modelled = on.modelled;
    const auto flag = [](bool value) {
        return std::string(value ? "true" : "false");
    };
    switch (kind) {
    case 4:
        if (on.isOpen()) {
            compare(
                "hasSubKey " + shorten(name), [&] { return flag(node.hasSubKey(name)); },
                [&] { return flag(model_.hasSubKey(modelled, name)); });
        }
        break;
    case 5:
        compare(
            "deleteSubKey " + shorten(name), [&] { return node.deleteSubKey(name), "done"; },
            [&] { return model_.deleteSubKey(modelled, name), "done"; });
        break;
    case 6:
        compare(
            "hasValue " + shorten(name), [&] { return flag(node.hasValue(name)); },
            [&] { return flag(model_.hasValue(modelled, name)); });
        break;
    case 7:
        compare(
            "getStringValue " + shorten(name),
            [&] { return support::text(node.getStringValue(name)); },
            [&] { return model_.getStringValue(modelled, name); });
        break;
    case 8:
        compare(
            "getIntValue " + shorten(name), [&] { return std::to_string(node.getIntValue(name)); },
            [&] { return std::to_string(model_.getIntValue(modelled, name)); });
        break;
    case 9:
        compare(
            "updateStringValue " + shorten(name) + " " + shorten(data),
            [&] { return flag(node.updateStringValue(name, support::bytes(data))); },
            [&] { return model_.updateStringValue(modelled, name, data), "false"; });
        break;
    case 10:
        compare(
            "updateIntValue " + shorten(name),
            [&] { return flag(node.updateIntValue(name, number)); },
            [&] { return model_.updateIntValue(modelled, name, number), "false"; });
        break;
    case 11:
        compare(
            "deleteValue " + shorten(name), [&] { return node.deleteValue(name), "done"; },
            [&] { return model_.deleteValue(modelled, name), "done"; });
        break;
    default:
        if (number % 2 == 0) {
            compare(
                "copyValuesFrom", [&] { return node.copyValuesFrom(*other.node), "done"; },
                [&] { return model_.copyValuesFrom(modelled, other.modelled), "done"; });
        } else {
            compare(
                "copyFrom", [&] { return node.copyFrom(*other.node), "done"; },
                [&] { return model_.copyFrom(modelled, other.modelled), "done"; });
        }
    }
}

void Run::listSubKeys() {
    Slot& on = slot();
    Slot& to = slot();
    std::vector<Registry> nodes;
    std::vector<Model::Node> modelled;
    compare(
        "getSubKeys",
        [&] {
            nodes = on.node->getSubKeys();
            std::string names;
            for (const Registry& each : nodes) {
                names += each.getName() + ",";
            }
            return names;
        },
        [&] {
            modelled = model_.getSubKeys(on.modelled);
            std::string names;
            for (const Model::Node& each : modelled) {
                names += each.name + ",";
            }
            return names;
        });
    if (!nodes.empty()) {
        const std::size_t kept = input_.below(nodes.size());
        put(to, nodes[kept], modelled[kept]);
    }
}

void Run::copyNode() {
    const Slot& from = slot();
    Slot& to = slot();
    if (from.isOpen()) {
        trace_.emplace_back("copy");
        put(to, *from.node, from.modelled);
    }
}

void Run::assignNode() {
    const Slot& from = slot();
    Slot& to = slot();
    if (from.isOpen()) {
        trace_.emplace_back("assignment");
        if (to.isOpen()) {
            lostCells_.push_back(support::cellOf(*to.node));
            lostNodes_.push_back(to.modelled);
        }
        *to.node = *from.node;
        to.modelled = Model::Node(from.modelled);
    }
}

/// As another program would.
void Run::placeValue() {
    const std::string path = input_.keyPath();
    const std::string name = input_.valueName();
    const DWORD type = input_.type();
    std::string data = input_.data();
    if (data.size() == 261 && data.back() != '\0') {
        data.pop_back(); // the byte after the data is not reported
    }
    trace_.push_back("another program's " + shorten(name) + " in " + shorten(path));
    for (RegistryKey* const tree : {&platform_.user(), &model_.tree}) {
        if (const RegistryKey::Pointer key = tree->find(path)) {
            key->setValue(name, type, data);
        }
    }
}

void Run::compare(const std::string& what, const std::function<std::string()>& real,
                  const std::function<std::string()>& modelled) {
    trace_.push_back(what);
    const std::size_t failing = input_.below(64);
    if (0 < failing && failing < 32) {
        const LONG code = input_.failure();
        trace_.back() +=
            ", call " + std::to_string(failing) + " answered with " + std::to_string(code);
        platform_.answer(failing, code);
        model_.failAt(failing, code);
    }
    std::string result;
    const support::Thrown thrown = support::thrownBy([&] { result = real(); });
    platform_.answerTruly();
    std::string expected;
    std::string expectedFailure = "nothing";
    try {
        expected = modelled();
    } catch (const Model::Failure& failure) {
        expectedFailure = failure.summary;
    }
    model_.failAt(0, 0);
    check("what it threw", support::summaryOf(thrown), expectedFailure);
    check("the result", result, expected);
}

void Run::compareState() {
    check("open handles", std::to_string(platform_.openHandles()),
          std::to_string(model_.openCells()));
    check("misuses of handles", std::to_string(platform_.takeMisuses().size()),
          std::to_string(model_.takeClosesOfNothing()));
    for (const Slot& each : slots_) {
        check("the name of a node", each.node->getName(), each.modelled.name);
    }
}

void Run::check(const std::string& what, const std::string& real, const std::string& expected) {
    if (real == expected) {
        return;
    }
    std::cerr << "\nThe operations were:\n" << join(trace_);
    std::cerr << "Then " << what << " was\n  " << support::printable(real) << "\nand not\n  "
              << support::printable(expected) << "\n";
    std::abort();
}

} // namespace fuzz
