// The explorer's file commands: menus and keys, the system's dialogs, the clipboard, the player.
#include <gtest/gtest.h>
#include <shlobj.h>

#include "support/dialog_answers.h"
#include "support/disk_faults.h"
#include "support/file_menus.h"
#include "support/samples.h"
#include "support/typing.h"
#include "ui/folder_picker.h"

namespace tunovka {
namespace {

TEST_F(FileMenus, CopyAndCutFillTheClipboardThatThePasteEntriesWaitFor) {
    folder.file(L"a.mp3");
    show(L"a.mp3");
    EXPECT_FALSE(explorer->prehrat.isEnabled(L"vlozit_subor"));
    choose(L"kopirovat_subor");
    EXPECT_EQ(clipboard(), L"copy:" + (folder / L"a.mp3"));
    choose(L"vystrihnut_subo");
    EXPECT_EQ(clipboard(), L"cut:" + (folder / L"a.mp3"));
    select(L"a.mp3");
    EXPECT_TRUE(explorer->prehrat.isEnabled(L"vlozit_subor"));
}

constexpr int kFolderTree = 14145;  // in the shell's folder dialog

// The dialog knows a folder by its name and its times. The first listing of a folder that has
// changed moves its last access, so that the dialog would not find it any more; an access that
// lies ahead stays.
void keepAccessTime(const std::wstring& folder) {
    const FileHandle handle(CreateFileW(folder.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ,
                                        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                        nullptr));
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    const std::uint64_t hour = 36'000'000'000;
    const std::uint64_t ahead =
        ((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime) + hour;
    time = {static_cast<DWORD>(ahead), static_cast<DWORD>(ahead >> 32)};
    EXPECT_TRUE(SetFileTime(handle.get(), nullptr, &time, nullptr));
}

TEST_F(FileMenus, CopyToAndMoveToAskTheShellForAFolder) {
    folder.file(L"a.mp3", "song");
    const std::wstring target = other.folder(L"Ľúbezné ψ");
    for (const std::wstring& path : {other.path(), target}) keepAccessTime(path);
    show(L"a.mp3");
    const auto answer = [&](HWND dialog) {
        // The dialog opens before it takes a selection: it is answered when it shows the folder.
        const auto selected = [&] {
            SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE,
                         reinterpret_cast<LPARAM>(target.c_str()));
            const HWND tree = GetDlgItem(dialog, kFolderTree);
            wchar_t text[MAX_PATH] = L"";
            TVITEMW item{};
            item.mask = TVIF_TEXT;
            item.hItem = TreeView_GetSelection(tree);
            item.pszText = text;
            item.cchTextMax = MAX_PATH;
            SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            return std::wstring(item.pszText) == L"Ľúbezné ψ";
        };
        EXPECT_TRUE(runUntil(selected));
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    };
    {
        const Answering person(explorer->handle(), answer);
        choose(L"kopirovat_do");
    }
    EXPECT_EQ(contentOf(target + L"\\a.mp3"), "song");
    EXPECT_EQ(contentOf(folder / L"a.mp3"), "song");
    {
        const Answering person(explorer->handle(), answer);
        choose(L"preunut_do");
    }
    EXPECT_EQ(contentOf(target + L"\\a.mp3"), "song");
    EXPECT_TRUE(folder.names().empty());
    EXPECT_EQ(Tview().count(), 0u);
    EXPECT_TRUE(person.seen.empty());
}

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

TEST_F(FileMenus, PasteAsksForTheNameAndWorksOnce) {
    folder.file(L"pieseň.mp3", "song");
    show(L"pieseň.mp3");
    choose(L"kopirovat_subor");
    const Answering answering(explorer->handle(), [&](HWND dialog) {
        wchar_t title[64] = L"";
        GetWindowTextW(dialog, title, 64);
        EXPECT_STREQ(title, L"Uložiť súbor ako ...");
        EXPECT_EQ(itemText(dialog, kNameBox), L"pieseň.mp3");
        wchar_t filter[64] = L"";
        SendDlgItemMessageW(dialog, kFilterBox, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(filter));
        EXPECT_STREQ(filter, L"mp3 súbory");
        SetDlgItemTextW(dialog, kNameBox, L"druhá.mp3");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    choose(L"vlozit_subor");
    EXPECT_EQ(contentOf(folder / L"druhá.mp3"), "song");
    EXPECT_TRUE(Tview().contains(L"druhá.mp3"));
    EXPECT_EQ(clipboard(), L"");
    select(L"druhá.mp3");
    EXPECT_FALSE(explorer->prehrat.isEnabled(L"vlozit_subor"));
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
