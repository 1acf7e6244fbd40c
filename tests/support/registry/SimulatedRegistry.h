#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "HandleTable.h"
#include "RegistryTree.h"

namespace support {

/// A registry in memory, used by the functions of this folder's <windows.h> during its lifetime.
/// One at a time. It records the calls and returns the configured results.
///
/// A failed call leaves poison in all its output; sizes are the needed ones where the platform
/// reports them.
class SimulatedRegistry {
public:
    using Lines = std::vector<std::string>;

    SimulatedRegistry();
    SimulatedRegistry(const SimulatedRegistry&) = delete;
    SimulatedRegistry& operator=(const SimulatedRegistry&) = delete;
    ~SimulatedRegistry();

    static SimulatedRegistry& current();

    /// What lies below a predefined key.
    RegistryKey& root(HKEY predefined);
    RegistryKey& user() { return root(HKEY_CURRENT_USER); }

    // Answers, given in place of what the call would do; but RegCloseKey closes all the same.

    /// Answers the n-th call from now with this code.
    void answer(std::size_t n, LONG code);

    /// Answers the n-th call of this function from now with this code.
    void answer(const std::string& function, std::size_t n, LONG code);

    /// Answers all calls of this function with this code.
    void answerAll(const std::string& function, LONG code);

    /// From now on all is answered truly.
    void answerTruly();

    /// From now on, a failed call leaves a key's place as it was.
    void leaveKeysAlone() { poisonsKeys_ = false; }

    /// From now on, a name may fill a buffer to its last byte, with no room for a zero.
    void leaveOutTerminators() { terminates_ = false; }

    /// From now on, an enumeration gives these in place of the true lengths of a value.
    void misstateLengths(DWORD name, DWORD data) { misstated_ = {name, data}; }

    /// Refuses to make keys as soon as there are this many.
    void limitKeys(std::size_t keys) { keyLimit_ = keys; }

    // What was seen.

    /// The calls so far, or since they were last taken. A buffer shows as "zeros" if it had
    /// only zeros in it, else as "dirty"; output parameters are shown by their names.
    Lines takeCalls();

    /// How many calls there were since this was made.
    std::size_t calls() const { return calls_; }

    std::size_t openHandles() const { return handles.openHandles(); }

    /// Handles that were used or closed without being open.
    Lines takeMisuses() { return handles.takeMisuses(); }

    // For the platform's functions.

    /// Records a call; an answer that was ordered for it, if any.
    std::optional<LONG> record(const std::string& function, const Lines& arguments);

    bool poisonsKeys() const { return poisonsKeys_; }
    bool terminates() const { return terminates_; }

    void misstate(DWORD& nameLength, DWORD& dataLength) const;

    /// Null if no more keys can be made.
    RegistryKey::Pointer make(RegistryKey& parent, const std::string& path);

    HandleTable handles;

private:
    using Answer = std::function<std::optional<LONG>(const std::string& function)>;

    std::vector<Answer> answers_;
    Lines log_;
    std::size_t calls_ = 0;
    std::optional<std::pair<DWORD, DWORD>> misstated_;
    bool poisonsKeys_ = true;
    bool terminates_ = true;
    std::size_t keyLimit_ = static_cast<std::size_t>(-1);
};

} // namespace support
