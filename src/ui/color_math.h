#pragma once

#include "core/multimedialny.h"

namespace tunovka {

using MultiMedialny::Color;

// Between two colours: 0 gives the first, 255 the second.
Color mixed(Color first, Color second, int amount);

// How well two colours stand out from each other, as accessibility guidelines count it: 1 (the
// same) to 21 (black on white).
double contrast(Color one, Color other);

// The colour, made as much lighter or darker as a text on that ground needs to be read (a contrast
// of 6).
Color readableOn(Color ground, Color wanted);

}  // namespace tunovka
