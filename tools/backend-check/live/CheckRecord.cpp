#include "live/CheckRecord.h"

#include <cstring>
#include <fstream>
#include <stdexcept>

namespace backendcheck {

namespace {

// Each line begins with one of these.
constexpr char atMark = '@';
constexpr char findingMark = '=';
constexpr char doneMark = '.';
constexpr char quitMark = '!';
constexpr char wordsMark = '~';

constexpr char fieldEnd = '\t';
constexpr const char* resultLetters = "onw-"; // by the value of a Result

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string plainText(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        ++i;
        switch (text[i]) {
        case 'n':
            result += '\n';
            break;
        case 'r':
            result += '\r';
            break;
        case 't':
            result += '\t';
            break;
        default:
            result += text[i];
        }
    }
    return result;
}

} // namespace

CheckRecord::CheckRecord(const std::filesystem::path& file)
    : file_(std::fopen(file.string().c_str(), "ab")) {
    if (file_ == nullptr) {
        throw std::runtime_error("cannot write " + file.string());
    }
    std::setvbuf(file_, nullptr, _IONBF, 0);
}

void CheckRecord::beginStep(const std::string& check, const std::string& doing) {
    write(atMark + escaped(check) + fieldEnd + escaped(doing) + "\n");
}

void CheckRecord::report(const Finding& finding) {
    const char letter = resultLetters[static_cast<std::size_t>(finding.result)];
    write(std::string{findingMark, letter} + escaped(finding.check) + fieldEnd +
          escaped(finding.text) + "\n");
}

void CheckRecord::done() {
    isDone_ = true;
    write(std::string{doneMark, '\n'});
}

void CheckRecord::quit() {
    write(std::string{quitMark, '\n'});
}

void CheckRecord::lastWords(const char* text) {
    const char begin[] = {wordsMark};
    std::fwrite(begin, 1, sizeof(begin), file_);
    std::fwrite(text, 1, std::strlen(text), file_);
    std::fwrite("\n", 1, 1, file_);
}

void CheckRecord::write(const std::string& line) {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::fwrite(line.data(), 1, line.size(), file_);
}

RecordContent RecordContent::read(const std::filesystem::path& file) {
    RecordContent content;
    std::ifstream stream(file, std::ios_base::binary);
    for (std::string line; std::getline(stream, line);) {
        if (line.empty()) {
            continue;
        }
        const std::size_t end = line.find(fieldEnd);
        const std::string behind =
            end != std::string::npos ? plainText(line.substr(end + 1)) : std::string();
        if (line.front() == atMark) {
            content.check = plainText(line.substr(1, end - 1));
            content.doing = behind;
        } else if (line.front() == findingMark && line.size() > 2) {
            const char* const letter = std::strchr(resultLetters, line[1]);
            content.findings.push_back(
                {plainText(line.substr(2, end - 2)),
                 static_cast<Result>(letter != nullptr ? letter - resultLetters : 0), behind});
        } else if (line.front() == doneMark) {
            content.isDone = true;
        } else if (line.front() == quitMark) {
            content.hasQuit = true;
        } else if (line.front() == wordsMark) {
            content.lastWords = plainText(line.substr(1));
        }
    }
    return content;
}

} // namespace backendcheck
