#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace tunovka {

// The project's small music collection, found upwards from where the test program lies; ends in
// "\".
inline std::wstring samplesFolder() {
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    std::wstring folder = program;
    for (auto cut = folder.rfind(L'\\'); cut != folder.npos; cut = folder.rfind(L'\\')) {
        folder.resize(cut);
        const std::wstring samples = folder + L"\\samples\\";
        if (GetFileAttributesW((samples + L"Vitajte.m3u").c_str()) != INVALID_FILE_ATTRIBUTES)
            return samples;
    }
    throw std::runtime_error("the samples are not above the test program");
}

}  // namespace tunovka
