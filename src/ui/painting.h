#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "core/handle.h"
#include "core/non_copyable.h"
#include "ui/colors.h"
#include "ui/geometry.h"

namespace tunovka {

// Saves a device context's state and restores it.
class SavedDc : NonCopyable {
  public:
    explicit SavedDc(HDC dc) : dc_(dc), state_(SaveDC(dc)) {}
    ~SavedDc() { RestoreDC(dc_, state_); }

  private:
    HDC dc_;
    int state_;
};

// The same with an object that is selected meanwhile.
struct Selected : SavedDc {
    Selected(HDC dc, HGDIOBJ object) : SavedDc(dc) { SelectObject(dc, object); }
};

// A device context in memory, out of a pool: creating one takes longer than most painting. It is to
// be left as it was (SavedDc).
struct PooledDc : handle_kinds::NullIsNone<HDC> {
    static void close(HDC dc);
};
using MemoryDc = Handle<PooledDc>;
MemoryDc memoryDc();

// Answers WM_PAINT; buffered, by a bitmap in memory that reaches the screen in one step.
class PaintDc : NonCopyable {
  public:
    PaintDc(HWND window, bool buffered);
    ~PaintDc();

    HDC dc() const { return saved_ ? memory_.get() : paint_.hdc; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
    MemoryDc memory_ = memoryDc();
    Bitmap bitmap_;
    std::optional<Selected> saved_;  // restores the pooled context, its bitmap included
};

void fillRect(HDC dc, const RECT& area, Color color);
void frameRect(HDC dc, const RECT& area, Color color);
// From one colour on top to another at the bottom.
void fillGradient(HDC dc, const RECT& area, Color top, Color bottom);

// Text within an area; `format` is DrawText's. The text is never read as a shortcut ("&").
void drawText(HDC dc, const std::wstring& text, RECT area, UINT format, HFONT font, Color color);
// Size of a text on one line, or wrapped at `width` pixels when that is positive.
Size measureText(const std::wstring& text, HFONT font, int width = 0);

// A pale card on the ground for texts to be read, plain because fields are not transparent.
void paintCard(HDC dc, const RECT& area);
// A sunken field on the ground, as lists and strips stand in.
void paintWell(HDC dc, const RECT& area);
// A framed strip of which a part is filled.
void paintStrip(HDC dc, Size size, const RECT& filled);
// The same with a knob, `thick` pixels long, where the filled part ends and the strip is grasped.
void paintSlider(HDC dc, Size size, const RECT& filled, int thick);

// Two frames within an area that show the focus, dark and light, each `line` pixels thick.
void drawFocus(HDC dc, RECT area, int line);

}  // namespace tunovka
