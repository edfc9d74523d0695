#pragma once

#include <string>
#include <string_view>

#include "ui/geometry.h"

namespace tunovka {

// What the player's panel shows, and where a pointer or a key on its strips leads to.

// A time in seconds as "1:05 min" or "1 h 2:05 min"; what is no time above zero is "0:00 min".
std::wstring timeText(double seconds);

// "Autor: …  Titul: …   "; an empty value reads "neuvedený". The blanks separate the end from the
// start while the text scrolls.
std::wstring nowPlayingText(std::wstring_view author, std::wstring_view title);

// The same for a file that is still being opened: "Otvára sa: …   ".
std::wstring openingText(std::wstring_view path);

// The text one step further: its first character moved to the end. "" stays "".
std::wstring scrolledByOne(std::wstring_view text);

// How much of the clip is played, 0 to 1 in steps of one hundredth; 0 without a length (seconds).
double progressFraction(double position, double duration);

// The position in seconds that a pointer at x on a strip of that width asks for. A pointer left of
// the strip counts as x = 1, one right of it as its width.
double seekPosition(int x, int width, double duration);

// The volume (hundredths of a decibel, -4000 to 0) for a pointer at y on a strip of that height,
// whose bottom is quiet. A pointer below the strip counts as one unit above its bottom.
int stripVolume(int y, int height);

// The volume for a strip that is filled to so many per cent.
int percentVolume(int percent);

// Where a key on the progress strip leads to, in seconds.
double movedPosition(StripMove move, double position, double duration);

// How far a key on the volume strip fills it, in per cent; a notch of the wheel goes one step.
inline constexpr int kVolumeStep = 5;
int movedVolume(StripMove move, int percent);

}  // namespace tunovka
