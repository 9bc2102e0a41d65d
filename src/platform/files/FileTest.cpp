#include "platform/files/File.h"

#include <string>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"

namespace {

std::string BytesAt(const platform::File& file, std::uint64_t offset, std::size_t capacity) {
    std::string bytes(capacity, '?');
    std::size_t count = 0;
    EXPECT_FALSE(file.ReadAt(offset, bytes.data(), capacity, count));
    return bytes.substr(0, count);
}

} // namespace

TEST(FileTest, ReadsAtAnyPlace) {
    const TemporaryDirectory directory;
    WriteTextFile(directory / L"a.txt", "0123456789");
    platform::File file;
    ASSERT_FALSE(file.OpenForReading(directory / L"a.txt"));
    EXPECT_EQ(BytesAt(file, 7, 2), "78");
    EXPECT_EQ(BytesAt(file, 0, 3), "012");
    EXPECT_EQ(BytesAt(file, 8, 100), "89");
    EXPECT_EQ(BytesAt(file, 10, 1), "");
    EXPECT_EQ(BytesAt(file, std::uint64_t{1} << 40, 1), "");
}

TEST(FileTest, MakesAFileExecutableAndLeavesItsContentAlone) {
    const TemporaryDirectory directory;
    platform::File file;
    ASSERT_FALSE(file.CreateNew(directory / L"tool", {}));
    EXPECT_FALSE(file.Write("#!/bin/sh\n"));
    EXPECT_FALSE(file.MakeExecutable());
    file.Close();
    EXPECT_EQ(ReadTextFile(directory / L"tool"), "#!/bin/sh\n");
}
