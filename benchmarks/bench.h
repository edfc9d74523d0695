#pragma once

#include <windows.h>
// windows.h first: it needs its types.
#include <psapi.h>

#include <functional>
#include <map>
#include <optional>

#include "support/disk_faults.h"
#include "support/program.h"

// The frame of the benchmark program: each *_bench.cpp adds its benchmarks with BENCH and reports
// figures; nothing else has to know them.

namespace tunovka::bench {

// Prints one line of the output: the median of an odd number of runs. With bare work, done in turns
// with them, their ratio is the median of the ratios run by run, since those that follow each other
// meet the same machine; the limit is then one of the ratio, else of the figure itself.
void report(const std::string& name, std::vector<double> values, const char* unit,
            std::vector<double> bares = {}, std::optional<double> limit = {});

// Milliseconds, fine enough for microseconds.
double now();

// The longest time that a window of the program waits for its turn while the work runs.
using Work = std::function<void()>;
double longestAnswer(const Work& work);
constexpr double kLongestAnswer = 50;

// Reports the time of some work and of bare work, each run of it after a `prepare`. Runs of their
// own tell the longest answer, "NAME_answer".
struct Runs {
    int time, answer = 0;
};
void measure(const std::string& name, Runs runs, std::optional<double> limit, const Work& work,
             const Work& bare = {}, const Work& prepare = {});

// What a process takes.
PROCESS_MEMORY_COUNTERS memoryOf(HANDLE process);

// The folder of that name for test data (ends in "\"), made once by `make` and kept for the next
// runs.
std::wstring data(const std::wstring& name, const std::function<void(const std::wstring&)>& make);

// For data: makes a folder with `count` files named `name(0)`, `name(1)` and so on.
void makeFolder(const std::wstring& folder, int count,
                const std::function<std::wstring(int)>& name);

// 3,000 files in 300 folders, and 30,000 entries that never stay in a folder in a list mixed.m3u:
// each file ten times, but one in ten is missing.
std::wstring mixedCollection();

// All files below a folder, breadth first, by nothing but the system's enumeration.
std::vector<std::wstring> bareCollect(const std::wstring& root);

// For an OddDisk: each enumeration and each opening of a file takes 10 ms.
inline DWORD slowly(DiskCall call, const std::wstring&, DWORD&) {
    if (call == DiskCall::List || call == DiskCall::Open) Sleep(10);
    return ERROR_SUCCESS;
}

// The benchmarks by their names.
inline std::map<std::wstring, void (*)()> benchmarks;

}  // namespace tunovka::bench

// A benchmark; its name selects it on the command line.
#define BENCH(name)                                                           \
    static void bench_##name();                                               \
    [[maybe_unused]] static const bool added_##name =                         \
        ::tunovka::bench::benchmarks.emplace(L## #name, bench_##name).second; \
    static void bench_##name()
