// The least program with a window: what the program's start and memory are measured against.
#include <windows.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"Tunovka", WS_POPUP | WS_VISIBLE, 100, 100,
                                        800, 600, nullptr, nullptr, instance, nullptr);
    UpdateWindow(window);
    MSG message;
    while (IsWindow(window) && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}
