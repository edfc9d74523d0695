// bench [NAME]: prints the benchmarks' names, or runs the one of that name and prints a line a
// figure, tab-separated: name, value, unit, the bare work's value in the same run, ratio, limit.
#include "benchmarks/bench.h"

#include <commctrl.h>
#include <ole2.h>
#include <stdio.h>

#include <algorithm>
#include <map>

#include "core/ansi.h"
#include "support/scratch_folder.h"

namespace tunovka::bench {
namespace {

std::map<std::wstring, void (*)()>& benchmarks() {
    static std::map<std::wstring, void (*)()> all;
    return all;
}

// A timer's message has its turn after every other one.
double lastTurn, longestPause;

void CALLBACK takeTurn(HWND, UINT, UINT_PTR, DWORD) {
    longestPause = std::max(longestPause, now() - lastTurn);
    lastTurn = now();
}

double timeOf(const Work& work) {
    const double start = now();
    work();
    return now() - start;
}

// What several runs measure, each after a `prepare`.
double medianOf(int runs, const Work& prepare, const std::function<double()>& measure) {
    std::vector<double> values;
    while (runs-- > 0) {
        if (prepare) prepare();
        values.push_back(measure());
    }
    return median(values);
}

void printNumber(std::optional<double> number, int digits) {
    printf("\t");
    if (number) printf("%.*f", digits, *number);
}

}  // namespace

Registration::Registration(const std::wstring& name, void (*run)()) {
    benchmarks()[name] = run;
}

void report(const Figure& figure) {
    printf("%s\t%.2f\t%s", figure.name.c_str(), figure.value, figure.unit);
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

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void reportTime(const std::string& name, int runs, std::optional<double> limit, const Work& work,
                const Work& prepare) {
    report({name, medianOf(runs, prepare, [&] { return timeOf(work); }), "ms", {}, limit});
}

void reportCompared(const std::string& name, int runs, double limit, const Work& own,
                    const Work& bare, const Work& prepare) {
    std::vector<double> bares;
    bare();  // warms the caches for both
    const double time = medianOf(runs, prepare, [&] {
        const double time = timeOf(own);
        bares.push_back(timeOf(bare));
        return time;
    });
    report({name, time, "ms", median(bares), limit});
}

double longestAnswer(const Work& work) {
    lastTurn = now();
    longestPause = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, takeTurn);
    work();
    KillTimer(nullptr, timer);
    takeTurn(nullptr, 0, 0, 0);
    return longestPause;
}

void reportAnswer(const std::string& name, int runs, const Work& work, const Work& prepare) {
    const double answer = medianOf(runs, prepare, [&] { return longestAnswer(work); });
    report({name + "_answer", answer, "ms", {}, 50});
}

void makeFolder(const std::wstring& folder, int count, const Name& name) {
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int number = 0; number < count; ++number) ScratchFolder::write(folder + name(number), "");
}

std::wstring data(const std::wstring& name, const std::function<void(const std::wstring&)>& make) {
    const std::wstring folder = L"T:\\" + name + L"\\";
    const std::wstring mark = L"T:\\" + name + L".made";
    if (GetFileAttributesW(mark.c_str()) == INVALID_FILE_ATTRIBUTES) {
        fprintf(stderr, "making test data: %ls\n", name.c_str());
        CreateDirectoryW(folder.c_str(), nullptr);
        make(folder);
        ScratchFolder::write(mark, "");
    }
    return folder;
}

std::wstring deepTree(const std::wstring& name, int outers) {
    return data(name, [outers](const std::wstring& root) {
        const auto name = [](int song) {
            return L"pieseň číslo " + std::to_wstring(song * 7919 % 50) +
                   (song % 10 < 3 ? L".mp3" : L".jpg");
        };
        for (int outer = 0; outer < outers; ++outer) {
            const std::wstring folder = root + L"album " + std::to_wstring(outer) + L"\\";
            makeFolder(folder, 50, name);
            for (int inner = 1; inner < 50; ++inner)
                makeFolder(folder + L"disk " + std::to_wstring(inner) + L"\\", 50, name);
        }
    });
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
    if (count < 2) {
        for (const auto& [name, run] : benchmarks()) printf("%ls\n", name.c_str());
        return 0;
    }
    if (FAILED(OleInitialize(nullptr))) return 1;
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    benchmarks().at(arguments[1])();
    OleUninitialize();
    return 0;
}
