// The journeys' eyes inside Windows: reads commands from standard input, one a line, words
// separated by tabs, and answers each with one line of JSON, all in UTF-8. What people see and do
// goes through the screen; this tells where on the screen things are and what they say.
#include <windows.h>

#include <commctrl.h>
#include <tlhelp32.h>

#include <fcntl.h>
#include <io.h>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "journeys/json.h"
#include "journeys/remote.h"
#include "support/window_names.h"

namespace tunovka {
namespace {

std::wstring windowText(HWND window) {
    return remoteText(window, WM_GETTEXTLENGTH, 0, WM_GETTEXT);
}

RECT onScreen(HWND window, RECT rect) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

Json describe(HWND window) {
    RECT rect{}, client{};
    GetWindowRect(window, &rect);
    GetClientRect(window, &client);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    return Json::object({{"hwnd", Json::of(window)},
                         {"parent", Json::of(style & WS_CHILD ? GetParent(window) : nullptr)},
                         {"owner", Json::of(GetWindow(window, GW_OWNER))},
                         {"pid", Json::of(static_cast<long long>(process))},
                         {"class", Json::of(className(window))},
                         {"name", Json::of(codeName(window))},
                         {"visible", Json::of(IsWindowVisible(window) != FALSE)},
                         {"enabled", Json::of(IsWindowEnabled(window) != FALSE)},
                         {"minimized", Json::of(IsIconic(window) != FALSE)},
                         {"rect", Json::of(rect)},
                         {"client", Json::of(onScreen(window, client))}});
}

std::vector<DWORD> processes(const std::wstring& program) {
    std::vector<DWORD> found;
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(list, &entry); more; more = Process32NextW(list, &entry))
        if (_wcsicmp(entry.szExeFile, program.c_str()) == 0) found.push_back(entry.th32ProcessID);
    CloseHandle(list);
    return found;
}

struct Search {
    std::vector<DWORD> of;
    std::vector<HWND> found;
};

BOOL CALLBACK collectChild(HWND window, LPARAM search) {
    reinterpret_cast<Search*>(search)->found.push_back(window);
    return TRUE;
}

// Every window belongs to a program, so a foreign one is left out before its children are asked.
BOOL CALLBACK collect(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    for (const DWORD wanted : search.of)
        if (wanted == process) {
            search.found.push_back(window);
            EnumChildWindows(window, collectChild, parameter);
        }
    return TRUE;
}

// All windows of the program, top windows in front first, each followed by its children.
Json windows(const std::wstring& program) {
    Search search{processes(program), {}};
    EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
    Json result = Json::array();
    for (const HWND window : search.found) result.add(describe(window));
    return result;
}

Json treeItems(HWND tree) {
    Json result = Json::array();
    RemoteMemory memory(tree);
    const auto next = [&](WPARAM relation, HTREEITEM from) {
        return reinterpret_cast<HTREEITEM>(
            ask(tree, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(from)));
    };
    std::vector<HTREEITEM> ancestors;
    HTREEITEM item = next(TVGN_ROOT, nullptr);
    while (item) {
        const TreeItem read = memory.treeItem(item);
        const HTREEITEM parent = ancestors.empty() ? nullptr : ancestors.back();
        result.add(Json::object(
            {{"item", Json::of(item)},
             {"parent", Json::of(parent)},
             {"level", Json::of(static_cast<long long>(ancestors.size()))},
             {"text", Json::of(read.text)},
             {"image", Json::of(static_cast<long long>(read.image))},
             {"expanded", Json::of((read.state & TVIS_EXPANDED) != 0)},
             {"selected", Json::of((read.state & TVIS_SELECTED) != 0)},
             {"has_children", Json::of(read.children != 0)},
             {"rect", read.shown ? Json::of(onScreen(tree, read.rect)) : Json::null()}}));
        if (const HTREEITEM child = next(TVGN_CHILD, item)) {
            ancestors.push_back(item);
            item = child;
            continue;
        }
        HTREEITEM following = next(TVGN_NEXT, item);
        while (!following && !ancestors.empty()) {
            following = next(TVGN_NEXT, ancestors.back());
            ancestors.pop_back();
        }
        item = following;
    }
    return result;
}

Json listRows(HWND list) {
    Json result = Json::array();
    RemoteMemory memory(list);
    const HWND header = reinterpret_cast<HWND>(ask(list, LVM_GETHEADER, 0, 0));
    const int columns = header ? static_cast<int>(ask(header, HDM_GETITEMCOUNT, 0, 0)) : 1;
    const int rows = static_cast<int>(ask(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < rows; ++row) {
        Json texts = Json::array();
        for (int column = 0; column < std::max(columns, 1); ++column)
            texts.add(Json::of(memory.listText(row, column)));
        const auto state = ask(list, LVM_GETITEMSTATE, row, LVIS_SELECTED | LVIS_FOCUSED);
        result.add(Json::object({{"row", Json::of(static_cast<long long>(row))},
                                 {"texts", std::move(texts)},
                                 {"selected", Json::of((state & LVIS_SELECTED) != 0)},
                                 {"focused", Json::of((state & LVIS_FOCUSED) != 0)},
                                 {"rect", Json::of(onScreen(list, memory.listRect(row)))}}));
    }
    return result;
}

Json comboItems(HWND combo) {
    Json items = Json::array();
    const auto count = static_cast<int>(ask(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i)
        items.add(Json::of(remoteText(combo, CB_GETLBTEXTLEN, i, CB_GETLBTEXT)));
    return Json::object({{"items", std::move(items)},
                         {"selected", Json::of(static_cast<long long>(
                                          static_cast<int>(ask(combo, CB_GETCURSEL, 0, 0))))}});
}

Json focus() {
    const HWND front = GetForegroundWindow();
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(front, nullptr), &info);
    return Json::object({{"foreground", Json::of(front)},
                         {"focus", Json::of(info.hwndFocus)},
                         {"moving", Json::of((info.flags & GUI_INMOVESIZE) != 0)}});
}

// Types the very letters, whatever keyboard the display believes in.
Json type(const std::wstring& text) {
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
    return Json::of(sent == keys.size());
}

HWND handle(const std::wstring& word) {
    return reinterpret_cast<HWND>(static_cast<UINT_PTR>(_wtoi64(word.c_str())));
}

// Posted, so that a window that opens a modal one does not hold up the journey.
Json post(const std::vector<std::wstring>& words) {
    return Json::of(PostMessageW(handle(words[1]), static_cast<UINT>(_wtoi64(words[2].c_str())),
                                 static_cast<WPARAM>(_wtoi64(words[3].c_str())),
                                 static_cast<LPARAM>(_wtoi64(words[4].c_str()))) != FALSE);
}

Json answer(const std::vector<std::wstring>& words) {
    const std::wstring& command = words[0];
    if (command == L"focus") return focus();
    if (command == L"post" && words.size() == 5) return post(words);
    if (words.size() != 2) return Json::null();
    if (command == L"windows") return windows(words[1]);
    if (command == L"type") return type(words[1]);
    const HWND window = handle(words[1]);
    if (!IsWindow(window)) return Json::null();
    if (command == L"text") return Json::of(windowText(window));
    if (command == L"tree") return treeItems(window);
    if (command == L"list") return listRows(window);
    if (command == L"combo") return comboItems(window);
    return Json::null();
}

std::vector<std::wstring> split(const std::wstring& line) {
    std::vector<std::wstring> words(1);
    for (const wchar_t letter : line) {
        if (letter == L'\t')
            words.emplace_back();
        else if (letter != L'\n' && letter != L'\r')
            words.back() += letter;
    }
    return words;
}

}  // namespace
}  // namespace tunovka

int wmain() {
    using namespace tunovka;
    SetProcessDPIAware();  // coordinates as on the screen
    _setmode(_fileno(stdout), _O_BINARY);
    std::vector<char> line(1 << 16);
    while (std::fgets(line.data(), static_cast<int>(line.size()), stdin)) {
        std::fprintf(stdout, "%s\n", answer(split(fromUtf8(line.data()))).text().c_str());
        std::fflush(stdout);
    }
    return 0;
}
