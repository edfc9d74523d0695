// Playlist editors on real windows and files: the list shows what the document holds, drops, the
// removals, the orders, closing.
#include <gtest/gtest.h>

#include "support/drag.h"
#include "support/editor_stage.h"
#include "support/error_of.h"
#include "ui/colors.h"

namespace tunovka {
namespace {

class EditorWindow : public EditorStage {};

TEST_F(EditorWindow, ShowsWhatThePlaylistHolds) {
    open(L"a.mp3\r\nnie.mp3\r\n#EXTM3U\r\nFile1=b.wav\r\n");
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"-nie.mp3", L"File1=b.wav"}));
    EXPECT_EQ(view().lblplejlist.text(), folder / L"list.m3u");
    EXPECT_EQ(view().lblpočet.text(), L"Počet odkazov v playliste: 3");
    EXPECT_EQ(view().lblbar.text(), folder / L"a.mp3");
    EXPECT_EQ(view().Lview.selected(), 0u);
    EXPECT_FALSE(editor().document.changed());

    view().select(1);
    EXPECT_EQ(view().lblbar.text(), L"Odkaz na neexistujúci súbor");
    folder.file(L"nie.mp3");
    view().select(1);
    EXPECT_EQ(view().lblbar.text(), folder / L"nie.mp3");
    EXPECT_EQ(rows()[1], L"-nie.mp3");  // red as when it was read
}

TEST_F(EditorWindow, APlaylistWithoutEntriesShowsThePlaceholder) {
    open(L"[playlist]\r\n");
    EXPECT_EQ(rows(), Texts{L"neboli nájdené žiadne súbory"});
    view().select(0);
    openMenu();
    for (const wchar_t* entry : {L"ulozit_ako_plejlist", L"info_o_subore", L"prehrat"})
        EXPECT_FALSE(window->menu1.isEnabled(entry));
    window->menu1.onClick(L"prehrat")();
    EXPECT_EQ(program.told, Texts{});
    EXPECT_EQ(errorOf([&] { drop(folder / L"a.mp3"); }), kInvalidCall);
    EXPECT_EQ(rows().size(), 1u);

    // Once it is taken out, the list is as good as a new one.
    EXPECT_TRUE(window->menu1.isEnabled(L"odstranit_polozku"));
    pressKey(VK_DELETE);
    EXPECT_EQ(rows(), Texts{});
    person.closeMenus();
    SendMessageW(view().Lview.handle(), WM_CONTEXTMENU, 0, -1);  // the Menu key
    EXPECT_FALSE(window->menu1.isEnabled(L"odstranit_polozku"));
    drop(folder / L"a.mp3");
    openMenu();
    EXPECT_TRUE(window->menu1.isEnabled(L"ulozit_ako_plejlist"));
}

// The list scrolls while a drag is near its edge, and no further when it ends.
TEST_F(EditorWindow, AMoveGoesToTheHighlightedRow) {
    openLong();
    ListView& list = view().Lview;
    const std::wstring key = list.selectedKey(), path = folder / L"a.mp3";
    dragState = {L"Lview", key, path};
    Drag drag(list, {20, list.clientSize().height - 2}, createTextData(path));
    const auto highlighted = list.dropHighlight();
    ASSERT_TRUE(highlighted && list.firstVisible() > 0);
    UpdateWindow(list.handle());
    EXPECT_EQ(colorAt(list, 0.9, list.clientSize().height - 4), colors().dropTarget);
    letTimersTick(100);  // it would scroll again
    drag.drop();
    dragState = {};
    ASSERT_TRUE(runUntil([&] { return editor().document.changed(); }));
    EXPECT_EQ(editor().document.find(key), highlighted);
}

TEST_F(EditorWindow, EachIsNumberedByTheOthersThatAreOpen) {
    const auto opened = [&](const wchar_t* number) {
        frmplejlist::open(program, L"nový playlist");
        auto& last = dynamic_cast<frmplejlist&>(*Forms::loaded().back());
        EXPECT_EQ(last.strip().text(), std::wstring(L" Editor playlistov ") + number);
        return &last;
    };
    opened(L"0");
    frmplejlist *const second = opened(L"1"), *const third = opened(L"2");
    EXPECT_TRUE(second->unload());
    opened(L"2");
    EXPECT_EQ(errorOf([&] { frmplejlist::open(program, folder / L"nie.m3u"); }), kFileNotFound);
    EXPECT_EQ(Forms::loaded().size(), 3u);  // no window is left of what could not be read

    expect({3, 2});
    third->Lview_OLEDragDrop(folder / L"a.mp3", {}, {});
    EXPECT_FALSE(Forms::unloadTagged(L"vrtilkofrm"));
    EXPECT_FALSE(third->isClosing());
    EXPECT_TRUE(Forms::unloadTagged(L"vrtilkofrm"));
    EXPECT_TRUE(Forms::loaded().empty());
    // The last one's end ends the program's loop, which the next test needs.
    MSG message;
    runUntil([&] { return PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != 0; },
             2000);
}

