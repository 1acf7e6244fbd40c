#include "Report.h"

#include <algorithm>
#include <iomanip>
#include <regex>

#include <nlohmann/json.hpp>

namespace backendcheck {

namespace {

struct ResultNames {
    const char* line; // in the report for people
    const char* json;
};

const ResultNames& namesOf(Result result) {
    static constexpr std::array<ResultNames, 4> names = {
        {{"ok", "ok"}, {"note", "note"}, {"WRONG", "wrong"}, {"-", "not-reached"}}};
    return names[static_cast<std::size_t>(result)];
}

} // namespace

void Report::complete(bool strict) {
    std::vector<Finding> sorted;
    for (const char* const check : allChecks) {
        const std::size_t before = sorted.size();
        std::copy_if(findings_.begin(), findings_.end(), std::back_inserter(sorted),
                     [check](const Finding& finding) { return finding.check == check; });
        if (sorted.size() == before) {
            sorted.push_back({check, Result::NotReached, "not tried, because of the above"});
        }
    }
    findings_ = std::move(sorted);
    const Finding* wrong = nullptr;
    for (Finding& finding : findings_) {
        if (strict && finding.result == Result::Note) {
            finding.result = Result::Wrong;
        }
        if (wrong == nullptr && finding.result == Result::Wrong) {
            wrong = &finding;
        }
    }
    // A fault that was found late may be the reason for a check that was not tried.
    for (Finding& finding : findings_) {
        if (wrong != nullptr && finding.result == Result::NotReached) {
            finding.text = "not tried: mend " + wrong->check + " first";
        }
    }
}

bool Report::isWrong() const {
    return count(Result::Wrong) != 0;
}

std::ptrdiff_t Report::count(Result result) const {
    return std::count_if(findings_.begin(), findings_.end(),
                         [result](const Finding& finding) { return finding.result == result; });
}

void Report::writeLines(std::ostream& out, const std::string& name) const {
    constexpr int resultWidth = 7;
    constexpr int checkWidth = 13;
    const std::string lineBreak = "\n" + std::string(resultWidth + checkWidth, ' ');
    for (const Finding& finding : findings_) {
        out << std::left << std::setw(resultWidth) << namesOf(finding.result).line
            << std::setw(checkWidth) << finding.check
            << std::regex_replace(finding.text, std::regex("\n"), lineBreak) << '\n';
    }
    const std::ptrdiff_t wrong = count(Result::Wrong);
    const std::ptrdiff_t notes = count(Result::Note);
    out << '\n' << name << (wrong == 0 ? " is good" : " is WRONG") << ": ";
    if (wrong != 0) {
        out << wrong << (wrong == 1 ? " fault" : " faults") << ", ";
    }
    out << notes << (notes == 1 ? " note" : " notes") << '\n';
}

void Report::writeJson(std::ostream& out, const std::string& name,
                       const std::filesystem::path& file) const {
    nlohmann::ordered_json checks = nlohmann::ordered_json::array();
    for (const Finding& finding : findings_) {
        checks.push_back({{"check", finding.check},
                          {"result", namesOf(finding.result).json},
                          {"text", finding.text}});
    }
    const nlohmann::ordered_json document = {{"tool", "zol-backend-check"},
                                             {"version", ZOL_VERSION},
                                             {"name", name},
                                             {"file", file.string()},
                                             {"verdict", isWrong() ? "wrong" : "good"},
                                             {"checks", checks}};
    constexpr int indent = 2;
    // Texts of a plug-in need not be UTF-8.
    out << document.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
        << '\n';
}

} // namespace backendcheck
