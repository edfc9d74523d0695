// The explorer window as a whole: folders, menus, commands, closing, other players.
#include <gtest/gtest.h>

#include "core/ansi.h"
#include "files/frm_info.h"
#include "support/file_menus.h"

namespace tunovka {
namespace {

class Explorer : public FileMenus {
  protected:
    static void clickNode(TreeView& tree, const std::wstring& key, UINT down = WM_LBUTTONDOWN,
                          UINT up = WM_LBUTTONUP) {
        clickAt(tree, placeOf(tree, key), down, up);
    }
};

TEST_F(Explorer, StartsOnDriveEWithItsFoldersAndLists) {
    folder.fill({L"Ľudové\\", L"Moje\\", L"a.mp3"});
    explorer->load();
    EXPECT_EQ(explorer->folders.Drive1.letter(), L"E:");
    EXPECT_EQ(strom().firstRoot(), L"E:\\");
    EXPECT_EQ(explorer->txtPath.text(), L"E:\\");
    ASSERT_TRUE(strom().contains(folder.path()));
    EXPECT_EQ(strom().firstChild(folder.path()), folder.path() + L"_*.?");
    EXPECT_EQ(strom().text(strom().firstChild(folder.path())), L"podzložky");

    clickNode(strom(), folder.path(), WM_LBUTTONDBLCLK);
    EXPECT_EQ(explorer->LblBar.text(), folder.path());
    EXPECT_EQ(strom().firstChild(folder.path()), folder / L"Ľudové\\");
    EXPECT_EQ(strom().selectedKey(), folder.path());  // expanding selects and lists
    EXPECT_EQ(explorer->txtPath.text(), folder.path());
    EXPECT_TRUE(Tview().contains(L"a.mp3"));

    folder.file(L"b.mp3");  // no second listing for the folder that is shown
    clickNode(strom(), folder.path());
    EXPECT_FALSE(Tview().contains(L"b.mp3"));
}

// Takes the folder behind a drive away for as long as an action lasts.
void withoutMedium(const std::wstring& drive, const std::function<void()>& action) {
    const std::string root = machinePath(drive + L"\\"), link = root.substr(0, root.size() - 1);
    const auto ready = [&] { return FileSystemObject::IsDriveReady(drive); };
    ASSERT_TRUE(onMachine("mv $(readlink " + link + ") $(readlink " + link + ").away",
                          [&] { return !ready(); }));
    action();
    ASSERT_TRUE(onMachine("mv $(readlink " + link + ").away $(readlink " + link + ")", ready));
}

TEST_F(Explorer, AStartDriveWithoutItsMediumIsPassedOverInSilence) {
    person.answer({1});
    wchar_t before[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    EXPECT_TRUE(SetCurrentDirectoryW(L"\\\\?\\unix\\tmp"));  // a share, as far as letters go
    withoutMedium(L"E:", [&] { explorer->load(); });
    SetCurrentDirectoryW(before);
    EXPECT_TRUE(person.seen.empty());
    EXPECT_EQ(strom().firstRoot(), L"C:\\");  // the first that answers
}

TEST_F(Explorer, ADriveThatIsNotReadyIsReportedAndTheListGoesBack) {
    explorer->load();
    DriveList& drives = explorer->folders.Drive1;
    person.answer({1});
    withoutMedium(L"T:", [&] { drives.setDrive(L"t:"); });
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].title, L" CHYBA");
    EXPECT_EQ(person.seen[0].text.substr(0, 35), L"Zariadenie \"T:\" nie je pripravené !");
    EXPECT_EQ(person.seen[0].buttons, L"Rozumiem !");
    EXPECT_EQ(drives.drive().substr(0, 2), L"E:");
    EXPECT_EQ(strom().firstRoot(), L"E:\\");
}

TEST_F(Explorer, ThePopUpMenusFollowTheSelectedNode) {
    folder.fill({L"pieseň.mp3", L"plavba.mp3"});
    folder.file(L"Zoznam.M3U", "nie je.mp3\r\n");
    show(L"");
    const PopupMenu& menu = explorer->prehrat;
    const auto states = [&] {
        std::string states;
        for (const wchar_t* name :
             {L"ponuka_prehrať", L"operacie_so_suborom", L"editovat_playlist", L"vlozit_subor"})
            states += menu.isEnabled(name) ? '+' : '-';
        return states;
    };
    clickNode(Tview(), L"pieseň.mp3");
    EXPECT_EQ(states(), "++--");
    EXPECT_EQ(explorer->LblBar.text(), folder / L"pieseň.mp3");
    person.closeMenus();
    clickNode(Tview(), L"plavba.mp3", WM_RBUTTONDOWN, WM_RBUTTONUP);  // begins like an entry's key
    EXPECT_EQ(states(), "+---");
    clickNode(Tview(), L"zoznam.m3u");
    EXPECT_EQ(states(), "+++-");
    Tview().expand(L"zoznam.m3u");
    clickNode(Tview(), Tview().firstChild(L"zoznam.m3u"));
    EXPECT_EQ(states(), "----");
    EXPECT_EQ(explorer->LblBar.text(), L"Odkaz je na neexistujúci súbor");
    DeleteFileW((folder / L"pieseň.mp3").c_str());
    explorer->txtsubor.setText(L"copy:" + (folder / L"plavba.mp3"));
    clickNode(Tview(), L"pieseň.mp3");  // file operations are on again for a missing music file
    EXPECT_EQ(states(), "-+-+");
}

TEST_F(Explorer, ObeysItsCommandChannel) {
    folder.file(L"a.mp3");
    show(L"");
    folder.file(L"b.mp3");
    explorer->txtodkaz.setText(L"obnoviť");
    EXPECT_TRUE(Tview().contains(L"b.mp3"));
    EXPECT_EQ(explorer->txtodkaz.text(), L"");
    for (const wchar_t* command : {L"hraj:", L"hraj:E:\\nie je.mp3", L"Obnoviť", L"čokoľvek"}) {
        explorer->txtodkaz.setText(command);
        EXPECT_EQ(explorer->txtodkaz.text(), L"");
        EXPECT_EQ(explorer->player.mp.FileName(), L"");
        EXPECT_FALSE(explorer->player.isPlaying());
    }
    explorer->txtodkaz.setText(L"hraj:" + (folder / L"A.MP3"));  // its name is the disk's
    EXPECT_EQ(explorer->player.mp.FileName(), folder / L"a.mp3");
    EXPECT_TRUE(explorer->player.isPlaying());
    explorer->player.mp.release();
}

TEST_F(Explorer, EscapeInTheOpenDriveListChangesNothing) {
    explorer->load();
    const DriveList& list = explorer->folders.Drive1;
    turnWheel(list, -WHEEL_DELTA);
    EXPECT_EQ(strom().firstRoot(), L"E:\\");
    for (const WPARAM end : {VK_ESCAPE, VK_RETURN}) {
        SendMessageW(list.handle(), CB_SHOWDROPDOWN, TRUE, 0);
        pressKey(list, VK_UP);
        pressKey(list, end);
        EXPECT_EQ(strom().firstRoot() == L"E:\\", end == VK_ESCAPE);
        EXPECT_EQ(list.letter() + L"\\", strom().firstRoot());
        wchar_t shown[64] = L"";
        GetWindowTextW(list.handle(), shown, 64);
        EXPECT_EQ(shown, list.drive());
    }
}

TEST_F(Explorer, TheSplitterGoesToTheEdgesAndIsLeftWhereItsDragIsBrokenOff) {
    show(L"");
    Splitter& splitter = explorer->splitter;
    const HWND bar = splitter.Medzera.handle();
    const auto drag = [&](int by) {
        SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 50));
        SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(2 + by, 50));
    };
    const int least = explorer->scaled(7);  // 100 twips
    const int before = splitter.Medzera.bounds().x;
    drag(50);
    ReleaseCapture();
    EXPECT_FALSE(splitter.Obdlznik.isVisible());
    SendMessageW(bar, WM_SETCURSOR, 0, 0);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_SIZEWE));
    SendMessageW(bar, WM_LBUTTONUP, 0, 0);
    EXPECT_EQ(splitter.Medzera.bounds().x, before);
    for (const int by : {-5000, 5000}) {
        drag(by);
        SendMessageW(bar, WM_LBUTTONUP, 0, 0);
        EXPECT_EQ(splitter.Medzera.bounds().x,
                  by < 0 ? strom().bounds().x + least : explorer->clientSize().width - least);
    }
}

