#include <gtest/gtest.h>

#include <set>

#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/resolve.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

TEST(LineGrammar, explorerWantsThreeLettersAndReadsReferences) {
    EXPECT_EQ(explorerEntryText(L"C:\\x\\songmp3"), L"C:\\x\\songmp3");
    EXPECT_EQ(explorerEntryText(L"File3=C:\\a.wav"), L"File3=C:\\a.wav");
    EXPECT_EQ(explorerEntryText(L"<Ref HREF = \"C:\\Žaba.wma\"/>"), L"C:\\Žaba.wma");
    EXPECT_EQ(explorerEntryText(L"<ref href=\"a.mp3\" x=\"b.wav\">"), L"a.mp3");
    for (const wchar_t* line :
         {L"", L"p3", L"A.MP3", L"Title3=Skladba", L"#EXTM3U", L"<ref href=\"A.MP3\">",
          L" <ref href=\"a.mp3\">", L"<title>a</title>"})
        EXPECT_FALSE(explorerEntryText(line)) << testing::PrintToString(line);
    EXPECT_EQ(errorOf([] { explorerEntryText(L"<ref href=\"a.mp3>"); }), kInvalidCall);
}

TEST(LineGrammar, filePrefixRulesDiffer) {
    EXPECT_EQ(withoutFilePrefix(L"File12=a=b.mp3"), L"a=b.mp3");
    EXPECT_EQ(withoutFilePrefix(L"File=a.mp3"), L"a.mp3");
    EXPECT_EQ(withoutFilePrefix(L"file1=a.mp3"), L"file1=a.mp3");
    EXPECT_EQ(withoutFilePrefix(L"File.mp3"), L"File.mp3");
    EXPECT_EQ(withoutFilePrefixAnyCase(L"fILE1=a.mp3"), L"a.mp3");
    EXPECT_EQ(withoutFilePrefixAnyCase(L"Fil=a.mp3"), L"Fil=a.mp3");
    EXPECT_EQ(withoutFilePrefixAnyCase(L""), L"");
}

TEST(LineGrammar, makesPathsAbsolute) {
    struct Row {
        std::wstring text, absolute, merged;
    };
    for (const Row& row : std::vector<Row>{
             {L"D:\\a.mp3", L"D:\\a.mp3", L"D:\\a.mp3"},
             {L"..x:\\a.mp3", L"..x:\\a.mp3", L"..x:\\a.mp3"},
             {L"\\h\\a.mp3", L"C:\\h\\a.mp3", L"C:\\h\\a.mp3"},
             {L"\\\\server\\h\\a.mp3", L"C:\\\\server\\h\\a.mp3", L"C:\\\\server\\h\\a.mp3"},
             {L"a.mp3", L"C:\\x\\y\\a.mp3", L"C:\\x\\y\\a.mp3"},
             {L"..\\h\\a.mp3", L"C:\\x\\y\\..\\h\\a.mp3", L"C:\\\\h\\a.mp3"},
             {L"..a.mp3", L"C:\\x\\y\\..a.mp3", L"C:\\a.mp3"},
         }) {
        EXPECT_EQ(absoluteEntryPath(row.text, L"C:\\x\\y\\"), row.absolute);
        EXPECT_EQ(mergedEntryPath(row.text, L"C:\\x\\y\\"), row.merged);
    }
    EXPECT_EQ(playlistFolder(L"C:\\x\\list.m3u"), L"C:\\x\\");
    EXPECT_EQ(playlistFolder(L"C:\\list.m3u"), L"C:\\");
    EXPECT_EQ(playlistFolder(L"nový playlist"), L"\\");
}

TEST(EntryKey, holdsNumberAndText) {
    const std::wstring key = entryKey(12, L"..\\hudba\\skladba.mp3");
    EXPECT_EQ(key, L"položka:12súbor=..\\hudba\\skladba.mp3");
    EXPECT_EQ(entryNumberOf(key), 12);
    EXPECT_EQ(entryTextOf(key), L"..\\hudba\\skladba.mp3");
    EXPECT_EQ(entryDisplayName(key), L"skladba.mp3");
    EXPECT_EQ(entryDisplayName(entryKey(1, L"File1=skladba.mp3")), L"File1=skladba.mp3");
    EXPECT_EQ(entryTextOf(entryKey(1, L"súbor=x.mp3")), L"súbor=x.mp3");
    EXPECT_EQ(entryDisplayName(L"a\\b.mp3"), L"b.mp3");
    EXPECT_EQ(entryDisplayName(L""), L"");
    EXPECT_EQ(entryTextOf(L"abcdefg"), L"fg");
    EXPECT_EQ(entryTextOf(L"abc"), L"");
}

TEST(EntryKey, oddKeysRaiseErrors) {
    EXPECT_EQ(errorOf([] { entryNumberOf(L""); }), kInvalidCall);
    EXPECT_EQ(errorOf([] { entryNumberOf(L"a0súbor=x"); }), kInvalidCall);
    EXPECT_EQ(errorOf([] { entryNumberOf(L"položka:súbor=x"); }), kTypeMismatch);
    EXPECT_EQ(errorOf([] { entryNumberOf(L"položka:1xsúbor=x"); }), kTypeMismatch);
    EXPECT_EQ(errorOf([] { entryNumberOf(L"položka:32768súbor=x"); }), kOverflow);
}

FileExistsTest only(std::set<std::wstring> paths) {
    return [paths](const std::wstring& path) { return paths.contains(path); };
}

TEST(Resolve, explorerNodes) {
    const auto files = only({L"E:\\h\\a.mp3", L"E:\\x\\b.wma", L"E:\\h\\pl=x.mp3"});
    const auto resolved = [&](std::wstring_view key) {
        return resolveNodeKey(key, L"E:\\h\\", files);
    };
    EXPECT_EQ(resolved(L"a.mp3"), L"E:\\h\\a.mp3");
    EXPECT_EQ(resolved(L"b.mp3"), L"");
    EXPECT_EQ(resolved(playlistNodeKey(L"LIST~1.PLS", 1, L"file1=a.mp3")), L"E:\\h\\a.mp3");
    EXPECT_EQ(resolved(playlistNodeKey(L"L.M3U", 1, L"\\x\\b.wma")), L"E:\\x\\b.wma");
    EXPECT_EQ(resolved(L"pl=x.mp3"), L"");  // taken for an entry
    EXPECT_EQ(resolveNodeKey(L"a.mp3", L"", [](const auto&) { return true; }), L"");
}

TEST(Resolve, nodeKeysGrowPastThreeDigitsAndSurviveOddNames) {
    EXPECT_EQ(playlistNodeKey(L"L.M3U", 7, L"a.mp3"), L"pl=L.M3U007id=a.mp3");
    EXPECT_EQ(playlistNodeKey(L"L.M3U", 1000, L"a.mp3"), L"pl=L.M3U1000id=a.mp3");
    const auto files = only({L"E:\\id=a.mp3"});
    EXPECT_EQ(resolveNodeKey(playlistNodeKey(L"covid=x.m3u", 1, L"id=a.mp3"), L"E:\\", files),
              L"E:\\id=a.mp3");
}

}  // namespace
}  // namespace tunovka
