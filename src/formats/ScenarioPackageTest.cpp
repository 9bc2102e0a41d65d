#include "formats/ScenarioPackage.h"

#include <fstream>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/ZipWriter.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

using test_support::MakeZip;
using test_support::ZipEnd;
using test_support::ZipEntry;

namespace {

constexpr std::size_t largeEnough = 1 << 20;
constexpr std::uint32_t unixMode = 16;

ZipEntry File(const std::string& name, const std::string& content = "content") {
    ZipEntry entry;
    entry.name = name;
    entry.content = content;
    return entry;
}

ZipEntry Directory(const std::string& name) {
    ZipEntry entry = File(name, "");
    entry.deflated = false;
    return entry;
}

/// A file with one thing changed.
ZipEntry FileWith(const std::function<void(ZipEntry&)>& change) {
    ZipEntry entry = File("a.txt");
    change(entry);
    return entry;
}

ZipEnd EndWith(const std::function<void(ZipEnd&)>& change) {
    ZipEnd end;
    change(end);
    return end;
}

std::string Bytes(const std::u8string& text) {
    return {text.begin(), text.end()};
}

class PackageDirectory {
public:
    bool Unpack(const std::string& archive) {
        WriteTextFile(package, archive);
        return scenario_package::Unpack(package, target, problem);
    }

    bool ReadEntry(const std::string& archive, const std::string& name, std::size_t limit = largeEnough) {
        WriteTextFile(package, archive);
        scenario_package::Package opened;
        return opened.Open(package, problem) && opened.ReadEntry(name, limit, bytes, problem);
    }

    std::string Unpacked(const std::wstring& name) const { return ReadTextFile(target + L"\\" + name); }

