#include "player/strip_math.h"

#include <algorithm>
#include <cmath>

#include "core/text.h"

namespace tunovka {
namespace {

// Below the strip is 1 and not 0, which a pointer exactly at its start keeps.
int withinStrip(int at, int length) {
    return at < 0 ? 1 : std::min(at, length);
}

double cutToHundredths(double part, double whole) {
    return std::floor(part / whole * 100) / 100;
}

}  // namespace

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
