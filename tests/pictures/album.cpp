#include "pictures/album.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <map>

#include "core/handle.h"
#include "support/person.h"
#include "support/scratch_folder.h"

namespace tunovka::Album {
namespace {

constexpr DWORD kPatience = 2000;  // ms

struct Places {
    std::string letters;                                 // what letters looked like
    std::map<std::string, std::vector<RECT>> ofPicture;  // of each control, in the order of Tab

    static Places kept();
    static Places& seen();
};

std::wstring dpiText() {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return std::to_wstring(dpi);
}

std::wstring wide(const std::string& name) {
    return {name.begin(), name.end()};
}
std::wstring kept(const std::string& file) {
    return samplesFolder() + L"..\\docs\\pictures\\" + dpiText() + L"\\" + wide(file);
}
std::wstring left(const std::string& name, const wchar_t* rest) {
    const std::wstring folder = samplesFolder() + L"..\\build\\screenshots\\";
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder + wide(name) + L"-" + dpiText() + rest;
}

// Wine, the font behind the system's message font, and the sum of a line drawn with it.
std::string lettersHere() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    constexpr wchar_t kLine[] = L"Každá pesnička na svojom mieste. ľščťžýáíéúäôň 0123456789";
    const HWND window = CreateWindowW(L"STATIC", kLine, WS_POPUP | WS_VISIBLE, 0, 0, 400, 40,
                                      nullptr, nullptr, nullptr, nullptr);
    const HFONT font = CreateFontIndirectW(&metrics.lfMessageFont);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    const Picture line = Picture::of({window});
    std::uint32_t drawn = 0;
    for (const std::uint32_t pixel : line.pixels) drawn = drawn * 31 + pixel;

    const HDC dc = GetDC(window);
    SelectObject(dc, font);
    wchar_t face[LF_FACESIZE] = L"";
    GetTextFaceW(dc, LF_FACESIZE, face);
    constexpr DWORD kHead = 0x64616568;  // the table with the font's revision, 4 bytes
    std::uint8_t revision[4]{};
    GetFontData(dc, kHead, 4, revision, sizeof revision);
    ReleaseDC(window, dc);
    DestroyWindow(window);
    DeleteObject(font);
    using Version = const char*(CDECL*)();
    const auto wine = reinterpret_cast<Version>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")));
    return (testing::Message() << "Wine " << (wine ? wine() : "none") << ", " << face << " "
                               << revision[0] * 256 + revision[1] << "."
                               << ((revision[2] * 256 + revision[3]) * 1000 + 32768) / 65536
                               << ", a line of it drawn " << drawn)
        .GetString();
}

Places Places::kept() {
    Places read;
    std::ifstream file(Album::kept("places.txt").c_str());
    std::getline(file, read.letters);
    std::string picture;
    for (RECT at; file >> picture >> at.left >> at.top >> at.right >> at.bottom;)
        read.ofPicture[picture].push_back(at);
    return read;
}

Places& Places::seen() {
    static Places seen{lettersHere(), {}};
    return seen;
}

bool sameLetters() {
    static const bool same = [] {
        const std::string before = Places::kept().letters, &here = Places::seen().letters;
        if (before.empty() || before == here) return true;
        std::cout << "Letters look different here: only places and colours are compared.\n"
                  << "  The pictures: " << before << "\n  Here: " << here << "\n";
        return false;
    }();
    return same;
}

// Marks what differs in red, in a dark picture; says how much it is and where, "" for nothing.
std::string difference(const Picture& was, const Picture& is, Picture& marked) {
    marked = is;
    testing::Message text;
    if (was.width != is.width || was.height != is.height)
        return (text << "is " << is.width << " x " << is.height << " instead of " << was.width
                     << " x " << was.height)
            .GetString();
    int count = 0;
    RECT area{is.width, is.height, 0, 0};
    std::map<std::wstring, int> controls;
    for (int y = 0; y < is.height; ++y) {
        for (int x = 0; x < is.width; ++x) {
            std::uint32_t& pixel = marked.pixels[y * is.width + x];
            const bool same = pixel == was.at(x, y);
            pixel = same ? pixel >> 2 & 0x3F3F3F : 0xFF0000;
            if (same) continue;
            ++count;
            area = {std::min<LONG>(area.left, x), std::min<LONG>(area.top, y),
                    std::max<LONG>(area.right, x), std::max<LONG>(area.bottom, y)};
            for (const auto& [control, at] : is.places)
                if (PtInRect(&at, {x, y})) ++controls[control];
        }
    }
    if (count == 0) return {};
    text << "differs in " << count << " pixels from " << area.left << "," << area.top << " to "
         << area.right << "," << area.bottom;
    for (const auto& [control, pixels] : controls) text << "; " << pixels << " in " << control;
    return text.GetString();
}

// The same where letters look different.
std::string roughDifference(const Picture& was, const Picture& is,
                            const std::vector<RECT>& places) {
    if (places.size() != is.places.size()) return "has other controls";
    const auto isNear = [](int one, int other, int tolerance) {
        return std::abs(one - other) <= tolerance;
    };
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto& [control, now] = is.places[i];
        const RECT& before = places[i];
        const int across = was.width / 10 + 8, down = was.height / 10 + 8;
        bool same = isNear(before.left, now.left, across) && isNear(before.top, now.top, down) &&
                    isNear(before.right, now.right, across) &&
                    isNear(before.bottom, now.bottom, down);
        for (const int corner : {0, 1, 2, 3}) {
            const auto color = [corner](const Picture& picture, const RECT& at) {
                const int x = corner % 2 ? at.left + 1 : at.right - 2;
                const int y = corner / 2 ? at.top + 1 : at.bottom - 2;
                return picture.at(std::clamp(x, 0, picture.width - 1),
                                  std::clamp(y, 0, picture.height - 1));
            };
            for (const int shift : {0, 8, 16})
                same = same &&
                       isNear(color(was, before) >> shift & 255, color(is, now) >> shift & 255, 16);
        }
        if (!same) return (testing::Message() << "has another " << control).GetString();
    }
    return {};
}

}  // namespace

