#include "platform/system/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using platform::Error;
using platform::ErrorFromCode;
using platform::ErrorKind;

TEST(ErrorTest, SuccessIsTrue) {
    EXPECT_TRUE(Error{});
    EXPECT_TRUE(ErrorFromCode(0));
    EXPECT_FALSE((Error{ErrorKind::Other, 0}));
}

TEST(ErrorTest, SystemCodesHaveAKind) {
    const struct {
        int onLinux;
        int onWindows;
        ErrorKind kind;
    } table[] = {
        {2 /* ENOENT */, 2 /* ERROR_FILE_NOT_FOUND */, ErrorKind::NotFound},
        {20 /* ENOTDIR */, 3 /* ERROR_PATH_NOT_FOUND */, ErrorKind::NotFound},
        {13 /* EACCES */, 5 /* ERROR_ACCESS_DENIED */, ErrorKind::AccessDenied},
        {30 /* EROFS */, 19 /* ERROR_WRITE_PROTECT */, ErrorKind::AccessDenied},
        {17 /* EEXIST */, 183 /* ERROR_ALREADY_EXISTS */, ErrorKind::AlreadyExists},
        {16 /* EBUSY */, 32 /* ERROR_SHARING_VIOLATION */, ErrorKind::InUse},
        {28 /* ENOSPC */, 112 /* ERROR_DISK_FULL */, ErrorKind::NoSpace},
        {27 /* EFBIG */, 206 /* ERROR_FILENAME_EXCED_RANGE */, ErrorKind::TooLarge},
        {95 /* EOPNOTSUPP */, 50 /* ERROR_NOT_SUPPORTED */, ErrorKind::NotSupported},
        {24 /* EMFILE */, 4 /* ERROR_TOO_MANY_OPEN_FILES */, ErrorKind::TooManyOpen},
        {5 /* EIO */, 1117 /* ERROR_IO_DEVICE */, ErrorKind::Other},
    };
    for (const auto& row : table) {
        const int code = OnWindows() ? row.onWindows : row.onLinux;
        EXPECT_EQ(ErrorFromCode(code).kind, row.kind) << code;
        EXPECT_EQ(ErrorFromCode(code).systemCode, code);
    }
}

TEST(ErrorTest, TheTextIsTheSystemsOwnOnOneLine) {
    // The text differs between versions of Windows.
    EXPECT_THAT(ErrorFromCode(OnWindows() ? 112 : 28).Text(),
                testing::AnyOf(L"No space left on device", L"There is not enough space on the disk", L"Disk full"));
}

TEST(ErrorTest, TheTextIsNeverEmpty) {
    EXPECT_EQ(ErrorFromCode(987654).Text(), L"The operation failed (code 987654)");
    EXPECT_EQ(Error{}.Text(), L"No error");
    for (int kind = 0; kind <= static_cast<int>(ErrorKind::Other); ++kind) {
        EXPECT_FALSE((Error{static_cast<ErrorKind>(kind), 0}).Text().empty()) << kind;
    }
    EXPECT_EQ((Error{ErrorKind::NotAbsolute, 0}).Text(), L"The path is not absolute");
}

TEST(ErrorTest, AFailedCallLeavesItsCode) {
    const TemporaryDirectory directory;
    const Error result = platform::RemoveFile(directory / L"missing");
    EXPECT_EQ(result.kind, ErrorKind::NotFound);
    EXPECT_EQ(result.systemCode, 2);
}

} // namespace
