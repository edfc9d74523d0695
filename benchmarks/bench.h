#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "core/disk_windows.h"
#include "support/program.h"

// The frame of the benchmark program: each *_bench.cpp adds its benchmarks with BENCH and reports
// figures; nothing else has to know them.

namespace tunovka::bench {

// One line of the output. With a bare value the limit is one of the ratio value / bare, without it
// one of the value itself.
struct Figure {
    std::string name;
    double value;
    const char* unit;
    std::optional<double> bare = {};
    std::optional<double> limit = {};
};

void report(const Figure& figure);

// Milliseconds, fine enough for microseconds.
double now();
double median(std::vector<double> values);

// Reports the median time of some work, each run after a `prepare`.
using Work = std::function<void()>;
void reportTime(const std::string& name, int runs, std::optional<double> limit, const Work& work,
                const Work& prepare = {});

// The same beside bare work; both are done in turns, so that they meet the same machine.
void reportCompared(const std::string& name, int runs, double limit, const Work& own,
                    const Work& bare, const Work& prepare = {});

// The longest time that a window of the program waits for its turn while the work runs, and the
// median of several runs as "NAME_answer".
double longestAnswer(const Work& work);
void reportAnswer(const std::string& name, int runs, const Work& work, const Work& prepare = {});

// The folder of that name for test data (ends in "\"), made once by `make` and kept for the next
// runs.
std::wstring data(const std::wstring& name, const std::function<void(const std::wstring&)>& make);

// For data: makes a folder with `count` files named `name(0)`, `name(1)` and so on.
using Name = std::function<std::wstring(int)>;
void makeFolder(const std::wstring& folder, int count, const Name& name);

// 50 folders for each of `outers` with 50 files each, three in ten of them music: 100,000 files in
// 2,000 folders.
std::wstring deepTree(const std::wstring& name = L"search-deep", int outers = 40);

// 3,000 files in 300 folders, and 30,000 entries that never stay in a folder in a list mixed.m3u:
// each file ten times, but one in ten is missing.
std::wstring mixedCollection();

// All files below a folder, breadth first, by nothing but the system's enumeration.
std::vector<std::wstring> bareCollect(const std::wstring& root);

// A disk on which each enumeration and each opening of a file takes 10 ms.
struct SlowDisk : DiskStandIn {
    SlowDisk() { setDiskStandIn(this); }
    ~SlowDisk() override { setDiskStandIn(nullptr); }
    DWORD asked(DiskCall call, const std::wstring&, DWORD&) override {
        if (call == DiskCall::List || call == DiskCall::Open) Sleep(10);
        return ERROR_SUCCESS;
    }
};

struct Registration {
    Registration(const std::wstring& name, void (*run)());
};

}  // namespace tunovka::bench

// A benchmark; its name selects it on the command line.
#define BENCH(name)                                                                           \
    static void bench_##name();                                                               \
    static const ::tunovka::bench::Registration registration_##name(L## #name, bench_##name); \
    static void bench_##name()
