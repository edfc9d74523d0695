#include "endurance/monkey.h"

#include <commctrl.h>
#include <shlobj.h>

#include <iostream>

#include "endurance/program.h"
#include "support/dialog_answers.h"
#include "support/window_names.h"

namespace tunovka {
namespace {

constexpr int kFolderTree = 14145;  // in the shell's folder dialog

// Asks a window of the other thread; 0 when it does not answer.
LRESULT ask(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) {
    DWORD_PTR answer = 0;
    if (!SendMessageTimeoutW(window, message, wparam, lparam, SMTO_NORMAL, Pulse::kPatience,
                             &answer) &&
        GetLastError() == ERROR_TIMEOUT)
        throw Hangs();
    return static_cast<LRESULT>(answer);
}

std::wstring textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

using Windows = std::vector<HWND>;

BOOL CALLBACK collect(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && IsWindowEnabled(window) && className(window) != TOOLTIPS_CLASSW)
        reinterpret_cast<Windows*>(found)->push_back(window);
    return TRUE;
}

// Those that take input, the front one first.
Windows topWindows(DWORD thread) {
    Windows found;
    EnumThreadWindows(thread, collect, reinterpret_cast<LPARAM>(&found));
    return found;
}

// All controls of a window that can be seen, but the list of drives.
Windows controls(HWND window) {
    Windows found;
    EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&found));
    std::erase_if(found, [](HWND one) {
        return codeName(one) == L"Drive1" || codeName(GetParent(one)) == L"Drive1";
    });
    return found;
}

HWND controlNamed(HWND window, const std::wstring& name) {
    for (const HWND control : controls(window))
        if (codeName(control) == name) return control;
    return nullptr;
}

GUITHREADINFO stateOf(DWORD thread) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(thread, &state);
    return state;
}

bool isPictureThatCloses(HWND window) {
    const std::wstring name = codeName(window);
    return name == L"Ikoniec" || name == L"Tlacitko" || name == L"IZavri" || name == L"Iminim";
}

bool isList(HWND window) {
    const std::wstring kind = className(window);
    return kind == WC_TREEVIEWW || kind == WC_LISTVIEWW;
}

}  // namespace

Monkey::Monkey(DWORD thread, Ground& ground, unsigned seed, int steps)
    : thread_(thread), ground_(ground), random_(seed), left_(steps) {}

void Monkey::did(const std::string& what) {
    if (loud_) std::cout << what << std::endl;
    doings_.push_back(what);
    if (doings_.size() > 40) doings_.pop_front();
}

std::string Monkey::lastDoings() const {
    std::string lines;
    for (const std::string& doing : doings_) lines += doing + "\n";
    return lines;
}

void Monkey::play() {
    while (left_ > 0 && !topWindows(thread_).empty()) {
        step();
        if (--left_ % 20 == 0) ground_.check(false);
    }
}

void Monkey::step() {
    hands_.rest();
    if (stateOf(thread_).flags & GUI_INMENUMODE) return chooseFromMenu();
    const Windows windows = topWindows(thread_);
    if (windows.empty()) return;
    const HWND front = windows.front();
    const std::wstring name = codeName(front);
    if (className(front) == L"#32770") return answerSystemDialog(front);
    if (name == L"frmBox") return answerBox(front, dice(4));
    if (name == L"frmVstup" && dice(4) > 0) return nameSomething();
    const HWND window = dice(5) > 0 ? front : oneOf(windows);
    if (IsIconic(window)) {
        did("restore");
        PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
        return;
    }
    if (dice(4) == 0)
        useKeys();
    else
        useMouse(window);
}

void Monkey::chooseFromMenu() {
    const bool chooses = dice(6) > 0;
    did(chooses ? "choose from menu" : "leave menu");
    if (!chooses) return hands_.press(VK_ESCAPE);
    for (int down = dice(9); down >= 0; --down) hands_.press(VK_DOWN);
    if (dice(3) == 0) {
        hands_.press(VK_RIGHT);
        for (int down = dice(6); down > 0; --down) hands_.press(VK_DOWN);
    }
    hands_.press(VK_RETURN);
}

