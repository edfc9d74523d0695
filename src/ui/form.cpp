#include "ui/form.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>

#include "core/late_function.h"
#include "core/loop.h"
#include "core/text.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {
namespace {

// Lets the system size a window by keys and at the screen's edges, and give it its shadow.
constexpr DWORD kSizableStyle = WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr int kBorder = 5;    // how far inside the edge a sizable form is still grasped
constexpr int kCascade = 26;  // how far a further window lies from the one before: a strip

// The system sends this to top-level windows only.
BOOL CALLBACK passOnColorChange(HWND control, LPARAM) {
    SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
    return TRUE;
}

std::vector<std::unique_ptr<Form>>& all() {
    static std::vector<std::unique_ptr<Form>> forms;
    return forms;
}

HWND lastActive = nullptr;

bool isSeen(HWND window) {
    return dynamic_cast<Form*>(windowOf(window)) && IsWindowVisible(window) && !IsIconic(window);
}

// Of a screen, without the task bar.
RECT workAreaOf(HMONITOR screen) {
    MONITORINFO monitor{.cbSize = sizeof monitor};
    GetMonitorInfoW(screen, &monitor);
    return monitor.rcWork;
}

// The wheel turns what lies under the pointer, wherever the focus is.
void aimWheel(MSG& message) {
    const Point at = pointOf(message.lParam);
    const HWND under = WindowFromPoint({at.x, at.y});
    const auto* form = dynamic_cast<Form*>(windowOf(GetAncestor(under, GA_ROOT)));
    if (form && form->isEnabled()) message.hwnd = under;
}

}  // namespace

Form::Form(const FormArgs& args)
    : Window(this),
      args_(args),
      strip_({.name = args.strip,
              .text = L" " + trimBlanks(args.title),
              .parent = this,
              .container = true,
              .role = ROLE_SYSTEM_STATICTEXT}),
      becameActive_([this] {
          const Depth alive(this);
          if (!closing_) onActivated();
      }) {
    prepareStrip();
    setMessageFilter(filterMessage);
    Args window;
    window.name = args.name;
    window.text = args.title;
    window.style = WS_POPUP | WS_CLIPCHILDREN | WS_SYSMENU | (isSizable() ? kSizableStyle : 0);
    window.exStyle = WS_EX_CONTROLPARENT | (args.owner ? 0 : WS_EX_APPWINDOW);
    window.visible = false;
    window.owner = args.owner;
    const auto place = [&](int dpi) {
        dpi_ = dpi;
        return centred({scaled(args.size.width), scaled(args.size.height)});
    };
    // At its place from the start: moving it there afterwards takes longer.
    window.bounds = place(dpiOf(args.owner));
    create(window);
    setBounds(place(dpiOf(handle())));  // where that screen's dpi is another one after all
}

bool Form::unload() {
    if (closing_) return true;
    const Depth alive(this);
    if (!queryUnload()) return false;
    close();
    return true;
}

void Form::close() {
    if (closing_) return;
    closing_ = true;
    onUnload();
    modal_.reset();  // before hiding, so that the owner can become active again
    ShowWindow(handle(), SW_HIDE);
}

// From the message loop, where none of its handlers runs. Whoever owns a form that is not loaded
// destroys it himself.
void Form::leave() {
    if (--depth_ > 0 || !closing_) return;
    postToLoop([this] {
        const auto found = std::ranges::find(all(), this, &std::unique_ptr<Form>::get);
        if (found == all().end() || depth_ > 0 || !closing_) return;
        const std::unique_ptr<Form> doomed = std::move(*found);
        all().erase(found);
        if (all().empty()) PostQuitMessage(0);
    });
}

void Form::show() {
    layout();
    if (IsIconic(handle())) ShowWindow(handle(), SW_RESTORE);
    ShowWindow(handle(), SW_SHOW);
    SetForegroundWindow(handle());
    UpdateWindow(handle());
}

void Form::showInactive() {
    layout();
    ShowWindow(handle(), SW_SHOWNOACTIVATE);
    UpdateWindow(handle());
}

// What the system, from Vista on, shows while it waits for the session's end; "" takes it back.
void Form::blockSession(const std::wstring& reason) const {
    static const LateFunction<BOOL WINAPI(HWND, const wchar_t*)> block(L"user32.dll",
                                                                       "ShutdownBlockReasonCreate");
    static const LateFunction<BOOL WINAPI(HWND)> unblock(L"user32.dll",
                                                         "ShutdownBlockReasonDestroy");
    if (!block || !unblock) return;
    if (reason.empty())
        unblock(handle());
    else
        block(handle(), reason.c_str());
}

