#include "ui/skin_pack.h"

#include <gtest/gtest.h>

#include <string>

namespace tunovka {
namespace {

using Pixels = std::vector<std::uint32_t>;

void put(std::string& bytes, std::uint32_t number, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i));
}

// A pack with one picture, "play1", of 3 x 2 pixels: four of one colour, then two others.
std::string smallPack() {
    std::string runs;
    put(runs, 127 + 4, 1);
    put(runs, 0xFF102030, 4);
    put(runs, 1, 1);
    put(runs, 0x80000040, 4);
    put(runs, 0, 4);

    std::string bytes = "TSKN";
    put(bytes, 1, 2);
    put(bytes, 1, 2);
    bytes += "play1" + std::string(11, '\0');
    for (const int number : {3, 2, 1, 0, 1, 1}) put(bytes, static_cast<std::uint32_t>(number), 2);
    put(bytes, 8 + 36, 4);
    put(bytes, static_cast<std::uint32_t>(runs.size()), 4);
    return bytes + runs;
}

PictureTable read(const std::string& bytes) {
    // A copy of the exact size, so that the sanitizer sees a read past the end.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    return readSkinPack(std::as_bytes(std::span(exact)));
}

TEST(SkinPack, BadBytesGiveAnEmptyTable) {
    const std::string good = smallPack();
    for (std::size_t length = 0; length < good.size(); ++length) {
        EXPECT_TRUE(read(good.substr(0, length)).empty()) << "cut to " << length;
    }
    const auto broken = [&](std::size_t at, char value) {
        std::string bytes = good;
        bytes[at] = value;
        return read(bytes);
    };
    EXPECT_TRUE(broken(0, 'X').empty()) << "no magic";
    EXPECT_TRUE(broken(4, 2).empty()) << "unknown version";
    EXPECT_TRUE(broken(6, 2).empty()) << "more pictures than entries";
    EXPECT_TRUE(broken(24, 0).empty()) << "no width";
    EXPECT_TRUE(broken(24, 2).empty()) << "more pixels than the picture takes";
    EXPECT_TRUE(broken(24, 4).empty()) << "fewer pixels than the picture takes";
    EXPECT_TRUE(broken(25, 0x7F).empty()) << "a giant without pixels";
    EXPECT_TRUE(broken(28, 2).empty()) << "borders without a middle";
    EXPECT_TRUE(broken(39, 0x7F).empty()) << "runs beyond the end";
    EXPECT_TRUE(broken(43, 0x7F).empty()) << "runs too long";
    EXPECT_TRUE(broken(44, static_cast<char>(255)).empty()) << "a run over the picture's end";
    EXPECT_EQ(broken(8, 'P').count(L"Play1"), 1u) << "a key is only a name";
}

}  // namespace
}  // namespace tunovka
