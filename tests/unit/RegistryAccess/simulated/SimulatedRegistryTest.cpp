// The simulated registry itself.

#include "SimulatedRegistry.h"

#include <array>

#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

using support::HandleTable;
using support::SimulatedRegistry;
using Lines = SimulatedRegistry::Lines;

namespace {

class Simulated : public testing::Test {
protected:
    HKEY make(const char* path) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, path, &key), ERROR_SUCCESS);
        return key;
    }

    SimulatedRegistry platform;
};

TEST_F(Simulated, PredefinedKeysAreTheirNumbersWithTheSignExtended) {
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(HKEY_CURRENT_USER), -0x7fffffffLL);
    EXPECT_EQ(reinterpret_cast<std::intptr_t>(HKEY_LOCAL_MACHINE), -0x7ffffffeLL);
}

TEST_F(Simulated, LookupIgnoresCaseAndNamesKeepTheirs) {
    make("One\\Two");
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "oNE\\tWO", &key), ERROR_SUCCESS);
    EXPECT_EQ(platform.user().listing(), (Lines{"One\\", "One\\Two\\"}));
}

TEST_F(Simulated, ACaseDoesNotHideBytesBeyondAscii) {
    make("\xe4");
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, "\xc4", &key), ERROR_FILE_NOT_FOUND);
}

TEST_F(Simulated, AFailedOpenPoisonsTheKeyUnlessConfiguredToKeepIt) {
    HKEY key = nullptr;
    RegOpenKeyA(HKEY_CURRENT_USER, "missing", &key);
    EXPECT_EQ(key, HandleTable::poison());
    platform.leaveKeysAlone();
    key = nullptr;
    RegOpenKeyA(HKEY_CURRENT_USER, "missing", &key);
    EXPECT_EQ(key, nullptr);
}

TEST_F(Simulated, AnEmptyPathGivesTheHandleThatWasHandedIn) {
    const HKEY key = make("key");
    HKEY same = nullptr;
    EXPECT_EQ(RegOpenKeyA(key, "", &same), ERROR_SUCCESS);
    EXPECT_EQ(same, key);
    EXPECT_EQ(platform.openHandles(), 1U);
}

