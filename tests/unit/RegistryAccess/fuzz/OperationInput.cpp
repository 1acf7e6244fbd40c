#include "OperationInput.h"

#include <array>

namespace fuzz {

// Never empty: an empty path opens the parent's own handle, which two nodes then close.
std::string OperationInput::keyPath() {
    static const std::array<std::string, 12> paths = {"a",
                                                      "b",
                                                      "A",
                                                      "c",
                                                      "a\\b",
                                                      "b\\a\\c",
                                                      "c\\",
                                                      "\\b",
                                                      "A\\\\C",
                                                      "a\\b\\c\\d",
                                                      std::string(260, 'k'),
                                                      std::string(261, 'k')};
    return pick(paths);
}

std::string OperationInput::valueName() {
    static const std::array<std::string, 7> names = {
        "v", "w", "V", "", "vv", std::string(260, 'n'), std::string(261, 'n')};
    return pick(names);
}

std::string OperationInput::data() {
    static const std::array<std::size_t, 10> lengths = {4, 0, 1, 2, 3, 5, 30, 260, 261, 262};
    static const std::string filling("a\0\xff", 3);
    std::string bytes(pick(lengths), pick(filling));
    if (!bytes.empty()) {
        bytes.back() = pick(filling);
        bytes.front() = static_cast<char>(byte());
    }
    return bytes;
}

DWORD OperationInput::type() {
    static const std::array<DWORD, 8> types = {REG_SZ,       REG_DWORD, REG_NONE,   REG_EXPAND_SZ,
                                               REG_MULTI_SZ, REG_QWORD, REG_BINARY, 0xffffffff};
    return pick(types);
}

LONG OperationInput::failure() {
    static const std::array<LONG, 6> codes = {ERROR_ACCESS_DENIED,     ERROR_NO_MORE_ITEMS,
                                              ERROR_FILE_NOT_FOUND,    ERROR_INVALID_HANDLE,
                                              ERROR_INVALID_PARAMETER, ERROR_MORE_DATA};
    const std::size_t choice = below(codes.size() + 1);
    if (choice < codes.size()) {
        return codes[choice];
    }
    const auto any = value<LONG>();
    return any != 0 ? any : 1;
}

} // namespace fuzz
