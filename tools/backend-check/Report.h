#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Finding.h"

namespace backendcheck {

/// All that was found out about one plug-in.
class Report {
public:
    void add(Finding finding) { findings_.push_back(std::move(finding)); }

    bool hasResult(std::string_view check) const;
    bool isWrong() const;

    /// Every check that has no result is told as not reached.
    void complete();

    /// Takes notes for faults.
    void beStrict();

    void writeLines(std::ostream& out, const std::string& name) const;
    void writeJson(std::ostream& out, const std::string& name,
                   const std::filesystem::path& file) const;

private:
    std::vector<Finding> findings_;
};

} // namespace backendcheck