// A node's text is cut, what a person reads of it is not.
TEST_F(Explorer, AVeryLongPathIsShownWhole) {
    std::wstring path = folder.path(), line;
    for (int i = 0; i < 5; ++i) {
        const std::wstring name(240, static_cast<wchar_t>(L'a' + i));
        path += name + L"\\";
        line += name + L"/";
        CreateDirectoryW((L"\\\\?\\" + path).c_str(), nullptr);
    }
    ScratchFolder::write(L"\\\\?\\" + path + L"Song.mp3", "x");
    folder.file(L"a.m3u", toAnsi(line + L"song.mp3\r\n"));
    show(L"");
    const std::wstring entry = Tview().firstChild(L"a.m3u");
    select(entry);
    EXPECT_EQ(Tview().text(entry).size(), 1023u);
    EXPECT_EQ(explorer->LblBar.text(), folder.path() + line + L"Song.mp3");
    select(entry);
    frminfo window(explorer->handle());
    window.txtodkaz.setText(explorer->LblBar.text());
    EXPECT_EQ(window.lblPath.text(), explorer->LblBar.text());
    EXPECT_NE(window.lblvelkosť.text(), L"");
}

TEST_F(Explorer, APressThatSlipsStaysAClick) {
    folder.file(L"a.m3u", "nie je.mp3\r\n");
    explorer->load();
    const auto slip = [&](TreeView& tree, const std::wstring& key) {
        const Point at = placeOf(tree, key);
        SendMessageW(tree.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        for (const int by : {27, 57})
            SendMessageW(tree.handle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x + by, at.y));
        SendMessageW(tree.handle(), WM_LBUTTONUP, 0, MAKELPARAM(at.x + 57, at.y));
    };
    slip(strom(), folder.path());
    EXPECT_EQ(explorer->txtPath.text(), folder.path());
    EXPECT_EQ(explorer->LblBar.text(), folder.path());
    Tview().expand(L"a.m3u");
    slip(Tview(), Tview().firstChild(L"a.m3u"));  // its drag is refused
    EXPECT_EQ(explorer->LblBar.text(), L"Odkaz je na neexistujúci súbor");
}

