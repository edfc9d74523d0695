#pragma once

namespace tunovka {

// How much of the clip is played, 0 to 1 in steps of one hundredth; 0 while the length is not
// known. Both in seconds.
double progressFraction(double position, double duration);

// The position in seconds that a pointer at x on a strip of that width asks for. A pointer left of
// the strip counts as x = 1, one right of it as its width.
double seekPosition(int x, int width, double duration);

// The volume (hundredths of a decibel, -4000 to 0) for a pointer at y on a strip of that height,
// whose bottom is quiet. A pointer below the strip counts as one unit above its bottom.
int stripVolume(int y, int height);

}  // namespace tunovka
