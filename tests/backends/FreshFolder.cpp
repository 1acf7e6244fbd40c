#include "FreshFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "FreshProcess.h"

namespace {

constexpr const char* variable = "ZOL_TEST_FOLDER";

} // namespace

void inFreshFolder(const std::function<void()>& body) {
    if (support::isFreshProcess()) {
        std::filesystem::current_path(support::ChildProcess::environment(variable));
        support::inFreshProcess(body);
        return;
    }
    const std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                         ("zol-test-" + std::to_string(std::random_device()()));
    ASSERT_TRUE(std::filesystem::create_directory(folder)) << folder;
    support::ChildProcess::setEnvironment(variable, folder.string().c_str());
    support::inFreshProcess(body);
    std::filesystem::remove_all(folder);
}

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    std::string text(std::istreambuf_iterator<char>(file), {});
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}
