#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Finding.h"

namespace backendcheck {

/// The findings about one plug-in.
class Report {
public:
    void add(Finding finding) { findings_.push_back(std::move(finding)); }

    bool hasResult(std::string_view check) const;
    bool isWrong() const;

    /// Sorts the findings and adds every check without a result as not reached.
    void complete();

    /// Turns notes into faults.
    void beStrict();

    void writeLines(std::ostream& out, const std::string& name) const;
    void writeJson(std::ostream& out, const std::string& name,
                   const std::filesystem::path& file) const;

private:
    std::vector<Finding> findings_;
};

} // namespace backendcheck
