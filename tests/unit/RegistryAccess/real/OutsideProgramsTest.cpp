// The registry as outside programs write and read it: reg.exe and regedit.

#include <string>

#include <gtest/gtest.h>

#include "ErrorExpectation.h"
#include "OutsideProgram.h"
#include "RegistryFixture.h"

using support::ansi;
using support::bytes;
using support::expectError;
using support::importWithRegedit;
using support::rawValue;
using support::RawValue;
using support::runReg;
using support::withZero;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryOutsidePrograms : public support::RegistryFixture {
protected:
    std::string fullPath(const std::string& below = "") const {
        return "HKEY_CURRENT_USER\\" + (below.empty() ? path() : path(below));
    }

    /// Has reg.exe write a value, and the key if need be.
    void addByReg(const std::string& name, const std::string& type, const std::string& data) {
        const support::ProgramResult result =
            runReg({"add", fullPath(), "/v", name, "/t", type, "/d", data, "/f"});
        EXPECT_EQ(result.exitCode, 0) << result.output;
    }

    /// The line that `reg query` has for each value: four blanks before each column.
    static std::string line(const std::string& name, const std::string& type,
                            const std::string& data) {
        return "    " + name + "    " + type + "    " + data + "\n";
    }

    /// The output of `reg query` for a key with values; Wine's has no more.
    static std::string listing(const std::string& key, const std::string& lines) {
        return "\n" + key + "\n" + lines + "\n";
    }
};

TEST_F(RegistryOutsidePrograms, TextFromRegIsRead) {
    addByReg("text", "REG_SZ", "some text");
    EXPECT_EQ(make().getStringValue("text"), bytes("some text"));
}

TEST_F(RegistryOutsidePrograms, NumbersFromRegAreRead) {
    addByReg("decimal", "REG_DWORD", "42");
    addByReg("hexadecimal", "REG_DWORD", "0xffffffff");
    EXPECT_EQ(make().getIntValue("decimal"), 42);
    EXPECT_EQ(make().getIntValue("hexadecimal"), -1);
}

TEST_F(RegistryOutsidePrograms, TheDefaultValueFromRegIsRead) {
    EXPECT_EQ(runReg({"add", fullPath(), "/ve", "/d", "the default", "/f"}).exitCode, 0);
    EXPECT_EQ(make().getStringValue(""), bytes("the default"));
}

TEST_F(RegistryOutsidePrograms, BytesFromRegAreReadUpToTheFirstZero) {
    addByReg("bytes", "REG_BINARY", "6162630064");
    EXPECT_EQ(make().getStringValue("bytes"), bytes("abc"));
}

TEST_F(RegistryOutsidePrograms, OtherKindsOfTextFromRegAreReadUnchanged) {
    addByReg("several", "REG_MULTI_SZ", "one\\0two\\0three");
    addByReg("with a variable", "REG_EXPAND_SZ", "in ~TEMP~");
    EXPECT_EQ(make().getStringValue("several"), bytes("one"));
    EXPECT_EQ(make().getStringValue("with a variable"), bytes("in ~TEMP~"));
}

TEST_F(RegistryOutsidePrograms, NumbersOf64BitsFromRegAreNoNumbersToUs) {
    addByReg("number", "REG_QWORD", "7");
    const Registry node = make();
    expectError<Registry::OpenError>(398, "Unable to open requested value.",
                                     [&] { node.getIntValue("number"); });
    EXPECT_EQ(node.getStringValue("number"), bytes("\x07"));
}

TEST_F(RegistryOutsidePrograms, TextTooLongFromRegCannotBeRead) {
    addByReg("fits", "REG_SZ", std::string(260, 'x'));
    addByReg("too long", "REG_SZ", std::string(261, 'x'));
    const Registry node = make();
    EXPECT_EQ(node.getStringValue("fits").size(), 260U);
    expectError<Registry::OpenError>(350, "Unable to open requested value.",
                                     [&] { node.getStringValue("too long"); });
}

TEST_F(RegistryOutsidePrograms, NamesAndTextBeyondAsciiFromRegAreRead) {
    const std::string name = ansi(L"Gr\xF6\xDF"
                                  L"e");
    const std::string text = ansi(L"\xFC"
                                  L"bergro\xDF");
    addByReg(name, "REG_SZ", text);
    EXPECT_EQ(make().getStringValue(name), bytes(text));
    EXPECT_EQ(runReg({"add", fullPath(ansi(L"Schl\xFCssel")), "/f"}).exitCode, 0);
    ASSERT_EQ(make().getSubKeys().size(), 1U);
    EXPECT_EQ(make().getSubKeys().front().getName(), ansi(L"Schl\xFCssel"));
    EXPECT_TRUE(make().hasSubKey(ansi(L"SCHL\xDCSSEL"))) << "case is ignored beyond ASCII too";
}

TEST_F(RegistryOutsidePrograms, AllKindsOfValuesFromRegeditAreRead) {
    importWithRegedit("[" + fullPath("sub key") +
                      "]\n"
                      "@=\"the default\"\n"
                      "\"text\"=\"back\\\\slash and \\\"marks\\\"\"\n"
                      "\"number\"=dword:fffffffe\n"
                      "\"bytes\"=hex:61,00,62\n"
                      "\"several\"=hex(7):6f,6e,65,00,74,77,6f,00,00\n"
                      "\"64 bits\"=hex(b):61,62,63,64,65,66,67,68\n"
                      "\"" +
                      ansi(L"Gr\xF6\xDF"
                           L"e") +
                      "\"=\"" +
                      ansi(L"\xFC"
                           L"ber") +
                      "\"\n");
    const Registry node = make().openSubKey("sub key");
    EXPECT_EQ(node.getStringValue(""), bytes("the default"));
    EXPECT_EQ(node.getStringValue("text"), bytes("back\\slash and \"marks\""));
    EXPECT_EQ(node.getIntValue("number"), -2);
    EXPECT_EQ(node.getStringValue("bytes"), bytes("a"));
    EXPECT_EQ(node.getStringValue("several"), bytes("one"));
    EXPECT_EQ(node.getStringValue("64 bits"), bytes("abcdefgh"));
    EXPECT_EQ(node.getStringValue(ansi(L"Gr\xF6\xDF"
                                       L"e")),
              bytes(ansi(L"\xFC"
                         L"ber")));
}

