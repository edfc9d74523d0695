#include <windows.h>
// windows.h first: this needs its types.
#include <psapi.h>
#include <stdio.h>

#include "bench/bench.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/paths.h"

namespace tunovka::bench {
namespace {

constexpr DWORD kLongestStart = 20000;  // ms
constexpr double kMegabyte = 1024 * 1024;

// A program of the build, found from this one's place in it.
std::wstring built(const wchar_t* relative) {
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    return parentFolder(self) + L"\\" + relative;
}

std::wstring product() {
    return built(L"..\\..\\src\\app\\tunovka.exe");
}

std::wstring bareProgram() {
    return built(L"bench_bare.exe");
}

bool productIsThere() {
    if (FileSystemObject::FileExists(product())) return true;
    fprintf(stderr, "tunovka.exe is not built\n");
    return false;
}

struct WindowSearch {
    DWORD process;
    HWND found;
};

BOOL CALLBACK isVisibleWindow(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<WindowSearch*>(data);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    RECT bounds{};
    GetWindowRect(window, &bounds);
    if (owner == search.process && IsWindowVisible(window) && bounds.right - bounds.left > 100 &&
        bounds.bottom - bounds.top > 100)
        search.found = window;
    return !search.found;
}

HWND visibleWindowOf(DWORD process) {
    WindowSearch search{process, nullptr};
    EnumWindows(isVisibleWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// A program that runs from construction to destruction.
class Started {
  public:
    explicit Started(const std::wstring& path) {
        STARTUPINFOW start{};
        start.cb = sizeof start;
        std::wstring line = L"\"" + path + L"\"";
        PROCESS_INFORMATION process{};
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                            &start, &process))
            return;
        CloseHandle(process.hThread);
        process_.reset(process.hProcess);
        id_ = process.dwProcessId;
    }
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;
    ~Started() {
        if (const HWND window = visibleWindowOf(id_)) PostMessageW(window, WM_CLOSE, 0, 0);
        if (WaitForSingleObject(process_.get(), 5000) != WAIT_OBJECT_0)
            TerminateProcess(process_.get(), 1);
    }

    // Until a visible window has answered: both programs paint before they look for messages.
    void waitUntilPainted() const {
        const DWORD start = GetTickCount();
        while (!visibleWindowOf(id_) && GetTickCount() - start < kLongestStart) Sleep(2);
        SendMessageTimeoutW(visibleWindowOf(id_), WM_NULL, 0, 0, SMTO_NORMAL, kLongestStart,
                            nullptr);
    }

    // Until it waits for the person: the first drive and folder are listed.
    void waitUntilReady() const { WaitForInputIdle(process_.get(), kLongestStart); }

    // Megabytes of the machine's memory that it holds.
    double memory() const {
        PROCESS_MEMORY_COUNTERS_EX counters{};
        GetProcessMemoryInfo(process_.get(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                             sizeof counters);
        return static_cast<double>(counters.WorkingSetSize) / kMegabyte;
    }

  private:
    KernelHandle process_;
    DWORD id_ = 0;
};

struct Start {
    double painted, ready;  // ms
};

Start started(const std::wstring& path) {
    const double start = now();
    const Started program(path);
    program.waitUntilPainted();
    const double painted = now() - start;
    program.waitUntilReady();
    return {painted, now() - start};
}

double memoryAtRest(const std::wstring& path) {
    const Started program(path);
    program.waitUntilReady();
    Sleep(1000);  // what the start posted for later is done
    return program.memory();
}

}  // namespace

BENCH(exe_size) {
    if (!productIsThere()) return;
    const double bytes = static_cast<double>(FileSystemObject::details(product()).size);
    report({"exe_size", bytes / kMegabyte, "MB", {}, 2});
}

BENCH(start) {
    if (!productIsThere()) return;
    started(product());
    started(bareProgram());
    std::vector<double> own, ready, bare;
    for (int run = 0; run < 9; ++run) {
        const Start start = started(product());
        own.push_back(start.painted);
        ready.push_back(start.ready);
        bare.push_back(started(bareProgram()).painted);
    }
    report({"start", median(own), "ms", median(bare), 1.5});
    report({"start_ready", median(ready), "ms"});
}

BENCH(memory_above_bare) {
    if (!productIsThere()) return;
    const double own = memoryAtRest(product());
    const double bare = memoryAtRest(bareProgram());
    report({"memory", own, "MB", bare});
    report({"memory_above_bare", own - bare, "MB", {}, 12});
}

}  // namespace tunovka::bench
