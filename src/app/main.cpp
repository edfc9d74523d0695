#include <windows.h>

#include <ole2.h>

#include "app/frm_prieskumnik.h"
#include "core/loop.h"
#include "core/multimedialny.h"
#include "ui/forms.h"
#include "ui/frm_box.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    using namespace tunovka;
    // A drive without a medium is told by the program, not by a system box.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    OleInitialize(nullptr);

    installFailureNotice();
    MultiMedialny::InitSharedTables();
    guarded([] { Forms::load<frmPrieskumnik>().load(); });
    runLoop();

    OleUninitialize();
    return 0;
}
