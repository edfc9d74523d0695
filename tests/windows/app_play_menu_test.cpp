// The explorer's play sub-menu, with stand-ins for the players.
#include <gtest/gtest.h>
#include <windows.h>

#include "app/frm_prieskumnik.h"
#include "support/box_answers.h"
#include "support/external_program.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

constexpr wchar_t kWinampKey[] = L"Software\\winamp";
constexpr wchar_t kWindowsMediaPlayerKey[] = L"SOFTWARE\\Microsoft\\Multimedia\\WMPlayer";
constexpr wchar_t kMediaPlayer2Key[] = L"SOFTWARE\\Microsoft\\Multimedia\\MPlayer2";

class PlaySubmenu : public testing::Test {
  protected:
    ~PlaySubmenu() override {
        if (!explorer) return;
        explorer->player.mp.release();
        explorer->unload();
    }
    // Opens the explorer on the folder with a file of it selected.
    void open(const std::wstring& name) {
        MultiMedialny::InitSharedTables();
        explorer = std::make_unique<frmPrieskumnik>();
        explorer->load();
        explorer->contents.ListFolderContents(folder.path());
        explorer->contents.Tview.select(name);
        EXPECT_EQ(explorer->contents.Tview.selectedKey(), name);
    }
    bool isOn(const wchar_t* entry) const { return explorer->prehrat.isEnabled(entry); }
    void choose(const wchar_t* entry) { explorer->prehrat.choose(entry); }
    std::wstring player(const std::wstring& name) const { return folder / name; }

    ScratchFolder folder;
    BoxAnswers person;
    std::unique_ptr<frmPrieskumnik> explorer;
};

TEST_F(PlaySubmenu, OffersOnlyThePlayersThatAreThere) {
    folder.file(L"a.mp3");
    {
        const TestKey empty(HKEY_CURRENT_USER, kWinampKey, nullptr, L"");
        open(L"a.mp3");
    }
    EXPECT_TRUE(isOn(L"prehraťtu"));
    EXPECT_TRUE(isOn(L"prehraťvprog"));
    EXPECT_TRUE(isOn(L"prehrat_v_programe"));
    for (const wchar_t* entry : {L"prehratvoWinampe", L"prehraťvowmp", L"prehraťvmp2"}) {
        EXPECT_FALSE(isOn(entry)) << entry;
        choose(entry);  // does nothing
    }
    EXPECT_TRUE(person.seen.empty());

    const TestKey found(HKEY_LOCAL_MACHINE, kMediaPlayer2Key, L"Player.Path", L"C:\\mplayer2.exe");
    explorer->playing.findPlayers();
    EXPECT_FALSE(isOn(L"prehraťvowmp"));
    EXPECT_TRUE(isOn(L"prehraťvmp2"));
}

TEST_F(PlaySubmenu, EachEntryHandsTheFileToItsProgram) {
    const Recorder winamp(player(L"winamp.exe")), wmp(player(L"wmplayer.exe")),
        mplayer2(player(L"mplayer2.exe")), associated(player(L"hudba.exe"));
    const std::wstring winampFolder = folder.path().substr(0, folder.path().size() - 1);
    const TestKey keys[] = {
        {HKEY_CURRENT_USER, kWinampKey, nullptr, winampFolder},
        {HKEY_LOCAL_MACHINE, kWindowsMediaPlayerKey, L"Player.Path", wmp.path()},
        {HKEY_LOCAL_MACHINE, kMediaPlayer2Key, L"Player.Path", mplayer2.path()},
        {HKEY_LOCAL_MACHINE, L"Software\\Classes\\.vrtilko-mp3", nullptr, L"vrtilko.zvuk"},
        {HKEY_LOCAL_MACHINE, L"Software\\Classes\\vrtilko.zvuk", nullptr, L"Zvuk"},
        {HKEY_LOCAL_MACHINE, L"Software\\Classes\\vrtilko.zvuk\\shell\\open\\command", nullptr,
         L"\"" + associated.path() + L"\" \"%1\""},
    };
    // An extension of the test's own that the explorer still takes for music.
    const std::wstring name = L"žltý kôň 歌.vrtilko-mp3";
    const std::wstring file = folder.file(name);
    open(name);
    const std::wstring quoted = L" \"" + file + L"\"";
    choose(L"prehratvoWinampe");
    EXPECT_EQ(winamp.started(), kNormal + winamp.path() + quoted);
    choose(L"prehraťvowmp");
    EXPECT_EQ(wmp.started(), kNormal + wmp.path() + quoted);
    choose(L"prehraťvmp2");
    EXPECT_EQ(mplayer2.started(), kNormal + mplayer2.path() + quoted);
    choose(L"prehraťvprog");
    EXPECT_NE(associated.started().find(quoted), std::wstring::npos);
    EXPECT_TRUE(person.seen.empty());
    EXPECT_EQ(explorer->player.mp.FileName(), L"") << "none of them is the built-in player";
}

TEST_F(PlaySubmenu, AFileWithoutAProgramIsLeftAlone) {
    folder.file(L"a.mp3");
    open(L"a.mp3");
    choose(L"prehraťvprog");
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(PlaySubmenu, AProgramThatCannotBeStartedIsToldAndTheExplorerGoesOn) {
    const TestKey key(HKEY_LOCAL_MACHINE, kWindowsMediaPlayerKey, L"Player.Path",
                      player(L"niet.exe"));
    folder.file(L"a.mp3");
    open(L"a.mp3");
    choose(L"prehraťvowmp");
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].title, L" CHYBA");
    EXPECT_EQ(
        person.seen[0].text,
        L"Program sa nepodarilo spustiť !\rChyba č. 53: File not found: " + player(L"niet.exe"));
    EXPECT_TRUE(explorer->isEnabled());
    EXPECT_FALSE(explorer->isClosing());
}

TEST_F(PlaySubmenu, AFileThatIsGoneIsToldInTwoWays) {
    const std::wstring file = folder.file(L"a.mp3");
    open(L"a.mp3");
    DeleteFileW(file.c_str());
    choose(L"prehraťtu");
    choose(L"prehrat_v_programe");
    choose(L"prehraťvprog");  // no file, no program
    ASSERT_EQ(person.seen.size(), 2u);
    const std::wstring text = L"Súbor sa v zadanom umiestnení nenacházda ";
    EXPECT_EQ(person.seen[0], (BoxRequest{L" CHYBA", text + L"!!!", L"No čo už ..."}));
    EXPECT_EQ(person.seen[1], (BoxRequest{L" CHYBA", text + L"!", L"No čo už ..."}));
}

}  // namespace
}  // namespace tunovka
