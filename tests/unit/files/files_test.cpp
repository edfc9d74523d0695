#include <gtest/gtest.h>

#include "files/info_texts.h"
#include "files/transfer_rules.h"

namespace tunovka {
namespace {

TEST(Rename, cleansTheNameAndKeepsTheExtension) {
    EXPECT_EQ(newFileName(L"a:b", L"C:\\x.mp3"), L"a_b.mp3");
    EXPECT_EQ(newFileName(L"*?\\/:;\"<>|", L"C:\\x.mp3"), L"______\"<>|.mp3");
    EXPECT_EQ(newFileName(L"song", L"C:\\song.mp3"), L"song.mp3");
    EXPECT_EQ(newFileName(L"song.mp3", L"C:\\x.mp3"), L"song.mp3");
    EXPECT_EQ(newFileName(L"song.MP3", L"C:\\x.mp3"), L"song.MP3.mp3");
    EXPECT_EQ(newFileName(L".mp3", L"C:\\x.mp3"), L".mp3");
    EXPECT_EQ(newFileName(L"song", L"C:\\x.y\\songmp3"), L"song.");
    EXPECT_EQ(nameWithoutExtension(L"a.b.mp3"), 3u);
    EXPECT_EQ(nameWithoutExtension(L"songmp3"), 7u);
}

TEST(InfoTexts, sizesAreCutNotRounded) {
    EXPECT_EQ(sizeText(0, L","), L"0 kB (  0 bajtov)");
    EXPECT_EQ(sizeText(1'536, L","), L"1,5 kB ( 1 536 bajtov)");
    EXPECT_EQ(sizeText(1'034, L","), L"1 kB ( 1 034 bajtov)");
    EXPECT_EQ(sizeText(1'035, L"."), L"1.01 kB ( 1 035 bajtov)");
    EXPECT_EQ(sizeText(2'047, L","), L"1,99 kB ( 2 047 bajtov)");
    EXPECT_EQ(sizeText(1'048'576, L","), L"1024 kB (1 048 576 bajtov)");
    EXPECT_EQ(sizeText(1'048'577, L","), L"1 MB (1 048 577 bajtov)");
    EXPECT_EQ(sizeText(5'000'000'000, L","), L"4768,37 MB (5000 000 000 bajtov)");
}

TEST(InfoTexts, datesAndAttributes) {
    EXPECT_EQ(dateText({.year = 2024, .month = 1, .day = 5}), L"5.1.2024");
    EXPECT_EQ(dateText({}), L"");
    EXPECT_EQ(attributeLines(0x20), L"");
    EXPECT_EQ(attributeLines(0x27), L"len na čítanie\r\nsystémový súbor\r\nskrytý súbor\r\n");
    EXPECT_EQ(attributeLines(2), L"skrytý súbor\r\n");
}

TEST(Transfers, clipboardTexts) {
    const std::wstring copied = copiedClipboard(L"C:\\a.mp3"), cut = cutClipboard(L"C:\\a.mp3");
    EXPECT_TRUE(isCopied(copied));
    EXPECT_FALSE(isCopied(cut));
    EXPECT_EQ(clipboardPath(copied), L"C:\\a.mp3");
    EXPECT_EQ(clipboardPath(cut), L"C:\\a.mp3");
    EXPECT_EQ(clipboardPath(L""), L"");
    EXPECT_EQ(pasteFilter(L"C:\\a.mp3"), L"mp3 súbory|*.mp3");
}

TEST(Transfers, foldersEndInOneBackslash) {
    EXPECT_EQ(normalizedFolder(L"C:\\x"), L"C:\\x\\");
    EXPECT_EQ(normalizedFolder(L"C:\\"), L"C:\\");
    EXPECT_EQ(normalizedFolder(L"C:\\\\"), L"C:\\");
}

}  // namespace
}  // namespace tunovka
