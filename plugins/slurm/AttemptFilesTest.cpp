#include "slurm/AttemptFiles.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"

namespace {

using slurm::AttemptFiles;
using slurm::NodeEnd;

class AttemptFilesTest : public testing::Test {
protected:
    const TemporaryDirectory directory;
    const AttemptFiles first{directory.Path(), L"controller-1"};
    const AttemptFiles second{directory.Path(), L"controller-2"};
};

} // namespace

TEST_F(AttemptFilesTest, NothingIsReadBeforeItIsWritten) {
    EXPECT_FALSE(first.ReadLease());
    EXPECT_EQ(first.ReadBeat(), "");
    EXPECT_FALSE(first.ReadEnd());
    EXPECT_TRUE(first.OthersWithoutEnd().empty());
}

TEST_F(AttemptFilesTest, TheLeaseBelongsToWhoWroteItLastAndChanges) {
    ASSERT_TRUE(first.WriteLease(1));
    ASSERT_TRUE(second.WriteLease(0));
    const auto before = first.ReadLease();
    ASSERT_TRUE(before);
    EXPECT_EQ(before->name, L"controller-2");
    ASSERT_TRUE(second.WriteLease(1));
    EXPECT_NE(first.ReadLease()->content, before->content);
}

TEST_F(AttemptFilesTest, AnEndIsReadAsItWasWritten) {
    for (const NodeEnd& end : {NodeEnd{0, true}, NodeEnd{137, true}, NodeEnd{0, false}}) {
        ASSERT_TRUE(first.WriteEnd(end));
        EXPECT_EQ(first.ReadEnd(), end);
    }
}

TEST_F(AttemptFilesTest, ADamagedEndIsNone) {
    for (const char* const text : {"", "0", "0 whole", "x whole\n", "0 whole\n\n", "99999999999 whole\n"}) {
        WriteTextFile(directory / L"slurm_end-controller-1", text);
        EXPECT_FALSE(first.ReadEnd()) << text;
    }
}

TEST_F(AttemptFilesTest, AnAttemptThatBeganWithoutAnEndIsFoundByTheNext) {
    ASSERT_TRUE(first.WriteBeat(3));
    ASSERT_TRUE(second.WriteBeat(0));
    EXPECT_EQ(second.OthersWithoutEnd(), std::vector<std::wstring>{L"controller-1"});
    ASSERT_TRUE(first.WriteEnd({}));
    EXPECT_TRUE(second.OthersWithoutEnd().empty());
    second.RemoveOthers();
    EXPECT_EQ(first.ReadBeat(), "");
    EXPECT_FALSE(first.ReadEnd());
    EXPECT_EQ(second.ReadBeat(), "0\n");
}

TEST_F(AttemptFilesTest, ARemovedWorkDirectoryIsNotMadeAgain) {
    const AttemptFiles gone(directory / L"gone", L"controller-1");
    EXPECT_FALSE(gone.WriteLease(0));
    EXPECT_FALSE(gone.WriteEnd({}));
    EXPECT_FALSE(platform::Exists(directory / L"gone"));
}
