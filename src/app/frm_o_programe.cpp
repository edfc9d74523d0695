#include "app/frm_o_programe.h"

#include <oleacc.h>

#include <algorithm>

#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {

// Sizes in 96ths of an inch.
constexpr int kLeastWidth = 380;
constexpr int kMargin = 12;
constexpr int kPadding = 20;
constexpr int kColumnGap = 20;
constexpr int kSloganGap = 10;  // above the slogan

constexpr wchar_t kLogo[] = L"logo";

frmOprograme::frmOprograme(HWND owner)
    : Form({.name = L"frmOprograme",
            .title = L"O programe",
            .size = {kLeastWidth, 160},
            .owner = owner,
            .strip = L"Pic",
            .closer = L"Tlacitko"}),
      PicLogo(
          {.name = L"PicLogo", .text = L"Tunovka", .parent = this, .role = ROLE_SYSTEM_GRAPHIC}),
      lblnazov(
          {.name = L"lblnazov", .caption = L"Tunovka", .parent = this, .font = Skin::Font::Title}),
      lblverzia({.name = L"lblverzia", .caption = L"Verzia " TUNOVKA_VERSION, .parent = this}),
      lblslogan({.name = L"lblslogan",
                 .caption = L"Každá pesnička na svojom mieste.",
                 .parent = this,
                 .font = Skin::Font::Bold}) {
    PicLogo.onPaint = [this](HDC dc, Size) { Skin::draw(dc, kLogo, {0, 0}, dpi()); };
    layoutCentred();
}

Size frmOprograme::arrange(int stripBottom) {
    const int margin = scaled(kMargin), padding = scaled(kPadding);
    const Size logo = Skin::pictureSize(kLogo, dpi());
    const int left = margin + padding + logo.width + scaled(kColumnGap);
    const Size name = lblnazov.measured(), version = lblverzia.measured(),
               slogan = lblslogan.measured();
    const int texts = std::max({name.width, version.width, slogan.width});
    const int width = std::max(scaled(kLeastWidth), left + texts + padding + margin);
    const int column = width - margin - padding - left;

    const int top = stripBottom + margin;
    const int height = name.height + version.height + scaled(kSloganGap) + slogan.height;
    const int inner = std::max(height, logo.height);
    card_ = {margin, top, width - margin, top + inner + 2 * padding};
    const int first = top + padding;
    PicLogo.setBounds(
        {margin + padding, first + (inner - logo.height) / 2, logo.width, logo.height});
    int y = first + (inner - height) / 2;
    lblnazov.setBounds({left, y, column, name.height});
    y += name.height;
    lblverzia.setBounds({left, y, column, version.height});
    y += version.height + scaled(kSloganGap);
    lblslogan.setBounds({left, y, column, slogan.height});

    return {width, static_cast<int>(card_.bottom) + margin};
}

void frmOprograme::onPaintGround(HDC dc) const {
    paintCard(dc, card_);
}

}  // namespace tunovka
