#include "Report.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include <nlohmann/json.hpp>

#include "Text.h"

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

/// Breaks the lines of a text between words, for a terminal of 100 columns.
std::vector<std::string> wrapped(const std::string& text) {
    constexpr std::size_t width = 80;
    std::vector<std::string> lines;
    std::istringstream paragraphs(text);
    for (std::string paragraph; std::getline(paragraphs, paragraph);) {
        while (paragraph.size() > width) {
            const std::size_t space =
                std::min(paragraph.rfind(' ', width), paragraph.find(' ', width));
            if (space == std::string::npos) {
                break;
            }
            lines.push_back(paragraph.substr(0, space));
            paragraph.erase(0, space + 1);
        }
        lines.push_back(paragraph);
    }
    return lines;
}

void writeFinding(std::ostream& out, const Finding& finding) {
    constexpr int resultWidth = 7;
    constexpr int checkWidth = 13;
    out << std::left << std::setw(resultWidth) << namesOf(finding.result).line
        << std::setw(checkWidth) << finding.check;
    bool isFirst = true;
    for (const std::string& line : wrapped(finding.text)) {
        out << (isFirst ? "" : std::string(resultWidth + checkWidth, ' ')) << line << '\n';
        isFirst = false;
    }
}

} // namespace

void Report::complete(bool strict) {
    std::vector<Finding> sorted;
    for (const char* const check : allChecks) {
        const std::size_t before = sorted.size();
        std::copy_if(findings_.begin(), findings_.end(), std::back_inserter(sorted),
                     [check](const Finding& finding) { return finding.check == check; });
        if (sorted.size() == before) {
            sorted.push_back({check, Result::NotReached, "not tried, because of a fault above"});
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
            finding.text = "not tried: correct " + wrong->check + " first";
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

void Report::addErrorOutput(const std::string& output) {
    constexpr std::size_t maxLines = 20;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        line = printable(line);
        if (line.empty() || std::find(errors_.begin(), errors_.end(), line) != errors_.end()) {
            continue; // each process may write the same
        }
        if (errors_.size() < maxLines) {
            errors_.push_back(line);
        } else {
            errors_.resize(maxLines + 1);
            errors_.back() = "... (more lines follow)";
            return;
        }
    }
}

void Report::writeLines(std::ostream& out, const std::string& name) const {
    std::vector<std::string> notReached;
    std::string reason;
    for (const Finding& finding : findings_) {
        if (finding.result == Result::NotReached) {
            notReached.push_back(finding.check);
            reason = finding.text;
        } else {
            writeFinding(out, finding);
        }
    }
    if (!notReached.empty()) {
        std::string checks;
        for (const std::string& check : notReached) {
            checks += (checks.empty() ? "" : ", ") + check;
        }
        writeFinding(out, {std::to_string(notReached.size()) +
                               (notReached.size() == 1 ? " check" : " checks"),
                           Result::NotReached, reason + ": " + checks});
    }
    if (!errors_.empty()) {
        out << "\nStandard error of the plug-in:\n";
        for (const std::string& line : errors_) {
            out << "  " << line << '\n';
        }
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
                                             {"file", file.u8string()},
                                             {"verdict", isWrong() ? "wrong" : "good"},
                                             {"checks", checks},
                                             {"standardError", errors_}};
    constexpr int indent = 2;
    // Texts of a plug-in need not be UTF-8.
    out << document.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
        << '\n';
}

} // namespace backendcheck
