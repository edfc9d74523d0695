// What every window owes a person without a mouse, or without eyes: the Tab key, names and roles,
// the wheel, edges to take hold of.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: it needs its types.
#include <oleacc.h>

#include <map>
#include <set>

#include "app/frm_o_programe.h"
#include "app/frm_prieskumnik.h"
#include "core/late_function.h"
#include "files/frm_info.h"
#include "files/frm_kopirovanie.h"
#include "player/media_control.h"
#include "search/frm_hladanie.h"
#include "support/editor_stage.h"
#include "ui/frm_box.h"
#include "ui/frm_vstup.h"

namespace tunovka {
namespace {

using Names = std::vector<std::wstring>;

// What a screen reader learns of a window, by the system's own road.
class ScreenReader {
  public:
    explicit ScreenReader(HWND window) {
        static const LateFunction<decltype(AccessibleObjectFromWindow)> ask(
            L"oleacc.dll", "AccessibleObjectFromWindow");
        static const IID id = {
            0x618736e0, 0x3c3d, 0x11cf, {0x81, 0x0c, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};
        if (ask) ask(window, static_cast<DWORD>(OBJID_CLIENT), id, object_.receiveVoid());
    }

    std::wstring name() const { return text(&IAccessible::get_accName); }
    std::wstring value() const { return text(&IAccessible::get_accValue); }
    std::wstring action() const { return text(&IAccessible::get_accDefaultAction); }
    void press() { object_->accDoDefaultAction(Variant(0L)); }
    long role() const { return number(&IAccessible::get_accRole); }
    long state() const { return number(&IAccessible::get_accState); }

  private:
    std::wstring text(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, BSTR*)) const {
        Variant answer;
        if (object_ && (object_.get()->*ask)(Variant(0L), &answer.bstrVal) == S_OK)
            answer.vt = VT_BSTR;
        return answer.toText();
    }
    long number(HRESULT (STDMETHODCALLTYPE IAccessible::*ask)(VARIANT, VARIANT*)) const {
        Variant answer;
        if (object_) (object_.get()->*ask)(Variant(0L), &answer);
        return static_cast<long>(answer.toNumber());
    }

