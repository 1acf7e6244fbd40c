// The framework module contains the registry access and does not export it.

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

class FrameworkModule : public testing::Test {
protected:
    FrameworkModule() : module_(LoadLibraryA("ZOL_Framework_r.2.0.8.129.dll")) {
        if (module_ == nullptr) {
            throw std::runtime_error("cannot load the module");
        }
    }
    ~FrameworkModule() override { FreeLibrary(module_); }

    template <typename Part>
    const Part* at(DWORD offset) const {
        return reinterpret_cast<const Part*>(reinterpret_cast<const char*>(module_) + offset);
    }

    const IMAGE_NT_HEADERS& headers() const {
        const auto* const dos = at<IMAGE_DOS_HEADER>(0);
        return *at<IMAGE_NT_HEADERS>(static_cast<DWORD>(dos->e_lfanew));
    }

    DWORD directory(int entry) const {
        return headers().OptionalHeader.DataDirectory[entry].VirtualAddress;
    }

    std::vector<std::string> exports() const {
        const auto* const table =
            at<IMAGE_EXPORT_DIRECTORY>(directory(IMAGE_DIRECTORY_ENTRY_EXPORT));
        const auto* const offsets = at<DWORD>(table->AddressOfNames);
        std::vector<std::string> names;
        for (DWORD i = 0; i < table->NumberOfNames; ++i) {
            names.emplace_back(at<char>(offsets[i]));
        }
        return names;
    }

    /// The functions that the module takes from a library of that name.
    std::vector<std::string> importsFrom(const char* library) const {
        std::vector<std::string> names;
        const auto* imported = at<IMAGE_IMPORT_DESCRIPTOR>(directory(IMAGE_DIRECTORY_ENTRY_IMPORT));
        for (; imported->Name != 0; ++imported) {
            if (lstrcmpiA(at<char>(imported->Name), library) != 0) {
                continue;
            }
            for (const auto* entry = at<IMAGE_THUNK_DATA>(imported->OriginalFirstThunk);
                 entry->u1.AddressOfData != 0; ++entry) {
                const auto offset = static_cast<DWORD>(entry->u1.AddressOfData);
                names.emplace_back(
                    reinterpret_cast<const char*>(at<IMAGE_IMPORT_BY_NAME>(offset)->Name));
            }
        }
        return names;
    }

    bool carries(std::string_view text) const {
        const std::string_view image(at<char>(0), headers().OptionalHeader.SizeOfImage);
        return image.find(text) != std::string_view::npos;
    }

private:
    HMODULE module_;
};

TEST_F(FrameworkModule, ExportsNothingOfTheRegistryAccess) {
    const std::vector<std::string> names = exports();
    EXPECT_TRUE(std::any_of(names.begin(), names.end(), [](const std::string& name) {
        return name.find("Logger") != std::string::npos;
    })) << "or this is not the module's table";
    for (const std::string& name : names) {
        EXPECT_EQ(name.find("Registry"), std::string::npos) << name;
    }
}

TEST_F(FrameworkModule, CarriesTheRegistryAccess) {
    EXPECT_TRUE(carries("src\\..\\src\\ZOL\\RegistryAccess\\Registry"));
    for (const char* const message :
         {"Unable to open requested key.", "Only REG_DWORD value types are supported",
          "Unable to open enumerated sub key."}) {
        EXPECT_TRUE(carries(message)) << message;
    }
}

TEST_F(FrameworkModule, CallsTheFunctionsOfTheRegistryAccessAndNoOthersOfTheRegistry) {
    std::vector<std::string> names = importsFrom("advapi32.dll");
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const std::string& name) { return name.rfind("Reg", 0) != 0; }),
                names.end());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"RegCloseKey", "RegCreateKeyA", "RegDeleteValueA",
                                               "RegEnumKeyA", "RegEnumValueA", "RegOpenKeyA",
                                               "RegQueryValueExA", "RegSetValueExA"}));
    EXPECT_EQ(importsFrom("shlwapi.dll"), std::vector<std::string>{"SHDeleteKeyA"});
}

} // namespace
