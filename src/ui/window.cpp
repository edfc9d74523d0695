#include "ui/window.h"

#include <unordered_map>
#include <utility>

#include "core/errors.h"
#include "core/loop.h"
#include "ui/accessible.h"
#include "ui/common_controls.h"
#include "ui/dpi.h"
#include "ui/form.h"

namespace tunovka {
namespace {

constexpr wchar_t kClassName[] = L"Tunovka.Window";
constexpr wchar_t kNameProperty[] = L"Tunovka.name";

// Which object owns which system window; a property of the window would cost a system call.
std::unordered_map<HWND, Window*>& owners() {
    static std::unordered_map<HWND, Window*> map;
    return map;
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
    registered = true;
}

}  // namespace

Window* windowOf(HWND handle) {
    const auto found = owners().find(handle);
    return found == owners().end() ? nullptr : found->second;
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

Window::Window(const Args& args, Creation creation) : creation_(creation) {
    if (creation == Creation::Now) {
        create(args);
        return;
    }
    putOff_ = std::make_unique<Args>(args);
    name_ = args.name;
    if (args.parent) form_ = args.parent->form_;
}

void Window::appear() {
    if (!putOff_) return;
    const std::unique_ptr<Args> args = std::move(putOff_);
    if (args->parent) args->parent->appear();
    create(*args);
    onCreated();
}

void Window::appearWhenDue() {
    if (creation_ == Creation::PutOff) return;
    if (creation_ == Creation::WithText && putOff_->text.empty()) return;
    if (putOff_->bounds.width > 0 && putOff_->bounds.height > 0) appear();
}

Window::Window(Window&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)),
      putOff_(std::move(other.putOff_)),
      creation_(other.creation_),
      form_(other.form_),
      original_(other.original_),
      name_(std::move(other.name_)),
      accessibleName_(std::move(other.accessibleName_)),
      tip_(std::move(other.tip_)) {
    bind();
}

Window& Window::operator=(Window&& other) noexcept {
    if (this != &other) {
        destroy();
        handle_ = std::exchange(other.handle_, nullptr);
        putOff_ = std::move(other.putOff_);
        creation_ = other.creation_;
        form_ = other.form_;
        original_ = other.original_;
        name_ = std::move(other.name_);
        accessibleName_ = std::move(other.accessibleName_);
        tip_ = std::move(other.tip_);
        bind();
    }
    return *this;
}

Window::~Window() {
    destroy();
}

void Window::create(const Args& args) {
    if (args.className) CommonControls::prepare();
    name_ = args.name;
    if (args.parent) form_ = args.parent->form_;
    registerOwnClass(ownProcedure);
    handle_ = CreateWindowExW(args.exStyle, args.className ? args.className : kClassName,
                              args.text.c_str(), args.style | WS_CLIPSIBLINGS, args.bounds.x,
                              args.bounds.y, args.bounds.width, args.bounds.height,
                              args.parent ? args.parent->handle() : args.owner, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
    if (!handle_) throw RuntimeError(kOutOfMemory);
    SetPropW(handle_, kNameProperty,
             reinterpret_cast<HANDLE>(UINT_PTR{GlobalAddAtomW(name_.c_str())}));
    bind();
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

void Window::bind() {
    if (handle_) owners()[handle_] = this;
}

LRESULT CALLBACK Window::ownProcedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    if (Window* window = windowOf(handle)) return window->route(message, wparam, lparam);
    // A window without its object, yet or already: its class deals with it.
    const auto ofClass = reinterpret_cast<WNDPROC>(GetClassLongPtrW(handle, GCLP_WNDPROC));
    return CallWindowProcW(ofClass == ownProcedure ? DefWindowProcW : ofClass, handle, message,
                           wparam, lparam);
}

LRESULT Window::route(UINT message, WPARAM wparam, LPARAM lparam) {
    // The form, and with it this window, stays alive until the message is answered.
    const Form::Depth depth(form_);
    LRESULT result = 0;
    bool answered = false;
    guarded([&] { answered = answer(result, message, wparam, lparam); });
    return answered ? result : defaultProcedure(message, wparam, lparam);
}

bool Window::answer(LRESULT& result, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_MOUSEMOVE && !tip_.empty()) form_->offerTip(*this, tip_, wparam, lparam);
    std::optional<LRESULT> answer = reflect(message, wparam, lparam);
    if (!answer) answer = onMessage(message, wparam, lparam);
    if (!answer && message == WM_GETOBJECT && describe())
        answer = accessibleAnswer(handle_, wparam, lparam);
    if ((message == WM_SETFOCUS || message == WM_KILLFOCUS) && form_ && isSystemControl())
        form_->repaintAround(*this);
    if (answer) result = *answer;
    return answer.has_value();
}

std::optional<LRESULT> Window::reflect(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NOTIFY) {
        auto& header = *reinterpret_cast<NMHDR*>(lparam);
        Window* child = windowOf(header.hwndFrom);
        if (child && child != this) return child->onNotify(header);
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

Form& Window::form() const {
    if (!form_) throw RuntimeError(kInvalidCall, name_);
    return *form_;
}

Rect Window::bounds() const {
    if (putOff_) return putOff_->bounds;
    RECT area{};
    GetWindowRect(handle_, &area);
    if (GetWindowLongW(handle_, GWL_STYLE) & WS_CHILD)
        MapWindowPoints(nullptr, GetParent(handle_), reinterpret_cast<POINT*>(&area), 2);
    return {static_cast<int>(area.left), static_cast<int>(area.top),
            static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)};
}

Size Window::clientSize() const {
    RECT area{};
    GetClientRect(handle_, &area);
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

void Window::setBounds(const Rect& bounds) {
    if (putOff_) {
        putOff_->bounds = bounds;
        return appearWhenDue();
    }
    if (bounds == this->bounds()) return;
    SetWindowPos(handle_, nullptr, bounds.x, bounds.y, bounds.width, bounds.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Window::setVisible(bool visible) {
    if (putOff_)
        putOff_->style = visible ? putOff_->style | WS_VISIBLE : putOff_->style & ~WS_VISIBLE;
    else
        ShowWindow(handle_, visible ? SW_SHOWNA : SW_HIDE);
}
bool Window::isVisible() const {
    return (putOff_ ? putOff_->style : GetWindowLongW(handle_, GWL_STYLE)) & WS_VISIBLE;
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
    if (putOff_) return putOff_->text;
    std::wstring text(GetWindowTextLengthW(handle_), L'\0');
    if (!text.empty()) {
        const int length = GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()) + 1);
        text.resize(length);
    }
    return text;
}

void Window::setText(const std::wstring& text) {
    if (!putOff_) {
        SetWindowTextW(handle_, text.c_str());
        return;
    }
    putOff_->text = text;
    appearWhenDue();
}

int Window::dpi() const {
    return form_ ? form_->dpi_ : dpiOf(handle_);
}
int Window::scaled(int units) const {
    return scaledTo(dpi(), units);
}

Point Window::toScreen(Point point) const {
    POINT place{point.x, point.y};
    ClientToScreen(handle_, &place);
    return {static_cast<int>(place.x), static_cast<int>(place.y)};
}

Point Window::fromScreen(Point point) const {
    POINT place{point.x, point.y};
    ScreenToClient(handle_, &place);
    return {static_cast<int>(place.x), static_cast<int>(place.y)};
}

}  // namespace tunovka
