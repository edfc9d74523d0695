#include "ui/folder_picker.h"

#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include "core/file_system.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "ui/form.h"
#include "ui/modal.h"

namespace tunovka {
namespace {

struct TaskMemory {
    using Value = void*;
    static Value none() { return nullptr; }
    static void close(Value memory) { CoTaskMemFree(memory); }
};
using TaskMemoryOwner = Handle<TaskMemory>;

// The parsing name, because the plain question for a path knows no more than 260 characters.
std::wstring pathOf(PCIDLIST_ABSOLUTE place) {
    static const LateFunction<decltype(SHBindToParent)> bindToParent(L"shell32.dll",
                                                                     "SHBindToParent");
    static const LateFunction<decltype(StrRetToStrW)> toText(L"shlwapi.dll", "StrRetToStrW");
    ComPtr<IShellFolder> parent;
    PCUITEMID_CHILD child = nullptr;
    STRRET name{};
    if (!bindToParent || !toText) return {};
    if (FAILED(bindToParent(place, IID_IShellFolder, parent.receiveVoid(), &child)) ||
        FAILED(parent->GetDisplayNameOf(child, SHGDN_FORPARSING, &name)))
        return {};
    wchar_t* text = nullptr;
    if (FAILED(toText(&name, child, &text))) return {};
    const TaskMemoryOwner owner(text);
    return text;
}

int CALLBACK selectStart(HWND window, UINT message, LPARAM, LPARAM start) noexcept {
    if (message == BFFM_INITIALIZED) SendMessageW(window, BFFM_SETSELECTIONW, TRUE, start);
    return 0;
}

}  // namespace

std::wstring pickFolder(const Form& owner, std::wstring_view prompt, const std::wstring& start) {
    const std::wstring title(prompt);
    // The window switches its owner off and on itself, so that the owner is active afterwards.
    const ModalState others(owner.handle());
    BROWSEINFOW browse{};
    browse.hwndOwner = owner.handle();
    browse.lpszTitle = title.c_str();
    browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    if (!start.empty()) {
        browse.lpfn = selectStart;
        browse.lParam = reinterpret_cast<LPARAM>(start.c_str());
    }
    static const LateFunction<decltype(SHBrowseForFolderW)> ask(L"shell32.dll",
                                                                "SHBrowseForFolderW");
    if (!ask) return {};
    const TaskMemoryOwner chosen(ask(&browse));
    if (!chosen || owner.isClosing()) return {};
    const std::wstring path = pathOf(static_cast<PCIDLIST_ABSOLUTE>(chosen.get()));
    return FileSystemObject::FolderExists(path) ? path : std::wstring();
}

}  // namespace tunovka
