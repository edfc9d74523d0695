#include "pictures/album.h"

#include <gtest/gtest.h>
#include <objidl.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>

#include "support/person.h"
#include "support/scratch_folder.h"

// GDI+ reads and writes the files; its headers count on two macros.
namespace Gdiplus {
using std::max, std::min;
}
#include <gdiplus.h>

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

namespace Album {
namespace {

constexpr DWORD kPatience = 2000;  // ms

constexpr wchar_t kKept[] = L"docs\\pictures\\", kLeft[] = L"build\\screenshots\\";
constexpr wchar_t kLetters[] = L"letters";

std::wstring path(const wchar_t* folder, const std::wstring& file) {
    const HDC screen = GetDC(nullptr);
    const std::wstring dpi = std::to_wstring(GetDeviceCaps(screen, LOGPIXELSX));
    ReleaseDC(nullptr, screen);
    return samplesFolder() + L"..\\" + folder + dpi + L"\\" + file;
}

// An empty picture when there is none.
Picture load(const std::wstring& file) {
    Gdiplus::Bitmap bitmap(file.c_str());
    if (bitmap.GetLastStatus() != Gdiplus::Ok) return {};
    const int width = static_cast<int>(bitmap.GetWidth());
    const int height = static_cast<int>(bitmap.GetHeight());
    Picture picture{.width = width, .height = height};
    picture.pixels.resize(width * height);
    Gdiplus::BitmapData data{bitmap.GetWidth(),   bitmap.GetHeight(),    width * 4,
                             PixelFormat32bppRGB, picture.pixels.data(), 0};
    const Gdiplus::Rect whole(0, 0, width, height);
    bitmap.LockBits(&whole, Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf,
                    PixelFormat32bppRGB, &data);
    bitmap.UnlockBits(&data);
    for (std::uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
    return picture;
}

void save(Picture picture, const std::wstring& name) {
    static const CLSID png = {
        0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    if (picture.pixels.empty()) return;
    Gdiplus::Bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
                    reinterpret_cast<BYTE*>(picture.pixels.data()))
        .Save(path(kLeft, name).c_str(), &png, nullptr);
}

// A line in the system's message font.
Picture lettersHere() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const Font font(CreateFontIndirectW(&metrics.lfMessageFont));
    const SystemWindow window(
        CreateWindowW(L"STATIC", L"Každá pesnička na svojom mieste. ľščťžýáíéúäôň 0123456789",
                      WS_POPUP | WS_VISIBLE, 0, 0, 400, 40, nullptr, nullptr, nullptr, nullptr));
    SendMessageW(window.get(), WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    return Picture::of({window.get()});
}

std::set<std::wstring> taken{kLetters};

// Marks what differs in red, in a dark picture; says how much it is and where, "" for nothing.
std::wstring difference(const Picture& was, const Picture& is, Picture& marked) {
    std::wostringstream text;
    if (was.width != is.width || was.height != is.height) {
        text << "is " << is.width << " x " << is.height << " instead of " << was.width << " x "
             << was.height;
        return text.str();
    }
    marked = is;
    int count = 0;
    RECT area{is.width, is.height, 0, 0};
    for (int i = 0; i < is.width * is.height; ++i) {
        const bool same = is.pixels[i] == was.pixels[i];
        marked.pixels[i] = same ? is.pixels[i] >> 2 & 0x3F3F3F : 0xFF0000;
        if (same) continue;
        ++count;
        const POINT point{i % is.width, i / is.width};
        area = {std::min(area.left, point.x), std::min(area.top, point.y),
                std::max(area.right, point.x), std::max(area.bottom, point.y)};
    }
    if (count == 0) return {};
    text << "differs in " << count << " pixels from " << area.left << "," << area.top << " to "
         << area.right << "," << area.bottom;
    return text.str();
}

}  // namespace

bool drawsItsLetters() {
    static const bool same = [] {
        static ULONG_PTR files = 0;
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&files, &input, nullptr);
        const Picture was = load(path(kKept, std::wstring(kLetters) + L".png"));
        const Picture is = lettersHere();
        if (is.pixels == was.pixels) return true;
        save(is, std::wstring(kLetters) + L"-is.png");
        return was.pixels.empty() || std::getenv("TUNOVKA_ACCEPTS");
    }();
    return same;
}

void hold(const std::wstring& name, const std::function<Picture()>& take) {
    taken.insert(name);
    const Picture was = load(path(kKept, name + L".png"));
    Picture is, marked;
    std::wstring told;
    const bool same = runUntil(
        [&] {
            is = take();
            told = difference(was, is, marked);
            return told.empty();
        },
        was.width > 0 ? kPatience : kPatience / 4);
    if (same) return;
    save(was, name + L"-was.png");
    save(is, name + L"-is.png");
    save(marked, name + L"-differs.png");
    ADD_FAILURE() << name << " " << told;
}

void close() {
    if (GTEST_FLAG_GET(filter) != "*" || !drawsItsLetters()) return;
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW(path(kKept, L"*.png").c_str(), &entry));
    if (!search) return;
    do {
        const std::wstring name = entry.cFileName;
        if (!taken.contains(name.substr(0, name.rfind(L'.'))))
            ADD_FAILURE() << name << " is kept but nobody takes it";
    } while (FindNextFileW(search.get(), &entry));
}

}  // namespace Album
}  // namespace tunovka
