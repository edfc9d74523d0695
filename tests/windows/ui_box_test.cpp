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

TEST(Box, EscapeRefusesAndEnterPressesTheRefusingButton) {
    for (const auto& [key, answer] : {std::pair{VK_ESCAPE, 0}, std::pair{VK_RETURN, 2}}) {
        Timer person;
        person.onTick = [&, key = static_cast<WPARAM>(key)] {
            const HWND focus = GetFocus();
            Window* control = windowOf(focus);
            if (!control || control->name() != L"Itlačítko2") return;
            PostMessageW(focus, WM_KEYDOWN, key, 0);
            PostMessageW(focus, WM_KEYUP, key, 0xC0000000);
            person.setInterval(0);
        };
        person.setInterval(10);
        EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE"), answer);
    }
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
    std::optional<Person> person;  // answers from the second box on
    int inner = -1;
    Timer opener;  // something that opens a second box while the first one waits
    opener.onTick = [&] {
        opener.setInterval(0);
        person.emplace(std::deque{2});
        inner = ask(L"Druhá", L"?", L"ÁNO;NIE");
    };
    opener.setInterval(1);
    EXPECT_EQ(ask(L"Prvá", L"?", L"ÁNO;NIE"), 0);
    EXPECT_EQ(BoxAnswer, 0);
    EXPECT_EQ(inner, 2);
    EXPECT_EQ(person->seen.size(), 2u);
}

}  // namespace
}  // namespace tunovka