    const TemporaryDirectory directory;
    const std::wstring target = directory / L"unpacked";
    const std::wstring package = directory / L"scenario.esa";
    std::string bytes = "as before";
    std::wstring problem;
};

struct Refused {
    std::string name;
    std::string archive;
    std::wstring problem;
};

std::ostream& operator<<(std::ostream& stream, const Refused& refused) {
    return stream << refused.name;
}

class ScenarioPackageTest_Refused : public testing::TestWithParam<Refused> {};

std::string TestName(const testing::TestParamInfo<Refused>& info) {
    return info.param.name;
}

ZipEntry Truthless(std::uint32_t size) {
    return FileWith([size](ZipEntry& entry) { entry.size = size; });
}

std::string ManyEntries(std::size_t count) {
    std::vector<ZipEntry> entries;
    for (std::size_t index = 0; index < count; ++index) {
        entries.push_back(Directory(std::to_string(index) + "/"));
    }
    return MakeZip(entries);
}

std::vector<Refused> BadNames() {
    const auto named = [](const std::string& name) { return MakeZip({File(name)}); };
    const std::string deep = [] {
        std::string name;
        for (int level = 0; level < 33; ++level) {
            name += "d/";
        }
        return name + "a.txt";
    }();
    return {
        {"EmptyName", named(""), L"has no name"},
        {"AbsoluteName", named("/etc/passwd"), L"the entry \"/etc/passwd\" has an absolute name"},
        {"ServerName", named("//server/share/a"), L"has an absolute name"},
        {"Drive", named("C:/a.txt"), L"has a name with a colon"},
        {"DriveRelative", named("C:a.txt"), L"has a name with a colon"},
        {"Stream", named("a.txt:hidden"), L"has a name with a colon"},
        {"Backslash", named("a\\b.txt"), L"has a name with a backslash"},
        {"Parent", named("../a.txt"), L"has a name with the part \"..\""},
        {"ParentInside", named("a/../../b.txt"), L"has a name with the part \"..\""},
        {"ParentFolder", MakeZip({Directory("../")}), L"has a name with the part \"..\""},
        {"Dot", named("./a.txt"), L"has a name with the part \".\""},
        {"DoubledSlash", named("a//b.txt"), L"has a name with an empty part"},
        {"ZeroCharacter", named(std::string("a\0.txt", 6)), L"has a name with a control character"},
        {"LineBreak", named("a\nb"), L"has a name with a control character"},
        {"Question", named("a?.txt"), L"a character that Windows does not allow"},
        {"NotUtf8", named("a\xff.txt"), L"has a name that is not UTF-8"},
        {"OverlongUtf8", named("a\xc0\xae.txt"), L"has a name that is not UTF-8"},
        {"DotAtEnd", named("a./b.txt"), L"has a name with a part that ends in a dot or blank"},
        {"BlankAtEnd", named("a.txt "), L"has a name with a part that ends in a dot or blank"},
        {"Device", named("bin/CON"), L"has a name that means a device on Windows"},
        {"DeviceWithExtension", named("nul.tar.gz"), L"has a name that means a device on Windows"},
        {"NumberedDevice", named("com1.txt"), L"has a name that means a device on Windows"},
        {"SuperscriptDevice", named(Bytes(u8"lpt\u00b2")), L"has a name that means a device on Windows"},
        {"LongPart", named(std::string(256, 'a')), L"a part of more than 255 characters"},
        {"LongName", named(std::string(200, 'a') + "/" + std::string(900, 'b')), L"more than 1024 bytes"},
        {"Deep", named(deep), L"lies more than 32 folders deep"},
        {"Twice", MakeZip({File("a.txt"), File("a.txt")}), L"appears twice"},
        {"FolderTwice", MakeZip({Directory("a/"), Directory("a/")}), L"appears twice"},
        {"TwiceButForCase", MakeZip({File("a.txt"), File("A.TXT")}), L"differs from \"a.txt\" in case only"},
        {"FoldersButForCase", MakeZip({File("a/x"), File("A/y")}), L"folder that differs from \"a\" in case only"},
        {"FileAndFolder", MakeZip({File("a"), Directory("a/")}), L"is both a file and a folder"},
        {"BelowAFile", MakeZip({File("a"), File("a/b")}), L"lies below \"a\", which is a file"},
        {"FileOverFolder", MakeZip({File("a/b"), File("a")}), L"is both a file and a folder"},
    };
}

std::vector<Refused> BadEntries() {
    const auto with = [](const std::function<void(ZipEntry&)>& change) { return MakeZip({FileWith(change)}); };
    const auto mode = [&with](std::uint32_t bits) {
        return with([bits](ZipEntry& entry) { entry.externalAttributes = bits << unixMode; });
    };
    return {
        {"Encrypted", with([](ZipEntry& entry) { entry.flags = 1; }), L"the entry \"a.txt\" is encrypted"},
        {"StronglyEncrypted", with([](ZipEntry& entry) { entry.flags = 0x41; }), L"is encrypted"},
        {"MaskedDirectory", with([](ZipEntry& entry) { entry.flags = 0x2000; }), L"is encrypted"},
        {"PatchedData", with([](ZipEntry& entry) { entry.flags = 0x20; }), L"a feature of the ZIP format"},
        {"OtherMethod", with([](ZipEntry& entry) { entry.method = std::uint16_t{12}; }),
         L"is compressed with method 12"},
        {"Link", mode(0120777), L"is a link"},
        {"ReparsePoint", with([](ZipEntry& entry) { entry.externalAttributes = 0x400; }), L"is a link"},
        {"Device", mode(0020666), L"is neither a file nor a folder"},
        {"Pipe", mode(0010666), L"is neither a file nor a folder"},
        {"FolderNamedAsFile", mode(0040755), L"is said to be both a file and a folder"},
        {"FolderWithContent", MakeZip({File("a/")}), L"is a folder with content"},
        {"OtherDisk", with([](ZipEntry& entry) { entry.diskNumber = std::uint16_t{1}; }),
         L"stands in another part of the archive"},
        {"Zip64Size", with([](ZipEntry& entry) { entry.size = 0xffffffffu; }), L"has ZIP64 sizes"},
        {"Zip64Field", with([](ZipEntry& entry) { entry.extraField = std::string("\1\0\0\0", 4); }),
         L"has ZIP64 sizes"},
        {"ExtraFieldCutOff", with([](ZipEntry& entry) { entry.extraField = std::string("\7\0\11\0", 4); }),
         L"is cut off"},
        {"StoredWithTwoSizes", with([](ZipEntry& entry) {
             entry.deflated = false;
             entry.size = 100;
         }),
         L"is stored with two different sizes"},
        {"LocalName", with([](ZipEntry& entry) { entry.localName = "b.txt"; }),
         L"has a local header with another name"},
        {"LocalMethod", with([](ZipEntry& entry) { entry.localMethod = std::uint16_t{0}; }),
         L"has a local header of another kind"},
        {"LocalFlags", with([](ZipEntry& entry) { entry.localFlags = std::uint16_t{0}; }),
         L"has a local header of another kind"},
        {"LocalSize", with([](ZipEntry& entry) { entry.localSize = 8; }), L"has a local header with other sizes"},
        {"LocalCrc", with([](ZipEntry& entry) { entry.localCrc = 8; }), L"has a local header with other sizes"},
        {"OpenWithoutDescriptor", with([](ZipEntry& entry) {
             entry.localCrc = 0;
             entry.localSize = 0;
             entry.localCompressedSize = 0;
         }),
         L"has a local header with other sizes"},
        {"NoLocalHeader", with([](ZipEntry& entry) { entry.localOffset = 1; }), L"has no local header"},
        {"BeyondTheEnd", with([](ZipEntry& entry) { entry.localOffset = 0x7fffffff; }), L"is cut off"},
        {"ReachesIntoDirectory", with([](ZipEntry& entry) { entry.compressedSize = 1000; }),
         L"reaches into the directory"},
        {"Overlap",
         MakeZip({File("a"),
                  [] {
                      ZipEntry entry = File("b");
                      entry.localOffset = 0;
                      return entry;
                  }()}),
         L"overlaps another entry"},
    };
}

std::vector<Refused> BadData() {
    const auto with = [](const std::function<void(ZipEntry&)>& change) { return MakeZip({FileWith(change)}); };
    return {
        {"WrongChecksum", with([](ZipEntry& entry) { entry.crc = 1; }), L"its checksum is wrong"},
        {"WrongSizeBeforeADescriptor", with([](ZipEntry& entry) {
             entry.dataDescriptor = true;
             entry.localSize = 1;
         }),
         L"has a local header with other sizes or another checksum than the directory says"},
        {"WrongDescriptor", with([](ZipEntry& entry) {
             entry.dataDescriptor = true;
             entry.crc = 1;
         }),
         L"its checksum is wrong"},
        {"MoreThanItSays", MakeZip({Truthless(3)}), L"holds more than it says"},
        {"LessThanItSays", MakeZip({Truthless(9)}), L"holds less than it says"},
        {"NotDeflated", with([](ZipEntry& entry) { entry.rawData = "\xff\xff\xff\xff"; }), L"cannot be inflated"},
        {"DataCutOff", with([](ZipEntry& entry) {
             entry.content = std::string(1000, 'a');
             entry.rawData = "\x4b";
         }),
         L"its data end too early"},
        {"SomethingAfterData", with([](ZipEntry& entry) { entry.rawData = std::string("\3\0abc", 5); }),
         L"something follows its data"},
    };
}

std::vector<Refused> BadArchives() {
    const auto ending = [](const std::function<void(ZipEnd&)>& change) {
        return MakeZip({File("a.txt")}, EndWith(change));
    };
    const std::string good = MakeZip({File("a.txt")});
    return {
        {"EmptyFile", "", L"is not a ZIP file, or is cut off"},
        {"Text", "this is a text and not an archive at all", L"is not a ZIP file, or is cut off"},
        {"CutOff", good.substr(0, good.size() - 1), L"is not a ZIP file, or is cut off"},
        {"SomethingBehind", good + "x", L"is not a ZIP file, or is cut off"},
        {"SomethingInFront", "x" + good, L"has a directory that is not where its end record says"},
        {"WrongComment", ending([](ZipEnd& end) { end.commentLength = std::uint16_t{3}; }), L"is not a ZIP file"},
        {"SeveralDisks", ending([](ZipEnd& end) { end.diskNumber = 1; }), L"is one part of an archive of several"},
        {"EntriesOnOtherDisks", ending([](ZipEnd& end) { end.entryCountOfThisDisk = std::uint16_t{0}; }),
         L"is one part of an archive of several"},
        {"MoreEntriesSaid", ending([](ZipEnd& end) { end.entryCount = std::uint16_t{2}; }),
         L"has not as many entries as its end record says"},
        {"FewerEntriesSaid", ending([](ZipEnd& end) { end.entryCount = std::uint16_t{0}; }),
         L"has not as many entries as its end record says"},
        {"DirectoryElsewhere", ending([](ZipEnd& end) { end.directoryOffset = 1; }), L"has a directory that is not"},
        {"DirectoryBeyondEnd", ending([](ZipEnd& end) { end.directorySize = 0x7fffffff; }),
         L"has a directory that is not"},
        {"Zip64", ending([](ZipEnd& end) { end.beforeEndRecord = "PK\6\7" + std::string(16, '\0'); }),
         L"is a ZIP64 archive"},
        {"TooManyEntries", ManyEntries(10001), L"has more than 10,000 entries"},
        {"TooMuchContent", MakeZip({Truthless(0x20000000), FileWith([](ZipEntry& entry) {
                                        entry.name = "b.txt";
                                        entry.size = 0x20000001;
                                    })}),
         L"holds more than 1 GiB when unpacked"},
        {"TooHighARatio", MakeZip({File("zeros", std::string(2 << 20, '\0'))}),
         L"the entry \"zeros\" grows to more than 1000 times its packed size"},
    };
}

} // namespace

