// What windows are made of, also under hands that do not do what is expected of them: the list with
// its picture scroll bar, the message box, pictures.
#include <gtest/gtest.h>

#include <algorithm>

#include "app/frm_o_programe.h"
#include "support/error_of.h"
#include "support/person.h"
#include "ui/frm_box.h"
#include "ui/image_scroller.h"

namespace tunovka {
namespace {

struct NamedRow {
    std::wstring key, text;
    std::wstring name() const { return text; }
};

class NumberedRows : public ListRows<NamedRow> {
  public:
    ListRow row(std::size_t position) const override {
        return {.key = at(position).key, .name = at(position).text, .picture = L"winamp1"};
    }
    // "File 3.mp3", "File 2.mp3", "File 1.mp3", with the keys "0", "1", "2".
    void fill(int count) {
        std::vector<NamedRow> rows;
        for (int i = 0; i < count; ++i)
            rows.push_back({std::to_wstring(i), L"File " + std::to_wstring(count - i) + L".mp3"});
        setRows(std::move(rows));
    }
};

class List : public testing::Test {
  protected:
    List() {
        scroller.place({10, 10, 280, 240});
        form.show();
    }
    void fill(int count) {
        rows.fill(count);
        list.ensureVisible(0);
        scroller.refresh();
    }
    int page() const { return static_cast<int>(list.rowsInView()); }
    int thumb() const { return scroller.Iposuv.bounds().y; }
    // The middle of a row that is in view.
    Point rowPoint(std::size_t position) {
        const int row = static_cast<int>(list.rowHeight());
        for (int y = 0; y < list.clientSize().height; ++y)
            if (list.itemAt({20, y}) == position) return {20, y + row / 2};
        ADD_FAILURE() << "row " << position << " is not in view";
        return {};
    }

