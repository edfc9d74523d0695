#include "ui/drive_list.h"

#include <commctrl.h>

#include <algorithm>

#include "core/disk_questions.h"
#include "core/disk_windows.h"
#include "core/errors.h"
#include "core/text.h"

namespace tunovka {
namespace {

// "E:" for a drive's text or a path on it.
std::wstring letterOf(const std::wstring& drive) {
    return upperCased(drive.substr(0, 2));
}

// Where a drive stands among the texts of drives.
auto placeOf(const std::wstring& drive, const std::vector<std::wstring>& drives) {
    return std::ranges::find(drives, letterOf(drive), letterOf);
}

// "E: [DATA]", of a network drive with its share; "E:" for one that has or tells no label. Only
// drives that answer at once are asked for it: never a removable one or a disc, never a server.
std::wstring textOf(const std::wstring& drive) {
    std::wstring label;
    switch (FileSystemObject::driveType(drive)) {
        case DriveType::Network:  // what the connection was made to, as this machine remembers it
            Disk::share(drive, label);
            break;
        case DriveType::Removable:
        case DriveType::CdRom:
            break;
        default:
            Disk::label(drive + L"\\", label);
    }
    return label.empty() ? drive : drive + L" [" + label + L"]";
}

// The drives of this moment in the order of their letters. Of those that have not answered when the
// person gives the question up, the names alone.
std::vector<std::wstring> listDrives() {
    std::vector<std::wstring> drives;
    DiskQuestions<std::wstring> questions;
    const DWORD present = GetLogicalDrives();
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        if (!(present >> (letter - L'A') & 1)) continue;
        const std::wstring& drive = drives.emplace_back(std::wstring{letter, L':'});
        questions.put([drive] { return textOf(drive); });
    }
    for (std::wstring& drive : drives)
        if (const auto text = questions.next(drive)) drive = *text;
    return drives;
}

}  // namespace

DriveList::DriveList(const wchar_t* name, const std::wstring& accessibleName, Window& parent)
    : Window(Args{.name = name,
                  .className = WC_COMBOBOXW,
                  .text = accessibleName,
                  .style = WS_CHILD | WS_VSCROLL | CBS_DROPDOWNLIST,
                  .tabStop = true,
                  .parent = &parent}) {
    setAccessibleName(accessibleName);
}

// The drive of the current directory or, for a share, the first fixed drive that answers.
void DriveList::chooseFirst() {
    if (drives_.empty()) return;
    std::wstring current(GetCurrentDirectoryW(0, nullptr), L'\0');
    GetCurrentDirectoryW(static_cast<DWORD>(current.size()), current.data());
    const auto answers = [](const auto& drive) {
        const auto isReady = [drive] {
            return FileSystemObject::driveType(drive) == DriveType::Fixed &&
                   FileSystemObject::IsDriveReady(drive);
        };
        return askDisk(drive, isReady).value_or(false);
    };
    auto chosen = placeOf(current, drives_);
    if (chosen == drives_.end()) chosen = std::ranges::find_if(drives_, answers);
    drive_ = chosen == drives_.end() ? drives_.back() : *chosen;
}

// Shows the chosen drive again, or takes the one at a position.
void DriveList::choose(int position) {
    const auto place = std::find(drives_.begin(), drives_.end(), drive_) - drives_.begin();
    if (position < 0 || position == place) {
        send(CB_SETCURSEL, place);
        return;
    }
    drive_ = drives_[position];
    send(CB_SETCURSEL, position);
    if (onChange) onChange();
}

void DriveList::refresh() {
    std::vector<std::wstring> now = listDrives();
    if (now == drives_) return;
    const bool first = drives_.empty();
    // The drive that is shown stays in the list even when it has gone: the tree still shows it.
    if (!first) {
        const auto same = placeOf(drive_, now);
        if (same == now.end())
            now.push_back(drive_);
        else
            drive_ = *same;
    }
    drives_ = std::move(now);
    if (first) chooseFirst();
    send(CB_RESETCONTENT);
    for (const std::wstring& drive : drives_) send(CB_ADDSTRING, 0, drive.c_str());
    choose(-1);
}

std::wstring DriveList::letter() const {
    return letterOf(drive_);
}

void DriveList::setDrive(const std::wstring& drive) {
    const auto place = placeOf(drive, drives_);
    if (place == drives_.end()) throw RuntimeError(kDeviceUnavailable, drive);
    choose(static_cast<int>(place - drives_.begin()));
}

std::optional<LRESULT> DriveList::onMessage(UINT message, WPARAM, LPARAM) {
    // Turning the wheel over the closed list must not change the drive.
    if (message == WM_MOUSEWHEEL && !send(CB_GETDROPPEDSTATE)) return 0;
    return std::nullopt;
}

std::optional<LRESULT> DriveList::onCommand(WORD code) {
    // While the list is open the arrows only move the mark; the choice counts when it closes.
    switch (code) {
        case CBN_DROPDOWN:
            refresh();
            break;
        case CBN_SELENDCANCEL:
        case CBN_SELENDOK:
            cancelled_ = code == CBN_SELENDCANCEL;
            break;
        case CBN_CLOSEUP:
            choose(cancelled_ ? -1 : static_cast<int>(send(CB_GETCURSEL)));
            break;
        case CBN_SELCHANGE:
            if (!send(CB_GETDROPPEDSTATE)) choose(static_cast<int>(send(CB_GETCURSEL)));
            break;
    }
    return 0;
}

}  // namespace tunovka
