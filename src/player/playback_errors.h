#pragma once

#include <windows.h>

#include <string>

#include "core/errors.h"

namespace tunovka {

// A playlist without an entry that can be played.
inline constexpr HRESULT kNothingToPlay = static_cast<HRESULT>(0x800700E8);

// What the person reads when something cannot be played: a sentence in Slovak for what is common,
// else the system's own text with its number. Set between blanks, because the sentence is put
// between others as it is.
std::wstring playbackErrorText(HRESULT error);

// The same for an error of reading a file.
std::wstring playbackErrorText(const RuntimeError& error);

}  // namespace tunovka
