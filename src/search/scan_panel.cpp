#include "search/scan_panel.h"

#include "core/loop.h"
#include "core/text.h"
#include "ui/form.h"
#include "ui/painting.h"

namespace tunovka {
namespace {

constexpr DWORD kPause = 100;    // ms between two reports
constexpr Size kSize{340, 128};  // sizes in 96ths of an inch
constexpr int kMargin = 12;

}  // namespace

ScanPanel::ScanPanel(Form& form)
    : PicInfo({.name = L"PicInfo",
               .text = L"Priebeh prehľadávania",
               .parent = &form,
               .visible = false,
               .container = true}),
      Label1({.name = L"Label1",
              .caption = std::wstring(kCollectingPhase),
              .parent = &PicInfo,
              .format = DT_CENTER,
              .font = Skin::Font::Bold}),
      Istop({.name = L"Istop",
             .text = L"Zastaviť",
             .parent = &PicInfo,
             .normal = Istop1,
             .pressed = Istop2,
             .caption = L"Zastaviť"}),
      form_(form),
      folder_({.name = L"lblpriebeh", .parent = &PicInfo, .format = DT_CENTER | DT_PATH_ELLIPSIS}),
      found_({.name = L"lblnajdene", .parent = &PicInfo, .format = DT_CENTER}) {
    PicInfo.onPaint = [](HDC dc, Size size) {
        const RECT area{0, 0, size.width, size.height};
        fillGradient(dc, area, colors().panelLight, colors().panel);
        frameRect(dc, area, colors().rim);
    };
    Istop.onPress = [] { StopRequested = -1; };
}

void ScanPanel::begin() {
    setPhase(kCollectingPhase);
    folder_.setText(L"");
    found_.setText(L"");
    shownAt_ = 0;
    place();
    PicInfo.setVisible(true);
    if (GetActiveWindow() == form_.handle()) Istop.focus();
}

void ScanPanel::end() {
    const bool hadFocus = Istop.hasFocus();
    PicInfo.setVisible(false);
    if (hadFocus) form_.focus();  // a hidden button would still take the keys
}

void ScanPanel::setPhase(std::wstring_view phase) {
    Label1.setText(std::wstring(phase));
}

void ScanPanel::progress(const std::wstring& folder, std::size_t found) {
    if (GetTickCount() - shownAt_ < kPause) return;
    shownAt_ = GetTickCount();
    folder_.setText(folder);
    found_.setText(L"nájdených súborov: " + trimBlanks(formatGrouped(found)));
}

void ScanPanel::place() {
    const Size window = form_.clientSize();
    const int margin = form_.scaled(kMargin), line = Skin::lineHeight(form_.dpi());
    const int width = form_.scaled(kSize.width);
    const int height = std::max(form_.scaled(kSize.height), 4 * line + 4 * margin);
    PicInfo.setBounds({(window.width - width) / 2, (window.height - height) / 2, width, height});
    int top = margin;
    for (Label* label : {&Label1, &folder_, &found_}) {
        label->setBounds({margin, top, width - 2 * margin, line});
        top += line + form_.scaled(2);
    }
    const Size stop = Istop.naturalSize();
    Istop.setBounds(
        {(width - stop.width) / 2, height - margin - stop.height, stop.width, stop.height});
}

}  // namespace tunovka
