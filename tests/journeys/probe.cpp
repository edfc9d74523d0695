// The journeys' eyes inside Windows: reads commands from standard input, one a line, words
// separated by tabs, and answers each with one line of rows separated by "\x1e", the fields of a
// row separated by tabs, all in UTF-8. What people see and do goes through the screen; this tells
// where on the screen things are and what they say.
#include <windows.h>
// windows.h first: these need its types.
#include <commctrl.h>

#include <fcntl.h>
#include <io.h>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using Row = std::vector<std::wstring>;
using Rows = std::vector<Row>;

constexpr wchar_t kName[] = L"Tunovka.name";

template <typename Value>
std::wstring number(Value value) {
    return std::to_wstring((LONG_PTR)value);
}

void addRect(Row& row, const RECT& rect) {
    for (const LONG edge : {rect.left, rect.top, rect.right, rect.bottom})
        row.push_back(number(edge));
}

// Sends a message to another program's window; 0 when it does not answer within five seconds.
LRESULT ask(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wparam, lparam, SMTO_ABORTIFHUNG, 5000, &result);
    return static_cast<LRESULT>(result);
}

std::wstring textOf(HWND window) {
    const auto size = std::max<LRESULT>(ask(window, WM_GETTEXTLENGTH), 0);
    std::wstring text(static_cast<size_t>(size) + 1, L'\0');
    ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

// A page in the memory of the program that owns a tree or a list, for the messages whose structures
// the system does not carry.
class RemoteMemory {
  public:
    explicit RemoteMemory(HWND window) : window_(window) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process_ =
            OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
        page_ = static_cast<char*>(
            VirtualAllocEx(process_, nullptr, 16384, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    }
    ~RemoteMemory() {
        VirtualFreeEx(process_, page_, 0, MEM_RELEASE);
        CloseHandle(process_);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    // Sends the message with a copy of the structure over there, and brings the copy back.
    template <class T>
    LRESULT exchange(UINT message, WPARAM wparam, T& structure) {
        WriteProcessMemory(process_, page_, &structure, sizeof structure, nullptr);
        const LRESULT result = ask(window_, message, wparam, reinterpret_cast<LPARAM>(page_));
        ReadProcessMemory(process_, page_, &structure, sizeof structure, nullptr);
        return result;
    }
    // The same for a structure that asks for a text; gives that back.
    template <class T>
    std::wstring text(UINT message, WPARAM wparam, T& structure) {
        std::wstring text(4096, L'\0');
        const SIZE_T size = text.size() * sizeof(wchar_t);
        structure.pszText = reinterpret_cast<wchar_t*>(page_ + 1024);
        structure.cchTextMax = static_cast<int>(text.size());
        WriteProcessMemory(process_, structure.pszText, text.data(), size, nullptr);
        exchange(message, wparam, structure);
        ReadProcessMemory(process_, page_ + 1024, text.data(), size, nullptr);
        return text.c_str();
    }
    // Adds where an item is, which the rectangle's left side asks for; nothing when it is nowhere.
    void addPlace(Row& row, UINT message, WPARAM wparam, LONG asked) {
        RECT rect{asked, 0, 0, 0};
        if (!exchange(message, wparam, rect)) return;
        MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&rect), 2);
        addRect(row, rect);
    }

  private:
    HWND window_;
    HANDLE process_;
    char* page_;
};

// Handle, top window, class, code name, visible, rectangle.
Row describe(HWND window) {
    wchar_t kind[256] = L"", name[256] = L"";
    GetClassNameW(window, kind, 256);
    const auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropW(window, kName)));
    if (atom) GlobalGetAtomNameW(atom, name, 256);
    Row row{number(window), number(GetAncestor(window, GA_ROOT)), kind, name,
            number(IsWindowVisible(window))};
    RECT rect{};
    GetWindowRect(window, &rect);
    addRect(row, rect);
    return row;
}

struct Search {
    DWORD program = 0;  // the process of the first window that has a name in the code
    Rows found;
};

BOOL CALLBACK collectChild(HWND window, LPARAM search) {
    reinterpret_cast<Search*>(search)->found.push_back(describe(window));
    return TRUE;
}

BOOL CALLBACK findProgram(HWND window, LPARAM search) {
    if (!GetPropW(window, kName)) return TRUE;
    GetWindowThreadProcessId(window, &reinterpret_cast<Search*>(search)->program);
    return FALSE;
}

// Every window belongs to a program, so a foreign one is left out before its children are asked.
BOOL CALLBACK collect(HWND window, LPARAM search) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != reinterpret_cast<Search*>(search)->program) return TRUE;
    collectChild(window, search);
    EnumChildWindows(window, collectChild, search);
    return TRUE;
}

