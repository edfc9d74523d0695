#include "ui/frm_box.h"

#include <algorithm>
#include <cassert>
#include <deque>
#include <iterator>

#include "core/errors.h"
#include "core/loop.h"
#include "core/text.h"
#include "ui/painting.h"

namespace tunovka {

std::wstring BoxTitle, BoxText, BoxButtons;
std::int16_t BoxAnswer = 0;

namespace {

constexpr int kWidth = 400;
constexpr int kMargin = 16;
constexpr int kTextGap = 4;  // between text and buttons
constexpr int kButtonPadding = 8;
constexpr int kButtonGap = 6;
constexpr int kBottom = 3;
// Nobody reads a longer text, and the system's word wrap takes time by the square of its length.
constexpr std::size_t kLongestText = 4000;

std::wstring readable(const std::wstring& text) {
    return text.size() <= kLongestText ? text : text.substr(0, kLongestText) + L" …";
}

// The same text for the system's field, which knows CR LF alone as a line's end.
std::wstring fieldLines(const std::wstring& text) {
    std::wstring lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && text[i + 1] == L'\n') continue;
        const bool endsLine = text[i] == L'\r' || text[i] == L'\n';
        lines += endsLine ? L"\r\n" : text.substr(i, 1);
    }
    return lines;
}

int openBoxes = 0;
std::deque<BoxRequest> waitingNotices;

void showWaitingNotice() {
    if (openBoxes > 0 || waitingNotices.empty()) return;
    const BoxRequest notice = waitingNotices.front();
    waitingNotices.pop_front();
    ask(notice);
}

}  // namespace

std::int16_t ask(const std::wstring& title, const std::wstring& text, const std::wstring& buttons) {
    BoxTitle = title;
    BoxText = text;
    BoxButtons = buttons;
    BoxAnswer = 0;
    ++openBoxes;
    const std::shared_ptr<void> closed(nullptr, [](void*) {
        if (--openBoxes == 0) guarded([] { postToLoop(showWaitingNotice); });
    });
    frmBox box(activeForm(), title, text, buttons);
    box.showModal();
    return BoxAnswer = box.answer();
}

void notifyLater(const std::wstring& title, const std::wstring& text, const std::wstring& button) {
    waitingNotices.push_back({title, text, button});
    postToLoop(showWaitingNotice);
}

void installFailureNotice() {
    const auto report = [](const std::exception_ptr& failure) {
        const auto tell = [](const RuntimeError& error) {
            notifyLater(L"CHYBA", L"Chyba č. " + decimal(error.number) + L": " + error.description,
                        L"Rozumiem ...");
        };
        try {
            std::rethrow_exception(failure);
        } catch (const RuntimeError& error) {
            tell(error);
        } catch (const std::bad_alloc&) {
            tell(RuntimeError(kOutOfMemory));
        } catch (...) {  // a mistake of the program, such as a key that is not there
            assert(false);
            tell(RuntimeError(kInternalError));
        }
    };
    setFailureHandler(report);
}

frmBox::frmBox(HWND owner, const std::wstring& title, const std::wstring& text,
               const std::wstring& buttons)
    : Form({.name = L"frmBox", .title = trimBlanks(title), .size = {kWidth, 120}, .owner = owner}),
      lblotazka({.name = L"lblotazka", .caption = readable(text), .parent = this, .wraps = true}),
      lblpokus({.name = L"lblpokus", .caption = readable(text), .parent = this, .visible = false}),
      scrolled_({.name = L"txtotazka",
                 .text = fieldLines(readable(text)),
                 .parent = this,
                 .ground = colors().ground,
                 .wraps = true,
                 .scrollBar = true,
                 .visible = false}),
      lblnadpis(split(buttons, L';')) {
    scrolled_.setAccessibleName(trimBlanks(title));
    for (const std::wstring& caption : lblnadpis) addButton(caption);
    layoutCentred();
    Itlačítko.back()->focus();  // the one that refuses
}

void frmBox::addButton(const std::wstring& caption) {
    const auto number = static_cast<std::int16_t>(Itlačítko.size() + 1);
    const std::wstring name = L"Itlačítko" + decimal(number);
    Itlačítko.push_back(std::make_unique<Image>(captionButton(name.c_str(), caption, this)));
    Itlačítko.back()->onClick = [this, number] {
        answer_ = number;
        unload();
    };
}

// As many lines as the text's width on one line would fill, plus one, or more when wrapped.
int frmBox::textHeight(int width, int limit) {
    const double share = static_cast<double>(lblpokus.measured().width) / width;
    const int height = std::max(roundHalfEven(share + 1) * Skin::fontHeight(dpi()),
                                lblotazka.measured(width).height);
    scrolled_.setVisible(height > limit);
    lblotazka.setVisible(height <= limit);
    return std::min(height, limit);
}

// The arrows move between the answers.
bool frmBox::onShortcut(WORD key) {
    if (key != VK_LEFT && key != VK_RIGHT) return false;
    const auto at = std::ranges::find_if(Itlačítko, [](const auto& i) { return i->hasFocus(); });
    if (at == Itlačítko.end()) return false;
    if (key == VK_LEFT && at != Itlačítko.begin()) (*std::prev(at))->focus();
    if (key == VK_RIGHT && std::next(at) != Itlačítko.end()) (*std::next(at))->focus();
    return true;
}

// In centred rows, each as wide as its caption, but never wider than a row. Returns the lower edge.
int frmBox::placeButtons(int top, int inner) {
    const int height = buttonHeight(), gap = scaled(kButtonGap);
    std::vector<int> widths;
    for (const std::wstring& caption : lblnadpis) {
        const int width = measureText(caption, Skin::font(dpi())).width;
        widths.push_back(std::min(width + scaled(kButtonPadding), inner));
    }
    for (std::size_t first = 0, end = 0; first < widths.size(); top += height + gap) {
        int row = widths[end++];
        while (end < widths.size() && row + gap + widths[end] <= inner) row += gap + widths[end++];
        for (int left = (inner - row) / 2; first < end; left += widths[first++] + gap)
            Itlačítko[first]->setBounds({left, top, widths[first], height});
    }
    return top - gap;
}

Size frmBox::arrange(int title) {
    const int inner = scaled(kWidth), margin = scaled(kMargin);
    const int most = workArea().height - title - scaled(100);
    const int height = textHeight(inner - 2 * margin, most);
    const Rect text{margin, title + margin, inner - 2 * margin, height};
    lblotazka.setBounds(text);
    scrolled_.setBounds(text);
    return {inner, placeButtons(text.bottom() + scaled(kTextGap), inner) + scaled(kBottom)};
}

}  // namespace tunovka
