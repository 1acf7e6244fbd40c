#include <fstream>
#include <iterator>
#include <stdexcept>

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include "ModuleExports.h"

namespace surface {

namespace {

using Content = std::vector<char>;

Content contentOf(const char* path) {
    std::ifstream file(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <typename Entry>
std::vector<Entry> tableAt(const Content& content, std::size_t offset, std::size_t count) {
    if (offset + count * sizeof(Entry) > content.size()) {
        throw std::runtime_error("a module's file ends within a table");
    }
    const auto* const first = reinterpret_cast<const Entry*>(content.data() + offset);
    return {first, first + count};
}

std::string textAt(const Content& content, const Elf64_Shdr& texts, std::size_t offset) {
    return content.data() + texts.sh_offset + offset;
}

bool isExported(const Elf64_Sym& symbol) {
    const auto binding = ELF64_ST_BIND(symbol.st_info);
    return symbol.st_shndx != SHN_UNDEF && binding != STB_LOCAL;
}

} // namespace

ModuleExports exportsOf(const std::string& module) {
    void* const handle = dlopen((module + ".so").c_str(), RTLD_NOW | RTLD_LOCAL);
    link_map* map = nullptr;
    if (handle == nullptr || dlinfo(handle, RTLD_DI_LINKMAP, &map) != 0) {
        throw std::runtime_error(dlerror());
    }
    const Content content = contentOf(map->l_name);
    const Elf64_Ehdr header = tableAt<Elf64_Ehdr>(content, 0, 1).front();
    const auto sections = tableAt<Elf64_Shdr>(content, header.e_shoff, header.e_shnum);

    ModuleExports found;
    for (const Elf64_Shdr& section : sections) {
        if (section.sh_type == SHT_DYNSYM) {
            for (const Elf64_Sym& symbol : tableAt<Elf64_Sym>(
                     content, section.sh_offset, section.sh_size / sizeof(Elf64_Sym))) {
                if (isExported(symbol)) {
                    found.names.push_back(
                        textAt(content, sections.at(section.sh_link), symbol.st_name));
                }
            }
        } else if (section.sh_type == SHT_DYNAMIC) {
            for (const Elf64_Dyn& entry : tableAt<Elf64_Dyn>(content, section.sh_offset,
                                                             section.sh_size / sizeof(Elf64_Dyn))) {
                if (entry.d_tag == DT_SONAME) {
                    found.module = textAt(content, sections.at(section.sh_link), entry.d_un.d_val);
                }
            }
        }
    }
    return found;
}

} // namespace surface
