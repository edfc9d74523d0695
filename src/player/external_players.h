#pragma once

#include <string>
#include <string_view>

namespace tunovka {

// The players that this machine has, as the paths of their programs; "" for one that is not there.
struct ExternalPlayers {
    std::wstring winamp;
    std::wstring windowsMediaPlayer;
    std::wstring mediaPlayer2;

    // Asks the registry.
    static ExternalPlayers find();
};

// The program in Winamp's folder, "" for "".
std::wstring winampProgram(std::wstring_view folder);

// What starts a program with a file: the program as it stands, without quotation marks, and the
// file between them.
std::wstring playingCommandLine(std::wstring_view program, std::wstring_view file);

// What starts the system's own choice of a program for a file; nothing is put between quotation
// marks.
std::wstring openWithCommandLine(std::wstring_view file);

// Starts a program with a file in a normal window, then lets events run. Raises kFileNotFound,
// kPermissionDenied or kInvalidCall with the program named when it cannot be started.
void playInProgram(const std::wstring& program, const std::wstring& file);

// Opens a file as the system itself would, which also knows programs without a program file.
// Nothing happens for a type that no program opens.
void openByAssociation(const std::wstring& file);

// Lets the person choose a program for a file; the system's helper starts minimised. Raises as
// above.
void openWith(const std::wstring& file);

}  // namespace tunovka
