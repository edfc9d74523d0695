#include "core/events_windows.h"

#include <deque>
#include <mutex>

#include "core/errors.h"
#include "core/handle.h"

namespace tunovka {

std::int16_t StopRequested = 0;

namespace {

constexpr DWORD kPause = 15;        // ms between two looks at the messages
constexpr DWORD kLongestLook = 50;  // ms after which the work goes on even if messages never end

struct Loop {
    std::function<bool(MSG&)> filter;
    std::function<void(std::exception_ptr)> unhandled;
    std::mutex postedLock;
    std::deque<std::function<void()>> posted;
    DWORD lastLook = GetTickCount();
    HWND window = nullptr;  // lives as long as the thread; the system destroys it at its end
};

Loop& loop() {
    static Loop only;
    return only;
}

std::function<void()> takeFirstPosted() {
    Loop& own = loop();
    const std::scoped_lock lock(own.postedLock);
    if (own.posted.empty()) return {};
    std::function<void()> routine = std::move(own.posted.front());
    own.posted.pop_front();
    return routine;
}

void runFirstPosted() noexcept {
    Loop& own = loop();
    const std::function<void()> routine = takeFirstPosted();
    try {
        if (routine) routine();
    } catch (...) {
        if (own.unhandled) own.unhandled(std::current_exception());
    }
}

LRESULT CALLBACK loopProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message != WM_APP) return DefWindowProcW(window, message, wparam, lparam);
    runFirstPosted();
    return 0;
}

}  // namespace

void prepareLoop() {
    Loop& own = loop();
    if (own.window) return;
    WNDCLASSW kind{};
    kind.lpfnWndProc = loopProcedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.lpszClassName = L"Tunovka.loop";
    RegisterClassW(&kind);
    own.window = CreateWindowExW(0, kind.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                 kind.hInstance, nullptr);
}

void setMessageFilter(std::function<bool(MSG&)> filter) {
    loop().filter = std::move(filter);
}

void setUnhandledHandler(std::function<void(std::exception_ptr)> handler) {
    loop().unhandled = std::move(handler);
}

bool yieldToEvents() {
    if (GetTickCount() - loop().lastLook < kPause) return false;
    yieldNow();
    return true;
}

void yieldNow() {
    Loop& own = loop();
    const DWORD start = GetTickCount();
    MSG message;
    while (GetTickCount() - start < kLongestLook &&
           PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));  // it is the main loop's
            break;
        }
        if (own.filter && own.filter(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    own.lastLook = GetTickCount();
}

void postToLoop(std::function<void()> routine) {
    Loop& own = loop();
    if (!own.window) prepareLoop();
    const std::scoped_lock lock(own.postedLock);
    own.posted.push_back(std::move(routine));
    if (PostMessageW(own.window, WM_APP, 0, 0)) return;
    own.posted.pop_back();
    throw RuntimeError(kInvalidCall);
}

}  // namespace tunovka
