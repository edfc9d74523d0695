// The start of every test program on Windows, which stands for the program's own: one
// single-threaded apartment with OLE and the common controls ready.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: these need its types.
#include <commctrl.h>
#include <ole2.h>

#include <string>

namespace {

// Started as another program by a test: writes its show mode and command line into the file of that
// name, which nobody can read before it is whole.
bool recordsItsStart() {
    wchar_t path[MAX_PATH];
    if (!GetEnvironmentVariableW(L"TUNOVKA_RECORD", path, MAX_PATH)) return false;
    STARTUPINFOW start{};
    GetStartupInfoW(&start);
    const std::wstring text = std::to_wstring(start.wShowWindow) + L"|" + GetCommandLineW();
    const HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD count = text.size() * sizeof(wchar_t);
    return WriteFile(file, text.data(), count, &count, nullptr);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (recordsItsStart()) return 0;
    testing::InitGoogleTest(&argc, argv);
    if (FAILED(OleInitialize(nullptr))) return 1;
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    if (!InitCommonControlsEx(&controls)) return 1;
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}
