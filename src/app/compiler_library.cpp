// What the compiler's own libraries ask for and the program answers itself. It must be an object
// file of the program: a member of a library would be looked at too late.
#include <windows.h>

#include <cstdlib>

namespace {

ULONGLONG WINAPI millisecondsSinceStart() {
    LARGE_INTEGER count, perSecond;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&perSecond);
    const ULONGLONG ticks = count.QuadPart, frequency = perSecond.QuadPart;
    return ticks / frequency * 1000 + ticks % frequency * 1000 / frequency;
}

}  // namespace

// The thread library asks for GetTickCount64, which Windows XP does not have, and would keep the
// program from starting there. The reference is satisfied before the linker looks into the system's
// import library.
extern "C" {
extern ULONGLONG(WINAPI* const importedTickCount)() __asm__("__imp__GetTickCount64@0");
ULONGLONG(WINAPI* const importedTickCount)() = millisecondsSinceStart;
}

// The usual one writes the failure's readable name to a console that a window program does not
// have, and brings 60 KB for it.
namespace __gnu_cxx {
void __verbose_terminate_handler() {
    std::abort();
}
}  // namespace __gnu_cxx