TEST_P(ScenarioPackageTest_Refused, LeavesNothingBehind) {
    PackageDirectory directory;
    EXPECT_FALSE(directory.Unpack(GetParam().archive));
    EXPECT_NE(directory.problem.find(GetParam().problem), std::wstring::npos) << text::ToUtf8(directory.problem);
    EXPECT_NE(directory.problem.find(L"scenario.esa"), std::wstring::npos) << text::ToUtf8(directory.problem);
    EXPECT_FALSE(platform::Exists(directory.target));
}

INSTANTIATE_TEST_SUITE_P(Names, ScenarioPackageTest_Refused, testing::ValuesIn(BadNames()), TestName);
INSTANTIATE_TEST_SUITE_P(Entries, ScenarioPackageTest_Refused, testing::ValuesIn(BadEntries()), TestName);
INSTANTIATE_TEST_SUITE_P(Data, ScenarioPackageTest_Refused, testing::ValuesIn(BadData()), TestName);
INSTANTIATE_TEST_SUITE_P(Archives, ScenarioPackageTest_Refused, testing::ValuesIn(BadArchives()), TestName);

TEST(ScenarioPackageTest, UnpacksFilesAndDirectories) {
    PackageDirectory directory;
    ZipEntry stored = File("bin/tool", "tool");
    stored.deflated = false;
    ZipEntry streamed = File("streamed.txt", std::string(300000, 'x'));
    streamed.dataDescriptor = true;
    ASSERT_TRUE(directory.Unpack(
        MakeZip({Directory("bin/"), stored, Directory("empty/"), File("a/b/c.txt", "deep"), streamed})))
        << text::ToUtf8(directory.problem);
    EXPECT_EQ(directory.Unpacked(L"bin\\tool"), "tool");
    EXPECT_EQ(directory.Unpacked(L"a\\b\\c.txt"), "deep");
    EXPECT_EQ(directory.Unpacked(L"streamed.txt"), std::string(300000, 'x'));
    EXPECT_TRUE(platform::IsDirectory(directory.target + L"\\empty"));
}

