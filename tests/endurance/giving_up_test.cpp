// Giving questions to disks up, again and again: nothing of them stays.
#include <gtest/gtest.h>

#include "core/disk_questions.h"
#include "endurance/resources.h"
#include "support/disk_faults.h"

namespace tunovka {
namespace {

// A round: a long command gives up questions that no disk answers, and the disk comes back.
void giveUp() {
    Silence silence(L"E:");
    {
        DiskQuestions<bool> questions;
        for (int i = 0; i < 4; ++i) questions.put([&] { return silence.hold(L"E:\\a"), true; });
        const LoopHooks command{yieldToEvents, [] { return true; }};
        EXPECT_FALSE(questions.next(command));
    }
    silence.end();
}

TEST(GivingUp, LeavesNoThreadHandleOrByte) {
    const auto rounds = [](int count) {
        while (count-- > 0) giveUp();
        EXPECT_TRUE(askDisk(std::wstring(L"T:"), [] { return true; }));
    };
    {
        std::deque<DiskQuestions<bool>> askers(8);  // brings the workers that are kept
        for (auto& asker : askers) asker.put([] { return Sleep(50), true; });
        for (auto& asker : askers) asker.next(std::wstring());
    }
    rounds(50);
    const Resources before = Resources::now();
    rounds(1000);
    Resources after = Resources::now();
    for (int wait = 0; wait < 100 && after.exceeds(before);
         ++wait) {  // the last worker may be at it
        Sleep(10);
        after = Resources::now();
    }
    EXPECT_FALSE(after.exceeds(before)) << before << "\n" << after;
}

}  // namespace
}  // namespace tunovka
