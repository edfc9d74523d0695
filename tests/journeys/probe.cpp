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

std::wstring number(LONG_PTR value) {
    return std::to_wstring(static_cast<long long>(value));
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

// A page in the memory of the program that owns a control, for the messages whose structures the
// system does not carry.
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
        const wchar_t empty = L'\0';
        WriteProcessMemory(process_, textPlace(), &empty, sizeof empty, nullptr);
        WriteProcessMemory(process_, page_, &structure, sizeof structure, nullptr);
        const LRESULT result = ask(window_, message, wparam, reinterpret_cast<LPARAM>(page_));
        ReadProcessMemory(process_, page_, &structure, sizeof structure, nullptr);
        return result;
    }
    // For the structure's text, and what has come there.
    static constexpr int kTextSize = 4096;
    wchar_t* textPlace() const { return reinterpret_cast<wchar_t*>(page_ + 1024); }
    std::wstring text() const {
        std::wstring result(kTextSize, L'\0');
        ReadProcessMemory(process_, textPlace(), result.data(), kTextSize * sizeof(wchar_t),
                          nullptr);
        return result.c_str();
    }
    void addPlace(Row& row, RECT rect) const {
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
    const HWND root = GetAncestor(window, GA_ROOT);
    Row row{number(reinterpret_cast<LONG_PTR>(window)), number(reinterpret_cast<LONG_PTR>(root)),
            kind, name, number(IsWindowVisible(window))};
    RECT rect{};
    GetWindowRect(window, &rect);
    addRect(row, rect);
    return row;
}

struct Search {
    DWORD program = 0;  // the process of the first window that has a name in the code
    Rows found;
};

BOOL CALLBACK findProgram(HWND window, LPARAM search) {
    if (!GetPropW(window, kName)) return TRUE;
    GetWindowThreadProcessId(window, &reinterpret_cast<Search*>(search)->program);
    return FALSE;
}

BOOL CALLBACK collectChild(HWND window, LPARAM search) {
    reinterpret_cast<Search*>(search)->found.push_back(describe(window));
    return TRUE;
}

// Every window belongs to a program, so a foreign one is left out before its children are asked.
BOOL CALLBACK collect(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != search.program) return TRUE;
    collectChild(window, parameter);
    EnumChildWindows(window, collectChild, parameter);
    return TRUE;
}

// All windows of the program, top windows in front first, each followed by its children.
Rows windows() {
    Search search;
    for (const auto step : {findProgram, collect})
        EnumWindows(step, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void addNodes(HWND tree, RemoteMemory& memory, HTREEITEM item, int level, Rows& rows) {
    const auto next = [&](WPARAM relation, HTREEITEM from) {
        return reinterpret_cast<HTREEITEM>(
            ask(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
    };
    for (; item; item = next(TVGN_NEXT, item)) {
        TVITEMW read{};
        read.mask = TVIF_TEXT | TVIF_STATE;
        read.hItem = item;
        read.stateMask = ~0u;
        read.pszText = memory.textPlace();
        read.cchTextMax = RemoteMemory::kTextSize;
        memory.exchange(TVM_GETITEMW, 0, read);
        Row row{memory.text(), number((read.state & TVIS_SELECTED) != 0), number(level),
                number((read.state & TVIS_EXPANDED) != 0)};
        // The message takes the item where it leaves the rectangle; none inside a collapsed node.
        RECT rect{};
        rect.left = static_cast<LONG>(reinterpret_cast<LONG_PTR>(item));
        if (memory.exchange(TVM_GETITEMRECT, TRUE, rect)) memory.addPlace(row, rect);
        rows.push_back(row);
        addNodes(tree, memory, next(TVGN_CHILD, item), level + 1, rows);
    }
}

// Text, selected, level, expanded and the rectangle, of rows the first two and that.
Rows items(HWND control) {
    Rows rows;
    RemoteMemory memory(control);
    if (describe(control)[2] == WC_TREEVIEWW) {
        const auto root = reinterpret_cast<HTREEITEM>(ask(control, TVM_GETNEXTITEM, TVGN_ROOT));
        addNodes(control, memory, root, 0, rows);
        return rows;
    }
    const int count = static_cast<int>(ask(control, LVM_GETITEMCOUNT));
    for (int at = 0; at < count; ++at) {
        LVITEMW read{};
        read.pszText = memory.textPlace();
        read.cchTextMax = RemoteMemory::kTextSize;
        memory.exchange(LVM_GETITEMTEXTW, static_cast<WPARAM>(at), read);
        const auto state = ask(control, LVM_GETITEMSTATE, static_cast<WPARAM>(at), LVIS_SELECTED);
        Row row{memory.text(), number(state != 0), L"0", L"0"};
        RECT rect{};
        rect.left = LVIR_BOUNDS;
        memory.exchange(LVM_GETITEMRECT, static_cast<WPARAM>(at), rect);
        memory.addPlace(row, rect);
        rows.push_back(row);
    }
    return rows;
}

// The window with the keyboard, and whether a window is being moved.
Row focus() {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(GetForegroundWindow(), nullptr), &info);
    return {number(reinterpret_cast<LONG_PTR>(info.hwndFocus)),
            number((info.flags & GUI_INMOVESIZE) != 0)};
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
    std::string result(all.size() * 3, '\0');
    result.resize(WideCharToMultiByte(CP_UTF8, 0, all.data(), static_cast<int>(all.size()),
                                      result.data(), static_cast<int>(result.size()), nullptr,
                                      nullptr));
    return result;
}

}  // namespace

int wmain() {
    SetProcessDPIAware();  // coordinates as on the screen
    _setmode(_fileno(stdout), _O_BINARY);
    std::vector<char> bytes(1 << 16);
    std::vector<wchar_t> line(1 << 16);
    while (std::fgets(bytes.data(), static_cast<int>(bytes.size()), stdin)) {
        MultiByteToWideChar(CP_UTF8, 0, bytes.data(), -1, line.data(),
                            static_cast<int>(line.size()));
        std::wstring command = line.data(), word;
        command.resize(std::min(command.find_first_of(L"\r\n"), command.size()));
        if (const auto tab = command.find(L'\t'); tab != command.npos) {
            word = command.substr(tab + 1);
            command.resize(tab);
        }
        std::fprintf(stdout, "%s\n", inUtf8(answer(command, word)).c_str());
        std::fflush(stdout);
    }
    return 0;
}
