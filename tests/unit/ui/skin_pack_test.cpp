#include "ui/skin_pack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
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

Picture checkerboard(int width, int height, std::uint32_t one, std::uint32_t other) {
    Picture picture{width, height, {}, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) picture.pixels.push_back((x + y) % 2 ? other : one);
    }
    return picture;
}

TEST(SkinPack, ReadsKeysSizesBordersAndPixels) {
    const PictureTable table = read(smallPack());
    ASSERT_EQ(table.size(), 1u);
    const Picture& picture = table.at(L"play1");
    EXPECT_EQ(picture.width, 3);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.borders.left, 1);
    EXPECT_EQ(picture.borders.top, 0);
    EXPECT_EQ(picture.borders.right, 1);
    EXPECT_EQ(picture.borders.bottom, 1);
    EXPECT_EQ(picture.pixels,
              (Pixels{0xFF102030, 0xFF102030, 0xFF102030, 0xFF102030, 0x80000040, 0}));
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

#ifdef TUNOVKA_SKIN_FILE
TEST(SkinPack, ThePackedSkinIsReadWhole) {
    std::ifstream file(TUNOVKA_SKIN_FILE, std::ios::binary);
    const PictureTable table =
        read(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
    for (const wchar_t* pair : {L"zavri", L"minimize", L"buton", L"istop", L"play", L"stop",
                                L"pause", L"prev", L"next", L"hornyhore", L"hornydole"}) {
        const std::wstring key = pair;
        ASSERT_TRUE(table.contains(key + L"1")) << std::string(key.begin(), key.end());
        ASSERT_TRUE(table.contains(key + L"2")) << std::string(key.begin(), key.end());
        const Picture& one = table.at(key + L"1");
        const Picture& other = table.at(key + L"2");
        EXPECT_EQ(one.width, other.width);
        EXPECT_EQ(one.height, other.height);
        // The pressed look is the darker one, whatever its number.
        const auto brightness = [](const Picture& picture) {
            std::uint64_t sum = 0;
            for (const std::uint32_t pixel : picture.pixels) sum += (pixel >> 8) & 255;
            return sum;
        };
        const bool pressedFirst =
            key == L"stop" || key == L"pause" || key == L"prev" || key == L"next";
        EXPECT_EQ(brightness(one) < brightness(other), pressedFirst)
            << std::string(key.begin(), key.end());
    }
    for (const wchar_t* key :
         {L"zahlavie", L"posuv1", L"logo", L"adresar1", L"adresar2", L"winamp1", L"winamp4",
          L"winamp5", L"winamp6", L"winamp10", L"winamp12"}) {
        EXPECT_TRUE(table.contains(key));
    }
    // Colours multiplied by alpha are never above it.
    for (const auto& [key, picture] : table) {
        for (const std::uint32_t pixel : picture.pixels) {
            const std::uint32_t alpha = pixel >> 24;
            ASSERT_LE(std::max({pixel & 255, (pixel >> 8) & 255, (pixel >> 16) & 255}), alpha);
        }
    }
}
#endif

TEST(ScaledPicture, SizesRoundHalfUpAndNeverVanish) {
    Picture picture = checkerboard(35, 3, 0, 0);
    picture.borders = {12, 0, 5, 0};
    const Picture half = scaledPicture(picture, 96, 192);
    EXPECT_EQ(half.width, 18);
    EXPECT_EQ(half.height, 2);
    EXPECT_EQ(half.borders.left, 6);
    EXPECT_EQ(half.borders.right, 3);
    EXPECT_EQ(half.pixels.size(), 36u);
    EXPECT_EQ(scaledPicture(picture, 1, 1000).pixels.size(), 1u);
    EXPECT_EQ(scaledPicture(picture, 192, 192).pixels, picture.pixels);
}

TEST(ScaledPicture, ShrinkingAveragesAndGrowingBlends) {
    // Opaque white beside nothing: half covered, and the colour never above alpha.
    const Picture half = scaledPicture(checkerboard(4, 4, 0xFFFFFFFF, 0), 1, 2);
    EXPECT_EQ(half.pixels, Pixels(4, 0x80808080));

    // Three pixels into two: each takes one whole pixel and a half of the one between.
    const Picture row{3, 1, {}, {0xFF000000, 0xFF00005A, 0xFF0000FF}};
    EXPECT_EQ(scaledPicture(row, 2, 3).pixels, (Pixels{0xFF00001E, 0xFF0000C8}));

    const Picture pair{2, 1, {}, {0xFF000000, 0xFF000064}};
    const Picture twice = scaledPicture(pair, 2, 1);
    const Pixels line{0xFF000000, 0xFF000019, 0xFF00004B, 0xFF000064};
    EXPECT_TRUE(std::equal(line.begin(), line.end(), twice.pixels.begin()));
    EXPECT_EQ(twice.height, 2);
}

TEST(ScaledPicture, OneColourStaysThatColourAtEverySize) {
    const Picture flat = checkerboard(40, 40, 0xFE7F0301, 0xFE7F0301);
    for (const int dpi : {96, 120, 144, 168, 192, 240, 288, 384}) {
        const Picture scaled = scaledPicture(flat, dpi, 192);
        EXPECT_EQ(std::count(scaled.pixels.begin(), scaled.pixels.end(), 0xFE7F0301),
                  static_cast<std::ptrdiff_t>(scaled.pixels.size()))
            << dpi;
    }
}

TEST(StretchedPicture, KeepsTheBordersAndFillsTheMiddle) {
    const Picture button{4, 1, {1, 0, 1, 0}, {0xFF0000AA, 0xFF000010, 0xFF000010, 0xFF0000BB}};
    const Picture wide = stretchedPicture(button, 7, 2);
    const Pixels row{0xFF0000AA, 0xFF000010, 0xFF000010, 0xFF000010,
                     0xFF000010, 0xFF000010, 0xFF0000BB};
    EXPECT_TRUE(std::equal(row.begin(), row.end(), wide.pixels.begin()));
    EXPECT_TRUE(std::equal(row.begin(), row.end(), wide.pixels.begin() + 7));

    EXPECT_EQ(stretchedPicture(button, 2, 1).pixels, (Pixels{0xFF0000AA, 0xFF0000BB}));
    EXPECT_EQ(stretchedPicture(button, 1, 1).pixels.size(), 1u);
    EXPECT_EQ(stretchedPicture(button, 0, -3).pixels.size(), 1u);

    // All nine parts: the corners stand where they stood.
    Picture grid{3, 3, {1, 1, 1, 1}, {1, 2, 3, 4, 5, 6, 7, 8, 9}};
    EXPECT_EQ(stretchedPicture(grid, 4, 4).pixels,
              (Pixels{1, 2, 2, 3, 4, 5, 5, 6, 4, 5, 5, 6, 7, 8, 8, 9}));

    // Rounding while scaling can leave borders that meet or cross; the result still fills.
    grid.borders = {2, 2, 2, 2};
    EXPECT_EQ(stretchedPicture(grid, 6, 5).pixels.size(), 30u);
}

}  // namespace
}  // namespace tunovka
