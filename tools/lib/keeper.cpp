// Keeps Wine's desktop running while no other program does: belongs to it and sleeps.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    // Asking the desktop starts it.
    GetWindowTextLengthW(GetDesktopWindow());
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    }
    return 0;
}
