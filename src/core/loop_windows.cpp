#include <windows.h>

#include <map>
#include <memory>

#include "core/loop.h"

namespace tunovka {

std::int16_t StopRequested = 0;

namespace {

constexpr DWORD kPause = 15;        // ms between two looks at the messages
constexpr DWORD kLongestLook = 50;  // ms after which the work goes on even if messages never end

constexpr UINT kRunPosted = WM_APP;      // lParam: the routine
constexpr UINT kRunSignal = WM_APP + 1;  // wParam: the signal's number

std::function<bool(MSG&)> messageFilter;
std::function<void(std::exception_ptr)> failureHandler;
DWORD lastLook = 0;  // tick count

}  // namespace

// The unseen window that brings what is posted and raised into the loop, whoever runs it.
class LoopWindow {
  public:
    static LoopWindow& get() {
        static LoopWindow only;
        return only;
    }

    HWND handle() const { return handle_; }

    void post(std::function<void()> routine) const {
        auto posted = std::make_unique<std::function<void()>>(std::move(routine));
        if (PostMessageW(handle_, kRunPosted, 0, reinterpret_cast<LPARAM>(posted.get())))
            static_cast<void>(posted.release());
        // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): it is the message's now
    }

    std::uintptr_t add(LoopSignal& signal) {
        signals_[++lastNumber_] = &signal;
        return lastNumber_;
    }
    void remove(std::uintptr_t number) { signals_.erase(number); }

  private:
    // It lives as long as the thread; the system destroys it at its end.
    LoopWindow() {
        WNDCLASSW kind{};
        kind.lpfnWndProc = procedure;
        kind.hInstance = GetModuleHandleW(nullptr);
        kind.lpszClassName = L"Tunovka.loop";
        RegisterClassW(&kind);
        handle_ = CreateWindowExW(0, kind.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  kind.hInstance, nullptr);
    }

    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        if (message == kRunPosted)
            runPosted(lparam);
        else if (message == kRunSignal || message == WM_TIMER)
            get().runSignal(wparam);
        else
            return DefWindowProcW(window, message, wparam, lparam);
        return 0;
    }

    static void runPosted(LPARAM routine) {
        const std::unique_ptr<std::function<void()>> posted(
            reinterpret_cast<std::function<void()>*>(routine));
        guarded(*posted);
    }

    void runSignal(std::uintptr_t number) {
        const auto found = signals_.find(number);
        if (found == signals_.end()) return;           // it has gone since it was raised
        const auto routine = found->second->routine_;  // which may destroy the signal
        guarded(routine);
    }

    HWND handle_ = nullptr;
    std::map<std::uintptr_t, LoopSignal*> signals_;
    std::uintptr_t lastNumber_ = 0;
};

namespace {

// The next message that may run now.
bool takeMessage(MSG& message, Meanwhile meanwhile) {
    if (meanwhile == Meanwhile::PaintingOnly)
        return PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE) ||
               PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE);
    return PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);
}

void dispatch(MSG& message) {
    if (messageFilter && messageFilter(message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

// Runs what waits until the condition fails or nothing waits any more. False when the program is to
// quit, which is asked for again for the outer loop.
bool runWaiting(const std::function<bool()>& condition, Meanwhile meanwhile) {
    MSG message;
    while (condition() && takeMessage(message, meanwhile)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        dispatch(message);
    }
    return true;
}

// Escape and the wish to close a window, while messages stay in their queue.
class EscapeWatch {
  public:
    // A new press; one that is held from before does not count.
    bool pressed() {
        const bool down = isDown();
        const bool isNew = down && !wasDown_;
        wasDown_ = down;
        return isNew || (waiting(WM_KEYDOWN) && message_.wParam == VK_ESCAPE) ||
               waiting(WM_CLOSE) ||
               (waiting(WM_SYSCOMMAND) && (message_.wParam & 0xFFF0) == SC_CLOSE);
    }

    // What was typed up to the Escape is given up with what it was typed for.
    static void dropKeys() {
        MSG key;
        while (PeekMessageW(&key, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE))
            if (key.message == WM_KEYDOWN && key.wParam == VK_ESCAPE) return;
    }

  private:
    static bool isDown() {
        const DWORD inFront = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
        return inFront == GetCurrentThreadId() && GetAsyncKeyState(VK_ESCAPE) < 0;
    }
    bool waiting(UINT kind) { return PeekMessageW(&message_, nullptr, kind, kind, PM_NOREMOVE); }

    MSG message_{};
    bool wasDown_ = isDown();
};

}  // namespace

void yieldToEvents() {
    if (GetTickCount() - lastLook >= kPause) yieldNow();
}

void yieldNow() {
    const DWORD start = GetTickCount();
    runWaiting([&] { return GetTickCount() - start < kLongestLook; }, Meanwhile::AllEvents);
    lastLook = GetTickCount();
}

void runLoopWhile(const std::function<bool()>& condition) {
    while (condition()) {
        if (!runWaiting(condition, Meanwhile::AllEvents)) return;
        if (condition()) WaitMessage();
    }
}

void runLoop() {
    runLoopWhile([] { return true; });
    MSG quit;
    PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

bool waitForObject(void* object, Meanwhile meanwhile, const std::function<bool()>& cancelled) {
    const auto signalled = [&] { return WaitForSingleObject(object, 0) == WAIT_OBJECT_0; };
    const auto waits = [&] { return !signalled() && !(cancelled && cancelled()); };
    EscapeWatch escape;
    while (waits()) {
        // What stays in the queue must not end the wait below: only what is new from here on does.
        // Each look at the queue makes all that is in it old, hence the wait is a short one.
        GetQueueStatus(QS_ALLINPUT);
        if (!runWaiting(waits, meanwhile)) return false;
        if (meanwhile == Meanwhile::PaintingOnly && escape.pressed()) {
            EscapeWatch::dropKeys();
            return false;
        }
        MsgWaitForMultipleObjects(1, &object, FALSE, kPause, QS_ALLINPUT);
    }
    return signalled();
}

void prepareLoop() {
    LoopWindow::get();
}

void postToLoop(std::function<void()> routine) {
    LoopWindow::get().post(std::move(routine));
}

LoopSignal::LoopSignal(std::function<void()> routine)
    : routine_(std::move(routine)), number_(LoopWindow::get().add(*this)) {}

LoopSignal::~LoopSignal() {
    LoopWindow::get().remove(number_);
}

void LoopSignal::raise() const {
    PostMessageW(LoopWindow::get().handle(), kRunSignal, number_, 0);
}

void Timer::setInterval(unsigned milliseconds) {
    if (milliseconds == interval_) return;
    interval_ = milliseconds;
    const HWND window = LoopWindow::get().handle();
    if (milliseconds)
        SetTimer(window, elapsed_.number_, milliseconds, nullptr);
    else
        KillTimer(window, elapsed_.number_);
}

void setMessageFilter(std::function<bool(MSG&)> filter) {
    messageFilter = std::move(filter);
}

void setFailureHandler(std::function<void(std::exception_ptr)> handler) {
    failureHandler = std::move(handler);
}

void reportFailure(std::exception_ptr failure) noexcept {
    try {
        if (failureHandler) failureHandler(std::move(failure));
    } catch (...) {
        // A report that fails has nobody left to tell.
    }
}

}  // namespace tunovka
