// The message box on real windows.
#include <gtest/gtest.h>

#include "core/errors.h"
#include "core/loop.h"
#include "support/person.h"
#include "ui/box.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

TEST(Box, ReportsTheButtonAndShowsTheRequest) {
    Person person({2, 3, 1, 0});
    EXPECT_EQ(ask(L"  Uložiť zmeny ?", L"Otázka", L"ÁNO;NIE;STORNO"), 2);
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE;STORNO"), 3);
    EXPECT_EQ(ask(L"T", L"Otázka", L" ÁNO ;Zrušiť"), 1);
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE"), 0);
    EXPECT_EQ(BoxAnswer, 0);
    ASSERT_EQ(person.seen.size(), 4u);
    EXPECT_EQ(person.seen[0], (BoxRequest{L" Uložiť zmeny ?", L"Otázka", L"ÁNO;NIE;STORNO"}));
    EXPECT_EQ(person.seen[2].buttons, L" ÁNO ;Zrušiť");
}

TEST(Box, TheReleaseAnswersWhereverThePointerIs) {
    Timer person;
    person.onTick = [&] {
        Form* box = dynamic_cast<Form*>(windowOf(GetActiveWindow()));
        if (!box) return;
        Window& button = *controlNamed(*box, L"Itlačítko1");
        SendMessageW(button.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        EXPECT_EQ(dynamic_cast<Image&>(button).shownPicture(), L"buton2");
        SendMessageW(button.handle(), WM_LBUTTONUP, 0, MAKELPARAM(-500, 900));
    };
    person.setInterval(10);
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE"), 1);
}

TEST(Box, EscapeRefusesAndEnterPressesTheRefusingButton) {
    WPARAM key = VK_ESCAPE;
    Timer person;
    person.onTick = [&] {
        const HWND focus = GetFocus();
        Window* control = windowOf(focus);
        if (!control || control->name() != L"Itlačítko2") return;
        PostMessageW(focus, WM_KEYDOWN, key, 0);
        PostMessageW(focus, WM_KEYUP, key, 0xC0000000);
        person.setInterval(0);
    };
    person.setInterval(10);
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE"), 0);
    key = VK_RETURN;
    person.setInterval(10);
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE"), 2);
}

TEST(Box, GrowsWithItsTextButNeverPastTheScreen) {
    const auto heightOf = [](const std::wstring& text) {
        frmBox box(nullptr, L"T", text, L"O.K.");
        return box.clientSize().height;
    };
    const int one = heightOf(L"Krátky text");
    const int two = heightOf(L"Prvý riadok\rdruhý riadok\rtretí riadok");
    EXPECT_GT(two, one);
    std::wstring endless;
    for (int i = 0; i < 3000; ++i) endless += L"veľmi dlhý text ";
    EXPECT_GT(heightOf(endless), two);
    EXPECT_LE(heightOf(endless), GetSystemMetrics(SM_CYSCREEN));
}

TEST(Box, AFailureThatNobodyHandledBecomesANoticeAfterTheOpenBox) {
    installFailureNotice();
    Person person({1, 1});
    guarded([] { throw RuntimeError(kOverflow); });
    EXPECT_EQ(ask(L"Prvá", L"Otázka", L"ÁNO;NIE"), 1);
    ASSERT_TRUE(runUntil([&] { return person.seen.size() == 2; }));
    EXPECT_EQ(person.seen[0].title, L" Prvá");
    EXPECT_EQ(person.seen[1], (BoxRequest{L" CHYBA", L"Chyba č. 6: Overflow", L"Rozumiem ..."}));
}

TEST(Box, ABoxOverAnotherNeverAnswersForIt) {
    std::unique_ptr<Person> person;
    int inner = -1;
    Timer opener;  // something that opens a second box while the first one waits
    opener.onTick = [&] {
        opener.setInterval(0);
        Person second({2});
        inner = ask(L"Druhá", L"?", L"ÁNO;NIE");
        person = std::make_unique<Person>();
    };
    opener.setInterval(1);
    EXPECT_EQ(ask(L"Prvá", L"?", L"ÁNO;NIE"), 0);
    EXPECT_EQ(BoxAnswer, 0);
    EXPECT_EQ(inner, 2);
}

}  // namespace
}  // namespace tunovka
