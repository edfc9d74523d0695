#include <gtest/gtest.h>

#include "files/info_texts.h"
#include "files/rename_rules.h"
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

TEST(Rename, refusesTheOldNameAndNamesInUse) {
    const FileExistsTest exists = [](const std::wstring& path) { return path == L"C:\\b.mp3"; };
    EXPECT_EQ(judgeRename(L"C:\\a.mp3", L"C:\\a.mp3", exists), RenameVerdict::SameName);
    EXPECT_EQ(judgeRename(L"C:\\b.mp3", L"C:\\a.mp3", exists), RenameVerdict::NameInUse);
    EXPECT_EQ(judgeRename(L"C:\\c.mp3", L"C:\\a.mp3", exists), RenameVerdict::Rename);
    EXPECT_EQ(renameRefusal(RenameVerdict::SameName).text,
              L"Názov súbor sa zhoduje s pôvodným názvom !");
    EXPECT_EQ(renameRefusal(RenameVerdict::NameInUse).text,
              L"Tento názov súboru sa už používa ! Zmeň ho, alebo odstráň súbor s týmto názvom.");
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

TEST(Transfers, messagesNameTheFile) {
    EXPECT_EQ(copyToFolderQuestion(L"C:\\a.mp3", L"D:\\x\\").text,
              L"Chceš prekopírovať súbor 'C:\\a.mp3' do adresára D:\\x\\ ?");
    EXPECT_EQ(copyToContentsQuestion(L"C:\\a.mp3", L"D:\\x\\").text,
              L"Naozaj chceš prekopírovať súbor 'C:\\a.mp3' do adresára 'D:\\x\\' ?");
    EXPECT_EQ(deleteQuestion(L"C:\\a.mp3").text,
              L"Naozaj chceš nenávratne odstrániť súbor 'C:\\a.mp3' ?");
    EXPECT_EQ(transferFailure(70, L"Permission denied").text,
              L"Došlo k neočakávanej chybe (č. 70)\rVýpis správy chyby:\rPermission denied");
}

}  // namespace
}  // namespace tunovka
