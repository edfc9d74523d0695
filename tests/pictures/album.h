#pragma once

#include <functional>
#include <string>

#include "pictures/picture.h"

namespace tunovka {

// Holds what windows show against the pictures kept in docs/pictures/DPI. A difference fails the
// test and leaves in build/screenshots what was expected (NAME-DPI-was.png), what is shown
// (-is.png) and where they differ (-differs.png).
//
// The pictures were made with one version of Wine and of the fonts, which stands on top of
// docs/pictures/DPI/places.txt. Where letters look different, only the places of the controls and
// the colours at their corners are compared, as far as they do not depend on letters.
namespace Album {

// Takes the picture again and again until it is as expected: windows may still be on their way.
void hold(const std::string& name, const std::function<Picture()>& take);

// After all tests: no picture is kept that nobody takes, and the controls lie where they did.
void close();

}  // namespace Album
}  // namespace tunovka
