#include <windows.h>
// windows.h first: this needs its types.
#include <psapi.h>

#include "benchmarks/bench.h"
#include "core/handle.h"
#include "core/paths.h"

namespace tunovka::bench {
namespace {

constexpr DWORD kLongestStart = 20000;  // ms

// A program of the build, found from this one's place in it.
std::wstring built(const wchar_t* relative) {
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    return parentFolder(self) + L"\\" + relative;
}

// One start of a program, which is closed again.
struct Start {
    double painted, ready, memory;  // ms and MB

    explicit Start(const std::wstring& path) {
        const double start = now();
        STARTUPINFOW how{.cb = sizeof how};
        PROCESS_INFORMATION started{};
        CreateProcessW(path.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how,
                       &started);
        const KernelHandle process(started.hProcess), thread(started.hThread);
        // A visible window has answered: both programs paint before they look for messages.
        HWND window = nullptr;
        while (!window && now() - start < kLongestStart) {
            Sleep(2);
            EnumThreadWindows(started.dwThreadId, takeShown, reinterpret_cast<LPARAM>(&window));
        }
        SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kLongestStart, nullptr);
        painted = now() - start;
        WaitForInputIdle(process.get(), kLongestStart);  // the first drive and folder are listed
        ready = now() - start;
        Sleep(500);  // what the start posted for later is done
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(process.get(), &counters, sizeof counters);
        memory = static_cast<double>(counters.WorkingSetSize) / (1024 * 1024);
        PostMessageW(window, WM_CLOSE, 0, 0);
        if (WaitForSingleObject(process.get(), 5000) != WAIT_OBJECT_0)
            TerminateProcess(process.get(), 1);
    }

    static BOOL CALLBACK takeShown(HWND window, LPARAM found) {
        if (IsWindowVisible(window)) *reinterpret_cast<HWND*>(found) = window;
        return !IsWindowVisible(window);
    }
};

// The program, where the build makes it or, in what tries it on another computer, beside this one.
std::wstring program() {
    const std::wstring beside = built(L"tunovka.exe");
    const bool isBeside = GetFileAttributesW(beside.c_str()) != INVALID_FILE_ATTRIBUTES;
    return isBeside ? beside : built(L"..\\src\\app\\tunovka.exe");
}

}  // namespace

BENCH(start) {
    std::vector<double> own, ready, memory, bare, bareMemory;
    for (int run = 0; run < 10; ++run) {
        const Start product(program()), least(built(L"bench_bare.exe"));
        if (run == 0) continue;  // it warmed the caches
        own.push_back(product.painted);
        ready.push_back(product.ready);
        memory.push_back(product.memory);
        bare.push_back(least.painted);
        bareMemory.push_back(least.memory);
    }
    report({"start", median(own), "ms", median(bare), 1.15});
    report({"start_ready", median(ready), "ms"});
    report({"memory", median(memory), "MB", median(bareMemory)});
    report({"memory_above_bare", median(memory) - median(bareMemory), "MB", {}, 12});
}

}  // namespace tunovka::bench
