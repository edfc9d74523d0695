#include "ui/window.h"

#include <commctrl.h>

#include <unordered_map>
#include <utility>

#include "core/errors.h"
#include "core/late_function.h"
#include "core/loop.h"
#include "ui/form.h"
#include "ui/painting.h"
#include "ui/skin.h"

namespace tunovka {
namespace {

constexpr wchar_t kNameProperty[] = L"Tunovka.name";

// Which object owns which system window; a property of the window would cost a system call.
std::unordered_map<HWND, Window*> owners;

// A window class of the program's own.
const wchar_t* ownClass(WNDPROC procedure, bool shadow) {
    static ATOM classes[2]{};
    const wchar_t* name = shadow ? L"Tunovka.Window.Shadow" : L"Tunovka.Window";
    if (classes[shadow]) return name;
    WNDCLASSEXW type{.cbSize = sizeof type};
    type.style = CS_DBLCLKS | (shadow ? CS_DROPSHADOW : 0u);
    type.lpfnWndProc = procedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    type.hIcon = LoadIconW(type.hInstance, MAKEINTRESOURCEW(1));
    type.lpszClassName = name;
    classes[shadow] = RegisterClassExW(&type);
    return name;
}

}  // namespace

void prepareSystemControls() {
    static const LateFunction<decltype(InitCommonControlsEx)> prepare(L"comctl32.dll",
                                                                      "InitCommonControlsEx");
    constexpr INITCOMMONCONTROLSEX kClasses{
        sizeof kClasses,
        ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
    static const bool ready = prepare && prepare(&kClasses);
    (void)ready;
}

Window* windowOf(HWND handle) {
    const auto found = owners.find(handle);
    return found == owners.end() ? nullptr : found->second;
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
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

Point pointOf(POINT point) {
    return {point.x, point.y};
}

Point pointOf(LPARAM lparam) {
    return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

// For each button a press, a release and a double click follow each other.
MouseButton buttonOf(UINT message) {
    return static_cast<MouseButton>(1 + (message - WM_LBUTTONDOWN) / 3);
}

bool isRelease(UINT message) {
    return message == WM_LBUTTONUP || message == WM_RBUTTONUP || message == WM_MBUTTONUP;
}

bool isPress(UINT message) {
    return message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK && !isRelease(message);
}

Window::Window(const Args& args)
    : waiting_(std::make_unique<Args>(args)), form_(args.parent->form_), name_(args.name) {}

void Window::createWaiting() {
    if (!waiting_) return;
    const std::unique_ptr<Args> args = std::move(waiting_);
    args->parent->createWaiting();
    create(*args);
    prepare();
    applyFont();
    if (onCreated) onCreated();
}

void Window::applyFont() {
    if (!isSystemControl() || font_ == Skin::font(dpi())) return;
    font_ = Skin::font(dpi());
    send(WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    onFont();
}

void Window::create(const Args& args) {
    if (args.className) prepareSystemControls();
    if (name_.empty()) name_ = args.name;  // that of a control is gone
    // The system gives a sizable window its shadow itself, and a control may have none.
    const bool shadow = (args.style & WS_POPUP) && !(args.style & WS_THICKFRAME);
    const DWORD style = args.style | WS_CLIPSIBLINGS | (args.visible ? WS_VISIBLE : 0u) |
                        (args.tabStop ? WS_TABSTOP : 0u);
    handle_ = CreateWindowExW(
        args.exStyle, args.className ? args.className : ownClass(ownProcedure, shadow),
        args.text.c_str(), style, args.bounds.x, args.bounds.y, args.bounds.width,
        args.bounds.height, args.parent ? args.parent->handle() : args.owner, nullptr,
        GetModuleHandleW(nullptr), nullptr);
    if (!handle_) throw RuntimeError(kOutOfMemory);
    SetPropW(handle_, kNameProperty,
             reinterpret_cast<HANDLE>(UINT_PTR{GlobalAddAtomW(name_.c_str())}));
    owners[handle_] = this;
    // The system's own way of subclassing costs too much for a tree of thousands of nodes.
    if (args.className)
        original_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ownProcedure)));
}

Window::~Window() {
    if (!handle_) return;
    owners.erase(handle_);
    if (const auto atom = RemovePropW(handle_, kNameProperty))
        GlobalDeleteAtom(static_cast<ATOM>(reinterpret_cast<UINT_PTR>(atom)));
    DestroyWindow(handle_);
}

LRESULT CALLBACK Window::ownProcedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    if (Window* window = windowOf(handle)) return window->route(message, wparam, lparam);
    // Its object is not bound to it yet, or not any more: the window's class answers. A form's
    // frame has no place from the start.
    const auto ofClass = reinterpret_cast<WNDPROC>(GetClassLongPtrW(handle, GCLP_WNDPROC));
    if (ofClass != ownProcedure) return CallWindowProcW(ofClass, handle, message, wparam, lparam);
    return message == WM_NCCALCSIZE ? 0 : DefWindowProcW(handle, message, wparam, lparam);
}

LRESULT Window::route(UINT message, WPARAM wparam, LPARAM lparam) {
    const Form::Depth alive(form_);  // and with it this window
    std::optional<LRESULT> result;
    guarded([&] { result = answer(message, wparam, lparam); });
    return result ? *result : defaultProcedure(message, wparam, lparam);
}

std::optional<LRESULT> Window::answer(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_MOUSEMOVE && !tip_.empty()) form_->offerTip(*this, tip_, wparam, lparam);
    std::optional<LRESULT> answer = reflect(message, wparam, lparam);
    if (!answer) answer = onMessage(message, wparam, lparam);
    if (!answer && message == WM_GETOBJECT && describe())
        answer = accessibleAnswer(handle_, wparam, lparam);
    if ((message == WM_SETFOCUS || message == WM_KILLFOCUS) && isSystemControl())
        form_->repaintAround(*this);
    return answer;
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

void Window::paintOver(HDC dc, HWND control) const {
    const Window* behind = this == form_ ? nullptr : windowOf(GetParent(handle_));
    if (behind) behind->paintOver(dc, control);
    const SavedDc saved(dc);
    POINT origin{0, 0};
    MapWindowPoints(control, handle_, &origin, 1);
    OffsetViewportOrgEx(dc, -origin.x, -origin.y, nullptr);
    paint(dc);
}

std::optional<LRESULT> Window::onMessage(UINT message, WPARAM, LPARAM) {
    if (isSystemControl()) return std::nullopt;
    switch (message) {
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            const PaintDc buffer(handle_, this != form_);
            paintOver(buffer.dc(), handle_);
            if (hasFocus() && this != form_)
                drawFocus(buffer.dc(), toRECT(clientArea()), scaled(1));
            return 0;
        }
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            invalidate();
            return 0;
        default:
            return std::nullopt;
    }
}