void Form::showModal() {
    const Depth alive(this);
    modal_.emplace(handle());
    show();
    // All at once: controls that are painted later would show as holes.
    RedrawWindow(handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    NotifyWinEvent(EVENT_SYSTEM_DIALOGSTART, handle(), OBJID_WINDOW, CHILDID_SELF);
    runLoopWhile([this] { return !closing_; });
    modal_.reset();
    NotifyWinEvent(EVENT_SYSTEM_DIALOGEND, handle(), OBJID_WINDOW, CHILDID_SELF);
}

// Screen readers read a dialog's texts out when it opens.
std::optional<AccessibleFacts> Form::describe() const {
    if (!modal_) return std::nullopt;
    return AccessibleFacts{.role = ROLE_SYSTEM_DIALOG, .name = text()};
}

void Form::offerTip(const Window& control, const std::wstring& tip, WPARAM keys, LPARAM place) {
    prepareSystemControls();
    if (!tips_)
        tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, handle(),
                                nullptr, nullptr, nullptr);
    TTTOOLINFOW tool{.cbSize = TTTOOLINFOW_V1_SIZE,
                     .uFlags = TTF_IDISHWND | TTF_SUBCLASS,
                     .hwnd = GetParent(control.handle()),
                     .uId = reinterpret_cast<UINT_PTR>(control.handle())};
    const auto info = reinterpret_cast<LPARAM>(&tool);
    if (SendMessageW(tips_, TTM_GETTOOLINFOW, 0, info)) return;  // the system watches it already
    tool.lpszText = const_cast<wchar_t*>(tip.c_str());
    SendMessageW(tips_, TTM_ADDTOOLW, 0, info);
    MSG move{control.handle(), WM_MOUSEMOVE, keys, place, GetTickCount(), {}};
    SendMessageW(tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&move));
}

Rect Form::workArea() const {
    return rectOf(workAreaOf(MonitorFromWindow(handle(), MONITOR_DEFAULTTONEAREST)));
}

Rect Form::centred(Size size) const {
    const HWND owner = args_.owner;
    const Rect work = rectOf(workAreaOf(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY)));
    const Window* window = windowOf(owner);
    const Rect over = window && window->isVisible() && !IsIconic(owner) ? window->bounds() : work;
    const auto placed = [](int low, int length, int size, int least, int most) {
        return std::max(least, std::min(low + (length - size) / 2, most - size));
    };
    return {placed(over.x, over.width, size.width, work.x, work.right()),
            placed(over.y, over.height, size.height, work.y, work.bottom()), size.width,
            size.height};
}

void Form::layoutCentred() {
    layout();
    setBounds(centred({bounds().width, bounds().height}));
}

void Form::placeBesideOthers() {
    std::vector<Rect> taken;
    const Form* main = nullptr;
    for (const Form* form : Forms::loaded()) {
        if (!isSeen(form->handle())) continue;
        if (!main) main = form;
        taken.push_back(form->bounds());
    }
    if (!main) return;
    const Size size{bounds().width, bounds().height};
    setBounds(freePlace(size, taken, main->workArea(), scaled(kCascade)));
}

