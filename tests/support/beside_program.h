#pragma once

#include <windows.h>

#include <string>

namespace tunovka {

// The path of a file that lies beside the test program.
inline std::wstring besideThisProgram(const std::wstring& name) {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\') + 1) + name;
}

}  // namespace tunovka
