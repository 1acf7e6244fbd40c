#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "RegistryTree.h"

namespace support {

/// The handles that the simulated registry gave out. No number is given twice, so that the use of
/// a closed one shows.
class HandleTable {
public:
    /// What a failed call leaves in the place of a key.
    static HKEY poison();

    HandleTable();

    HKEY open(const RegistryKey::Pointer& key);

    /// Null if the handle is not open, which is a misuse.
    RegistryKey::Pointer resolve(HKEY handle);

    /// False if it was not open, which is a misuse. A predefined key stays as it is.
    bool close(HKEY handle);

    /// "HKCU", "HKLM", "k1" for the first that was opened, "k2", ..., "null", "poison".
    std::string show(HKEY handle) const;

    std::size_t openHandles() const;
    std::vector<std::string> takeMisuses();

private:
    struct Entry {
        std::string name;
        RegistryKey::Pointer key;
        bool isOpen = true;
    };

    std::map<HKEY, Entry> predefined_;
    std::map<HKEY, Entry> opened_;
    std::vector<std::string> misuses_;
};

} // namespace support
