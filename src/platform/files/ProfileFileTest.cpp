#include "platform/files/ProfileFile.h"

#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"

namespace {

using platform::ReadProfileText;

class ProfileFileTest : public testing::Test {
protected:
    /// The value of the key "CADName" in "[Scenario]". Each text gets its own file, because Windows may cache a file
    /// briefly.
    std::wstring Read(const std::string& content) {
        const std::wstring path = directory / (L"scenario" + std::to_wstring(++files) + L".adc");
        WriteTextFile(path, content);
        return ReadProfileText(path, L"Scenario", L"CADName");
    }

    TemporaryDirectory directory;
    int files = 0;
};

std::string Utf16WithMark(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

TEST_F(ProfileFileTest, ValuesThatAreFound) {
    const struct {
        const char* content;
        const wchar_t* value;
    } table[] = {
        {"[Scenario]\r\nCADName=STL\r\nCADExt=stl\r\n", L"STL"},
        {"[Scenario]\nCADName=STL", L"STL"},
        {"[SCENARIO]\r\ncadNAME=STL\r\n", L"STL"},
        {"[Scenario]\r\n  CADName \t=  STL file \t \r\n", L"STL file"},
        {"  [Scenario]  \r\nCADName=STL\r\n", L"STL"},
        {"[Other]\r\nCADName=no\r\n[Scenario]\r\nCADName=STL\r\n", L"STL"},
        {"CADName=no\r\n[Scenario]\r\nCADName=STL\r\n", L"STL"},
        {"[Scenario]\r\nCADName=first\r\nCADName=second\r\n", L"first"},
        {"[Scenario]\r\nCADName=first\r\n[Scenario]\r\nCADName=second\r\n", L"first"},
        {"[Scenario]\r\n;CADName=no\r\nCADName=STL\r\n", L"STL"},
        {"[Scenario]\r\nCADName=a;b ; c\r\n", L"a;b ; c"},
        {"[Scenario]\r\nCADName=a=b\r\n", L"a=b"},
        {"[Scenario]\r\nCADName=\"  quoted  \"\r\n", L"  quoted  "},
        {"[Scenario]\r\nCADName='  quoted  '\r\n", L"  quoted  "},
        {"[Scenario]\r\nCADName=\"\"twice\"\"\r\n", L"\"twice\""},
        {"[Scenario]\r\nCADName=\"open\r\n", L"\"open"},
        {"[Scenario]\r\nCADName=\"mixed'\r\n", L"\"mixed'"},
        {"[Scenario]\r\nCADName=a \"b\"\r\n", L"a \"b\""},
        {"[Scenario]\r\nCADName=\"\r\n", L"\""},
        {"[Scenario]\r\nno value\r\nCADName=STL\r\n", L"STL"},
        {"\r\n\r\n[Scenario]\r\n\r\nCADName=STL\r\n\r\n", L"STL"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(Read(row.content), row.value) << row.content;
    }
}

TEST_F(ProfileFileTest, ValuesThatAreNot) {
    const char* const table[] = {
        "",
        "\r\n",
        "CADName=STL\r\n",
        "[Scenario]\r\nCADExt=stl\r\n",
        "[Scenario]\r\nCADName=\r\n",
        "[Scenario]\r\nCADName=   \r\n",
        "[Scenario]\r\nCADName=\"\"\r\n",
        "[Scenario]\r\nCADName\r\n",
        "[Scenario]\r\n;CADName=STL\r\n",
        "[Scenario]\r\n[Other]\r\nCADName=STL\r\n",
        "[Scenarios]\r\nCADName=STL\r\n",
        "[Scenario]\r\nCADNames=STL\r\n",
    };
    for (const char* content : table) {
        EXPECT_EQ(Read(content), L"") << content;
    }
}

TEST_F(ProfileFileTest, TheFirstSectionWinsThoughItLacksTheKey) {
    EXPECT_EQ(Read("[Scenario]\r\nCADExt=stl\r\n[Scenario]\r\nCADName=second\r\n"), L"");
}

TEST_F(ProfileFileTest, TwoHundredAndFiftyFiveCharactersAreKept) {
    EXPECT_EQ(Read("[Scenario]\r\nCADName=" + std::string(255, 'x')), std::wstring(255, L'x'));
    EXPECT_EQ(Read("[Scenario]\r\nCADName=" + std::string(256, 'x')), std::wstring(255, L'x'));
    EXPECT_EQ(Read("[Scenario]\r\nCADName=" + std::string(5000, 'x')), std::wstring(255, L'x'));
}

TEST_F(ProfileFileTest, Utf16WithAMarkIsRead) {
    EXPECT_EQ(Read(Utf16WithMark(u"[Scenario]\r\nCADName=Gr\u00F6\u00DFe \u65E5\r\n")), L"Gr\u00F6\u00DFe \u65E5");
}

TEST_F(ProfileFileTest, Utf8IsReadWhereTheSystemHasNoCodePages) {
    if (OnWindows()) {
        GTEST_SKIP() << "files without the mark of UTF-16 are in the code page of the user here";
    }
    EXPECT_EQ(Read("\xEF\xBB\xBF[Scenario]\r\nCADName=Gr\xC3\xB6\xC3\x9F"
                   "e\r\n"),
              L"Gr\u00F6\u00DFe");
    EXPECT_EQ(Read("[Scenario]\r\nCADName=Gr\xC3\xB6\xC3\x9F"
                   "e\r\n"),
              L"Gr\u00F6\u00DFe");
}

TEST_F(ProfileFileTest, WhatCannotBeReadHasNoValues) {
    EXPECT_EQ(ReadProfileText(directory / L"missing.adc", L"Scenario", L"CADName"), L"");
    EXPECT_EQ(ReadProfileText(directory.Path(), L"Scenario", L"CADName"), L"");
    EXPECT_EQ(ReadProfileText(L"", L"Scenario", L"CADName"), L"");
    WriteTextFile(directory / L"a.adc", "[Scenario]\r\nCADName=STL\r\n");
    EXPECT_EQ(ReadProfileText((directory / L"a.adc") + std::wstring(1, L'\0'), L"Scenario", L"CADName"), L"");
    EXPECT_EQ(ReadProfileText(directory.Path() + L"/a.adc", L"Scenario", L"CADName"), L"STL");
}

TEST_F(ProfileFileTest, SeveralKeysAreAnsweredInTheirOrder) {
    const std::wstring path = directory / L"several.adc";
    WriteTextFile(path, "[Scenario]\r\nCADName=STL\r\nCADExt=stl,obj\r\n");
    EXPECT_EQ(platform::ReadProfileTexts(path, L"Scenario", {L"CADExt", L"SecondInput", L"cadname"}),
              (std::vector<std::wstring>{L"stl,obj", L"", L"STL"}));
    EXPECT_EQ(platform::ReadProfileTexts(directory / L"missing.adc", L"Scenario", {L"CADExt", L"CADName"}),
              std::vector<std::wstring>(2));
}

} // namespace