    struct Stage : Form {
        Stage() : Form({.name = L"frmStage", .title = L"", .size = {300, 260}}) {}
    } form;
    NumberedRows rows;
    ListView list{{.name = L"Lview", .text = L"Zoznam", .parent = &form}, rows};
    ImageScroller scroller{form, list, rowsPerPageCut};
};

TEST_F(List, ScrollsByTheWheelAndByKeys) {
    fill(30000);
    turnWheel(list, -WHEEL_DELTA);
    const std::size_t notch = list.firstVisible();
    EXPECT_GT(notch, 0u);
    for (int i = 0; i < 4; ++i) turnWheel(list, -WHEEL_DELTA / 4);  // a wheel that tells quarters
    EXPECT_EQ(list.firstVisible(), 2 * notch);
    turnWheel(list, WHEEL_DELTA);
    EXPECT_EQ(list.firstVisible(), notch);
    list.focus();
    pressKey(list, VK_END);
    EXPECT_EQ(list.selectedKey(), L"29999");
    EXPECT_EQ(list.firstVisible(), 30000u - page());
    EXPECT_EQ(GetWindowLongW(list.handle(), GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL), 0);
    fill(3);
    EXPECT_EQ(list.firstVisible(), 0u);
}

TEST_F(List, TellsItsEventsInTheirOrder) {
    fill(20);
    std::wstring told;
    list.onMouseDown = [&](MouseButton, Point) { told += L"down " + list.selectedKey() + L" "; };
    list.onContextMenu = [&](Point) { told += L"menu "; };
    list.onDoubleClick = [&] { told += L"double "; };
    list.onSelectionByKey = [&] { told += L"key " + list.selectedKey() + L" "; };
    list.onBeginDrag = [&](std::size_t position) { told += L"drag " + std::to_wstring(position); };
    const auto tells = [&] { return std::exchange(told, L""); };

    clickAt(list, rowPoint(2));
    EXPECT_EQ(tells(), L"down 2 ");
    for (const UINT press : {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK}) {
        clickAt(list, rowPoint(3), press, WM_RBUTTONUP);
        EXPECT_EQ(tells(), L"down 3 menu ");
    }
    clickAt(list, rowPoint(1), WM_LBUTTONDBLCLK);
    EXPECT_EQ(tells(), L"down 1 double ");
    pressKey(list, VK_DOWN);
    EXPECT_EQ(tells(), L"key 2 ");
    SendMessageW(list.handle(), WM_CHAR, L'F', 1);  // with which all names begin
    EXPECT_EQ(tells(), L"key 3 ");
    fill(2);
    clickAt(list, {20, list.clientSize().height - 2}, WM_LBUTTONDBLCLK);
    EXPECT_EQ(tells(), L"down  ");  // and plays nothing
    fill(20);

    const Point from = rowPoint(4);
    SendMessageW(list.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    SendMessageW(list.handle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(from.x + 40, from.y));
    EXPECT_EQ(tells(), L"down 4 drag 4");
}

TEST_F(List, AHeldArrowRepeatsAfterAPauseAndStopsWhenTheMouseIsTaken) {
    fill(1000);
    const DWORD start = GetTickCount();
    SendMessageW(scroller.Idole.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    ASSERT_TRUE(runUntil([&] { return list.firstVisible() >= 1; }));
    EXPECT_GE(GetTickCount() - start, 280u);
    ASSERT_TRUE(runUntil([&] { return list.firstVisible() >= 6; }));
    EXPECT_GE(GetTickCount() - start, 500u);
    ReleaseCapture();
    const std::size_t row = list.firstVisible();
    letTimersTick(50);  // the interval of an arrow that is still held
    EXPECT_EQ(list.firstVisible(), row);
}

TEST_F(List, TheThumbDrivesTheListAndFollowsIt) {
    fill(25);
    const int height = scroller.Iposuv.bounds().height;
    for (const int listHeight : {200, 240}) scroller.place({10, 10, 280, listHeight});
    scroller.refresh();
    EXPECT_EQ(scroller.Iposuv.bounds().height, height);

    fill(30000);
    const int top = thumb();
    const HWND handle = scroller.Iposuv.handle();
    SendMessageW(handle, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 4));
    SendMessageW(handle, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(thumb(), top + 1);  // it does not jump to the pointer
    SendMessageW(handle, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 1000));
    SendMessageW(handle, WM_LBUTTONUP, 0, MAKELPARAM(5, 1000));
    EXPECT_EQ(scroller.Iposuv.bounds().bottom(), scroller.Idole.bounds().y);
    EXPECT_EQ(list.firstVisible(), 30000u - page());

    const int bottom = thumb();
    for (int i = 0; i < 3; ++i) pressAndRelease(scroller.Ihore);
    EXPECT_EQ(thumb(), bottom);  // the steps are far below a pixel, and yet they count
    EXPECT_EQ(list.firstVisible(), 30000u - page() - 4);

    list.focus();
    pressKey(list, VK_HOME);
    list.select(0);
    scroller.followSelection();
    EXPECT_EQ(thumb(), top);
    list.ensureVisible(29000);
    turnWheel(list, -WHEEL_DELTA);
    EXPECT_GT(thumb(), (top + bottom) * 3 / 4);
}

TEST_F(List, TooManyRowsForItsCountLeaveTheListAsItIs) {
    fill(32767);
    EXPECT_TRUE(scroller.PicPosuv.isVisible());
    EXPECT_EQ(errorOf([&] { fill(32768); }), kOverflow);
    EXPECT_FALSE(scroller.PicPosuv.isVisible());
    EXPECT_EQ(list.count(), 32768u);
    scroller.place({10, 10, 280, 200});  // no second notice
    turnWheel(list, -WHEEL_DELTA);
    EXPECT_GT(list.firstVisible(), 0u);
    fill(100);
    EXPECT_TRUE(scroller.PicPosuv.isVisible());
}

TEST(Box, EscapeRefusesAndEnterPressesTheRefusingButton) {
    for (const auto& [key, answer] : {std::pair{VK_ESCAPE, 0}, std::pair{VK_RETURN, 2}}) {
        const When opened(
            [] {
                const Window* const control = windowOf(GetFocus());
                return control && control->name() == L"Itlačítko2";
            },
            [key = static_cast<WPARAM>(key)] {
                PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
                PostMessageW(GetFocus(), WM_KEYUP, key, 0xC0000000);
            });
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
    EXPECT_EQ(person.seen[1], (BoxRequest{L" CHYBA", L"Chyba č. 6: " + errorDescription(kOverflow),
                                          L"Rozumiem ..."}));
}

TEST(Box, ABoxOverAnotherNeverAnswersForIt) {
    std::optional<Person> person;  // answers from the second box on
    int inner = -1;
    // Something opens a second box while the first one waits.
    const When first([] { return true; },
                     [&] {
                         person.emplace(std::deque{2});
                         inner = ask(L"Druhá", L"?", L"ÁNO;NIE");
                         EXPECT_EQ(BoxAnswer, 2);
                     });
    EXPECT_EQ(ask(L"Prvá", L"?", L"ÁNO;NIE"), 0);
    EXPECT_EQ(BoxAnswer, 0);
    EXPECT_EQ(inner, 2);
    EXPECT_EQ(person->seen.size(), 2u);
}

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
