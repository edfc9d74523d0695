#include <algorithm>

#include "bench/bench.h"

namespace tunovka::bench {

AnsweringWindow::AnsweringWindow()
    : window_(CreateWindowExW(0, L"STATIC", L"bench", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)),
      thread_(CreateThread(nullptr, 0, ask, this, 0, nullptr)) {}

AnsweringWindow::~AnsweringWindow() {
    longestAnswer();
    DestroyWindow(window_);
}

double AnsweringWindow::longestAnswer() {
    if (!thread_) return longest_;
    InterlockedExchange(&ending_, 1);
    // The last question may still wait for its answer.
    while (MsgWaitForMultipleObjects(1, &thread_, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    CloseHandle(thread_);
    thread_ = nullptr;
    return longest_;
}

DWORD WINAPI AnsweringWindow::ask(void* self) {
    auto& own = *static_cast<AnsweringWindow*>(self);
    while (!own.ending_) {
        const double start = now();
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(own.window_, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &answer);
        own.longest_ = std::max(own.longest_, now() - start);
        Sleep(1);
    }
    return 0;
}

}  // namespace tunovka::bench
