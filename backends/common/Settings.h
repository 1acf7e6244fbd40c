#pragma once

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "ZOL/Framework/Management/PropertyManager.h"

#include "Levels.h"
#include "SettingsTable.h"
#include "files/FlushSettings.h"

namespace ZOL::Backends {

/// The settings of one back end: the properties named <BackEnd>.<setting>, as they were when this
/// object was constructed. A missing property has the default of the table. An invalid one has it
/// too, and is reported in one line when the setting is read.
///
/// A setting that is not in the table, or is of another type there, is an error in the program:
/// std::logic_error.
///
/// The property store has no lock: no thread may set properties while another constructs settings.
class Settings {
public:
    explicit Settings(std::string backend, const SettingsTable& table = settingsTable());

    const std::string& backend() const { return backend_; }

    /// Whether the back end has this setting on this platform.
    bool has(std::string_view setting) const { return table_->find(backend_, setting) != nullptr; }

    /// A text, pattern, tag or event source, in UTF-8.
    std::string text(std::string_view setting) const;

    /// The name of a file. {pid}, {program} and {instance} in it are replaced by the number of this
    /// process, the name of the program and the name of the back end; anything else in braces
    /// stays, and is reported.
    std::filesystem::path path(std::string_view setting) const;

    long long number(std::string_view setting) const;

    /// A number whose setting has no default, or nothing.
    std::optional<long long> optionalNumber(std::string_view setting) const;

    /// The permissions of a file, or nothing.
    std::optional<unsigned> mode(std::string_view setting) const;

    /// A number of bytes. A suffix K, M or G multiplies by a power of 1024.
    std::size_t size(std::string_view setting) const;

    /// When lines are handed to the system.
    FlushSettings flush(std::string_view setting) const;

    /// One of the choices in the table, as it is written there.
    std::string_view choice(std::string_view setting) const;

    LevelFilter levels(std::string_view setting) const;

    /// Whether all properties of the back end have the same values.
    bool hasSameValues(const Settings& other) const { return values_ == other.values_; }

private:
    using WideString = Framework::Management::WideString;

    const Setting& find(std::string_view setting, std::initializer_list<SettingType> types) const;
    const WideString* valueOf(const Setting& setting) const;
    std::optional<std::string> textOf(const Setting& setting) const;
    /// The number of the property or else of the default, if there is one.
    std::optional<long long> readNumber(const Setting& row) const;
    void reportInvalid(const Setting& setting, const std::string& value,
                       const std::string& expected, const std::string& used,
                       std::string_view suggestion = {}) const;

    std::string backend_;
    const SettingsTable* table_;
    std::map<std::string_view, WideString> values_; ///< by the name of the setting
};

} // namespace ZOL::Backends
