#pragma once

#include <windows.h>

#include <functional>

namespace tunovka {

// Calls its tick from the message loop every so many milliseconds while the interval is not 0.
class Timer {
  public:
    Timer() = default;
    ~Timer() { setInterval(0); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    std::function<void()> onTick;

    void setInterval(UINT milliseconds);
    UINT interval() const { return interval_; }

  private:
    static void CALLBACK elapsed(HWND, UINT, UINT_PTR id, DWORD);

    UINT_PTR id_ = 0;
    UINT interval_ = 0;
};

}  // namespace tunovka
