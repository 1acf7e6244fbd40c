// Writes copies of a plug-in that are damaged, or show what another compiler makes.
//
// zol_damage_plugin <plug-in> <output folder> <.so or .dll>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

std::string read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios_base::binary);
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (content.empty()) {
        throw std::runtime_error("cannot read " + file.u8string());
    }
    return content;
}

void write(const std::filesystem::path& file, const std::string& content) {
    std::ofstream stream(file, std::ios_base::binary);
    stream << content << std::flush;
    if (!stream) {
        throw std::runtime_error("cannot write " + file.u8string());
    }
}

/// How often it replaced one text by another one of the same size.
int replace(std::string& content, const std::string& from, const std::string& to) {
    int count = 0;
    for (std::size_t at = content.find(from); at != std::string::npos;
         at = content.find(from, at)) {
        content.replace(at, to.size(), to);
        ++count;
    }
    return count;
}

/// 32 bits: in the class of ELF, or the processor of PE.
std::string narrow(std::string content, bool isDll) {
    constexpr std::size_t elfClass = 4;
    constexpr std::size_t placeOfHeader = 60;
    constexpr std::size_t signatureSize = 4;
    if (isDll) {
        std::uint32_t header = 0;
        std::memcpy(&header, content.data() + placeOfHeader, sizeof(header));
        content.replace(header + signatureSize, 2, "\x4C\x01");
    } else {
        content.at(elfClass) = '\x01';
    }
    return content;
}

/// Names of the framework, as a compiler of the other C++ ABI begins them.
std::string ofOtherCompiler(std::string content) {
    if (replace(content, "_ZN3ZOL", "?ZN3ZOL") +
            replace(content, "??0LoggerBackend@", "_Z0LoggerBackend@") ==
        0) {
        throw std::runtime_error("the plug-in imports nothing from the framework");
    }
    return content;
}

/// Without the C runtime library of Visual C++.
std::string withoutRuntime(std::string content) {
    replace(content, "ucrtbase", "another_");
    replace(content, "api-ms-win-crt-", "another-library");
    return content;
}

} // namespace

int main(int count, char** arguments) {
    try {
        if (count != 4) {
            throw std::runtime_error("wrong number of arguments");
        }
        const std::filesystem::path folder = arguments[2];
        const std::string end = std::string("_r") + arguments[3];
        const bool isDll = end == "_r.dll";
        const std::string good = read(arguments[1]);
        write(folder / ("Half" + end), good.substr(0, good.size() / 2));
        write(folder / ("Narrow" + end), narrow(good, isDll));
        write(folder / ("Foreign" + end), (isDll ? "\x7F"
                                                   "ELF\x02\x01\x01"
                                                 : "MZ\x90") +
                                              good);
        if (isDll) {
            write(folder / ("OtherCompiler" + end), ofOtherCompiler(good));
            write(folder / ("OwnRuntime" + end), withoutRuntime(good));
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "zol_damage_plugin: " << error.what() << '\n';
        return 1;
    }
}