TEST_F(RegistryOutsidePrograms, CharactersThatTheAnsiCodePageLacksAreReadAsQuestionMarks) {
    const std::string key = fullPath();
    importWithRegedit(L"[" + std::wstring(key.begin(), key.end()) +
                      L"]\n\"snow\"=\"white \x2603 cold\"\n");
    EXPECT_EQ(make().getStringValue("snow"), bytes("white ? cold"));
}

TEST_F(RegistryOutsidePrograms, WhatRegeditWroteIsCopiedByteForByte) {
    importWithRegedit("[" + fullPath("from\\below") +
                      "]\n"
                      "@=\"the default\"\n"
                      "\"several\"=hex(7):6f,6e,65,00,74,77,6f,00,00\n"
                      "\"bytes\"=hex:00,01,00,02\n"
                      "\"64 bits\"=hex(b):01,02,00,04,05,06,07,08\n");
    make("to").copyFrom(make("from"));
    for (const char* const name : {"", "several", "bytes", "64 bits"}) {
        EXPECT_EQ(rawValue(path("to\\below"), name), rawValue(path("from\\below"), name));
    }
    EXPECT_EQ(rawValue(path("to\\below"), "several"),
              (RawValue{REG_MULTI_SZ, std::string("one\0two\0\0", 9)}));
}

TEST_F(RegistryOutsidePrograms, WhatRegeditDeletesIsGone) {
    make("a\\b").updateIntValue("value", 1);
    make("a").updateIntValue("value", 1);
    importWithRegedit("[-" + fullPath("a\\b") + "]\n\n[" + fullPath("a") + "]\n\"value\"=-\n");
    EXPECT_FALSE(make("a").hasSubKey("b"));
    EXPECT_FALSE(make("a").hasValue("value"));
}

TEST_F(RegistryOutsidePrograms, RegShowsWhatWeWrite) {
    make().updateStringValue("text", withZero("some text"));
    EXPECT_EQ(runReg({"query", fullPath()}).output,
              listing(fullPath(), line("text", "REG_SZ", "some text")));
}

TEST_F(RegistryOutsidePrograms, RegShowsTextThatWeWroteWithoutAZero) {
    make().updateStringValue("text", bytes("some text"));
    EXPECT_EQ(runReg({"query", fullPath(), "/v", "text"}).output,
              listing(fullPath(), line("text", "REG_SZ", "some text")));
}

TEST_F(RegistryOutsidePrograms, RegShowsNumbersThatWeWrite) {
    make().updateIntValue("number", -2);
    EXPECT_EQ(runReg({"query", fullPath(), "/v", "number"}).output,
              listing(fullPath(), line("number", "REG_DWORD", "0xfffffffe")));
}

TEST_F(RegistryOutsidePrograms, RegShowsTheDefaultValueThatWeWrite) {
    make().updateStringValue("", withZero("the default"));
    EXPECT_EQ(runReg({"query", fullPath(), "/ve"}).output,
              listing(fullPath(), line("(Default)", "REG_SZ", "the default")));
}

TEST_F(RegistryOutsidePrograms, RegShowsNamesAndTextBeyondAsciiThatWeWrite) {
    const std::string name = ansi(L"Gr\xF6\xDF"
                                  L"e");
    const std::string text = ansi(L"\xFC"
                                  L"bergro\xDF");
    make().updateStringValue(name, withZero(text));
    EXPECT_EQ(runReg({"query", fullPath()}).output,
              listing(fullPath(), line(name, "REG_SZ", text)));
}

TEST_F(RegistryOutsidePrograms, RegShowsTheSubKeysThatWeMake) {
    make().createSubKey("a").createSubKey("b");
    EXPECT_EQ(runReg({"query", fullPath()}).output, "\n" + fullPath("a") + "\n");
}

TEST_F(RegistryOutsidePrograms, RegShowsATreeThatWeCopied) {
    make("from\\a").updateIntValue("number", 1);
    make("from\\a").updateStringValue("text", withZero("x"));
    support::setRawValue(path("from"), "64 bits", {REG_QWORD, std::string(8, '\1')});
    make("to").copyFrom(make("from"));
    // Wine's reg.exe has no number for 64 bits.
    EXPECT_EQ(runReg({"query", fullPath("to"), "/s"}).output,
              "\n" + fullPath("to") + "\n" + line("64 bits", "REG_QWORD", "(null)") + "\n" +
                  fullPath("to\\a") + "\n" + line("number", "REG_DWORD", "0x1") +
                  line("text", "REG_SZ", "x") + "\n");
}

TEST_F(RegistryOutsidePrograms, RegFindsNothingOfWhatWeDelete) {
    Registry node = make();
    node.updateIntValue("number", 1);
    node.createSubKey("a");
    EXPECT_EQ(runReg({"query", fullPath(), "/v", "number"}).exitCode, 0);
    EXPECT_EQ(runReg({"query", fullPath("a")}).exitCode, 0);
    node.deleteValue("number");
    node.deleteSubKey("a");
    EXPECT_EQ(runReg({"query", fullPath(), "/v", "number"}).exitCode, 1);
    EXPECT_EQ(runReg({"query", fullPath("a")}).exitCode, 1);
}

} // namespace
