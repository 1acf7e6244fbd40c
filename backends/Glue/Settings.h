#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <spdlog/common.h>

#include "ZOL/Framework/Management/PropertyManager.h"

#include "LevelRules.h"

namespace ZOL::Backends {

/// The settings of one back end: the properties named <BackEnd>.<setting>. One that is absent has
/// its default; one that makes no sense has too, and is complained about in one line.
///
/// The property store has no lock: whoever sets properties takes turns with whoever reads here.
class Settings {
public:
    explicit Settings(std::string backend) : backend_(std::move(backend)) {}

    const std::string& backend() const { return backend_; }

    /// In UTF-8, never empty unless the default is.
    std::string text(std::string_view setting, std::string_view otherwise) const;

    /// The name of a file, never empty.
    spdlog::filename_t path(std::string_view setting, std::string_view otherwise) const;

    long long number(std::string_view setting, long long otherwise, long long least,
                     long long most) const;

    /// A number of bytes from 1 on, which may end with K, M or G for powers of 1024.
    std::size_t size(std::string_view setting, std::size_t otherwise) const;

    /// The place of the value, in either case, among the choices; the default is the first.
    std::size_t choice(std::string_view setting, const std::vector<std::string>& choices) const;

    LevelRules levels(std::string_view setting) const;

private:
    std::string nameOf(std::string_view setting) const;
    std::optional<Framework::Management::WideString> find(std::string_view setting) const;
    std::optional<std::string> findText(std::string_view setting) const;
    void refuse(std::string_view setting, const std::string& value, const std::string& expected,
                const std::string& otherwise) const;

    std::string backend_;
};

} // namespace ZOL::Backends
