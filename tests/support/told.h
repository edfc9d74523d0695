#pragma once

#include <string>

#include "player/playback.h"

namespace tunovka {

// A notification in short: "new " details, "0-2 " a change of the state, "end ", "error ".
inline std::wstring inShort(const MediaNotification& what) {
    const auto number = [](PlayState state) { return std::to_wstring(static_cast<int>(state)); };
    const std::wstring words[] = {L"end", L"new", number(what.from) + L"-" + number(what.to),
                                  L"error"};
    return words[static_cast<int>(what.kind)] + L" ";
}

}  // namespace tunovka