// The system empties a tree in one message, however long that takes.
TEST_F(Explorer, ATreeThatIsEmptiedLetsEventsRunAndHearsNoneOfThem) {
    show(L"");
    yieldNow();
    for (const DWORD start = GetTickCount(); GetTickCount() - start < 30;)
        Tview().add({.key = std::to_wstring(Tview().count()), .text = L"a"});
    explorer->LblBar.setText(L"here");
    const std::function<void()> look = [&] {
        if (SendMessageW(Tview().handle(), TVM_GETCOUNT, 0, 0) > 0) return postToLoop(look);
        clickAt(Tview(), {60, 5});
        pressKey(Tview(), VK_DOWN);
        EXPECT_EQ(Tview().firstRoot() + explorer->LblBar.text(), L"here");
        EXPECT_TRUE(SendMessageW(Tview().handle(), WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS);
        SendMessageW(Tview().handle(), TVM_SETITEMHEIGHT, 40, 0);  // another screen's
    };
    postToLoop(look);
    SendMessageW(Tview().handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 5));
    explorer->contents.ListFolderContents(folder.path());  // which is empty
    EXPECT_EQ(SendMessageW(Tview().handle(), TVM_GETITEMHEIGHT, 0, 0), 40);
    EXPECT_EQ(GetCapture(), nullptr);
    Tview().add({.key = L"0", .text = L"a"});
    clickNode(Tview(), L"0");
    EXPECT_EQ(Tview().selectedKey(), L"0");
    EXPECT_TRUE(person.seen.empty());
}

constexpr wchar_t kWindowsMediaPlayerKey[] = L"SOFTWARE\\Microsoft\\Multimedia\\WMPlayer";
constexpr wchar_t kMediaPlayer2Key[] = L"SOFTWARE\\Microsoft\\Multimedia\\MPlayer2";

class PlaySubmenu : public FileMenus {
  protected:
    bool isOn(const wchar_t* entry) const { return explorer->prehrat.isEnabled(entry); }
};

