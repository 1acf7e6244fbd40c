#include "file/LibraryFile.h"

#include <algorithm>
#include <map>

#include <elf.h>

namespace backendcheck {

namespace {

/// The file's parts as they lie in memory when it is loaded.
class Image {
public:
    explicit Image(const Bytes& bytes) : bytes_(bytes), header_(bytes.at<Elf64_Ehdr>(0)) {
        for (std::size_t i = 0; i < header_.e_phnum; ++i) {
            const auto part = bytes.at<Elf64_Phdr>(header_.e_phoff + i * sizeof(Elf64_Phdr));
            if (part.p_type == PT_LOAD) {
                bytes.need(part.p_offset, part.p_filesz);
            }
            parts_.push_back(part);
        }
    }

    const Elf64_Ehdr& header() const { return header_; }
    const std::vector<Elf64_Phdr>& parts() const { return parts_; }

    std::size_t offsetOf(std::size_t address) const {
        for (const Elf64_Phdr& part : parts_) {
            if (part.p_type == PT_LOAD && address >= part.p_vaddr &&
                address - part.p_vaddr < part.p_filesz) {
                return address - part.p_vaddr + part.p_offset;
            }
        }
        throw CutShort();
    }

    template <typename Value>
    Value at(std::size_t address) const {
        return bytes_.at<Value>(offsetOf(address));
    }

    std::string textAt(std::size_t address) const { return bytes_.textAt(offsetOf(address)); }

private:
    const Bytes& bytes_;
    Elf64_Ehdr header_;
    std::vector<Elf64_Phdr> parts_;
};

void refuseOthers(const Bytes& bytes) {
    if (bytes.beginsWith("MZ")) {
        throw NotALibrary("is a library or program for Windows");
    }
    if (!bytes.beginsWith(ELFMAG)) {
        throw NotALibrary("is no library: it does not begin as one");
    }
    if (bytes.at<unsigned char>(EI_CLASS) != ELFCLASS64) {
        throw NotALibrary("is of 32 bits, and the framework of 64");
    }
    const auto header = bytes.at<Elf64_Ehdr>(0);
    if (bytes.at<unsigned char>(EI_DATA) != ELFDATA2LSB || header.e_machine != EM_X86_64) {
        throw NotALibrary("is for another processor than x86-64");
    }
    if (header.e_type == ET_REL) {
        throw NotALibrary("is an object file that was never linked");
    }
    if (header.e_type != ET_DYN) {
        throw NotALibrary("is a program, not a library");
    }
}

using Dynamic = std::multimap<Elf64_Sxword, Elf64_Xword>;

Dynamic dynamicOf(const Image& image, const Bytes& bytes) {
    Dynamic entries;
    for (const Elf64_Phdr& part : image.parts()) {
        if (part.p_type != PT_DYNAMIC) {
            continue;
        }
        for (std::size_t at = 0; at + sizeof(Elf64_Dyn) <= part.p_filesz; at += sizeof(Elf64_Dyn)) {
            const auto entry = bytes.at<Elf64_Dyn>(part.p_offset + at);
            if (entry.d_tag == DT_NULL) {
                break;
            }
            entries.emplace(entry.d_tag, entry.d_un.d_val);
        }
    }
    return entries;
}

std::size_t valueOf(const Dynamic& entries, Elf64_Sxword tag) {
    const auto entry = entries.find(tag);
    return entry != entries.end() ? entry->second : 0;
}

/// Of the table that the loader looks names up in; nothing else tells how long the other one is.
std::size_t symbolCount(const Image& image, const Dynamic& entries) {
    if (const std::size_t table = valueOf(entries, DT_HASH)) {
        return image.at<Elf64_Word>(table + sizeof(Elf64_Word));
    }
    const std::size_t table = valueOf(entries, DT_GNU_HASH);
    if (table == 0) {
        return 0;
    }
    constexpr std::size_t word = sizeof(Elf64_Word);
    const std::size_t buckets = image.at<Elf64_Word>(table);
    const std::size_t first = image.at<Elf64_Word>(table + word);
    const std::size_t filterWords = image.at<Elf64_Word>(table + 2 * word);
    const std::size_t bucketTable = table + 4 * word + filterWords * sizeof(Elf64_Xword);
    std::size_t last = 0;
    for (std::size_t i = 0; i < buckets; ++i) {
        last = std::max<std::size_t>(last, image.at<Elf64_Word>(bucketTable + i * word));
    }
    if (last < first) {
        return first;
    }
    const std::size_t chains = bucketTable + buckets * word;
    while ((image.at<Elf64_Word>(chains + (last - first) * word) & 1U) == 0) {
        ++last;
    }
    return last + 1;
}

bool isDefined(const Elf64_Sym& symbol) {
    return symbol.st_shndx != SHN_UNDEF && symbol.st_name != 0;
}

bool isOffered(const Elf64_Sym& symbol) {
    const auto visibility = ELF64_ST_VISIBILITY(symbol.st_other);
    return ELF64_ST_BIND(symbol.st_info) != STB_LOCAL &&
           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
}

bool isFunction(const Elf64_Sym& symbol) {
    const auto type = ELF64_ST_TYPE(symbol.st_info);
    return type == STT_FUNC || type == STT_GNU_IFUNC || type == STT_NOTYPE;
}

std::vector<std::string> hiddenNames(const Image& image, const Bytes& bytes) {
    std::vector<std::string> names;
    const Elf64_Ehdr& header = image.header();
    for (std::size_t i = 0; header.e_shoff != 0 && i < header.e_shnum; ++i) {
        const auto section = bytes.at<Elf64_Shdr>(header.e_shoff + i * sizeof(Elf64_Shdr));
        if (section.sh_type != SHT_SYMTAB || section.sh_link >= header.e_shnum) {
            continue;
        }
        const auto texts =
            bytes.at<Elf64_Shdr>(header.e_shoff + section.sh_link * sizeof(Elf64_Shdr));
        for (std::size_t at = 0; at < section.sh_size; at += sizeof(Elf64_Sym)) {
            const auto symbol = bytes.at<Elf64_Sym>(section.sh_offset + at);
            if (isDefined(symbol)) {
                names.push_back(bytes.textAt(texts.sh_offset + symbol.st_name));
            }
        }
    }
    return names;
}

} // namespace

LibraryFile parseLibrary(const Bytes& bytes) {
    refuseOthers(bytes);
    const Image image(bytes);
    const Dynamic entries = dynamicOf(image, bytes);
    const std::size_t texts = valueOf(entries, DT_STRTAB);
    if (texts == 0) {
        throw NotALibrary("is no library: it has nothing for the loader");
    }
    if ((valueOf(entries, DT_FLAGS_1) & DF_1_PIE) != 0) {
        throw NotALibrary("is a program, not a library");
    }

    LibraryFile library;
    const auto needed = entries.equal_range(DT_NEEDED);
    for (auto entry = needed.first; entry != needed.second; ++entry) {
        library.needed.push_back(image.textAt(texts + entry->second));
    }
    const std::size_t symbols = valueOf(entries, DT_SYMTAB);
    const std::size_t count = symbolCount(image, entries);
    for (std::size_t i = 0; i < count; ++i) {
        const auto symbol = image.at<Elf64_Sym>(symbols + i * sizeof(Elf64_Sym));
        if (isDefined(symbol) && isOffered(symbol)) {
            library.exports.push_back({image.textAt(texts + symbol.st_name), isFunction(symbol)});
        }
    }
    library.hidden = hiddenNames(image, bytes);
    return library;
}

} // namespace backendcheck
