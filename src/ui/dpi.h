#pragma once

#include <windows.h>

namespace tunovka {

// Dots per inch of the screen that a window lies on; of the system where Windows is too old to
// tell them apart.
int dpiOf(HWND window);

// The one scaling function: a size written for 96 dots per inch, in pixels of a screen.
inline int scaledTo(int dpi, int units) {
    return MulDiv(units, dpi, 96);
}

}  // namespace tunovka
