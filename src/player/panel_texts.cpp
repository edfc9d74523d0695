#include "player/panel_texts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/paths.h"
#include "core/text.h"

namespace tunovka {
namespace {

std::wstring orUnknown(std::wstring_view value) {
    return std::wstring(value.empty() ? L"neuvedený" : value);
}

// A character outside the basic plane takes two units where wchar_t has two bytes.
bool isLeadingHalf(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

// Below the strip is 1 and not 0, which a pointer exactly at its start keeps.
int withinStrip(int at, int length) {
    return at < 0 ? 1 : std::min(at, length);
}

double cutToHundredths(double part, double whole) {
    return std::floor(part / whole * 100) / 100;
}

}  // namespace

std::wstring timeText(double seconds) {
    // The upper bound keeps nonsense from a broken file out of the whole numbers.
    const bool isTime = seconds > 0 && seconds < 1e12;
    const auto whole = isTime ? static_cast<std::int64_t>(seconds) : 0;
    std::wstring text;
    if (whole >= 3600) text = decimal(whole / 3600) + L" h ";
    text += decimal(whole / 60 % 60) + L":";
    if (whole % 60 < 10) text += L'0';
    return text + decimal(whole % 60) + L" min";
}

std::wstring nowPlayingText(std::wstring_view author, std::wstring_view title) {
    return L"Autor: " + orUnknown(author) + L"  Titul: " + orUnknown(title) + L"   ";
}

std::wstring openingText(std::wstring_view path) {
    return L"Otvára sa: " + std::wstring(fileName(path)) + L"   ";
}

std::wstring scrolledByOne(std::wstring_view text) {
    if (text.empty()) return {};
    const std::size_t first = isLeadingHalf(text[0]) && text.size() > 1 ? 2 : 1;
    return std::wstring(text.substr(first)).append(text.substr(0, first));
}

double progressFraction(double position, double duration) {
    if (!(duration > 0)) return 0;
    return std::clamp(cutToHundredths(position, duration), 0.0, 1.0);
}

double seekPosition(int x, int width, double duration) {
    if (width <= 0) return 0;
    return duration / width * withinStrip(x, width);
}

int stripVolume(int y, int height) {
    if (height <= 0) return 0;
    const double fraction = cutToHundredths(withinStrip(height - y, height), height);
    return roundHalfEven(-(4000 - fraction * 4000));
}

int percentVolume(int percent) {
    return percent * 40 - 4000;
}

double movedPosition(StripMove move, double position, double duration) {
    return moved(move, position,
                 {.line = 5, .page = duration / 10, .least = 0, .most = std::max(duration, 0.0)});
}

int movedVolume(StripMove move, int percent) {
    return static_cast<int>(
        moved(move, percent, {.line = kVolumeStep, .page = 20, .least = 0, .most = 100}));
}

}  // namespace tunovka
