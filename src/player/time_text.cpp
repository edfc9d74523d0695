#include "player/time_text.h"

#include <cstdint>

namespace tunovka {

std::wstring timeText(double seconds) {
    // The upper bound keeps nonsense from a broken file out of the whole numbers.
    const bool isTime = seconds > 0 && seconds < 1e12;
    const auto whole = isTime ? static_cast<std::int64_t>(seconds) : 0;
    std::wstring text;
    if (whole >= 3600) text = std::to_wstring(whole / 3600) + L" h ";
    text += std::to_wstring(whole / 60 % 60) + L":";
    if (whole % 60 < 10) text += L'0';
    return text + std::to_wstring(whole % 60) + L" min";
}

}  // namespace tunovka
