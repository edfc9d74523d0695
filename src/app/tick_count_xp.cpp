// The compiler's thread library asks for GetTickCount64, which Windows XP does not have, and would
// keep the program from starting there. The reference is satisfied here, before the linker looks
// into the system's import library. It must be an object file of the program itself: a member of a
// library would be looked at too late.
#include <windows.h>

namespace {

ULONGLONG WINAPI millisecondsSinceStart() {
    LARGE_INTEGER count, perSecond;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&perSecond);
    const ULONGLONG ticks = count.QuadPart, frequency = perSecond.QuadPart;
    return ticks / frequency * 1000 + ticks % frequency * 1000 / frequency;
}

}  // namespace

extern "C" {
extern ULONGLONG(WINAPI* const importedTickCount)() __asm__("__imp__GetTickCount64@0");
ULONGLONG(WINAPI* const importedTickCount)() = millisecondsSinceStart;
}
