#include "app/splitter.h"

#include <oleacc.h>

#include <algorithm>

#include "ui/form.h"
#include "ui/painting.h"

namespace tunovka {

constexpr int kLine = 8, kPage = 80;  // steps of the keys, in 96ths of an inch

Splitter::Splitter(Form& form)
    : Medzera({.name = L"Medzera",
               .text = L"Hranica stromov",
               .parent = &form,
               .role = ROLE_SYSTEM_SEPARATOR,
               .tabStop = true}),
      Obdlznik({.name = L"Obdlznik", .parent = &form, .visible = false}) {
    Medzera.onPaint = [this](HDC dc, Size size) {
        const int dot = Medzera.scaled(2);
        for (int i = -2; i <= 2; ++i) {
            const int x = (size.width - dot) / 2, y = size.height / 2 + i * 3 * dot;
            fillRect(dc, {x, y, x + dot, y + dot}, colors().edge);
        }
    };
    Medzera.onMove = [this](StripMove move) {
        const StripSteps steps{.line = static_cast<double>(Medzera.scaled(kLine)),
                               .page = static_cast<double>(Medzera.scaled(kPage)),
                               .least = static_cast<double>(least_),
                               .most = static_cast<double>(most_)};
        onMoved(static_cast<int>(moved(move, Medzera.bounds().x, steps)));
    };
    Medzera.onMouseDown = [this](MouseButton button, Point at) { Medzera_MouseDown(button, at); };
    Medzera.onMouseMove = [this](MouseButton held, Point at) { Medzera_MouseMove(held, at); };
    Medzera.onMouseUp = [this](MouseButton button, Point) { Medzera_MouseUp(button); };
    Medzera.onCaptureLost = [this] { endDrag(); };
    Medzera.cursor = IDC_SIZEWE;
    Obdlznik.onPaint = [](HDC dc, Size size) {
        fillRect(dc, {0, 0, size.width, size.height}, colors().rim);
    };
}

void Splitter::Medzera_MouseDown(MouseButton button, Point at) {
    if (button != MouseButton::Left) return;
    pressedAt_ = at.x;
    Obdlznik.setBounds(Medzera.bounds());
    SetWindowPos(Obdlznik.handle(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void Splitter::Medzera_MouseMove(MouseButton held, Point at) {
    if (held != MouseButton::Left || pressedAt_ < 0) return;
    Rect frame = Medzera.bounds();
    frame.x = std::clamp(frame.x + at.x - pressedAt_, least_, most_);
    Obdlznik.setBounds(frame);
}

void Splitter::Medzera_MouseUp(MouseButton button) {
    if (button != MouseButton::Left || pressedAt_ < 0) return;
    endDrag();
    onMoved(Obdlznik.bounds().x);
}

void Splitter::endDrag() {
    pressedAt_ = -1;
    Obdlznik.setVisible(false);
}

void Splitter::setBounds(const Rect& bounds, int least, int most) {
    Medzera.setBounds(bounds);
    least_ = least;
    most_ = most;
}

}  // namespace tunovka
