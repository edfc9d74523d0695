// Files that are set and replaced in quick succession, good and broken ones, beside two busy loops.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: these need its types.
#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "core/file_system.h"
#include "support/last_words.h"
#include "support/player_watch.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

int ownThreads() {
    const FileHandle all(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    int count = 0;
    for (BOOL more = Thread32First(all.get(), &thread); more;
         more = Thread32Next(all.get(), &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    return count;
}

// What is held, but events and registry keys: Wine itself never gives back some tens of them of
// each graph. The system's own counter of a process always gives 0 there, so all handles are looked
// at.
int ownHandles() {
    constexpr auto kAllHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
    struct Entry {
        void* object;
        ULONG_PTR process, value;
        ULONG access;
        USHORT creator, kind;
        ULONG attributes, reserved;
    };
    const KernelHandle event(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    RegistryKey key;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, key.receive());
    std::vector<ULONG> answer(1 << 16);
    while (NtQuerySystemInformation(kAllHandles, answer.data(),
                                    static_cast<ULONG>(answer.size() * sizeof(ULONG)), nullptr) < 0)
        answer.resize(answer.size() * 2);
    const auto* const entries = reinterpret_cast<const Entry*>(answer.data() + 2);
    std::vector<Entry> own(entries, entries + answer[0]);
    std::erase_if(own, [](const Entry& it) { return it.process != GetCurrentProcessId(); });
    const auto kindOf = [&](const void* handle) {
        const auto found =
            std::ranges::find(own, reinterpret_cast<UINT_PTR>(handle), &Entry::value);
        return found == own.end() ? USHORT{0} : found->kind;
    };
    const USHORT eventKind = kindOf(event.get()), keyKind = kindOf(key.get());
    return static_cast<int>(std::ranges::count_if(
        own, [&](const Entry& it) { return it.kind != eventKind && it.kind != keyKind; }));
}

// How long the machine lets a thread wait that only wants to run every few milliseconds.
class Pulse {
  public:
    Pulse() : thread_(CreateThread(nullptr, 0, beat, this, 0, nullptr)) {}
    ~Pulse() {
        ends_ = true;
        WaitForSingleObject(thread_.get(), INFINITE);
    }
    DWORD longest() const { return longest_; }

  private:
    static DWORD WINAPI beat(void* pulse) {
        auto& own = *static_cast<Pulse*>(pulse);
        for (DWORD last = GetTickCount(); !own.ends_;) {
            Sleep(10);
            const DWORD now = GetTickCount();
            own.longest_ = std::max<DWORD>(own.longest_, now - std::exchange(last, now));
        }
        return 0;
    }
    std::atomic<bool> ends_ = false;
    std::atomic<DWORD> longest_ = 0;
    KernelHandle thread_;
};

class BusyLoops {
  public:
    BusyLoops() {
        for (KernelHandle& thread : threads_)
            thread = KernelHandle(CreateThread(nullptr, 0, spin, &ends_, 0, nullptr));
    }
    ~BusyLoops() {
        ends_ = true;
        for (const KernelHandle& thread : threads_) WaitForSingleObject(thread.get(), INFINITE);
    }

  private:
    static DWORD WINAPI spin(void* ends) {
        while (!*static_cast<std::atomic<bool>*>(ends)) {
        }
        return 0;
    }
    std::atomic<bool> ends_ = false;
    std::array<KernelHandle, 2> threads_;
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
        const auto ended = [&] {
            return player.has(change(0, 2)) || (!plays && player.has(kFailure));
        };
        // Beside other programs a niced run gets a small part of the machine.
        EXPECT_TRUE(runUntil(ended, 120'000)) << testing::PrintToString(file);
        longestOpening = std::max(longestOpening, GetTickCount() - start);
    };
    const auto release = [&] {
        const DWORD start = GetTickCount();
        player->release();
        longestRelease = std::max(longestRelease, GetTickCount() - start);
    };

    const BusyLoops busy;
    const Pulse pulse;
    for (const bool plays : {true, false})
        for (std::size_t at = plays ? 0 : good; at < (plays ? good : all.size()); ++at)
            endsOpening(all[at], plays);
    release();
    const int threads = ownThreads(), handles = ownHandles();
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
        if (opening % 500 == 0)
            std::printf("%d: longest call %lu ms, opening %lu ms, %d threads, %d handles\n",
                        opening, longestCall, longestOpening, ownThreads(), ownHandles());
        std::fflush(stdout);
    }
    release();
    EXPECT_TRUE(runUntil([&] { return ownThreads() <= threads; })) << ownThreads();
    EXPECT_LE(ownHandles(), handles);
    EXPECT_LE(longestCall, 1000 + pulse.longest()) << "of what calls of windows may take";
    EXPECT_LE(longestRelease, 2000 + pulse.longest());
    std::printf(
        "%d openings: longest call %lu ms, release %lu ms, opening %lu ms, idle thread %lu ms; "
        "threads %d, then %d; handles %d, then %d\n",
        openings, longestCall, longestRelease, longestOpening, pulse.longest(), threads,
        ownThreads(), handles, ownHandles());
}

}  // namespace
}  // namespace tunovka
