#pragma once

#include <string>

namespace tunovka {

// The players that this machine has, as the paths of their programs; "" for one that is not there.
struct ExternalPlayers {
    std::wstring winamp, windowsMediaPlayer, mediaPlayer2;

    // Asks the registry, which shows what a 32-bit program sees, also on a 64-bit system.
    static ExternalPlayers find();
};

// Starts a program, its path as it stands, with a file in a normal window: a question to the disk.
// Raises kFileNotFound, kPermissionDenied or kInvalidCall with the program named.
void playInProgram(const std::wstring& program, const std::wstring& file);

// Opens a file as the system itself would; nothing happens for a type that no program opens.
void openByAssociation(const std::wstring& file);

// Lets the person choose a program for a file. Raises as above.
void openWith(const std::wstring& file);

}  // namespace tunovka
