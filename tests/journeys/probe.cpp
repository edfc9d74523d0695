// The journeys' eyes inside Windows: reads questions from standard input, one a line, a command and
// a window's number, and answers each with rows and an empty line, in UTF-8; each field of a row is
// followed by a tab. What people see and do goes through the screen; this tells where on the screen
// things are and what they say.
#include <windows.h>
// windows.h first: these need its types.
#include <commctrl.h>

#include <fcntl.h>
#include <io.h>
#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr wchar_t kName[] = L"Tunovka.name";

void tell(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t letter) { return letter < L' '; }, L' ');
    std::fputws((text + L'\t').c_str(), stdout);
}
void tell(LONG number) {
    tell(std::to_wstring(number));
}
void tell(HWND window) {
    tell(HandleToLong(window));
}
void endRow(const RECT& place = {}) {
    for (const LONG edge : {place.left, place.top, place.right, place.bottom}) tell(edge);
    std::fputws(L"\n", stdout);
}

// Sends a message to another program's window; 0 when it does not answer within five seconds.
LRESULT ask(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wparam, lparam, SMTO_ABORTIFHUNG, 5000, &result);
    return static_cast<LRESULT>(result);
}

// Handle, top window, class, code name, visible, rectangle.
BOOL CALLBACK tellWindow(HWND window, LPARAM) {
    wchar_t kind[256] = L"", name[256] = L"";
    GetClassNameW(window, kind, 256);
    const auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropW(window, kName)));
    if (atom) GlobalGetAtomNameW(atom, name, 256);
    RECT place{};
    GetWindowRect(window, &place);
    tell(window);
    tell(GetAncestor(window, GA_ROOT));
    tell(kind);
    tell(name);
    tell(IsWindowVisible(window));
    endRow(place);
    return TRUE;
}

void tellText(HWND window) {
    std::wstring text(static_cast<size_t>(ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    tell(text.c_str());
    endRow();
}

// A page in the memory of the program that owns a tree or a list, for the messages whose structures
// the system does not carry. There is one program for each probe, and the page ends with it.
struct Page {
    explicit Page(HWND window) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        memory = static_cast<char*>(
            VirtualAllocEx(process, nullptr, 16384, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    }
    // Sends the message with a copy of the structure over there, and brings the copy back.
    template <class T>
    void exchange(HWND window, UINT message, WPARAM wparam, T& structure) const {
        WriteProcessMemory(process, memory, &structure, sizeof structure, nullptr);
        ask(window, message, wparam, reinterpret_cast<LPARAM>(memory));
        ReadProcessMemory(process, memory, &structure, sizeof structure, nullptr);
    }

    HANDLE process;
    char* memory;
};

// Text and rectangle, which its left side asks for.
template <class Item>
void tellItem(HWND control, UINT asksText, UINT asksPlace, WPARAM which, Item item, LONG asked) {
    static const Page page(control);
    struct {
        Item item;
        wchar_t text[2048];
    } told{item, L""};
    told.item.pszText = reinterpret_cast<wchar_t*>(page.memory + offsetof(decltype(told), text));
    told.item.cchTextMax = static_cast<int>(std::size(told.text));
    page.exchange(control, asksText, which, told);
    RECT place{asked, 0, 0, 0};
    page.exchange(control, asksPlace, which, place);
    MapWindowPoints(control, nullptr, reinterpret_cast<POINT*>(&place), 2);
    tell(told.text);
    endRow(place);
}

// A tree's nodes, but for those in collapsed ones, or a list's rows.
void tellItems(HWND control) {
    LRESULT node = ask(control, TVM_GETNEXTITEM, TVGN_ROOT);
    for (; node; node = ask(control, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, node)) {
        TVITEMW item{};
        item.mask = TVIF_TEXT;
        item.hItem = reinterpret_cast<HTREEITEM>(node);
        tellItem(control, TVM_GETITEMW, TVM_GETITEMRECT, TRUE, item, node);
    }
    const LRESULT rows = ask(control, LVM_GETITEMCOUNT);
    for (LRESULT row = 0; row < rows; ++row)
        tellItem(control, LVM_GETITEMTEXTW, LVM_GETITEMRECT, row, LVITEMW{}, LVIR_BOUNDS);
}

// The window with the keyboard, and whether a window is being moved.
void tellFocus() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(0, &info);
    tell(info.hwndFocus);
    tell((info.flags & GUI_INMOVESIZE) != 0);
    endRow();
}

}  // namespace

int wmain() {
    SetProcessDPIAware();  // coordinates as on the screen
    _setmode(_fileno(stdout), _O_U8TEXT);
    char words[16];
    long number = 0;
    while (std::scanf("%15s %ld", words, &number) == 2) {
        const std::string command = words;
        const HWND window = static_cast<HWND>(LongToHandle(number));
        if (command == "windows") EnumChildWindows(GetDesktopWindow(), tellWindow, 0);
        if (command == "focus") tellFocus();
        if (command == "text") tellText(window);
        if (command == "items") tellItems(window);
        std::fputws(L"\n", stdout);
        std::fflush(stdout);
    }
    return 0;
}
