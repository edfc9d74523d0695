#include "app/folder_tree.h"

#include "core/disk_questions.h"
#include "core/errors.h"
#include "core/file_system.h"
#include "core/rozneapi.h"
#include "core/text.h"
#include "ui/form.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

constexpr wchar_t kStartDrive[] = L"e:";
constexpr wchar_t kPlaceholderText[] = L"podzložky", kPlaceholderSuffix[] = L"_*.?";

std::wstring hintFor(DriveType type) {
    switch (type) {
        case DriveType::Removable:
            return L"Skontroluj, či je v ňom disketa.";
        case DriveType::CdRom:
            return L"Skontroluj, či je v ňom CD-čko.";
        case DriveType::Network:
            return L"Skontroluj prístup k sieti.";
        default:
            return {};
    }
}

// Not answered is not ready.
bool isReady(const std::wstring& drive) {
    return askDisk(drive, [drive] { return FileSystemObject::IsDriveReady(drive); })
        .value_or(false);
}

}  // namespace

FolderTree::FolderTree(Form& form, Label& LblBar, const TextBox& txtPath,
                       std::function<void(const std::wstring& folder)> listFolder)
    : Drive1(L"Drive1", L"Jednotka", form),
      strom(L"strom", L"Priečinky", form),
      form_(form),
      LblBar_(LblBar),
      txtPath_(txtPath),
      listFolder_(std::move(listFolder)) {
    Drive1.onChange = [this] {
        driveChanged_ = true;
        FillTreeForDrive();
    };
    strom.onExpand = [this](const std::wstring& key) { strom_Expand(key); };
    strom.onClick = [this](const std::wstring& key) {
        listUnlessShown(strom.selectedKey());
        if (strom.contains(key)) strom_NodeClick(key);
    };
    strom.onSelectionByKey = [this] { strom_NodeClick(strom.selectedKey()); };
}

void FolderTree::chooseStartDrive() {
    driveChanged_ = false;
    Drive1.refresh();
    try {
        if (isReady(kStartDrive)) Drive1.setDrive(kStartDrive);
    } catch (const RuntimeError&) {
        // It has gone meanwhile: the current one is shown, as without it or its medium.
    }
    if (!driveChanged_) FillTreeForDrive();
}

void FolderTree::FillTreeForDrive() {
    if (expanding_ > 0) {  // a folder is being listed: the tree stays as it is until that is done
        returnToShownDrive();
        return;
    }
    try {
        fill();
    } catch (const RuntimeError& error) {
        filling_ = false;
        report(error);
        returnToShownDrive();
    }
}

void FolderTree::fill() {
    if (!isReady(Drive1.letter())) throw RuntimeError(kPathNotFound);
    const std::wstring key = Drive1.letter() + L"\\";
    if (strom.firstRoot() == key) return;

    filling_ = true;
    strom.clear();
    LblBar_.setText(key);
    strom.add({.key = key, .text = upperCased(Drive1.drive()), .imageKey = kFolderPicture});
    ExpandFolder(key);
    if (strom.contains(key)) {
        strom.select(key);
        strom.expand(key);
    }
    filling_ = false;
    listFolder_(key);
}

void FolderTree::report(const RuntimeError& error) {
    if (error.number == kPathNotFound) {
        const std::wstring letter = Drive1.letter();
        const auto type = askDisk(letter, [letter] { return FileSystemObject::driveType(letter); });
        ask(L"CHYBA",
            L"Zariadenie \"" + letter + L"\" nie je pripravené !\r\n" +
                hintFor(type.value_or(DriveType::Unknown)),
            L"Rozumiem !");
    } else {
        ask(L"CHYBA",
            L"Došlo k neočákavanej chybe !\r\nChyba :" + error.description + L"\r\nčíslo: " +
                decimal(error.number),
            L"Beriem na vedomie");
    }
}

