#include "ui/list_view.h"

#include <gtest/gtest.h>

#include "core/errors.h"
#include "core/loop.h"
#include "support/error_of.h"
#include "support/test_rows.h"
#include "ui/form.h"

namespace tunovka {
namespace {

class ListForm : public Form {
  public:
    ListForm() : Form(FormArgs{.name = L"frmtest", .caption = L"test", .size = {300, 240}}) {
        MultiMedialny::InitSharedTables();
        list.setBounds({10, 10, 280, 205});
        show();
        yieldNow();
    }
    TestRows rows;
    ListView list{{.name = L"Lview", .text = L"Zoznam", .parent = this, .header = L"Súbory"}, rows};
};

void click(const ListView& list, UINT down, UINT up, Point point) {
    const LPARAM place = MAKELPARAM(point.x, point.y);
    SendMessageW(list.handle(), down, down == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON, place);
    SendMessageW(list.handle(), up, 0, place);
}

void pressKey(const ListView& list, WORD key) {
    SendMessageW(list.handle(), WM_KEYDOWN, key, 1);
}

// The middle of a row that is in view.
Point rowPoint(const ListView& list, std::size_t position) {
    const int row = static_cast<int>(list.rowHeight());
    for (int y = 0; y < list.clientSize().height; ++y)
        if (list.itemAt({20, y}) == position) return {20, y + row / 2};
    ADD_FAILURE() << "row " << position << " is not in view";
    return {};
}

TEST(ListView, hasNoScrollBarOfTheSystemAndScrollsYet) {
    ListForm form;
    ListView& list = form.list;
    form.rows.fill(30000);
    int scrolls = 0;
    list.onScroll = [&] { ++scrolls; };
    SendMessageW(list.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    const std::size_t notch = list.firstVisible();
    EXPECT_GT(notch, 0u);
    EXPECT_EQ(scrolls, 1);
    for (int i = 0; i < 4; ++i)  // a wheel that tells quarters of a notch
        SendMessageW(list.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA / 4), 0);
    EXPECT_EQ(list.firstVisible(), 2 * notch);
    scrolls = 0;
    list.focus();
    pressKey(list, VK_END);
    EXPECT_EQ(list.selectedKey(), L"29999");
    EXPECT_GT(list.firstVisible(), 29900u);
    EXPECT_EQ(scrolls, 1);
    EXPECT_EQ(GetWindowLongW(list.handle(), GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL), 0);
    EXPECT_EQ(list.clientSize().width, 278);
    form.rows.fill(3);
    EXPECT_EQ(list.firstVisible(), 0u);
}

TEST(ListView, tellsItsEventsInTheirOrder) {
    ListForm form;
    ListView& list = form.list;
    form.rows.fill(20);
    std::wstring told;
    list.onMouseDown = [&](MouseButton, Point) { told += L"down " + list.selectedKey() + L" "; };
    list.onMouseUp = [&](MouseButton, Point) { told += L"up "; };
    list.onItemClick = [&] { told += L"click "; };
    list.onDoubleClick = [&] { told += L"double "; };
    list.onSelectionByKey = [&] { told += L"key " + list.selectedKey() + L" "; };
    list.onBeginDrag = [&](std::size_t position) { told += L"drag " + std::to_wstring(position); };
    const auto tells = [&] { return std::exchange(told, L""); };

    click(list, WM_LBUTTONDOWN, WM_LBUTTONUP, rowPoint(list, 2));
    EXPECT_EQ(tells(), L"down 2 up click ");
    click(list, WM_RBUTTONDOWN, WM_RBUTTONUP, rowPoint(list, 3));
    EXPECT_EQ(tells(), L"down 3 up ");
    click(list, WM_RBUTTONDBLCLK, WM_RBUTTONUP, rowPoint(list, 3));
    EXPECT_EQ(tells(), L"down 3 up ");
    click(list, WM_LBUTTONDBLCLK, WM_LBUTTONUP, rowPoint(list, 1));
    EXPECT_EQ(tells(), L"down 1 double ");
    pressKey(list, VK_DOWN);
    EXPECT_EQ(tells(), L"key 2 ");
    SendMessageW(list.handle(), WM_CHAR, L'F', 1);
    SendMessageW(list.handle(), WM_CHAR, L'x', 1);
    tells();

    const Point from = rowPoint(list, 4);
    SendMessageW(list.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
    SendMessageW(list.handle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(from.x + 40, from.y));
    EXPECT_EQ(tells(), L"down 4 drag 4");
}

}  // namespace
}  // namespace tunovka
