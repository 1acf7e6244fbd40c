#include "file/LibraryFile.h"

#include <memory>

#include <dlfcn.h>
#include <libelf.h>

#include "ZOL/Framework/Framework.h"

namespace backendcheck {

namespace {

template <typename Value>
Value* required(Value* value) {
    if (value == nullptr) {
        throw DamagedLibrary();
    }
    return value;
}

std::unique_ptr<Elf, int (*)(Elf*)> openElf(std::string& content) {
    if (content.rfind("MZ", 0) == 0) {
        throw NotALibrary("is a library or program for Windows");
    }
    if (content.rfind(ELFMAG, 0) != 0) {
        throw NotALibrary("is no library: it does not begin with the ELF header");
    }
    if (content.size() > EI_CLASS && content[EI_CLASS] != ELFCLASS64) {
        throw NotALibrary("is of 32 bits, and the framework of 64");
    }
    elf_version(EV_CURRENT);
    return {required(elf_memory(content.data(), content.size())), &elf_end};
}

void refuseOthers(const Elf64_Ehdr& header) {
    if (header.e_ident[EI_DATA] != ELFDATA2LSB || header.e_machine != EM_X86_64) {
        throw NotALibrary("is for another processor than x86-64");
    }
    if (header.e_type == ET_REL) {
        throw NotALibrary("is an object file that was never linked");
    }
    if (header.e_type != ET_DYN) {
        throw NotALibrary("is a program, not a library");
    }
    if (header.e_shnum == 0) {
        throw NotALibrary("has no section headers, from which this tool reads its symbols");
    }
}

bool isDefined(const Elf64_Sym& symbol) {
    return symbol.st_shndx != SHN_UNDEF && symbol.st_name != 0;
}

bool isExported(const Elf64_Sym& symbol) {
    const auto visibility = ELF64_ST_VISIBILITY(symbol.st_other);
    return ELF64_ST_BIND(symbol.st_info) != STB_LOCAL &&
           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
}

bool isFunction(const Elf64_Sym& symbol) {
    const auto type = ELF64_ST_TYPE(symbol.st_info);
    return type == STT_FUNC || type == STT_GNU_IFUNC || type == STT_NOTYPE;
}

/// Calls the visitor with each entry of a section, and a function that gives its texts.
template <typename Entry, typename Visitor>
void forEach(Elf* elf, Elf_Scn* section, const Visitor& visit) {
    const Elf64_Shdr& header = *required(elf64_getshdr(section));
    const Elf_Data& data = *required(elf_getdata(section, nullptr));
    const auto* const entries = static_cast<const Entry*>(data.d_buf);
    const auto text = [&](std::size_t offset) {
        return std::string(required(elf_strptr(elf, header.sh_link, offset)));
    };
    for (std::size_t i = 0; entries != nullptr && i < data.d_size / sizeof(Entry); ++i) {
        visit(entries[i], text);
    }
}

} // namespace

LibraryFile parseLibrary(std::string& content) {
    const auto owner = openElf(content);
    Elf* const elf = owner.get();
    const Elf64_Ehdr& header = *required(elf64_getehdr(elf));
    refuseOthers(header);
    std::size_t sectionCount = 0; // 0 if their table is beyond the end
    if (elf_getshdrnum(elf, &sectionCount) != 0 || sectionCount != header.e_shnum) {
        throw DamagedLibrary();
    }

    LibraryFile library;
    bool isDynamic = false;
    for (Elf_Scn* section = elf_nextscn(elf, nullptr); section != nullptr;
         section = elf_nextscn(elf, section)) {
        switch (required(elf64_getshdr(section))->sh_type) {
        case SHT_DYNAMIC:
            isDynamic = true;
            forEach<Elf64_Dyn>(elf, section, [&](const Elf64_Dyn& entry, const auto& text) {
                if (entry.d_tag == DT_NEEDED) {
                    library.needed.push_back(text(entry.d_un.d_val));
                } else if (entry.d_tag == DT_FLAGS_1 && (entry.d_un.d_val & DF_1_PIE) != 0) {
                    throw NotALibrary("is a program, not a library");
                }
            });
            break;
        case SHT_DYNSYM:
            forEach<Elf64_Sym>(elf, section, [&](const Elf64_Sym& symbol, const auto& text) {
                if (isDefined(symbol) && isExported(symbol)) {
                    library.exports.push_back({text(symbol.st_name), isFunction(symbol)});
                }
            });
            break;
        case SHT_SYMTAB:
            forEach<Elf64_Sym>(elf, section, [&](const Elf64_Sym& symbol, const auto& text) {
                if (isDefined(symbol)) {
                    library.hidden.push_back(text(symbol.st_name));
                }
            });
            break;
        default:
            break;
        }
    }
    if (!isDynamic) {
        throw NotALibrary("is no library: it has no dynamic section");
    }
    return library;
}

const char* const searchVariable = "LD_LIBRARY_PATH";
const char* const searchSeparators = ":;";
const char* const emptyElement = ".";

std::vector<std::filesystem::path> searchFolders() {
    std::vector<std::filesystem::path> folders = searchPath();
    const std::filesystem::path frameworkFolder = frameworkFile().parent_path();
    folders.insert(folders.end(), {frameworkFolder, frameworkFolder / ZOL_BACKEND_FOLDER});
    folders.insert(folders.end(), {"/lib/x86_64-linux-gnu", "/usr/lib/x86_64-linux-gnu", "/lib",
                                   "/usr/lib", "/usr/local/lib"});
    return folders;
}

std::filesystem::path frameworkFile() {
    Dl_info info = {};
    dladdr(reinterpret_cast<const void*>(&ZOL::Framework::Framework::propertyManager), &info);
    return std::filesystem::canonical(info.dli_fname);
}

std::filesystem::path programFile() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

} // namespace backendcheck
