#pragma once

#include <string>

// Looks up the external players that this machine has.
namespace tunovka::Register {

enum PlayerKind : int { kWinamp = 1, kWindowsMediaPlayer = 2, kMediaPlayer2 = 3 };

// What the registry tells of a player: of Winamp (1) its folder, of Windows Media Player (2) and
// Media Player 2 (3) the program's path. "" for a player that is not there, a value that is no
// text, or any other kind. Sees what a 32-bit program sees, also on a 64-bit system.
std::wstring PlayerPath(int kind);

}  // namespace tunovka::Register