TEST(ScenarioPackageTest, AcceptsWhatOtherToolsWrite) {
    PackageDirectory directory;
    ZipEntry unixFile = File("main.rb");
    unixFile.versionMadeBy = 3 << 8 | 30;
    unixFile.externalAttributes = 0100644u << unixMode;
    unixFile.extraField = std::string("UT\5\0\3\0\0\0\0", 9);
    ZipEntry unixDirectory = Directory("lib/");
    unixDirectory.externalAttributes = (0040755u << unixMode) | 0x10;
    ZipEntry withoutUtf8Flag = File(Bytes(u8"gr\u00fc\u00dfe.txt"));
    withoutUtf8Flag.flags = 0;
    ASSERT_TRUE(
        directory.Unpack(MakeZip({unixFile, unixDirectory, withoutUtf8Flag}, {.comment = "made by a tool PK\5\6"})))
        << text::ToUtf8(directory.problem);
    EXPECT_EQ(directory.Unpacked(L"gr\u00fc\u00dfe.txt"), "content");
}

/// A tool that knows the size of a file in advance writes it into the local header, and only the rest into the data
/// descriptor.
TEST(ScenarioPackageTest, AcceptsALocalHeaderThatLeavesSomeFactsToTheDescriptor) {
    PackageDirectory directory;
    ZipEntry partly = File("main.rb", "puts 1");
    partly.dataDescriptor = true;
    partly.localSize = 6;
    ASSERT_TRUE(directory.Unpack(MakeZip({partly}))) << text::ToUtf8(directory.problem);
    EXPECT_EQ(directory.Unpacked(L"main.rb"), "puts 1");
}

