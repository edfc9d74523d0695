#include "player/external_players.h"

#include <windows.h>

#include <shellapi.h>
#include <shlwapi.h>

#include "core/errors.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/text.h"

namespace tunovka {
namespace {

constexpr DWORD kElevationRequired = 740;  // not in every header set

// A text value of a key, expanded; name nullptr is the key's default value.
std::wstring textValue(HKEY root, const wchar_t* key, const wchar_t* name) {
    static const LateFunction<decltype(SHGetValueW)> valueOf(L"shlwapi.dll", "SHGetValueW");
    std::wstring text(32767, L'\0');  // no environment gives more
    DWORD type = REG_NONE, size = (text.size() - 1) * sizeof(wchar_t);
    const bool isText = valueOf && !valueOf(root, key, name, &type, text.data(), &size) &&
                        (type == REG_SZ || type == REG_EXPAND_SZ);
    return isText ? trimAtNul(text) : L"";
}

int startErrorNumber(DWORD systemError) {
    if (systemError == kElevationRequired) return kPermissionDenied;
    const int number = errorNumberOf(systemError);
    if (number == kPathNotFound || number == kBadFileName) return kFileNotFound;
    return number == kPathFileAccess ? kInvalidCall : number;
}

// Starts a program and does not wait for it. A failure names it.
void start(const std::wstring& program, const std::wstring& arguments, int showMode) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(showMode);
    PROCESS_INFORMATION process{};
    std::wstring line = program + arguments;  // the system writes into it
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        throw RuntimeError(startErrorNumber(GetLastError()), program);
    const KernelHandle started(process.hProcess), thread(process.hThread);
}

}  // namespace

ExternalPlayers ExternalPlayers::find() {
    std::wstring winamp = textValue(HKEY_CURRENT_USER, L"Software\\winamp", nullptr);
    if (!winamp.empty()) winamp += L"\\winamp.exe";  // the registry knows its folder
    const auto pathOf = [](const wchar_t* player) {
        return textValue(HKEY_LOCAL_MACHINE, player, L"Player.Path");
    };
    return {winamp, pathOf(L"SOFTWARE\\Microsoft\\Multimedia\\WMPlayer"),
            pathOf(L"SOFTWARE\\Microsoft\\Multimedia\\MPlayer2")};
}

void playInProgram(const std::wstring& program, const std::wstring& file) {
    start(program, L" \"" + file + L"\"", SW_SHOWNORMAL);
}

void openByAssociation(const std::wstring& file) {
    static const LateFunction<decltype(ShellExecuteExW)> execute(L"shell32.dll", "ShellExecuteExW");
    SHELLEXECUTEINFOW open{};
    open.cbSize = sizeof open;
    open.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    open.lpVerb = L"open";  // the default verb of an unknown type asks for a program
    open.lpFile = file.c_str();
    open.nShow = SW_SHOWNORMAL;
    if (execute) execute(&open);
}

void openWith(const std::wstring& file) {
    start(L"rundll32.exe", L" shell32.dll, OpenAs_RunDLL " + file, SW_SHOWMINIMIZED);
}

}  // namespace tunovka
