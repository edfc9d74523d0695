// Questions to disks that take their time, that are asked many at once, and that are given up.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <map>
#include <mutex>

#include "core/disk_questions.h"
#include "support/disk_faults.h"
#include "support/error_of.h"
#include "support/person.h"

namespace tunovka {
namespace {

const std::wstring kServer = L"\\\\server\\hudba\\a.mp3", kOther = L"\\\\other\\a\\a.mp3";

// A question that is answered when the test says so, which may have ended by then.
class Pending {
  public:
    ~Pending() { end(); }
    std::function<int()> question() const {
        return [over = over_] { return WaitForSingleObject(over->get(), 20000), 7; };
    }
    void end() { SetEvent(over_->get()); }

  private:
    std::shared_ptr<KernelHandle> over_ =
        std::make_shared<KernelHandle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
};

class DiskQuestionsTest : public testing::Test {
  protected:
    DiskQuestionsTest() {
        setMessageFilter([this](const MSG& message) {
            keys_ += message.message == WM_KEYDOWN;
            return false;
        });
    }
    ~DiskQuestionsTest() override {
        setMessageFilter({});
        timer_.setInterval(0);
        yieldNow();
    }
    void tickEvery10ms(std::function<void()> tick) {
        ticks_ = 0;
        timer_.onTick = [this, tick] { ++ticks_, tick(); };
        timer_.setInterval(10);
    }
    static void type(WPARAM key) { PostThreadMessageW(GetCurrentThreadId(), WM_KEYDOWN, key, 0); }

    int keys_ = 0, ticks_ = 0;
    Timer timer_;
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
    tickEvery10ms([&] { ticks_ == 1 ? type(VK_ESCAPE) : void(); });
    EXPECT_EQ(askDisk(kServer, never.question()), std::nullopt);
    yieldNow();
    EXPECT_EQ(keys_, 1) << "the Escape is used up";
    EXPECT_TRUE(DiskWork::isSilent(L"\\\\SERVER\\hudba\\b.mp3"));
    EXPECT_EQ(askDisk(kServer, [] { return 1; }), std::nullopt) << "not asked for ten seconds";
    EXPECT_EQ(askDisk(L"E:\\a", [] { return 1; }), 1);

    Pending neverEither;
    tickEvery10ms([&] { PostThreadMessageW(GetCurrentThreadId(), WM_CLOSE, 0, 0); });
    EXPECT_EQ(askDisk(kOther, neverEither.question()), std::nullopt) << "closing gives it up too";
}

TEST_F(DiskQuestionsTest, ManyAreAskedAtOnceAndAnsweredInOrderByWorkersThatLeave) {
    std::mutex lock;
    std::map<DWORD, KernelHandle> workers;
    const auto sixHaveCome = [&, limit = GetTickCount() + 10000] {
        const std::scoped_lock own(lock);
        workers[GetCurrentThreadId()].reset(OpenThread(SYNCHRONIZE, FALSE, GetCurrentThreadId()));
        return workers.size() >= 6 || GetTickCount() > limit;
    };
    DiskQuestions<int> questions;
    std::vector<int> answers;
    for (int i = 0, ahead = 0; i < 40; ++i) {
        for (; ahead < 40 && !questions.full(); ++ahead)
            questions.put([&, ahead] {
                while (!sixHaveCome()) Sleep(1);
                Sleep(ahead % 3 ? 0 : 5);
                return ahead;
            });
        answers.push_back(questions.next(LoopHooks{yieldToEvents}).value_or(-1));
    }
    EXPECT_TRUE(std::ranges::is_sorted(answers) && answers.front() == 0 && answers.back() == 39);
    EXPECT_GE(workers.size(), 6u) << "at once";
    const auto hasLeft = [](auto& worker) { return !WaitForSingleObject(worker.second.get(), 0); };
    EXPECT_TRUE(runUntil([&] { return std::erase_if(workers, hasLeft), workers.size() <= 2; }));
}

}  // namespace
}  // namespace tunovka
