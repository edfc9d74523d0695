#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace tunovka {

// What windows show, and where their controls lie in it.
struct Picture {
    struct Place {
        std::wstring control;  // the control's name in the code
        RECT at;
    };

    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;  // 0x00RRGGBB, row by row from the top
    std::vector<Place> places;

    std::uint32_t at(int x, int y) const { return pixels[y * width + x]; }

    // Windows as they lie on the screen, the front one last, with all that lies on them. What waits
    // to be painted is painted; nothing else is.
    static Picture of(const std::vector<HWND>& windows);

    // The part that a control covers, with so many pixels around it.
    Picture part(const std::wstring& control, int around = 0) const;
    // Leaves out what a control shows.
    Picture& blank(const std::wstring& control);
    // Puts another picture below this one.
    void append(const Picture& other);

    // A file that is not there is an empty picture.
    static Picture load(const std::wstring& file);
    void save(const std::wstring& file) const;  // PNG
};

}  // namespace tunovka
