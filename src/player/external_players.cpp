#include "player/external_players.h"

#include <windows.h>

#include <shellapi.h>

#include "core/errors.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "core/process_windows.h"
#include "core/register_windows.h"

namespace tunovka {
namespace {

// A failure to start names the program, so that the person knows which one is missing.
void start(const std::wstring& program, const std::wstring& arguments, int showMode) {
    try {
        startProgram(program + arguments, showMode);
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.number, program, error.source);
    }
}

}  // namespace

ExternalPlayers ExternalPlayers::find() {
    std::wstring winamp = Register::PlayerPath(Register::kWinamp);
    if (!winamp.empty()) winamp += L"\\winamp.exe";  // the registry knows its folder
    return {winamp, Register::PlayerPath(Register::kWindowsMediaPlayer),
            Register::PlayerPath(Register::kMediaPlayer2)};
}

void playInProgram(const std::wstring& program, const std::wstring& file) {
    start(program, L" \"" + file + L"\"", SW_SHOWNORMAL);
    yieldNow();
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
