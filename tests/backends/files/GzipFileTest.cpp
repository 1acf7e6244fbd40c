#include "files/GzipFile.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <zlib.h>

#include "files/LogFile.h"

#include "FreshFolder.h"

using ZOL::Backends::gzipFile;
using ZOL::Backends::isGzipOf;
using ZOL::Backends::LogFileError;
namespace fs = std::filesystem;

namespace {

constexpr const char* source = "zol.1.log";
constexpr const char* target = "zol.1.log.gz";
/// Of the source that is read at once.
constexpr std::size_t block = std::size_t{64} * 1024;

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

void put(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Bytes that cannot be compressed.
std::string noise(std::size_t size) {
    std::mt19937 random;
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

std::string lines(std::size_t size) {
    std::string text;
    for (int number = 0; text.size() < size; ++number) {
        text += "INFO [orders] order " + std::to_string(number) + " has been sent\n";
    }
    return text;
}

/// What zlib's own reader finds in a file that must be in the gzip format.
std::string decompressed(const char* path) {
    const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(gzopen(path, "rb"), gzclose_r);
    if (file == nullptr) {
        ADD_FAILURE() << path << " cannot be opened";
        return {};
    }
    std::string bytes;
    std::string buffer(block, '\0');
    int count = 0;
    do {
        count = gzread(file.get(), buffer.data(), static_cast<unsigned>(buffer.size()));
        bytes.append(buffer, 0, static_cast<std::size_t>(count > 0 ? count : 0));
    } while (count > 0);
    int error = Z_OK;
    const char* const text = gzerror(file.get(), &error);
    EXPECT_EQ(error, Z_OK) << text;
    EXPECT_EQ(gzdirect(file.get()), 0) << path << " is not in the gzip format";
    return bytes;
}

struct Header {
    std::string name;
    uLong time = 0;
};

Header headerOf(const fs::path& path) {
    constexpr int gzipFormat = MAX_WBITS + 16;
    std::string bytes = bytesOf(path);
    std::array<Bytef, 256> name = {};
    gz_header header = {};
    header.name = name.data();
    header.name_max = static_cast<uInt>(name.size());
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::array<Bytef, 1> out = {};
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(inflateInit2(&stream, gzipFormat), Z_OK);
    inflateGetHeader(&stream, &header);
    inflate(&stream, Z_BLOCK);
    EXPECT_EQ(header.done, 1) << path << " has no header";
    inflateEnd(&stream);
    return {reinterpret_cast<const char*>(name.data()), header.time};
}

bool gzip() {
    return gzipFile(source, target, {});
}

std::string refusalOf(const fs::path& from, const fs::path& to) {
    try {
        static_cast<void>(gzipFile(from, to, {}));
    } catch (const LogFileError& error) {
        return error.what();
    }
    return "no refusal";
}

/// The text says what is refused, and then the system's reason.
void expectText(const std::string& text, const std::string& expected) {
    EXPECT_EQ(text.substr(0, expected.size()), expected);
    EXPECT_GT(text.size(), expected.size()) << "without a reason";
}

void setTime(const fs::path& path, std::chrono::seconds since1970) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    fs::last_write_time(
        path, fs::file_time_type::clock::now() -
                  std::chrono::duration_cast<fs::file_time_type::duration>(now - since1970));
}

TEST(GzipFile, HoldsTheBytesOfItsSource) {
    inFreshFolder([] {
        for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, block - 1,
                                       block, block + 1, 2 * block, std::size_t{5} << 20U}) {
            for (const auto make : {noise, lines}) {
                const std::string bytes = make(size);
                put(source, bytes);
                EXPECT_TRUE(gzip());
                EXPECT_TRUE(decompressed(target) == bytes) << "of " << size << " bytes";
                EXPECT_TRUE(bytesOf(source) == bytes) << "the source has changed";
                fs::remove(target);
            }
        }
    });
}

TEST(GzipFile, OfALogIsMuchSmaller) {
    inFreshFolder([] {
        put(source, lines(std::size_t{3} << 20U));
        EXPECT_TRUE(gzip());
        EXPECT_LT(fs::file_size(target), fs::file_size(source) / 5);
    });
}

TEST(GzipFile, NamesItsSourceWithoutTheFolderAndTheTimeOfItsLastWrite) {
    inFreshFolder([] {
        constexpr auto time = std::chrono::seconds(1700000000);
        const fs::path path = fs::u8path(u8"m\u00e4rz/\u00fcber.log");
        fs::create_directory(path.parent_path());
        put(path, "line\n");
        setTime(path, time);
        EXPECT_TRUE(gzipFile(path, target, {}));
        const Header header = headerOf(target);
        EXPECT_EQ(header.name, u8"\u00fcber.log");
        EXPECT_NEAR(static_cast<double>(header.time), static_cast<double>(time.count()), 1);
    });
}

TEST(GzipFile, HasNoTimeInItsHeaderThatDoesNotFitThere) {
    inFreshFolder([] {
        constexpr auto before1970 = std::chrono::seconds(-1000);
        constexpr auto after2106 = std::chrono::seconds(5000000000);
        for (const auto time : {before1970, after2106}) {
            put(source, "line\n");
            setTime(source, time);
            EXPECT_TRUE(gzip());
            EXPECT_EQ(headerOf(target).time, 0U) << "of " << time.count();
            EXPECT_EQ(fs::last_write_time(target), fs::last_write_time(source));
            fs::remove(target);
        }
    });
}

