#include "ui/chrome.h"

#include "ui/form.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {

Image::ImageArgs closePicture(const wchar_t* name, TitleStrip& strip) {
    return {.name = name,
            .text = L"Zavrieť",
            .parent = &strip,
            .normal = L"zavri1",
            .pressed = L"zavri2",
            .tabStop = false};
}

int layoutTitle(Form& form, TitleStrip& strip, Image* close, Image* minimize) {
    const int height = form.scaled(kTitleHeight);
    const int width = form.clientSize().width;
    strip.setBounds({0, 0, width, height});
    int right = width;
    for (Image* picture : {close, minimize}) {
        if (!picture) continue;
        const Size size = picture->naturalSize();
        right -= size.width + form.scaled(3);
        picture->setBounds({right, (height - size.height) / 2, size.width, size.height});
    }
    return height;
}

void paintRim(HDC dc, const RECT& area) {
    const MultiMedialny::SkinPalette& colors = MultiMedialny::palette();
    const int light = area.bottom / 4;
    fillGradient(dc, {0, 0, area.right, light}, mixed(colors.FormBackColor, 0xFFFFFF, 70),
                 colors.FormBackColor);
    RECT frame = area;
    frameRect(dc, frame, mixed(colors.TitleColor, 0, 90));
    InflateRect(&frame, -1, -1);
    frameRect(dc, frame, mixed(colors.FormBackColor, 0xFFFFFF, 90));
}

Color cardColor() {
    return mixed(MultiMedialny::palette().FormBackColor, 0xFFFFFF, 215);
}

void paintCard(HDC dc, const RECT& area) {
    fillRect(dc, area, cardColor());
    paintWell(dc, area);
}

void paintWell(HDC dc, const RECT& area) {
    const MultiMedialny::SkinPalette& colors = MultiMedialny::palette();
    RECT frame = area;
    InflateRect(&frame, 1, 1);
    frameRect(dc, frame, mixed(colors.FormBackColor, 0, 100));
}

}  // namespace tunovka
