#include "controller_web/api/files/ZipStream.h"
#include "formats/zip/ZipArchive.h"
#include "kit/TemporaryDirectory.h"

#include <array>

#include <gtest/gtest.h>

namespace {

class ZipStreamTest : public testing::Test {
protected:
    /// The archive of all files in "out", read in blocks of this size.
    std::string Archived(std::size_t blockSize = 1000) {
        web::Listing listing;
        EXPECT_TRUE(web::ListFilesBelow(directory / L"out", listing));
        const auto reader = web::MakeZipStream(directory / L"out", listing.entries);
        EXPECT_EQ(reader->Size(), std::nullopt);
        std::string bytes;
        std::string block(blockSize, '\0');
        std::optional<std::size_t> count = reader->Read(block);
        for (; count.value_or(0) > 0; count = reader->Read(block)) {
            bytes.append(block, 0, *count);
        }
        EXPECT_EQ(count, std::optional<std::size_t>(0));
        return bytes;
    }

    /// The content of a file in an archive, which is checked as a whole.
    std::string ContentOf(const std::string& archive, const std::string& name) {
        WriteTextFile(directory / L"a.zip", archive);
        const zip::Archive read(directory / L"a.zip");
        const zip::Entry* const entry = read.Find(name);
        std::string content;
        EXPECT_NE(entry, nullptr) << name;
        if (entry != nullptr) {
            read.Read(*entry, [&](std::string_view piece) { content += piece; });
        }
        return content;
    }

    TemporaryDirectory directory;
};

TEST_F(ZipStreamTest, FilesComeBackAsTheyWere) {
    std::string large;
    for (int i = 0; i < 100'000; ++i) {
        large += std::to_string(i * 7919 % 100'003) + "\n";
    }
    WriteTextFile(directory / L"out\\large.txt", large);
    WriteTextFile(directory / L"out\\a\\b\\small.txt", "small");
    WriteTextFile(directory / L"out\\empty.txt", "");
    WriteTextFile(directory / L"out\\stra\u00dfe.txt", "name");
    for (const std::size_t blockSize : {1U, 7U, 100'000U}) {
        const std::string archive = Archived(blockSize);
        EXPECT_EQ(ContentOf(archive, "large.txt"), large);
        EXPECT_EQ(ContentOf(archive, "a/b/small.txt"), "small");
        EXPECT_EQ(ContentOf(archive, "empty.txt"), "");
        EXPECT_EQ(ContentOf(archive, "stra\xc3\x9f"
                                     "e.txt"),
                  "name");
    }
}

TEST_F(ZipStreamTest, NoFilesAreAnEmptyArchive) {
    WriteTextFile(directory / L"out\\x", "");
    const auto reader = web::MakeZipStream(directory / L"out", {});
    std::array<char, 100> block{};
    ASSERT_EQ(reader->Read(block), std::optional<std::size_t>(22));
    EXPECT_EQ(reader->Read(block), std::optional<std::size_t>(0));
    WriteTextFile(directory / L"a.zip", std::string_view(block.data(), 22));
    EXPECT_TRUE(zip::Archive(directory / L"a.zip").Entries().empty());
}

TEST_F(ZipStreamTest, AMissingFileIsAFailure) {
    const auto reader = web::MakeZipStream(directory.Path(), {{L"missing.txt"}});
    std::array<char, 100> block{};
    EXPECT_EQ(reader->Read(block), std::nullopt);
}

} // namespace
