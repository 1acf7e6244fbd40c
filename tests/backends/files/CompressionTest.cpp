#include "files/Compression.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FreshFolder.h"
#include "HeldFile.h"
#include "LogFiles.h"
#include "WaitFor.h"
#include "files/BufferedLog.h"
#include "files/GzipFile.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Clock = BufferedLog::Clock;
using Names = std::vector<std::string>;

constexpr const char* first = "zol.20260131T090507Z.000.log";
constexpr const char* second = "zol.20260131T090507Z.001.log";

void write(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::string compressed(const std::string& name) {
    return name + ".gz";
}

std::string temporary(const std::string& name) {
    return name + ".gz.tmp";
}

bool never() {
    return false;
}

Names namesInFolder() {
    Names names;
    for (const auto& entry : fs::directory_iterator(".")) {
        if (entry.path().extension() != ".lock") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

RotatingLogSettings compressing() {
    RotatingLogSettings settings;
    settings.path = "zol.log";
    settings.maxBytes = 10;
    settings.isCompressed = true;
    return settings;
}

/// Writes a line and lets the worker compress what it finds; the files that are there then.
Names afterOneLine(const RotatingLogSettings& settings, const Names& expected) {
    const auto log = std::make_shared<BufferedLog>("Test", settings);
    log->write("line\n", 0, Clock::now());
    isSoon([&] { return namesInFolder() == expected; });
    log->close();
    return namesInFolder();
}

TEST(Compression, ReplacesAFileByACompressedOne) {
    inFreshFolder([] {
        write(first, "text\n");
        EXPECT_FALSE(isCompressed(first));
        ASSERT_TRUE(compressBeside(first, never));
        EXPECT_EQ(namesInFolder(), (Names{first, temporary(first)}));
        replaceByCompressed(first);
        EXPECT_EQ(namesInFolder(), Names{compressed(first)});
        EXPECT_TRUE(isCompressed(first));
        EXPECT_EQ(textOfAllFiles("zol.log"), "text\n");
    });
}

TEST(Compression, ReplacesTheTemporaryFileOfAnEarlierProcess) {
    inFreshFolder([] {
        write(first, "text\n");
        write(temporary(first), "incomplete");
        ASSERT_TRUE(compressBeside(first, never));
        replaceByCompressed(first);
        EXPECT_EQ(namesInFolder(), Names{compressed(first)});
        EXPECT_EQ(textOfAllFiles("zol.log"), "text\n");
    });
}

TEST(Compression, LeavesTheFileIfItIsCancelled) {
    inFreshFolder([] {
        write(first, "text\n");
        EXPECT_FALSE(compressBeside(first, [] { return true; }));
        EXPECT_EQ(namesInFolder(), Names{first});
    });
}

TEST(Compression, LeavesNothingIfTheFileHasBeenRemoved) {
    inFreshFolder([] {
        EXPECT_THROW(
            {
                if (compressBeside(first, never)) {
                    throw LogFileError("Windows tells that it cannot be removed, and tries later");
                }
                throw LogFileError("as expected");
            },
            LogFileError);
        write(first, "text\n");
        ASSERT_TRUE(compressBeside(first, never));
        fs::remove(first);
        replaceByCompressed(first);
        EXPECT_EQ(namesInFolder(), Names{});
    });
}

TEST(Compression, ThrowsIfTheTemporaryFileCannotBeCreatedOrRenamed) {
    inFreshFolder([] {
        write(first, "text\n");
        fs::create_directory(temporary(first));
        EXPECT_THROW(static_cast<void>(compressBeside(first, never)), LogFileError);
        fs::remove(temporary(first));
        ASSERT_TRUE(compressBeside(first, never));
        fs::create_directory(compressed(first));
        EXPECT_THROW(replaceByCompressed(first), LogFileError);
        EXPECT_EQ(namesInFolder(), (Names{first, compressed(first)}));
    });
}

TEST(Compression, RemovesWhatAKilledProcessHasLeft) {
    inFreshFolder([] {
        write(first, "text\n");
        ASSERT_TRUE(gzipFile(first, compressed(first), never));
        write(second, "more\n");
        write(temporary(second), "incomplete");
        write("zol.log.gz.tmp", "somebody's");
        write(compressed("zol.1.log"), "x");
        fs::create_directory(temporary("zol.2.log"));
        removeIncompleteCompression("zol.log");
        EXPECT_EQ(namesInFolder(), (Names{"zol.1.log.gz", "zol.2.log.gz.tmp", compressed(first),
                                          second, "zol.log.gz.tmp"}));
    });
}

TEST(Compression, KeepsAFileWhoseCompressedOneIsAnotherOrIncomplete) {
    inFreshFolder([] {
        write(first, "text\n");
        write(compressed(first), "incomplete");
        write(second, "text\n");
        ASSERT_TRUE(gzipFile(second, compressed(second), never));
        write(second, "longer text\n");
        const Names all = namesInFolder();
        removeIncompleteCompression("zol.log");
        EXPECT_EQ(namesInFolder(), all);
    });
}

TEST(Compression, OfALogCompressesWhatItFindsAndWhatItRotates) {
    inFreshFolder([] {
        write(first, "1\n");
        write("zol_2025-12-31.log", "0\n");
        write(temporary(first), "incomplete");
        const Names expected{"zol.20260131T090507Z.000.log.gz", "zol.log", "zol_2025-12-31.log.gz"};
        EXPECT_EQ(afterOneLine(compressing(), expected), expected);

        const auto log = std::make_shared<BufferedLog>("Test", compressing());
        for (int i = 0; i < 20; ++i) {
            log->write("line " + std::to_string(i) + "\n", 0, Clock::now());
        }
        EXPECT_TRUE(isSoon([] {
            const Names names = namesInFolder();
            return std::all_of(names.begin(), names.end(), [](const std::string& name) {
                return name == "zol.log" || fs::path(name).extension() == ".gz";
            });
        }));
        log->close();
        std::string lines = "line\n";
        for (int i = 0; i < 20; ++i) {
            lines += "line " + std::to_string(i) + "\n";
        }
        const std::string text = textOfAllFiles("zol.log");
        EXPECT_EQ(text.substr(text.find("line\n")), lines);
    });
}

TEST(Compression, OfALogIsNotDoneIfItIsNotAskedFor) {
    inFreshFolder([] {
        write(first, "1\n");
        write(temporary(first), "incomplete");
        RotatingLogSettings settings = compressing();
        settings.isCompressed = false;
        settings.flush.interval = 1ms;
        const auto log = std::make_shared<BufferedLog>("Test", settings);
        for (int i = 0; i < 20; ++i) {
            log->write("line " + std::to_string(i) + "\n", 0, Clock::now());
            std::this_thread::sleep_for(1ms);
        }
        log->close();
        for (const std::string& name : namesInFolder()) {
            EXPECT_EQ(fs::path(name).extension(), ".log") << name;
        }
    });
}

TEST(Compression, OfALogGivesNoFileANameThatIsTaken) {
    inFreshFolder([] {
        constexpr std::time_t time = 1769850307;
        write(compressed(first), "somebody's");
        RotatingLogSettings settings = compressing();
        settings.isCompressed = false;
        RotatingLog log("Test", settings);
        log.write("12345678\n", Clock::from_time_t(time));
        log.write("12345678\n", Clock::from_time_t(time));
        EXPECT_EQ(namesInFolder(), (Names{compressed(first), second, "zol.log"}));
    });
}

TEST(Compression, CountsForTheLimitsOfALog) {
    inFreshFolder([] {
        write(first, std::string(100000, 'x'));
        write(second, std::string(100000, 'x'));
        ASSERT_TRUE(gzipFile(first, compressed(first), never));
        fs::remove(first);
        RotatingLogSettings settings = compressing();
        settings.retention.count = 1;
        EXPECT_EQ(afterOneLine(settings, {compressed(second), "zol.log"}),
                  (Names{compressed(second), "zol.log"}));
    });
}

TEST(Compression, OfALogIsTriedAgainIfAFileIsHeld) {
    inFreshFolder([] {
        write(first, "1\n");
        const auto log = std::make_shared<BufferedLog>("Test", compressing());
        {
            HeldFile::prepare();
            const HeldFile held(first);
            log->write("line\n", 0, Clock::now());
            std::this_thread::sleep_for(50ms);
        }
        log->write("a longer line\n", 0, Clock::now());
        EXPECT_TRUE(isSoon([] { return fs::exists(compressed(first)) && !fs::exists(first); }));
        log->close();
    });
}

TEST(Compression, LetsLinesBeFlushedMeanwhile) {
    inFreshFolder([] {
        // Text that takes long to compress, and longer than many intervals.
        std::string text;
        for (unsigned i = 0, random = 1; i < 20'000'000; ++i) {
            random = random * 214013 + 2531011;
            text += static_cast<char>('a' + (random >> 16) % 16);
        }
        write(first, text);
        RotatingLogSettings settings = compressing();
        settings.maxBytes = 0;
        settings.flush.interval = 5ms;
        const auto log = std::make_shared<BufferedLog>("Test", settings);
        log->write("line\n", 0, Clock::now());
        ASSERT_TRUE(isSoon([] { return fs::exists(temporary(first)); }));
        int flushed = 0;
        while (fs::exists(temporary(first))) {
            const auto size = fs::file_size("zol.log");
            log->write("x\n", 0, Clock::now());
            std::this_thread::sleep_for(10ms);
            flushed += fs::file_size("zol.log") > size && fs::exists(temporary(first)) ? 1 : 0;
        }
        EXPECT_GT(flushed, 2);
        log->close();
    });
}

} // namespace
