#include "benchmarks/bench.h"
#include "support/person.h"

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
            for (const HWND made : WindowList::ofThread(started.dwThreadId))
                if (IsWindowVisible(made)) window = made;
        }
        SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kLongestStart, nullptr);
        painted = now() - start;
        WaitForInputIdle(process.get(), kLongestStart);  // the first drive and folder are listed
        ready = now() - start;
        Sleep(500);  // what the start posted for later is done
        memory = static_cast<double>(memoryOf(process.get()).WorkingSetSize) / (1024 * 1024);
        PostMessageW(window, WM_CLOSE, 0, 0);
        if (WaitForSingleObject(process.get(), 5000) != WAIT_OBJECT_0)
            TerminateProcess(process.get(), 1);
    }
};

// The program, where the build makes it or, in what tries it on another computer, beside this one.
std::wstring program() {
    const std::wstring beside = built(L"tunovka.exe");
    return FileSystemObject::FileExists(beside) ? beside : built(L"..\\src\\app\\tunovka.exe");
}

}  // namespace

BENCH(start) {
    std::vector<double> painted, leastPainted, ready, memory, leastMemory, above;
    for (int run = 0; run < 22; ++run) {
        const Start own(program()), bare(built(L"bench_bare.exe"));
        if (run == 0) continue;  // it warmed the caches
        painted.push_back(own.painted), leastPainted.push_back(bare.painted);
        memory.push_back(own.memory), leastMemory.push_back(bare.memory);
        ready.push_back(own.ready), above.push_back(own.memory - bare.memory);
    }
    report("start", painted, "ms", leastPainted, 1.15);
    report("start_ready", ready, "ms");
    report("memory", memory, "MB", leastMemory);
    report("memory_above_bare", above, "MB", {}, 12);
}

}  // namespace tunovka::bench
