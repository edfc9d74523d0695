// What every window owes a person without a mouse, or without eyes: the Tab key, a visible focus,
// names and roles, the wheel.
#include <gtest/gtest.h>

#include "app/frm_o_programe.h"
#include "app/frm_prieskumnik.h"
#include "files/frm_info.h"
#include "files/frm_kopirovanie.h"
#include "search/frm_hladanie.h"
#include "support/editor_stage.h"
#include "support/person.h"
#include "support/scratch_folder.h"
#include "support/screen_reader.h"
#include "ui/box.h"
#include "ui/colors.h"
#include "ui/frm_box.h"
#include "ui/frm_vstup.h"
#include "ui/modal.h"

namespace tunovka {
namespace {

using Names = std::vector<std::wstring>;

bool isSystemControl(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    for (const wchar_t* known : {WC_TREEVIEWW, WC_LISTVIEWW, WC_COMBOBOXW, L"Edit"})
        if (lstrcmpiW(name, known) == 0) return true;
    return false;
}

bool isInteractive(HWND window) {
    if (isSystemControl(window)) return true;
    const long role = ScreenReader(window).role();
    return role == ROLE_SYSTEM_PUSHBUTTON || role == ROLE_SYSTEM_SLIDER ||
           role == ROLE_SYSTEM_SCROLLBAR || role == ROLE_SYSTEM_SEPARATOR;
}

std::vector<Window*> controlsOf(const Form& form) {
    std::vector<Window*> found;
    for (const HWND handle : WindowList::below(form.handle()))
        if (windowOf(handle) && IsWindowVisible(handle) && IsWindowEnabled(handle))
            found.push_back(windowOf(handle));
    return found;
}

// The arrows of a picture scroll bar are for the mouse; its thumb takes the keys of all three.
bool isScrollArrow(const Window& control) {
    return control.name() == L"Ihore" || control.name() == L"Idole";
}

// The colours of a control and around it, 0x00RRGGBB.
std::vector<std::uint32_t> look(const Form& form, const Window& control) {
    RedrawWindow(form.handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT area{};
    GetWindowRect(control.handle(), &area);
    MapWindowPoints(nullptr, form.handle(), reinterpret_cast<POINT*>(&area), 2);
    InflateRect(&area, 4, 4);
    const int width = area.right - area.left, height = area.bottom - area.top;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC screen = GetDCEx(form.handle(), nullptr, DCX_CACHE);  // with what lies on it
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto* first = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> pixels(first, first + width * height);
    for (std::uint32_t& pixel : pixels) pixel &= 0xFFFFFF;
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(form.handle(), screen);
    return pixels;
}

void pressTab(bool back) {
    BYTE keys[256]{};
    if (back) keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    MSG tab{GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_TRUE(filterMessage(tab));
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
}

// Presses Tab until the focus is back where it was; every stop must be seen.
Names walk(const Form& form, bool back = false) {
    Names stops;
    const HWND start = GetFocus();
    do {
        const Window* focused = windowOf(GetFocus());
        if (!focused || stops.size() > 40) return {L"lost"};
        stops.push_back(focused->name());
        const auto with = look(form, *focused);
        SetFocus(nullptr);
        EXPECT_TRUE(look(form, *focused) != with) << "no visible focus: stop " << stops.size();
        SetFocus(focused->handle());
        pressTab(back);
    } while (GetFocus() != start);
    return stops;
}

// Walks a shown form and looks at everything that it has.
void examine(Form& form, const Names& expected) {
    SCOPED_TRACE(testing::PrintToString(form.name()));
    ASSERT_TRUE(
        runUntil([&] { return windowOf(GetFocus()) && GetActiveWindow() == form.handle(); }));
    const Names forwards = walk(form);
    EXPECT_EQ(forwards, expected);
    Names backwards = walk(form, true);
    std::reverse(backwards.begin() + 1, backwards.end());
    EXPECT_EQ(backwards, forwards);

    Names interactive;
    for (const Window* control : controlsOf(form)) {
        SCOPED_TRACE(testing::PrintToString(control->name()));
        const ScreenReader reader(control->handle());
        const bool isContainer =
            GetWindowLongW(control->handle(), GWL_EXSTYLE) & WS_EX_CONTROLPARENT;
        if (!isContainer && !isSystemControl(control->handle()) && control->name() != L"Obdlznik") {
            EXPECT_NE(reader.role(), ROLE_SYSTEM_CLIENT);
        }
        if (!isInteractive(control->handle())) continue;
        EXPECT_FALSE(reader.name().empty());
        if (!isScrollArrow(*control)) interactive.push_back(control->name());
    }
    Names reached = forwards;
    std::ranges::sort(interactive);
    std::ranges::sort(reached);
    EXPECT_EQ(reached, interactive);
}

class Ease : public EditorStage {};

TEST_F(Ease, TabReachesEveryControlOfTheExplorer) {
    frmPrieskumnik explorer;
    explorer.load();
    explorer.contents.ListFolderContents(folder.path());
    examine(explorer,
            {L"Tview", L"Image1", L"Image2", L"Image3", L"Image4", L"Image5", L"PicProgres",
             L"PicHlas", L"Iminim", L"Ikoniec", L"Drive1", L"strom", L"Medzera"});
    explorer.unload();
}

TEST_F(Ease, TabReachesEveryControlOfTheLists) {
    std::wstring lines;
    for (int i = 0; i < 100; ++i) lines += L"a.mp3\r\n";
    open(lines);
    examine(*window, {L"Lview", L"Iposuv", L"IZavri"});

    frmhladanie search(program);
    std::vector<std::wstring> paths;
    for (int i = 0; i < 100; ++i) paths.push_back(std::to_wstring(i) + L"\\a.mp3");
    search.result.list(std::move(paths));
    search.Lview.setVisible(true);
    search.show();
    search.scroller.refresh();
    search.Lview.focus();
    examine(search, {L"Lview", L"Iposuv", L"Tlacitko"});
    search.Lview.setVisible(false);
    search.scroller.hide();
    search.panel.begin();
    examine(search, {L"Istop", L"Tlacitko"});
}

TEST_F(Ease, TabReachesEveryControlOfTheDialogs) {
    frmBox box(nullptr, L"Vymazať súbor", L"Otázka", L"ÁNO;NIE;STORNO");
    box.show();
    examine(box, {L"Itlačítko3", L"IZavri", L"Itlačítko1", L"Itlačítko2"});
    frmBox scrolled(nullptr, L"T", std::wstring(3900, L'\r'), L"O.K.");
    scrolled.show();
    examine(scrolled, {L"Itlačítko1", L"IZavri", L"txtotazka"});

    frmVstup input(*window, {.title = L"Premenovať súbor", .prompt = L"Nový názov"});
    input.show();
    examine(input, {L"txtodpoved", L"Iano", L"Izrusit", L"IZavri"});
    frmkopirovanie copying(*window, L"a.mp3");
    copying.show();
    examine(copying, {L"Izastavit"});
    frmOprograme about(nullptr);
    about.show();
    examine(about, {L"Tlacitko"});
    frminfo info(nullptr);
    info.txtodkaz.setText(folder / L"a.mp3");
    info.show();
    examine(info, {L"lblPath", L"lblvelkosť", L"lbldatvyt", L"lbldatzmena", L"lbldatotvor",
                   L"lbltitul", L"lblautor", L"lblalbum", L"lblrok", L"lblpoznamka", L"Tlacitko"});
}

void pressKeys(Window& control, std::initializer_list<WPARAM> keys) {
    for (const WPARAM key : keys) SendMessageW(control.handle(), WM_KEYDOWN, key, 1);
}

TEST_F(Ease, StripsObeyTheKeysAndTellWhatTheyShow) {
    frmPrieskumnik explorer;
    explorer.load();
    PictureBox& volume = explorer.player.PicHlas;
    const ScreenReader reader(volume.handle());
    pressKeys(volume, {VK_END});
    EXPECT_EQ(reader.value(), L"100 %");
    EXPECT_EQ(explorer.player.mp.Volume(), 0);
    const Announcements heard;
    pressKeys(volume, {VK_DOWN, VK_LEFT, VK_NEXT, VK_UP});
    EXPECT_EQ(reader.value(), L"75 %");
    EXPECT_EQ(explorer.player.mp.Volume(), -1000);
    pressKeys(volume, {VK_HOME, VK_DOWN});
    EXPECT_EQ(explorer.player.mp.Volume(), -4000);
    EXPECT_TRUE(runUntil([&] { return heard.has(EVENT_OBJECT_VALUECHANGE, volume.handle()); }));
    SendMessageW(volume.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA / 2), 0);
    EXPECT_EQ(reader.value(), L"0 %");
    SendMessageW(volume.handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA / 2), 0);
    EXPECT_EQ(reader.value(), L"5 %");

    PictureBox& boundary = explorer.splitter.Medzera;
    const int before = boundary.bounds().x;
    pressKeys(boundary, {VK_RIGHT});
    EXPECT_EQ(boundary.bounds().x, before + 8);
    pressKeys(boundary, {VK_HOME, VK_HOME});
    EXPECT_LT(explorer.folders.strom.bounds().width, 16);
    pressKeys(boundary, {VK_END});
    EXPECT_LT(explorer.contents.Tview.bounds().width, 16);
    explorer.unload();
}

TEST_F(Ease, TheThumbOfAListsScrollBarObeysTheKeys) {
    std::wstring lines;
    for (int i = 0; i < 100; ++i) lines += L"a.mp3\r\n";
    open(lines);
    PictureBox& thumb = view().scroller.Iposuv;
    const ListView& list = view().Lview;
    const auto page = static_cast<std::size_t>(list.rowsInView());
    const ScreenReader reader(thumb.handle());
    pressKeys(thumb, {VK_DOWN});
    EXPECT_EQ(list.firstVisible(), 1u);
    pressKeys(thumb, {VK_NEXT});
    EXPECT_EQ(list.firstVisible(), page);
    pressKeys(thumb, {VK_END});
    EXPECT_EQ(list.firstVisible(), 100 - page);
    EXPECT_EQ(reader.value(), L"100 %");
    pressKeys(thumb, {VK_PRIOR, VK_UP, VK_HOME});
    EXPECT_EQ(list.firstVisible(), 0u);
    EXPECT_EQ(reader.value(), L"0 %");
}

TEST_F(Ease, TheWheelTurnsWhatLiesUnderThePointer) {
    std::wstring lines;
    for (int i = 0; i < 100; ++i) lines += L"a.mp3\r\n";
    open(lines);
    window->IZavri.focus();
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
    EXPECT_EQ(turnOver(window->PicZahlavie), 2 * first);
}

TEST(EaseOfDialogs, AScreenReaderHearsWhatChangesAndAnswersTheBox) {
    Timer reader;
    reader.onTick = [&] {
        const Form* box = openForm(L"frmBox");
        if (!box || !GetFocus() || !IsChild(box->handle(), GetFocus())) return;
        reader.setInterval(0);
        const ScreenReader dialog(box->handle());
        EXPECT_EQ(dialog.role(), ROLE_SYSTEM_DIALOG);
        EXPECT_EQ(dialog.name(), L"Vymazať súbor");
        const Window& yes = *controlNamed(*box, L"Itlačítko1");
        const ScreenReader focused(GetFocus()), other(yes.handle());
        EXPECT_EQ(focused.name(), L"NIE");
        EXPECT_EQ(focused.state(), STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED);
        EXPECT_EQ(other.state(), STATE_SYSTEM_FOCUSABLE);
        EXPECT_TRUE(other.press());
    };
    reader.setInterval(10);
    EXPECT_EQ(ask(L"Vymazať súbor", L"Otázka", L"ÁNO;NIE"), 1);

    const Announcements heard;
    frmOprograme about(nullptr);
    about.show();
    about.lblverzia.setText(L"Verzia 2");
    EXPECT_TRUE(
        runUntil([&] { return heard.has(EVENT_OBJECT_NAMECHANGE, about.lblverzia.handle()); }));
    pressAndRelease(about.Tlacitko, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_FALSE(about.isClosing());
    EXPECT_TRUE(
        runUntil([&] { return heard.has(EVENT_OBJECT_STATECHANGE, about.Tlacitko.handle()); }));
    EXPECT_TRUE(runUntil([&] { return heard.has(EVENT_OBJECT_FOCUS, about.Tlacitko.handle()); }));
}

// Sets colours of the system for the length of a test.
class SystemColors {
  public:
    SystemColors(std::initializer_list<std::pair<int, Color>> colors) {
        for (const auto& [which, color] : colors) {
            names_.push_back(which);
            before_.push_back(GetSysColor(which));
            now_.push_back(color);
        }
        SetSysColors(static_cast<int>(names_.size()), names_.data(), now_.data());
    }
    ~SystemColors() {
        SetSysColors(static_cast<int>(names_.size()), names_.data(), before_.data());
    }

  private:
    std::vector<int> names_;
    std::vector<COLORREF> before_, now_;
};

TEST_F(Ease, HighContrastPaintsEverythingInTheSystemsColors) {
    open(L"missing.mp3\r\na.mp3\r\n");
    const auto paint = [&] {
        RedrawWindow(window->handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
    };
    const std::uint32_t skin = look(*window, view().lblpočet)[0];
    for (const Color ground : {0x000000u, 0xFFFFFFu}) {
        const Color ink = 0xFFFFFF - ground;
        const SystemColors chosen{{COLOR_WINDOW, ground},      {COLOR_WINDOWTEXT, ink},
                                  {COLOR_BTNFACE, ground},     {COLOR_BTNTEXT, ink},
                                  {COLOR_ACTIVECAPTION, ink},  {COLOR_CAPTIONTEXT, ground},
                                  {COLOR_HIGHLIGHT, 0x800080}, {COLOR_HIGHLIGHTTEXT, 0xFFFFFF}};
        chooseColors(true);
        const Color missing = shownText(MultiMedialny::palette().MissingEntryColor);
        EXPECT_NE(missing, shownText(0));
        EXPECT_GT(contrast(missing, ground), 4.5);
        paint();
        // Nothing of the skin is left around the texts, and the red is there.
        view().Lview.select(1);
        const auto labels = look(*window, view().lblpočet), rows = look(*window, view().Lview);
        EXPECT_EQ(labels[0], ground);
        EXPECT_EQ(std::ranges::count(labels, skin), 0);
        EXPECT_TRUE(std::ranges::any_of(rows, [](std::uint32_t pixel) {
            return (pixel >> 16 & 255) > (pixel >> 8 & 255) + 100 && (pixel & 255) < 150;
        }));
        SendMessageW(window->handle(), WM_SYSCOLORCHANGE, 0, 0);  // here it is off
        EXPECT_EQ(look(*window, view().lblpočet)[0], skin);
    }
}

}  // namespace
}  // namespace tunovka
