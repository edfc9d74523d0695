#include <gtest/gtest.h>

#include "core/errors.h"
#include "core/id3v1.h"
#include "core/multimedialny.h"

namespace tunovka::MultiMedialny {
namespace {

TEST(MediaKinds, playableMediaIsToldByThreeLetters) {
    EXPECT_TRUE(IsPlayableMedia(L"a.mp3"));
    EXPECT_TRUE(IsPlayableMedia(L"xmp3"));
    EXPECT_TRUE(IsPlayableMedia(L"C:\\x\\a.wma"));
    EXPECT_FALSE(IsPlayableMedia(L"A.MP3"));
    EXPECT_FALSE(IsPlayableMedia(L"mp"));
    EXPECT_FALSE(IsPlayableMedia(L""));
}

TEST(MediaKinds, playlistNamesNeedTheDot) {
    EXPECT_TRUE(isPlaylistName(L"list.m3u"));
    EXPECT_TRUE(isPlaylistName(L"list.asx"));
    EXPECT_FALSE(isPlaylistName(L"list.m3u8"));
    EXPECT_FALSE(isPlaylistName(L"listm3u"));
    EXPECT_FALSE(isPlaylistName(L"list.M3U"));
}

TEST(MediaKinds, tablesAreFilledOnce) {
    InitSharedTables();
    InitSharedTables();
    ASSERT_EQ(iconKeyRows().size(), 6u);
    EXPECT_EQ(iconKeyRows()[3], (std::pair<std::wstring, std::wstring>{L"pls", L"winamp10"}));
    EXPECT_EQ(IconKeyByExtension(mediaKind(L"a.wma")), L"winamp4");
    EXPECT_THROW(IconKeyByExtension(L"MP3"), RuntimeError);
    EXPECT_EQ(palette().FormBackColor, 0xDE9957u);
    EXPECT_EQ(palette().AuxColor1, rgb(204, 207, 249));
}

std::wstring latin1(std::string_view bytes) {
    std::wstring text;
    for (const unsigned char byte : bytes) text += static_cast<wchar_t>(byte);
    return text;
}

std::string field(std::string text, std::size_t width) {
    text.resize(width, '\0');
    return text;
}

TEST(Id3v1, readsTheLast128Bytes) {
    const std::string tag = "TAG" + field("Titul \xE1  ", 30) + field("Autor", 30) +
                            field(std::string(30, 'x'), 30) + field("99", 4) +
                            field("Pozn\0mka", 30) + "\x11";
    ASSERT_EQ(tag.size(), kId3v1Size);
    for (const std::string& file : {tag, "frames" + tag}) {
        const auto bytes = parseId3v1(file);
        ASSERT_TRUE(bytes);
        const Id3v1Tag text = id3v1Text(*bytes, latin1);
        EXPECT_EQ(text.Title.size(), 30u);
        EXPECT_EQ(shownField(text.Title), L"Titul \u00E1");
        EXPECT_EQ(shownField(text.Artist), L"Autor");
        EXPECT_EQ(text.Album, std::wstring(30, L'x'));
        EXPECT_EQ(text.Year, std::wstring(L"99\0\0", 4));
        EXPECT_EQ(shownField(text.Comment), L"Pozn");
    }
}

TEST(Id3v1, fieldsKeepTheirWidthInADoubleByteCodePage) {
    const std::string tag = "TAG" + std::string(125, 'a');
    const Id3v1Tag text = id3v1Text(
        *parseId3v1(tag), [](std::string_view raw) { return std::wstring(raw.size() / 2, L'字'); });
    EXPECT_EQ(text.Year, std::wstring(L"字字\0\0", 4));
}

TEST(Id3v1, givesNothingWithoutTheMarker) {
    EXPECT_FALSE(parseId3v1(""));
    EXPECT_FALSE(parseId3v1("TAG" + std::string(124, ' ')));
    EXPECT_FALSE(parseId3v1("tag" + std::string(125, ' ')));
    EXPECT_FALSE(parseId3v1("TAG" + std::string(126, ' ')));  // one byte too far from the end
    EXPECT_EQ(Id3v1Tag().Comment, std::wstring(30, L'\0'));
}

}  // namespace
}  // namespace tunovka::MultiMedialny
