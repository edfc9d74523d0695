#include "ui/timer.h"

#include <map>

#include "core/loop.h"

namespace tunovka {
namespace {

std::map<UINT_PTR, Timer*>& running() {
    static std::map<UINT_PTR, Timer*> timers;
    return timers;
}

}  // namespace

void Timer::setInterval(UINT milliseconds) {
    if (milliseconds == interval_) return;
    if (id_) {
        KillTimer(nullptr, id_);
        running().erase(id_);
        id_ = 0;
    }
    interval_ = milliseconds;
    if (!milliseconds) return;
    id_ = SetTimer(nullptr, 0, milliseconds, elapsed);
    running()[id_] = this;
}

void CALLBACK Timer::elapsed(HWND, UINT, UINT_PTR id, DWORD) {
    const auto found = running().find(id);
    if (found == running().end()) return;  // a last tick of a timer that was stopped
    Timer* timer = found->second;
    if (timer->onTick) guarded(timer->onTick);
}

}  // namespace tunovka
