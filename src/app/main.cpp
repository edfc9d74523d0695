#include <windows.h>

#include <ole2.h>

#include "app/frm_prieskumnik.h"
#include "core/events_windows.h"
#include "core/multimedialny.h"
#include "ui/boundary.h"
#include "ui/box.h"
#include "ui/modal.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    using namespace tunovka;
    // A drive without a medium is told by the program, not by a system box.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    OleInitialize(nullptr);

    installFailureNotice();
    setMessageFilter(filterMessage);
    MultiMedialny::InitSharedTables();
    guarded([] { Forms::load<frmPrieskumnik>().load(); });
    Forms::run();

    OleUninitialize();
    return 0;
}
