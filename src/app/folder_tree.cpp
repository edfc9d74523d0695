#include "app/folder_tree.h"

#include "core/errors.h"
#include "core/file_system.h"
#include "core/paths.h"
#include "core/text.h"
#include "ui/box.h"
#include "ui/form.h"

namespace tunovka {
namespace {

constexpr wchar_t kStartDrive[] = L"e:";

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

// The letter and colon at the start of a drive's text.
std::wstring letterOf(const std::wstring& drive) {
    return drive.substr(0, drive.find(L':') + 1);
}

std::wstring programFolder() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size())
        path.resize(path.size() * 2);
    path.resize(length);
    return parentFolder(path);
}

}  // namespace

FolderTree::FolderTree(Form& form, Label& LblBar, const TextBox& txtPath,
                       std::function<void(const std::wstring& folder)> listFolder)
    : Drive1(L"Drive1", L"Jednotka", form),
      strom({.name = L"strom", .text = L"Priečinky", .parent = &form, .putOff = true}),
      form_(form),
      LblBar_(LblBar),
      txtPath_(txtPath),
      listFolder_(std::move(listFolder)) {
    Drive1.onChange = [this] {
        driveChanged_ = true;
        FillTreeForDrive();
    };
    strom.onExpand = [this](const std::wstring& key) { expanded(key); };
    strom.onClick = [this] { clicked(); };
    strom.onNodeClick = [this](const std::wstring& key) { nodeClicked(key); };
    strom.onSelectionByKey = [this] { nodeClicked(strom.selectedKey()); };
}

void FolderTree::chooseStartDrive() {
    driveChanged_ = false;
    Drive1.refresh();
    try {
        if (FileSystemObject::IsDriveReady(kStartDrive)) Drive1.setDrive(kStartDrive);
    } catch (const RuntimeError&) {
        // It has gone this moment: the current one is shown, as without it or its medium.
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
    const std::wstring letter = letterOf(Drive1.drive());
    if (!FileSystemObject::IsDriveReady(letter)) throw RuntimeError(kPathNotFound);
    const std::wstring first = strom.firstRoot();
    if (!first.empty() && withBackslash(upperCased(letter)) == upperCased(first)) return;

    filling_ = true;
    strom.clear();
    const std::wstring key = upperCased(Drive1.drive().substr(0, 2) + L"\\");
    LblBar_.setText(key);
    strom.add({.key = key,
               .text = upperCased(Drive1.drive()),
               .foreground = MultiMedialny::palette().NodeForeColor,
               .background = MultiMedialny::palette().NodeBackColor});
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
        const std::wstring letter = letterOf(Drive1.drive());
        ask(L"CHYBA",
            L"Zariadenie \"" + letter + L"\" nie je pripravené !\r\n" +
                hintFor(FileSystemObject::driveType(letter)),
            L"Rozumiem !");
    } else {
        ask(L"CHYBA",
            L"Došlo k neočakávanej chybe !\r\nChyba :" + error.description + L"\r\nčíslo: " +
                std::to_wstring(error.number),
            L"Beriem na vedomie");
    }
}

void FolderTree::returnToShownDrive() {
    const std::wstring shown = strom.firstRoot();
    try {
        Drive1.setDrive(shown.empty() ? programFolder() : shown);
    } catch (const RuntimeError&) {
        // The program's own drive has gone as well: there is nothing to go back to.
    }
}

void FolderTree::add(const std::wstring& parentKey, const std::wstring& key,
                     const std::wstring& text) {
    // Names that differ in letter case alone are one folder to Windows.
    if (strom.contains(key) || !strom.contains(parentKey)) return;
    strom.add({.parentKey = parentKey,
               .key = key,
               .text = text,
               .foreground = MultiMedialny::palette().NodeForeColor,
               .background = MultiMedialny::palette().NodeBackColor});
}

// A window that closes takes no more folders.
bool FolderTree::hasNode(const std::wstring& key) const {
    return !form_.isClosing() && strom.contains(key);
}

void FolderTree::ExpandFolder(const std::wstring& key) {
    if (key.empty() || !strom.contains(key) || !RozneApi::HasSubfolders(key)) return;
    const Form::Busy busy(form_);
    const HCURSOR pointer = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    const bool hadFocus = strom.hasFocus();
    ++expanding_;
    strom.setEnabled(false);

    {
        const TreeView::RedrawOff off(strom);
        const std::wstring child = strom.firstChild(key);
        if (!child.empty() && strom.text(child) == RozneApi::kPlaceholderText) strom.remove(child);
        RozneApi::AddSubfolderNodes(*this, key);
        if (strom.contains(key)) strom.sortChildren(key);
    }

    strom.setEnabled(true);
    --expanding_;
    if (hadFocus) strom.focus();
    SetCursor(pointer);
}

void FolderTree::expanded(const std::wstring& key) {
    if (filling_ || expanding_ > 0) return;
    const std::wstring child = strom.firstChild(key);
    if (!child.empty() && like(child, L"*[_*.?]")) {
        strom.remove(child);
        ExpandFolder(key);
        if (!strom.contains(key)) return;
        strom.expand(key);
    }
    strom.select(key);
    clicked();
}

void FolderTree::clicked() {
    const std::wstring key = strom.selectedKey();
    if (!key.empty() && key != txtPath_.text()) listFolder_(key);
}

void FolderTree::nodeClicked(const std::wstring& key) {
    if (!key.empty() && key != txtPath_.text()) listFolder_(key);
    const std::wstring selected = strom.selectedKey();
    if (!selected.empty()) LblBar_.setText(selected);
}

}  // namespace tunovka