TEST_F(EditorWindow, TheMenuFollowsTheSelection) {
    open(L"a.mp3\r\nnie.mp3\r\n");
    // What depends on it: of a file, of the list, of two rows.
    const auto offered = [&](std::size_t row) {
        view().select(row);
        openMenu();
        std::string states;
        for (const wchar_t* name : {L"info_o_subore", L"prehrat", L"ulozit_ako_plejlist",
                                    L"odstranit_polozku", L"odstranit_duplicitu", L"zoradit"})
            states += window->menu1.isEnabled(name) ? '+' : '-';
        return states;
    };
    EXPECT_EQ(offered(0), "++++++");
    EXPECT_EQ(offered(1), "--++++");
    pressKey(VK_DELETE);
    EXPECT_EQ(offered(0), "++++--");
}

// By the mouse, by Enter and by the menu.
TEST_F(EditorWindow, TheSelectedFileIsPlayedAndInformedOf) {
    open(L"a.mp3\r\nb.wav\r\n");
    ListView& list = view().Lview;
    list.focus();
    const LPARAM second = MAKELPARAM(30, static_cast<int>(list.rowHeight() * 1.5));
    SendMessageW(list.handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, second);
    SendMessageW(window->handle(), WM_COMMAND, IDOK, 0);
    choose(L"info_o_subore");
    const std::wstring path = folder / L"b.wav";
    DeleteFileW(path.c_str());
    choose(L"info_o_subore");
    EXPECT_EQ(program.told,
              (Texts{L"hraj:" + path, L"hraj:" + path, L"info:" + path, L"info:chyba"}));
}

TEST_F(EditorWindow, DroppedFilesAreCheckedInOrder) {
    open(L"a.mp3\r\n");
    folder.fill({L"A.MP3", L"obraz.png"});
    expect({1, 1, 0, 2, 1});
    drop(L"\"" + (folder / L"b.wav") + L"\"");
    drop((folder / L"b.wav") + L"\r\n");
    drop(folder / L"nikde.png");
    drop(L"");
    drop(folder.path());
    EXPECT_EQ(person.seen.size(), 0u);
    drop(folder / L"obraz.png");
    drop(folder / L"A.MP3");
    drop(folder / L"a.mp3");
    drop(folder / L"a.mp3");
    EXPECT_EQ(rows(), Texts{L"a.mp3"});
    EXPECT_FALSE(editor().document.changed());
    drop(folder / L"a.mp3");
    drop(folder / L"b.wav");
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"a.mp3", L"b.wav"}));
    EXPECT_EQ(view().Lview.selected(), 2u);
    EXPECT_EQ(view().lblbar.text(), folder / L"b.wav");
    EXPECT_TRUE(editor().document.changed());
    ASSERT_EQ(person.seen.size(), 5u);
    EXPECT_EQ(person.seen[0].title, L" Neplatný typ");
}

TEST_F(EditorWindow, ADroppedPlaylistIsMergedWhenAgreed) {
    const std::wstring other = folder / L"other.pls";
    open(L"file1=.." + (folder / L"b.wav").substr(2) + L"\r\nFile2=nie.mp3\r\n", L"other.pls");
    open(L"a.mp3\r\n");
    expect({2, 1, 1});
    drop(other);
    EXPECT_FALSE(editor().document.changed());
    drop(other);
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"b.wav", L"-nie.mp3"}));
    EXPECT_EQ(view().Lview.selected(), 2u);
    EXPECT_TRUE(editor().document.changed());
    ASSERT_EQ(person.seen.size(), 3u);
    EXPECT_EQ(person.seen[0].buttons, L" ÁNO ;Zrušiť");
    EXPECT_EQ(person.seen[2].text,
              L"Počet pridaných súborov: 2\rPočet pridaných neplatných odkazov: 1");
}

