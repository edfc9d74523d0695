#include "editor/texts.h"

#include <gtest/gtest.h>

namespace tunovka {
namespace {

TEST(EditorTexts, duplicatesAreCountedInThreeForms) {
    EXPECT_EQ(duplicatesBox(0), (BoxRequest{L"O.K.", L"Neboli nájdené žiadne duplicitné v zozname.",
                                            L"Jasnačka ..."}));
    const std::wstring question = L" Chceš odstrániť tieto položky zo zoznamu ?";
    EXPECT_EQ(duplicatesBox(1),
              (BoxRequest{L"Odstrániť položky", L"Bola nájdená jedna duplicitná položka" + question,
                          L"ÁNO;NIE"}));
    EXPECT_EQ(duplicatesBox(2).text, L"Boli nájdené 2 duplicitné položky" + question);
    EXPECT_EQ(duplicatesBox(4).text, L"Boli nájdené 4 duplicitné položky" + question);
    EXPECT_EQ(duplicatesBox(5).text, L"Bolo nájdených 5 duplicitných položiek" + question);
}

TEST(EditorTexts, invalidLinksAreCountedInThreeForms) {
    EXPECT_EQ(invalidLinksNotice(0),
              (BoxRequest{L"O.K.", L"Neboli zistené neplatné odkazy.", L"Super ..."}));
    EXPECT_EQ(invalidLinksNotice(1),
              (BoxRequest{L"O.K.", L"Bola odstránená jedna neplatná položka.", L"Jasné ..."}));
    EXPECT_EQ(invalidLinksNotice(3).text, L"Boli odstránené 3 neplatné položky");
    EXPECT_EQ(invalidLinksNotice(21).text, L"Bolo odstránených 21 neplatných položiek");
}

TEST(EditorTexts, mergeReportNamesInvalidLinksOnlyWhenThereAreSome) {
    EXPECT_EQ(mergedNotice(3, 0),
              (BoxRequest{L"Hotovo", L"Počet pridaných súborov: 3", L"Oukej ..."}));
    EXPECT_EQ(mergedNotice(3, 3).text,
              L"Počet pridaných súborov: 3\rPočet pridaných neplatných odkazov: 3");
}

TEST(EditorTexts, droppedFilesAreToldByTheirExtensionAsWritten) {
    EXPECT_EQ(droppedKind(L"C:\\a.mp3"), DroppedKind::Media);
    EXPECT_EQ(droppedKind(L"C:\\a.txt"), DroppedKind::Playlist);
    for (const wchar_t* path : {L"C:\\a.MP3", L"C:\\a.asx", L"C:\\amp3", L"C:\\a.mp3 "})
        EXPECT_EQ(droppedKind(path), DroppedKind::Other);
    EXPECT_EQ(addDuplicateQuestion(L"C:\\a.mp3").text,
              L"V playliste sa už nachádza odkaz na tento súbor 'C:\\a.mp3', chceš ho i npariek "
              L"tomu pridať do playlistu ?");
}

TEST(EditorTexts, saveDialogStartsFromThePlaylist) {
    const auto suggested = [](std::wstring_view path) { return saveSuggestion(path, L"E:\\h\\"); };
    EXPECT_EQ(suggested(kNewPlaylist).folder, L"E:\\h\\");
    EXPECT_EQ(suggested(kNewPlaylist).fileName, L"");
    const SaveSuggestion mix = suggested(L"C:\\pl\\mix.pls");
    EXPECT_EQ(mix.folder, L"C:\\pl");
    EXPECT_EQ(mix.fileName, L"mix");
    EXPECT_EQ(mix.filterIndex, 2);
    EXPECT_EQ(suggested(L"C:\\pl\\x.txt").filterIndex, 3);
    EXPECT_EQ(suggested(L"C:\\pl\\MIX.PLS").filterIndex, 1);
    EXPECT_EQ(suggested(L"C:\\a").fileName, L"");

    EXPECT_TRUE(savedIntoFolder(L"E:\\h\\mix.m3u", L"E:\\h\\"));
    EXPECT_TRUE(savedIntoFolder(L"E:\\mix.m3u", L"E:\\"));
    EXPECT_FALSE(savedIntoFolder(L"E:\\H\\mix.m3u", L"E:\\h\\"));
    EXPECT_TRUE(asksForNewPlaylist(L"nový playlist 2"));
    EXPECT_FALSE(asksForNewPlaylist(L"Nový playlist"));
}

}  // namespace
}  // namespace tunovka
