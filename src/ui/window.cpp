#include "ui/window.h"

#include <commctrl.h>

#include <unordered_map>
#include <utility>

#include "core/errors.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "ui/accessible.h"

namespace tunovka {
namespace {

constexpr wchar_t kClassName[] = L"Tunovka.Window";
constexpr wchar_t kShadowClassName[] = L"Tunovka.Window.Shadow";
constexpr wchar_t kNameProperty[] = L"Tunovka.name";

// Which object owns which system window; a property of the window would cost a system call.
std::unordered_map<HWND, Window*>& owners() {
    static std::unordered_map<HWND, Window*> map;
    return map;
}

// The classes of the system's controls. Their library is loaded with the first of them: that is a
// good part of a program's start, and the explorer's first picture needs none.
void prepareSystemControls() {
    static const bool ready = [] {
        const LateFunction<decltype(InitCommonControlsEx)> prepare(L"comctl32.dll",
                                                                   "InitCommonControlsEx");
        const INITCOMMONCONTROLSEX classes{
            sizeof classes,
            ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
        return prepare && prepare(&classes);
    }();
    (void)ready;
}

void registerOwnClass(WNDPROC procedure) {
    static bool registered = false;
    if (registered) return;
    WNDCLASSEXW type{};
    type.cbSize = sizeof type;
    type.style = CS_DBLCLKS;
    type.lpfnWndProc = procedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    type.hIcon = LoadIconW(type.hInstance, MAKEINTRESOURCEW(1));
    type.lpszClassName = kClassName;
    RegisterClassExW(&type);
    type.style |= CS_DROPSHADOW;
    type.lpszClassName = kShadowClassName;
    RegisterClassExW(&type);
    registered = true;
}

// The system gives a sizable window its shadow itself, and a control may have none.
const wchar_t* ownClass(DWORD style) {
    return (style & WS_POPUP) && !(style & WS_THICKFRAME) ? kShadowClassName : kClassName;
}

}  // namespace

Window* windowOf(HWND handle) {
    const auto found = owners().find(handle);
    return found == owners().end() ? nullptr : found->second;
}

int dpiOf(HWND window) {
    static const LateFunction<UINT WINAPI(HWND)> ofWindow(L"user32.dll", "GetDpiForWindow");
    static const LateFunction<HRESULT WINAPI(HMONITOR, int, UINT*, UINT*)> ofMonitor(
        L"shcore.dll", "GetDpiForMonitor");  // Windows 8.1 and the first 10
    UINT dpi = window && ofWindow ? ofWindow(window) : 0, vertical = 0;
    if (dpi == 0 && window && ofMonitor)
        ofMonitor(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), 0, &dpi, &vertical);
    if (dpi != 0) return static_cast<int>(dpi);
    const HDC screen = GetDC(nullptr);
    dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return static_cast<int>(dpi);
}

RECT toRECT(const Rect& rect) {
    return {rect.x, rect.y, rect.right(), rect.bottom()};
}

Rect rectOf(const RECT& rect) {
    return {static_cast<int>(rect.left), static_cast<int>(rect.top),
            static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}

Point pointOf(POINT point) {
    return {static_cast<int>(point.x), static_cast<int>(point.y)};
}

Point pointerPlace() {
    POINT place{};
    GetCursorPos(&place);
    return pointOf(place);
}

Point pointOf(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

MouseButton buttonOf(UINT message) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_LBUTTONDBLCLK:
            return MouseButton::Left;
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_RBUTTONDBLCLK:
            return MouseButton::Right;
        case WM_MBUTTONDOWN:
        case WM_MBUTTONUP:
        case WM_MBUTTONDBLCLK:
            return MouseButton::Middle;
        default:
            return MouseButton::None;
    }
}

Window::Window(const Args& args)
    : waiting_(std::make_unique<Args>(args)), host_(args.parent->host_), name_(args.name) {}

void Window::createWaiting() {
    if (!waiting_) return;
    const std::unique_ptr<Args> args = std::move(waiting_);
    args->parent->createWaiting();
    create(*args);
    prepare();
    if (onCreated) onCreated();
}

Window::~Window() {
    destroy();
}

void Window::create(const Args& args) {
    if (args.className) prepareSystemControls();
    if (name_.empty()) name_ = args.name;  // that of a control is gone
    registerOwnClass(ownProcedure);
    handle_ = CreateWindowExW(args.exStyle, args.className ? args.className : ownClass(args.style),
                              args.text.c_str(), args.style | WS_CLIPSIBLINGS, args.bounds.x,
                              args.bounds.y, args.bounds.width, args.bounds.height,
                              args.parent ? args.parent->handle() : args.owner, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
    if (!handle_) throw RuntimeError(kOutOfMemory);
    SetPropW(handle_, kNameProperty,
             reinterpret_cast<HANDLE>(UINT_PTR{GlobalAddAtomW(name_.c_str())}));
    owners()[handle_] = this;
    // The system's own way of subclassing costs two property look-ups a message, which is much for
    // a tree of thousands of nodes.
    if (args.className)
        original_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ownProcedure)));
}

void Window::destroy() {
    const HWND handle = std::exchange(handle_, nullptr);
    if (!handle) return;
    owners().erase(handle);
    if (const auto atom = RemovePropW(handle, kNameProperty))
        GlobalDeleteAtom(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(atom)));
    DestroyWindow(handle);
}

LRESULT CALLBACK Window::ownProcedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    if (Window* window = windowOf(handle)) return window->route(message, wparam, lparam);
    // Its object is not bound to it yet, or has let go of it: the window's class answers.
    const auto ofClass = reinterpret_cast<WNDPROC>(GetClassLongPtrW(handle, GCLP_WNDPROC));
    return CallWindowProcW(ofClass == ownProcedure ? DefWindowProcW : ofClass, handle, message,
                           wparam, lparam);
}

