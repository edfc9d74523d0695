// The explorer window as a whole: folders, menus, commands, closing.
#include <gtest/gtest.h>

#include "support/file_menus.h"

namespace tunovka {
namespace {

class Explorer : public FileMenus {
  protected:
    void clickNode(TreeView& tree, const std::wstring& key) {
        tree.ensureVisible(key);
        const Rect area = tree.nodeArea(key);
        const LPARAM at = MAKELPARAM(area.x + 3, area.y + 3);
        SendMessageW(tree.handle(), WM_LBUTTONDOWN, MK_LBUTTON, at);
        SendMessageW(tree.handle(), WM_LBUTTONUP, 0, at);
    }
};

TEST_F(Explorer, StartsOnDriveEWithItsFoldersAndLists) {
    folder.folder(L"Ľudové");
    folder.file(L"a.mp3");
    explorer->load();
    EXPECT_EQ(explorer->folders.Drive1.drive().substr(0, 2), L"E:");
    EXPECT_EQ(strom().firstRoot(), L"E:\\");
    EXPECT_EQ(explorer->txtPath.text(), L"E:\\");
    ASSERT_TRUE(strom().contains(folder.path()));
    EXPECT_EQ(strom().firstChild(folder.path()), folder.path() + L"_*.?");
    EXPECT_EQ(strom().text(strom().firstChild(folder.path())), L"podzložky");

    strom().expand(folder.path());
    EXPECT_EQ(strom().firstChild(folder.path()), folder / L"Ľudové\\");
    EXPECT_EQ(strom().selectedKey(), folder.path());  // expanding selects and lists
    EXPECT_EQ(explorer->txtPath.text(), folder.path());
    EXPECT_TRUE(Tview().contains(L"a.mp3"));

    folder.file(L"b.mp3");  // no second listing for the folder that is shown
    clickNode(strom(), folder.path());
    EXPECT_FALSE(Tview().contains(L"b.mp3"));
    EXPECT_EQ(explorer->LblBar.text(), folder.path());
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
    withoutMedium(L"E:", [&] { explorer->load(); });
    EXPECT_TRUE(person.seen.empty());
    EXPECT_NE(strom().firstRoot(), L"E:\\");
    EXPECT_NE(strom().firstRoot(), L"");
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
    folder.file(L"pieseň.mp3");
    folder.file(L"plavba.mp3");
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
    clickNode(Tview(), L"plavba.mp3");  // begins like an entry's key
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

}  // namespace
}  // namespace tunovka