TEST_F(Simulated, CountsHandlesAndRecordsTheirMisuse) {
    const HKEY one = make("one");
    make("two");
    EXPECT_EQ(platform.openHandles(), 2U);
    EXPECT_EQ(RegCloseKey(one), ERROR_SUCCESS);
    EXPECT_EQ(platform.openHandles(), 1U);
    EXPECT_EQ(RegCloseKey(one), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegDeleteValueA(one, "x"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(nullptr), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(support::keyOfNumber(77)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegDeleteValueA(nullptr, "x"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(
        platform.takeMisuses(),
        (Lines{"close of k1, which is closed", "use of k1, which is closed",
               "close of null, which was never opened", "close of unknown, which was never opened",
               "use of null, which was never opened"}));
}

TEST_F(Simulated, AKeyThatWasDeletedAnswersSo) {
    make("one");
    const HKEY below = make("one\\below");
    EXPECT_EQ(SHDeleteKeyA(HKEY_CURRENT_USER, "ONE"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(below, "x"), ERROR_KEY_DELETED);
    EXPECT_EQ(platform.user().listing(), Lines());
    EXPECT_EQ(SHDeleteKeyA(HKEY_CURRENT_USER, "one"), ERROR_FILE_NOT_FOUND);
}

TEST_F(Simulated, QueriesFillInTypeAndSizeAndTheDataThatFits) {
    const HKEY key = make("key");
    platform.user().find("key")->setValue("name", REG_BINARY, "abcde");
    DWORD type = 0;
    std::array<BYTE, 6> data = {};
    DWORD size = 5;
    EXPECT_EQ(RegQueryValueExA(key, "NAME", nullptr, &type, data.data(), &size), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_BINARY);
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(data, (std::array<BYTE, 6>{'a', 'b', 'c', 'd', 'e', 0}));
    size = 4;
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, &type, data.data(), &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(data, (std::array<BYTE, 6>{0xEE, 0xEE, 0xEE, 0xEE, 'e', 0}));
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, nullptr, data.data(), nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExA(key, "other", nullptr, &type, data.data(), &size),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(type, 0xEEEEEEEE);
    EXPECT_EQ(size, 0xEEEEEEEE);
}

TEST_F(Simulated, WritesOfTextIncludeAZeroThatFollowsTheData) {
    const HKEY key = make("key");
    const std::array<BYTE, 4> data = {'a', 0, 'b', 'c'};
    const support::RegistryKey::Pointer found = platform.user().find("key");
    const auto stored = [&](DWORD type, DWORD size) {
        RegSetValueExA(key, "name", 0, type, data.data(), size);
        return found->findValue("name")->data;
    };
    EXPECT_EQ(stored(REG_SZ, 1), std::string("a\0", 2));
    EXPECT_EQ(stored(REG_EXPAND_SZ, 1), std::string("a\0", 2));
    EXPECT_EQ(stored(REG_MULTI_SZ, 1), std::string("a\0", 2));
    EXPECT_EQ(stored(REG_BINARY, 1), "a");
    EXPECT_EQ(stored(REG_SZ, 2), std::string("a\0", 2));
    EXPECT_EQ(stored(REG_SZ, 3), std::string("a\0b", 3));
    EXPECT_EQ(stored(REG_SZ, 0), "");
}

TEST_F(Simulated, EnumeratedNamesNeedRoomForATerminator) {
    const HKEY key = make("key");
    make("key\\sub");
    std::array<char, 5> name = {};
    EXPECT_EQ(RegEnumKeyA(key, 0, name.data(), 4), ERROR_SUCCESS);
    EXPECT_STREQ(name.data(), "sub");
    name = {};
    EXPECT_EQ(RegEnumKeyA(key, 0, name.data(), 3), ERROR_MORE_DATA);
    EXPECT_EQ(name, (std::array<char, 5>{'\xEE', '\xEE', '\xEE', 0, 0}));
    platform.leaveOutTerminators();
    name = {'-', '-', '-', '-', '-'};
    EXPECT_EQ(RegEnumKeyA(key, 0, name.data(), 3), ERROR_SUCCESS);
    EXPECT_EQ(name, (std::array<char, 5>{'s', 'u', 'b', '-', '-'}));
    EXPECT_EQ(RegEnumKeyA(key, 1, name.data(), 5), ERROR_NO_MORE_ITEMS);
}

TEST_F(Simulated, EnumeratedValuesReportBothLengths) {
    const HKEY key = make("key");
    platform.user().find("key")->setValue("name", 7, "ab");
    std::array<char, 6> name = {};
    DWORD nameSize = 5;
    std::array<BYTE, 3> data = {};
    DWORD dataSize = 2;
    DWORD type = 0;
    const auto enumerate = [&](DWORD index) {
        return RegEnumValueA(key, index, name.data(), &nameSize, nullptr, &type, data.data(),
                             &dataSize);
    };
    EXPECT_EQ(enumerate(0), ERROR_SUCCESS);
    EXPECT_STREQ(name.data(), "name");
    EXPECT_EQ(nameSize, 4U);
    EXPECT_EQ(type, 7U);
    EXPECT_EQ(dataSize, 2U);
    EXPECT_EQ(data, (std::array<BYTE, 3>{'a', 'b', 0}));
    EXPECT_EQ(enumerate(0), ERROR_MORE_DATA) << "no room for the name's zero";
    nameSize = 5;
    dataSize = 1;
    EXPECT_EQ(enumerate(0), ERROR_MORE_DATA) << "no room for the data";
    EXPECT_EQ(dataSize, 2U);
    nameSize = 5;
    EXPECT_EQ(enumerate(1), ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(nameSize, 0xEEEEEEEE);
    EXPECT_EQ(dataSize, 0xEEEEEEEE);
    EXPECT_EQ(type, 0xEEEEEEEE);
    EXPECT_EQ(name, (std::array<char, 6>{'\xEE', '\xEE', '\xEE', '\xEE', '\xEE', 0}));
}

TEST_F(Simulated, RecordsCallsWithTheirArguments) {
    std::array<char, 2> name = {};
    std::array<BYTE, 2> room = {0, 1};
    const std::array<BYTE, 2> data = {0, 1};
    DWORD one = 1;
    DWORD two = 2;
    RegEnumValueA(HKEY_LOCAL_MACHINE, 7, name.data(), &one, &one, nullptr, room.data(), &two);
    RegSetValueExA(nullptr, "\"\n", 5, 6, data.data(), 2);
    RegSetValueExA(nullptr, nullptr, 0, 0, nullptr, 9);
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegEnumValueA(HKLM, 7, zeros, 1, reserved, null, dirty, 2)",
                     "RegSetValueExA(null, \"\"<0a>\", 5, 6, \"<00><01>\", 2)",
                     "RegSetValueExA(null, null, 0, 0, null, 9)"}));
    EXPECT_EQ(platform.takeCalls(), Lines());
    EXPECT_EQ(platform.calls(), 3U);
    platform.takeMisuses();
}

TEST_F(Simulated, AnswersCallsAsConfigured) {
    const auto open = [] {
        HKEY key = nullptr;
        return RegOpenKeyA(HKEY_CURRENT_USER, "", &key);
    };
    platform.answer(2, 1111);
    platform.answer("RegOpenKeyA", 3, 2222);
    EXPECT_EQ(open(), 0);
    EXPECT_EQ(RegDeleteValueA(HKEY_CURRENT_USER, "x"), 1111);
    EXPECT_EQ(open(), 0);
    EXPECT_EQ(open(), 2222);
    EXPECT_EQ(open(), 0);
    platform.answerAll("RegOpenKeyA", 3333);
    EXPECT_EQ(open(), 3333);
    EXPECT_EQ(open(), 3333);
    EXPECT_EQ(RegDeleteValueA(HKEY_CURRENT_USER, "x"), ERROR_FILE_NOT_FOUND);
    platform.answerTruly();
    EXPECT_EQ(open(), 0);
}

TEST_F(Simulated, ClosesAKeyForEveryResultCode) {
    const HKEY key = make("key");
    platform.answer(1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegCloseKey(key), ERROR_ACCESS_DENIED);
    EXPECT_EQ(platform.openHandles(), 0U);
}

TEST_F(Simulated, MakesNoMoreKeysThanItMay) {
    platform.limitKeys(2);
    make("one");
    make("two");
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "three", &key), ERROR_NO_SYSTEM_RESOURCES);
    EXPECT_EQ(RegCreateKeyA(HKEY_CURRENT_USER, "TWO", &key), ERROR_SUCCESS);
}

} // namespace
