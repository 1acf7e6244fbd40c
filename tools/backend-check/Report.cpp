#include "Report.h"

#include <algorithm>
#include <array>
#include <iomanip>

#include <nlohmann/json.hpp>

#include "Finding.h"

namespace backendcheck {

namespace {

// By the value of a Result.
constexpr std::array resultNames = {"ok", "note", "wrong", "not-reached"};
constexpr std::array resultMarks = {"ok", "note", "WRONG", "-"};

const char* textFor(const std::array<const char*, 4>& texts, Result result) {
    return texts[static_cast<std::size_t>(result)];
}

constexpr int markWidth = 7;
constexpr int checkWidth = 13;

std::string indented(const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += c;
        if (c == '\n') {
            result.append(markWidth + checkWidth, ' ');
        }
    }
    return result;
}

} // namespace

bool Report::hasResult(std::string_view check) const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [&](const Finding& finding) { return finding.check == check; });
}

bool Report::isWrong() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const Finding& finding) { return finding.result == Result::Wrong; });
}

void Report::complete() {
    std::vector<Finding> sorted;
    for (const char* const check : allChecks) {
        for (const Finding& finding : findings_) {
            if (finding.check == check) {
                sorted.push_back(finding);
            }
        }
        if (!hasResult(check)) {
            sorted.push_back({check, Result::NotReached, "not tried, because of the above"});
        }
    }
    // A fault that was found late may be the reason for a check that was not tried.
    const auto wrong = std::find_if(sorted.begin(), sorted.end(), [](const Finding& finding) {
        return finding.result == Result::Wrong;
    });
    for (Finding& finding : sorted) {
        if (finding.result == Result::NotReached && wrong != sorted.end()) {
            finding.text = "not tried: mend " + wrong->check + " first";
        }
    }
    findings_ = std::move(sorted);
}

void Report::beStrict() {
    for (Finding& finding : findings_) {
        if (finding.result == Result::Note) {
            finding.result = Result::Wrong;
        }
    }
}

void Report::writeLines(std::ostream& out, const std::string& name) const {
    std::size_t wrong = 0;
    std::size_t notes = 0;
    for (const Finding& finding : findings_) {
        out << std::left << std::setw(markWidth) << textFor(resultMarks, finding.result)
            << std::setw(checkWidth) << finding.check << indented(finding.text) << '\n';
        wrong += finding.result == Result::Wrong ? 1U : 0U;
        notes += finding.result == Result::Note ? 1U : 0U;
    }
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
                          {"result", textFor(resultNames, finding.result)},
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
