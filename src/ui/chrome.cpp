#include "ui/chrome.h"

#include "ui/form.h"
#include "ui/painting.h"

namespace tunovka {

Image::ImageArgs closePicture(const wchar_t* name, TitleStrip& strip) {
    return {.name = name,
            .text = L"Zavrieť",
            .parent = &strip,
            .normal = L"zavri1",
            .pressed = L"zavri2"};
}

int layoutTitle(Form& form, TitleStrip& strip, Image* close, Image* minimize) {
    const int height = form.scaled(kTitleHeight);
    const int width = form.clientSize().width;
    strip.setBounds({0, 0, width, height});
    // Last for the Tab key, which is after the window's content first.
    strip.setTabPlace(HWND_BOTTOM);
    int right = width;
    for (Image* picture : {close, minimize}) {
        if (!picture) continue;
        const Size size = picture->naturalSize();
        right -= size.width + form.scaled(picture == close ? 1 : 3);
        picture->setBounds({right, (height - size.height) / 2, size.width, size.height});
        picture->setTabPlace(HWND_TOP);
    }
    return height;
}

void paintRim(HDC dc, const RECT& area) {
    fillGradient(dc, {0, 0, area.right, area.bottom / 4}, colors().groundLight, colors().ground);
    RECT frame = area;
    frameRect(dc, frame, colors().rim);
    InflateRect(&frame, -1, -1);
    frameRect(dc, frame, colors().rimLight);
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

}  // namespace tunovka