// A name for a file to be saved, or a question to be answered. A dialog that does not go is
// cancelled in the end.
void Monkey::answerSystemDialog(HWND dialog) {
    tries_ = dialog == lastDialog_ ? tries_ + 1 : 0;
    lastDialog_ = dialog;
    WORD answer = tries_ > 3 || dice(3) == 0 ? IDCANCEL : IDOK;
    if (GetDlgItem(dialog, kFolderTree)) {
        const std::wstring folder = oneOf(ground_.folders());
        did("pick folder " + narrow(folder));
        ask(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(folder.c_str()));
    } else if (const HWND name = GetDlgItem(dialog, kNameBox)) {
        const std::wstring path = anyName();
        did("save as " + narrow(path));
        ask(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    } else {
        did("answer question");
        const std::vector<WORD> buttons{IDYES, IDNO, IDOK, IDCANCEL};
        answer = oneOf(buttons);
    }
    PostMessageW(dialog, WM_COMMAND, answer, 0);
}

// Button 0 is the close picture; one that the box has not got presses a key instead.
void Monkey::answerBox(HWND box, int button) {
    const HWND text = controlNamed(box, L"lblotazka");
    const std::wstring question = text ? textOf(text) : L"";
    did("box " + std::to_string(button) + ": " + narrow(question.substr(0, 100)));
    const auto from = question.find(L"odstrániť súbor '"), to = question.rfind(L'\'');
    if (button == 1 && from != question.npos)
        ground_.agreedToDelete(question.substr(from + 17, to - from - 17));
    const std::wstring name = L"Itlačítko" + std::to_wstring(button);
    if (button > 0 && !controlNamed(box, name))
        return hands_.press(dice(2) ? VK_ESCAPE : VK_RETURN);
    pressOnControl(box, button == 0 ? L"IZavri" : name);
}

void Monkey::pressOnControl(HWND form, const std::wstring& name) {
    const HWND control = controlNamed(form, name);
    RECT area{};
    if (!control || !GetWindowRect(control, &area)) return;
    hands_.click({(area.left + area.right) / 2, (area.top + area.bottom) / 2});
}

void Monkey::nameSomething() {
    const std::vector<std::wstring> names{
        L"nový", L"Ďalšia pieseň 歌",     L"a", L"con",   L"zlé:?*", L"  bodky...",
        L"a\\b", std::wstring(300, L'x'), L"",  L"plavba"};
    const std::wstring& name = oneOf(names);
    did("type " + narrow(name.substr(0, 20)));
    hands_.press('A', VK_CONTROL);
    hands_.type(name);
    hands_.press(dice(4) ? VK_RETURN : VK_ESCAPE);
}

// Mostly where there is something to do. Trees and lists are filled from the top left.
Monkey::Place Monkey::anyPlace(HWND window) {
    Windows places = controls(window);
    places.push_back(window);
    Windows lists = places;
    std::erase_if(lists, [](HWND one) { return !isList(one); });
    HWND place = oneOf(!lists.empty() && dice(3) > 0 ? lists : places);
    if (isPictureThatCloses(place) && dice(8) > 0) place = oneOf(places);
    RECT area{};
    GetClientRect(place, &area);
    if (isList(place)) {
        const bool isTree = className(place) == WC_TREEVIEWW;
        const auto rows = ask(place, isTree ? TVM_GETCOUNT : LVM_GETITEMCOUNT);
        area.right = std::min<LONG>(area.right, 180);
        area.bottom = std::min<LONG>(area.bottom, static_cast<LONG>(20 * (rows + 1)));
    }
    POINT point{dice(std::max<int>(area.right, 1)), dice(std::max<int>(area.bottom, 1))};
    ClientToScreen(place, &point);
    return {place, point};
}

void Monkey::useMouse(HWND window) {
    const Place at = anyPlace(window);
    const std::string where = narrow(codeName(window) + L"." + codeName(at.window)) + " " +
                              std::to_string(at.point.x) + "," + std::to_string(at.point.y);
    const int way = dice(20);
    if (way < 7) {
        did("click " + where);
        hands_.click(at.point);
    } else if (way < 11) {
        did("double click " + where);
        hands_.click(at.point, 2);
    } else if (way < 15) {
        did("right click " + where);
        hands_.clickRight(at.point);
    } else if (way < 19) {
        Windows targets = topWindows(thread_);
        targets.push_back(window);
        const Place to = anyPlace(oneOf(targets));
        did("drag " + where + " to " + narrow(codeName(to.window)) + " " +
            std::to_string(to.point.x) + "," + std::to_string(to.point.y));
        hands_.drag(at.point, to.point);
    } else {
        did("wheel " + where);
        hands_.turnWheel(at.point, dice(7) - 3);
    }
}

void Monkey::useKeys() {
    const HWND focus = stateOf(thread_).hwndFocus;
    if (codeName(focus) == L"Drive1") return hands_.press(VK_TAB);
    struct Key {
        WORD key, held = 0;
    };
    static const std::vector<Key> keys{
        {VK_UP},       {VK_DOWN},       {VK_DOWN},          {VK_LEFT},
        {VK_RIGHT},    {VK_RIGHT},      {VK_HOME},          {VK_END},
        {VK_NEXT},     {VK_PRIOR},      {VK_RETURN},        {VK_DELETE},
        {VK_F2},       {VK_F5},         {VK_ESCAPE},        {VK_TAB},
        {VK_SPACE},    {VK_APPS},       {VK_F10, VK_SHIFT}, {VK_TAB, VK_SHIFT},
        {'A'},         {'P'},           {VK_ADD},           {VK_SUBTRACT},
        {VK_MULTIPLY}, {VK_F4, VK_MENU}};
    const Key& key = oneOf(keys);
    if (key.key == VK_F4 && dice(4) > 0) return;  // closes a window
    did("key " + std::to_string(key.key) + (key.held ? "+" : "") + " in " +
        narrow(codeName(focus)));
    hands_.press(key.key, key.held);
}

std::wstring Monkey::anyName() {
    const std::vector<std::wstring> names{L"nový.m3u",    L"nový.pls",    L"nový.txt",
                                          L"nový.mp3",    L"bez prípony", L"zlé?.m3u",
                                          L"niet\\x.m3u", L"veľa.m3u",    L"a.wav"};
    return oneOf(ground_.folders()) + oneOf(names);
}

bool Monkey::leave() {
    did("leave");
    for (const DWORD start = GetTickCount(); GetTickCount() - start < Pulse::kPatience;) {
        hands_.rest();
        const Windows windows = topWindows(thread_);
        if (windows.empty()) return true;
        if (stateOf(thread_).flags & GUI_INMENUMODE)
            hands_.press(VK_ESCAPE);
        else if (className(windows.front()) == L"#32770")
            PostMessageW(windows.front(), WM_COMMAND, tries_++ % 2 ? IDNO : IDCANCEL, 0);
        else if (codeName(windows.front()) == L"frmBox")
            answerBox(windows.front(), controlNamed(windows.front(), L"Itlačítko2") ? 2 : 1);
        else
            PostMessageW(windows.front(), WM_CLOSE, 0, 0);
    }
    return false;
}

}  // namespace tunovka
