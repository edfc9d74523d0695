// The start of every test program. On Windows it stands for the program's own start: one
// single-threaded apartment with OLE and the common controls ready.
#include <gtest/gtest.h>

#ifdef _WIN32

#include <windows.h>
// windows.h first: these need its types.
#include <commctrl.h>
#include <ole2.h>

#include "support/last_words.h"

int wmain(int argc, wchar_t** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new tunovka::LastWords);
    if (FAILED(OleInitialize(nullptr))) return 1;
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    if (!InitCommonControlsEx(&controls)) return 1;
    const int result = RUN_ALL_TESTS();
    OleUninitialize();
    return result;
}

#else

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#endif
