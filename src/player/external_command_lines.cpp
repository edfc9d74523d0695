#include "player/external_players.h"

namespace tunovka {

std::wstring winampProgram(std::wstring_view folder) {
    return folder.empty() ? std::wstring() : std::wstring(folder).append(L"\\winamp.exe");
}

std::wstring playingCommandLine(std::wstring_view program, std::wstring_view file) {
    return std::wstring(program).append(L" \"").append(file).append(L"\"");
}

std::wstring openWithCommandLine(std::wstring_view file) {
    return std::wstring(L"rundll32.exe shell32.dll, OpenAs_RunDLL ").append(file);
}

}  // namespace tunovka
