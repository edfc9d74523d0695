#include "ui/form.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <set>

#include "core/late_function.h"
#include "core/loop.h"
#include "core/text.h"
#include "ui/accessible.h"
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

}  // namespace

// The tool tips of a form's controls, in one system window that is made when the pointer comes to
// the first of them.
class ToolTip : public Window {
  public:
    explicit ToolTip(Form& form) : owner_(form) {}

    // The pointer has moved over a control, to a place within it: shows the control's tip when it
    // rests there.
    void pointerOver(const Window& control, const std::wstring& text, WPARAM keys, LPARAM place);

  private:
    Form& owner_;
    std::set<HWND> known_;
};

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

Form::Form(const FormArgs& args)
    : args_(args), becameActive_([this](std::uintptr_t) {
          const Depth alive(this);
          if (!closing_) onActivated();
      }) {
    setMessageFilter(filterMessage);
    host_ = this;
    Args window;
    window.name = args.name;
    window.text = args.caption;
    window.style = WS_POPUP | WS_CLIPCHILDREN | WS_SYSMENU | (isSizable() ? kSizableStyle : 0);
    window.exStyle = WS_EX_CONTROLPARENT | (args.owner ? 0 : WS_EX_APPWINDOW);
    window.owner = args.owner;
    const auto place = [&](int dpi) {
        dpi_ = dpi;
        return centred({scaled(args.size.width), scaled(args.size.height)}, args.owner);
    };
    // At its place from the start: moving it there afterwards takes longer.
    window.bounds = place(dpiOf(args.owner));
    create(window);
    if (isSizable())  // now that its object hears it, the frame has no place
        SetWindowPos(handle(), nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    setBounds(place(dpiOf(handle())));  // where that screen's dpi is another one after all
}

Form::~Form() {
    tips_.reset();  // the system would destroy its window together with this one
    destroy();
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

void Form::leave() {
    if (--depth_ == 0 && closing_ && owned_) Forms::destroyLater(this);
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

namespace {

bool isPress(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

}  // namespace

// Nothing is closed or asked yet: another program may still keep the session.
bool Form::mayEndSession() {
    const std::wstring reason = closing_ ? L"" : sessionBlock();
    blockSession(reason);
    return reason.empty();
}

// What the system shows while it waits; "" takes it back. Systems before Vista show nothing.
void Form::blockSession(const std::wstring& reason) {
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

void Form::minimize() {
    ShowWindow(handle(), SW_MINIMIZE);
}

void Form::showModal() {
    const Depth alive(this);
    modal_ = std::make_unique<ModalState>(handle());
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
    if (!tips_) tips_ = std::make_unique<ToolTip>(*this);
    tips_->pointerOver(control, tip, keys, place);
}

Rect Form::workArea(HWND window) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return rectOf(monitor.rcWork);
}

Rect Form::centred(Size size, HWND beside) {
    const Rect work = workArea(beside);
    Rect over = work;
    if (const Window* window = windowOf(beside); window && window->isVisible() && !IsIconic(beside))
        over = window->bounds();
    const auto placed = [](int low, int length, int size, int least, int most) {
        return std::max(least, std::min(low + (length - size) / 2, most - size));
    };
    return {placed(over.x, over.width, size.width, work.x, work.right()),
            placed(over.y, over.height, size.height, work.y, work.bottom()), size.width,
            size.height};
}

void Form::centre(HWND beside) {
    const Rect own = bounds();
    setBounds(centred({own.width, own.height}, beside));
}

void Form::placeBesideOthers() {
    std::vector<Rect> taken;
    HWND main = nullptr;
    for (const Form* form : Forms::loaded()) {
        if (!form->isVisible() || IsIconic(form->handle())) continue;
        if (!main) main = form->handle();
        taken.push_back(form->bounds());
    }
    if (!main) return;
    const Rect own = bounds();
    setBounds(freePlace({own.width, own.height}, taken, workArea(main), scaled(kCascade)));
}

void Form::setClientSize(Size size) {
    SetWindowPos(handle(), nullptr, 0, 0, size.width, size.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Form::layout() {
    if (!IsIconic(handle()) && !closing_) onLayout();
}

namespace {

// Moves the drawing so that the place of `window` comes to lie under its `control`.
void drawAs(HDC target, HWND control, HWND window) {
    POINT origin{0, 0};
    MapWindowPoints(control, window, &origin, 1);
    OffsetViewportOrgEx(target, -origin.x, -origin.y, nullptr);
}

}  // namespace

void Form::paintGround(HDC target, const Window& control) const {
    {
        const SavedDc saved(target);
        drawAs(target, control.handle(), handle());
        RECT area{};
        GetClientRect(handle(), &area);
        fillRect(target, area, colors().ground);
        onPaintGround(target, area);
        paintFocus(target);
    }
    if (&control == this) return;
    const Window* parent = windowOf(GetParent(control.handle()));
    if (!parent || parent == this) return;
    const SavedDc saved(target);
    drawAs(target, control.handle(), parent->handle());
    parent->paintBehind(target);
}

namespace {

constexpr int kFocusFrame = 2;  // how thick it is

// Where the frame around a control of a form goes, in the form's pixels.
RECT focusFrame(const Form& form, const Window& control) {
    RECT area{};
    GetWindowRect(control.handle(), &area);
    MapWindowPoints(nullptr, form.handle(), reinterpret_cast<POINT*>(&area), 2);
    const int outside = form.scaled(kFocusFrame + control.focusGap());
    InflateRect(&area, outside, outside);
    return area;
}

}  // namespace

// Controls that paint themselves show their focus within; the system's get a frame around them.
void Form::paintFocus(HDC dc) const {
    const Window* focused = windowOf(GetFocus());
    if (!focused || !focused->isSystemControl() || focused->host_ != this) return;
    RECT area = focusFrame(*this, *focused);
    for (int i = 0; i < scaled(kFocusFrame); ++i) {
        frameRect(dc, area, colors().focus);
        InflateRect(&area, -1, -1);
    }
}

void Form::repaintAround(const Window& control) {
    const RECT area = focusFrame(*this, control);
    RedrawWindow(handle(), &area, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);  // neighbours too
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

// A window with a sizing frame that fills its screen hangs over its edges by that frame.
void Form::fitToScreen(RECT& area) const {
    if (!IsZoomed(handle())) return;
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoW(MonitorFromRect(&area, MONITOR_DEFAULTTONEAREST), &monitor))
        area = monitor.rcWork;
}

void Form::limitSize(MINMAXINFO& limits) const {
    if (!isSizable()) return;
    limits.ptMaxTrackSize = {SHRT_MAX, SHRT_MAX};  // also larger than the screen, as others are
    limits.ptMinTrackSize = {scaled(args_.minimum.width), scaled(args_.minimum.height)};
}

std::optional<LRESULT> Form::onMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CLOSE:
            unload();
            return 0;
        case WM_QUERYENDSESSION:
            return mayEndSession();
        case WM_ENDSESSION:
            blockSession({});
            if (wparam) close();
            return 0;
        case WM_SETCURSOR:
            if (!isEnabled() && isPress(HIWORD(lparam))) Forms::showModalOne();
            return std::nullopt;
        case WM_COMMAND:
            if (lparam == 0 && LOWORD(wparam) == IDOK) onAccept();
            if (lparam == 0 && LOWORD(wparam) == IDCANCEL) {
                givenUp_ = isBusy();
                onCancel();
            }
            return std::nullopt;
        case WM_NCCALCSIZE:  // the skin paints the whole window: the system's frame has no place
            fitToScreen(*reinterpret_cast<RECT*>(lparam));
            return 0;
        case WM_NCPAINT:
            return 0;
        case WM_NCACTIVATE:  // -1: without painting the frame
            return defaultProcedure(message, wparam, -1);
        case WM_NCHITTEST:
            return hitTestBorder(pointOf(lparam));
        case WM_GETMINMAXINFO:
            limitSize(*reinterpret_cast<MINMAXINFO*>(lparam));
            return 0;
        case WM_SIZE:
            layout();
            // The ground goes with the size, also behind the labels that lie on it.
            RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
            return 0;
        case WM_DPICHANGED: {
            dpi_ = HIWORD(wparam);
            const RECT& area = *reinterpret_cast<const RECT*>(lparam);
            SetWindowPos(handle(), nullptr, area.left, area.top, area.right - area.left,
                         area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
            layout();
            RedrawWindow(handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
            return 0;
        }
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
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            const PaintDc paint(handle());
            paintGround(paint.dc(), *this);
            return 0;
        }
        case WM_ACTIVATE:
            if (LOWORD(wparam) == WA_INACTIVE) {
                if (const HWND focus = GetFocus(); focus && IsChild(handle(), focus))
                    lastFocus_ = focus;
            } else {
                Forms::becameActive(*this);
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
            return std::nullopt;
    }
}

// ---- All forms ----------------------------------------------------------------------------------

namespace {

std::vector<std::unique_ptr<Form>>& all() {
    static std::vector<std::unique_ptr<Form>> forms;
    return forms;
}

HWND lastActive = nullptr;

bool isSeen(HWND window) {
    return dynamic_cast<Form*>(windowOf(window)) && IsWindowVisible(window) && !IsIconic(window);
}

}  // namespace

HWND activeForm() {
    for (const HWND form : {GetActiveWindow(), lastActive})
        if (isSeen(form)) return form;
    for (const Form* form : Forms::loaded())
        if (isSeen(form->handle())) return form->handle();
    return nullptr;
}

void Forms::becameActive(const Form& form) {
    lastActive = form.handle();
}

void Forms::showModalOne() {
    if (isSeen(lastActive) && IsWindowEnabled(lastActive)) SetForegroundWindow(lastActive);
}

void Forms::adopt(std::unique_ptr<Form> form) {
    form->owned_ = true;
    all().push_back(std::move(form));
}

void Forms::destroyLater(Form* form) {
    postToLoop([form] {
        const auto found = std::find_if(all().begin(), all().end(),
                                        [&](const auto& one) { return one.get() == form; });
        if (found == all().end() || form->depth_ > 0) return;
        const std::unique_ptr<Form> doomed = std::move(*found);
        doomed->owned_ = false;
        all().erase(found);
        if (all().empty()) PostQuitMessage(0);
    });
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
        const auto now = loaded();  // a question may have closed others meanwhile
        if (std::find(now.begin(), now.end(), form) == now.end()) continue;
        if (form->tag.starts_with(start) && !form->unload()) return false;
    }
    return true;
}

void Forms::unloadAll() {
    for (Form* form : loaded()) {
        const auto now = loaded();
        if (std::find(now.begin(), now.end(), form) != now.end()) form->close();
    }
}

namespace {

struct Search {
    HWND except;
    std::vector<HWND>& found;
};

BOOL CALLBACK collectEnabled(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<Search*>(data);
    const auto* form = dynamic_cast<Form*>(windowOf(window));
    if (form && form->staysUsable()) return TRUE;
    if (window != search.except && IsWindowVisible(window) && IsWindowEnabled(window))
        search.found.push_back(window);
    return TRUE;
}
}  // namespace

ModalState::ModalState(HWND except) {
    Search search{except, disabled_};
    EnumThreadWindows(GetCurrentThreadId(), collectEnabled, reinterpret_cast<LPARAM>(&search));
    for (const HWND window : disabled_) EnableWindow(window, FALSE);
}

ModalState::~ModalState() {
    for (const HWND window : disabled_) EnableWindow(window, TRUE);
}

namespace {

// The wheel turns what lies under the pointer, wherever the focus is.
void aimWheel(MSG& message) {
    const Point at = pointOf(message.lParam);
    const HWND under = WindowFromPoint({at.x, at.y});
    const auto* form = dynamic_cast<Form*>(windowOf(GetAncestor(under, GA_ROOT)));
    if (form && form->isEnabled()) message.hwnd = under;
}

}  // namespace

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

void showTitleBar(const Window& window, bool show) {
    const LONG style = GetWindowLongW(window.handle(), GWL_STYLE);
    const LONG wanted = show ? style | WS_CAPTION : style & ~WS_CAPTION;
    if (wanted == style) return;  // redrawing the frame takes milliseconds
    SetWindowLongW(window.handle(), GWL_STYLE, wanted);
    SetWindowPos(window.handle(), nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_FRAMECHANGED);
}

}  // namespace tunovka
