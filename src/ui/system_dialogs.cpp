#include "ui/system_dialogs.h"

#include <windows.h>
// windows.h first: these need its types.
#include <cderr.h>
#include <commctrl.h>
#include <commdlg.h>
#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "core/disk_questions.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "core/late_function.h"
#include "core/ole_windows.h"
#include "core/paths.h"
#include "core/text.h"
#include "ui/form.h"

namespace tunovka {
namespace {

constexpr std::size_t kLongestPath = 32768;  // characters, the end mark included

// The dialog may change it while a person looks around, whatever it was asked.
class KeptDirectory : NonCopyable {
  public:
    KeptDirectory() {
        directory_.resize(GetCurrentDirectoryW(0, nullptr));
        directory_.resize(
            GetCurrentDirectoryW(static_cast<DWORD>(directory_.size()), directory_.data()));
    }
    ~KeptDirectory() { SetCurrentDirectoryW(directory_.c_str()); }

  private:
    std::wstring directory_;
};

struct TaskMemory : handle_kinds::NullIsNone<void*> {
    static void close(void* memory) { CoTaskMemFree(memory); }
};
using TaskMemoryOwner = Handle<TaskMemory>;

// The dialog of Windows Vista and later, which opens in its folder each time, unlike the older one.
// None where it, or the folder, is not there, and under Wine, whose dialog adds endings to names.
ComPtr<IFileSaveDialog> dialogInFolder(const Cdialog::SaveArgs& args) {
    static const LateFunction<decltype(SHCreateItemFromParsingName)> itemOf(
        L"shell32.dll", "SHCreateItemFromParsingName");
    ComPtr<IShellItem> folder;
    ComPtr<IFileSaveDialog> dialog;
    if (underWine() || !itemOf ||
        FAILED(itemOf(args.folder.c_str(), nullptr, IID_IShellItem, folder.receiveVoid())) ||
        FAILED(CoCreateInstance(CLSID_FileSaveDialog, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IFileSaveDialog, dialog.receiveVoid())) ||
        FAILED(dialog->SetFolder(folder.get())))
        return {};
    const std::vector<std::wstring> filter = split(args.filter, L'|');
    std::vector<COMDLG_FILTERSPEC> pairs;
    for (std::size_t i = 0; i + 1 < filter.size(); i += 2)
        pairs.push_back({filter[i].c_str(), filter[i + 1].c_str()});
    dialog->SetFileTypes(static_cast<UINT>(pairs.size()), pairs.data());
    dialog->SetFileTypeIndex(static_cast<UINT>(args.filterIndex));
    dialog->SetTitle(args.title.c_str());
    dialog->SetOptions(FOS_OVERWRITEPROMPT | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR);
    return dialog;
}

std::wstring chosenIn(IFileSaveDialog& dialog, HWND owner) {
    ComPtr<IShellItem> chosen;
    wchar_t* path = nullptr;
    if (FAILED(dialog.Show(owner)) || FAILED(dialog.GetResult(chosen.receive())) ||
        FAILED(chosen->GetDisplayName(SIGDN_FILESYSPATH, &path)))
        return {};
    const TaskMemoryOwner memory(path);
    return path;
}

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

BOOL CALLBACK showSelected(HWND control, LPARAM) noexcept {
    wchar_t kind[32] = L"";
    GetClassNameW(control, kind, static_cast<int>(std::size(kind)));
    if (std::wstring_view(kind) != WC_TREEVIEWW) return TRUE;
    const LRESULT selected = SendMessageW(control, TVM_GETNEXTITEM, TVGN_CARET, 0);
    SendMessageW(control, TVM_ENSUREVISIBLE, 0, selected);
    return FALSE;
}

// Newer systems select the start but leave it out of sight.
int CALLBACK selectStart(HWND window, UINT message, LPARAM, LPARAM start) noexcept {
    if (message == BFFM_INITIALIZED) SendMessageW(window, BFFM_SETSELECTIONW, TRUE, start);
    if (message == BFFM_SELCHANGED) EnumChildWindows(window, showSelected, 0);
    return 0;
}

}  // namespace

std::wstring Cdialog::ShowSave(const Form& owner, const SaveArgs& args) {
    const KeptDirectory kept;
    const ModalState modal(owner.handle());
    if (args.name.empty() && !args.folder.empty())
        if (const auto dialog = dialogInFolder(args)) {
            const std::wstring path = chosenIn(*dialog.get(), owner.handle());
            return owner.isClosing() ? std::wstring() : path;
        }
    // The system reads the filter up to an empty part.
    std::wstring filter = args.filter + L"||";
    std::replace(filter.begin(), filter.end(), L'|', L'\0');
    // The folder before the name is what counts.
    const bool named = !args.folder.empty() && !args.name.empty();
    std::wstring path =
        (named ? withBackslash(args.folder) + args.name : args.name).substr(0, kLongestPath - 1);
    path.resize(kLongestPath);

    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner.handle();
    request.lpstrFilter = filter.c_str();
    request.nFilterIndex = args.filterIndex;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrInitialDir = args.folder.empty() || named ? nullptr : args.folder.c_str();
    request.lpstrTitle = args.title.c_str();
    request.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;

    static const LateFunction<decltype(GetSaveFileNameW)> ask(L"comdlg32.dll", "GetSaveFileNameW");
    static const LateFunction<decltype(CommDlgExtendedError)> failure(L"comdlg32.dll",
                                                                      "CommDlgExtendedError");
    if (!ask || !failure) return {};
    BOOL chosen = ask(&request);
    if (!chosen && failure() == FNERR_INVALIDFILENAME) {
        path.front() = L'\0';  // it could not show the name: it then offers none
        request.lpstrInitialDir = args.folder.c_str();
        chosen = ask(&request);
    }
    if (!chosen || owner.isClosing()) return {};
    return trimAtNul(path);
}

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
    const auto isFolder = askDisk(path, [path] { return FileSystemObject::FolderExists(path); });
    return isFolder.value_or(false) ? path : std::wstring();
}

}  // namespace tunovka
