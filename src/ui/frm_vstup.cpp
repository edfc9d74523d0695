#include "ui/frm_vstup.h"

#include "ui/chrome.h"

namespace tunovka {
namespace {

// Sizes in 96ths of an inch.
constexpr int kWidth = 400;
constexpr int kMargin = 16;
constexpr int kGap = 8;
constexpr int kFieldPadding = 4;  // left and right
constexpr int kFieldFrame = 6;    // above and below together
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 26;

}  // namespace

std::wstring askForText(const Form& owner, const InputRequest& request) {
    frmVstup form(owner, request);
    form.showModal();
    return form.answer();
}

frmVstup::Field::Field(Window& parent, const InputRequest& request)
    : Window(Args{.name = L"txtodpoved",
                  .className = L"EDIT",
                  .text = request.answer,
                  .style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL,
                  .parent = &parent}) {}

// Only once it has its width: it scrolls to the selection's end.
void frmVstup::Field::selectStart(std::size_t letters) {
    send(EM_SETSEL, 0, static_cast<LPARAM>(letters));
}

void frmVstup::Field::applyFont() {
    send(WM_SETFONT, reinterpret_cast<WPARAM>(Skin::font(dpi())), TRUE);
    const LPARAM padding = MAKELPARAM(scaled(kFieldPadding), scaled(kFieldPadding));
    send(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, padding);
}

frmVstup::frmVstup(const Form& owner, const InputRequest& request)
    : Form(FormArgs{.name = L"frmVstup",
                    .caption = request.title,
                    .size = {kWidth, 120},
                    .taskbar = false,
                    .owner = owner.handle()}),
      PicZahlavie(L"PicZahlavie", L" " + request.title, *this),
      IZavri({.name = L"IZavri",
              .text = L"Zavrieť",
              .parent = &PicZahlavie,
              .normal = L"zavri1",
              .pressed = L"zavri2",
              .tabStop = false}),
      lblotazka({.name = L"lblotazka", .caption = request.prompt, .parent = this, .wraps = true}),
      txtodpoved(*this, request),
      Iano({.name = L"Iano",
            .text = L"O.K.",
            .parent = this,
            .normal = L"buton1",
            .pressed = L"buton2",
            .caption = L"O.K."}),
      Izrusit({.name = L"Izrusit",
               .text = L"Zrušiť",
               .parent = this,
               .normal = L"buton1",
               .pressed = L"buton2",
               .caption = L"Zrušiť"}) {
    RozneApi::ShowTitleBar(*this, false);
    IZavri.onRelease = [this](MouseButton button) {
        if (button == MouseButton::Left) unload();
    };
    Iano.onRelease = [this](MouseButton button) {
        if (button == MouseButton::Left) onAccept();
    };
    Izrusit.onRelease = [this](MouseButton button) {
        if (button == MouseButton::Left) unload();
    };
    layout();
    centre(owner.handle());
    txtodpoved.selectStart(request.selected);
    txtodpoved.focus();
}

void frmVstup::onAccept() {
    answer_ = txtodpoved.text();
    unload();
}

void frmVstup::onLayout() {
    const int margin = scaled(kMargin), gap = scaled(kGap);
    const int inner = scaled(kWidth);
    const int width = inner - 2 * margin;
    int top = layoutTitle(*this, PicZahlavie, &IZavri, nullptr) + margin;

    const int prompt = lblotazka.measured(width).height;
    lblotazka.setBounds({margin, top, width, prompt});
    top += prompt + gap;

    const int field = Skin::fontHeight(dpi()) + scaled(kFieldFrame);
    txtodpoved.applyFont();
    txtodpoved.setBounds({margin, top, width, field});
    top += field + margin;

    const int button = scaled(kButtonWidth), height = scaled(kButtonHeight);
    const int left = (inner - 2 * button - gap) / 2;
    Iano.setBounds({left, top, button, height});
    Izrusit.setBounds({left + button + gap, top, button, height});
    setClientSize({inner, top + height + margin});
}

void frmVstup::onPaintGround(HDC dc, const RECT& area) const {
    paintRim(dc, area);
}

}  // namespace tunovka