void FolderTree::returnToShownDrive() {
    const std::wstring shown = strom.firstRoot();
    wchar_t program[4]{};  // no more than its drive is needed
    GetModuleFileNameW(nullptr, program, static_cast<DWORD>(std::size(program)) - 1);
    try {
        Drive1.setDrive(shown.empty() ? program : shown);
    } catch (const RuntimeError&) {
        // The program's own drive has gone as well: there is nothing to go back to.
    }
}

// Adds the sub-folders of a folder under its node, each with a placeholder child when it has
// sub-folders of its own. Unreadable folders add nothing.
void FolderTree::AddSubfolderNodes(const std::wstring& parentKey) {
    // While events run the tree may be filled again; a window that closes takes no more folders.
    const LoopHooks hooks{yieldToEvents,
                          [&] { return form_.isGivenUp() || !strom.contains(parentKey); }};
    const auto names = askDisk(hooks, [parentKey] {
        return RozneApi::HasSubfolders(parentKey) ? RozneApi::subfolderNames(parentKey)
                                                  : std::vector<std::wstring>();
    });
    if (!names) return;
    const auto hasMore = [&](std::size_t i) {
        return [key = parentKey + (*names)[i] + L"\\"] { return RozneApi::HasSubfolders(key); };
    };
    askDiskMany(hooks, names->size(), hasMore, [&](std::size_t i, bool more) {
        const std::wstring key = parentKey + (*names)[i] + L"\\";
        // Of folders that differ in letter case alone each is a node, as of the contents' files.
        if (form_.isClosing() || !strom.contains(parentKey) || strom.contains(key)) return;
        strom.add(
            {.parentKey = parentKey, .key = key, .text = (*names)[i], .imageKey = kFolderPicture});
        if (more)
            strom.add({.parentKey = key,
                       .key = key + kPlaceholderSuffix,
                       .text = kPlaceholderText,
                       .imageKey = kFolderPicture});
    });
    yieldNow();
}

void FolderTree::ExpandFolder(const std::wstring& key) {
    if (key.empty() || !strom.contains(key)) return;
    if (!askDisk(key, [key] { return RozneApi::HasSubfolders(key); }).value_or(false)) return;
    if (!strom.contains(key)) return;
    const Form::Busy busy(form_);
    const HCURSOR pointer = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    const bool hadFocus = strom.hasFocus();
    ++expanding_;
    strom.setEnabled(false);

    {
        const TreeView::RedrawOff off(strom);
        const std::wstring child = strom.firstChild(key);
        if (!child.empty() && strom.text(child) == kPlaceholderText) strom.remove(child);
        AddSubfolderNodes(key);
        if (strom.contains(key)) strom.sortChildren(key);
    }

    strom.setEnabled(true);
    --expanding_;
    // Nobody has put it elsewhere meanwhile, in this window or another.
    if (hadFocus && !GetFocus() && GetActiveWindow() == form_.handle()) strom.focus();
    SetCursor(pointer);
}

bool FolderTree::showHourglass() const {
    if (expanding_ == 0 || !strom.isUnderPointer()) return false;
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    return true;
}

void FolderTree::strom_Expand(const std::wstring& key) {
    if (filling_ || expanding_ > 0) return;
    const std::wstring child = strom.firstChild(key);
    if (!child.empty() && child.ends_with(kPlaceholderSuffix)) {
        strom.remove(child);
        ExpandFolder(key);
        if (!strom.contains(key)) return;
        strom.expand(key);
    }
    strom.select(key);
    strom_NodeClick(key);
}

void FolderTree::strom_NodeClick(const std::wstring& key) {
    listUnlessShown(key);
    const std::wstring selected = strom.selectedKey();
    if (!selected.empty()) LblBar_.setText(selected);
}

void FolderTree::listUnlessShown(const std::wstring& key) {
    if (!key.empty() && key != txtPath_.text()) listFolder_(key);
}

}  // namespace tunovka
