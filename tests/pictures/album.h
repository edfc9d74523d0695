#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tunovka {

// What windows show, and where their controls lie in it.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;                    // 0x00RRGGBB, row by row from the top
    std::vector<std::pair<std::wstring, RECT>> controls;  // by their names in the code

    // Windows as they lie on the screen, the front one last, with all that lies on them. What waits
    // to be painted is painted, and nothing else.
    static Picture of(const std::vector<HWND>& windows);

    // Takes from another picture of the same windows what a control shows there, and a little
    // around it.
    void copy(const Picture& other, const std::wstring& control);
    // Leaves out what a control shows.
    void blank(const std::wstring& control);
};

// Holds pictures against those kept in docs/pictures/DPI. A difference fails the test and leaves in
// build/screenshots/DPI what was expected (NAME-was.png), what is shown (-is.png) and where they
// differ (-differs.png).
namespace Album {

// Whether this system draws letters as they are in the kept picture "letters": else none of the
// pictures can be held, and there is no sense in trying.
bool drawsItsLetters();

// Takes the picture again and again until it is as expected: windows may still be on their way.
void hold(const std::wstring& name, const std::function<Picture()>& take);

// After all tests: refuses pictures that nobody takes.
void close();

}  // namespace Album
}  // namespace tunovka
