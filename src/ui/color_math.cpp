#include "ui/color_math.h"

#include <algorithm>
#include <cmath>

namespace tunovka {
namespace {

constexpr double kReadable = 6;
constexpr Color kBlack = 0, kWhite = 0xFFFFFF;

double channel(Color color, int shift) {
    const double share = (color >> shift & 0xFF) / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(Color color) {
    return 0.2126 * channel(color, 0) + 0.7152 * channel(color, 8) + 0.0722 * channel(color, 16);
}

}  // namespace

Color mixed(Color first, Color second, int amount) {
    Color result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int a = first >> shift & 0xFF, b = second >> shift & 0xFF;
        result |= static_cast<Color>(a + (b - a) * amount / 255) << shift;
    }
    return result;
}

double contrast(Color one, Color other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

Color readableOn(Color ground, Color wanted) {
    const Color away = contrast(ground, kWhite) > contrast(ground, kBlack) ? kWhite : kBlack;
    for (int amount = 0; amount < 255; amount += 5) {
        const Color tried = mixed(wanted, away, amount);
        if (contrast(ground, tried) >= kReadable) return tried;
    }
    return away;
}

}  // namespace tunovka