TEST(ScenarioPackageTest, AcceptsAnEmptyArchive) {
    PackageDirectory directory;
    EXPECT_TRUE(directory.Unpack(MakeZip({})));
    EXPECT_TRUE(platform::IsDirectory(directory.target));
}

TEST(ScenarioPackageTest, AcceptsTenThousandEntries) {
    PackageDirectory directory;
    EXPECT_FALSE(directory.ReadEntry(ManyEntries(10000), "manifest.json"));
    EXPECT_NE(directory.problem.find(L"has no file \"manifest.json\""), std::wstring::npos);
}

TEST(ScenarioPackageTest, RefusesAnArchiveOfMoreThan512MiB) {
    PackageDirectory directory;
    std::ofstream(text::ToUtf8(platform::ToNativeText(directory.package)), std::ios::binary).seekp(512 << 20).put('x');
    EXPECT_FALSE(scenario_package::Unpack(directory.package, directory.target, directory.problem));
    EXPECT_NE(directory.problem.find(L"is larger than 512 MiB"), std::wstring::npos);
}

TEST(ScenarioPackageTest, RefusesADirectoryThatExists) {
    PackageDirectory directory;
    WriteTextFile(directory.target + L"\\mine.txt", "mine");
    EXPECT_FALSE(directory.Unpack(MakeZip({File("a.txt")})));
    EXPECT_NE(directory.problem.find(L"cannot create"), std::wstring::npos) << text::ToUtf8(directory.problem);
    EXPECT_EQ(directory.Unpacked(L"mine.txt"), "mine");
    EXPECT_FALSE(platform::Exists(directory.target + L"\\a.txt"));
}

TEST(ScenarioPackageTest, RefusesAMissingPackage) {
    PackageDirectory directory;
    EXPECT_FALSE(scenario_package::Unpack(directory.directory / L"none.esa", directory.target, directory.problem));
    EXPECT_NE(directory.problem.find(L"cannot be opened"), std::wstring::npos);
    EXPECT_FALSE(scenario_package::Unpack(directory.directory.Path(), directory.target, directory.problem));
}

TEST(ScenarioPackageTest, RemovesWhatItMadeWhenALaterEntryIsDamaged) {
    PackageDirectory directory;
    EXPECT_FALSE(directory.Unpack(MakeZip({File("a.txt"), File("d/b.txt"), FileWith([](ZipEntry& entry) {
                                               entry.name = "c.txt";
                                               entry.crc = 1;
                                           })})));
    EXPECT_FALSE(platform::Exists(directory.target));
}

TEST(ScenarioPackageTest, ReadsOneEntry) {
    PackageDirectory directory;
    EXPECT_TRUE(directory.ReadEntry(MakeZip({File("a.txt", "first"), File("manifest.json", "{}")}), "manifest.json"));
    EXPECT_EQ(directory.bytes, "{}");
}

TEST(ScenarioPackageTest, RefusesAnEntryThatIsMissingOrTooLarge) {
    PackageDirectory directory;
    EXPECT_FALSE(directory.ReadEntry(MakeZip({Directory("manifest.json/")}), "manifest.json"));
    EXPECT_NE(directory.problem.find(L"has no file \"manifest.json\""), std::wstring::npos);
    EXPECT_FALSE(directory.ReadEntry(MakeZip({File("manifest.json", "12345")}), "manifest.json", 4));
    EXPECT_NE(directory.problem.find(L"is larger than 4 bytes"), std::wstring::npos);
    EXPECT_EQ(directory.bytes, "as before");
}

TEST(ScenarioPackageTest, ReadsAnEntryOfExactlyTheLimit) {
    PackageDirectory directory;
    EXPECT_TRUE(directory.ReadEntry(MakeZip({File("manifest.json", "1234")}), "manifest.json", 4));
    EXPECT_EQ(directory.bytes, "1234");
}
