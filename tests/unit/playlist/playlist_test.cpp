// What the fuzz targets do not hold as a property: keys, relative links, titles.
#include <gtest/gtest.h>

#include "core/paths.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/listed_files.h"
#include "playlist/write.h"

namespace tunovka {
namespace {

TEST(EntryKey, holdsNumberAndText) {
    const std::wstring key = entryKey(12, L"..\\hudba\\skladba.mp3");
    EXPECT_EQ(key, L"položka:12súbor=..\\hudba\\skladba.mp3");
    EXPECT_EQ(entryDisplayName(key), L"skladba.mp3");
    EXPECT_EQ(playlistNodeKey(L"L.M3U", 7, L"a.mp3"), L"pl=L.M3U007id=a.mp3");
    EXPECT_EQ(playlistNodeKey(L"L.M3U", 1000, L"a.mp3"), L"pl=L.M3U1000id=a.mp3");
    // A playlist whose name looks like a key's end.
    EXPECT_EQ(nodePath(playlistNodeKey(L"covid=x.m3u", 1, L"id=a.mp3"), L"E:\\"), L"E:\\id=a.mp3");
}

TEST(Writing, relativeTextsFollowTheDriveRootConvention) {
    struct Row {
        std::wstring folder, path, text;
    };
    for (const Row& row : std::vector<Row>{
             {L"C:\\pl", L"", L""},
             {L"C:\\pl", L"C:\\pl\\rock/a.mp3", L"rock/a.mp3"},
             {L"C:\\pl", L"C:\\\\a.mp3", L"..\\a.mp3"},
             {L"C:\\pl", L"C:\\plus\\a.mp3", L"..\\plus\\a.mp3"},
             {L"C:\\pl", L"c:\\x\\a.mp3", L"c:\\x\\a.mp3"},
             {L"C:\\Pl", L"C:\\pl\\a.mp3", L"..\\pl\\a.mp3"},
         })
        EXPECT_EQ(relativeEntryText(row.folder, row.path), row.text);
}

TEST(ListedFiles, eachKindTellsItsEntriesAndTheirTitles) {
    using Files = std::vector<ListedFile>;
    EXPECT_EQ(listedFiles(L"#EXTM3U\r\n#EXTINF:215,Hana Hegerová - Levandulová\r\n"
                          L"D:\\Hudba\\a.mp3\r\n\\b.wma\r\n#EXTINF:9,Sám\r\n#poznámka\r\n"
                          L"..\\c.wav\r\nd.txt\r\n#EXTINF:1\r\nE.MP3\r\nxmp3",
                          L"E:\\zoznamy\\"),
              (Files{{L"D:\\Hudba\\a.mp3", {L"Levandulová", L"Hana Hegerová"}},
                     {L"E:\\b.wma", {}},
                     {L"E:\\zoznamy\\..\\c.wav", {L"Sám", L""}},
                     {L"E:\\zoznamy\\xmp3", {}}}));
    EXPECT_EQ(listedFiles(L"[playlist]\nTitle2=Druhá\nFile1=a.mp3\nfile2=b.mp3\nFILE10=c.wav\n"
                          L"title10=Jana - Desiata\n",
                          L"E:\\"),
              (Files{{L"E:\\a.mp3", {}},
                     {L"E:\\b.mp3", {L"Druhá", L""}},
                     {L"E:\\c.wav", {L"Desiata", L"Jana"}}}));
    EXPECT_EQ(listedFiles(L"<asx>\n<Entry><Ref HREF = \"hory\\a.mp3\"/>\n"
                          L"<ref href=\"nedokončené.mp3>\n<ref href=\"b.wma\"/>\n</asx>",
                          L"E:\\"),
              (Files{{L"E:\\hory\\a.mp3", {}}, {L"E:\\b.wma", {}}}));
}

}  // namespace
}  // namespace tunovka
