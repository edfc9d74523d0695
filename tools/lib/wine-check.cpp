// Succeeds where 32-bit windows work: a child window's own colour must arrive on its surface.
#include <windows.h>

namespace {

constexpr COLORREF kColor = RGB(200, 40, 80);

LRESULT CALLBACK childProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    const HBRUSH brush = CreateSolidBrush(kColor);
    FillRect(dc, &paint.rcPaint, brush);
    DeleteObject(brush);
    EndPaint(window, &paint);
    return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    WNDCLASSW type{};
    type.lpfnWndProc = childProcedure;
    type.hInstance = instance;
    type.lpszClassName = L"Check";
    RegisterClassW(&type);
    const HWND frame = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                                       10, 10, 100, 100, nullptr, nullptr, instance, nullptr);
    const HWND child = CreateWindowExW(0, L"Check", L"", WS_CHILD | WS_VISIBLE, 10, 10, 80, 80,
                                       frame, nullptr, instance, nullptr);
    for (const DWORD start = GetTickCount(); GetTickCount() - start < 5000; Sleep(10)) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
        const HDC dc = GetDC(child);
        const COLORREF seen = GetPixel(dc, 20, 20);
        ReleaseDC(child, dc);
        if (seen == kColor) return 0;
    }
    return 1;
}