TEST_F(EditorWindow, RemovalsAskOrReport) {
    open(L"a.mp3\r\na.mp3\r\n.\\a.mp3\r\nnie.mp3\r\nnie.mp3\r\n");
    expect({2, 1, 1});
    for (const std::size_t left : {5u, 4u, 4u}) {  // "." makes it another path
        choose(L"odstranit_duplicitu");
        EXPECT_EQ(rows().size(), left);
    }
    ASSERT_EQ(person.seen.size(), 3u);
    EXPECT_EQ(person.seen[1].text,
              L"Bola nájdená jedna duplicitná položka Chceš odstrániť tieto položky zo zoznamu ?");
    EXPECT_EQ(person.seen[2].text, L"Neboli nájdené žiadne duplicitné v zozname.");

    open(L"a.mp3\r\n1.mp3\r\n2.mp3\r\n3.mp3\r\n4.mp3\r\n5.mp3\r\n");
    folder.file(L"5.mp3");  // its row is red, its file is there by now
    expect({1});
    choose(L"odstranit_neplatne_odkazy");
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"-5.mp3"}));
    EXPECT_EQ(view().Lview.selected(), 0u);
    EXPECT_TRUE(editor().document.changed());
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].text, L"Boli odstránené 4 neplatné položky");
    choose(L"neradit");
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"5.mp3"}));
}

// While it is sorted new rows take their place and none is moved by hand.
TEST_F(EditorWindow, SortingIsLeftBehindByTheLoadOrder) {
    open(L"b.wav\r\nnie.mp3\r\nc.wma\r\n");
    choose(L"zoradit_zostupne");
    EXPECT_EQ(rows(), (Texts{L"-nie.mp3", L"c.wma", L"b.wav"}));
    choose(L"zoradit_vzostupne");
    drop(folder / L"a.mp3");
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"b.wav", L"c.wma", L"-nie.mp3"}));
    EXPECT_EQ(view().lblbar.text(), folder / L"a.mp3");
    const std::wstring first = folder / L"a.mp3";
    drop(first, 3, DragState{L"Lview", editor().document.rows()[0].key, first});
    EXPECT_EQ(rows()[0], L"a.mp3");
    choose(L"neradit");
    EXPECT_EQ(rows(), (Texts{L"b.wav", L"-nie.mp3", L"c.wma", L"a.mp3"}));
    const std::wstring moved = folder / L"c.wma";
    drop(moved, 0, DragState{L"Lview", editor().document.rows()[2].key, moved});
    choose(L"neradit");
    EXPECT_EQ(rows(), (Texts{L"c.wma", L"b.wav", L"-nie.mp3", L"a.mp3"}));
}

TEST_F(EditorWindow, DeleteSelectsTheRowThatFollows) {
    open(L"a.mp3\r\nb.wav\r\nc.wma\r\n");
    view().select(1);
    pressKey(VK_DELETE);
    EXPECT_EQ(rows(), (Texts{L"a.mp3", L"c.wma"}));
    EXPECT_EQ(view().lblbar.text(), folder / L"c.wma");
    pressKey(VK_DELETE);
    EXPECT_EQ(view().Lview.selected(), 0u);
    pressKey(VK_DELETE);
    pressKey(VK_DELETE);
    EXPECT_EQ(view().lblpočet.text(), L"Počet odkazov v playliste: 0");
    EXPECT_EQ(view().lblbar.text(), L"");
}

TEST_F(EditorWindow, TheFocusComesBackAfterEveryCommand) {
    open(L"a.mp3\r\na.mp3\r\nnie.mp3\r\nb.wav\r\n");
    expect({1, 1, 1, 1, 1});
    person.saveAs({folder / L"x.m3u"});
    for (const wchar_t* entry :
         {L"zoradit_zostupne", L"neradit", L"odstranit_duplicitu", L"odstranit_neplatne_odkazy",
          L"ulozit_ako_plejlist", L"odstranit_polozku"}) {
        view().Lview.focus();
        choose(entry);
        EXPECT_TRUE(runUntil([&] { return view().Lview.hasFocus(); }, 5000)) << entry;
    }
    EXPECT_EQ(person.seen.size(), 4u);
    EXPECT_EQ(person.dialogs.size(), 1u);
    EXPECT_EQ(rows(), Texts{L"b.wav"});
}

}  // namespace
}  // namespace tunovka