void hold(const std::string& name, const std::function<Picture()>& take) {
    const Picture was = Picture::load(kept(name + ".png"));
    Picture is, marked;
    std::string told;
    const bool same = runUntil(
        [&] {
            is = take();
            told = sameLetters() ? difference(was, is, marked)
                                 : roughDifference(was, is, Places::kept().ofPicture[name]);
            return told.empty();
        },
        was.width > 0 ? kPatience : kPatience / 4);
    std::vector<RECT>& places = Places::seen().ofPicture[name];
    for (const Picture::Place& place : is.places) places.push_back(place.at);
    if (same) return;
    was.save(left(name, L"-was.png"));
    is.save(left(name, L"-is.png"));
    marked.save(left(name, L"-differs.png"));
    ADD_FAILURE() << name << " " << told;
}

void close() {
    testing::Message text;
    text << Places::seen().letters << "\n";
    for (const auto& [picture, places] : Places::seen().ofPicture)
        for (const RECT& at : places)
            text << picture << " " << at.left << " " << at.top << " " << at.right << " "
                 << at.bottom << "\n";
    if (GTEST_FLAG_GET(filter) != "*") return;
    std::ofstream(left("places", L".txt").c_str()) << text.GetString();
    WIN32_FIND_DATAW entry;
    const FindHandle search(FindFirstFileW(kept("*.png").c_str(), &entry));
    if (!search) return;
    do {
        const std::wstring file = entry.cFileName;
        if (!Places::seen().ofPicture.contains({file.begin(), file.end() - 4}))
            ADD_FAILURE() << file << " is kept but nobody takes it";
    } while (FindNextFileW(search.get(), &entry));
}

}  // namespace tunovka::Album
