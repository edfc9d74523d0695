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

// Two threads that never rest.
class BusyMachine {
  public:
    BusyMachine() {
        for (KernelHandle& thread : threads_)
            thread = KernelHandle(CreateThread(nullptr, 0, spin, this, 0, nullptr));
    }
    ~BusyMachine() {
        ends_ = true;
        for (const KernelHandle& thread : threads_) WaitForSingleObject(thread.get(), INFINITE);
    }

  private:
    static DWORD WINAPI spin(void* self) {
        while (!static_cast<BusyMachine*>(self)->ends_) {
        }
        return 0;
    }
    std::atomic<bool> ends_ = false;
    KernelHandle threads_[2];
};

// The longest time that something took, in milliseconds.
struct Longest {
    DWORD time = 0;
    template <typename Call>
    void of(Call call) {
        const DWORD start = GetTickCount();
        call();
        time = std::max(time, GetTickCount() - start);
    }
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
    Longest call, release, opening;
    const auto set = [&](const std::wstring& file) {
        player.told();
        call.of([&] { player->setFileName(file); });
    };
    const auto opens = [&](std::size_t at) {
        opening.of([&] {
            set(all[at]);
            // Beside other programs a niced run gets a small part of the machine. Broken ones may
            // play as far as they are good.
            EXPECT_TRUE(runUntil(
                [&] { return player.has(L"0-2 ") || (at >= good && player.has(L"error ")); },
                120'000))
                << testing::PrintToString(all[at]);
        });
    };

    const BusyMachine busy;
    for (std::size_t at = 0; at < all.size(); ++at) opens(at);
    player->release();
    const Resources before = Resources::now();
    for (int done = 0; done < openings; ++done) {
        LastWords::goesOn();
        if (done % 50 == 0) {
            opens(random(good));
        } else {
            set(all[random(all.size())]);
            runUntil([] { return false; }, static_cast<DWORD>(random(51)));
        }
        if (done % 10 == 0) {
            player->Stop();
            player->Play();
        }
    }
    release.of([&] { player->release(); });
    Resources after;
    // Threads of the system that served a graph end by themselves, a moment later.
    EXPECT_TRUE(runUntil([&] {
        after = Resources::now();
        return after.threads <= before.threads && after.handles <= before.handles;
    })) << before
        << ", then " << after;
    EXPECT_LE(call.time, 1000u);
    EXPECT_LE(release.time, 2000u);
    std::printf("%d openings: longest call %lu ms, release %lu ms, opening %lu ms\n", openings,
                call.time, release.time, opening.time);
    std::cout << before << ", then " << after << std::endl;
}

}  // namespace
}  // namespace tunovka
