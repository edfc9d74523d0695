#include "app/splitter.h"

#include "ui/form.h"
#include "ui/painting.h"

namespace tunovka {

Splitter::Splitter(Form& form)
    : Medzera({.name = L"Medzera", .text = L"Hranica stromov", .parent = &form}),
      Obdlznik({.name = L"Obdlznik", .text = L"", .parent = &form, .visible = false}) {
    Medzera.onPaint = [this](HDC dc, Size size) {
        const MultiMedialny::SkinPalette& colors = MultiMedialny::palette();
        const int dot = Medzera.scaled(2);
        for (int i = -2; i <= 2; ++i) {
            const int x = (size.width - dot) / 2, y = size.height / 2 + i * 3 * dot;
            fillRect(dc, {x, y, x + dot, y + dot}, mixed(colors.FormBackColor, 0, 110));
        }
    };
    Obdlznik.onPaint = [](HDC dc, Size size) {
        fillRect(dc, {0, 0, size.width, size.height}, MultiMedialny::palette().TitleColor);
    };
    Medzera.cursor = IDC_SIZEWE;
    Medzera.onMouseDown = [this](MouseButton button, Point at) {
        if (button != MouseButton::Left) return;
        pressedAt_ = at.x;
        Obdlznik.setBounds(Medzera.bounds());
        SetWindowPos(Obdlznik.handle(), HWND_TOP, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    };
    Medzera.onMouseMove = [this](MouseButton held, Point at) {
        if (held != MouseButton::Left || pressedAt_ < 0) return;
        Rect frame = Medzera.bounds();
        frame.x = dragged(at.x);
        if (frame.x > leftLimit_ && frame.x < rightLimit_) Obdlznik.setBounds(frame);
    };
    Medzera.onMouseUp = [this](MouseButton button, Point) {
        if (button != MouseButton::Left || pressedAt_ < 0) return;
        pressedAt_ = -1;
        Obdlznik.setVisible(false);
        if (onMoved) onMoved(Obdlznik.bounds().x);
    };
}

int Splitter::dragged(int pointerX) const {
    return Medzera.bounds().x + pointerX - pressedAt_;
}

void Splitter::setBounds(const Rect& bounds, int leftLimit, int rightLimit) {
    Medzera.setBounds(bounds);
    leftLimit_ = leftLimit;
    rightLimit_ = rightLimit;
}

}  // namespace tunovka
