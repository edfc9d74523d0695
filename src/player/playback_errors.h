#pragma once

#include <windows.h>

#include "core/errors.h"
#include "player/media_engine.h"

namespace tunovka {

// What the person reads when something cannot be played: a sentence in Slovak for what is common,
// else the system's own text with its number. Set between blanks, because the sentence is put
// between others as it is. A code that means no failure is taken for an unknown one.
PlaybackTrouble playbackTrouble(HRESULT error);

// The same for an error of reading a file.
PlaybackTrouble playbackTrouble(const RuntimeError& error);

}  // namespace tunovka