LRESULT Window::route(UINT message, WPARAM wparam, LPARAM lparam) {
    // The form, and with it this window, stays alive until the message is answered.
    Host* const host = host_;
    if (host) host->enter();
    LRESULT result = 0;
    bool answered = false;
    guarded([&] { answered = answer(result, message, wparam, lparam); });
    if (!answered) result = defaultProcedure(message, wparam, lparam);
    if (host) host->leave();
    return result;
}

bool Window::answer(LRESULT& result, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_MOUSEMOVE && host_ && !tip_.empty())
        host_->offerTip(*this, tip_, wparam, lparam);
    std::optional<LRESULT> answer = reflect(message, wparam, lparam);
    if (!answer) answer = onMessage(message, wparam, lparam);
    if (!answer && message == WM_GETOBJECT && describe())
        answer = accessibleAnswer(handle_, wparam, lparam);
    if ((message == WM_SETFOCUS || message == WM_KILLFOCUS) && host_ && isSystemControl())
        host_->repaintAround(*this);
    if (answer) result = *answer;
    return answer.has_value();
}

std::optional<LRESULT> Window::reflect(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NOTIFY) {
        auto& header = *reinterpret_cast<NMHDR*>(lparam);
        Window* child = windowOf(header.hwndFrom);
        if (child && child != this) return child->onNotify(header).value_or(0);
    } else if (message == WM_COMMAND && lparam) {
        Window* child = windowOf(reinterpret_cast<HWND>(lparam));
        if (child && child != this) return child->onCommand(HIWORD(wparam));
    } else if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) {
        Window* child = windowOf(reinterpret_cast<HWND>(lparam));
        const HBRUSH ground = child ? child->onColors(reinterpret_cast<HDC>(wparam)) : nullptr;
        if (ground) return reinterpret_cast<LRESULT>(ground);
    }
    return std::nullopt;
}

LRESULT Window::defaultProcedure(UINT message, WPARAM wparam, LPARAM lparam) {
    return CallWindowProcW(original_, handle_, message, wparam, lparam);
}

std::optional<LRESULT> Window::onMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}
std::optional<AccessibleFacts> Window::describe() const {
    if (accessibleName_.empty()) return std::nullopt;
    return AccessibleFacts{.name = accessibleName_};
}
std::optional<LRESULT> Window::onNotify(NMHDR&) {
    return std::nullopt;
}
std::optional<LRESULT> Window::onCommand(WORD) {
    return std::nullopt;
}
HBRUSH Window::onColors(HDC) {
    return nullptr;
}

Rect Window::bounds() const {
    if (waiting_) return waiting_->bounds;
    RECT area{};
    GetWindowRect(handle_, &area);
    if (GetWindowLongW(handle_, GWL_STYLE) & WS_CHILD)
        MapWindowPoints(nullptr, GetParent(handle_), reinterpret_cast<POINT*>(&area), 2);
    return rectOf(area);
}

Size Window::clientSize() const {
    RECT area{};
    GetClientRect(handle_, &area);
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void Window::setBounds(const Rect& bounds) {
    if (waiting_) {
        waiting_->bounds = bounds;
        if (bounds.width > 0 && bounds.height > 0) createWaiting();
        return;
    }
    if (bounds == this->bounds()) return;
    SetWindowPos(handle_, nullptr, bounds.x, bounds.y, bounds.width, bounds.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Window::setVisible(bool visible) {
    if (waiting_)
        waiting_->style = visible ? waiting_->style | WS_VISIBLE : waiting_->style & ~WS_VISIBLE;
    else
        ShowWindow(handle_, visible ? SW_SHOWNA : SW_HIDE);
}
bool Window::isVisible() const {
    return (waiting_ ? waiting_->style : GetWindowLongW(handle_, GWL_STYLE)) & WS_VISIBLE;
}
void Window::setEnabled(bool enabled) {
    EnableWindow(handle_, enabled);
}
bool Window::isEnabled() const {
    return IsWindowEnabled(handle_);
}
void Window::focus() {
    if (handle_) SetFocus(handle_);
}
void Window::setTabPlace(HWND after) {
    const bool isThere = after == HWND_BOTTOM ? !GetWindow(handle_, GW_HWNDNEXT)
                                              : GetWindow(handle_, GW_HWNDPREV) == after;
    if (isThere) return;
    SetWindowPos(handle_, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}
void Window::invalidate() {
    if (handle_) InvalidateRect(handle_, nullptr, FALSE);
}

std::wstring Window::text() const {
    if (waiting_) return waiting_->text;
    std::wstring text(GetWindowTextLengthW(handle_), L'\0');
    if (!text.empty()) {
        const int length = GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()) + 1);
        text.resize(length);
    }
    return text;
}

void Window::setText(const std::wstring& text) {
    if (waiting_)
        waiting_->text = text;
    else
        SetWindowTextW(handle_, text.c_str());
}

int Window::dpi() const {
    return host_ ? host_->dpiOfForm() : dpiOf(handle_);
}
int Window::scaled(int units) const {
    return MulDiv(units, dpi(), 96);
}

bool Window::isUnderPointer() const {
    return clientArea().contains(fromScreen(pointerPlace()));
}

Point Window::toScreen(Point point) const {
    POINT place{point.x, point.y};
    ClientToScreen(handle_, &place);
    return pointOf(place);
}

Point Window::fromScreen(Point point) const {
    POINT place{point.x, point.y};
    ScreenToClient(handle_, &place);
    return pointOf(place);
}

}  // namespace tunovka
