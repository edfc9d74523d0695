#include "ui/dpi.h"

namespace tunovka {

int dpiOf(HWND window) {
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (getDpi) {
        if (const UINT dpi = getDpi(window)) return static_cast<int>(dpi);
    }
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi;
}

}  // namespace tunovka
