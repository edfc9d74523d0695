#pragma once

#include <algorithm>
#include <cmath>

#include "core/multimedialny.h"

namespace tunovka {

using MultiMedialny::Color;

// Between two colours: 0 gives the first, 255 the second.
inline Color mixed(Color first, Color second, int amount) {
    Color result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int a = first >> shift & 0xFF, b = second >> shift & 0xFF;
        result |= static_cast<Color>(a + (b - a) * amount / 255) << shift;
    }
    return result;
}

inline double luminance(Color color) {
    const auto channel = [&](int shift) {
        const double share = (color >> shift & 0xFF) / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(0) + 0.7152 * channel(8) + 0.0722 * channel(16);
}

// How well two colours stand out from each other, as accessibility guidelines count it: 1 (the
// same) to 21 (black on white).
inline double contrast(Color one, Color other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// The colour, made as much lighter or darker as a text on that ground needs to be read (a contrast
// of 6).
inline Color readableOn(Color ground, Color wanted) {
    constexpr Color kBlack = 0, kWhite = 0xFFFFFF;
    const Color away = contrast(ground, kWhite) > contrast(ground, kBlack) ? kWhite : kBlack;
    for (int amount = 0; amount < 255; amount += 5) {
        const Color tried = mixed(wanted, away, amount);
        if (contrast(ground, tried) >= 6) return tried;
    }
    return away;
}

}  // namespace tunovka
