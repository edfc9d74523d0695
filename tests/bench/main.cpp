// bench [NAME...]: runs the benchmarks whose names begin with one of the arguments, all of them
// without any, and prints a line a figure, tab-separated: name, value, unit, the bare work's value
// in the same run, ratio, limit. Each runs in a process of its own, because freed memory that one
// leaves behind would hide what the next one takes.
#include <windows.h>
// windows.h first: these need its types.
#include <commctrl.h>
#include <ole2.h>
#include <stdio.h>

#include <algorithm>

#include "bench/bench.h"
#include "core/handle.h"

namespace tunovka::bench {
namespace {

struct Benchmark {
    const char* name;
    void (*run)();
};

std::vector<Benchmark>& all() {
    static std::vector<Benchmark> benchmarks;
    return benchmarks;
}

std::wstring wide(const std::string& name) {
    return {name.begin(), name.end()};
}

bool isSelected(const std::string& name, int count, wchar_t** prefixes) {
    if (count == 0) return true;
    return std::any_of(prefixes, prefixes + count,
                       [&](const std::wstring& prefix) { return wide(name).starts_with(prefix); });
}

constexpr wchar_t kHere = L'=';  // before the whole name of the one to run in this process

void runHere(const std::wstring& name) {
    if (FAILED(OleInitialize(nullptr))) ExitProcess(1);
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    for (const Benchmark& benchmark : all())
        if (wide(benchmark.name) == name) benchmark.run();
    OleUninitialize();
}

// True when it ended well.
bool runAlone(const std::string& name) {
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring line = L'"' + std::wstring(self) + L"\" " + kHere + wide(name);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                        &process))
        return false;
    const KernelHandle thread(process.hThread), running(process.hProcess);
    WaitForSingleObject(running.get(), INFINITE);
    DWORD code = 1;
    return GetExitCodeProcess(running.get(), &code) && code == 0;
}

void printNumber(std::optional<double> number, int digits) {
    printf("\t");
    if (number) printf("%.*f", digits, *number);
}

}  // namespace

Registration::Registration(const char* name, void (*run)()) {
    all().push_back({name, run});
}

void report(const Figure& figure) {
    printf("%s\t%.2f\t%s", figure.name, figure.value, figure.unit);
    printNumber(figure.bare, 2);
    printNumber(figure.bare ? std::optional(figure.value / *figure.bare) : std::nullopt, 3);
    printNumber(figure.limit, 2);
    printf("\n");
    fflush(stdout);
}

double now() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double timed(const std::function<void()>& work) {
    const double start = now();
    work();
    return now() - start;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Pair comparedInTurns(int runs, const std::function<void()>& own,
                     const std::function<void()>& bare) {
    std::vector<double> owns, bares;
    bare();  // warms the caches for both
    for (int run = 0; run < runs; ++run) {
        owns.push_back(timed(own));
        bares.push_back(timed(bare));
    }
    return {median(owns), median(bares)};
}

void writeFile(const std::wstring& path, const std::string& content) {
    const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
}

std::wstring data(const std::wstring& name, const std::function<void(const std::wstring&)>& make) {
    const std::wstring folder = L"T:\\" + name + L"\\";
    const std::wstring mark = L"T:\\" + name + L".made";
    if (GetFileAttributesW(mark.c_str()) == INVALID_FILE_ATTRIBUTES) {
        fprintf(stderr, "making test data: %ls\n", name.c_str());
        CreateDirectoryW(folder.c_str(), nullptr);
        make(folder);
        writeFile(mark, "");
    }
    return folder;
}

}  // namespace tunovka::bench

int wmain(int count, wchar_t** arguments) {
    using namespace tunovka::bench;
    if (count == 2 && arguments[1][0] == kHere) {
        runHere(arguments[1] + 1);
        return 0;
    }
    std::sort(all().begin(), all().end(), [](const Benchmark& one, const Benchmark& other) {
        return std::string_view(one.name) < other.name;
    });
    bool allWell = true;
    for (const Benchmark& benchmark : all())
        if (isSelected(benchmark.name, count - 1, arguments + 1))
            allWell = runAlone(benchmark.name) && allWell;
    return allWell ? 0 : 1;
}
