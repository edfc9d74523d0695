#include "core/disk_questions.h"
#include "core/disk_windows.h"
#include "core/drives.h"

namespace tunovka {
namespace {

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

}  // namespace

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

}  // namespace tunovka