void Form::setClientSize(Size size) {
    SetWindowPos(handle(), nullptr, 0, 0, size.width, size.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

std::optional<LRESULT> Form::hitTestBorder(Point screen) const {
    if (!isSizable() || IsZoomed(handle())) return std::nullopt;
    const Point p = fromScreen(screen);
    const Size size = clientSize();
    const int border = scaled(kBorder);
    const int corner = 3 * border;
    if (p.x >= border && p.x < size.width - border && p.y >= border && p.y < size.height - border)
        return std::nullopt;
    // 0 at the near end of a side, 2 at the far one, 1 between; an edge's middle has no corner.
    const auto third = [&](int at, int length) {
        return at < corner ? 0 : at >= length - corner ? 2 : 1;
    };
    constexpr LRESULT kPlaces[3][3] = {{HTTOPLEFT, HTTOP, HTTOPRIGHT},
                                       {HTLEFT, HTNOWHERE, HTRIGHT},
                                       {HTBOTTOMLEFT, HTBOTTOM, HTBOTTOMRIGHT}};
    return kPlaces[third(p.y, size.height)][third(p.x, size.width)];
}

std::optional<LRESULT> Form::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CLOSE:
            unload();
            return 0;
        case WM_QUERYENDSESSION: {
            // Nothing is closed or asked yet: another program may still keep the session.
            const std::wstring reason = closing_ ? L"" : sessionBlock();
            blockSession(reason);
            return reason.empty();
        }
        case WM_ENDSESSION:
            blockSession({});
            if (wparam) close();
            return 0;
        case WM_SETCURSOR:
            // The form that has switched this one off comes to the front.
            if (!isEnabled() && isPress(HIWORD(lparam)) && isSeen(lastActive) &&
                IsWindowEnabled(lastActive))
                SetForegroundWindow(lastActive);
            return std::nullopt;
        case WM_COMMAND:
            if (lparam == 0 && LOWORD(wparam) == IDOK) onAccept();
            if (lparam == 0 && LOWORD(wparam) == IDCANCEL) {
                givenUp_ = isBusy();
                onCancel();
            }
            return std::nullopt;
        case WM_NCCALCSIZE:  // the skin paints the whole window: the system's frame has no place
            // One with a sizing frame that fills its screen hangs over its edges by that frame.
            if (auto& area = *reinterpret_cast<RECT*>(lparam); IsZoomed(handle()))
                area = workAreaOf(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST));
            return 0;
        case WM_NCPAINT:
            return 0;
        case WM_NCACTIVATE:  // -1: without painting the frame
            return defaultProcedure(message, wparam, -1);
        case WM_NCHITTEST:
            return hitTestBorder(pointOf(lparam));
        case WM_GETMINMAXINFO:
            if (isSizable()) {
                auto& limits = *reinterpret_cast<MINMAXINFO*>(lparam);
                limits.ptMaxTrackSize = {SHRT_MAX, SHRT_MAX};  // also larger than the screen
                limits.ptMinTrackSize = {scaled(args_.minimum.width), scaled(args_.minimum.height)};
            }
            return 0;
        case WM_SIZE:
            layout();
            return 0;
        case WM_DPICHANGED:
            dpi_ = HIWORD(wparam);
            setBounds(rectOf(*reinterpret_cast<const RECT*>(lparam)));
            layout();
            return 0;
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
            refreshColors();
            if (message == WM_SETTINGCHANGE && wparam == SPI_SETNONCLIENTMETRICS) {
                Skin::forgetFonts();
                layout();
            }
            if (message == WM_SYSCOLORCHANGE) EnumChildWindows(handle(), passOnColorChange, 0);
            RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
            return std::nullopt;
        case WM_CONTEXTMENU:
            if (lparam == -1) onMenuKey();
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wparam) == WA_INACTIVE) {
                if (const HWND focus = GetFocus(); focus && IsChild(handle(), focus))
                    lastFocus_ = focus;
            } else {
                lastActive = handle();
                becameActive_.raise();
            }
            return std::nullopt;
        case WM_SETFOCUS:
            if (lastFocus_ && IsChild(handle(), lastFocus_) && IsWindowVisible(lastFocus_))
                SetFocus(lastFocus_);
            else if (const HWND first = GetNextDlgTabItem(handle(), nullptr, FALSE))
                SetFocus(first);
            return 0;
        default:
            return Window::onMessage(message, wparam, lparam);
    }
}

// ---- All forms ----------------------------------------------------------------------------------

HWND activeForm() {
    for (const HWND form : {GetActiveWindow(), lastActive})
        if (isSeen(form)) return form;
    for (const Form* form : Forms::loaded())
        if (isSeen(form->handle())) return form->handle();
    return nullptr;
}

void Forms::adopt(std::unique_ptr<Form> form) {
    all().push_back(std::move(form));
}

std::vector<Form*> Forms::loaded() {
    std::vector<Form*> forms;
    for (const auto& form : all())
        if (!form->closing_) forms.push_back(form.get());
    return forms;
}

Form* Forms::find(const std::wstring& name) {
    for (Form* form : loaded())
        if (upperCased(form->name()) == upperCased(name)) return form;
    return nullptr;
}

bool Forms::unloadTagged(std::wstring_view start) {
    for (Form* form : loaded()) {
        const bool isLoaded = std::ranges::count(loaded(), form);  // a question may have closed it
        if (isLoaded && form->tag.starts_with(start) && !form->unload()) return false;
    }
    return true;
}

void Forms::unloadAll() {
    for (Form* form : loaded())
        if (std::ranges::count(loaded(), form)) form->close();
}

ModalState::ModalState(HWND except) : except_(except) {
    EnumThreadWindows(GetCurrentThreadId(), disable, reinterpret_cast<LPARAM>(this));
}

BOOL CALLBACK ModalState::disable(HWND window, LPARAM modal) {
    auto& state = *reinterpret_cast<ModalState*>(modal);
    const auto* form = dynamic_cast<Form*>(windowOf(window));
    if (window == state.except_ || (form && form->staysUsable()) || !IsWindowVisible(window) ||
        !IsWindowEnabled(window))
        return TRUE;
    state.disabled_.push_back(window);
    EnableWindow(window, FALSE);
    return TRUE;
}

ModalState::~ModalState() {
    for (const HWND window : disabled_) EnableWindow(window, TRUE);
}

bool filterMessage(MSG& message) {
    if (message.message == WM_MOUSEWHEEL) aimWheel(message);
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
    const HWND top = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    auto* form = dynamic_cast<Form*>(windowOf(top));
    if (!form) return false;
    if (message.message == WM_KEYDOWN && form->isEnabled()) {
        bool used = false;
        const Form::Depth alive(form);
        guarded([&] { used = form->onShortcut(static_cast<WORD>(message.wParam)); });
        if (used) return true;
    }
    return IsDialogMessageW(top, &message);
}

}  // namespace tunovka
