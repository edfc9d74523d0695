#include <windows.h>

#include "app/frm_prieskumnik.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "core/multimedialny.h"
#include "ui/form.h"
#include "ui/frm_box.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    using namespace tunovka;
    // A drive without a medium is told by the program, not by a system box.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    // Libraries are loaded from the system's folder, never from the current directory.
    static const LateFunction<BOOL WINAPI(const wchar_t*)> setDirectory(L"kernel32.dll",
                                                                        "SetDllDirectoryW");
    if (setDirectory) setDirectory(L"");
    static const LateFunction<BOOL WINAPI(DWORD)> setDirectories(L"kernel32.dll",
                                                                 "SetDefaultDllDirectories");
    if (setDirectories)
        setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);

    installFailureNotice();
    MultiMedialny::InitSharedTables();
    guarded([] { Forms::load<frmPrieskumnik>().load(); });
    runLoop();
    return 0;
}
