// Files that are set and replaced in quick succession, good and broken ones, beside two busy loops.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "core/file_system.h"
#include "endurance/resources.h"
#include "support/last_words.h"
#include "support/player_watch.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

// Two threads that never rest, and a third that tells how long the machine lets one wait that only
// wants to run every few milliseconds.
class BusyMachine {
  public:
    BusyMachine() {
        for (const auto routine : {spin, spin, beat})
            threads_.emplace_back(CreateThread(nullptr, 0, routine, this, 0, nullptr));
    }
    ~BusyMachine() {
        ends_ = true;
        for (const KernelHandle& thread : threads_) WaitForSingleObject(thread.get(), INFINITE);
    }
    DWORD longestPause() const { return longest_; }

  private:
    static DWORD WINAPI spin(void* self) {
        while (!static_cast<BusyMachine*>(self)->ends_) {
        }
        return 0;
    }
    static DWORD WINAPI beat(void* parameter) {
        auto& self = *static_cast<BusyMachine*>(parameter);
        for (DWORD last = GetTickCount(); !self.ends_; Sleep(10)) {
            const DWORD now = GetTickCount();
            self.longest_ = std::max<DWORD>(self.longest_, now - std::exchange(last, now));
        }
        return 0;
    }

    std::atomic<bool> ends_ = false;
    std::atomic<DWORD> longest_ = 0;
    std::vector<KernelHandle> threads_;
};

// Good files and lists first, then broken ones of ten kinds.
std::vector<std::wstring> files(const ScratchFolder& folder, std::size_t& good) {
    const auto copy = [&](const wchar_t* sample, const wchar_t* name) {
        return folder.file(name, FileSystemObject::readAll(samplesFolder() + sample));
    };
    const std::string wave = tone(5);
    std::vector<std::wstring> all = {
        copy(L"Skúšky\\Tón 523 Hz.mp3", L"a.mp3"),
        copy(L"Skúšky\\Tón 659 Hz.wma", L"b.wma"),
        folder.file(L"c.wav", wave),
        folder.file(L"d.m3u", "nic.mp3\r\na.mp3\r\nb.wma\r\n"),
        folder.file(L"e.pls", "[playlist]\r\nFile1=b.wma\r\nFile2=c.wav\r\n"),
        folder.file(L"f.asx", "<asx><entry>\r\n<ref href=\"c.wav\"/>\r\n</entry></asx>\r\n")};
    good = all.size();
    const std::string mp3 = FileSystemObject::readAll(all[0]);
    const std::string wma = FileSystemObject::readAll(all[1]);
    std::string numbers = wave;
    numbers.replace(22, 2, "\xFF\xFF");  // so many channels
    for (const auto& [name, bytes] : std::initializer_list<std::pair<const wchar_t*, std::string>>{
             {L"1.mp3", ""},
             {L"2.wav", noise(200'000)},
             {L"3.mp3", noise(50'000)},
             {L"4.wav", wave.substr(0, 20)},
             {L"5.wav", numbers},
             {L"6.mp3", mp3.substr(0, 3000) + noise(20'000)},
             {L"7.wma", wma.substr(0, wma.size() / 3)},
             {L"8.wma", wma.substr(0, 6000) + noise(20'000)},
             {L"9.pls", "File1=2.wav\r\nFile2=nic.wma\r\nFile3=8.wma\r\n"}})
        all.push_back(folder.file(name, bytes));
    all.push_back(folder / L"nic.mp3");
    return all;
}

// TUNOVKA_OPENINGS sets how many.
TEST(PlayerSoak, filesThatAreReplacedWhileTheyOpenLeaveNothingBehind) {
    const char* const asked = std::getenv("TUNOVKA_OPENINGS");
    const int openings = asked ? std::atoi(asked) : 300;
    const ScratchFolder folder;
    std::size_t good = 0;
    const std::vector<std::wstring> all = files(folder, good);
    std::uint32_t state = 11;
    const auto random = [&](std::size_t below) {
        return (state = state * 1664525 + 1013904223) / 65536 % below;
    };

    WatchedPlayer player(createMediaEngine);
    DWORD longestCall = 0, longestRelease = 0, longestOpening = 0;
    const auto set = [&](const std::wstring& file) {
        const DWORD start = GetTickCount();
        player.told();
        player->setFileName(file);
        longestCall = std::max(longestCall, GetTickCount() - start);
    };
    const auto endsOpening = [&](const std::wstring& file, bool plays) {
        const DWORD start = GetTickCount();
        set(file);
        const auto ended = [&] { return player.has(L"0-2 ") || (!plays && player.has(L"error ")); };
        // Beside other programs a niced run gets a small part of the machine.
        EXPECT_TRUE(runUntil(ended, 120'000)) << testing::PrintToString(file);
        longestOpening = std::max(longestOpening, GetTickCount() - start);
    };
    const auto release = [&] {
        const DWORD start = GetTickCount();
        player->release();
        longestRelease = std::max(longestRelease, GetTickCount() - start);
    };

    const BusyMachine busy;
    for (const bool plays : {true, false})
        for (std::size_t at = plays ? 0 : good; at < (plays ? good : all.size()); ++at)
            endsOpening(all[at], plays);
    release();
    const Resources before = Resources::now();
    longestOpening = 0;
    for (int opening = 0; opening < openings; ++opening) {
        LastWords::goesOn();
        if (opening % 50 == 0) {
            endsOpening(all[random(good)], true);
        } else {
            set(all[random(all.size())]);
            runUntil([] { return false; }, static_cast<DWORD>(random(51)));
        }
        if (opening % 10 == 0) {
            player->Stop();
            player->Play();
        }
    }
    release();
    Resources after;
    // Threads of the system that served a graph end by themselves, a moment later.
    EXPECT_TRUE(runUntil([&] {
        after = Resources::now();
        return after.threads <= before.threads && after.handles <= before.handles;
    })) << before
        << ", then " << after;
    EXPECT_LE(longestCall, 1000 + busy.longestPause());
    EXPECT_LE(longestRelease, 2000 + busy.longestPause());
    std::printf(
        "%d openings: longest call %lu ms, release %lu ms, opening %lu ms, idle thread %lu ms\n",
        openings, longestCall, longestRelease, longestOpening, busy.longestPause());
    std::cout << before << ", then " << after << std::endl;
}

}  // namespace
}  // namespace tunovka
