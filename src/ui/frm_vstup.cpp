#include "ui/frm_vstup.h"

#include "ui/painting.h"

namespace tunovka {

// Sizes in 96ths of an inch.
constexpr int kWidth = 400;
constexpr int kMargin = 16;
constexpr int kGap = 8;
constexpr int kFieldPadding = 4;  // between the field's letters and its frame
constexpr int kButtonWidth = 88;

std::wstring askForText(const Form& owner, const InputRequest& request) {
    frmVstup form(owner, request);
    form.showModal();
    return form.answer();
}

frmVstup::frmVstup(const Form& owner, const InputRequest& request)
    : Form({.name = L"frmVstup",
            .title = request.title,
            .size = {kWidth, 120},
            .owner = owner.handle()}),
      lblotazka({.name = L"lblotazka", .caption = request.prompt, .parent = this, .wraps = true}),
      txtodpoved({.name = L"txtodpoved", .text = request.answer, .parent = this}),
      Iano(captionButton(L"Iano", L"O.K.", this)),
      Izrusit(captionButton(L"Izrusit", L"Zrušiť", this)) {
    txtodpoved.setAccessibleName(request.prompt);
    Iano.onClick = [this] { onAccept(); };
    Izrusit.onClick = [this] { unload(); };
    layoutCentred();
    txtodpoved.selectStart(request.selected);
    txtodpoved.focus();
}

void frmVstup::onAccept() {
    answer_ = txtodpoved.text();
    unload();
}

Size frmVstup::arrange(int top) {
    const int margin = scaled(kMargin), gap = scaled(kGap);
    const int inner = scaled(kWidth);
    const int width = inner - 2 * margin;
    top += margin;

    const int prompt = lblotazka.measured(width).height;
    lblotazka.setBounds({margin, top, width, prompt});
    top += prompt + gap;

    // The system's field keeps its letters at the top: its frame is painted around it.
    const int padding = scaled(kFieldPadding);
    const int field = Skin::fontHeight(dpi());
    txtodpoved.setBounds({margin + padding, top + padding, width - 2 * padding, field});
    top += field + 2 * padding + margin;

    const int button = scaled(kButtonWidth), height = buttonHeight();
    const int left = (inner - 2 * button - gap) / 2;
    Iano.setBounds({left, top, button, height});
    Izrusit.setBounds({left + button + gap, top, button, height});
    return {inner, top + height + margin};
}

void frmVstup::onPaintGround(HDC dc) const {
    RECT field = toRECT(txtodpoved.bounds());
    InflateRect(&field, scaled(kFieldPadding), scaled(kFieldPadding));
    fillRect(dc, field, GetSysColor(COLOR_WINDOW));
    paintWell(dc, field);
}

}  // namespace tunovka
