#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ZOL/Framework/Management/PropertyManager.h"

#include "Levels.h"

namespace ZOL::Backends {

/// Reads the settings of one back end: the properties named <BackEnd>.<setting>. A missing property
/// has the fallback value. An invalid one has it too, and is reported in one line.
///
/// The property store has no lock: no thread may set properties while another reads settings.
class Settings {
public:
    explicit Settings(std::string backend) : backend_(std::move(backend)) {}

    const std::string& backend() const { return backend_; }

    /// In UTF-8. An empty value is invalid.
    std::string text(std::string_view setting, std::string_view fallback) const;

    /// The name of a file. An empty value is invalid.
    std::filesystem::path path(std::string_view setting, std::string_view fallback) const;

    long long number(std::string_view setting, long long fallback, long long min,
                     long long max) const;

    /// A number of bytes from 1 on. A suffix K, M or G multiplies by a power of 1024.
    std::size_t size(std::string_view setting, std::size_t fallback) const;

    /// The index of the value among the choices; ignores case. The first choice is the fallback.
    std::size_t choice(std::string_view setting, const std::vector<std::string>& choices) const;

    LevelFilter levels(std::string_view setting) const;

private:
    std::string propertyName(std::string_view setting) const;
    std::optional<Framework::Management::WideString> read(std::string_view setting) const;
    std::optional<std::string> readText(std::string_view setting) const;
    void reportInvalid(std::string_view setting, const std::string& value,
                       const std::string& expected, const std::string& used) const;

    std::string backend_;
};

} // namespace ZOL::Backends
