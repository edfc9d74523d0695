#include <algorithm>

#include "core/handle.h"
#include "pictures/album.h"
#include "support/person.h"

namespace tunovka {
namespace {

// The rows of a picture within a control and so many pixels around it.
template <typename OnRow>
void eachRow(const Picture& picture, const std::wstring& control, int around, OnRow onRow) {
    for (const auto& [name, at] : picture.controls)
        for (int y = std::max<int>(at.top - around, 0);
             name == control && y < std::min<int>(at.bottom + around, picture.height); ++y) {
            const int left = std::max<int>(at.left - around, 0);
            const int right = std::min<int>(at.right + around, picture.width);
            onRow(y * picture.width + left, std::max(right - left, 0));
        }
}

}  // namespace

Picture Picture::of(const std::vector<HWND>& windows) {
    RECT whole{}, area{};
    for (const HWND window : windows) {
        GetWindowRect(window, &area);
        UnionRect(&whole, &whole, &area);
    }
    const int width = whole.right - whole.left, height = whole.bottom - whole.top;
    Picture picture{.width = width, .height = height};
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC memory = CreateCompatibleDC(nullptr);
    const Bitmap bitmap(CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const HGDIOBJ before = SelectObject(memory, bitmap.get());
    area = {0, 0, width, height};
    FillRect(memory, &area, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
    for (const HWND window : windows) {
        RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        GetWindowRect(window, &area);
        OffsetRect(&area, -whole.left, -whole.top);
        const HDC source = GetDCEx(window, nullptr, DCX_WINDOW | DCX_CACHE);
        BitBlt(memory, area.left, area.top, area.right - area.left, area.bottom - area.top, source,
               0, 0, SRCCOPY);
        ReleaseDC(window, source);
        for (const HWND control : WindowList::below(window)) {
            if (!windowOf(control) || !IsWindowVisible(control)) continue;
            GetWindowRect(control, &area);
            OffsetRect(&area, -whole.left, -whole.top);
            picture.controls.emplace_back(windowOf(control)->name(), area);
        }
    }
    GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    picture.pixels.assign(first, first + width * height);
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
    SelectObject(memory, before);
    DeleteDC(memory);
    return picture;
}

void Picture::copy(const Picture& other, const std::wstring& control) {
    eachRow(*this, control, 2, [&](int start, int count) {
        std::copy_n(other.pixels.begin() + start, count, pixels.begin() + start);
    });
}

void Picture::blank(const std::wstring& control) {
    eachRow(*this, control, 0,
            [&](int start, int count) { std::fill_n(pixels.begin() + start, count, 0xB0B0B0); });
}

}  // namespace tunovka
