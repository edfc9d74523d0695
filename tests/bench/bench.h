#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// The frame of the benchmark program: each file beside this one adds its benchmarks with BENCH and
// reports figures; nothing else has to know them.

namespace tunovka::bench {

// One line of the output. With a bare value the limit is one of the ratio value / bare, without it
// one of the value itself.
struct Figure {
    const char* name;
    double value;
    const char* unit;
    std::optional<double> bare = {};
    std::optional<double> limit = {};
};

void report(const Figure& figure);

// Milliseconds, fine enough for microseconds.
double now();
double timed(const std::function<void()>& work);

double median(std::vector<double> values);

// The medians of two pieces of work that are timed in turns, so that both meet the same machine.
struct Pair {
    double own;
    double bare;
};
Pair comparedInTurns(int runs, const std::function<void()>& own, const std::function<void()>& bare);

// The folder of that name for test data (ends in "\"), made once by `make` and kept for the next
// runs.
std::wstring data(const std::wstring& name, const std::function<void(const std::wstring&)>& make);

// Writes a file of a benchmark's data.
void writeFile(const std::wstring& path, const std::string& content);

// All files below a folder, breadth first, by nothing but the system's enumeration.
std::vector<std::wstring> bareCollect(const std::wstring& root);

// A visible window and a second thread that asks it something again and again while it lives.
class AnsweringWindow {
  public:
    AnsweringWindow();
    AnsweringWindow(const AnsweringWindow&) = delete;
    AnsweringWindow& operator=(const AnsweringWindow&) = delete;
    ~AnsweringWindow();

    HWND handle() const { return window_; }
    // Ends the asking; the longest time that an answer took, in ms.
    double longestAnswer();

  private:
    static DWORD WINAPI ask(void* self);

    HWND window_;
    HANDLE thread_;
    volatile LONG ending_ = 0;
    double longest_ = 0;
};

struct Registration {
    Registration(const char* name, void (*run)());
};

}  // namespace tunovka::bench

// A benchmark; its name selects it on the command line.
#define BENCH(name)                                                                       \
    static void bench_##name();                                                           \
    static const ::tunovka::bench::Registration registration_##name(#name, bench_##name); \
    static void bench_##name()
