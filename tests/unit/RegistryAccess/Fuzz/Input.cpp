#include "Input.h"

#include <array>

namespace fuzz {

// Never empty: that gives back the handle of the parent, which two nodes then close.
std::string Input::keyPath() {
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
    return paths[below(paths.size())];
}

std::string Input::valueName() {
    static const std::array<std::string, 7> names = {
        "v", "w", "V", "", "vv", std::string(260, 'n'), std::string(261, 'n')};
    return names[below(names.size())];
}

std::string Input::data() {
    static const std::array<std::size_t, 10> lengths = {4, 0, 1, 2, 3, 5, 30, 260, 261, 262};
    static const std::string filling("a\0\xff", 3);
    std::string bytes(lengths[below(lengths.size())], filling[below(filling.size())]);
    if (!bytes.empty()) {
        bytes.back() = filling[below(filling.size())];
        bytes.front() = static_cast<char>(byte());
    }
    return bytes;
}

DWORD Input::type() {
    static const std::array<DWORD, 8> types = {REG_SZ,       REG_DWORD, REG_NONE,   REG_EXPAND_SZ,
                                               REG_MULTI_SZ, REG_QWORD, REG_BINARY, 0xffffffff};
    return types[below(types.size())];
}

std::int32_t Input::number() {
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i) {
        bits = bits << 8U | byte();
    }
    return static_cast<std::int32_t>(bits);
}

LONG Input::failure() {
    static const std::array<LONG, 6> codes = {ERROR_ACCESS_DENIED,     ERROR_NO_MORE_ITEMS,
                                              ERROR_FILE_NOT_FOUND,    ERROR_INVALID_HANDLE,
                                              ERROR_INVALID_PARAMETER, ERROR_MORE_DATA};
    const std::size_t choice = below(codes.size() + 1);
    if (choice < codes.size()) {
        return codes[choice];
    }
    const std::int32_t any = number();
    return any != 0 ? any : 1;
}

} // namespace fuzz
