#include "file/LibraryFile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include <windows.h>

namespace backendcheck {

namespace {

/// The file's parts as they lie in memory when it is loaded. Throws DamagedLibrary.
class Image {
public:
    explicit Image(const std::string& content) : content_(content) {
        refuseOthers();
        const std::size_t start = headersOffset();
        headers_ = atOffset<IMAGE_NT_HEADERS64>(start);
        const std::size_t table = start + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                                  headers_.FileHeader.SizeOfOptionalHeader;
        for (std::size_t i = 0; i < headers_.FileHeader.NumberOfSections; ++i) {
            const auto section =
                atOffset<IMAGE_SECTION_HEADER>(table + i * sizeof(IMAGE_SECTION_HEADER));
            need(section.PointerToRawData, section.SizeOfRawData);
            sections_.push_back(section);
        }
    }

    const IMAGE_DATA_DIRECTORY& directory(std::size_t index) const {
        return headers_.OptionalHeader.DataDirectory[index];
    }

    template <typename Value>
    Value at(std::size_t address) const {
        return atOffset<Value>(offsetOf(address));
    }

    /// The zero-terminated text there.
    std::string textAt(std::size_t address) const {
        const std::size_t offset = offsetOf(address);
        const std::size_t end = content_.find('\0', offset);
        if (end == std::string::npos) {
            throw DamagedLibrary();
        }
        return content_.substr(offset, end - offset);
    }

    bool isCode(std::size_t address) const {
        return (sectionOf(address).Characteristics & IMAGE_SCN_MEM_EXECUTE) != 0;
    }

private:
    std::size_t headersOffset() const {
        return static_cast<std::size_t>(atOffset<IMAGE_DOS_HEADER>(0).e_lfanew);
    }

    void refuseOthers() const {
        if (content_.rfind("\x7f"
                           "ELF",
                           0) == 0) {
            throw NotALibrary("is a library or program for Linux");
        }
        if (content_.rfind("MZ", 0) != 0) {
            throw NotALibrary("is no library: it does not begin with the header of one");
        }
        const std::size_t start = headersOffset();
        if (atOffset<DWORD>(start) != IMAGE_NT_SIGNATURE) {
            throw NotALibrary("is no library for Windows");
        }
        const auto header = atOffset<IMAGE_FILE_HEADER>(start + sizeof(DWORD));
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

    void need(std::size_t offset, std::size_t size) const {
        if (offset > content_.size() || size > content_.size() - offset) {
            throw DamagedLibrary();
        }
    }

    template <typename Value>
    Value atOffset(std::size_t offset) const {
        need(offset, sizeof(Value));
        Value value;
        std::memcpy(&value, content_.data() + offset, sizeof(Value));
        return value;
    }

    const IMAGE_SECTION_HEADER& sectionOf(std::size_t address) const {
        for (const IMAGE_SECTION_HEADER& section : sections_) {
            const std::size_t size = std::max(section.SizeOfRawData, section.Misc.VirtualSize);
            if (address >= section.VirtualAddress && address - section.VirtualAddress < size) {
                return section;
            }
        }
        throw DamagedLibrary();
    }

    std::size_t offsetOf(std::size_t address) const {
        const IMAGE_SECTION_HEADER& section = sectionOf(address);
        return address - section.VirtualAddress + section.PointerToRawData;
    }

    const std::string& content_;
    IMAGE_NT_HEADERS64 headers_ = {};
    std::vector<IMAGE_SECTION_HEADER> sections_;
};

void readExports(const Image& image, LibraryFile& library) {
    const IMAGE_DATA_DIRECTORY& directory = image.directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (directory.Size == 0) {
        return;
    }
    const auto table = image.at<IMAGE_EXPORT_DIRECTORY>(directory.VirtualAddress);
    for (DWORD i = 0; i < table.NumberOfNames; ++i) {
        const auto name = image.at<DWORD>(table.AddressOfNames + i * sizeof(DWORD));
        const auto index = image.at<WORD>(table.AddressOfNameOrdinals + i * sizeof(WORD));
        const auto address = image.at<DWORD>(table.AddressOfFunctions + index * sizeof(DWORD));
        // An address within the table forwards to another library's function.
        const bool isForwarded = address >= directory.VirtualAddress &&
                                 address - directory.VirtualAddress < directory.Size;
        library.exports.push_back({image.textAt(name), isForwarded || image.isCode(address)});
    }
}

void readImports(const Image& image, LibraryFile& library) {
    const IMAGE_DATA_DIRECTORY& directory = image.directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
    for (std::size_t at = directory.VirtualAddress; directory.Size != 0;
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
                names.push_back(image.textAt(item + sizeof(WORD))); // after a hint
            }
        }
    }
}

} // namespace

LibraryFile parseLibrary(std::string& content) {
    const Image image(content);
    LibraryFile library;
    readExports(image, library);
    readImports(image, library);
    return library;
}

const char* const searchVariable = "PATH";
const char* const searchSeparators = ";";
const char* const emptyElement = "";

std::vector<std::filesystem::path> searchFolders() {
    std::vector<std::filesystem::path> folders = {programFile().parent_path()};
    std::wstring folder(MAX_PATH, L'\0');
    for (const auto function : {&GetSystemDirectoryW, &GetWindowsDirectoryW}) {
        folder.resize(MAX_PATH);
        folder.resize(function(folder.data(), MAX_PATH));
        folders.emplace_back(folder);
    }
    folders.push_back(std::filesystem::current_path());
    const std::vector<std::filesystem::path> configured = searchPath();
    folders.insert(folders.end(), configured.begin(), configured.end());
    return folders;
}

std::filesystem::path fileOf(void* module) {
    constexpr DWORD maxLength = 32768;
    std::wstring file(maxLength, L'\0');
    file.resize(GetModuleFileNameW(static_cast<HMODULE>(module), file.data(), maxLength));
    return file;
}

std::filesystem::path frameworkFile() {
    return fileOf(GetModuleHandleA(ZOL_MODULE_NAME ".dll"));
}

std::filesystem::path programFile() {
    return fileOf(nullptr);
}

} // namespace backendcheck
