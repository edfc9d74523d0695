// The player's panel in the explorer: what a person sees and hears about.
#include <gtest/gtest.h>

#include "support/disk_faults.h"
#include "support/file_menus.h"
#include "support/player_watch.h"

namespace tunovka {
namespace {

class Panel : public FileMenus {
  protected:
    void play(const wchar_t* key) {
        show(key);
        pressAndRelease(panel().Image1);
    }
    PlayerPanel& panel() { return explorer->player; }
    std::wstring title() { return panel().PicČas.text(); }
    COLORREF strip(double share) { return colorAt(panel().PicProgres, share); }
    bool untilTitle(const wchar_t* part) {
        return runUntil([&] { return title().find(part) != std::wstring::npos; });
    }
};

TEST_F(Panel, AShortToneIsShownFromItsOpeningToItsEnd) {
    folder.file(L"tón.wav", tone(2));
    play(L"tón.wav");
    EXPECT_EQ(title(), L"Otvára sa: tón.wav");
    EXPECT_EQ(panel().lblčas.text(), L"");
    EXPECT_TRUE(panel().isPlaying());
    ASSERT_TRUE(untilTitle(L"Titul: neuvedený"));
    EXPECT_EQ(panel().lblčas.text(), L"0:02 min");
    ASSERT_TRUE(runUntil([&] { return strip(0.3) != strip(0.99); })) << "the strip grows";
    ASSERT_TRUE(runUntil([&] { return !panel().isPlaying(); }));
    EXPECT_EQ(panel().lblčas.text() + panel().lblušielčas.text(), L"");
    ASSERT_TRUE(runUntil([&] { return strip(0.3) == strip(0.99); })) << "and is empty at the end";
}

TEST_F(Panel, ABrokenFileIsToldAndNothingIsShownOfIt) {
    folder.file(L"zlý.mp3", noise(5000));
    play(L"zlý.mp3");
    ASSERT_TRUE(runUntil([&] { return !person.seen.empty(); }));
    const wchar_t question[] =
        L"Pri pokuse prehrať požadovaný súbor došlo ku chybe : Súbor nie je zvuk, ktorý sa dá "
        L"prehrať. Cheš prehrať súbor v predvolenom programe ?";
    EXPECT_EQ(person.seen[0], (BoxRequest{L" CHYBA", question, L"ÁNO;NIE"}));
    EXPECT_FALSE(panel().isPlaying());
    EXPECT_EQ(title(), L"");
}

TEST_F(Panel, TheButtonsStepThroughListsOfTheirKinds) {
    for (const wchar_t* name : {L"a.wav", L"b.wav"}) folder.file(name, tone(20));
    folder.file(L"1.pls", "File1=a.wav\nTitle1=A\nFile2=b.wav\nTitle2=B\n");
    folder.file(L"2.m3u", "#EXTINF:1,A\na.wav\n#EXTINF:1,B\nb.wav\n");
    for (const wchar_t* list : {L"1.pls", L"2.m3u"}) {
        play(list);
        ASSERT_TRUE(untilTitle(L"Titul: A")) << list;
        pressAndRelease(panel().Image5);
        ASSERT_TRUE(untilTitle(L"Titul: B")) << list;
        pressAndRelease(panel().Image4);
        ASSERT_TRUE(untilTitle(L"Titul: A")) << list;
        EXPECT_TRUE(panel().isPlaying());
    }
    const LPARAM place = MAKELPARAM(panel().PicProgres.clientSize().width * 9 / 10, 3);
    for (const UINT message : {WM_LBUTTONDOWN, WM_MOUSEMOVE})
        SendMessageW(panel().PicProgres.handle(), message, MK_LBUTTON, place);
    EXPECT_TRUE(runUntil([&] { return panel().lblušielčas.text() >= L"0:01 min"; }));
    EXPECT_NE(strip(0.5), strip(0.99)) << "the knob stays in the hand that drags it";
    pressAndRelease(panel().Image2);
    panel().mp.onNotification({MediaNotification::Kind::NewStream});  // of before, heard late
    EXPECT_EQ(title(), L"");
}

TEST_F(Panel, WhatPlaysIsReleasedForACommandAndDisksAreAskedOnWorkers) {
    const std::wstring path = folder.file(L"a.wav", tone(20));
    folder.file(L"l.m3u", "niet.wav\r\na.wav\r\n");
    for (const wchar_t* key : {L"a.wav", L"l.m3u"}) {
        play(key);
        ASSERT_TRUE(untilTitle(L"Titul")) << key;
        std::atomic<int> onThisThread = 0, onOthers = 0;
        const DWORD thisThread = GetCurrentThreadId();
        const OddDisk disk([&](DiskCall, const std::wstring&, DWORD&) {
            ++(GetCurrentThreadId() == thisThread ? onThisThread : onOthers);
            return ERROR_SUCCESS;
        });
        panel().release(folder / L"b.wav");
        EXPECT_TRUE(panel().isPlaying()) << "it has nothing to do with what plays";
        panel().release(path);
        EXPECT_EQ(panel().mp.FileName() + title(), L"");
        EXPECT_EQ(onThisThread, 0);
        EXPECT_GT(onOthers, 0);
        EXPECT_FALSE(isHeld(path));
    }
}

}  // namespace
}  // namespace tunovka
