#include <stdexcept>

#include <io.h>

#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"
#include "ImportHook.h"

namespace support::CrisisLogHooks {

namespace {

FILE* crisisStream = nullptr;

FILE* openStream(const wchar_t* path, const wchar_t* mode, int sharing) {
    report(Kind::Open);
    return fails(Kind::Open) ? nullptr : crisisStream = _wfsopen(path, mode, sharing);
}

void WINAPI localTime(SYSTEMTIME* now) {
    const long time = fixedTime();
    GetLocalTime(now);
    if (time < 0) {
        return;
    }
    report(Kind::Clock);
    now->wHour = static_cast<WORD>(time / 3600000);
    now->wMinute = static_cast<WORD>(time / 60000 % 60);
    now->wSecond = static_cast<WORD>(time / 1000 % 60);
    now->wMilliseconds = static_cast<WORD>(time % 1000);
}

std::size_t writeStream(const void* data, std::size_t size, std::size_t count, FILE* stream) {
    if (stream != crisisStream) {
        return std::fwrite(data, size, count, stream);
    }
    reportWrite(data, size, count);
    return fails(Kind::Write) ? 0 : std::fwrite(data, size, count, stream);
}

int flushStream(FILE* stream) {
    if (stream != crisisStream) {
        return std::fflush(stream);
    }
    report(Kind::Flush);
    return fails(Kind::Flush) ? EOF : std::fflush(stream);
}

int closeStream(FILE* stream) {
    if (stream == crisisStream) {
        report(Kind::Close);
        crisisStream = nullptr;
    }
    return std::fclose(stream);
}

template <typename Function>
void hook(const char* name, Function* replacement) {
    HMODULE const module = GetModuleHandleA("ZOL_Framework_r.2.0.8.129.dll");
    if (hookImport(module, name, reinterpret_cast<void*>(replacement)) == nullptr) {
        throw std::runtime_error(std::string("the framework does not import ") + name);
    }
}

} // namespace

void attach() {
    hook("_wfsopen", openStream);
    hook("GetLocalTime", localTime);
    hook("fwrite", writeStream);
    hook("fflush", flushStream);
    hook("fclose", closeStream);
}

// The file cannot be opened a second time, so this reads through the stream's own handle, without
// the stream's buffer.
std::string content() {
    const bool open = crisisStream != nullptr;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the C runtime has handles as integers
    auto* const file = open ? reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(crisisStream)))
                            : CreateFileA(CrisisLogSandbox::path, GENERIC_READ, FILE_SHARE_READ,
                                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return "";
    }
    std::string text(GetFileSize(file, nullptr), '\0');
    OVERLAPPED from = {};
    DWORD size = 0;
    if (!text.empty() &&
        !ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &size, &from)) {
        throw std::runtime_error("cannot read the crisis log");
    }
    text.resize(size);
    if (!open) {
        CloseHandle(file);
    }
    return text;
}

} // namespace support::CrisisLogHooks
