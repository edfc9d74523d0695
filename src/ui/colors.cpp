#include "ui/colors.h"

#include <windows.h>

#include <algorithm>
#include <cmath>

namespace tunovka {
namespace {

constexpr Color kWhite = 0xFFFFFF, kBlack = 0;

// Between two colours: 0 gives the first, 255 the second.
Color mixed(Color first, Color second, int amount) {
    Color result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int a = first >> shift & 0xFF, b = second >> shift & 0xFF;
        result |= static_cast<Color>(a + (b - a) * amount / 255) << shift;
    }
    return result;
}

double luminance(Color color) {
    const auto channel = [&](int shift) {
        const double share = (color >> shift & 0xFF) / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(0) + 0.7152 * channel(8) + 0.0722 * channel(16);
}

// How well two colours stand out from each other: 1 (the same) to 21 (black on white).
double contrast(Color one, Color other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// The colour, made as much lighter or darker as a text on that ground needs (a contrast of 6).
Color readableOn(Color ground, Color wanted) {
    const Color away = contrast(ground, kWhite) > contrast(ground, kBlack) ? kWhite : kBlack;
    for (int amount = 0; amount < 255; amount += 5) {
        const Color tried = mixed(wanted, away, amount);
        if (contrast(ground, tried) >= 6) return tried;
    }
    return away;
}

bool highContrast() {
    HIGHCONTRASTW setting{.cbSize = sizeof setting};
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0) &&
           setting.dwFlags & HCF_HIGHCONTRASTON;
}

Colors ofSkin() {
    const MultiMedialny::SkinPalette& skin = MultiMedialny::palette();
    return {.plain = false,
            .ground = skin.FormBackColor,
            .groundLight = mixed(skin.FormBackColor, kWhite, 70),
            .rim = mixed(skin.TitleColor, kBlack, 90),
            .rimLight = mixed(skin.FormBackColor, kWhite, 90),
            .text = skin.LabelForeColor,
            .textHalo = kWhite,
            .textOff = mixed(skin.LabelForeColor, skin.FormBackColor, 140),
            .title = skin.TitleColor,
            .titleText = skin.TitleTextColor,
            .button = skin.AuxColor1,
            .buttonText = skin.LabelForeColor,
            .card = mixed(skin.FormBackColor, kWhite, 215),
            .edge = mixed(skin.FormBackColor, kBlack, 100),
            .field = skin.NodeBackColor,
            .selected = skin.TitleColor,
            .selectedText = kWhite,
            .selectedElsewhere = skin.AuxColor1,
            .dropTarget = mixed(skin.AuxColor3, kWhite, 80),
            .bar = skin.PlayerBarColor,
            .track = skin.AuxColor1,
            .headerLight = mixed(skin.AuxColor3, kWhite, 120),
            .header = skin.AuxColor3,
            .panelLight = mixed(skin.AuxColor3, kWhite, 190)};
}

Colors ofSystem() {
    Colors c{};
    c.plain = true;
    c.ground = c.groundLight = c.rimLight = c.textHalo = c.card = c.field = c.track = c.panelLight =
        GetSysColor(COLOR_WINDOW);
    c.rim = c.text = c.edge = GetSysColor(COLOR_WINDOWTEXT);
    c.textOff = GetSysColor(COLOR_GRAYTEXT);
    c.title = GetSysColor(COLOR_ACTIVECAPTION);
    c.titleText = GetSysColor(COLOR_CAPTIONTEXT);
    c.button = c.header = c.headerLight = GetSysColor(COLOR_BTNFACE);
    c.buttonText = GetSysColor(COLOR_BTNTEXT);
    c.selected = c.selectedElsewhere = c.dropTarget = c.bar = GetSysColor(COLOR_HIGHLIGHT);
    c.selectedText = GetSysColor(COLOR_HIGHLIGHTTEXT);
    return c;
}

Colors& current() {
    static Colors now = highContrast() ? ofSystem() : ofSkin();
    return now;
}

}  // namespace

const Colors& colors() {
    return current();
}

void refreshColors() {
    chooseColors(highContrast());
}

void chooseColors(bool highContrast) {
    current() = highContrast ? ofSystem() : ofSkin();
}

Color shownText(Color given) {
    if (!colors().plain) return given;
    const bool warns = given == MultiMedialny::palette().MissingEntryColor;
    return warns ? readableOn(colors().field, given) : colors().text;
}

RowColors rowColors(Color given, RowState state) {
    const Colors& now = colors();
    switch (state) {
        case RowState::Selected:
            return {now.selected, now.selectedText};
        case RowState::SelectedElsewhere:
            return {now.selectedElsewhere, now.plain ? now.selectedText : given};
        case RowState::DropTarget:
            return {now.dropTarget, now.plain ? now.selectedText : given};
        default:
            return {now.field, shownText(given)};
    }
}

}  // namespace tunovka
