#include "core/process_windows.h"

#include "core/errors.h"
#include "core/handle.h"
#include "core/system_windows.h"

namespace tunovka {
namespace {

constexpr DWORD kElevationRequired = 740;  // not in every header set

int startErrorNumber(DWORD systemError) {
    if (systemError == kElevationRequired) return kPermissionDenied;
    const int number = errorNumberOf(systemError);
    if (number == kPathNotFound || number == kBadFileName) return kFileNotFound;
    return number == kPathFileAccess ? kInvalidCall : number;
}

}  // namespace

void startProgram(const std::wstring& commandLine, int showMode) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(showMode);
    PROCESS_INFORMATION process{};
    std::wstring line = commandLine;  // the system writes into it
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        throw RuntimeError(startErrorNumber(GetLastError()));
    const KernelHandle program(process.hProcess), thread(process.hThread);
}

}  // namespace tunovka
