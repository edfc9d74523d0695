// Controls under hands that do not do what is expected of them.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/frm_o_programe.h"
#include "support/person.h"
#include "ui/form.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

TEST(Controls, ArrowsMoveBetweenTheAnswersOfABox) {
    Person person({2});
    person.before = [](const Form& box) {
        for (const WPARAM key : {VK_LEFT, VK_LEFT, VK_LEFT, VK_RIGHT}) {
            MSG press{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
            EXPECT_TRUE(filterMessage(press));
        }
        EXPECT_TRUE(control(box, L"Itlačítko2").hasFocus());
    };
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO;NIE;STORNO"), 2);
}

TEST(Controls, EachOfManyLongAnswersCanBeReached) {
    const std::wstring caption(40, L'W');
    frmBox box(nullptr, L"T", L"Otázka", caption + L';' + caption + L";NIE;" + caption + caption);
    const Size inside = box.clientSize();
    for (int i = 1; i <= 4; ++i) {
        const Rect button = control(box, L"Itlačítko" + std::to_wstring(i)).bounds();
        EXPECT_TRUE(button.x >= 0 && button.right() <= inside.width) << i;
        EXPECT_LE(button.bottom(), inside.height) << i;
    }
}

TEST(Controls, APictureAnswersThePointerAndShowsThatItIsOff) {
    frmBox form(nullptr, L"T", L"Otázka", L"O.K.");
    form.show();
    auto& closer = dynamic_cast<Image&>(control(form, L"IZavri"));
    EXPECT_EQ(closer.look(), Skin::Look::Plain);
    const auto middle = [&] {
        UpdateWindow(closer.handle());
        return colorAt(closer, 0.5);
    };
    const COLORREF plain = middle();
    SendMessageW(closer.handle(), WM_MOUSEMOVE, 0, MAKELPARAM(3, 3));
    EXPECT_EQ(closer.look(), Skin::Look::Lit);
    EXPECT_NE(middle(), plain);
    const auto windows = WindowList::ofThisThread();
    EXPECT_TRUE(std::ranges::any_of(windows, [](HWND window) {
        return SendMessageW(window, TTM_GETTOOLCOUNT, 0, 0) == 1;
    })) << "a tip";
    SendMessageW(closer.handle(), WM_MOUSELEAVE, 0, 0);
    EXPECT_EQ(closer.look(), Skin::Look::Plain);
    closer.setEnabled(false);
    EXPECT_EQ(closer.look(), Skin::Look::Off);
}

// While another program is in front no window of this one is active.
TEST(Controls, ABoxBelongsToTheLastActiveWindowAndAClickOnThatBringsItToTheFront) {
    Form& first = Forms::load<frmOprograme>(nullptr);
    Form& last = Forms::load<frmOprograme>(nullptr);
    first.show();
    last.show();
    ASSERT_TRUE(runUntil([&] { return GetActiveWindow() == last.handle(); }));
    SetForegroundWindow(GetDesktopWindow());
    SetActiveWindow(GetDesktopWindow());
    Person person({1});
    person.before = [&](const Form& box) {
        EXPECT_EQ(GetWindow(box.handle(), GW_OWNER), last.handle());
        SetForegroundWindow(GetDesktopWindow());
        SendMessageW(last.handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(last.handle()),
                     MAKELPARAM(HTERROR, WM_LBUTTONDOWN));
        EXPECT_EQ(GetForegroundWindow(), box.handle());
    };
    EXPECT_EQ(ask(L"T", L"Otázka", L"ÁNO"), 1);
    Forms::unloadAll();
    runLoop();
}

}  // namespace
}  // namespace tunovka
