#pragma once

#include <iosfwd>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/RegistryAccess/Registry.h"

namespace support {

using ZOL::RegistryAccess::Registry;

/// Each test has its own key below HKEY_CURRENT_USER, which is deleted afterwards with its sub keys
/// even if the test failed.
class RegistryFixture : public testing::Test {
protected:
    RegistryFixture();
    ~RegistryFixture() override;

    /// The test's key, relative to HKEY_CURRENT_USER: not there before a test makes it.
    const std::string& path() const { return path_; }

    /// A path below the test's key.
    std::string path(const std::string& below) const { return path_ + "\\" + below; }

    /// A node for the test's key, or for a path below it, made if it is not there.
    Registry make() const;
    Registry make(const std::string& below) const;

private:
    std::string path_;
};

Registry::Bytes bytes(const std::string& text);

/// The bytes of the text and a zero.
Registry::Bytes withZero(const std::string& text);

/// A value as the platform has it, read without the library.
struct RawValue {
    DWORD type;
    std::string data;
};

bool operator==(const RawValue& left, const RawValue& right);
std::ostream& operator<<(std::ostream& out, const RawValue& value);

/// Both of a key below HKEY_CURRENT_USER; failing is a failure of the test.
RawValue rawValue(const std::string& path, const std::string& name);
void setRawValue(const std::string& path, const std::string& name, const RawValue& value);

/// Text in the ANSI code page, as the library sees it. Throws if that code page lacks a character.
std::string ansi(const std::wstring& text);

/// Refuses rights on a key below HKEY_CURRENT_USER during its lifetime.
class Refusal {
public:
    enum What {
        content, ///< The key can be opened, and nothing can be done with it.
        changes, ///< The key can be opened and read.
        opening, ///< The key belongs to the system, and we have no right to it.
    };

    Refusal(const std::string& path, What what);
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;
    ~Refusal();

private:
    HKEY key_ = nullptr;
};

} // namespace support
