#include <windows.h>

#include "app/frm_prieskumnik.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "core/multimedialny.h"
#include "ui/form.h"
#include "ui/frm_box.h"

// The compiler's own library would load the system's cryptography to draw the stack's guard.
extern "C" {
std::uintptr_t __stack_chk_guard;
[[noreturn]] void __stack_chk_fail() {
    __builtin_trap();
}
}
[[gnu::constructor(101), gnu::no_stack_protector]] static void drawStackGuard() {
    __stack_chk_guard = static_cast<std::uintptr_t>(__builtin_ia32_rdtsc() * 2654435769u);
}

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    using namespace tunovka;
    // A drive without a medium is told by the program, not by a system box.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // Libraries are loaded from the system's folder, never from the current directory.
    SetDllDirectoryW(L"");
    static const LateFunction<BOOL WINAPI(DWORD)> setFolders(L"kernel32.dll",
                                                             "SetDefaultDllDirectories");
    if (setFolders) setFolders(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);

    installFailureNotice();
    MultiMedialny::InitSharedTables();
    guarded([] { Forms::load<frmPrieskumnik>().load(); });
    runLoop();
    return 0;
}
