#include "GzipFile.h"

#include <array>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include <zlib.h>

#include "FileStreams.h"
#include "LogFile.h"

namespace ZOL::Backends {

namespace {

using Bytes = std::vector<unsigned char>;

/// Of the source that is read at once.
constexpr std::size_t blockSize = std::size_t{64} * 1024;
/// Lines get much shorter: seldom is more written after one block.
constexpr std::size_t outputSize = blockSize / 2;
constexpr int compressionLevel = 6;
/// The largest window, and the gzip format in place of zlib's own.
constexpr int windowBits = MAX_WBITS + 16;
constexpr int memoryLevel = 8; // zlib's default, of which it has no name
constexpr int unknownSystem = 255;

// The format, RFC 1952.
constexpr std::array<unsigned char, 3> magic = {0x1f, 0x8b, Z_DEFLATED};
constexpr std::size_t sizeBytes = 4; // the last ones: the size of the source modulo 2^32
constexpr std::size_t minFileSize = 18;
constexpr unsigned bitsOfByte = 8;

/// The time of a header, which has 32 bits without a sign; 0 stands for none.
uLong headerTime(std::time_t time) {
    return time > 0 && time <= std::numeric_limits<std::uint32_t>::max() ? static_cast<uLong>(time)
                                                                         : 0;
}

// With operator new, memory comes from the same heap as all else that a back end allocates.
voidpf allocate(voidpf, uInt items, uInt size) {
    return new (std::nothrow) unsigned char[std::size_t{items} * size];
}

void release(voidpf, voidpf block) {
    delete[] static_cast<unsigned char*>(block);
}

/// Makes the bytes of a gzip file.
class Deflater {
public:
    /// @param name of the source, without its folder.
    Deflater(std::string name, std::time_t time) : name_(std::move(name)), output_(outputSize) {
        stream_.zalloc = allocate;
        stream_.zfree = release;
        if (deflateInit2(&stream_, compressionLevel, Z_DEFLATED, windowBits, memoryLevel,
                         Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc(); // all arguments are valid
        }
        header_.name = reinterpret_cast<Bytef*>(name_.data());
        header_.time = headerTime(time);
        header_.os = unknownSystem;
        deflateSetHeader(&stream_, &header_);
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;
    ~Deflater() { deflateEnd(&stream_); }

    /// Writes what can be written after these bytes of the source. No bytes are its end.
    void compress(Bytes& source, std::size_t size, OutputFile& target) {
        stream_.next_in = source.data();
        stream_.avail_in = static_cast<uInt>(size);
        do {
            stream_.next_out = output_.data();
            stream_.avail_out = static_cast<uInt>(output_.size());
            deflate(&stream_, size > 0 ? Z_NO_FLUSH : Z_FINISH);
            target.write(output_.data(), output_.size() - stream_.avail_out);
        } while (stream_.avail_out == 0);
    }

private:
    std::string name_;
    Bytes output_;
    gz_header header_ = {};
    z_stream stream_ = {};
};

/// Reads that many bytes at an offset. False if the file ends before them.
bool readAll(const InputFile& file, std::uint64_t offset, unsigned char* bytes, std::size_t size) {
    while (size > 0) {
        const std::size_t count = file.readAt(offset, bytes, size);
        if (count == 0) {
            return false;
        }
        offset += count;
        bytes += count;
        size -= count;
    }
    return true;
}

} // namespace

bool gzipFile(const std::filesystem::path& source, const std::filesystem::path& target,
              const std::function<bool()>& isCancelled) {
    // All memory is allocated before anything is created.
    const InputFile input(source);
    Bytes block(blockSize);
    Deflater deflater(source.filename().u8string(), input.lastWrite());
    OutputFile output(target, input);

    std::uint64_t offset = 0;
    std::size_t count = 0;
    do {
        if (isCancelled && isCancelled()) {
            return false;
        }
        count = input.readAt(offset, block.data(), block.size());
        deflater.compress(block, count, output);
        offset += count;
    } while (count > 0);
    output.complete();
    return true;
}

bool isGzipOf(const std::filesystem::path& file, std::uint64_t size) {
    try {
        const InputFile input(file);
        const std::uint64_t compressedSize = input.size();
        std::array<unsigned char, magic.size()> first = {};
        std::array<unsigned char, sizeBytes> last = {};
        if (compressedSize < minFileSize || !readAll(input, 0, first.data(), first.size()) ||
            !readAll(input, compressedSize - last.size(), last.data(), last.size())) {
            return false;
        }
        std::uint32_t sourceSize = 0;
        for (std::size_t i = last.size(); i > 0; --i) {
            sourceSize = sourceSize << bitsOfByte | last[i - 1];
        }
        return first == magic && sourceSize == static_cast<std::uint32_t>(size);
    } catch (const LogFileError&) {
        return false;
    }
}

} // namespace ZOL::Backends
