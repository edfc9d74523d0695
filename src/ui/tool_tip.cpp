#include "ui/tool_tip.h"

#include <commctrl.h>

#include "ui/form.h"

namespace tunovka {

void ToolTip::pointerOver(const Window& control, const std::wstring& text, WPARAM keys,
                          LPARAM place) {
    if (!known_.insert(control.handle()).second) return;  // the system watches it already
    if (!handle())
        create({.name = L"ToolTip",
                .className = TOOLTIPS_CLASSW,
                .style = WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                .exStyle = WS_EX_TOPMOST,
                .owner = owner_.handle()});
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = GetParent(control.handle());
    tool.uId = reinterpret_cast<UINT_PTR>(control.handle());
    tool.lpszText = const_cast<wchar_t*>(text.c_str());
    send(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    MSG move{control.handle(), WM_MOUSEMOVE, keys, place, GetTickCount(), {}};
    send(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&move));
}

}  // namespace tunovka
