// The explorer's file commands: menus and keys, the system's dialogs, the input box, the clipboard,
// the player.
#include <gtest/gtest.h>

#include "core/text.h"
#include "support/disk_faults.h"
#include "support/file_menus.h"

namespace tunovka {
namespace {

class FileCommands : public FileMenus {
  protected:
    // Renames the selected file through the input box; nullopt gives up.
    void rename(std::optional<std::wstring> name) {
        person.type({std::move(name)});
        choose(L"premenovat_subor");
    }
};

TEST_F(FileCommands, ASongKeepsTheCapitalsOfItsName) {
    const ScratchFolder away{otherVolume()};
    const auto into = [&](const wchar_t* entry, const std::wstring& chosen) {
        explorer->contents.ListFolderContents(away.path());
        Tview().select(Tview().firstRoot());
        strom().select(chosen);  // where the picker starts
        person.saveAs({Person::kAsOffered});
        choose(entry);
    };
    for (const std::wstring name : {L"Ľúbezná PIESEŇ.MP3", L"\u212Aelvin İẞ.Wav"}) {
        SCOPED_TRACE(name.size());
        const std::vector<std::wstring> itAlone{name};
        const std::wstring key = lowerCased(name);
        away.file(name, "song");
        show(L"");
        into(L"kopirovat_do", other.path());
        EXPECT_EQ(other.names(), itAlone);

        show(L"");
        person.answer({1});
        dropOnContents(other / name.substr(0, name.size() - 3) + key.substr(key.size() - 3));
        ASSERT_TRUE(runUntil([&] { return Tview().contains(key); }));
        EXPECT_EQ(folder.names(), itAlone);
        DeleteFileW((folder / name).c_str());

        into(L"preunut_do", folder.path());
        EXPECT_EQ(folder.names(), itAlone);
        EXPECT_TRUE(away.names().empty());
        press(VK_RETURN);
        EXPECT_EQ(explorer->player.mp.FileName(), folder / name);
        explorer->player.mp.release();
        DeleteFileW((folder / name).c_str());

        explorer->txtsubor.setText(L"cut:" + (other / name));
        explorer->menuprestrom.setEnabled(L"strom_vloz_subor", true);
        person.saveAs({Person::kAsOffered});
        explorer->menuprestrom.choose(L"strom_vloz_subor");
        EXPECT_EQ(folder.names(), itAlone);

        select(key);
        rename(L"Iné MENO");
        EXPECT_EQ(person.inputs.back().offered, name);
        const std::wstring renamed = folder / L"Iné MENO." + name.substr(name.size() - 3);
        EXPECT_EQ(explorer->contents.selectedPath(), renamed);
        DeleteFileW(renamed.c_str());
    }
}

TEST_F(FileCommands, DeleteTakesAnEntrysFileWhileMenuAndF2RefuseIt) {
    const std::wstring song = other.file(L"a.mp3");
    folder.file(L"zoznam.m3u", std::string(song.begin(), song.end()) + "\r\nnie je.mp3\r\n");
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
    EXPECT_TRUE(person.seen.empty() && person.inputs.empty());
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

TEST_F(FileCommands, ThePlayerLetsGoOfWhatIsRenamedMovedOrDeleted) {
    const std::string tone = contentOf(samplesFolder() + L"Ľudové\\Tancovačka.wav");
    folder.fill({L"a.wav", L"b.wav"}, tone);
    folder.file(L"zoznam.m3u", "b.wav\r\n");
    show(L"a.wav");
    MediaPlayer& mp = explorer->player.mp;
    const auto play = [&](const wchar_t* name) {
        explorer->player.play(folder / name);
        return runUntil([&] { return mp.CurrentPosition() > 0.05; });
    };
    ASSERT_TRUE(play(L"a.wav"));
    rename(L"c");
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

TEST_F(FileCommands, RenamingChangesTheNodeInPlace) {
    folder.file(L"Stará.mp3", "song");
    folder.file(L"zoznam.m3u", "nie je.mp3\r\n");
    show(L"stará.mp3");
    person.type({L"Nová:verzia"});
    press(VK_F2);
    EXPECT_EQ(person.inputs[0].offered, L"Stará.mp3");
    EXPECT_TRUE(person.inputs[0].hadFocus);
    EXPECT_EQ(contentOf(folder / L"Nová_verzia.mp3"), "song");
    EXPECT_EQ(folder.names().size(), 2u);
    ASSERT_TRUE(Tview().contains(L"nová_verzia.mp3"));
    EXPECT_EQ(Tview().text(L"nová_verzia.mp3"), L"Nová_verzia.mp3");
    EXPECT_EQ(Tview().selectedKey(), L"nová_verzia.mp3");
    EXPECT_EQ(explorer->LblBar.text(), folder / L"Nová_verzia.mp3");

    const std::wstring entry = Tview().firstChild(L"zoznam.m3u");
    Tview().select(L"zoznam.m3u");
    rename(L"iný");
    EXPECT_EQ(Tview().firstChild(L"iný.m3u"), entry);
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(FileCommands, RenamingRefusesNamesThatCannotBe) {
    folder.file(L"a.mp3", "a");
    folder.file(L"b.mp3", "b");
    show(L"a.mp3");
    const std::wstring same = L"Názov súbor sa zhoduje s pôvodným názvom !",
                       used = L"Tento názov súboru sa už používa !",
                       bad = L"Došlo k neočakávanej chybe (č. 52)";
    const std::pair<std::wstring, std::wstring> refusals[]{
        {L"a", same}, {L"a.mp3", same}, {L"B", used},
        {L"A", used}, {L"<a|b>", bad},  {std::wstring(300, L'x'), bad}};
    for (const auto& [name, told] : refusals) {
        person.seen.clear();
        rename(name);
        ASSERT_EQ(person.seen.size(), 1u) << name;
        EXPECT_TRUE(person.seen[0].text.starts_with(told)) << name;
    }
    person.seen.clear();
    rename(std::nullopt);
    rename(L"");
    EXPECT_EQ(contentOf(folder / L"a.mp3") + contentOf(folder / L"b.mp3"), "ab");

    DeleteFileW((folder / L"b.mp3").c_str());  // its node stays
    for (const wchar_t* odd : {L"   ", L"...", L". .", L"B"}) {
        rename(odd);
        EXPECT_EQ(contentOf(folder / std::wstring(odd) + L".mp3"), "a");
    }
    EXPECT_EQ(folder.names().size(), 1u);
    EXPECT_EQ(Tview().count(), 1u);
    EXPECT_EQ(Tview().selectedKey(), L"b.mp3");
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(FileCommands, TheFocusComesBackAfterEveryCommand) {
    folder.fill({L"a.mp3", L"b.mp3"});
    show(L"a.mp3");
    const auto focusAfter = [&](const wchar_t* entry, std::size_t opened) {
        Tview().focus();
        choose(entry);
        EXPECT_EQ(person.seen.size() + person.inputs.size() + person.dialogs.size(), opened);
        EXPECT_TRUE(runUntil([&] { return Tview().hasFocus(); }, 5000)) << entry;
    };
    focusAfter(L"kopirovat_subor", 0);
    focusAfter(L"vlozit_subor", 1);
    focusAfter(L"kopirovat_do", 2);
    focusAfter(L"preunut_do", 3);
    person.type({L"c", std::nullopt});
    focusAfter(L"premenovat_subor", 4);
    focusAfter(L"premenovat_subor", 5);
    person.answer({2, 1});
    focusAfter(L"zmazat_subor", 6);
    focusAfter(L"zmazat_subor", 7);
    EXPECT_EQ(folder.names(), std::vector<std::wstring>{L"b.mp3"});
}

}  // namespace
}  // namespace tunovka
