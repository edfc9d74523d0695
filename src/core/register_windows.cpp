#include "core/register_windows.h"

#include <windows.h>

#include "core/handle.h"
#include "core/text.h"

namespace tunovka::Register {
namespace {

std::wstring expanded(const std::wstring& text) {
    std::wstring result(ExpandEnvironmentStringsW(text.c_str(), nullptr, 0), L'\0');
    ExpandEnvironmentStringsW(text.c_str(), result.data(), static_cast<DWORD>(result.size()));
    return trimAtNul(result);
}

// A text value of a key; name nullptr is the key's default value.
std::wstring textValue(HKEY root, const wchar_t* subkey, const wchar_t* name) {
    RegistryKey key;
    if (RegOpenKeyExW(root, subkey, 0, KEY_READ | KEY_WOW64_32KEY, key.receive()) != ERROR_SUCCESS)
        return {};
    DWORD type = REG_NONE;
    DWORD size = 0;  // bytes, the final NUL included
    if (RegQueryValueExW(key.get(), name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ) || size <= sizeof(wchar_t))
        return {};
    std::wstring text(size / sizeof(wchar_t), L' ');
    if (RegQueryValueExW(key.get(), name, nullptr, &type, reinterpret_cast<BYTE*>(text.data()),
                         &size) != ERROR_SUCCESS)
        return {};
    text = trimAtNul(text);  // some programs write values without the NUL
    return type == REG_EXPAND_SZ ? expanded(text) : text;
}

}  // namespace

std::wstring PlayerPath(int kind) {
    switch (kind) {
        case kWinamp:
            return textValue(HKEY_CURRENT_USER, L"Software\\winamp", nullptr);
        case kWindowsMediaPlayer:
            return textValue(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Multimedia\\WMPlayer",
                             L"Player.Path");
        case kMediaPlayer2:
            return textValue(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Multimedia\\MPlayer2",
                             L"Player.Path");
        default:
            return {};
    }
}

}  // namespace tunovka::Register
