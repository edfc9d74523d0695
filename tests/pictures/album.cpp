#include "pictures/album.h"

#include <gtest/gtest.h>
#include <objidl.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "core/handle.h"
#include "support/person.h"
#include "support/scratch_folder.h"

// GDI+ reads and writes the files; its headers count on two macros.
namespace Gdiplus {
using std::max, std::min;
}
#include <gdiplus.h>

namespace tunovka::Album {
namespace {

constexpr DWORD kPatience = 2000;  // ms

constexpr wchar_t kKept[] = L"docs\\pictures\\", kLeft[] = L"build\\screenshots\\";

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

// Wine, the font behind the system's message font, and the sum of a line drawn with it.
std::wstring lettersHere() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
    const HWND window =
        CreateWindowW(L"STATIC", L"Každá pesnička na svojom mieste. ľščťžýáíéúäôň 0123456789",
                      WS_POPUP | WS_VISIBLE, 0, 0, 400, 40, nullptr, nullptr, nullptr, nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    std::uint32_t sum = 0;
    for (const std::uint32_t pixel : Picture::of({window}).pixels) sum = sum * 31 + pixel;

    const HDC dc = GetDC(window);
    SelectObject(dc, font);
    wchar_t face[LF_FACESIZE] = L"";
    GetTextFaceW(dc, LF_FACESIZE, face);
    std::uint8_t revision[4]{};  // in the font's table "head"
    GetFontData(dc, 0x64616568, 4, revision, sizeof revision);
    ReleaseDC(window, dc);
    DestroyWindow(window);
    DeleteObject(font);
    const auto wine = reinterpret_cast<const char*(CDECL*)()>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")));
    std::wostringstream text;
    text << "Wine " << (wine ? wine() : "none") << ", " << face << " "
         << revision[0] * 256 + revision[1] << "."
         << ((revision[2] * 256 + revision[3]) * 1000 + 32768) / 65536 << ", a line of it drawn "
         << sum;
    return text.str();
}

// What letters look like, and where the controls of each picture lie.
struct Places {
    std::wstring letters;
    std::map<std::wstring, std::vector<RECT>> ofPicture;

    static const Places& kept() {
        static const Places places = [] {
            Places read;
            std::wifstream file(path(kKept, L"places.txt").c_str());
            std::getline(file, read.letters);
            std::wstring name;
            for (RECT at; file >> name >> at.left >> at.top >> at.right >> at.bottom;)
                read.ofPicture[name].push_back(at);
            return read;
        }();
        return places;
    }
    static Places& here() {
        static Places places{lettersHere(), {}};
        return places;
    }
};

bool sameLetters() {
    static const bool same = [] {
        const std::wstring &kept = Places::kept().letters, &here = Places::here().letters;
        if (kept.empty() || kept == here) return true;
        std::wcout << "Letters look different here: only places and colours are compared.\n"
                   << "  The pictures: " << kept << "\n  Here: " << here << std::endl;
        return false;
    }();
    return same;
}

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
    std::map<std::wstring, int> controls;
    for (int i = 0; i < is.width * is.height; ++i) {
        const bool same = is.pixels[i] == was.pixels[i];
        marked.pixels[i] = same ? is.pixels[i] >> 2 & 0x3F3F3F : 0xFF0000;
        if (same) continue;
        ++count;
        const POINT point{i % is.width, i / is.width};
        area = {std::min(area.left, point.x), std::min(area.top, point.y),
                std::max(area.right, point.x), std::max(area.bottom, point.y)};
        for (const auto& [control, at] : is.controls)
            if (PtInRect(&at, point)) ++controls[control];
    }
    if (count == 0) return {};
    text << "differs in " << count << " pixels from " << area.left << "," << area.top << " to "
         << area.right << "," << area.bottom;
    for (const auto& [control, pixels] : controls) text << "; " << pixels << " in " << control;
    return text.str();
}

// The same where letters look different.
std::wstring roughDifference(const Picture& was, const Picture& is,
                             const std::vector<RECT>& places) {
    if (places.size() != is.controls.size()) return L"has other controls";
    const auto isNear = [](int one, int other, int tolerance) {
        return std::abs(one - other) <= tolerance;
    };
    const auto color = [](const Picture& picture, LONG x, LONG y, int shift) {
        x = std::clamp<LONG>(x, 0, picture.width - 1);
        y = std::clamp<LONG>(y, 0, picture.height - 1);
        return static_cast<int>(picture.pixels[y * picture.width + x] >> shift & 255);
    };
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RECT &one = places[i], &other = is.controls[i].second;
        const LONG xs[][2] = {{one.left + 1, other.left + 1}, {one.right - 2, other.right - 2}};
        const LONG ys[][2] = {{one.top + 1, other.top + 1}, {one.bottom - 2, other.bottom - 2}};
        bool same = true;
        for (const auto& x : xs)
            for (const auto& y : ys)
                for (const int shift : {0, 8, 16})
                    same = same && isNear(x[0], x[1], was.width / 10 + 8) &&
                           isNear(y[0], y[1], was.height / 10 + 8) &&
                           isNear(color(was, x[0], y[0], shift), color(is, x[1], y[1], shift), 16);
        if (!same) return L"has another " + is.controls[i].first;
    }
    return {};
}

}  // namespace

void hold(const std::wstring& name, const std::function<Picture()>& take) {
    static ULONG_PTR files = 0;
    const Gdiplus::GdiplusStartupInput input;
    if (!files) Gdiplus::GdiplusStartup(&files, &input, nullptr);
    const Picture was = load(path(kKept, name + L".png"));
    const auto places = Places::kept().ofPicture.find(name);
    const bool rough = !sameLetters() && places != Places::kept().ofPicture.end();
    Picture is, marked;
    std::wstring told;
    const bool same = runUntil(
        [&] {
            is = take();
            told = rough ? roughDifference(was, is, places->second) : difference(was, is, marked);
            return told.empty();
        },
        was.width > 0 ? kPatience : kPatience / 4);
    std::vector<RECT>& here = Places::here().ofPicture[name];
    for (const auto& [control, at] : is.controls) here.push_back(at);
    if (same) return;
    save(was, name + L"-was.png");
    save(is, name + L"-is.png");
    save(marked, name + L"-differs.png");
    ADD_FAILURE() << name << " " << told;
}

void close() {
    if (GTEST_FLAG_GET(filter) != "*") return;
    std::wofstream file(path(kLeft, L"places.txt").c_str());
    file << Places::here().letters << "\n";
    for (const auto& [name, places] : Places::here().ofPicture)
        for (const RECT& at : places)
            file << name << " " << at.left << " " << at.top << " " << at.right << " " << at.bottom
                 << "\n";
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW(path(kKept, L"*.png").c_str(), &entry));
    if (!search) return;
    do {
        const std::wstring name = entry.cFileName;
        if (!Places::here().ofPicture.contains(name.substr(0, name.rfind(L'.'))))
            ADD_FAILURE() << name << " is kept but nobody takes it";
    } while (FindNextFileW(search.get(), &entry));
}

}  // namespace tunovka::Album
