// The least program with a window: what the program's start and memory are measured against.
#include <windows.h>

static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT paint;
            const HDC dc = BeginPaint(window, &paint);
            TextOutW(dc, 20, 20, L"Tunovka", 7);
            EndPaint(window, &paint);
            return 0;
        }
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcW(window, message, wparam, lparam);
    }
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = procedure;
    kind.hInstance = instance;
    kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    kind.lpszClassName = L"bare";
    RegisterClassW(&kind);
    const HWND window = CreateWindowExW(0, kind.lpszClassName, L"bare", WS_POPUP | WS_VISIBLE, 100,
                                        100, 800, 600, nullptr, nullptr, instance, nullptr);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}
