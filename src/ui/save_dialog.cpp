#include "ui/save_dialog.h"

#include <windows.h>
// windows.h first: these need its types.
#include <cderr.h>
#include <commdlg.h>

#include <algorithm>

#include "core/late_function.h"
#include "core/text.h"
#include "ui/form.h"
#include "ui/modal.h"

namespace tunovka {
namespace {

constexpr std::size_t kLongestPath = 32768;  // characters, the end mark included

// The dialog may change it while a person looks around, whatever it was asked.
class KeptDirectory {
  public:
    KeptDirectory() {
        directory_.resize(GetCurrentDirectoryW(0, nullptr));
        directory_.resize(
            GetCurrentDirectoryW(static_cast<DWORD>(directory_.size()), directory_.data()));
    }
    ~KeptDirectory() { SetCurrentDirectoryW(directory_.c_str()); }
    KeptDirectory(const KeptDirectory&) = delete;
    KeptDirectory& operator=(const KeptDirectory&) = delete;

  private:
    std::wstring directory_;
};

}  // namespace

std::wstring askSavePath(const Form& owner, const SaveDialogArgs& args) {
    // The system reads the filter up to an empty part.
    std::wstring filter = args.filter + L"||";
    std::replace(filter.begin(), filter.end(), L'|', L'\0');
    std::wstring path = args.name.substr(0, kLongestPath - 1);
    path.resize(kLongestPath);

    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner.handle();
    request.lpstrFilter = filter.c_str();
    request.nFilterIndex = args.filterIndex;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrInitialDir = args.folder.empty() ? nullptr : args.folder.c_str();
    request.lpstrTitle = args.title.c_str();
    request.Flags = OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;

    static const LateFunction<decltype(GetSaveFileNameW)> ask(L"comdlg32.dll", "GetSaveFileNameW");
    static const LateFunction<decltype(CommDlgExtendedError)> failure(L"comdlg32.dll",
                                                                      "CommDlgExtendedError");
    if (!ask || !failure) return {};
    const KeptDirectory kept;
    const ModalState modal(owner.handle());
    BOOL chosen = ask(&request);
    if (!chosen && failure() == FNERR_INVALIDFILENAME) {
        path.front() = L'\0';  // it could not show the name: it then offers none
        chosen = ask(&request);
    }
    if (!chosen || owner.isClosing()) return {};
    return trimAtNul(path);
}

}  // namespace tunovka
