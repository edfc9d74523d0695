// Questions to disks that take their time, that are asked many at once, and that are given up.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "core/disk_questions.h"
#include "support/disk_faults.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

const std::wstring kServer = L"\\\\server\\hudba\\a.mp3", kOther = L"\\\\other\\a\\a.mp3";

// A question that is answered when the test says so.
class Pending {
  public:
    ~Pending() { SetEvent(over_.get()); }
    std::function<int()> question() {
        return [over = over_.get()] {
            HANDLE own = nullptr;  // the test may have ended
            DuplicateHandle(GetCurrentProcess(), over, GetCurrentProcess(), &own, 0, FALSE,
                            DUPLICATE_SAME_ACCESS);
            WaitForSingleObject(own, 20000);
            CloseHandle(own);
            return 7;
        };
    }
    void end() { SetEvent(over_.get()); }

  private:
    KernelHandle over_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
};

class DiskQuestionsTest : public testing::Test {
  protected:
    // Posts a message to a window of the test's own, which counts what reaches it.
    DiskQuestionsTest() {
        SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window_.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(count));
    }
    ~DiskQuestionsTest() override {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        }
    }
    void tickEvery10ms(std::function<void()> tick) {
        tick_ = std::move(tick);
        SetTimer(window_.get(), 1, 10, nullptr);
    }
    void type(WPARAM key) { PostMessageW(window_.get(), WM_KEYDOWN, key, 0); }

    int keys_ = 0, ticks_ = 0;
    SystemWindow window_{
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)};

  private:
    static LRESULT CALLBACK count(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        auto* const test =
            reinterpret_cast<DiskQuestionsTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        test->keys_ += message == WM_KEYDOWN;
        if (message == WM_CLOSE) return 0;
        if (message == WM_TIMER && ++test->ticks_ && test->tick_) test->tick_();
        return DefWindowProcW(window, message, wparam, lparam);
    }

    std::function<void()> tick_;
};

TEST_F(DiskQuestionsTest, AreAnsweredOrRaiseAtTheAsker) {
    DWORD thread = 0;
    EXPECT_EQ(askDisk(L"E:\\a", [&] { return (thread = GetCurrentThreadId()), 7; }), 7);
    EXPECT_NE(thread, GetCurrentThreadId());
    EXPECT_EQ(errorOf([] { askDisk(L"E:\\a", []() -> int { throw RuntimeError(kDiskFull); }); }),
              kDiskFull);
    const LoopHooks command{yieldToEvents};
    bool ran = true;
    for (int i = 0; ran && i < 100; ++i) {  // a busy machine may not let a worker answer at once
        yieldNow();
        ran = false;
        postToLoop([&] { ran = true; });
        EXPECT_EQ(askDisk(command, [] { return 8; }), 8);
        EXPECT_EQ(askDisk(L"E:\\a", [] { return 9; }), 9);
    }
    EXPECT_FALSE(ran) << "a quick answer lets nothing run";
    yieldNow();
}

TEST_F(DiskQuestionsTest, ASingleOneLetsTimersRunHoldsKeysBackAndEndsByEscape) {
    Pending pending;
    type(VK_F5);
    const HCURSOR hourglass = LoadCursorW(nullptr, IDC_WAIT);
    bool shown = false;
    tickEvery10ms([&] {
        shown = shown || GetCursor() == hourglass;
        if (ticks_ >= 5 && shown) pending.end();
    });
    EXPECT_EQ(askDisk(L"E:\\a", pending.question()), 7);
    EXPECT_TRUE(shown && GetCursor() != hourglass);
    EXPECT_EQ(keys_, 0);
    EXPECT_GE(ticks_, 5);
    yieldNow();
    EXPECT_EQ(keys_, 1);

    Pending never;
    tickEvery10ms([&] { type(VK_ESCAPE); });
    EXPECT_EQ(askDisk(kServer, never.question()), std::nullopt);
    EXPECT_TRUE(DiskWork::isSilent(L"\\\\SERVER\\hudba\\b.mp3"));
    EXPECT_EQ(askDisk(kServer, [] { return 1; }), std::nullopt) << "not asked for ten seconds";
    EXPECT_EQ(askDisk(L"E:\\a", [] { return 1; }), 1);

    Pending neverEither;
    tickEvery10ms([&] { PostMessageW(window_.get(), WM_CLOSE, 0, 0); });
    EXPECT_EQ(askDisk(kOther, neverEither.question()), std::nullopt) << "closing gives it up too";
}

TEST_F(DiskQuestionsTest, ALongCommandLetsEverythingRunUntilItIsCancelled) {
    Pending never;
    bool cancelled = false;
    type(VK_F5);
    tickEvery10ms([&] { cancelled = ticks_ == 5; });
    const LoopHooks command{yieldToEvents, [&] { return cancelled; }};
    EXPECT_EQ(askDisk(command, never.question()), std::nullopt);
    EXPECT_EQ(keys_, 1);
}

TEST_F(DiskQuestionsTest, ManyAreAskedAtOnceAndAnsweredInOrder) {
    std::atomic<int> now = 0;
    std::atomic<bool> enough = false, late = false;
    DiskQuestions<int> questions;
    const LoopHooks command{yieldToEvents};
    std::vector<int> answers;
    for (int i = 0, ahead = 0; i < 40; ++i) {
        for (; ahead < 40 && !questions.full(); ++ahead)
            questions.put([&, ahead] {
                if (++now >= 6) enough = true;
                const DWORD start = GetTickCount();
                for (; !enough && !late; Sleep(1)) late = GetTickCount() - start > 10000;
                Sleep(ahead % 3 ? 0 : 5);
                --now;
                return ahead;
            });
        answers.push_back(questions.next(command).value_or(-1));
    }
    EXPECT_TRUE(std::ranges::is_sorted(answers) && answers.front() == 0 && answers.back() == 39);
    EXPECT_TRUE(enough) << "six at once";
}

}  // namespace
}  // namespace tunovka
