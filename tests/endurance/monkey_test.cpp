// The whole program in the hands of somebody who does anything: it goes on, keeps the files and
// gives back what it took. TUNOVKA_MONKEY_SEED and TUNOVKA_MONKEY_STEPS, set by hand, lead to other
// and longer plays; with TUNOVKA_MONKEY_LOUD its doings are told.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <iostream>
#include <thread>

#include "endurance/monkey.h"
#include "endurance/program.h"
#include "endurance/resources.h"
#include "support/last_words.h"

namespace tunovka {
namespace {

// Runs the program once on the ground with the monkey at it; false when it does not close.
bool runOnce(Monkey& monkey, const Ground& ground) {
    startProgram(ground.path());
    const Pulse pulse;
    bool left = false;
    std::atomic<bool> gone = false;
    std::thread person([&] {
        try {
            monkey.play();
            left = monkey.leave();
        } catch (const Hangs&) {
            LastWords::end(("hangs after\n" + monkey.lastDoings()).c_str());
        }
        gone = true;
    });
    Forms::run();
    while (!gone) yieldNow();
    person.join();
    return left;
}

void play(unsigned seed, int steps) {
    LastWords::goesOn();
    Ground ground;
    Monkey monkey(GetCurrentThreadId(), ground, seed, steps);
    while (monkey.stepsLeft() > 0)
        ASSERT_TRUE(runOnce(monkey, ground)) << "does not close after\n" << monkey.lastDoings();
    ground.check(true);
    EXPECT_EQ(ground.faults(), std::vector<std::string>()) << "after\n" << monkey.lastDoings();
}

// The same doings again and again: what is made once is there after the first times, and only what
// is lost grows with every other.
TEST(MonkeyTest, LosesNothingAndKeepsNothing) {
    constexpr int kSwing = 64 * 1024;  // pictures and texts that are not needed every time
    const int seed = setting("TUNOVKA_MONKEY_SEED", 1), steps = setting("TUNOVKA_MONKEY_STEPS", 60);
    SCOPED_TRACE("TUNOVKA_MONKEY_SEED=" + std::to_string(seed) +
                 " TUNOVKA_MONKEY_STEPS=" + std::to_string(steps));
    play(seed, steps);
    Resources before = Resources::now(), after;
    for (int again = 1; again < 5 && !HasFailure(); ++again) {
        play(seed, steps);
        after = Resources::now();
        std::cout << "seed " << seed << ": " << before << " -> " << after << std::endl;
        if (!after.exceeds(before, kSwing)) return;
        before = after;
    }
    if (!HasFailure()) ADD_FAILURE() << "every time there is more";
}

}  // namespace
}  // namespace tunovka
