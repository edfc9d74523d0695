#include <gtest/gtest.h>

#include <set>

#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/line_reader.h"
#include "playlist/resolve.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    LineReader reader(text);
    for (std::string_view line; reader.next(line);) lines.emplace_back(line);
    return lines;
}

TEST(LineReader, endsLinesAtLineFeeds) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(linesOf(""), Lines{});
    EXPECT_EQ(linesOf("a\r\nb\nc"), (Lines{"a", "b", "c"}));
    EXPECT_EQ(linesOf("a\r\n"), Lines{"a"});
    EXPECT_EQ(linesOf("\n\r\n"), (Lines{"", ""}));
    EXPECT_EQ(linesOf("a\rb\r\r\nc\r"), (Lines{"a\rb\r", "c\r"}));
    EXPECT_EQ(linesOf(std::string_view("\0x\n\0", 4)), (Lines{std::string("\0x", 2), {'\0'}}));
}

TEST(LineGrammar, editorWantsTheDotAndLowerCase) {
    for (const wchar_t* line :
         {L"C:\\Hudba\\A.mp3", L".wav", L"#EXTINF:215,Interpret - Titul.mp3", L"file1=a.wma"})
        EXPECT_TRUE(isPlaylistEntryLine(line));
    for (const wchar_t* line : {L"C:\\Hudba\\A.MP3", L"songmp3", L"", L"[playlist]", L"a.mp3 ",
                                L"<ref href=\"C:\\b.wma\">"})
        EXPECT_FALSE(isPlaylistEntryLine(line));
}

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

class Files {
  public:
    std::set<std::wstring> paths;
    FileExistsTest test() const {
        return [this](const std::wstring& path) { return paths.contains(path); };
    }
};

TEST(Resolve, editorEntries) {
    const Files files{{L"C:\\pl\\skladba.mp3", L"C:\\pl\\..\\a.mp3", L"D:\\b.wav"}};
    const auto resolved = [&](std::wstring_view text) {
        return resolveEntryPath(entryKey(1, text), L"C:\\pl\\", files.test());
    };
    EXPECT_EQ(resolved(L"File1=skladba.mp3"), L"C:\\pl\\skladba.mp3");
    EXPECT_EQ(resolved(L"file1=skladba.mp3"), L"");
    EXPECT_EQ(resolved(L"..\\a.mp3"), L"C:\\pl\\..\\a.mp3");
    EXPECT_EQ(resolved(L"\\pl\\skladba.mp3"), L"C:\\pl\\skladba.mp3");
    EXPECT_EQ(resolved(L"D:\\b.wav"), L"D:\\b.wav");
    EXPECT_EQ(resolved(L"nie.mp3"), L"");
}

TEST(Resolve, explorerNodes) {
    const Files files{{L"E:\\h\\a.mp3", L"E:\\x\\b.wma", L"E:\\h\\pl=x.mp3"}};
    const auto resolved = [&](std::wstring_view key) {
        return resolveNodeKey(key, L"E:\\h\\", files.test());
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
    const Files files{{L"E:\\id=a.mp3"}};
    EXPECT_EQ(
        resolveNodeKey(playlistNodeKey(L"covid=x.m3u", 1, L"id=a.mp3"), L"E:\\", files.test()),
        L"E:\\id=a.mp3");
}

}  // namespace
}  // namespace tunovka
