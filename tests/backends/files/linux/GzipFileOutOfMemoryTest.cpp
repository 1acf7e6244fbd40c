#include "files/GzipFile.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "FreshFolder.h"
#include "OutOfMemory.h"

using ZOL::Backends::gzipFile;
namespace fs = std::filesystem;

namespace {

class GzipFileOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(GzipFileOutOfMemory);

TEST_P(GzipFileOutOfMemory, ThrowsBadAllocAndCreatesNothing) {
    inFreshFolder([this] {
        const fs::path source = std::string(support::longText) + ".log";
        const fs::path target = std::string(support::longText) + ".gz";
        std::ofstream(source) << "line\n";
        bool isComplete = false;
        const std::size_t failed = sweep([&] { isComplete = gzipFile(source, target, {}); },
                                         [&] { EXPECT_FALSE(fs::exists(target)); });
        constexpr std::size_t zlibs = 5; // allocations, which must fail as well
        EXPECT_GT(failed, zlibs);
        EXPECT_TRUE(isComplete);
        EXPECT_TRUE(fs::exists(target));
    });
}

} // namespace
