#include "platform/system/Sha256.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring HashOf(const std::string& bytes, std::size_t part) {
    platform::Sha256 hash;
    for (std::size_t begin = 0; begin < bytes.size(); begin += part) {
        hash.Add(std::string_view(bytes).substr(begin, part));
    }
    return hash.Finish();
}

} // namespace

/// The examples of the standard (FIPS 180-4).
TEST(Sha256Test, TheExamplesOfTheStandard) {
    EXPECT_EQ(HashOf("", 1), L"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(HashOf("abc", 3), L"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(HashOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 56),
              L"248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(HashOf(std::string(1'000'000, 'a'), 1'000'000),
              L"cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256Test, TheDivisionOfTheBytesDoesNotMatter) {
    std::string bytes;
    for (int number = 0; number < 1000; ++number) {
        bytes += static_cast<char>(number * 7);
    }
    const std::wstring whole = HashOf(bytes, bytes.size());
    for (const std::size_t part : {1U, 63U, 64U, 65U, 999U}) {
        EXPECT_EQ(HashOf(bytes, part), whole) << part;
    }
}
