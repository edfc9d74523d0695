#include <gtest/gtest.h>

#include "player/clip_details.h"

namespace tunovka {
namespace {

std::string id3v1(std::string title, std::string artist) {
    title.resize(30, '\0');
    artist.resize(30, ' ');
    return "TAG" + title + artist + std::string(65, 'x');
}

TEST(ClipDetails, comeFromTheTagElseFromTheList) {
    const auto widen = [](std::string_view bytes) {
        return std::wstring(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(id3v1Details("sound" + id3v1("Titul", "Autor"), widen),
              (ClipDetails{L"Titul", L"Autor"}));
    EXPECT_EQ(id3v1Details(id3v1("", "Autor"), widen).orElse({L"Zo zoznamu", L"Niekto"}),
              (ClipDetails{L"Zo zoznamu", L"Autor"}));
    EXPECT_EQ(id3v1Details(std::string(128, 'x'), widen), ClipDetails{});
    EXPECT_EQ(id3v1Details("TAG", widen), ClipDetails{});
}

TEST(ClipDetails, aListedTitleMayNameTheAuthor) {
    EXPECT_EQ(listedDetails(L" Autor - Titul - živo "), (ClipDetails{L"Titul - živo", L"Autor"}));
    EXPECT_EQ(listedDetails(L"Tam-a-späť"), (ClipDetails{L"Tam-a-späť", L""}));
    EXPECT_EQ(listedDetails(L""), ClipDetails{});
}

}  // namespace
}  // namespace tunovka