TEST_F(PlaySubmenu, OffersOnlyThePlayersThatAreThereAndTellsWhatCannotBeStarted) {
    folder.file(L"a.mp3");
    {
        const TestKey empty(HKEY_CURRENT_USER, L"Software\\winamp", nullptr, L"");
        show(L"a.mp3");
    }
    for (const wchar_t* entry : {L"prehraťtu", L"prehraťvprog", L"prehrat_v_programe"})
        EXPECT_TRUE(isOn(entry)) << entry;
    for (const wchar_t* entry : {L"prehratvoWinampe", L"prehraťvowmp", L"prehraťvmp2"}) {
        EXPECT_FALSE(isOn(entry)) << entry;
        choose(entry);  // does nothing
    }
    choose(L"prehraťvprog");  // the system knows no program for it
    EXPECT_TRUE(person.seen.empty());

    const TestKey found(HKEY_LOCAL_MACHINE, kMediaPlayer2Key, L"Player.Path", L"C:\\mplayer2.exe");
    explorer->playing.findPlayers();
    EXPECT_FALSE(isOn(L"prehraťvowmp"));
    EXPECT_TRUE(isOn(L"prehraťvmp2"));
    const std::wstring gone = folder / L"niet.exe";
    const TestKey modern(HKEY_LOCAL_MACHINE, kWindowsMediaPlayerKey, L"Player.Path", gone);
    explorer->playing.findPlayers();
    choose(L"prehraťvowmp");
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].title, L" CHYBA");
    EXPECT_EQ(person.seen[0].text,
              L"Program sa nepodarilo spustiť !\rChyba č. 53: Súbor sa nenašiel: " + gone);
    EXPECT_TRUE(explorer->isEnabled());
    EXPECT_FALSE(explorer->isClosing());
}

TEST_F(PlaySubmenu, AFileThatIsGoneIsToldInTwoWays) {
    const std::wstring file = folder.file(L"a.mp3");
    show(L"a.mp3");
    DeleteFileW(file.c_str());
    explorer->prehrat.choose(L"prehraťtu");
    explorer->prehrat.choose(L"prehrat_v_programe");
    explorer->prehrat.choose(L"prehraťvprog");  // no file, no program
    ASSERT_EQ(person.seen.size(), 2u);
    EXPECT_EQ(person.seen[0].text, L"Súbor sa v zadanom umiestnení nenacházda !!!");
    EXPECT_EQ(person.seen[1].text, L"Súbor sa v zadanom umiestnení nenacházda !");
}

// A copy of this test program stands for Winamp: see main.cpp.
TEST_F(PlaySubmenu, PlayersGetTheFileBetweenQuotationMarks) {
    folder.file(L"Яблоко 歌.wav");
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::wstring program = folder / L"winamp.exe", record = folder / L"record";
    CopyFileW(self, program.c_str(), FALSE);
    SetEnvironmentVariableW(L"TUNOVKA_RECORD", record.c_str());
    const std::wstring place = folder.path().substr(0, folder.path().size() - 1);
    const TestKey key(HKEY_CURRENT_USER, L"Software\\winamp", nullptr, place);
    const TestKey kind(HKEY_CLASSES_ROOT, L".wav", nullptr, L"Pieseň");
    const TestKey open(HKEY_CLASSES_ROOT, L"Pieseň\\shell\\open\\command", nullptr,
                       program + L" \"%1\"");
    show(L"яблоко 歌.wav");
    person.answer({1});  // to what is told of a file that cannot be played
    const std::function<void()> ways[]{
        [&] { choose(L"prehratvoWinampe"); }, [&] { choose(L"prehraťvprog"); },
        [&] { explorer->player.mp.onNotification({MediaNotification::Kind::Error}); }};
    for (const auto& play : ways) {
        DeleteFileW(record.c_str());
        play();
        std::string bytes;
        ASSERT_TRUE(runUntil([&] { return !(bytes = contentOf(record)).empty(); }));
        const std::wstring started(reinterpret_cast<const wchar_t*>(bytes.data()),
                                   bytes.size() / sizeof(wchar_t));
        EXPECT_EQ(started, std::to_wstring(SW_SHOWNORMAL) + L"|" + program + L" \"" +
                               (folder / L"Яблоко 歌.wav") + L"\"");
    }
    SetEnvironmentVariableW(L"TUNOVKA_RECORD", nullptr);
}

}  // namespace
}  // namespace tunovka