std::optional<AccessibleFacts> Window::describe() const {
    if (accessibleName_.empty()) return std::nullopt;
    return AccessibleFacts{.name = accessibleName_};
}

Rect Window::bounds() const {
    if (waiting_) return waiting_->bounds;
    RECT area{};
    GetWindowRect(handle_, &area);
    if (this != form_)
        MapWindowPoints(nullptr, GetParent(handle_), reinterpret_cast<POINT*>(&area), 2);
    return rectOf(area);
}

Size Window::clientSize() const {
    RECT area{};
    GetClientRect(handle_, &area);
    return {area.right, area.bottom};
}

void Window::setBounds(const Rect& bounds) {
    if (waiting_) {
        waiting_->bounds = bounds;
        if (bounds.width > 0 && bounds.height > 0) createWaiting();
        return;
    }
    if (bounds == this->bounds()) return;
    const bool framed = isSystemControl() && hasFocus();  // on its form
    if (framed) form_->repaintAround(*this);
    SetWindowPos(handle_, nullptr, bounds.x, bounds.y, bounds.width, bounds.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    if (framed) form_->repaintAround(*this);
}

void Window::setVisible(bool visible) {
    if (waiting_)
        waiting_->visible = visible;
    else
        ShowWindow(handle_, visible ? SW_SHOWNA : SW_HIDE);
}
bool Window::isVisible() const {
    return waiting_ ? waiting_->visible : GetWindowLongW(handle_, GWL_STYLE) & WS_VISIBLE;
}
void Window::setTabPlace(HWND after) {
    const bool isThere = after == HWND_BOTTOM ? !GetWindow(handle_, GW_HWNDNEXT)
                                              : GetWindow(handle_, GW_HWNDPREV) == after;
    if (isThere) return;
    SetWindowPos(handle_, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}
std::wstring Window::text() const {
    if (waiting_) return waiting_->text;
    std::wstring text(GetWindowTextLengthW(handle_), L'\0');
    if (!text.empty())
        text.resize(GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()) + 1));
    return text;
}

void Window::setText(const std::wstring& text) {
    if (text == this->text()) return;
    if (waiting_) return void(waiting_->text = text);
    SetWindowTextW(handle_, text.c_str());
    if (isSystemControl()) return;
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, handle_, OBJID_CLIENT, CHILDID_SELF);
    invalidate();
}

int Window::dpi() const {
    return form_->dpiOfForm();
}
int Window::scaled(int units) const {
    return MulDiv(units, dpi(), 96);
}

bool Window::isUnderPointer() const {
    POINT place{};
    GetCursorPos(&place);
    return clientArea().contains(fromScreen(pointOf(place)));
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
