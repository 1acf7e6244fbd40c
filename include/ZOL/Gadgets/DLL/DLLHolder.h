#pragma once

#include <ios>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>

#if defined(_WIN32)
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#if !defined(WIN32_LEAN_AND_MEAN)
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include "ZOL/Requirements.h"

namespace ZOL::Gadgets::DLL {

/// An assertion that is active in every build. Details are added as to a stream, and are formatted
/// only if the condition is false:
///
///     AssertionStream assertion(&condition, "text of the failure");
///     assertion << "details " << value;
///     assertion.raise();
class AssertionStream {
public:
    /// @param condition read by the constructor only.
    /// @param failureText stored as a pointer; must outlive the object.
    AssertionStream(const bool* condition, const char* failureText)
        : condition_(condition), failureText_(*condition ? nullptr : failureText) {}

    template <typename Value>
    AssertionStream& operator<<(const Value& value) {
        if (failureText_ == nullptr) {
            return *this;
        }
        std::ostringstream text;
        text.exceptions(std::ios_base::badbit); // rethrows std::bad_alloc
        text << value;
        details_ += text.str();
        return *this;
    }

    /// Throws std::runtime_error with the details, a line feed and the failure text if the
    /// condition is false.
    void raise() const {
        if (failureText_ != nullptr) {
            throw std::runtime_error(details_ + "\n" + failureText_);
        }
    }

private:
    [[maybe_unused]] const bool* condition_;
    std::string details_;
    const char* failureText_;
};

/// Holds one loaded dynamic library and resolves its functions. The constructors do not report a
/// failed load; each resolve does. Objects share nothing and take no lock.
class DLLHolder {
public:
    /// Loads the library named dllFileName(name, version), found by the platform's search rules.
    /// @param version may be empty.
    DLLHolder(const char* name, const char* version)
        : handle_(load(dllFileName(name, version).c_str())) {}

    /// Loads the library with exactly this file name.
    explicit DLLHolder(const char* fileName) : handle_(load(fileName)) {}

    DLLHolder(const DLLHolder&) = delete;
    DLLHolder& operator=(const DLLHolder&) = delete;

    /// Releases the library. Functions resolved with this object must not be called afterwards,
    /// unless the library is also held elsewhere.
    ~DLLHolder() { unload(handle_); }

    /// Returns the function with this unmangled name, never null:
    ///
    ///     holder.resolve<int(double)>("rounded")(0.5);
    ///
    /// Throws std::runtime_error if the library is not loaded or has no such symbol.
    template <typename Function>
    Function* resolve(const char* name) const {
        static_assert(std::is_function_v<Function>, "resolve takes a function type, R(Arguments)");
        constexpr const char* failureText =
            "Expression 'p != 0' failed in "
            "'D:\\Repository_x64\\ZOL_Gadgets\\include\\ZOL/Gadgets/DLL/DLLHolder', line: 25";

        auto* const p = reinterpret_cast<Function*>(address(handle_, name));
        const bool resolved = p != nullptr;
        AssertionStream assertion(&resolved, failureText);
        assertion << "Unable to resolve function " << name << " from dynamic library";
        assertion.raise();
        return p;
    }

    /// `<name>_r.dll`, or `<name>_r.<version>.dll` if version is not empty (.so on Linux).
    static std::string dllFileName(const char* name, const char* version) {
        constexpr const char* prefix = "";
        constexpr const char* kind = "";
        constexpr const char* build = "r";
        constexpr const char* tail = "";

        std::string fileName = prefix;
        fileName.append(name).append("_").append(kind).append(build);
        if (*version != '\0') {
            fileName.append(".").append(version);
        }
        return fileName.append(tail).append(extension);
    }

private:
    // A null handle is not a library. The system's functions do not reject it in every case: with
    // it, the search for a symbol covers the program itself.
#if defined(_WIN32)
    using Handle = HMODULE;
    static constexpr const char* extension = ".dll";

    static Handle load(const char* fileName) {
        // The system's search order applies.
        return ::LoadLibraryA(fileName);
    }
    static void unload(Handle handle) {
        if (handle != nullptr) {
            ::FreeLibrary(handle);
        }
    }
    static void* address(Handle handle, const char* name) {
        return handle != nullptr ? reinterpret_cast<void*>(::GetProcAddress(handle, name))
                                 : nullptr;
    }
#else
    using Handle = void*;
    static constexpr const char* extension = ".so";

    static Handle load(const char* fileName) {
        // Undefined symbols fail here, not at the first call.
        return ::dlopen(fileName, RTLD_NOW | RTLD_LOCAL);
    }
    static void unload(Handle handle) {
        if (handle != nullptr) {
            ::dlclose(handle);
        }
    }
    static void* address(Handle handle, const char* name) {
        return handle != nullptr ? ::dlsym(handle, name) : nullptr;
    }
#endif

    Handle handle_;
};

} // namespace ZOL::Gadgets::DLL
