#pragma once

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <string>

namespace tunovka {

// Sends a message to another program's window; 0 when it does not answer within five seconds.
inline LRESULT ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 5000, &result);
    return static_cast<LRESULT>(result);
}

// A text that the system itself carries between programs: `length` with `wParam` gives its length,
// `get` the text.
inline std::wstring remoteText(HWND window, UINT length, WPARAM wParam, UINT get) {
    const auto size = std::max<LRESULT>(ask(window, length, wParam, 0), 0);
    std::wstring text(static_cast<size_t>(size) + 1, L'\0');
    const WPARAM room = get == WM_GETTEXT ? text.size() : wParam;
    ask(window, get, room, reinterpret_cast<LPARAM>(text.data()));
    return text.c_str();
}

struct TreeItem {
    std::wstring text;
    UINT state;
    int image, children;
    bool shown;  // not inside a collapsed node
    RECT rect;   // of the text, in the tree's coordinates
};

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
            VirtualAllocEx(process_, nullptr, kSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    }
    ~RemoteMemory() {
        VirtualFreeEx(process_, page_, 0, MEM_RELEASE);
        CloseHandle(process_);
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    TreeItem treeItem(HTREEITEM item) {
        TVITEMW request{};
        request.mask = TVIF_TEXT | TVIF_STATE | TVIF_IMAGE | TVIF_CHILDREN;
        request.hItem = item;
        request.stateMask = ~0u;
        request.pszText = textPlace();
        request.cchTextMax = kTextSize;
        exchange(TVM_GETITEMW, 0, request);
        TreeItem result{text(), request.state, request.iImage, request.cChildren, false, {}};
        // The message takes the item where it leaves the rectangle.
        result.rect.left = static_cast<LONG>(reinterpret_cast<LONG_PTR>(item));
        result.shown = exchange(TVM_GETITEMRECT, TRUE, result.rect) != 0;
        return result;
    }

    std::wstring listText(int row, int column) {
        LVITEMW request{};
        request.iSubItem = column;
        request.pszText = textPlace();
        request.cchTextMax = kTextSize;
        exchange(LVM_GETITEMTEXTW, row, request);
        return text();
    }

    RECT listRect(int row) {
        RECT rect{};
        rect.left = LVIR_BOUNDS;
        exchange(LVM_GETITEMRECT, row, rect);
        return rect;
    }

  private:
    static constexpr SIZE_T kSize = 16384;
    static constexpr int kTextSize = 4096;

    wchar_t* textPlace() const { return reinterpret_cast<wchar_t*>(page_ + 1024); }

    // Sends the message with a copy of the structure over there, and brings the copy back.
    template <class T>
    LRESULT exchange(UINT message, WPARAM wParam, T& structure) {
        const wchar_t empty = L'\0';
        WriteProcessMemory(process_, textPlace(), &empty, sizeof empty, nullptr);
        WriteProcessMemory(process_, page_, &structure, sizeof structure, nullptr);
        const LRESULT result = ask(window_, message, wParam, reinterpret_cast<LPARAM>(page_));
        ReadProcessMemory(process_, page_, &structure, sizeof structure, nullptr);
        return result;
    }

    std::wstring text() const {
        std::wstring result(kTextSize, L'\0');
        ReadProcessMemory(process_, textPlace(), result.data(), kTextSize * sizeof(wchar_t),
                          nullptr);
        return result.c_str();
    }

    HWND window_;
    HANDLE process_;
    char* page_;
};

}  // namespace tunovka
