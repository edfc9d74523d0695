// The picture scroll bar over a list on real windows.
#include <gtest/gtest.h>

#include "core/errors.h"
#include "support/error_of.h"
#include "support/person.h"
#include "support/test_rows.h"
#include "ui/image_scroller.h"

namespace tunovka {
namespace {

class Stage : public Form {
  public:
    Stage()
        : Form({.name = L"frmStage", .caption = L"", .size = {300, 260}}),
          list({.name = L"Lview", .text = L"Zoznam", .parent = this}, rows),
          scroller(*this, list, rowsPerPageCut) {
        MultiMedialny::InitSharedTables();
        scroller.place({10, 10, 280, 240});
        show();
    }
    void fill(int count) {
        rows.fill(count);
        list.ensureVisible(0);
        scroller.refresh();
    }
    int page() const { return static_cast<int>(list.rowsInView()); }
    int thumb() const { return scroller.Iposuv.bounds().y; }

    TestRows rows;
    ListView list;
    ImageScroller scroller;
};

class Scroller : public testing::Test {
  protected:
    Stage stage;
    ListView& list = stage.list;
    ImageScroller& scroller = stage.scroller;
};

TEST_F(Scroller, AHeldArrowRepeatsAfterAPauseAndStopsWhenTheMouseIsTaken) {
    stage.fill(1000);
    const DWORD start = GetTickCount();
    SendMessageW(scroller.Idole.handle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    ASSERT_TRUE(runUntil([&] { return list.firstVisible() == 1; }));
    EXPECT_GE(GetTickCount() - start, 280u);
    ASSERT_TRUE(runUntil([&] { return list.firstVisible() == 6; }));
    EXPECT_GE(GetTickCount() - start, 500u);
    ReleaseCapture();
    const std::size_t row = list.firstVisible();
    settle(50);  // the interval of an arrow that is still held
    EXPECT_EQ(list.firstVisible(), row);
}

TEST_F(Scroller, TheThumbDrivesTheListAndFollowsIt) {
    stage.fill(30000);
    const int top = stage.thumb();
    const HWND thumb = scroller.Iposuv.handle();
    SendMessageW(thumb, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 4));
    SendMessageW(thumb, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 1000));
    SendMessageW(thumb, WM_LBUTTONUP, 0, MAKELPARAM(5, 1000));
    EXPECT_EQ(scroller.Iposuv.bounds().bottom(), scroller.Idole.bounds().y);
    EXPECT_EQ(list.firstVisible(), 30000u - stage.page());

    const int bottom = stage.thumb();
    for (int i = 0; i < 3; ++i) pressAndRelease(scroller.Ihore);
    EXPECT_EQ(stage.thumb(), bottom);  // the steps are far below a pixel, and yet they count
    EXPECT_EQ(list.firstVisible(), 30000u - stage.page() - 4);

    list.focus();
    SendMessageW(list.handle(), WM_KEYDOWN, VK_HOME, 1);
    list.select(0);
    scroller.followSelection();
    EXPECT_EQ(stage.thumb(), top);
    list.ensureVisible(29000);
    SendMessageW(list.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_GT(stage.thumb(), (top + bottom) * 3 / 4);
}

TEST_F(Scroller, TooManyRowsForItsCountLeaveTheListAsItIs) {
    stage.fill(32767);
    EXPECT_TRUE(scroller.PicPosuv.isVisible());
    EXPECT_EQ(errorOf([&] { stage.fill(32768); }), kOverflow);
    EXPECT_FALSE(scroller.PicPosuv.isVisible());
    EXPECT_EQ(list.count(), 32768u);
    scroller.place({10, 10, 280, 200});  // no second notice
    SendMessageW(list.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_GT(list.firstVisible(), 0u);
    stage.fill(100);
    EXPECT_TRUE(scroller.PicPosuv.isVisible());
}

}  // namespace
}  // namespace tunovka
