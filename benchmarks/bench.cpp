// bench [NAME]: prints the benchmarks' names, or runs the one of that name and prints a line a
// figure, tab-separated: name, value, unit, the bare work's value in the same run, ratio, limit.
#include "benchmarks/bench.h"

#include <commctrl.h>
#include <ole2.h>
#include <stdio.h>

#include <algorithm>
#include <map>

#include "core/handle.h"

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

std::wstring wide(const std::string& text) {
    return {text.begin(), text.end()};
}

double prepared(const Work& prepare, const Work& work) {
    prepare();
    const double start = now();
    work();
    return now() - start;
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
    std::vector<double> times;
    while (runs-- > 0) times.push_back(prepared(prepare, work));
    report({name, median(times), "ms", {}, limit});
}

void reportCompared(const std::string& name, int runs, double limit, const Work& own,
                    const Work& bare, const Work& prepare) {
    std::vector<double> owns, bares;
    bare();  // warms the caches for both
    while (runs-- > 0) {
        owns.push_back(prepared(prepare, own));
        bares.push_back(prepared([] {}, bare));
    }
    report({name, median(owns), "ms", median(bares), limit});
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
    std::vector<double> answers;
    while (runs-- > 0) {
        prepare();
        answers.push_back(longestAnswer(work));
    }
    report({name + "_answer", median(answers), "ms", {}, 50});
}

void writeFile(const std::wstring& path, const std::string& content) {
    const FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
}

void makeFolder(const std::wstring& folder, int count,
                const std::function<std::wstring(int)>& name) {
    CreateDirectoryW(folder.c_str(), nullptr);
    for (int number = 0; number < count; ++number) writeFile(folder + name(number), "");
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
        const auto album = [](int number) { return "album " + std::to_string(number) + "\\"; };
        const auto song = [](int number) { return "song " + std::to_string(number); };
        for (int number = 0; number < 300; ++number)
            makeFolder(root + wide(album(number)), 10,
                       [&](int one) { return wide(song(one)) + L".mp3"; });
        std::string list;
        for (int round = 0; round < 100; ++round)
            for (int number = 0; number < 300; ++number)
                list += album(number) + song(round % 10) +
                        ((number + round) % 10 ? ".mp3\r\n" : " (missing).mp3\r\n");
        writeFile(root + L"mixed.m3u", list);
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
