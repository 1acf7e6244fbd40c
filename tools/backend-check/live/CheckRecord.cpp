#include "live/CheckRecord.h"

#include <fstream>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "Environment.h"

namespace backendcheck {

namespace {

using Json = nlohmann::json;

std::string lineOf(const Json& object) {
    // Texts of a plug-in need not be UTF-8.
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace

CheckRecord::CheckRecord(const std::filesystem::path& file) : file_(openForAppending(file)) {
    if (file_ == nullptr) {
        throw std::runtime_error("cannot write " + file.u8string());
    }
    std::setvbuf(file_, nullptr, _IONBF, 0);
}

void CheckRecord::beginStep(const std::string& check, const std::string& action) {
    write(lineOf({{"step", check}, {"action", action}}));
}

void CheckRecord::report(const Finding& finding) {
    write(lineOf({{"check", finding.check}, {"result", finding.result}, {"text", finding.text}}));
}

void CheckRecord::done() {
    isDone_ = true;
    write(lineOf({{"done", true}}));
}

void CheckRecord::quit() {
    write(lineOf({{"quit", true}}));
}

void CheckRecord::terminated(const std::string& reason) {
    write(lineOf({{"crash", reason}}));
}

void CheckRecord::crashed(const char* reason) {
    // One write, as for the other lines: other threads may still write theirs.
    char line[256];
    const int size = std::snprintf(line, sizeof(line), "{\"crash\":\"%s\"}\n", reason);
    std::fwrite(line, 1, static_cast<std::size_t>(size), file_);
}

void CheckRecord::write(const std::string& line) {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::fwrite(line.data(), 1, line.size(), file_);
}

RecordContent RecordContent::read(const std::filesystem::path& file) {
    RecordContent content;
    std::ifstream stream(file, std::ios_base::binary);
    for (std::string line; std::getline(stream, line);) {
        const Json object = Json::parse(line, nullptr, false);
        if (!object.is_object()) {
            continue;
        }
        if (object.contains("step")) {
            content.check = object["step"];
            content.action = object["action"];
        } else if (object.contains("check")) {
            content.findings.push_back({object["check"], object["result"], object["text"]});
        }
        content.crashReason = object.value("crash", content.crashReason);
        content.isDone |= object.contains("done");
        content.hasQuit |= object.contains("quit");
    }
    return content;
}

} // namespace backendcheck
