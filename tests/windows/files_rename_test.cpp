// Renaming by the input box: the file, the node, what is refused and what is told.
#include <gtest/gtest.h>

#include "core/errors.h"
#include "core/text.h"
#include "files/transfer_rules.h"
#include "support/disk_faults.h"
#include "support/file_menus.h"
#include "support/typing.h"

namespace tunovka {
namespace {

TEST_F(FileMenus, RenamingChangesTheNodeInPlace) {
    folder.file(L"Stará.mp3", "song");
    folder.file(L"zoznam.m3u", "nie je.mp3\r\n");
    show(L"stará.mp3");
    const Typing typing(L"Nová:verzia");
    press(VK_F2);
    EXPECT_EQ(typing.title, L" Premenovať súbor");
    EXPECT_EQ(trimBlanks(typing.prompt.substr(0, typing.prompt.find(L'\r'))),
              L"Napíš nový názov súboru");
    EXPECT_EQ(typing.offered, L"stará.mp3");
    EXPECT_EQ(typing.from, 0u);
    EXPECT_EQ(typing.to, 5u);
    EXPECT_TRUE(typing.hadFocus);
    EXPECT_EQ(contentOf(folder / L"Nová_verzia.mp3"), "song");
    EXPECT_EQ(folder.names().size(), 2u);
    ASSERT_TRUE(Tview().contains(L"nová_verzia.mp3"));
    EXPECT_EQ(Tview().text(L"nová_verzia.mp3"), L"Nová_verzia.mp3");
    EXPECT_EQ(Tview().selectedKey(), L"nová_verzia.mp3");
    EXPECT_EQ(explorer->LblBar.text(), folder / L"nová_verzia.mp3");

    const std::wstring entry = Tview().firstChild(L"zoznam.m3u");
    Tview().select(L"zoznam.m3u");
    const Typing list(L"iný");
    choose(L"premenovat_subor");
    EXPECT_EQ(Tview().firstChild(L"iný.m3u"), entry);
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(FileMenus, RenamingRefusesTheOldNameAndNamesInUse) {
    folder.file(L"a.mp3", "a");
    folder.file(L"b.mp3", "b");
    show(L"a.mp3");
    const auto refusal = [&](const wchar_t* name) {
        const Typing typing(name);
        choose(L"premenovat_subor");
        return person.seen.back();
    };
    for (const wchar_t* same : {L"a", L"a.mp3"})
        EXPECT_EQ(
            refusal(same),
            (BoxRequest{L" CHYBA", L"Názov súbor sa zhoduje s pôvodným názvom !", L"Ou kej ..."}));
    for (const wchar_t* used : {L"b", L"B", L"A"})
        EXPECT_EQ(refusal(used).text,
                  L"Tento názov súboru sa už používa ! Zmeň ho, alebo odstráň súbor s týmto "
                  L"názvom.");
    ASSERT_EQ(person.seen.size(), 5u);
    {
        const Typing cancelled(L"c", VK_ESCAPE);
        choose(L"premenovat_subor");
    }
    const Typing empty(L"");
    choose(L"premenovat_subor");
    EXPECT_EQ(person.seen.size(), 5u);
    EXPECT_EQ(contentOf(folder / L"a.mp3"), "a");
    EXPECT_EQ(contentOf(folder / L"b.mp3"), "b");
}

TEST_F(FileMenus, NamesThatTheFileSystemRefusesAreTold) {
    folder.file(L"a.mp3", "song");
    show(L"a.mp3");
    for (const std::wstring& name : {std::wstring(300, L'x'), std::wstring(L"<a|b>")}) {
        const Typing typing(name);
        choose(L"premenovat_subor");
        EXPECT_EQ(person.seen.back().text,
                  transferFailure(kBadFileName, errorDescription(kBadFileName)).text);
        EXPECT_EQ(Tview().text(L"a.mp3"), L"a.mp3");
        EXPECT_EQ(contentOf(folder / L"a.mp3"), "song");
    }
    EXPECT_EQ(person.seen.size(), 2u);
}

TEST_F(FileMenus, NamesOfBlanksAndDotsKeepTheExtension) {
    folder.file(L"a.mp3", "song");
    show(L"a.mp3");
    for (const wchar_t* name : {L"   ", L"...", L". ."}) {
        const Typing typing(name);
        choose(L"premenovat_subor");
        const std::wstring now = std::wstring(name) + L".mp3";
        EXPECT_EQ(contentOf(folder / now), "song");
        EXPECT_EQ(Tview().selectedKey(), now);
    }
    EXPECT_EQ(folder.names().size(), 1u);
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(FileMenus, ANodeOfAFileThatIsGoneMakesWayForTheNewName) {
    folder.file(L"a.mp3", "song");
    const std::wstring gone = folder.file(L"b.mp3");
    show(L"a.mp3");
    DeleteFileW(gone.c_str());
    const Typing typing(L"B");
    choose(L"premenovat_subor");
    EXPECT_EQ(contentOf(folder / L"B.mp3"), "song");
    EXPECT_EQ(Tview().count(), 1u);
    EXPECT_TRUE(Tview().contains(L"b.mp3"));
}

}  // namespace
}  // namespace tunovka
