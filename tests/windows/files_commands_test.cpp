// The explorer's file commands: menus and keys, the system's dialogs, the clipboard, the player.
#include <gtest/gtest.h>

#include "support/dialog_answers.h"
#include "support/disk_faults.h"
#include "support/file_menus.h"
#include "support/samples.h"
#include "support/typing.h"
#include "ui/folder_picker.h"

namespace tunovka {
namespace {

TEST_F(FileMenus, TheFolderPickerStartsAtTheSelectedFolder) {
    show(L"");
    const std::wstring start = folder.path().substr(0, folder.path().size() - 1);
    {
        const Answering accepting(explorer->handle(),
                                  [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDOK, 0); });
        EXPECT_EQ(pickFolder(*explorer, L"Kam ?", start), start);
    }
    const Answering cancelling(explorer->handle(),
                               [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(pickFolder(*explorer, L"Kam ?", L""), L"");
    EXPECT_TRUE(explorer->isEnabled());
}

TEST_F(FileMenus, ACutFileIsPastedIntoTheSelectedFolder) {
    other.file(L"a.mp3", "song");
    explorer->txtsubor.setText(L"cut:" + (other / L"a.mp3"));
    show(L"");
    {
        const Answering cancelling(
            explorer->handle(), [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
        explorer->menuprestrom.setEnabled(L"strom_vloz_subor", true);
        explorer->menuprestrom.choose(L"strom_vloz_subor");
    }
    EXPECT_EQ(clipboard(), L"cut:" + (other / L"a.mp3"));
    const Answering answering(explorer->handle(),
                              [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDOK, 0); });
    explorer->menuprestrom.choose(L"strom_vloz_subor");
    EXPECT_EQ(contentOf(folder / L"a.mp3"), "song");
    EXPECT_TRUE(other.names().empty());
    EXPECT_TRUE(Tview().contains(L"a.mp3"));
}

TEST_F(FileMenus, DeleteTakesAnEntrysFileWhileMenuAndF2RefuseIt) {
    const std::wstring song = other.file(L"a.mp3");
    folder.file(L"zoznam.m3u", "x.mp3\r\n");
    {
        const std::string line(song.begin(), song.end());
        folder.file(L"zoznam.m3u", line + "\r\nnie je.mp3\r\n");
    }
    folder.file(L"plavba.mp3");
    show(L"");
    const std::wstring entry = Tview().firstChild(L"zoznam.m3u");
    const std::wstring missing = Tview().nextSibling(entry);
    for (const std::wstring& refused : {entry, missing, std::wstring(L"plavba.mp3")}) {
        select(refused);
        EXPECT_FALSE(explorer->prehrat.isEnabled(L"operacie_so_suborom"));
        press(VK_F2);
        for (const wchar_t* item : {L"kopirovat_subor", L"zmazat_subor", L"premenovat_subor"})
            explorer->prehrat.choose(item);
    }
    select(missing);
    press(VK_DELETE);
    EXPECT_TRUE(person.seen.empty());
    EXPECT_EQ(clipboard(), L"");

    person.answer({1});
    select(entry);
    press(VK_DELETE);
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].text, L"Naozaj chceš nenávratne odstrániť súbor '" + song + L"' ?");
    EXPECT_FALSE(FileSystemObject::FileExists(song));
    EXPECT_EQ(Tview().foreground(Tview().firstChild(L"zoznam.m3u")),
              MultiMedialny::palette().MissingEntryColor);
}

TEST_F(FileMenus, ThePlayerLetsGoOfWhatIsRenamedMovedOrDeleted) {
    const std::string tone = FileSystemObject::readAll(samplesFolder() + L"Ľudové\\Tancovačka.wav");
    folder.file(L"a.wav", tone);
    folder.file(L"b.wav", tone);
    folder.file(L"zoznam.m3u", "b.wav\r\n");
    show(L"a.wav");
    MediaPlayer& mp = explorer->player.mp;
    const auto play = [&](const wchar_t* name) {
        explorer->player.play(folder / name);
        return runUntil([&] { return mp.CurrentPosition() > 0.05; });
    };
    ASSERT_TRUE(play(L"a.wav"));
    {
        const Typing typing(L"c");
        choose(L"premenovat_subor");
    }
    EXPECT_TRUE(FileSystemObject::FileExists(folder / L"c.wav"));
    EXPECT_EQ(mp.FileName(), L"");
    EXPECT_FALSE(explorer->player.isPlaying());

    ASSERT_TRUE(play(L"zoznam.m3u"));
    person.answer({1, 1});
    select(L"c.wav");
    press(VK_DELETE);  // has nothing to do with the list
    EXPECT_EQ(mp.FileName(), folder / L"zoznam.m3u");
    select(L"b.wav");
    press(VK_DELETE);
    EXPECT_EQ(mp.FileName(), L"");
    EXPECT_FALSE(FileSystemObject::FileExists(folder / L"b.wav"));
}

}  // namespace
}  // namespace tunovka
