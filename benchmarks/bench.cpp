// bench [NAME]: prints the benchmarks' names, or runs the one of that name and prints a line a
// figure, tab-separated: name, value, unit, the bare work's value in the same run, ratio, limit.
#include "benchmarks/bench.h"

#include <commctrl.h>
#include <ole2.h>
#include <stdio.h>

#include <algorithm>

#include "core/ansi.h"
#include "core/loop.h"

namespace tunovka::bench {

static double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void report(const std::string& name, std::vector<double> values, const char* unit,
            std::vector<double> bares, std::optional<double> limit) {
    printf("%s\t%.2f\t%s\t", name.c_str(), median(values), unit);
    for (std::size_t run = 0; run < bares.size(); ++run) values[run] /= bares[run];
    bares.empty() ? printf("\t\t") : printf("%.2f\t%.3f\t", median(bares), median(values));
    limit ? printf("%.2f\n", *limit) : printf("\n");
    fflush(stdout);
}

double now() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double longestAnswer(const Work& work) {
    double lastTurn = now(), longestPause = 0;
    const auto takeTurn = [&] {
        longestPause = std::max(longestPause, now() - lastTurn);
        lastTurn = now();
    };
    Timer timer;  // its message has its turn after every other one
    timer.onTick = takeTurn;
    timer.setInterval(USER_TIMER_MINIMUM);
    work();
    takeTurn();
    return longestPause;
}

void measure(const std::string& name, Runs runs, std::optional<double> limit, const Work& work,
             const Work& bare, const Work& prepare) {
    std::vector<double> times, bares, answers;
    const auto timeOf = [](const Work& timed) {
        const double start = now();
        timed();
        return now() - start;
    };
    if (bare) bare();  // warms the caches for both
    while (runs.time-- > 0) {
        if (prepare) prepare();
        times.push_back(timeOf(work));
        if (bare) bares.push_back(timeOf(bare));
    }
    report(name, times, "ms", bares, limit);
    while (runs.answer-- > 0) {
        if (prepare) prepare();
        answers.push_back(longestAnswer(work));
    }
    if (!answers.empty()) report(name + "_answer", answers, "ms", {}, kLongestAnswer);
}

PROCESS_MEMORY_COUNTERS memoryOf(HANDLE process) {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(process, &counters, sizeof counters);
    return counters;
}

void makeFolder(const std::wstring& folder, int count,
                const std::function<std::wstring(int)>& name) {
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int number = 0; number < count; ++number) ScratchFolder::write(folder + name(number), "");
}

std::wstring data(const std::wstring& name, const std::function<void(const std::wstring&)>& make) {
    const std::wstring folder = L"T:\\" + name + L"\\";
    const std::wstring mark = L"T:\\" + name + L".made";
    if (FileSystemObject::FileExists(mark)) return folder;
    fprintf(stderr, "making test data: %ls\n", name.c_str());
    CreateDirectoryW(folder.c_str(), nullptr);
    make(folder);
    ScratchFolder::write(mark, "");
    return folder;
}

std::wstring mixedCollection() {
    return data(L"editor-mixed", [](const std::wstring& root) {
        const auto album = [](int number) { return L"album " + std::to_wstring(number) + L"\\"; };
        const auto song = [](int number) { return L"song " + std::to_wstring(number); };
        for (int number = 0; number < 300; ++number)
            makeFolder(root + album(number), 10, [&](int one) { return song(one) + L".mp3"; });
        std::wstring list;
        for (int round = 0; round < 100; ++round)
            for (int number = 0; number < 300; ++number)
                list += album(number) + song(round % 10) +
                        ((number + round) % 10 ? L".mp3\r\n" : L" (missing).mp3\r\n");
        ScratchFolder::write(root + L"mixed.m3u", toAnsi(list));
    });
}

std::vector<std::wstring> bareCollect(const std::wstring& root) {
    std::vector<std::wstring> folders{root}, files;
    for (std::size_t at = 0; at < folders.size(); ++at) {
        const std::wstring folder = folders[at];
        WIN32_FIND_DATAW entry;
        const FindHandle search(FindFirstFileW((folder + L"*").c_str(), &entry));
        if (!search) continue;
        do {
            if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                files.push_back(folder + entry.cFileName);
            else if (wcscmp(entry.cFileName, L".") != 0 && wcscmp(entry.cFileName, L"..") != 0)
                folders.push_back(folder + entry.cFileName + L"\\");
        } while (FindNextFileW(search.get(), &entry));
    }
    return files;
}

}  // namespace tunovka::bench

int wmain(int count, wchar_t** arguments) {
    using namespace tunovka::bench;
    if (count < 2) {  // names all but those whose files take minutes to make
        for (const auto& [name, run] : benchmarks)
            if (name != L"million" && name != L"largest") printf("%ls\n", name.c_str());
        return 0;
    }
    if (FAILED(OleInitialize(nullptr))) return 1;
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    benchmarks.at(arguments[1])();
    OleUninitialize();
    return 0;
}
