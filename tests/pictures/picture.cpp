#include "pictures/picture.h"

#include <objidl.h>
// objidl.h first: it needs its types.
#include <algorithm>

namespace Gdiplus {
using std::max, std::min;
}
#include <gdiplus.h>

#include <stdexcept>

#include "core/handle.h"
#include "support/person.h"

namespace tunovka {
namespace {

constexpr std::uint32_t kColor = 0xFFFFFF;
constexpr std::uint32_t kGround = 0xFFFFFF, kLeftOut = 0xB0B0B0;

// The library for files, for as long as the program runs.
void needGdiPlus() {
    static const bool started = [] {
        ULONG_PTR token = 0;
        const Gdiplus::GdiplusStartupInput input;
        return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
    }();
    if (!started) throw std::runtime_error("GDI+ does not start");
}

RECT rectOf(HWND window, POINT origin) {
    RECT area{};
    GetWindowRect(window, &area);
    OffsetRect(&area, -origin.x, -origin.y);
    return area;
}

void paint(HDC target, HWND window, POINT origin) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const RECT area = rectOf(window, origin);
    const HDC source = GetDCEx(window, nullptr, DCX_WINDOW | DCX_CACHE);
    BitBlt(target, area.left, area.top, area.right - area.left, area.bottom - area.top, source, 0,
           0, SRCCOPY);
    ReleaseDC(window, source);
}

}  // namespace

Picture Picture::of(const std::vector<HWND>& windows) {
    RECT whole{};
    for (const HWND window : windows) {
        const RECT area = rectOf(window, {});
        UnionRect(&whole, &whole, &area);
    }
    Picture picture{.width = static_cast<int>(whole.right - whole.left),
                    .height = static_cast<int>(whole.bottom - whole.top)};
    BITMAPINFO info{};
    info.bmiHeader = {
        sizeof info.bmiHeader, picture.width, -picture.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC memory = CreateCompatibleDC(nullptr);
    const Bitmap bitmap(CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const HGDIOBJ before = SelectObject(memory, bitmap.get());
    const RECT ground{0, 0, picture.width, picture.height};
    FillRect(memory, &ground, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
    for (const HWND window : windows) {
        paint(memory, window, {whole.left, whole.top});
        for (const HWND control : WindowList::below(window))
            if (IsWindowVisible(control) && windowOf(control))
                picture.places.push_back(
                    {windowOf(control)->name(), rectOf(control, {whole.left, whole.top})});
    }
    GdiFlush();
    const auto* const first = static_cast<const std::uint32_t*>(bits);
    picture.pixels.assign(first, first + picture.width * picture.height);
    for (std::uint32_t& pixel : picture.pixels) pixel &= kColor;
    SelectObject(memory, before);
    DeleteDC(memory);
    return picture;
}

Picture Picture::part(const std::wstring& control, int around) const {
    for (const Place& place : places) {
        if (place.control != control) continue;
        RECT area = place.at, whole{0, 0, width, height};
        InflateRect(&area, around, around);
        IntersectRect(&area, &area, &whole);
        Picture part{.width = static_cast<int>(area.right - area.left),
                     .height = static_cast<int>(area.bottom - area.top)};
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x) part.pixels.push_back(at(x, y));
        part.places = {place};
        OffsetRect(&part.places[0].at, -area.left, -area.top);
        return part;
    }
    throw std::runtime_error("a control is not in the picture");
}

Picture& Picture::blank(const std::wstring& control) {
    for (const Place& place : places)
        if (place.control == control)
            for (int y = std::max(place.at.top, 0L); y < std::min<int>(place.at.bottom, height);
                 ++y)
                std::fill_n(&pixels[y * width + place.at.left], place.at.right - place.at.left,
                            kLeftOut);
    return *this;
}

void Picture::append(const Picture& other) {
    Picture sum{.width = std::max(width, other.width), .height = height + other.height};
    sum.pixels.assign(sum.width * sum.height, kGround);
    for (int y = 0; y < sum.height; ++y) {
        const Picture& from = y < height ? *this : other;
        const int row = y < height ? y : y - height;
        std::copy_n(from.pixels.begin() + row * from.width, from.width,
                    sum.pixels.begin() + y * sum.width);
    }
    sum.places = places;
    for (Place place : other.places) {
        OffsetRect(&place.at, 0, height);
        sum.places.push_back(place);
    }
    *this = sum;
}

Picture Picture::load(const std::wstring& file) {
    needGdiPlus();
    Gdiplus::Bitmap bitmap(file.c_str());
    if (bitmap.GetLastStatus() != Gdiplus::Ok) return {};
    Picture picture{.width = static_cast<int>(bitmap.GetWidth()),
                    .height = static_cast<int>(bitmap.GetHeight())};
    picture.pixels.resize(picture.width * picture.height);
    Gdiplus::BitmapData data{bitmap.GetWidth(),   bitmap.GetHeight(),    picture.width * 4,
                             PixelFormat32bppRGB, picture.pixels.data(), 0};
    const Gdiplus::Rect whole(0, 0, picture.width, picture.height);
    bitmap.LockBits(&whole, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                    PixelFormat32bppRGB, &data);
    bitmap.UnlockBits(&data);
    for (std::uint32_t& pixel : picture.pixels) pixel &= kColor;
    return picture;
}

void Picture::save(const std::wstring& file) const {
    if (pixels.empty()) return;
    needGdiPlus();
    static const CLSID png = {
        0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    std::vector<std::uint32_t> rows = pixels;
    Gdiplus::Bitmap bitmap(width, height, width * 4, PixelFormat32bppRGB,
                           reinterpret_cast<BYTE*>(rows.data()));
    if (bitmap.Save(file.c_str(), &png, nullptr) != Gdiplus::Ok)
        throw std::runtime_error("a picture cannot be written");
}

}  // namespace tunovka
