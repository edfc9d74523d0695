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
void start(const std::wstring& commandLine, int showMode, const std::wstring& program) {
    try {
        startProgram(commandLine, showMode);
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.number, program, error.source);
    }
}

}  // namespace

std::wstring winampProgram(std::wstring_view folder) {
    return folder.empty() ? std::wstring() : std::wstring(folder).append(L"\\winamp.exe");
}

std::wstring playingCommandLine(std::wstring_view program, std::wstring_view file) {
    return std::wstring(program).append(L" \"").append(file).append(L"\"");
}

std::wstring openWithCommandLine(std::wstring_view file) {
    return std::wstring(L"rundll32.exe shell32.dll, OpenAs_RunDLL ").append(file);
}

ExternalPlayers ExternalPlayers::find() {
    return {winampProgram(Register::PlayerPath(Register::kWinamp)),
            Register::PlayerPath(Register::kWindowsMediaPlayer),
            Register::PlayerPath(Register::kMediaPlayer2)};
}

void playInProgram(const std::wstring& program, const std::wstring& file) {
    start(playingCommandLine(program, file), SW_SHOWNORMAL, program);
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
    start(openWithCommandLine(file), SW_SHOWMINIMIZED, L"rundll32.exe");
}

}  // namespace tunovka
