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

double medianOf(const std::vector<Start>& starts, double Start::*figure) {
    std::vector<double> values;
    for (const Start& start : starts) values.push_back(start.*figure);
    return median(values);
}

}  // namespace

BENCH(start) {
    std::vector<Start> own, bare;
    for (int run = 0; run < 10; ++run) {
        own.emplace_back(program());
        bare.emplace_back(built(L"bench_bare.exe"));
        if (run == 0) own.clear(), bare.clear();  // it warmed the caches
    }
    const double memory = medianOf(own, &Start::memory), least = medianOf(bare, &Start::memory);
    const double painted = medianOf(bare, &Start::painted);
    report("start", medianOf(own, &Start::painted), "ms", painted, 1.15);
    report("start_ready", medianOf(own, &Start::ready), "ms");
    report("memory", memory, "MB", least);
    report("memory_above_bare", memory - least, "MB", {}, 12);
}

}  // namespace tunovka::bench
