// The advice of writing-a-back-end.md on the search path.

#include <filesystem>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include "FreshFolder.h"
#include "ZOL/Framework/GenericLogger/Logger.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

std::filesystem::path programFolder() {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return std::filesystem::path(program).parent_path();
}

TEST(LibrarySearchPath, TheAdviceExcludesTheCurrentFolder) {
    inFreshFolder([] {
        // A library that is loaded already is found anywhere, so each load needs another name.
        const std::filesystem::path backEnd = programFolder() / "Console_r.dll";
        std::filesystem::copy_file(backEnd, "FirstInCurrentFolder_r.dll");
        std::filesystem::copy_file(backEnd, "SecondInCurrentFolder_r.dll");
        std::filesystem::create_directory("added");
        std::filesystem::copy_file(backEnd, "added/InAddedFolder_r.dll");

        EXPECT_NE(Logger::loadBackend("FirstInCurrentFolder"), nullptr);

        const std::wstring backEnds = std::filesystem::absolute("added").wstring();
#include "search_path.inc"

        EXPECT_THROW(Logger::loadBackend("SecondInCurrentFolder"), std::runtime_error);
        EXPECT_NE(Logger::loadBackend("InAddedFolder"), nullptr);
        EXPECT_NE(Logger::loadBackend("Console"), nullptr);
    });
}

} // namespace
