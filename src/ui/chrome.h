#pragma once

#include <windows.h>

#include "ui/image.h"
#include "ui/picture_box.h"

namespace tunovka {

// What all skinned windows share; sizes in 96ths of an inch.
inline constexpr int kTitleHeight = 26;

// The close picture that lies on a window's title strip.
Image::ImageArgs closePicture(const wchar_t* name, TitleStrip& strip);

// Places the title strip along the window's upper edge with the close picture, which lies on it, at
// its right end and the minimise picture, when there is one, left of that. Returns the strip's
// lower edge in pixels.
int layoutTitle(Form& form, TitleStrip& strip, Image* close, Image* minimize);

// The ground that every window shares below its title: a soft light from above and the rim.
void paintRim(HDC dc, const RECT& area);

// A pale card on the ground, for texts that are read; its colour is plain, so that controls that
// cannot show through what lies behind them can stand on it.
void paintCard(HDC dc, const RECT& area);

// A sunken field on the ground, as lists and strips stand in.
void paintWell(HDC dc, const RECT& area);

// A framed strip of which a part is filled.
void paintStrip(HDC dc, Size size, const RECT& filled);

}  // namespace tunovka