// All windows of the program, top windows in front first, each followed by its children.
Rows windows() {
    Search search;
    for (const auto step : {findProgram, collect})
        EnumWindows(step, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void addNodes(HWND tree, RemoteMemory& memory, WPARAM relation, LPARAM from, int level,
              Rows& rows) {
    while (const LPARAM item = ask(tree, TVM_GETNEXTITEM, relation, from)) {
        TVITEMW read{};
        read.mask = TVIF_TEXT | TVIF_STATE;
        read.hItem = reinterpret_cast<HTREEITEM>(item);
        read.stateMask = TVIS_EXPANDED;
        const std::wstring text = memory.text(TVM_GETITEMW, 0, read);
        Row row{text, number(level), number((read.state & TVIS_EXPANDED) != 0)};
        memory.addPlace(row, TVM_GETITEMRECT, TRUE, static_cast<LONG>(item));
        rows.push_back(row);
        addNodes(tree, memory, TVGN_CHILD, item, level + 1, rows);
        relation = TVGN_NEXT;
        from = item;
    }
}

// Of a tree's nodes and of a list's rows: text, level, expanded and the rectangle, which is not
// there inside a collapsed node.
Rows items(HWND control) {
    Rows rows;
    RemoteMemory memory(control);
    if (describe(control)[2] == WC_TREEVIEWW) {
        addNodes(control, memory, TVGN_ROOT, 0, 0, rows);
        return rows;
    }
    const auto count = static_cast<WPARAM>(ask(control, LVM_GETITEMCOUNT));
    for (WPARAM at = 0; at < count; ++at) {
        LVITEMW read{};
        Row row{memory.text(LVM_GETITEMTEXTW, at, read), L"0", L"0"};
        memory.addPlace(row, LVM_GETITEMRECT, at, LVIR_BOUNDS);
        rows.push_back(row);
    }
    return rows;
}

// The window with the keyboard, and whether a window is being moved.
Row focus() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(GetForegroundWindow(), nullptr), &info);
    return {number(info.hwndFocus), number((info.flags & GUI_INMOVESIZE) != 0)};
}

// Types the very letters, whatever keyboard the display believes in.
Row type(const std::wstring& text) {
    std::vector<INPUT> keys;
    for (const wchar_t letter : text)
        for (const DWORD up : {0ul, static_cast<DWORD>(KEYEVENTF_KEYUP)}) {
            INPUT key{};
            key.type = INPUT_KEYBOARD;
            key.ki.wScan = letter;
            key.ki.dwFlags = KEYEVENTF_UNICODE | up;
            keys.push_back(key);
        }
    const UINT sent = SendInput(static_cast<UINT>(keys.size()), keys.data(), sizeof(INPUT));
    return {number(sent == keys.size())};
}

Rows answer(const std::wstring& command, const std::wstring& word) {
    if (command == L"focus") return {focus()};
    if (command == L"windows") return windows();
    if (command == L"type") return {type(word)};
    const auto window = reinterpret_cast<HWND>(static_cast<UINT_PTR>(_wtoi64(word.c_str())));
    if (!IsWindow(window)) return {};
    if (command == L"text") return {{textOf(window)}};
    if (command == L"items") return items(window);
    // Posted, so that a window that opens a modal one does not hold up the journey.
    if (command == L"close") return {{number(PostMessageW(window, WM_CLOSE, 0, 0))}};
    return {};
}

std::string inUtf8(const Rows& rows) {
    std::wstring all;
    for (const Row& row : rows) {
        if (&row != &rows.front()) all += L'\x1e';
        for (const std::wstring& field : row) {
            if (&field != &row.front()) all += L'\t';
            for (const wchar_t letter : field) all += letter < L' ' ? L' ' : letter;
        }
    }
    std::string text(all.size() * 3, '\0');
    text.resize(WideCharToMultiByte(CP_UTF8, 0, all.data(), static_cast<int>(all.size()),
                                    text.data(), static_cast<int>(text.size()), nullptr, nullptr));
    return text;
}

}  // namespace

int wmain() {
    SetProcessDPIAware();  // coordinates as on the screen
    _setmode(_fileno(stdout), _O_BINARY);
    std::vector<char> bytes(1 << 16);
    std::vector<wchar_t> wide(1 << 16);
    while (std::fgets(bytes.data(), static_cast<int>(bytes.size()), stdin)) {
        MultiByteToWideChar(CP_UTF8, 0, bytes.data(), -1, wide.data(),
                            static_cast<int>(wide.size()));
        std::wstring line = wide.data();
        line.resize(std::min(line.find_first_of(L"\r\n"), line.size()));
        const auto tab = line.find(L'\t');
        const Rows rows = answer(line.substr(0, tab), line.substr(tab + 1));
        std::fprintf(stdout, "%s\n", inUtf8(rows).c_str());
        std::fflush(stdout);
    }
    return 0;
}
