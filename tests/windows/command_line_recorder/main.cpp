// Stands for an external player: writes the command line and the show mode that it was started with
// beside itself, as "<program>.txt" in UTF-16, and ends.
#include <windows.h>

#include <string>

int wmain() {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    STARTUPINFOW start{};
    GetStartupInfoW(&start);
    const std::wstring text = std::to_wstring(start.wShowWindow) + L"|" + GetCommandLineW();
    const std::wstring target = std::wstring(program) + L".txt";
    const std::wstring unfinished = target + L".part";
    const HANDLE file = CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written,
              nullptr);
    CloseHandle(file);
    // The whole text at once: who waits for the file may read it as soon as it is there.
    return MoveFileExW(unfinished.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
