#pragma once

#include <windows.h>

#include "player/media_engine.h"

namespace tunovka {

// What the person reads when something cannot be played: a sentence for what is common, else the
// system's own with its number, never that of success. It stands between blanks and so between
// other sentences.
PlaybackTrouble playbackTrouble(HRESULT error);

}  // namespace tunovka
