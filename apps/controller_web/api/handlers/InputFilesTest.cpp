#include "kit/controller_web/ApiFixture.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <gtest/gtest.h>

namespace {

class InputFilesTest : public ApiFixture {
protected:
    InputFilesTest() {
        inputDirectories = {directory / L"parts"};
        WriteTextFile(directory / L"parts\\a.stl", "solid");
        WriteTextFile(directory / L"parts\\big\\b.stl", "solid b");
        WriteTextFile(directory / L"parts and more\\c.stl", "solid c");
    }

    std::string Target(const std::wstring& path) const {
        std::string target = "/api/v1/inputs?path=";
        for (const char character : text::ToUtf8(platform::ToNativeText(path))) {
            constexpr const char* digits = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(character);
            target += {'%', digits[byte >> 4], digits[byte & 15]};
        }
        return target;
    }

    std::size_t StoredFiles() const {
        std::vector<platform::DirectoryEntry> entries;
        return platform::ListDirectory(directory / L"uploads", entries) ? entries.size() : 0;
    }
};

TEST_F(InputFilesTest, TheAllowedDirectoriesAreTheBeginning) {
    const Answer answer = Get("/api/v1/inputs");
    EXPECT_TRUE(answer.Has(R"({"version":1,"path":"","entries":[{"name":)")) << answer.body;
    EXPECT_TRUE(answer.Has("parts\",\"type\":\"directory\"}],\"complete\":true}")) << answer.body;
}

TEST_F(InputFilesTest, ADirectoryIsListed) {
    const Answer answer = Get(Target(directory / L"parts"));
    EXPECT_EQ(answer.status, 200U);
    EXPECT_TRUE(answer.Has(R"({"name":"a.stl","path":")")) << answer.body;
    EXPECT_TRUE(answer.Has(R"("type":"file","size":5,"modified":"2)"));
    EXPECT_TRUE(answer.Has(R"({"name":"big","path":")"));
    EXPECT_FALSE(answer.Has("\"parent\""));
    const Answer below = Get(Target(directory / L"parts\\big\\..\\big\\"));
    EXPECT_TRUE(below.Has("b.stl"));
    EXPECT_TRUE(below.Has("\"parent\""));
}

TEST_F(InputFilesTest, NothingElseIsListed) {
    for (const std::wstring& path : {directory / L"", directory / L"parts and more", directory / L"parts\\..",
                                     directory / L"parts\\..\\parts and more", std::wstring(L"\\"),
                                     std::wstring(L"parts"), std::wstring(L"."), directory / L"partsx"}) {
        EXPECT_EQ(Get(Target(path)).status, 403U) << text::ToUtf8(path);
    }
    EXPECT_EQ(Get(Target(directory / L"parts\\missing")).status, 404U);
    EXPECT_EQ(Get(Target(directory / L"parts\\a.stl")).status, 404U);
    EXPECT_EQ(Get("/api/v1/inputs?path=%00").status, 403U);
}

TEST_F(InputFilesTest, WithoutTheSettingNothingIsListed) {
    inputDirectories.clear();
    EXPECT_TRUE(Get("/api/v1/inputs").Has("\"entries\":[]"));
    EXPECT_EQ(Get(Target(directory / L"parts")).status, 403U);
}

TEST_F(InputFilesTest, AnUploadedFileKeepsItsName) {
    const Answer answer = Post("/api/v1/uploads?name=my%20part.stl", std::string("solid\0x", 7));
    EXPECT_EQ(answer.status, 201U);
    EXPECT_TRUE(answer.Has("my part.stl\",\"size\":7}")) << answer.body;
    EXPECT_EQ(Post("/api/v1/uploads?name=my%20part.stl", "other").status, 201U);
    EXPECT_EQ(StoredFiles(), 2U);
}

TEST_F(InputFilesTest, AnUploadCannotLeaveItsDirectory) {
    for (const char* const name : {"..", "../x", "..%2Fx", "..%5Cx", "%2Fetc%2Fx", "a%2Fb", "a%5Cb", "C%3Ax", "", ".x",
                                   "con", "x%0A", "x.", "a%00b", "x%22", "%FF%2F"}) {
        EXPECT_EQ(Post(std::string("/api/v1/uploads?name=") + name, "x").status, 400U) << name;
    }
    EXPECT_EQ(Post("/api/v1/uploads?name=" + std::string(201, 'a'), "x").status, 400U);
    EXPECT_EQ(Post("/api/v1/uploads", "x").status, 400U);
    EXPECT_EQ(StoredFiles(), 0U);
}

} // namespace
