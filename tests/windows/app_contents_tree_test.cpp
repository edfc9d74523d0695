// The explorer's listing of a folder on the real tree, with real files.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/ansi.h"
#include "core/text.h"
#include "support/file_menus.h"

namespace tunovka {
namespace {

using Texts = std::vector<std::wstring>;

class Contents : public FileMenus {
  protected:
    Contents() { show(L""); }
    // Keys below a node (the roots for ""), in their order.
    Texts keys(const std::wstring& parent = L"") {
        Texts keys;
        for (std::wstring key = parent.empty() ? Tview().firstRoot() : Tview().firstChild(parent);
             !key.empty(); key = Tview().nextSibling(key))
            keys.push_back(key);
        return keys;
    }
    // The entries of a playlist; "-" before a red one.
    Texts entries(const std::wstring& playlist) {
        Texts entries;
        for (const std::wstring& key : keys(playlist)) {
            const bool red = Tview().foreground(key) == MultiMedialny::palette().MissingEntryColor;
            EXPECT_EQ(red, tree().PathFromNodeKey(key).empty());
            entries.push_back((red ? L"-" : L"") + Tview().text(key));
        }
        return entries;
    }
    void list() { tree().ListFolderContents(folder.path()); }
    ContentsTree& tree() { return explorer->contents; }
};

TEST_F(Contents, ShowsMusicAndPlaylistsAndNothingElse) {
    folder.fill({L"Žaba.MP3", L"xmp3" /* no dot needed */, L"日本語 π.mp3", L"list.m3u8",
                 L"listm3u", L"text.txt", L"Zoznam.M3U", L"priečinok.mp3\\"});
    list();
    Texts shown = keys();
    std::ranges::sort(shown);
    EXPECT_EQ(shown, (Texts{L"xmp3", L"zoznam.m3u", L"žaba.mp3", L"日本語 π.mp3"}));
    EXPECT_EQ(Tview().foreground(L"zoznam.m3u"), MultiMedialny::palette().PlaylistNodeColor);
    EXPECT_EQ(Tview().selectedKey(), Tview().firstRoot());
    for (const wchar_t* name : {L"Žaba.MP3", L"日本語 π.mp3"})
        EXPECT_EQ(tree().PathFromNodeKey(lowerCased(name)), folder / name);
    select(L"žaba.mp3");
    EXPECT_EQ(tree().selectedPathForPlaylists(), folder / L"Žaba.mp3");
    EXPECT_TRUE(person.seen.empty());

    const auto hasBoth = [&] { return folder.names().size() == 9; };
    if (onMachine("touch '" + machinePath(folder.path()) + "XMP3'", hasBoth)) {
        list();
        const auto both = tree().PathFromNodeKey(L"xmp3") + tree().PathFromNodeKey(L"xmp3*");
        EXPECT_EQ(std::ranges::count(both, L'X'), 1);
    }
    ScratchFolder empty;
    tree().ListFolderContents(empty.path());
    EXPECT_EQ(Tview().count(), 0u);
    EXPECT_EQ(tree().selectedPath(), L"");
}

TEST_F(Contents, ExpandsEveryKindOfPlaylistAndMarksWhatIsMissing) {
    folder.fill({L"a.mp3", L"Č.wav"});
    folder.file(L"zoznam.m3u",
                toAnsi(L"#EXTM3U\r\n#EXTINF:1,X\r\na.mp3\r\nA.MP3\r\nchýba.mp3\r\n" +
                       folder.path() + L"č.wav\n" + folder.path().substr(2) + L"a.mp3"));
    folder.file(L"b.pls", "[playlist]\r\nFile1=a.mp3\r\nTitle1=A.mp3x\r\nfile2=x\\nie.wma\r\n");
    folder.file(L"c.asx",
                "<asx>\r\n<entry><REF HREF=\"a.mp3\"/></entry>\r\n<ref href = \"none.wma\" />\r\n");
    list();
    ASSERT_TRUE(person.seen.empty()) << person.seen.size();
    EXPECT_EQ(entries(L"zoznam.m3u"), (Texts{L"a.mp3", L"-chýba.mp3", L"č.wav", L"a.mp3"}));
    EXPECT_EQ(entries(L"b.pls"), (Texts{L"File1=a.mp3", L"-nie.wma"}));
    EXPECT_EQ(entries(L"c.asx"), (Texts{L"a.mp3", L"-none.wma"}));
}

TEST_F(Contents, SaysWhyAListingEnds) {
    folder.file(L"z.asx", "<ref href=\"a.mp3 />\r\n");
    list();
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].title, L" CHYBA");
    EXPECT_EQ(person.seen[0].buttons, L"No čo už ...");
    EXPECT_NE(person.seen[0].text.find(L"Číslo chyby: 5 , chybová správa: "), std::wstring::npos);

    ScratchFolder denied;
    const FileHandle lock = locked(denied.file(L"a.m3u", "b.mp3"));
    tree().ListFolderContents(denied.path());
    ASSERT_EQ(person.seen.size(), 2u);
    EXPECT_EQ(person.seen[1].text,
              L"Nie je možné zobraziť súbory, nie sú dostatočné práva k načítaniu súborov.");

    ScratchFolder tooMany;
    std::string lines;
    for (int i = 0; i < 32768; ++i) lines += "a.mp3\n";
    tooMany.file(L"a.m3u", lines);
    tree().ListFolderContents(tooMany.path());
    ASSERT_EQ(person.seen.size(), 3u);
    EXPECT_NE(person.seen[2].text.find(L"Číslo chyby: 6 "), std::wstring::npos);
    EXPECT_EQ(keys(L"a.m3u").size(), 32767u);  // what was read stays
}

TEST_F(Contents, AFolderThatVanishedChangesNothing) {
    folder.file(L"a.mp3");
    list();
    tree().ListFolderContents(folder / L"gone\\");
    EXPECT_EQ(explorer->txtPath.text(), folder / L"gone\\");
    EXPECT_EQ(keys(), Texts{L"a.mp3"});
    EXPECT_EQ(tree().PathFromNodeKey(L"a.mp3"), L"");
}

}  // namespace
}  // namespace tunovka
