#include "ui/drive_list.h"

#include <commctrl.h>

#include <algorithm>

#include "core/disk_questions.h"
#include "core/drives.h"
#include "core/errors.h"
#include "core/text.h"
#include "ui/form.h"
#include "ui/skin.h"

namespace tunovka {
namespace {

// "E:" for a drive's text or a path on it.
std::wstring letterOf(const std::wstring& drive) {
    return upperCased(drive.substr(0, 2));
}

std::vector<std::wstring> driveTexts() {
    std::vector<std::wstring> texts;
    const auto drives = askDisk(std::wstring(), [] { return listDrives(); });
    for (const Drive& drive : drives.value_or(std::vector<Drive>())) texts.push_back(drive.text());
    return texts;
}

}  // namespace

DriveList::DriveList(const std::wstring& name, const std::wstring& accessibleName, Window& parent)
    : Window(Args{.name = name,
                  .className = WC_COMBOBOXW,
                  .text = accessibleName,
                  .style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST,
                  .parent = &parent},
             Creation::OnDemand) {
    setAccessibleName(accessibleName);
}

// The drive of the current directory.
void DriveList::chooseFirst() {
    wchar_t current[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, current);
    const auto found = std::find_if(drives_.begin(), drives_.end(), [&](const auto& drive) {
        return letterOf(drive) == letterOf(current);
    });
    if (found != drives_.end()) {
        drive_ = *found;
    } else if (!drives_.empty()) {
        drive_ = drives_.back();
    }
}

void DriveList::fill() {
    send(CB_RESETCONTENT);
    for (const std::wstring& drive : drives_)
        send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(drive.c_str()));
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
    std::vector<std::wstring> now = driveTexts();
    if (now == drives_) return;
    const bool first = drives_.empty();
    // The drive that is shown stays in the list even when it has gone: the tree still shows it.
    if (!first && std::find(now.begin(), now.end(), drive_) == now.end()) {
        const auto same = std::find_if(now.begin(), now.end(), [&](const auto& drive) {
            return letterOf(drive) == letterOf(drive_);
        });
        if (same != now.end())
            drive_ = *same;
        else
            now.push_back(drive_);
    }
    drives_ = std::move(now);
    if (first) chooseFirst();
    fill();
    choose(-1);
}

std::wstring DriveList::letter() const {
    return letterOf(drive_);
}

void DriveList::setDrive(const std::wstring& drive) {
    for (std::size_t i = 0; i < drives_.size(); ++i) {
        if (letterOf(drives_[i]) != letterOf(drive)) continue;
        choose(static_cast<int>(i));
        return;
    }
    throw RuntimeError(kDeviceUnavailable, drive);
}

void DriveList::applyFont() {
    send(WM_SETFONT, reinterpret_cast<WPARAM>(Skin::font(dpi())), TRUE);
}

std::optional<LRESULT> DriveList::onMessage(UINT message, WPARAM, LPARAM) {
    // A pointer that passes by with a turning wheel chooses no other drive.
    if (message == WM_MOUSEWHEEL && !send(CB_GETDROPPEDSTATE)) return 0;
    return std::nullopt;
}

std::optional<LRESULT> DriveList::onCommand(WORD code) {
    if (code == CBN_DROPDOWN) refresh();
    // While the list is open the arrows only move the mark; the choice counts when it closes.
    const bool chosen = code == CBN_CLOSEUP || (code == CBN_SELCHANGE && !send(CB_GETDROPPEDSTATE));
    if (chosen) {
        const int position = static_cast<int>(send(CB_GETCURSEL));
        if (position >= 0) choose(position);
    }
    return 0;
}

}  // namespace tunovka
