#include "ui/painting.h"

#include <algorithm>
#include <vector>

namespace tunovka {
namespace {

std::vector<HDC> spareDcs;

}  // namespace

MemoryDc memoryDc() {
    if (spareDcs.empty()) return MemoryDc(CreateCompatibleDC(nullptr));
    const HDC dc = spareDcs.back();
    spareDcs.pop_back();
    return MemoryDc(dc);
}

void PooledDc::close(HDC dc) {
    spareDcs.push_back(dc);
}

PaintDc::PaintDc(HWND window, bool buffered) : window_(window) {
    const HDC screen = BeginPaint(window, &paint_);
    if (!buffered) return;
    RECT area{};
    GetClientRect(window, &area);
    bitmap_.reset(CreateCompatibleBitmap(screen, area.right, area.bottom));
    if (!memory_ || !bitmap_) return;
    saved_.emplace(memory_.get(), bitmap_.get());
}

PaintDc::~PaintDc() {
    if (saved_) {
        const RECT& dirty = paint_.rcPaint;
        BitBlt(paint_.hdc, dirty.left, dirty.top, dirty.right - dirty.left,
               dirty.bottom - dirty.top, memory_.get(), dirty.left, dirty.top, SRCCOPY);
    }
    EndPaint(window_, &paint_);
}

void fillRect(HDC dc, const RECT& area, Color color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void frameRect(HDC dc, const RECT& area, Color color) {
    SetDCBrushColor(dc, color);
    FrameRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void fillGradient(HDC dc, const RECT& area, Color top, Color bottom) {
    const auto corner = [](LONG x, LONG y, Color color) {
        const auto channel = [&](int shift) {
            return static_cast<COLOR16>((color >> shift & 0xFF) << 8);
        };
        return TRIVERTEX{x, y, channel(0), channel(8), channel(16), 0};
    };
    TRIVERTEX corners[] = {corner(area.left, area.top, top),
                           corner(area.right, area.bottom, bottom)};
    GRADIENT_RECT whole{0, 1};
    GdiGradientFill(dc, corners, 2, &whole, 1, GRADIENT_FILL_RECT_V);
}

void drawText(HDC dc, const std::wstring& text, RECT area, UINT format, HFONT font, Color color) {
    const Selected selected(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, format | DT_NOPREFIX);
}

Size measureText(const std::wstring& text, HFONT font, int width) {
    const MemoryDc dc = memoryDc();
    const Selected selected(dc.get(), font);
    RECT area{0, 0, width, 0};
    DrawTextW(
        dc.get(), text.c_str(), static_cast<int>(text.size()), &area,
        DT_CALCRECT | DT_NOPREFIX | (width > 0 ? DT_WORDBREAK | DT_EDITCONTROL : DT_SINGLELINE));
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void paintCard(HDC dc, const RECT& area) {
    fillRect(dc, area, colors().card);
    paintWell(dc, area);
}

void paintWell(HDC dc, const RECT& area) {
    RECT frame = area;
    InflateRect(&frame, 1, 1);
    frameRect(dc, frame, colors().edge);
}

void paintStrip(HDC dc, Size size, const RECT& filled) {
    const RECT area{0, 0, size.width, size.height};
    fillRect(dc, area, colors().field);
    fillRect(dc, filled, colors().bar);
    frameRect(dc, area, colors().edge);
}

void paintSlider(HDC dc, Size size, const RECT& filled, int thick) {
    paintStrip(dc, size, filled);
    const auto placed = [thick](LONG at, int length) {
        return std::clamp<LONG>(at - thick / 2, 0, std::max(0, length - thick));
    };
    RECT knob{0, 0, size.width, size.height};
    if (size.width > size.height) {
        knob.left = placed(filled.right, size.width);
        knob.right = knob.left + thick;
    } else {
        knob.top = placed(filled.top, size.height);
        knob.bottom = knob.top + thick;
    }
    fillRect(dc, knob, colors().button);
    frameRect(dc, knob, colors().buttonText);
}

void drawFocus(HDC dc, RECT area, int line) {
    for (const Color color : {colors().textHalo, colors().text}) {
        for (int i = 0; i < line; ++i) {
            frameRect(dc, area, color);
            InflateRect(&area, -1, -1);
        }
    }
}

}  // namespace tunovka
