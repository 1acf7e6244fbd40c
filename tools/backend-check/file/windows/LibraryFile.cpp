#include "file/LibraryFile.h"

#include <algorithm>
#include <cstddef>

#include <windows.h>

namespace backendcheck {

namespace {

/// The file's parts as they lie in memory when it is loaded.
class Image {
public:
    explicit Image(const Bytes& bytes) : bytes_(bytes) {
        const auto place = static_cast<std::size_t>(bytes.at<IMAGE_DOS_HEADER>(0).e_lfanew);
        headers_ = bytes.at<IMAGE_NT_HEADERS64>(place);
        const std::size_t table = place + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                                  headers_.FileHeader.SizeOfOptionalHeader;
        for (std::size_t i = 0; i < headers_.FileHeader.NumberOfSections; ++i) {
            const auto part =
                bytes.at<IMAGE_SECTION_HEADER>(table + i * sizeof(IMAGE_SECTION_HEADER));
            bytes.need(part.PointerToRawData, part.SizeOfRawData);
            parts_.push_back(part);
        }
    }

    const IMAGE_DATA_DIRECTORY& directory(std::size_t index) const {
        return headers_.OptionalHeader.DataDirectory[index];
    }

    template <typename Value>
    Value at(std::size_t address) const {
        return bytes_.at<Value>(offsetOf(address));
    }

    std::string textAt(std::size_t address) const { return bytes_.textAt(offsetOf(address)); }

    bool isCode(std::size_t address) const {
        return (partOf(address).Characteristics & IMAGE_SCN_MEM_EXECUTE) != 0;
    }

private:
    const IMAGE_SECTION_HEADER& partOf(std::size_t address) const {
        for (const IMAGE_SECTION_HEADER& part : parts_) {
            const std::size_t size = std::max(part.SizeOfRawData, part.Misc.VirtualSize);
            if (address >= part.VirtualAddress && address - part.VirtualAddress < size) {
                return part;
            }
        }
        throw CutShort();
    }

    std::size_t offsetOf(std::size_t address) const {
        const IMAGE_SECTION_HEADER& part = partOf(address);
        return address - part.VirtualAddress + part.PointerToRawData;
    }

    const Bytes& bytes_;
    IMAGE_NT_HEADERS64 headers_;
    std::vector<IMAGE_SECTION_HEADER> parts_;
};

void refuseOthers(const Bytes& bytes) {
    if (bytes.beginsWith("\x7f"
                         "ELF")) {
        throw NotALibrary("is a library or program for Linux");
    }
    if (!bytes.beginsWith("MZ")) {
        throw NotALibrary("is no library: it does not begin as one");
    }
    const auto place = static_cast<std::size_t>(bytes.at<IMAGE_DOS_HEADER>(0).e_lfanew);
    if (bytes.at<DWORD>(place) != IMAGE_NT_SIGNATURE) {
        throw NotALibrary("is no library for Windows");
    }
    const auto header = bytes.at<IMAGE_FILE_HEADER>(place + sizeof(DWORD));
    if (header.Machine == IMAGE_FILE_MACHINE_I386) {
        throw NotALibrary("is of 32 bits, and the framework of 64");
    }
    if (header.Machine != IMAGE_FILE_MACHINE_AMD64) {
        throw NotALibrary("is for another processor than x64");
    }
    if ((header.Characteristics & IMAGE_FILE_DLL) == 0) {
        throw NotALibrary("is a program, not a library");
    }
}

void readExports(const Image& image, LibraryFile& library) {
    const IMAGE_DATA_DIRECTORY& place = image.directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (place.Size == 0) {
        return;
    }
    const auto table = image.at<IMAGE_EXPORT_DIRECTORY>(place.VirtualAddress);
    for (DWORD i = 0; i < table.NumberOfNames; ++i) {
        const auto name = image.at<DWORD>(table.AddressOfNames + i * sizeof(DWORD));
        const auto index = image.at<WORD>(table.AddressOfNameOrdinals + i * sizeof(WORD));
        const auto address = image.at<DWORD>(table.AddressOfFunctions + index * sizeof(DWORD));
        // An address within the table leads on to another library's function.
        const bool isForwarded =
            address >= place.VirtualAddress && address - place.VirtualAddress < place.Size;
        library.exports.push_back({image.textAt(name), isForwarded || image.isCode(address)});
    }
}

void readImports(const Image& image, LibraryFile& library) {
    const IMAGE_DATA_DIRECTORY& place = image.directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (std::size_t at = place.VirtualAddress; place.Size != 0;
         at += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
        const auto entry = image.at<IMAGE_IMPORT_DESCRIPTOR>(at);
        if (entry.Name == 0) {
            break;
        }
        library.needed.push_back(image.textAt(entry.Name));
        std::vector<std::string>& names = library.imports[library.needed.back()];
        const std::size_t list = entry.OriginalFirstThunk != 0
                                     ? static_cast<std::size_t>(entry.OriginalFirstThunk)
                                     : static_cast<std::size_t>(entry.FirstThunk);
        for (std::size_t i = 0;; ++i) {
            const auto item = image.at<ULONGLONG>(list + i * sizeof(ULONGLONG));
            if (item == 0) {
                break;
            }
            if ((item & IMAGE_ORDINAL_FLAG64) == 0) {
                names.push_back(image.textAt(item + sizeof(WORD))); // behind a hint
            }
        }
    }
}

} // namespace

LibraryFile parseLibrary(const Bytes& bytes) {
    refuseOthers(bytes);
    const Image image(bytes);
    LibraryFile library;
    readExports(image, library);
    readImports(image, library);
    return library;
}

} // namespace backendcheck
