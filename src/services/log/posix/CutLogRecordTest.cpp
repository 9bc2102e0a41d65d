#include "services/log/RotatingFile.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "kit/TemporaryDirectory.h"

namespace {

/// Limits the size of files of this process: like a full disk that cuts a write.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit = {bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before = {};
    void (*handler)(int) = nullptr;
};

TEST(CutLogRecordTest, ARecordThatWasCutDoesNotRunIntoTheNextOne) {
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"controller.log";
    log_file::RotatingFile file{log_file::RotationLimits{}};
    file.SetPath(path);
    file.Append("record one\n", 1);
    testing::internal::CaptureStderr();
    {
        const FileSizeLimit limit(14);
        file.Append("record two\n", 1);
        file.Append("record three\n", 2);
    }
    file.Append("record four\n", 2);
    testing::internal::GetCapturedStderr(); // it was cut as well
    EXPECT_EQ(ReadTextFile(path), "record one\nrec\n(Messages that could not be written here: 2)\nrecord four\n");
}

} // namespace