TEST(GzipFile, HasTheTimeOfItsSource) {
    inFreshFolder([] {
        put(source, lines(2 * block));
        fs::last_write_time(source, fs::last_write_time(source) - std::chrono::hours(50));
        const auto time = fs::last_write_time(source);
        EXPECT_TRUE(gzip());
        EXPECT_EQ(fs::last_write_time(target), time);
        EXPECT_EQ(fs::last_write_time(source), time);
    });
}

TEST(GzipFile, ThatExistsIsRefusedAndUnchanged) {
    inFreshFolder([] {
        put(source, "line\n");
        put(target, "another one\n");
        expectText(refusalOf(source, target), "cannot create zol.1.log.gz: ");
        EXPECT_EQ(bytesOf(target), "another one\n");
    });
}

TEST(GzipFile, InAMissingFolderIsRefused) {
    inFreshFolder([] {
        put(source, "line\n");
        const std::string path = u8"m\u00e4ngel/zol.gz";
        expectText(refusalOf(source, fs::u8path(path)), "cannot create " + path + ": ");
    });
}

TEST(GzipFile, OfAMissingFileIsRefused) {
    inFreshFolder([] {
        expectText(refusalOf(source, target), "cannot open zol.1.log: ");
        EXPECT_FALSE(fs::exists(target));
    });
}

TEST(GzipFile, OfAFolderIsRefused) {
    inFreshFolder([] {
        fs::create_directory(source);
        EXPECT_EQ(refusalOf(source, target), "zol.1.log is a folder and not a regular file");
        EXPECT_FALSE(fs::exists(target));
    });
}

TEST(GzipFile, IsRemovedIfItIsCancelledBeforeAnyBlock) {
    inFreshFolder([] {
        const std::string bytes = noise(2 * block + 1);
        put(source, bytes);
        constexpr int blocks = 4; // with the end of the source
        for (int cancelled = 1; cancelled <= blocks + 1; ++cancelled) {
            int asked = 0;
            const bool isComplete = gzipFile(source, target, [&] { return ++asked == cancelled; });
            EXPECT_EQ(isComplete, cancelled > blocks) << "at question " << cancelled;
            EXPECT_EQ(fs::exists(target), isComplete) << "at question " << cancelled;
        }
        EXPECT_TRUE(decompressed(target) == bytes);
    });
}

TEST(GzipFile, IsRemovedIfTheCallerThrows) {
    inFreshFolder([] {
        put(source, noise(block));
        int asked = 0;
        const auto fail = [&asked]() -> bool {
            if (++asked == 2) {
                throw std::runtime_error("the caller's");
            }
            return false;
        };
        EXPECT_THROW(static_cast<void>(gzipFile(source, target, fail)), std::runtime_error);
        EXPECT_FALSE(fs::exists(target));
    });
}

TEST(GzipFile, DoesNotKeepOthersFromWritingRenamingAndRemovingItsSource) {
    inFreshFolder([] {
        const std::string bytes = noise(2 * block);
        put(source, bytes);
        int asked = 0;
        std::error_code renamed;
        std::error_code removed;
        const bool isComplete = gzipFile(source, target, [&] {
            if (++asked == 2) {
                std::ofstream(source, std::ios::binary | std::ios::app) << "a late line\n";
                fs::rename(source, "zol.2.log", renamed);
                fs::remove("zol.2.log", removed);
            }
            return false;
        });
        EXPECT_TRUE(isComplete);
        EXPECT_FALSE(renamed) << renamed.message();
        EXPECT_FALSE(removed) << removed.message();
        EXPECT_FALSE(fs::exists("zol.2.log"));
        EXPECT_TRUE(decompressed(target) == bytes + "a late line\n");
    });
}

TEST(GzipFile, IsKnownByTheSizeOfItsSource) {
    inFreshFolder([] {
        for (const std::size_t size : {std::size_t{0}, std::size_t{1}, 5 * block + 7}) {
            const std::string bytes = noise(size);
            put(source, bytes);
            EXPECT_TRUE(gzip());
            EXPECT_TRUE(isGzipOf(target, size)) << size;
            EXPECT_FALSE(isGzipOf(target, size + 1)) << size;
            EXPECT_FALSE(isGzipOf(target, size + (std::uint64_t{1} << 31U))) << size;
            EXPECT_TRUE(isGzipOf(target, size + (std::uint64_t{1} << 32U)))
                << "the format has 32 bits for it";
            fs::remove(target);
        }
    });
}

TEST(GzipFile, IsNotKnownIfItIsTruncated) {
    inFreshFolder([] {
        put(source, lines(1000));
        EXPECT_TRUE(gzip());
        const std::uint64_t sourceSize = fs::file_size(source);
        ASSERT_TRUE(isGzipOf(target, sourceSize));
        for (std::uint64_t size = fs::file_size(target); size > 0; --size) {
            fs::resize_file(target, size - 1);
            EXPECT_FALSE(isGzipOf(target, sourceSize)) << "with " << size - 1 << " bytes";
            EXPECT_FALSE(isGzipOf(target, 0)) << "with " << size - 1 << " bytes";
        }
    });
}

TEST(GzipFile, IsNotKnownIfItIsAnotherFile) {
    inFreshFolder([] {
        EXPECT_FALSE(isGzipOf(target, 0)) << "missing";
        put(target, std::string(100, '\0'));
        EXPECT_FALSE(isGzipOf(target, 0)) << "zeros";
        put(target, std::string("\x1f\x8b\x08", 3) + std::string(14, '\0'));
        EXPECT_FALSE(isGzipOf(target, 0)) << "shorter than any file of the format";
        fs::remove(target);
        fs::create_directory(target);
        EXPECT_FALSE(isGzipOf(target, 0)) << "a folder";
    });
}

} // namespace
