#include <optional>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/LogCapture.h"
#include "kit/TemporaryDirectory.h"

namespace {

class JsonFilesTest : public testing::Test {
protected:
    /// The result of `ReadJsonFile` for these bytes; nothing if it refuses them.
    std::optional<std::wstring> Read(std::string_view bytes) const {
        const std::wstring path = directory / L"read.json";
        WriteTextFile(path, bytes);
        std::wstring text = L"old";
        if (!ControllerCSWrapper::ReadJsonFile(path, text)) {
            EXPECT_EQ(text, L"old");
            return std::nullopt;
        }
        return text;
    }

    const TemporaryDirectory directory;
    const LogCapture log;
};

} // namespace

TEST_F(JsonFilesTest, AFileIsWrittenAsUtf8WithItsDirectories) {
    const std::wstring path = directory / L"new\\\u65e5\\a b.json";
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(L"{\"T\":\"\u00e9\u65e5\U0001F600\"}", path));
    EXPECT_EQ(ReadTextFile(path), "{\"T\":\"\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80\"}");
}

TEST_F(JsonFilesTest, LongTextsOfAnyMixAreWrittenWhole) {
    const std::wstring path = directory / L"long.json";
    std::wstring text = L"[\"";
    for (int i = 0; i < 5000; ++i) {
        text += std::wstring(static_cast<std::size_t>(i % 40), L'x') + (i % 3 == 0 ? L"\u00e9" : L"\U0001F600\u65e5");
    }
    text += L"\"]";
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(text, path));
    std::wstring read;
    ASSERT_TRUE(ControllerCSWrapper::ReadJsonFile(path, read));
    EXPECT_TRUE(read == text);
}

TEST_F(JsonFilesTest, AFileIsReplaced) {
    const std::wstring path = directory / L"a.json";
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(L"{\"a\":\"long\"}", path));
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(L"{}", path));
    EXPECT_EQ(ReadTextFile(path), "{}");
}

TEST_F(JsonFilesTest, AFileWithANameOf300CharactersIsRefusedWithALogLine) {
    EXPECT_FALSE(ControllerCSWrapper::CreateJsonFile(L"{}", directory / std::wstring(300, L'n')));
    EXPECT_NE(log.Text().find("The file cannot be written: "), std::string::npos) << log.Text();
}

TEST_F(JsonFilesTest, TextThatIsNoneIsNotWritten) {
    const std::wstring path = directory / L"a.json";
    WriteTextFile(path, "[1]");
    EXPECT_FALSE(ControllerCSWrapper::CreateJsonFile(L"", path));
    EXPECT_FALSE(ControllerCSWrapper::CreateJsonFile(std::wstring(L"\"") + wchar_t{0xD800} + L"\"", path));
    EXPECT_FALSE(ControllerCSWrapper::CreateJsonFile(L"{}", L""));
    EXPECT_EQ(ReadTextFile(path), "[1]");
}

TEST_F(JsonFilesTest, JsonIsReadAsItIs) {
    EXPECT_EQ(Read(" {\"a\" : [1.50, \"\\u0041\\ud800\"]}\n"), L" {\"a\" : [1.50, \"\\u0041\\ud800\"]}\n");
    EXPECT_EQ(Read("\xEF\xBB\xBF{}"), L"{}");
    EXPECT_EQ(Read("\"\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80\""), L"\"\u00e9\u65e5\U0001F600\"");
    EXPECT_EQ(Read("1"), L"1");
}

TEST_F(JsonFilesTest, WhatIsNotJsonInUtf8IsNotRead) {
    using namespace std::string_literals;
    for (const auto& bytes :
         {""s, "{"s, "{}x"s, "{}\0"s, "\"\xFF\""s, "\"\xC0\x80\""s, "\"\xC3\""s, "\"\xED\xA0\x80\""s,
          "\"\xF4\x90\x80\x80\""s, "\"\xE0\x80\x80\""s, "\"\xF0\x80\x80\x80\""s, "\"\x80\""s, "\xFF\xFE{\0}\0"s,
          "\xEF\xBB{}"s, "\xEF\xBB\xBF\xEF\xBB\xBF{}"s, "\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\xC3\x28\""s}) {
        EXPECT_EQ(Read(bytes), std::nullopt) << bytes;
    }
    EXPECT_NE(log.Text().find("read.json, line 1, column 2: not JSON: "), std::string::npos) << log.Text();
    EXPECT_NE(log.Text().find("read.json, line 1, column 2: not UTF-8"), std::string::npos) << log.Text();
}

TEST_F(JsonFilesTest, AMissingFileIsNotRead) {
    std::wstring text = L"old";
    EXPECT_FALSE(ControllerCSWrapper::ReadJsonFile(directory / L"none.json", text));
    EXPECT_FALSE(ControllerCSWrapper::ReadJsonFile(directory.Path(), text));
    EXPECT_FALSE(ControllerCSWrapper::ReadJsonFile(L"", text));
    EXPECT_EQ(text, L"old");
}

TEST_F(JsonFilesTest, AFileBeyondTheSizeLimitIsNotRead) {
    EXPECT_EQ(Read(std::string((std::size_t{256} << 20) + 1, ' ')), std::nullopt);
    EXPECT_NE(log.Text().find("(at most 268435456 bytes)"), std::string::npos) << log.Text();
}
