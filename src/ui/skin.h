#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "core/handle.h"
#include "ui/geometry.h"

namespace tunovka {

struct ImageListKind : handle_kinds::NullIsNone<HIMAGELIST> {
    static void close(HIMAGELIST list);
};
using ImageList = Handle<ImageListKind>;

// The skin's pictures by key and the program's fonts. Pictures are kept at 192 dots per inch and
// scaled once for each dpi, the first time that they are asked for.
namespace Skin {

// Size of a picture in pixels at a dpi; nothing for an unknown key.
Size pictureSize(const std::wstring& key, int dpi);

enum class Look { Plain, Lit, Off };  // lit under the pointer, off for what cannot be pressed

// Draws a picture at its own size with its left top corner at a place.
void draw(HDC dc, const std::wstring& key, Point place, int dpi);

// Draws a picture stretched into an area; its borders keep their size.
void drawStretched(HDC dc, const std::wstring& key, const Rect& area, int dpi,
                   Look look = Look::Plain);

// Frees the pictures that are cached for drawing; the next drawing makes them again.
void forgetBitmaps();

enum class Font { Text, Bold, Title };  // a title is bold and twice as large

// The system's message font at a dpi; it lives as long as the program.
HFONT font(int dpi, Font font = Font::Text);
// The system's fonts have changed: font() gives the new ones from now on.
void forgetFonts();
int fontHeight(int dpi, Font font = Font::Text);
// Of a line of text and of a tree's row: it grows with the system's font.
int lineHeight(int dpi);

// A system image list for pictures of that size in pixels, with these square ones in their order.
ImageList createImageList(Size size, const std::vector<std::wstring>& keys = {});

}  // namespace Skin

}  // namespace tunovka