    ComPtr<IAccessible> object_;
};

void pressTab(bool back) {
    BYTE keys[256]{};
    if (back) keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_TRUE(filterMessage(tab));
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
}

// Presses Tab until the focus is back where it was.
Names walk(bool back = false) {
    Names stops;
    const HWND start = GetFocus();
    do {
        const Window* focused = windowOf(GetFocus());
        if (!focused || stops.size() > 40) return {L"lost"};
        stops.push_back(focused->name());
        pressTab(back);
    } while (GetFocus() != start);
    return stops;
}

// Walks a form forwards and backwards, looks at everything that it has, and gives back the stops.
Names examine(Form& form) {
    SCOPED_TRACE(testing::PrintToString(form.name()));
    form.show();
    EXPECT_TRUE(
        runUntil([&] { return windowOf(GetFocus()) && GetActiveWindow() == form.handle(); }));
    const Names forwards = walk();
    Names backwards = walk(true);
    std::reverse(backwards.begin() + 1, backwards.end());
    EXPECT_EQ(backwards, forwards);

    Names interactive;
    for (const HWND handle : WindowList::below(form.handle())) {
        const Window* const control = windowOf(handle);
        if (!control || !IsWindowVisible(handle) || !IsWindowEnabled(handle)) continue;
        SCOPED_TRACE(testing::PrintToString(control->name()));
        const ScreenReader reader(handle);
        const bool isContainer = GetWindowLongW(handle, GWL_EXSTYLE) & WS_EX_CONTROLPARENT;
        if (!isContainer && !control->isSystemControl() && control->name() != L"Obdlznik") {
            EXPECT_NE(reader.role(), ROLE_SYSTEM_CLIENT);
        }
        const std::set<long> roles{ROLE_SYSTEM_PUSHBUTTON, ROLE_SYSTEM_SLIDER,
                                   ROLE_SYSTEM_SCROLLBAR, ROLE_SYSTEM_SEPARATOR};
        if (!control->isSystemControl() && !roles.contains(reader.role())) continue;
        EXPECT_FALSE(reader.name().empty());
        EXPECT_EQ((reader.state() & STATE_SYSTEM_FOCUSED) != 0, GetFocus() == handle);
        // The arrows of a picture scroll bar are for the mouse; its thumb takes their keys.
        if (control->name() != L"Ihore" && control->name() != L"Idole")
            interactive.push_back(control->name());
    }
    Names reached = forwards;
    std::ranges::sort(interactive);
    std::ranges::sort(reached);
    EXPECT_EQ(reached, interactive);
    return forwards;
}

class Ease : public EditorStage {};

void pressKeys(const Window& control, std::initializer_list<WPARAM> keys) {
    for (const WPARAM key : keys) pressKey(control, key);
}

TEST_F(Ease, StripsObeyTheKeysAndTellWhatTheyShow) {
    frmPrieskumnik explorer;
    explorer.load();
    PictureBox& volume = explorer.player.PicHlas;
    const ScreenReader reader(volume.handle());
    pressKeys(volume, {VK_END});
    EXPECT_EQ(reader.value(), L"100 %");
    EXPECT_EQ(explorer.player.mp.Volume(), 0);
    pressKeys(volume, {VK_DOWN, VK_LEFT, VK_NEXT, VK_UP});
    EXPECT_EQ(reader.value(), L"75 %");
    EXPECT_EQ(explorer.player.mp.Volume(), -1000);
    pressKeys(volume, {VK_HOME, VK_DOWN});
    EXPECT_EQ(explorer.player.mp.Volume(), -4000);
    turnWheel(volume, WHEEL_DELTA / 2);
    EXPECT_EQ(reader.value(), L"0 %");
    turnWheel(volume, WHEEL_DELTA / 2);
    EXPECT_EQ(reader.value(), L"5 %");
    clickAt(volume, {3, volume.clientSize().height / 4});
    EXPECT_EQ(reader.value(), L"75 %");

    PictureBox& boundary = explorer.splitter.Medzera;
    const int before = boundary.bounds().x;
    pressKeys(boundary, {VK_RIGHT});
    EXPECT_EQ(boundary.bounds().x, before + boundary.scaled(8));
    pressKeys(boundary, {VK_HOME, VK_HOME});
    EXPECT_LT(explorer.folders.strom.bounds().width, 16);
    pressKeys(boundary, {VK_END});
    EXPECT_LT(explorer.contents.Tview.bounds().width, 16);
    explorer.unload();
}

// Where the pointer can take hold of a form's edges and corners, nothing of the form may lie.
std::wstring edgesOf(const Form& form) {
    const Rect area = form.bounds();
    const LRESULT edges[3][3]{{HTTOPLEFT, HTTOP, HTTOPRIGHT},
                              {HTLEFT, HTCLIENT, HTRIGHT},
                              {HTBOTTOMLEFT, HTBOTTOM, HTBOTTOMRIGHT}};
    std::wstring answers;
    for (int place = 0; place < 9; ++place) {
        const int row = place / 3, column = place % 3;
        if (edges[row][column] == HTCLIENT) continue;
        const POINT at{area.x + (area.width - 1) * column / 2,
                       area.y + (area.height - 1) * row / 2};
        const LPARAM point = MAKELPARAM(at.x, at.y);
        const HWND under = WindowFromPoint(at);
        // A child that lies there lets what it does not want through.
        const bool through =
            under == form.handle() || SendMessageW(under, WM_NCHITTEST, 0, point) == HTTRANSPARENT;
        const LRESULT edge = SendMessageW(form.handle(), WM_NCHITTEST, 0, point);
        answers += through && edge == edges[row][column] ? L'+' : L'-';
    }
    return answers;
}

TEST_F(Ease, WindowsAreSizedAtEveryEdgeAndMinimised) {
    frmPrieskumnik explorer;
    explorer.load();
    frmhladanie search(program);
    for (Form* const form : std::initializer_list<Form*>{&explorer, &search, window.get()}) {
        form->show();
        SetWindowPos(form->handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
        EXPECT_EQ(edgesOf(*form), L"++++++++") << testing::PrintToString(form->name());
        const Rect before = form->bounds();
        form->setBounds({before.x, before.y, before.width + 50, before.height + 40});
        EXPECT_EQ(form->clientSize(), (Size{before.width + 50, before.height + 40}));
        ShowWindow(form->handle(), SW_MAXIMIZE);
        RECT screen{};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
        EXPECT_EQ(form->clientSize(), (Size{static_cast<int>(screen.right - screen.left),
                                            static_cast<int>(screen.bottom - screen.top)}));
        ShowWindow(form->handle(), SW_RESTORE);
    }
    frmOprograme about(nullptr);
    about.show();
    EXPECT_EQ(edgesOf(about), L"--------");

    Window& minimizer = control(explorer, L"Iminim");
    EXPECT_EQ(ScreenReader(minimizer.handle()).action(), L"Stlačiť");
    const std::function<void()> ways[]{[&] { pressAndRelease(minimizer); },
                                       [&] { ScreenReader(minimizer.handle()).press(); },
                                       [&] { explorer.tri.choose(L"miminalizovat"); }};
    for (const auto& minimise : ways) {
        minimise();
        EXPECT_TRUE(runUntil([&] { return IsIconic(explorer.handle()) != FALSE; }, 5000));
        ShowWindow(explorer.handle(), SW_RESTORE);
    }
    explorer.unload();
}

// The visible controls and where they are in their parents; all lie inside.
std::map<HWND, Rect> places(const Form& form) {
    std::map<HWND, Rect> found;
    for (const HWND handle : WindowList::below(form.handle())) {
        if (!IsWindowVisible(handle)) continue;
        RECT own{}, inside{}, both{};
        GetWindowRect(handle, &own);
        MapWindowPoints(nullptr, GetParent(handle), reinterpret_cast<POINT*>(&own), 2);
        GetClientRect(GetParent(handle), &inside);
        UnionRect(&both, &own, &inside);
        const Window* const window = windowOf(handle);
        const std::wstring name = window ? window->name() : L"a part of a control";
        EXPECT_TRUE(EqualRect(&both, &inside)) << testing::PrintToString(name);
        if (name != L"Iposuv") found[handle] = rectOf(own);  // that goes on from its last height
    }
    return found;
}

// Each kind of window, shown and full.
class EveryWindow : public Ease {
  protected:
    EveryWindow() {
        explorer.load();
        openLong();
        search.show();
        search.panel.begin();
        info.txtodkaz.setText(folder / L"a.mp3");
        for (Form* const form : forms()) form->show();
    }
    ~EveryWindow() override { explorer.unload(); }

    std::vector<Form*> forms() { return {&explorer, window.get(), &search, &info, &box}; }

    frmPrieskumnik explorer;
    frmhladanie search{program};
    frminfo info{nullptr};
    frmBox box{nullptr, L"Odkazy", std::wstring(3000, L'á') + L" otázka", L"ÁNO;NIE;STORNO"};
};

TEST_F(EveryWindow, LetsTabReachEveryControl) {
    frmBox scrolled(nullptr, L"T", std::wstring(3900, L'\r'), L"O.K.");
    frmVstup input(*window, {.title = L"Premenovať súbor", .prompt = L"Nový názov"});
    frmkopirovanie copying(*window, L"a.mp3");
    frmOprograme about(nullptr);
    for (Form* const form : forms()) examine(*form);
    for (Form* const form : std::initializer_list<Form*>{&scrolled, &input, &copying, &about})
        examine(*form);
    EXPECT_EQ(examine(explorer),
              (Names{L"Tview", L"Image1", L"Image2", L"Image3", L"Image4", L"Image5", L"PicProgres",
                     L"PicHlas", L"Iminim", L"Ikoniec", L"Drive1", L"strom", L"Medzera"}));
    EXPECT_EQ(examine(box), (Names{L"Itlačítko3", L"IZavri", L"Itlačítko1", L"Itlačítko2"}));
}

// Moved between screens of other dots per inch, and back at the first one it is as it was.
TEST_F(EveryWindow, FollowsItsScreen) {
    for (Form* const form : forms()) {
        SCOPED_TRACE(testing::PrintToString(form->name()));
        const auto before = places(*form);
        EXPECT_GT(before.size(), 2u);
        for (const int dpi : {144, 192, 96, form->dpi()}) {
            const Rect now = form->bounds();
            RECT area{now.x, now.y, now.x + MulDiv(now.width, dpi, form->dpi()),
                      now.y + MulDiv(now.height, dpi, form->dpi())};
            SendMessageW(form->handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                         reinterpret_cast<LPARAM>(&area));
            EXPECT_EQ(places(*form).size(), before.size()) << dpi;
            MINMAXINFO limits{};
            SendMessageW(form->handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
            EXPECT_TRUE(limits.ptMinTrackSize.x > 3 * dpi || form == &info || form == &box) << dpi;
        }
        EXPECT_EQ(places(*form), before);
    }
}

TEST_F(Ease, TheWheelTurnsWhatLiesUnderThePointer) {
    openLong();
    control(*window, L"IZavri").focus();
    const auto turnOver = [&](const Window& control) {
        const Point at = control.toScreen({2, 2});
        MSG wheel{GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), MAKELPARAM(at.x, at.y), 0,
                  {}};
        EXPECT_FALSE(filterMessage(wheel));
        DispatchMessageW(&wheel);
        return view().Lview.firstVisible();
    };
    const std::size_t first = turnOver(view().Lview);
    EXPECT_GT(first, 0u);
    EXPECT_GT(turnOver(view().scroller.Idole), first);
    EXPECT_EQ(turnOver(window->strip()), 2 * first);
}

TEST_F(EveryWindow, GrowsWithTheSystemsFont) {
    if (machinePath(L"C:\\").empty()) GTEST_SKIP() << "it would change the person's own desktop";
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const auto timesLarger = [&](int times) {
        NONCLIENTMETRICSW now = metrics;
        now.lfMessageFont.lfHeight *= times;
        SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof now, &now, 0);
        for (Form* const form : forms())
            SendMessageW(form->handle(), WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, 0);
    };
    std::map<Form*, std::map<HWND, Rect>> before;
    for (Form* const form : forms()) before[form] = places(*form);
    timesLarger(2);
    EXPECT_NE(places(explorer), before[&explorer]);
    const int letters = Skin::fontHeight(explorer.dpi());
    EXPECT_GE(window->Lview.rowHeight(), letters);
    EXPECT_GE(SendMessageW(explorer.contents.Tview.handle(), TVM_GETITEMHEIGHT, 0, 0), letters);
    for (Form* const form : forms())
        for (const auto& [handle, place] : places(*form))
            if (dynamic_cast<Label*>(windowOf(handle)) && place.height < letters)
                ADD_FAILURE() << testing::PrintToString(windowOf(handle)->name());
    timesLarger(1);
    for (Form* const form : forms()) EXPECT_EQ(places(*form), before[form]);
}

}  // namespace
}  // namespace tunovka
